#include <CppTools/callspec/Input.h>
#include <CppTools/callspec/InputSpec.h>

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "tests/support/Thrown.h"

// The specification of an input, and the folding of short names into long ones that goes with it.

namespace {

using CppTools::CallSpec::Input;
using CppTools::CallSpec::InputSpec;
using CppTools::CallSpec::ParameterSpec;
using CppTools::CallSpec::ParameterType;
using TestSupport::ThrownBy;

using Parameters = std::map<std::string, std::vector<std::string>>;

std::shared_ptr<ParameterSpec> WithShortName(const std::string& name,
                                             const std::string& shortName) {
    auto parameter = ParameterSpec::New(name, ParameterType::String);
    parameter->SetShortName(shortName);
    return parameter;
}

std::shared_ptr<InputSpec> SpecOf(const std::vector<std::shared_ptr<ParameterSpec>>& parameters) {
    auto spec = InputSpec::New();
    for (const auto& parameter : parameters) {
        spec->AddParameter(parameter);
    }
    return spec;
}

class InputFoldingTest : public testing::Test {
  protected:
    const std::shared_ptr<Input> input = Input::New();
    const std::shared_ptr<InputSpec> verboseSpec = SpecOf({WithShortName("verbose", "v")});
};

TEST_F(InputFoldingTest, SetInputSpec_ShortName_MovesItsValuesToTheLongName) {
    input->AddParameter("v", "1");
    input->AddParameter("v", "2");
    input->SetInputSpec(verboseSpec);
    EXPECT_EQ(input->GetParameters(), (Parameters{{"verbose", {"1", "2"}}}));
    EXPECT_FALSE(input->HasParameter("v"));
}

TEST_F(InputFoldingTest, SetInputSpec_ShortAndLongName_AppendsBehindTheLongOnesValues) {
    input->AddParameter("v", "short");
    input->AddParameter("verbose", "long");
    input->SetInputSpec(verboseSpec);
    EXPECT_EQ(input->GetParameters(), (Parameters{{"verbose", {"long", "short"}}}));
}

TEST_F(InputFoldingTest, SetInputSpec_SeveralShortNames_AreFoldedEachIntoItsOwn) {
    input->AddParameter("V", "2");
    input->AddParameter("v", "1");
    input->SetInputSpec(SpecOf({WithShortName("verbose", "v"), WithShortName("version", "V"),
                                WithShortName("unused", "u")}));
    EXPECT_EQ(input->GetParameters(), (Parameters{{"verbose", {"1"}}, {"version", {"2"}}}));
}

TEST_F(InputFoldingTest, SetInputSpec_ShortNameOfTwoParameters_GoesToTheFirstByName) {
    const auto zeta = ParameterSpec::New("zeta", ParameterType::String);
    const auto alpha = ParameterSpec::New("alpha", ParameterType::String);
    const auto spec = SpecOf({zeta, alpha});
    zeta->SetShortName("n");
    alpha->SetShortName("n");
    input->AddParameter("n", "1");
    input->SetInputSpec(spec);
    EXPECT_EQ(input->GetParameters(), (Parameters{{"alpha", {"1"}}}));
}

TEST_F(InputFoldingTest, SetInputSpec_ShortNameInOtherCase_IsNotFolded) {
    input->AddParameter("V", "1");
    input->SetInputSpec(verboseSpec);
    EXPECT_EQ(input->GetParameters(), (Parameters{{"V", {"1"}}}));
}

TEST_F(InputFoldingTest, SetInputSpec_NamesItDoesNotKnow_StayAsTheyAre) {
    input->AddParameter("x", "1");
    input->SetInputSpec(verboseSpec);
    EXPECT_EQ(input->GetParameters(), (Parameters{{"x", {"1"}}}));
}

TEST_F(InputFoldingTest, SetInputSpec_ParametersWithoutShortName_TakeNoPartInFolding) {
    input->AddParameter("", "1");
    input->SetInputSpec(SpecOf({ParameterSpec::New("name", ParameterType::String)}));
    EXPECT_EQ(input->GetParameters(), (Parameters{{"", {"1"}}}));
}

TEST_F(InputFoldingTest, SetInputSpec_NothingGiven_AddsNothing) {
    input->SetInputSpec(verboseSpec);
    EXPECT_TRUE(input->GetParameters().empty());
}

TEST_F(InputFoldingTest, SetInputSpec_ContextUnderAShortName_StaysContext) {
    input->SetContext("v", "context");
    input->SetInputSpec(verboseSpec);
    EXPECT_EQ(input->GetContext("v"), "context");
    EXPECT_TRUE(input->GetParameters().empty());
}

TEST_F(InputFoldingTest, SetInputSpec_Again_ReplacesTheSpecification) {
    input->SetInputSpec(verboseSpec);
    input->SetInputSpec(SpecOf({ParameterSpec::New("force", ParameterType::Flag)}));
    EXPECT_EQ(input->GetParameterType("force"), ParameterType::Flag);
    EXPECT_EQ(ThrownBy([&] { input->GetParameterType("verbose"); }),
              "Request for unknown parameter: verbose");
}

TEST_F(InputFoldingTest, SetInputSpec_EmptyPointer_DeclaresNothingAndFoldsNothing) {
    input->AddParameter("v", "1");
    input->SetInputSpec(nullptr);
    EXPECT_EQ(input->GetParameters(), (Parameters{{"v", {"1"}}}));
    EXPECT_EQ(ThrownBy([&] { input->GetParameterType("v"); }), "Request for unknown parameter: v");
}

TEST_F(InputFoldingTest, AddParameter_AfterSetInputSpec_IsFoldedOnlyByTheNext) {
    input->AddParameter("v", "1");
    input->SetInputSpec(verboseSpec);
    input->AddParameter("v", "2");
    EXPECT_EQ(input->GetParameters(), (Parameters{{"v", {"2"}}, {"verbose", {"1"}}}));
    input->SetInputSpec(verboseSpec);
    EXPECT_EQ(input->GetParameters(), (Parameters{{"verbose", {"1", "2"}}}));
}

TEST_F(InputFoldingTest, GetParameter_ShortNameItself_IsUnknown) {
    input->AddParameter("v", "1");
    input->SetInputSpec(verboseSpec);
    EXPECT_EQ(input->GetParameter("verbose"), "1");
    EXPECT_EQ(ThrownBy([&] { input->GetParameter("v"); }), "Request for unknown parameter: v");
}

} // namespace
