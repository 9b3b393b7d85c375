#include <CppTools/callspec/Input.h>
#include <CppTools/callspec/InputSpec.h>
#include <CppTools/callspec/ValueReading.h>
#include <CppTools/metaobj/CppToolException.h>

#include <algorithm>
#include <iterator>

namespace CppTools::CallSpec {

namespace {

const std::string kEmpty;
const std::vector<std::string> kNoValues;

} // namespace

Input::Input() = default;
Input::~Input() = default;

std::shared_ptr<Input> Input::New() {
    return std::make_shared<Input>();
}

void Input::AddParameter(const std::string& name, const std::string& value) {
    parameters_[name].push_back(value);
}

bool Input::HasParameter(const std::string& name) const {
    return parameters_.contains(name);
}

bool Input::HasParameter(const char* name) const {
    return HasParameter(std::string(name));
}

bool Input::IsFlagSet(const std::string& name) const {
    return HasParameter(name);
}

bool Input::IsFlagSet(const char* name) const {
    return HasParameter(name);
}

ParameterType Input::GetParameterType(const std::string& name) const {
    const auto parameter = inputSpec_ ? inputSpec_->FindParameter(name) : nullptr;
    if (!parameter) {
        throw CppToolException("Request for unknown parameter: " + name);
    }
    return parameter->GetParameterType();
}

const std::string& Input::GetParameter(const std::string& name) const {
    switch (GetParameterType(name)) {
    case ParameterType::Flag:
        throw CppToolException("Request for GetParameter on a flag type parameter: " + name);
    case ParameterType::StringList:
    case ParameterType::IntList:
    case ParameterType::BoolList:
        throw CppToolException(
            "Request for GetParameter on a parameter that can have multiple values: " + name);
    case ParameterType::String:
    case ParameterType::Int:
    case ParameterType::Bool:
        break;
    }
    const auto& values = Values(name);
    return values.size() == 1 ? values.front() : kEmpty;
}

const std::string& Input::GetParameter(const char* name) const {
    return GetParameter(std::string(name));
}

long Input::GetParameterInt(const std::string& name) const {
    long number = -1;
    ReadWholeInteger(GetParameter(name), number);
    return number;
}

long Input::GetParameterInt(const char* name) const {
    return GetParameterInt(std::string(name));
}

bool Input::GetParameterBool(const std::string& name) const {
    return IsTrueWord(GetParameter(name));
}

bool Input::GetParameterBool(const char* name) const {
    return GetParameterBool(std::string(name));
}

void Input::GetParameterList(const std::string& name, std::vector<std::string>& out) const {
    const auto& values = Values(name);
    out.insert(out.end(), values.begin(), values.end());
}

void Input::GetParameterList(const char* name, std::vector<std::string>& out) const {
    GetParameterList(std::string(name), out);
}

void Input::GetParameterIntList(const std::string& name, std::vector<long>& out) const {
    for (const auto& value : Values(name)) {
        if (long number = 0; ReadWholeInteger(value, number)) {
            out.push_back(number);
        }
    }
}

void Input::GetParameterIntList(const char* name, std::vector<long>& out) const {
    GetParameterIntList(std::string(name), out);
}

void Input::GetParameterBoolList(const std::string& name, std::vector<bool>& out) const {
    const auto& values = Values(name);
    std::transform(values.begin(), values.end(), std::back_inserter(out), IsTrueWord);
}

void Input::GetParameterBoolList(const char* name, std::vector<bool>& out) const {
    GetParameterBoolList(std::string(name), out);
}

std::string Input::GetParameterListAsString(const std::string& name, char separator,
                                            bool quote) const {
    const std::string between = separator == '\0' ? "" : std::string(1, separator);
    std::string text = quote ? "\"" : "";
    bool first = true;
    for (const auto& value : Values(name)) {
        if (!first) {
            text += between;
        }
        text += value;
        first = false;
    }
    return quote ? text + "\"" : text;
}

void Input::SetContext(const std::string& key, const std::string& value) {
    context_.insert_or_assign(key, value);
}

const std::string& Input::GetContext(const std::string& key) const {
    const auto found = context_.find(key);
    return found == context_.end() ? kEmpty : found->second;
}

void Input::SetInputSpec(std::shared_ptr<InputSpec> inputSpec) {
    inputSpec_ = std::move(inputSpec);
    if (!inputSpec_) {
        return;
    }
    for (const auto& parameter : inputSpec_->GetParameters()) {
        const auto given = parameters_.find(parameter->GetShortName());
        if (parameter->GetShortName().empty() || given == parameters_.end()) {
            continue;
        }
        auto& values = parameters_[parameter->GetName()];
        values.insert(values.end(), given->second.begin(), given->second.end());
        parameters_.erase(given);
    }
}

const std::vector<std::string>& Input::Values(const std::string& name) const {
    const auto found = parameters_.find(name);
    return found == parameters_.end() ? kNoValues : found->second;
}

} // namespace CppTools::CallSpec
