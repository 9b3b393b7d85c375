#pragma once

#include <cstddef>
#include <filesystem>
#include <iterator>

namespace TestSupport {

/// How many descriptors this process has open. The one that counting needs is counted each time.
inline std::size_t CountOpenDescriptors() {
    const std::filesystem::directory_iterator entries("/proc/self/fd");
    return static_cast<std::size_t>(std::distance(begin(entries), end(entries)));
}

} // namespace TestSupport
