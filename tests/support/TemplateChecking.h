#pragma once

#include <CppTools/callspec/InputSpec.h>

#include <memory>
#include <string>
#include <vector>

/// Declared parameters whose values can hold much or little.
namespace TestSupport {

using Texts = std::vector<std::string>;

inline std::shared_ptr<CppTools::CallSpec::ParameterConstraint>
Matching(const std::string& expression) {
    auto constraint = CppTools::CallSpec::ParameterConstraint::New(
        CppTools::CallSpec::ParameterConstraintType::StringRegex);
    constraint->SetStringRegex(expression);
    return constraint;
}

inline std::shared_ptr<CppTools::CallSpec::ParameterConstraint> OneOfTexts(const Texts& texts) {
    auto constraint = CppTools::CallSpec::ParameterConstraint::New(
        CppTools::CallSpec::ParameterConstraintType::StringEnum);
    for (const auto& text : texts) {
        constraint->AddStringEnum(text, "");
    }
    return constraint;
}

inline std::shared_ptr<CppTools::CallSpec::ParameterConstraint>
OneOfNumbers(const std::vector<long>& numbers) {
    auto constraint = CppTools::CallSpec::ParameterConstraint::New(
        CppTools::CallSpec::ParameterConstraintType::IntEnum);
    for (const long number : numbers) {
        constraint->AddIntEnum(number);
    }
    return constraint;
}

inline std::shared_ptr<CppTools::CallSpec::ParameterConstraint> Between(long least, long most) {
    auto constraint = CppTools::CallSpec::ParameterConstraint::New(
        CppTools::CallSpec::ParameterConstraintType::IntRange);
    constraint->SetIntRange(least, most);
    return constraint;
}

inline void
Declare(CppTools::CallSpec::InputSpec& spec, const std::string& name,
        CppTools::CallSpec::ParameterType type, bool required,
        const std::shared_ptr<CppTools::CallSpec::ParameterConstraint>& constraint = nullptr) {
    auto parameter = CppTools::CallSpec::ParameterSpec::New(name, type);
    parameter->SetRequired(required);
    parameter->SetConstraint(constraint);
    spec.AddParameter(parameter);
}

/// Parameters of every kind; all but those beginning with "may-" are required.
inline std::shared_ptr<CppTools::CallSpec::InputSpec> NewCheckSpec() {
    auto spec = CppTools::CallSpec::InputSpec::New();
    Declare(*spec, "count", CppTools::CallSpec::ParameterType::Int, true, Between(1, 9));
    Declare(*spec, "flag", CppTools::CallSpec::ParameterType::Flag, false);
    Declare(*spec, "level", CppTools::CallSpec::ParameterType::Int, true, OneOfNumbers({1, 2}));
    Declare(*spec, "may-count", CppTools::CallSpec::ParameterType::Int, false, Between(1, 9));
    Declare(*spec, "may-text", CppTools::CallSpec::ParameterType::String, false);
    Declare(*spec, "mode", CppTools::CallSpec::ParameterType::String, true,
            OneOfTexts({"slow", "fast"}));
    Declare(*spec, "number", CppTools::CallSpec::ParameterType::Int, true);
    Declare(*spec, "on", CppTools::CallSpec::ParameterType::Bool, true);
    Declare(*spec, "option", CppTools::CallSpec::ParameterType::String, true,
            OneOfTexts({"-a", "-b"}));
    Declare(*spec, "optional", CppTools::CallSpec::ParameterType::String, true,
            OneOfTexts({"", "yes"}));
    Declare(*spec, "ports", CppTools::CallSpec::ParameterType::IntList, true, Between(1, 9));
    Declare(*spec, "sign", CppTools::CallSpec::ParameterType::Int, true, Between(0, 9));
    Declare(*spec, "step", CppTools::CallSpec::ParameterType::Int, true, OneOfNumbers({0, 1}));
    Declare(*spec, "switches", CppTools::CallSpec::ParameterType::BoolList, true);
    Declare(*spec, "tags", CppTools::CallSpec::ParameterType::StringList, true, Matching("[a-z]+"));
    Declare(*spec, "text", CppTools::CallSpec::ParameterType::String, true);
    Declare(*spec, "texts", CppTools::CallSpec::ParameterType::StringList, true);
    Declare(*spec, "title", CppTools::CallSpec::ParameterType::String, true, Matching("[a-z ]+"));
    Declare(*spec, "titles", CppTools::CallSpec::ParameterType::StringList, true,
            Matching("[a-z ]+"));
    return spec;
}

} // namespace TestSupport
