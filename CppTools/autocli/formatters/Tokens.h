#pragma once

#include <string>
#include <vector>

namespace CppTools::AutoCli {

/// The pieces of `text` that `separator` ends: "a,,b" is a, the empty text and b. What follows
/// the last separator is a piece of its own unless it is empty. Linear.
std::vector<std::string> SplitTokens(const std::string& text, char separator);

} // namespace CppTools::AutoCli
