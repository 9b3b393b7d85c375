#include "ScalarText.h"

#include "Errors.h"
#include "PrintableText.h"

#include <CppTools/callspec/ParameterSpec.h>
#include <libxml/entities.h>

#include <charconv>
#include <cstdint>
#include <memory>
#include <optional>

namespace TandrilResult {

namespace {

struct FreeXmlText {
    void operator()(xmlChar* text) const { xmlFree(text); }
};

bool IsScalar(const Record& value) {
    return value.is_string() || value.is_boolean() || value.is_number_integer();
}

/// The scalar as it stood in the input.
std::string PlainText(const Record& value) {
    return value.is_string() ? value.get_ref<const std::string&>() : value.dump();
}

std::optional<std::int64_t> WholeInteger(std::string_view text) {
    std::int64_t number = 0;
    const char* const end = text.data() + text.size();
    const auto [rest, problem] = std::from_chars(text.data(), end, number);
    return problem == std::errc() && rest == end ? std::optional(number) : std::nullopt;
}

std::string IntText(const Record& value) {
    const auto number = value.is_boolean() ? std::nullopt : WholeInteger(PlainText(value));
    if (!number) {
        throw InputError(NameForMessage(value) + " is not an integer of 64 bits");
    }
    return std::to_string(*number);
}

std::string BoolText(const Record& value) {
    bool isOn = false;
    if (!CppTools::CallSpec::ParameterSpec::GetBool(PlainText(value), isOn)) {
        throw InputError(NameForMessage(value) + " is not a boolean");
    }
    return isOn ? "true" : "false";
}

} // namespace

std::string ElementText(const std::string& text) {
    const std::string printable = PrintableText(text);
    if (printable.size() > kLongestText) {
        throw InputError("the text of " + std::to_string(printable.size()) +
                         " bytes is too long; a result holds texts of up to " +
                         std::to_string(kLongestText));
    }
    const std::unique_ptr<xmlChar, FreeXmlText> escaped(
        xmlEncodeSpecialChars(nullptr, reinterpret_cast<const xmlChar*>(printable.c_str())));
    if (!escaped) {
        throw std::bad_alloc();
    }
    return reinterpret_cast<const char*>(escaped.get());
}

std::string ScalarText(const Record& value, ScalarType type) {
    if (!IsScalar(value)) {
        throw InputError(NameForMessage(value) + " is not a single value");
    }
    switch (type) {
    case ScalarType::Int:
        return IntText(value);
    case ScalarType::Bool:
        return BoolText(value);
    default:
        return ElementText(PlainText(value));
    }
}

std::string ScalarElement(const Record& value, ScalarType type) {
    const std::string word = WordFor(type);
    return "<" + word + ">" + ScalarText(value, type) + "</" + word + ">";
}

std::string NameForMessage(const Record& value) {
    static constexpr std::size_t kLongest = 60;
    if (value.is_array()) {
        return "a list";
    }
    if (value.is_object()) {
        return "an object";
    }
    const std::string text = PlainText(value);
    return "'" + text.substr(0, kLongest) + (text.size() > kLongest ? "...'" : "'");
}

bool IsPlainInteger(std::string_view text) {
    const auto number = WholeInteger(text);
    return number && std::to_string(*number) == text;
}

} // namespace TandrilResult
