#pragma once

#include <cstddef>
#include <optional>
#include <string>

namespace CppTools::Host {

/// The whole content of a regular file; nothing when the path names none, when the file has more
/// than `mostBytes` and when it cannot be read.
std::optional<std::string> ReadRegularFile(const std::string& path, std::size_t mostBytes);

/// Whether the path names a device, a FIFO or a socket, which to open may take for ever.
bool IsSpecialFile(const std::string& path);

} // namespace CppTools::Host
