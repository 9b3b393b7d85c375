#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <random>
#include <utility>
#include <vector>

namespace TestSupport {

/// Chance that a seed decides. One seed gives the same numbers everywhere, which the distributions
/// of the standard library do not promise; so they are not used.
class RandomSource {
  public:
    explicit RandomSource(std::uint64_t seed) : engine_(seed) {}

    std::uint64_t Bits() { return engine_(); }

    /// A number below `bound`, which is not 0.
    std::size_t Below(std::size_t bound) { return static_cast<std::size_t>(engine_() % bound); }

    std::size_t Between(std::size_t least, std::size_t most) {
        return least + Below(most - least + 1);
    }

    bool Chance(unsigned percent) { return Below(100) < percent; }

    /// One element of a container that is not empty.
    template <typename Container>
    const auto& Pick(const Container& choices) {
        return choices[Below(choices.size())];
    }

    template <typename Element>
    void Shuffle(std::vector<Element>& elements) {
        for (std::size_t i = elements.size(); i > 1; --i) {
            std::swap(elements[i - 1], elements[Below(i)]);
        }
    }

  private:
    std::mt19937_64 engine_;
};

} // namespace TestSupport
