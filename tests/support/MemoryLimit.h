#pragma once

#include <cerrno>
#include <cstddef>
#include <fstream>
#include <sys/resource.h>
#include <system_error>
#include <unistd.h>

namespace TestSupport {

/// Lets this process, which has to be a child, grow by at most `bytes`, for the rest of its life.
inline void LimitGrowth(std::size_t bytes) {
    std::size_t pages = 0;
    std::ifstream("/proc/self/statm") >> pages;
    const rlim_t most = pages * static_cast<std::size_t>(sysconf(_SC_PAGESIZE)) + bytes;
    const rlimit limit{most, most};
    if (pages == 0 || setrlimit(RLIMIT_AS, &limit) != 0) {
        throw std::system_error(errno, std::generic_category(), "limit of memory");
    }
}

} // namespace TestSupport
