#include "FieldSpec.h"

#include "Errors.h"
#include "PrintableText.h"

#include <CppTools/metaobj/MetaStruct.h>

namespace TandrilResult {

namespace {

Source ParseSource(const std::string& text) {
    const auto start = std::min(text.find_first_not_of('^'), text.size());
    return {static_cast<int>(start), text.substr(start)};
}

ValueType ParseType(const std::string& word, const std::string& field) {
    const auto type = ValueTypeOf(word);
    if (!type) {
        throw ResultError("Unknown type '" + word + "' in --field '" + field +
                          "': must be int, bool, string, int-list, bool-list or string-list");
    }
    return *type;
}

} // namespace

FieldSpec ParseFieldSpec(const std::string& text) {
    const auto equals = std::min(text.find('='), text.size());
    const std::string front = text.substr(0, equals);
    const auto colon = std::min(front.rfind(':'), front.size());
    FieldSpec field;
    field.name = front.substr(0, colon);
    CheckFieldName(field.name);
    if (colon < front.size()) {
        field.type = ParseType(front.substr(colon + 1), text);
    }
    field.source =
        equals < text.size() ? ParseSource(text.substr(equals + 1)) : Source{0, field.name};
    if (field.source.path.empty()) {
        throw ResultError("No source behind the '=' of --field '" + text + "'");
    }
    return field;
}

void CheckFieldName(const std::string& name) {
    const bool isOneLine = PrintableLine(name) == name && name.find('\t') == std::string::npos;
    if (name.empty() || !isOneLine || !CppTools::MetaObj::IsValidFieldName(name)) {
        throw ResultError("Invalid name for a field: '" + name +
                          "'; it must be one line of UTF-8 without control characters");
    }
}

} // namespace TandrilResult
