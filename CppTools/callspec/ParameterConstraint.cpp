#include <CppTools/callspec/DistinctValues.h>
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

/// The part of a constraint, made when it is first needed.
template <typename Part>
Part& Need(std::unique_ptr<Part>& part) {
    if (!part) {
        part = std::make_unique<Part>();
    }
    return *part;
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

struct ParameterConstraint::IntSet : DistinctValues<long> {};

struct ParameterConstraint::StringSet : DistinctValues<std::string> {
    std::map<std::string, std::string> descriptions;
};

struct ParameterConstraint::Regex {
    std::string expression;
    std::unique_ptr<const Host::Pattern> compiled;
};

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
    auto& set = Need(intSet_);
    if (set.Contains(value)) {
        throw CppToolException("Duplicate Value found in ParameterConstraint::AddIntEnum");
    }
    set.Add(value);
}

const std::vector<long>& ParameterConstraint::GetIntEnum() const {
    return Need(intSet_).InOrder();
}

void ParameterConstraint::AddStringEnum(std::string value, std::string description) {
    auto& set = Need(stringSet_);
    if (set.Contains(value)) {
        throw CppToolException("Duplicate Value found in ParameterConstraint::AddStringEnum: " +
                               value);
    }
    if (!description.empty()) {
        set.descriptions.emplace(value, std::move(description));
    }
    set.Add(std::move(value));
}

void ParameterConstraint::AddStringEnum(const char* value, const char* description) {
    AddStringEnum(std::string(value), std::string(description));
}

void ParameterConstraint::AddStringEnum(const char* value) {
    AddStringEnum(std::string(value), std::string());
}

const std::vector<std::string>& ParameterConstraint::GetStringEnum() const {
    return Need(stringSet_).InOrder();
}

const std::map<std::string, std::string>& ParameterConstraint::GetStringEnumWithDesc() const {
    return Need(stringSet_).descriptions;
}

void ParameterConstraint::SetStringRegex(std::string expression) {
    auto& regex = Need(regex_);
    regex.expression = std::move(expression);
    regex.compiled.reset();
}

const std::string& ParameterConstraint::GetStringRegex() const {
    return Need(regex_).expression;
}

std::string ParameterConstraint::ToString() const {
    switch (type_) {
    case ParameterConstraintType::None:
        return "no constraint";
    case ParameterConstraintType::IntRange:
        return "integer in the range " + std::to_string(intMin_) + "-" + std::to_string(intMax_);
    case ParameterConstraintType::IntEnum:
        return "[" + boost::algorithm::join(ToStrings(GetIntEnum()), ", ") + "]";
    case ParameterConstraintType::StringEnum:
        return "[" + boost::algorithm::join(GetStringEnum(), ", ") + "]";
    case ParameterConstraintType::StringRegex:
        return "a string matching the regular expression " + GetStringRegex();
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
        if (Need(stringSet_).Contains(value)) {
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
                                GetStringRegex() + ")");
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
    if (Need(intSet_).Contains(number)) {
        return true;
    }
    output.AddErrorMessage(InvalidConstraint(parameterName) +
                           "Expected a single value from the set " + ToString());
    return false;
}

bool ParameterConstraint::MatchesRegex(const std::string& value) const {
    auto& regex = Need(regex_);
    if (!regex.compiled) {
        regex.compiled = std::make_unique<const Host::Pattern>(regex.expression);
    }
    try {
        return regex.compiled->Matches(value);
    } catch (const std::runtime_error&) {
        // The matcher gave up on this value; what cannot be shown to match is refused.
        return false;
    }
}

} // namespace CppTools::CallSpec
