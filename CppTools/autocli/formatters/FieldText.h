#pragma once

#include <CppTools/Export.h>

#include <iosfwd>
#include <memory>
#include <string>

namespace CppTools::MetaObj {
class MetaObject;
class MetaStruct;
} // namespace CppTools::MetaObj

/// Text helpers that the formatters share.
namespace CppTools::AutoCli {

class FormatParameters;

/// Three blanks for each level; nothing below level 1.
CPPTOOLS_EXPORT std::string GetIndent(int level);

/// The field that a path names: a field name, or names joined by "." that are looked up one in
/// the other. A part that the current structure lacks leaves the structure as it is for the next
/// part; the result is that of the last. Empty when the last part was not found, when the path
/// leads through a value that is not a structure, and when there is no structure to begin with.
CPPTOOLS_EXPORT std::shared_ptr<MetaObj::MetaObject>
GetSubField(std::shared_ptr<MetaObj::MetaStruct> st, const std::string& path);

/// The value of a string field; empty when there is no such field or it is no string.
CPPTOOLS_EXPORT std::string GetStringField(std::shared_ptr<MetaObj::MetaStruct> st,
                                           const std::string& fieldName);

/// The text of one field: the value's plain text, or what the parameter "printf:T.F" makes of it
/// (nothing, for a structure or list), followed by a blank and the parameter "units:T.F" if that
/// is present. "NULL Object" for an empty value.
///
/// The format is one of printf for one value. Integers, and booleans as 1 or 0, may have any of d,
/// i, u, o, x, X with any length modifier, to whose type they are converted, and c and lc; strings
/// have s. The text is cut after the lengths of format and plain text and 64 bytes. A format that
/// does not fit the value (another conversion, a second one, "*", "%1$d"), or a width or precision
/// above 65535, makes the text "Error while handling formatting parameter K.  Unable to format
/// field: " and the system's words for EINVAL or EOVERFLOW, without units.
CPPTOOLS_EXPORT std::string AutoCli_FormatField(const std::string& typeName,
                                                const std::string& fieldName,
                                                std::shared_ptr<MetaObj::MetaObject> value,
                                                FormatParameters& params);

/// Writes `text` wrapped to `width` columns, each line behind `indent` blanks (at least one).
///
/// Words are separated by single blanks; each costs its length in bytes plus one, and none is
/// ever cut. A wrapped line ends in `breakMark`, or in a blank when that is NUL. With
/// `continueLine` the first line's indent has been written already. With `splitLines` the text
/// is split at line ends first. When `width` does not exceed `indent` nothing is wrapped.
CPPTOOLS_EXPORT void AutoCli_FitString(const int& indent, const int& width, const std::string& text,
                                       bool continueLine, std::ostream& out, bool newlineAtEnd,
                                       char breakMark, bool splitLines);

} // namespace CppTools::AutoCli
