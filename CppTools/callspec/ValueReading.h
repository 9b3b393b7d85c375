#pragma once

#include <string>

/// How text becomes integers and booleans: the one place that knows the rules.
namespace CppTools::CallSpec {

/// For values that users give: the whole text is one decimal integer. Leading white space and a
/// sign are accepted; numbers out of range become the nearest 64-bit number.
bool ReadWholeInteger(const std::string& text, long& result);

/// For values in documents: leading white space and a sign are accepted, and reading stops at
/// the first character that cannot continue the number. Numbers out of range are unreadable.
bool ReadLeadingInteger(const std::string& text, long& result);

/// The seven words for true and the seven for false; nothing else is a boolean.
bool ReadBoolean(const std::string& text, bool& result);

/// Whether the text is one of the seven words for true.
bool IsTrueWord(const std::string& text);

} // namespace CppTools::CallSpec
