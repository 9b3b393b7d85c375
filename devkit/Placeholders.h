#pragma once

#include <string>
#include <vector>

namespace Devkit {

/// A place in a template that names a parameter.
struct Placeholder {
    std::string word; ///< val, if, list or multilist.
    std::string name;
    std::size_t position; ///< Of its dollar sign.
};

/// All that begin in a template, one within another too.
std::vector<Placeholder> FindPlaceholders(const std::string& text);

} // namespace Devkit
