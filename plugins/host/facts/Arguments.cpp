#include "Arguments.h"

#include "HostError.h"
#include "TextTools.h"

#include <CppTools/callspec/ParameterSpec.h>

#include <algorithm>

namespace HostFacts {

namespace {

bool IsUnfilledPlaceholder(std::string_view value) {
    return value.starts_with("$val{") || value.starts_with("$list{");
}

long ReadNumber(const std::string& name, const std::string& text) {
    long number = 0;
    if (!CppTools::CallSpec::ParameterSpec::GetInt(text, number)) {
        throw HostError("Invalid value '" + text + "' for --" + name + ": not an integer");
    }
    return number;
}

} // namespace

Arguments::Arguments(const std::vector<std::string>& words,
                     std::initializer_list<std::string_view> known) {
    for (const std::string& word : words) {
        const std::string name = word.substr(0, word.find('='));
        const bool isKnown = word.starts_with("--") &&
                             std::find(known.begin(), known.end(), name.substr(2)) != known.end();
        if (!isKnown) {
            throw HostError("Unknown option '" + word + "'");
        }
        const std::string value = word.substr(std::min(name.size() + 1, word.size()));
        if (!IsUnfilledPlaceholder(value)) {
            values_.insert_or_assign(name.substr(2), value);
        }
    }
}

std::optional<std::string> Arguments::Text(const std::string& name) const {
    const auto found = values_.find(name);
    return found == values_.end() ? std::nullopt : std::optional(found->second);
}

std::string Arguments::Text(const std::string& name, const std::string& otherwise) const {
    return Text(name).value_or(otherwise);
}

std::optional<long> Arguments::Number(const std::string& name) const {
    const auto text = Text(name);
    return text ? std::optional(ReadNumber(name, *text)) : std::nullopt;
}

std::optional<bool> Arguments::Switch(const std::string& name) const {
    const auto text = Text(name);
    if (!text) {
        return std::nullopt;
    }
    bool value = false;
    if (!CppTools::CallSpec::ParameterSpec::GetBool(*text, value)) {
        throw HostError("Invalid value '" + *text + "' for --" + name + ": not a boolean");
    }
    return value;
}

std::vector<std::string> Arguments::List(const std::string& name) const {
    const auto text = Text(name);
    if (!text) {
        return {};
    }
    const auto items = Split(*text, ',');
    return {items.begin(), items.end()};
}

std::vector<long> Arguments::Numbers(const std::string& name) const {
    std::vector<long> numbers;
    for (const std::string& item : List(name)) {
        numbers.push_back(ReadNumber(name, item));
    }
    return numbers;
}

} // namespace HostFacts
