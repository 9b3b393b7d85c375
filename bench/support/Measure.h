#pragma once

/// What the programs of this folder measure with, and how they tell what they measured.

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <fstream>
#include <malloc.h>
#include <string>

namespace Bench {

class Stopwatch {
  public:
    double Milliseconds() const {
        const std::chrono::duration<double, std::milli> passed = Clock::now() - begin_;
        return passed.count();
    }

    double Microseconds() const { return Milliseconds() * 1e3; }

  private:
    using Clock = std::chrono::steady_clock;
    Clock::time_point begin_ = Clock::now();
};

/// Bytes of a line of /proc/self/status: "VmRSS:" is what the process holds now, "VmHWM:" the most
/// that it ever held.
inline double ProcessBytes(const std::string& key) {
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;) {
        long kilobytes = 0;
        if (word == key && status >> kilobytes) {
            return 1024.0 * static_cast<double>(kilobytes);
        }
    }
    return 0;
}

inline double HeldBytes() {
    return ProcessBytes("VmRSS:");
}

inline double PeakBytes() {
    return ProcessBytes("VmHWM:");
}

/// From here on the peak counts anew.
inline void ForgetPeak() {
    std::ofstream("/proc/self/clear_refs") << "5";
}

/// What the allocator has handed out, without the room that it keeps for later.
inline double AllocatedBytes() {
    const auto info = mallinfo2();
    return static_cast<double>(info.uordblks + info.hblkhd);
}

inline std::string ReadFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary | std::ios::ate);
    std::string text(static_cast<std::size_t>(std::max<std::streamoff>(file.tellg(), 0)), '\0');
    file.seekg(0);
    file.read(text.data(), static_cast<std::streamsize>(text.size()));
    return text;
}

/// One measured figure.
inline void Report(const std::string& what, const char* key, double value) {
    std::printf("%s\t%s\t%.6g\n", what.c_str(), key, value);
    std::fflush(stdout);
}

} // namespace Bench
