#pragma once

#include "Record.h"
#include "ValueType.h"

#include <string>
#include <string_view>

/// Values of the input as the text of a document's elements.
namespace TandrilResult {

/// The longest text that a document may hold; its reader refuses more.
inline constexpr std::size_t kLongestText = 10'000'000;

/// The text made printable, its markup escaped. Throws InputError when it is too long.
std::string ElementText(const std::string& text);

/// What stands in the element for a value of this type. An int is an integer of 64 bits in
/// decimal digits, a bool one of the words that the tool's own parameters take. Throws InputError
/// for any other value, such as "'x' is not an integer".
std::string ScalarText(const Record& value, ScalarType type);

/// The same with its element around it.
std::string ScalarElement(const Record& value, ScalarType type);

/// A value of the input in a message: text in quotes, cut when it is long; a list or an object
/// by that word.
std::string NameForMessage(const Record& value);

/// An integer in the one way that prints it again: no blanks, no plus, no leading zeros.
bool IsPlainInteger(std::string_view text);

} // namespace TandrilResult
