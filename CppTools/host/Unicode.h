#pragma once

#include <string>

/// The host's services that the engine needs, each behind a small interface of its own.
namespace CppTools::Host {

/// Whether the whole text is well-formed UTF-8: no overlong forms, no surrogates, nothing above
/// U+10FFFF. Linear.
bool IsValidUtf8(const std::string& text);

/// A copy of `text` in which every byte that is not part of a well-formed sequence is written
/// as "\x" and two lower-case hexadecimal digits. Well-formed text is copied as it is. Linear.
std::string EscapeInvalidUtf8(const std::string& text);

} // namespace CppTools::Host
