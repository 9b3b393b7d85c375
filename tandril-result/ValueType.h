#pragma once

#include <optional>
#include <string>

namespace TandrilResult {

enum class ScalarType { String, Int, Bool };

/// What a field holds: one value, or a list of such values.
struct ValueType {
    ScalarType scalar = ScalarType::String;
    bool isList = false;

    bool operator==(const ValueType&) const = default;
};

/// The type that a word such as "int" or "string-list" names.
std::optional<ValueType> ValueTypeOf(const std::string& word);

/// The word for a single value, which is the name of its element in a document too.
const char* WordFor(ScalarType type);

} // namespace TandrilResult
