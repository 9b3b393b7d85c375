#pragma once

#include <tests/support/ConstraintGenerator.h>

#include <CppTools/callspec/Input.h>
#include <CppTools/callspec/InputSpec.h>

#include <algorithm>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

/// Parameter sets together with the knowledge of what they accept, and calls for them.
namespace TestSupport {

struct CheckedParameter {
    std::shared_ptr<CppTools::CallSpec::ParameterSpec> spec;
    std::function<bool(const std::string&)> accepts;
    std::function<std::string(RandomSource&)> candidate;
};

/// Names, long or short, with a value each, in the order given.
using GivenPairs = std::vector<std::pair<std::string, std::string>>;

/// A parameter set.
class CheckedSpec {
  public:
    explicit CheckedSpec(std::vector<CheckedParameter> parameters)
        : parameters_(std::move(parameters)) {}

    const std::vector<CheckedParameter>& Parameters() const { return parameters_; }

    std::shared_ptr<CppTools::CallSpec::InputSpec> NewInputSpec() const {
        auto inputSpec = CppTools::CallSpec::InputSpec::New();
        for (const CheckedParameter& parameter : parameters_) {
            inputSpec->AddParameter(parameter.spec);
        }
        return inputSpec;
    }

    /// Whether a call without a wish for help is in order.
    bool Accepts(const GivenPairs& given) const {
        std::set<std::string> seen;
        for (const auto& [name, value] : given) {
            const CheckedParameter* parameter = Find(name);
            if (parameter == nullptr || !parameter->accepts(value)) {
                return false;
            }
            seen.insert(parameter->spec->GetName());
        }
        return std::ranges::all_of(parameters_, [&](const CheckedParameter& parameter) {
            return !parameter.spec->IsRequired() || seen.contains(parameter.spec->GetName());
        });
    }

  private:
    const CheckedParameter* Find(const std::string& name) const {
        const auto found = std::ranges::find_if(parameters_, [&](const CheckedParameter& each) {
            return each.spec->GetName() == name || each.spec->GetShortName() == name;
        });
        return found == parameters_.end() || name.empty() ? nullptr : &*found;
    }

    std::vector<CheckedParameter> parameters_;
};

class SpecGenerator {
  public:
    explicit SpecGenerator(RandomSource& random)
        : random_(&random), constraints_(random), texts_(random, AnyBytes()) {}

    CheckedSpec Spec() {
        std::vector<CheckedParameter> parameters;
        std::vector<std::string> names = {"name", "name-2", "count", "a1",      "0-",
                                          "--",   "zone",   "ip",    "verbose", "x-y-z"};
        std::vector<std::string> shortNames = {"n", "N", "c", "0", "z", "v", "x"};
        random_->Shuffle(names);
        random_->Shuffle(shortNames);
        for (std::size_t count = random_->Below(names.size()); count > 0; --count) {
            parameters.push_back(Parameter(names[count]));
            if (count < shortNames.size() && random_->Chance(60)) {
                parameters.back().spec->SetShortName(shortNames[count]);
            }
        }
        return CheckedSpec(std::move(parameters));
    }

    /// A parameter of any kind, with or without a constraint.
    CheckedParameter Parameter(const std::string& name) {
        using CppTools::CallSpec::ParameterType;
        const auto type = static_cast<ParameterType>(random_->Below(7));
        CheckedParameter parameter = OfType(name, type);
        parameter.spec->SetDescription(texts_.Text() + (random_->Chance(50) ? "%FULLENUM%" : ""));
        parameter.spec->SetRequired(random_->Chance(30));
        if (type == ParameterType::String) {
            parameter.spec->SetSecret(random_->Chance(20));
        }
        return parameter;
    }

