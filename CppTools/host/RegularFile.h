#pragma once

#include <cstddef>
#include <optional>
#include <string>

namespace CppTools::Host {

/// The whole content of a regular file; nothing when the path names none, when the file has more
/// than `mostBytes` and when it cannot be read.
std::optional<std::string> ReadRegularFile(const std::string& path, std::size_t mostBytes);

} // namespace CppTools::Host
