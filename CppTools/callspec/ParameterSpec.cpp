#include <CppTools/callspec/Output.h>
#include <CppTools/callspec/ParameterSpec.h>
#include <CppTools/callspec/ValueReading.h>
#include <CppTools/metaobj/CppToolException.h>

#include <boost/algorithm/string/replace.hpp>

#include <algorithm>
#include <cctype>

namespace CppTools::CallSpec {

namespace {

bool IsNameCharacter(char character) {
    return (character >= 'a' && character <= 'z') || (character >= '0' && character <= '9') ||
           character == '-';
}

/// The pattern [a-z0-9-]+, scanned because thousands of names are checked at a start.
bool IsValidParameterName(const std::string& name) {
    return !name.empty() && std::all_of(name.begin(), name.end(), IsNameCharacter);
}

bool IsAlphanumeric(char character) {
    return std::isalnum(static_cast<unsigned char>(character)) != 0;
}

bool Fits(ParameterConstraintType constraint, ParameterType parameter) {
    switch (constraint) {
    case ParameterConstraintType::IntRange:
    case ParameterConstraintType::IntEnum:
        return parameter == ParameterType::Int || parameter == ParameterType::IntList;
    case ParameterConstraintType::StringEnum:
    case ParameterConstraintType::StringRegex:
        return parameter == ParameterType::String || parameter == ParameterType::StringList;
    case ParameterConstraintType::None:
        break;
    }
    return false;
}

std::string DescribeEnumValues(const ParameterConstraint& constraint) {
    std::string text;
    if (constraint.GetType() == ParameterConstraintType::StringEnum) {
        for (const auto& [value, description] : constraint.GetStringEnumWithDesc()) {
            text += "\n    " + value + ": " + description;
        }
    }
    return text.empty() ? text : text + "\n";
}

std::string InvalidData(const std::string& value, const std::string& name) {
    return "Invalid data '" + value + "' for parameter " + name;
}

} // namespace

ParameterSpec::ParameterSpec(std::string name, ParameterType type)
    : type_(type), name_(std::move(name)) {
    if (!IsValidParameterName(name_)) {
        throw CppToolException("Invalid Parameter name '" + name_ +
                               "' parameter names can only contain lower-case alphanumeric "
                               "characters, numbers and '-'");
    }
}

std::shared_ptr<ParameterSpec> ParameterSpec::New(const std::string& name, ParameterType type) {
    return std::make_shared<ParameterSpec>(name, type);
}

std::shared_ptr<ParameterSpec> ParameterSpec::New(std::string&& name, ParameterType type) {
    return std::make_shared<ParameterSpec>(std::move(name), type);
}

std::shared_ptr<ParameterSpec> ParameterSpec::New(const char* name, ParameterType type) {
    return std::make_shared<ParameterSpec>(std::string(name), type);
}

void ParameterSpec::SetShortName(std::string shortName) {
    if (shortName.size() != 1 || !IsAlphanumeric(shortName.front())) {
        throw CppToolException(
            "Invalid value for shortName, must be a single character a-z, A-Z or 0-9");
    }
    shortName_ = std::move(shortName);
}

void ParameterSpec::SetShortName(const char* shortName) {
    SetShortName(std::string(shortName));
}

void ParameterSpec::SetDescription(std::string description) {
    description_ = std::move(description);
}

void ParameterSpec::SetDescription(const char* description) {
    SetDescription(std::string(description));
}

void ParameterSpec::SetSecret(bool secret) {
    if (type_ != ParameterType::String) {
        throw CppToolException("Cannot be set for parameter " + name_);
    }
    secret_ = secret;
}

void ParameterSpec::SetConstraint(const std::shared_ptr<ParameterConstraint>& constraint) {
    if (!constraint) {
        return;
    }
    if (!Fits(constraint->GetType(), type_)) {
        throw CppToolException("Invalid constraint specified for parameter " + name_ +
                               ".  The parameter constraint specified is not allowed for a "
                               "parameter of this type.");
    }
    constraint_ = constraint;
}

bool ParameterSpec::AllowMultiple() const {
    return type_ == ParameterType::StringList || type_ == ParameterType::IntList ||
           type_ == ParameterType::BoolList;
}

bool ParameterSpec::GetInt(const std::string& text, long& result) {
    return ReadWholeInteger(text, result);
}

bool ParameterSpec::GetBool(const std::string& text, bool& result) {
    return ReadBoolean(text, result);
}

bool ParameterSpec::Validate(const std::vector<std::string>& values,
                             const std::shared_ptr<Output>& output) const {
    if (values.empty()) {
        output->AddErrorMessage("Missing value for parameter " + name_);
    } else if (values.size() > 1 && !AllowMultiple()) {
        output->AddErrorMessage("Found multiple values for " + name_ +
                                " this parameter can only accept a single value.");
    }
    bool valid = true;
    for (const auto& value : values) {
        valid = ValidateValue(value, output) && valid;
    }
    return valid;
}

bool ParameterSpec::ValidateValue(const std::string& value,
                                  const std::shared_ptr<Output>& output) const {
    switch (type_) {
    case ParameterType::Int:
    case ParameterType::IntList:
        if (long number = 0; !GetInt(value, number)) {
            output->AddErrorMessage(InvalidData(value, name_) + " expected type Integer");
            return false;
        }
        return ValidateConstraint(value, output);
    case ParameterType::Bool:
    case ParameterType::BoolList:
        if (bool truth = false; !GetBool(value, truth)) {
            output->AddErrorMessage(
                InvalidData(value, name_) +
                " expected one of [1, 0, y, n, true, false, True, False, yes, no, t, f, T, F]");
            return false;
        }
        return true;
    case ParameterType::Flag:
        if (!value.empty()) {
            output->AddErrorMessage(InvalidData(value, name_) +
                                    ".  This parameter is a flag and cannot accept any values. ");
            return false;
        }
        return true;
    case ParameterType::String:
    case ParameterType::StringList:
        break;
    }
    return ValidateConstraint(value, output);
}

bool ParameterSpec::ValidateConstraint(const std::string& value,
                                       const std::shared_ptr<Output>& output) const {
    return !constraint_ || constraint_->Validate(value, name_, output);
}

std::string ParameterSpec::GetDescription(bool expand) const {
    if (!expand || !constraint_) {
        return description_;
    }
    std::string text = description_;
    const std::string printed = constraint_->ToString();
    boost::algorithm::replace_all(text, "%REGEX%", printed);
    boost::algorithm::replace_all(text, "%ENUM%", printed);
    boost::algorithm::replace_all(text, "%FULLENUM%", DescribeEnumValues(*constraint_));
    return text;
}

} // namespace CppTools::CallSpec
