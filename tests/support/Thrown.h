#pragma once

#include <CppTools/metaobj/CppToolException.h>

#include <string>
#include <utility>

namespace TestSupport {

/// The message of the `CppToolException` that the call throws, or a text that no message equals.
/// Exceptions of any other type pass and fail the test.
template <typename Call>
std::string ThrownBy(Call&& call) {
    try {
        std::forward<Call>(call)();
    } catch (const CppTools::CppToolException& thrown) {
        return thrown.what();
    }
    return "<nothing was thrown>";
}

} // namespace TestSupport
