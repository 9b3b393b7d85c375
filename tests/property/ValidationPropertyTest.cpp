#include <CppTools/callspec/Output.h>

#include <tests/support/SeededTest.h>
#include <tests/support/SpecGenerator.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using CppTools::CallSpec::Output;
using CppTools::CallSpec::ParameterSpec;
using TestSupport::BothSeeds;
using TestSupport::CheckedConstraint;
using TestSupport::CheckedParameter;
using TestSupport::CheckedSpec;
using TestSupport::ConstraintGenerator;
using TestSupport::GivenPairs;
using TestSupport::InputGiven;
using TestSupport::SeedName;
using TestSupport::SpecGenerator;

constexpr int kValidations = 300;

class ValidationPropertyTest : public TestSupport::SeededTest {};

TEST_P(ValidationPropertyTest, Constraint_AgreesWithAnIndependentCheck) {
    ConstraintGenerator constraints(Random());
    for (int round = 0; round < kValidations; ++round) {
        const CheckedConstraint checked = constraints.Any();
        for (int values = 0; values < 10; ++values) {
            const std::string value = checked.candidate(Random());
            const auto output = Output::New();
            const bool accepted = checked.constraint->Validate(value, "name", output);
            ASSERT_EQ(accepted, checked.accepts(value))
                << checked.constraint->ToString() << ", value '" << value << "'";
            ASSERT_EQ(output->GetErrors().size(), accepted ? 0U : 1U) << "value '" << value << "'";
        }
    }
}

TEST_P(ValidationPropertyTest, Parameter_AgreesWithAnIndependentCheckOfEachValue) {
    SpecGenerator specs(Random());
    for (int round = 0; round < kValidations; ++round) {
        const CheckedParameter parameter = specs.Parameter("name");
        std::vector<std::string> values;
        bool allAccepted = true;
        for (std::size_t count = Random().Between(1, 4); count > 0; --count) {
            values.push_back(parameter.candidate(Random()));
            allAccepted = allAccepted && parameter.accepts(values.back());
        }
        ASSERT_EQ(parameter.spec->Validate(values, Output::New()), allAccepted)
            << "kind " << static_cast<int>(parameter.spec->GetType()) << ", values "
            << testing::PrintToString(values);
    }
}

TEST_P(ValidationPropertyTest, GetInt_AgreesWithAnIndependentReading) {
    for (int round = 0; round < kValidations; ++round) {
        const auto near = static_cast<long>(Random().Below(1000)) - 500;
        const std::string numeral = TestSupport::NumeralNear(Random(), near);
        const auto expected = TestSupport::NumberIn(numeral);
        long number = 0;
        ASSERT_EQ(ParameterSpec::GetInt(numeral, number), expected.has_value()) << numeral;
        ASSERT_EQ(number, expected.value_or(number)) << numeral;
    }
}

TEST_P(ValidationPropertyTest, Input_AgreesWithAnIndependentCheckOfTheWholeCall) {
    SpecGenerator specs(Random());
    int inOrder = 0;
    for (int round = 0; round < kValidations; ++round) {
        const CheckedSpec checked = specs.Spec();
        const GivenPairs given = specs.Given(checked);
        const auto inputSpec = checked.NewInputSpec();
        const auto output = Output::New();
        const bool accepted = inputSpec->Validate(InputGiven(given, inputSpec), output);
        ASSERT_EQ(accepted, checked.Accepts(given)) << testing::PrintToString(given);
        ASSERT_TRUE(accepted || output->HasError()) << testing::PrintToString(given);
        inOrder += accepted ? 1 : 0;
    }
    // Neither verdict may be so rare that agreeing on it says nothing.
    EXPECT_GT(inOrder, kValidations / 10);
    EXPECT_LT(inOrder, kValidations - kValidations / 10);
}

TEST_P(ValidationPropertyTest, SetInputSpec_FoldsShortNamesWithoutLosingAValue) {
    SpecGenerator specs(Random());
    for (int round = 0; round < kValidations; ++round) {
        const CheckedSpec checked = specs.Spec();
        const GivenPairs given = specs.Given(checked);
        std::map<std::string, std::vector<std::string>> longFirst;
        for (const bool takesShort : {false, true}) {
            for (const auto& [name, value] : given) {
                std::string longName = name;
                for (const CheckedParameter& parameter : checked.Parameters()) {
                    if (parameter.spec->GetShortName() == name && !name.empty()) {
                        longName = parameter.spec->GetName();
                    }
                }
                if ((longName != name) == takesShort) {
                    longFirst[longName].push_back(value);
                }
            }
        }
        ASSERT_EQ(InputGiven(given, checked.NewInputSpec())->GetParameters(), longFirst)
            << testing::PrintToString(given);
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, ValidationPropertyTest, BothSeeds(), SeedName);

} // namespace
