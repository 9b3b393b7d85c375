#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Taking apart the texts that the kernel prints.
namespace HostFacts {

std::string_view Trim(std::string_view text);

/// The lines without their line ends; a line end at the very end begins no further line.
std::vector<std::string_view> Lines(std::string_view text);

/// The text between separators; empty pieces are kept.
std::vector<std::string_view> Split(std::string_view text, char separator);

/// The words between blanks and tabs.
std::vector<std::string_view> Words(std::string_view text);

/// The decimal number that the text begins with, blanks before it aside.
std::optional<long> LeadingNumber(std::string_view text);

/// A whole text of hexadecimal digits, as the tables below /proc/net have them.
std::optional<unsigned long> HexNumber(std::string_view text);

/// Lines of the form "Key: value": key to value, both trimmed.
std::map<std::string, std::string, std::less<>> ColonFields(std::string_view text);

/// The number that the value of `key` begins with; 0 when there is none.
long NumberOf(const std::map<std::string, std::string, std::less<>>& fields, std::string_view key);

/// Puts back the characters that the kernel writes as a backslash and three octal digits.
std::string DecodeOctal(std::string_view text);

/// Whether the whole name fits a shell pattern of "*", "?" and "[...]".
bool FitsPattern(const std::string& name, const std::string& pattern);

/// Whether the list is empty, which asks for everything, or holds the item.
bool IsWanted(const std::vector<std::string>& wanted, std::string_view item);

} // namespace HostFacts
