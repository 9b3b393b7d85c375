#include "FieldPlan.h"

#include "Errors.h"
#include "ScalarText.h"

#include <algorithm>

namespace TandrilResult {

namespace {

ScalarType InferScalar(const Record& value, bool isTyped) {
    if (value.is_boolean()) {
        return ScalarType::Bool;
    }
    if (value.is_string() && !isTyped) {
        const auto& text = value.get_ref<const std::string&>();
        const bool isBool = text == "true" || text == "false";
        return isBool                 ? ScalarType::Bool
               : IsPlainInteger(text) ? ScalarType::Int
                                      : ScalarType::String;
    }
    return value.is_number() ? ScalarType::Int : ScalarType::String;
}

/// The type that fits a value; that of a text for one that is missing.
ValueType InferType(const Record* value, bool isTyped) {
    if (value == nullptr) {
        return {};
    }
    if (!value->is_array()) {
        return {InferScalar(*value, isTyped), false};
    }
    const auto item =
        std::find_if(value->begin(), value->end(), [](const Record& r) { return !r.is_null(); });
    return {item == value->end() ? ScalarType::String : InferScalar(*item, isTyped), true};
}

/// An empty text says nothing where a number or a switch is needed.
bool IsMissing(const Record* value, const ValueType& type) {
    return value == nullptr || value->is_null() ||
           (value->is_string() && type.scalar != ScalarType::String &&
            value->get_ref<const std::string&>().empty());
}

/// The elements of a list; a single value counts as a list of one, null as nothing.
std::string ItemElements(const Record& value, ScalarType type) {
    if (!value.is_array()) {
        return ScalarElement(value, type);
    }
    std::string elements;
    for (const Record& item : value) {
        if (!item.is_null()) {
            elements += ScalarElement(item, type);
        }
    }
    return elements;
}

std::string ValueText(const Record& value, const ValueType& type) {
    return type.isList ? ItemElements(value, type.scalar) : ScalarText(value, type.scalar);
}

std::string EmptyValueText(const ValueType& type) {
    if (type.isList || type.scalar == ScalarType::String) {
        return "";
    }
    return type.scalar == ScalarType::Int ? "0" : "false";
}

} // namespace

std::string FieldPlan::StructureOf(const Row& row) {
    if (opening_.empty()) {
        DecideFields(row);
    }
    if (rules_.fields.empty()) {
        CheckKeys(row.record);
    }
    std::string xml = opening_;
    for (const Field& field : fields_) {
        AppendField(xml, field, row);
    }
    return xml + "</structure>\n";
}

void FieldPlan::DecideFields(const Row& row) {
    std::vector<Field> fields;
    for (const FieldSpec& spec : rules_.fields.empty() ? FieldsOf(row) : rules_.fields) {
        fields.push_back(MakeField(spec, row));
    }
    fields_ = std::move(fields);
    CheckDefaults();
    opening_ = "<structure typeName=\"" + rules_.structure + "\">";
}

std::vector<FieldSpec> FieldPlan::FieldsOf(const Row& row) const {
    if (!row.record.is_object()) {
        throw InputError(NameForMessage(row.record) + " is not an object with fields");
    }
    std::vector<FieldSpec> fields;
    for (const auto& [key, value] : row.record.items()) {
        if (!rules_.nested.contains(key)) {
            CheckFieldName(key);
            fields.push_back({key, std::nullopt, {0, key}});
        }
    }
    return fields;
}

void FieldPlan::CheckDefaults() const {
    for (const auto& [name, value] : rules_.defaults) {
        const bool isField = std::any_of(fields_.begin(), fields_.end(),
                                         [&](const Field& field) { return field.name == name; });
        if (!isField) {
            throw ResultError("--default for '" + name + "', which is no field of the result");
        }
    }
}

FieldPlan::Field FieldPlan::MakeField(const FieldSpec& spec, const Row& row) const {
    const ValueType open =
        rules_.infer ? InferType(Find(row, spec.source), rules_.isTyped) : ValueType{};
    Field field;
    field.name = spec.name;
    field.source = spec.source;
    field.type = spec.type.value_or(open);
    const std::string word = WordFor(field.type.scalar);
    const std::string tag = field.type.isList ? "list" : word;
    field.opening = "<field name=\"" + ElementText(spec.name) + "\"><" +
                    (field.type.isList ? "list type=\"" + word + "\"" : word) + ">";
    field.closing = "</" + tag + "></field>";
    AddFallback(field);
    return field;
}

void FieldPlan::AddFallback(Field& field) const {
    const auto value = rules_.defaults.find(field.name);
    field.hasFallback = rules_.fill || value != rules_.defaults.end();
    const bool isEmptyList =
        field.type.isList && value != rules_.defaults.end() && value->second.empty();
    if (value == rules_.defaults.end() || isEmptyList) {
        field.fallback = EmptyValueText(field.type);
        return;
    }
    try {
        field.fallback = ValueText(value->second, field.type);
    } catch (const InputError& problem) {
        throw ResultError("Invalid --default for '" + field.name + "': " + problem.what());
    }
}

void FieldPlan::CheckKeys(const Record& record) const {
    for (const auto& [key, value] : record.items()) {
        const bool isKnown =
            rules_.nested.contains(key) ||
            std::any_of(fields_.begin(), fields_.end(),
                        [&, &name = key](const Field& field) { return field.name == name; });
        if (!isKnown) {
            throw InputError("it has '" + key +
                             "', which the first has not; choose the fields by --field");
        }
    }
}

void FieldPlan::AppendField(std::string& xml, const Field& field, const Row& row) const {
    const Record* const value = Find(row, field.source);
    xml += field.opening;
    if (!IsMissing(value, field.type)) {
        try {
            xml += ValueText(*value, field.type);
        } catch (const InputError& problem) {
            throw InputError("field '" + field.name + "': " + problem.what());
        }
    } else if (field.hasFallback) {
        xml += field.fallback;
    } else {
        throw InputError("field '" + field.name +
                         "' has no value; --default or --fill would give it one");
    }
    xml += field.closing;
}

} // namespace TandrilResult
