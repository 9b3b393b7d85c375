#include <CppTools/callspec/Output.h>
#include <CppTools/callspec/ParameterConstraint.h>
#include <CppTools/callspec/ParameterSpec.h>
#include <CppTools/host/Pattern.h>
#include <CppTools/metaobj/CppToolException.h>

#include <boost/algorithm/string/join.hpp>

#include <algorithm>
#include <iterator>
#include <stdexcept>

namespace CppTools::CallSpec {

namespace {

template <typename Values, typename Value>
bool Contains(const Values& values, const Value& value) {
    return std::find(values.begin(), values.end(), value) != values.end();
}

std::vector<std::string> ToStrings(const std::vector<long>& numbers) {
    std::vector<std::string> texts;
    std::transform(numbers.begin(), numbers.end(), std::back_inserter(texts),
                   [](long number) { return std::to_string(number); });
    return texts;
}

std::string InvalidConstraint(const std::string& parameterName) {
    return "Invalid data constraint for parameter '" + parameterName + "'. ";
}

} // namespace

ParameterConstraint::ParameterConstraint(ParameterConstraintType type) : type_(type) {}

ParameterConstraint::~ParameterConstraint() = default;

std::shared_ptr<ParameterConstraint> ParameterConstraint::New(ParameterConstraintType type) {
    return std::make_shared<ParameterConstraint>(type);
}

void ParameterConstraint::SetIntRange(long min, long max) {
    if (min > max) {
        throw CppToolException("Invalid values for SetIntRange, constraints must have a min value "
                               "<= max value");
    }
    intMin_ = min;
    intMax_ = max;
}

void ParameterConstraint::GetIntRange(long& min, long& max) const {
    min = intMin_;
    max = intMax_;
}

void ParameterConstraint::AddIntEnum(long value) {
    if (Contains(intEnum_, value)) {
        throw CppToolException("Duplicate Value found in ParameterConstraint::AddIntEnum");
    }
    intEnum_.push_back(value);
}

void ParameterConstraint::AddStringEnum(std::string value, std::string description) {
    if (Contains(stringEnum_, value)) {
        throw CppToolException("Duplicate Value found in ParameterConstraint::AddStringEnum: " +
                               value);
    }
    if (!description.empty()) {
        stringEnumDescriptions_.emplace(value, std::move(description));
    }
    stringEnum_.push_back(std::move(value));
}

void ParameterConstraint::AddStringEnum(const char* value, const char* description) {
    AddStringEnum(std::string(value), std::string(description));
}

void ParameterConstraint::AddStringEnum(const char* value) {
    AddStringEnum(std::string(value), std::string());
}

void ParameterConstraint::SetStringRegex(std::string expression) {
    stringRegex_ = std::move(expression);
    compiledRegex_.reset();
}

std::string ParameterConstraint::ToString() const {
    switch (type_) {
    case ParameterConstraintType::None:
        return "no constraint";
    case ParameterConstraintType::IntRange:
        return "integer in the range " + std::to_string(intMin_) + "-" + std::to_string(intMax_);
    case ParameterConstraintType::IntEnum:
        return "[" + boost::algorithm::join(ToStrings(intEnum_), ", ") + "]";
    case ParameterConstraintType::StringEnum:
        return "[" + boost::algorithm::join(stringEnum_, ", ") + "]";
    case ParameterConstraintType::StringRegex:
        return "a string matching the regular expression " + stringRegex_;
    }
    return "unknown";
}

bool ParameterConstraint::Validate(const std::string& value, const std::string& parameterName,
                                   const std::shared_ptr<Output>& output) const {
    switch (type_) {
    case ParameterConstraintType::None:
        return true;
    case ParameterConstraintType::IntRange:
    case ParameterConstraintType::IntEnum:
        return ValidateInt(value, parameterName, *output);
    case ParameterConstraintType::StringEnum:
        if (Contains(stringEnum_, value)) {
            return true;
        }
        output->AddErrorMessage(InvalidConstraint(parameterName) +
                                "Expected a single value from the set " + ToString() + " got '" +
                                value + "'");
        return false;
    case ParameterConstraintType::StringRegex:
        if (MatchesRegex(value)) {
            return true;
        }
        output->AddErrorMessage(InvalidConstraint(parameterName) +
                                "Value does not match the expected regular expression (" +
                                stringRegex_ + ")");
        return false;
    }
    return false;
}

bool ParameterConstraint::ValidateInt(const std::string& value, const std::string& parameterName,
                                      Output& output) const {
    long number = 0;
    if (!ParameterSpec::GetInt(value, number)) {
        output.AddErrorMessage("Invalid data type for parameter '" + parameterName +
                               "'. Expected an Integer");
        return false;
    }
    if (type_ == ParameterConstraintType::IntRange) {
        if (intMin_ <= number && number <= intMax_) {
            return true;
        }
        output.AddErrorMessage(InvalidConstraint(parameterName) + "Expected " + ToString());
        return false;
    }
    if (Contains(intEnum_, number)) {
        return true;
    }
    output.AddErrorMessage(InvalidConstraint(parameterName) +
                           "Expected a single value from the set " + ToString());
    return false;
}

bool ParameterConstraint::MatchesRegex(const std::string& value) const {
    if (!compiledRegex_) {
        compiledRegex_ = std::make_unique<const Host::Pattern>(stringRegex_);
    }
    try {
        return compiledRegex_->Matches(value);
    } catch (const std::runtime_error&) {
        // The matcher gave up on this value; what cannot be shown to match is refused.
        return false;
    }
}

} // namespace CppTools::CallSpec
