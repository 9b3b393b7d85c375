#pragma once

#include <string>
#include <utility>
#include <vector>

namespace CppTools::MetaObj {

/// Records why two shapes differ, for callers who asked to know.
inline void ReportMismatch(std::vector<std::string>* errors, std::string message) {
    if (errors != nullptr) {
        errors->push_back(std::move(message));
    }
}

} // namespace CppTools::MetaObj