    /// A call of which most may be in order.
    GivenPairs Given(const CheckedSpec& spec) {
        GivenPairs given;
        for (const CheckedParameter& parameter : spec.Parameters()) {
            if (random_->Chance(parameter.spec->IsRequired() ? 95 : 40)) {
                for (std::size_t count = random_->Chance(70) ? 1 : 3; count > 0; --count) {
                    given.emplace_back(SpellingOf(*parameter.spec), LikelyValue(parameter));
                }
            }
        }
        if (random_->Chance(15)) {
            given.emplace_back(random_->Chance(50) ? "unknown" : texts_.Text(), texts_.Text());
        }
        random_->Shuffle(given);
        return given;
    }

  private:
    using ParameterSpec = CppTools::CallSpec::ParameterSpec;

    CheckedParameter OfType(const std::string& name, CppTools::CallSpec::ParameterType type) {
        using CppTools::CallSpec::ParameterType;
        CheckedParameter parameter{ParameterSpec::New(name, type), {}, {}};
        switch (type) {
        case ParameterType::Int:
        case ParameterType::IntList:
            SetRules(parameter, random_->Chance(60) ? constraints_.OfIntegers() : AnyInteger());
            break;
        case ParameterType::String:
        case ParameterType::StringList:
            SetRules(parameter, random_->Chance(60) ? constraints_.OfStrings() : AnyString());
            break;
        case ParameterType::Flag:
            SetRules(parameter, Nothing());
            break;
        default:
            SetRules(parameter, Boolean());
        }
        return parameter;
    }

    static void SetRules(CheckedParameter& parameter, const CheckedConstraint& rules) {
        parameter.spec->SetConstraint(rules.constraint);
        parameter.accepts = rules.accepts;
        parameter.candidate = rules.candidate;
    }

    static CheckedConstraint AnyInteger() {
        return {nullptr, [](const std::string& text) { return NumberIn(text).has_value(); },
                [](RandomSource& random) {
                    return NumeralNear(random, static_cast<long>(random.Below(1000)));
                }};
    }

    static CheckedConstraint AnyString() {
        return {nullptr, [](const std::string&) { return true; },
                [](RandomSource& random) { return TextGenerator(random, AnyBytes()).Text(); }};
    }

    static CheckedConstraint Nothing() {
        return {nullptr, [](const std::string& text) { return text.empty(); },
                [](RandomSource& random) { return random.Chance(80) ? "" : "yes"; }};
    }

    static CheckedConstraint Boolean() {
        static const std::vector<std::string> words = {"1", "yes", "y", "true",  "True",  "t", "T",
                                                       "0", "no",  "n", "false", "False", "f", "F"};
        static const std::vector<std::string> others = {"",   "TRUE", "Yes", "on", "2",
                                                        "t ", " t",   "N",   "Y",  "tru"};
        return {nullptr,
                [](const std::string& text) { return std::ranges::count(words, text) > 0; },
                [](RandomSource& random) {
                    return random.Chance(80) ? random.Pick(words) : random.Pick(others);
                }};
    }

    std::string SpellingOf(const ParameterSpec& parameter) {
        const bool shortly = !parameter.GetShortName().empty() && random_->Chance(40);
        return shortly ? parameter.GetShortName() : parameter.GetName();
    }

    /// A value that is accepted more often than candidates are.
    std::string LikelyValue(const CheckedParameter& parameter) {
        std::string value = parameter.candidate(*random_);
        for (int tries = 0; tries < 4 && !parameter.accepts(value); ++tries) {
            value = parameter.candidate(*random_);
        }
        return value;
    }

    RandomSource* random_;
    ConstraintGenerator constraints_;
    TextGenerator texts_;
};

/// An input with these values that belongs to the specification.
template <typename InputType = CppTools::CallSpec::Input>
std::shared_ptr<InputType>
InputGiven(const GivenPairs& given,
           const std::shared_ptr<CppTools::CallSpec::InputSpec>& spec = nullptr) {
    auto input = InputType::New();
    for (const auto& [name, value] : given) {
        input->AddParameter(name, value);
    }
    if (spec) {
        input->SetInputSpec(spec);
    }
    return input;
}

} // namespace TestSupport
