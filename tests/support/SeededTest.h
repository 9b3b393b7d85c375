#pragma once

#include <tests/support/RandomSource.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <random>
#include <string>

namespace TestSupport {

/// Where the chance of a test comes from: the seed that has always been used, or one of the day.
enum class SeedKind { Fixed, Random };

inline void PrintTo(SeedKind kind, std::ostream* out) {
    *out << (kind == SeedKind::Fixed ? "FixedSeed" : "RandomSeed");
}

inline constexpr std::uint64_t kFixedSeed = 20240229;

/// What to set to one of the printed seeds to see a failure again.
inline constexpr const char* kSeedVariable = "CPPTOOLS_TEST_SEED";

inline std::uint64_t SeedOf(SeedKind kind) {
    if (kind == SeedKind::Fixed) {
        return kFixedSeed;
    }
    if (const char* wanted = std::getenv(kSeedVariable)) {
        return std::stoull(wanted);
    }
    std::random_device device;
    return (static_cast<std::uint64_t>(device()) << 32) | device();
}

/// A test that is run once with either seed and names the seed in whatever it has to say.
class SeededTest : public testing::TestWithParam<SeedKind> {
  protected:
    SeededTest()
        : seed_(SeedOf(GetParam())), random_(seed_),
          trace_(__FILE__, __LINE__, kSeedVariable + ("=" + std::to_string(seed_))) {}

    void SetUp() override {
        RecordProperty("seed", std::to_string(seed_));
        std::cout << "[     SEED ] " << kSeedVariable << "=" << seed_ << "\n";
    }

    RandomSource& Random() { return random_; }

  private:
    std::uint64_t seed_;
    RandomSource random_;
    testing::ScopedTrace trace_;
};

inline auto BothSeeds() {
    return testing::Values(SeedKind::Fixed, SeedKind::Random);
}

inline std::string SeedName(const testing::TestParamInfo<SeedKind>& row) {
    return testing::PrintToString(row.param);
}

} // namespace TestSupport
