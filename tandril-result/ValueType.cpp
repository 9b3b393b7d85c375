#include "ValueType.h"

namespace TandrilResult {

std::optional<ValueType> ValueTypeOf(const std::string& word) {
    for (const ScalarType type : {ScalarType::String, ScalarType::Int, ScalarType::Bool}) {
        const std::string name = WordFor(type);
        if (word == name || word == name + "-list") {
            return ValueType{type, word != name};
        }
    }
    return std::nullopt;
}

const char* WordFor(ScalarType type) {
    switch (type) {
    case ScalarType::Int:
        return "int";
    case ScalarType::Bool:
        return "bool";
    default:
        return "string";
    }
}

} // namespace TandrilResult
