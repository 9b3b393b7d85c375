#pragma once

#include "ValueType.h"

#include <optional>
#include <string>

namespace TandrilResult {

/// Where a field's value stands: levels to go up, then a key, column or path of keys.
struct Source {
    int levelsUp = 0;
    std::string path;
};

/// A field as the command line asks for it.
struct FieldSpec {
    std::string name;
    std::optional<ValueType> type; ///< Empty when left open.
    Source source;
};

/// Reads "NAME[:TYPE][=SOURCE]". Without a source the name is the source; each "^" in front of a
/// source is a level up. Throws ResultError for a type that does not exist and for a name that no
/// document can hold.
FieldSpec ParseFieldSpec(const std::string& text);

/// Throws ResultError unless the name is one that a document can hold: not empty, well-formed
/// UTF-8, without control characters.
void CheckFieldName(const std::string& name);

} // namespace TandrilResult
