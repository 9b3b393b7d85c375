#include <CppTools/callspec/Input.h>
#include <CppTools/callspec/InputSpec.h>
#include <CppTools/callspec/Output.h>
#include <CppTools/metaobj/MetaInt.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "tests/support/Thrown.h"

namespace {

using CppTools::CallSpec::Input;
using CppTools::CallSpec::InputSpec;
using CppTools::CallSpec::Output;
using CppTools::CallSpec::ParameterConstraint;
using CppTools::CallSpec::ParameterConstraintType;
using CppTools::CallSpec::ParameterSpec;
using CppTools::CallSpec::ParameterType;
using TestSupport::ThrownBy;

using Messages = std::vector<std::string>;

std::shared_ptr<ParameterSpec> Parameter(const std::string& name,
                                         ParameterType kind = ParameterType::String) {
    return ParameterSpec::New(name, kind);
}

std::shared_ptr<ParameterSpec> WithShortName(const std::string& name,
                                             const std::string& shortName) {
    auto parameter = Parameter(name);
    parameter->SetShortName(shortName);
    return parameter;
}

std::shared_ptr<ParameterSpec> Optional(const std::string& name,
                                        ParameterType kind = ParameterType::String) {
    auto parameter = Parameter(name, kind);
    parameter->SetRequired(false);
    return parameter;
}

std::shared_ptr<InputSpec> SpecOf(const std::vector<std::shared_ptr<ParameterSpec>>& parameters) {
    auto spec = InputSpec::New();
    for (const auto& parameter : parameters) {
        spec->AddParameter(parameter);
    }
    return spec;
}

Messages NamesOf(const InputSpec& spec) {
    Messages names;
    for (const auto& parameter : spec.GetParameters()) {
        names.push_back(parameter->GetName());
    }
    return names;
}

TEST(InputSpecTest, New_IsEmpty) {
    EXPECT_TRUE(InputSpec::New()->GetParameters().empty());
    EXPECT_FALSE(InputSpec::New()->IsContextSupported("user"));
    EXPECT_NE(InputSpec::New(), InputSpec::New());
}

TEST(InputSpecTest, VirtualOperations_ThereAreNone) {
    EXPECT_FALSE(std::is_polymorphic_v<InputSpec>);
}

TEST(InputSpecTest, AddParameter_AnyOrder_IsListedInNameOrder) {
    EXPECT_EQ(NamesOf(*SpecOf({Parameter("zeta"), Parameter("alpha"), Parameter("mid")})),
              (Messages{"alpha", "mid", "zeta"}));
}

TEST(InputSpecTest, AddParameter_EveryPermutation_IsListedInByteOrder) {
    Messages names = {"--", "0a", "a-", "aa", "aaa"};
    const Messages ascending = names;
    do {
        const auto spec = InputSpec::New();
        for (const auto& name : names) {
            spec->AddParameter(Parameter(name));
        }
        ASSERT_EQ(NamesOf(*spec), ascending);
    } while (std::next_permutation(names.begin(), names.end()));
}

TEST(InputSpecTest, AddParameter_IsSortedAfterEveryAddition) {
    const auto spec = SpecOf({Parameter("mid")});
    spec->AddParameter(Parameter("alpha"));
    EXPECT_EQ(NamesOf(*spec), (Messages{"alpha", "mid"}));
    spec->AddParameter(Parameter("beta"));
    EXPECT_EQ(NamesOf(*spec), (Messages{"alpha", "beta", "mid"}));
}

TEST(InputSpecTest, AddParameter_StoresTheParameterItself) {
    const auto parameter = Parameter("ab");
    const auto spec = SpecOf({parameter});
    EXPECT_EQ(spec->GetParameters().at(0), parameter);
    EXPECT_EQ(&spec->GetParameters(), &spec->GetParameters());
}

TEST(InputSpecTest, AddParameter_TwoCharacters_IsLongEnough) {
    EXPECT_EQ(NamesOf(*SpecOf({Parameter("ab")})), Messages{"ab"});
}

TEST(InputSpecTest, AddParameter_OneCharacter_ThrowsAndChangesNothing) {
    const auto spec = SpecOf({Parameter("ab")});
    EXPECT_EQ(ThrownBy([&] { spec->AddParameter(Parameter("a")); }),
              "Parameter name must be at least 2 characters");
    EXPECT_EQ(NamesOf(*spec), Messages{"ab"});
}

TEST(InputSpecTest, AddParameter_OneCharacterWithATakenShortName_ReportsTheLengthFirst) {
    const auto spec = SpecOf({WithShortName("old", "n")});
    EXPECT_EQ(ThrownBy([&] { spec->AddParameter(WithShortName("x", "n")); }),
              "Parameter name must be at least 2 characters");
}

TEST(InputSpecTest, AddParameter_SameNameTwice_ThrowsAndKeepsTheFirst) {
    const auto first = Parameter("name");
    const auto spec = SpecOf({first, Parameter("other")});
    EXPECT_EQ(ThrownBy([&] { spec->AddParameter(Parameter("name", ParameterType::Int)); }),
              "Found a duplicate paramater specification for parameter named 'name'");
    EXPECT_EQ(NamesOf(*spec), (Messages{"name", "other"}));
    EXPECT_EQ(spec->GetParameters().at(0), first);
}

TEST(InputSpecTest, AddParameter_TakenShortName_ThrowsAndChangesNothing) {
    const auto spec = SpecOf({WithShortName("old", "n")});
    EXPECT_EQ(ThrownBy([&] { spec->AddParameter(WithShortName("new", "n")); }),
              "Invalid short name specified for --new. The short name -n is already used for "
              "--old");
    EXPECT_EQ(NamesOf(*spec), Messages{"old"});
}

TEST(InputSpecTest, AddParameter_ShortNameInOtherCase_IsNoClash) {
    EXPECT_EQ(NamesOf(*SpecOf({WithShortName("old", "n"), WithShortName("new", "N")})),
              (Messages{"new", "old"}));
}

TEST(InputSpecTest, AddParameter_SeveralWithoutShortName_DoNotClash) {
    EXPECT_EQ(NamesOf(*SpecOf({Parameter("bb"), Parameter("aa"), WithShortName("cc", "a")})),
              (Messages{"aa", "bb", "cc"}));
}

TEST(InputSpecTest, AddParameter_SameNameAndShortName_ReportsTheDuplicate) {
    const auto spec = SpecOf({WithShortName("name", "n")});
    EXPECT_EQ(ThrownBy([&] { spec->AddParameter(WithShortName("name", "n")); }),
              "Found a duplicate paramater specification for parameter named 'name'");
}

TEST(InputSpecTest, AddParameter_ClashesWithTwoPresentOnes_ReportsTheFirstInNameOrder) {
    const auto spec = SpecOf({Parameter("zeta"), WithShortName("alpha", "n")});
    EXPECT_EQ(ThrownBy([&] { spec->AddParameter(WithShortName("zeta", "n")); }),
              "Invalid short name specified for --zeta. The short name -n is already used for "
              "--alpha");
    const auto other = SpecOf({Parameter("alpha"), WithShortName("zeta", "n")});
    EXPECT_EQ(ThrownBy([&] { other->AddParameter(WithShortName("alpha", "n")); }),
              "Found a duplicate paramater specification for parameter named 'alpha'");
}

/// Names in an order that has nothing to do with their own.
Messages ShuffledNames(int count) {
    Messages names;
    for (int i = 0; i < count; ++i) {
        names.push_back("name" + std::to_string(1000 + i * 37 % count));
    }
    return names;
}

TEST(InputSpecTest, AddParameter_Hundreds_AreListedInNameOrderWheneverAsked) {
    for (const int askedEvery : {1, 7, 1000}) {
        auto spec = InputSpec::New();
        Messages expected;
        for (const auto& name : ShuffledNames(300)) {
            spec->AddParameter(Parameter(name));
            expected.insert(std::lower_bound(expected.begin(), expected.end(), name), name);
            if (expected.size() % static_cast<std::size_t>(askedEvery) == 0) {
                ASSERT_EQ(NamesOf(*spec), expected);
            }
        }
        EXPECT_EQ(NamesOf(*spec), expected);
        EXPECT_EQ(spec->FindParameter("name1299")->GetName(), "name1299");
        EXPECT_EQ(spec->FindParameter("name1300"), nullptr);
    }
}

TEST(InputSpecTest, AddParameter_HundredsWithAClash_ThrowsAndChangesNothing) {
    auto spec = InputSpec::New();
    spec->AddParameter(WithShortName("name1150x", "s"));
    for (const auto& name : ShuffledNames(300)) {
        spec->AddParameter(Parameter(name));
    }
    EXPECT_EQ(ThrownBy([&] { spec->AddParameter(Parameter("name1007")); }),
              "Found a duplicate paramater specification for parameter named 'name1007'");
    EXPECT_EQ(ThrownBy([&] { spec->AddParameter(WithShortName("other", "s")); }),
              "Invalid short name specified for --other. The short name -s is already used for "
              "--name1150x");
    EXPECT_EQ(ThrownBy([&] { spec->AddParameter(WithShortName("name1100", "s")); }),
              "Found a duplicate paramater specification for parameter named 'name1100'");
    EXPECT_EQ(ThrownBy([&] { spec->AddParameter(WithShortName("name1200", "s")); }),
              "Invalid short name specified for --name1200. The short name -s is already used for "
              "--name1150x");
    EXPECT_EQ(spec->GetParameters().size(), 301U);
}

TEST(InputSpecTest, FindParameter_KnowsExactLongNamesOnly) {
    const auto parameter = WithShortName("name", "n");
    const auto spec = SpecOf({Parameter("alpha"), parameter, Parameter("zeta")});
    EXPECT_EQ(spec->FindParameter("name"), parameter);
    EXPECT_EQ(spec->FindParameter("n"), nullptr);
    EXPECT_EQ(spec->FindParameter("nam"), nullptr);
    EXPECT_EQ(spec->FindParameter("names"), nullptr);
    EXPECT_EQ(spec->FindParameter(""), nullptr);
    EXPECT_EQ(InputSpec::New()->FindParameter("name"), nullptr);
}

TEST(InputSpecTest, SetContextSupported_AddsTheKeyAndTwiceIsHarmless) {
    const auto spec = InputSpec::New();
    spec->SetContextSupported("user");
    spec->SetContextSupported("user");
    spec->SetContextSupported("");
    EXPECT_TRUE(spec->IsContextSupported("user"));
    EXPECT_TRUE(spec->IsContextSupported(""));
    EXPECT_FALSE(spec->IsContextSupported("User"));
    EXPECT_FALSE(spec->IsContextSupported("host"));
}

/// The result, and what was added behind a message that was there before.
using Verdict = std::pair<bool, Messages>;
using Given = std::vector<std::pair<std::string, std::string>>;

Verdict Validate(const std::shared_ptr<InputSpec>& spec, const Given& given) {
    const auto input = Input::New();
    for (const auto& [name, value] : given) {
        input->AddParameter(name, value);
    }
    input->SetInputSpec(spec);
    const auto output = Output::New();
    output->AddErrorMessage("earlier");
    const bool result = spec->Validate(input, output);
    Messages errors = output->GetErrors();
    EXPECT_EQ(errors.front(), "earlier");
    errors.erase(errors.begin());
    return {result, errors};
}

const Verdict kAccepted = {true, {}};

TEST(InputSpecTest, Validate_NothingDeclaredAndNothingGiven_IsAccepted) {
    EXPECT_EQ(Validate(InputSpec::New(), {}), kAccepted);
}

TEST(InputSpecTest, Validate_RequiredGivenAndOptionalLeftOut_IsAccepted) {
    const auto spec = SpecOf({Parameter("name"), Optional("size", ParameterType::Int),
                              Optional("force", ParameterType::Flag)});
    EXPECT_EQ(Validate(spec, {{"name", "a"}}), kAccepted);
    EXPECT_EQ(Validate(spec, {{"name", ""}, {"size", "5"}, {"force", ""}}), kAccepted);
}

TEST(InputSpecTest, Validate_UnknownParameter_IsRefused) {
    EXPECT_EQ(Validate(InputSpec::New(), {{"bogus", "1"}}),
              Verdict(false, {"Unknown parameter : bogus"}));
}

TEST(InputSpecTest, Validate_SeveralUnknownParameters_ComeInByteOrder) {
    EXPECT_EQ(Validate(InputSpec::New(), {{"\xC3\xA9", ""}, {"b", ""}, {"_", ""}, {"Z", ""}}),
              Verdict(false, {"Unknown parameter : Z", "Unknown parameter : _",
                              "Unknown parameter : b", "Unknown parameter : \xC3\xA9"}));
}

TEST(InputSpecTest, Validate_OutputWithAResult_KeepsIt) {
    const auto output = Output::New();
    output->SetRootObject(CppTools::MetaObj::MetaInt::New(7));
    EXPECT_FALSE(SpecOf({Parameter("name")})->Validate(Input::New(), output));
    EXPECT_EQ(output->GetRootObject(), CppTools::MetaObj::MetaInt::New(7));
    EXPECT_EQ(output->GetOutputType(), Output::OutputType::Result);
}

TEST(InputSpecTest, Validate_MissingRequiredParameter_IsRefused) {
    EXPECT_EQ(Validate(SpecOf({Parameter("name")}), {}),
              Verdict(false, {"Missing required parameter --name"}));
}

TEST(InputSpecTest, Validate_MissingRequiredFlag_IsRefused) {
    EXPECT_EQ(Validate(SpecOf({Parameter("force", ParameterType::Flag)}), {}),
              Verdict(false, {"Missing required parameter --force"}));
}

TEST(InputSpecTest, Validate_UnknownAndTwoMissing_ReportsTheUnknownThenTheMissingInNameOrder) {
    EXPECT_EQ(Validate(SpecOf({Parameter("zeta"), Parameter("alpha")}), {{"mid", "1"}}),
              Verdict(false, {"Unknown parameter : mid", "Missing required parameter --alpha",
                              "Missing required parameter --zeta"}));
}

TEST(InputSpecTest, Validate_ProblemsOfGivenParameters_ComeInNameOrder) {
    const auto spec = SpecOf({Parameter("size", ParameterType::Int),
                              Parameter("count", ParameterType::Int), Parameter("name")});
    EXPECT_EQ(Validate(spec, {{"size", "x"}, {"bogus", ""}, {"zz", ""}, {"count", "y"}}),
              Verdict(false, {"Unknown parameter : bogus",
                              "Invalid data 'y' for parameter count expected type Integer",
                              "Invalid data 'x' for parameter size expected type Integer",
                              "Unknown parameter : zz", "Missing required parameter --name"}));
}

TEST(InputSpecTest, Validate_RefusedValueBeforeAnAcceptedOne_StaysRefused) {
    const auto spec = SpecOf({Optional("aa", ParameterType::Int), Optional("bb")});
    EXPECT_EQ(Validate(spec, {{"aa", "x"}, {"bb", "fine"}}),
              Verdict(false, {"Invalid data 'x' for parameter aa expected type Integer"}));
}

TEST(InputSpecTest, Validate_SecondValueOfASingleParameter_IsReportedButAccepted) {
    EXPECT_EQ(Validate(SpecOf({Parameter("name")}), {{"name", "a"}, {"name", "b"}}),
              Verdict(true, {"Found multiple values for name this parameter can only accept a "
                             "single value."}));
}

TEST(InputSpecTest, Validate_ConstraintOfAParameter_IsConsulted) {
    const auto constraint = ParameterConstraint::New(ParameterConstraintType::IntRange);
    constraint->SetIntRange(1, 5);
    const auto size = Parameter("size", ParameterType::Int);
    size->SetConstraint(constraint);
    EXPECT_EQ(Validate(SpecOf({size}), {{"size", "5"}}), kAccepted);
    EXPECT_EQ(Validate(SpecOf({size}), {{"size", "6"}}),
              Verdict(false, {"Invalid data constraint for parameter 'size'. Expected integer in "
                              "the range 1-5"}));
}

TEST(InputSpecTest, Validate_HelpGiven_IsNeverRefused) {
    const auto spec = SpecOf({Parameter("name"), Parameter("size", ParameterType::Int)});
    EXPECT_EQ(Validate(spec, {{"help", ""}, {"bogus", "1"}, {"size", "x"}}), kAccepted);
    EXPECT_EQ(Validate(spec, {{"help", "with a value"}}), kAccepted);
}

TEST(InputSpecTest, Validate_HelpDeclaredAndGivenUnderItsShortName_IsNeverRefused) {
    const auto help = WithShortName("help", "h");
    help->SetRequired(false);
    EXPECT_EQ(Validate(SpecOf({help, Parameter("name")}), {{"h", ""}, {"bogus", "1"}}), kAccepted);
}

TEST(InputSpecTest, Validate_ShortName_CountsAsTheLongOne) {
    EXPECT_EQ(Validate(SpecOf({WithShortName("name", "n")}), {{"n", "a"}}), kAccepted);
}

TEST(InputSpecTest, Validate_ShortNameNeverFolded_IsUnknown) {
    const auto spec = SpecOf({WithShortName("name", "n")});
    const auto input = Input::New();
    input->AddParameter("n", "a");
    const auto output = Output::New();
    EXPECT_FALSE(spec->Validate(input, output));
    EXPECT_EQ(output->GetErrors(),
              (Messages{"Unknown parameter : n", "Missing required parameter --name"}));
}

} // namespace
