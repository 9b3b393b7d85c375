#pragma once

#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

namespace Fuzz {

/// Ends the run, so that the fuzzer keeps the input, when a law does not hold.
inline void Require(bool holds, std::string_view law, const std::string& found = "") {
    if (!holds) {
        std::fprintf(stderr, "Broken law: %.*s\n%s\n", static_cast<int>(law.size()), law.data(),
                     found.c_str());
        std::abort();
    }
}

} // namespace Fuzz
