#include <CppTools/callspec/ParameterSpec.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include "tests/support/NamedRow.h"
#include "tests/support/Thrown.h"

namespace {

using CppTools::CallSpec::ParameterConstraint;
using CppTools::CallSpec::ParameterConstraintType;
using CppTools::CallSpec::ParameterSpec;
using CppTools::CallSpec::ParameterType;
using TestSupport::NamedRow;
using TestSupport::ThrownBy;
using namespace std::string_literals;

const std::string kNothingThrown = "<nothing was thrown>";
const std::string kBadShortName =
    "Invalid value for shortName, must be a single character a-z, A-Z or 0-9";

// Numbers of kinds, which print readably in the names of cases.
ParameterType KindOf(int number) {
    return static_cast<ParameterType>(number);
}

std::shared_ptr<ParameterSpec> StringParameter() {
    return ParameterSpec::New("vm-name", ParameterType::String);
}

std::string BadName(const std::string& name) {
    return "Invalid Parameter name '" + name +
           "' parameter names can only contain lower-case alphanumeric characters, numbers and "
           "'-'";
}

TEST(ParameterSpecTest, Kinds_HaveTheirNumbers) {
    EXPECT_EQ(static_cast<int>(ParameterType::String), 0);
    EXPECT_EQ(static_cast<int>(ParameterType::Int), 1);
    EXPECT_EQ(static_cast<int>(ParameterType::Bool), 2);
    EXPECT_EQ(static_cast<int>(ParameterType::Flag), 3);
    EXPECT_EQ(static_cast<int>(ParameterType::StringList), 4);
    EXPECT_EQ(static_cast<int>(ParameterType::IntList), 5);
    EXPECT_EQ(static_cast<int>(ParameterType::BoolList), 6);
}

class ParameterSpecNameTest : public testing::TestWithParam<std::string> {};

TEST_P(ParameterSpecNameTest, New_LowerCaseDigitsAndHyphens_AreAcceptedInEveryForm) {
    const std::string& name = GetParam();
    EXPECT_EQ(ParameterSpec::New(name, ParameterType::String)->GetName(), name);
    EXPECT_EQ(ParameterSpec::New(std::string(name), ParameterType::Int)->GetName(), name);
    EXPECT_EQ(ParameterSpec::New(name.c_str(), ParameterType::Flag)->GetName(), name);
}

INSTANTIATE_TEST_SUITE_P(Names, ParameterSpecNameTest,
                         testing::Values("vm-name", "a", "ab", "0", "9z", "-", "--help", "a-",
                                         "abcxyz0189-"));

struct Name : NamedRow {
    std::string text;
};

class ParameterSpecBadNameTest : public testing::TestWithParam<Name> {};

TEST_P(ParameterSpecBadNameTest, New_AnythingElse_ThrowsWithTheName) {
    const std::string& name = GetParam().text;
    const std::string message = BadName(name);
    EXPECT_EQ(ThrownBy([&] { ParameterSpec::New(name, ParameterType::String); }), message);
    EXPECT_EQ(ThrownBy([&] { ParameterSpec::New(std::string(name), ParameterType::Int); }),
              message);
    EXPECT_EQ(ThrownBy([&] { ParameterSpec::New(name.c_str(), ParameterType::Flag); }), message);
}

INSTANTIATE_TEST_SUITE_P(
    Names, ParameterSpecBadNameTest,
    testing::Values(Name{{"empty"}, ""}, Name{{"capitals"}, "VmName"},
                    Name{{"underscore"}, "vm_name"}, Name{{"blank"}, "vm name"},
                    Name{{"blank in front"}, " vm"}, Name{{"line end behind"}, "vm\n"},
                    Name{{"dot"}, "vm.name"}, Name{{"equals sign"}, "vm=name"},
                    Name{{"character before 0"}, "a/"}, Name{{"character after 9"}, "a:"},
                    Name{{"character before a"}, "a`"}, Name{{"character after z"}, "a{"},
                    Name{{"letter beyond ASCII"}, "n\xC3\xA4me"}));

TEST(ParameterSpecTest, New_EveryByteInAName_OnlyLowerCaseDigitsAndHyphensAreAccepted) {
    for (int byte = 0; byte < 256; ++byte) {
        const char c = static_cast<char>(byte);
        const bool expected = (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '-';
        for (const std::string& name : {std::string{c}, std::string{'a', c}, std::string{c, 'a'}}) {
            const std::string thrown =
                ThrownBy([&] { ParameterSpec::New(name, ParameterType::String); });
            EXPECT_EQ(thrown == kNothingThrown, expected) << byte;
        }
    }
}

TEST(ParameterSpecTest, New_NameWithNul_Throws) {
    const std::string name = "vm\0name"s;
    EXPECT_EQ(ThrownBy([&] { ParameterSpec::New(name, ParameterType::String); }),
              std::string(BadName(name).c_str()));
}

TEST(ParameterSpecTest, New_NameOfAMillionCharacters_IsJudgedLikeAnyOther) {
    const std::string name(1000000, 'a');
    EXPECT_EQ(ParameterSpec::New(name, ParameterType::String)->GetName(), name);
    EXPECT_EQ(ThrownBy([&] { ParameterSpec::New(name + "A", ParameterType::String); }),
              BadName(name + "A"));
}

TEST(ParameterSpecTest, VirtualOperations_ThereAreNone) {
    EXPECT_FALSE(std::is_polymorphic_v<ParameterSpec>);
}

TEST(ParameterSpecTest, New_StartsRequiredOpenAndWithoutExtras) {
    const auto parameter = StringParameter();
    EXPECT_TRUE(parameter->IsRequired());
    EXPECT_FALSE(parameter->IsSecret());
    EXPECT_EQ(parameter->GetShortName(), "");
    EXPECT_EQ(parameter->GetDescription(false), "");
    EXPECT_EQ(parameter->GetDescription(true), "");
    EXPECT_EQ(parameter->GetConstraint(), nullptr);
}

TEST(ParameterSpecTest, SetRequired_ChangesAndRestores) {
    const auto parameter = StringParameter();
    parameter->SetRequired(false);
    EXPECT_FALSE(parameter->IsRequired());
    parameter->SetRequired(true);
    EXPECT_TRUE(parameter->IsRequired());
}

TEST(ParameterSpecTest, SetShortName_EveryForm_StoresTheCharacter) {
    const auto parameter = StringParameter();
    parameter->SetShortName("Z");
    EXPECT_EQ(parameter->GetShortName(), "Z");
    parameter->SetShortName("7"s);
    EXPECT_EQ(parameter->GetShortName(), "7");
}

TEST(ParameterSpecTest, SetShortName_OfAllSingleBytes_OnlyAsciiLettersAndDigitsAreAccepted) {
    const std::string allowed = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789";
    for (int byte = 0; byte < 256; ++byte) {
        SCOPED_TRACE(byte);
        const std::string shortName(1, static_cast<char>(byte));
        const bool accepted = allowed.find(shortName) != std::string::npos;
        EXPECT_EQ(ThrownBy([&] { StringParameter()->SetShortName(shortName); }),
                  accepted ? kNothingThrown : kBadShortName);
    }
}

class ParameterSpecBadShortNameTest : public testing::TestWithParam<std::string> {};

TEST_P(ParameterSpecBadShortNameTest, SetShortName_ThrowsInEveryFormAndKeepsTheOldOne) {
    const auto parameter = StringParameter();
    parameter->SetShortName("n");
    EXPECT_EQ(ThrownBy([&] { parameter->SetShortName(GetParam()); }), kBadShortName);
    EXPECT_EQ(ThrownBy([&] { parameter->SetShortName(GetParam().c_str()); }), kBadShortName);
    EXPECT_EQ(parameter->GetShortName(), "n");
}

INSTANTIATE_TEST_SUITE_P(Names, ParameterSpecBadShortNameTest,
                         testing::Values("", "ab", "-", "_", " ", "a ", "\xC3\xA9"));

TEST(ParameterSpecTest, SetDescription_EveryForm_StoresTheText) {
    const auto parameter = StringParameter();
    parameter->SetDescription("The name");
    EXPECT_EQ(parameter->GetDescription(false), "The name");
    parameter->SetDescription("Another name"s);
    EXPECT_EQ(parameter->GetDescription(false), "Another name");
    parameter->SetDescription("");
    EXPECT_EQ(parameter->GetDescription(false), "");
}

class ParameterSpecKindTest : public testing::TestWithParam<int> {};

TEST_P(ParameterSpecKindTest, New_StoresTheKindUnderBothNames) {
    const auto parameter = ParameterSpec::New("vm-name", KindOf(GetParam()));
    EXPECT_EQ(parameter->GetType(), KindOf(GetParam()));
    EXPECT_EQ(parameter->GetParameterType(), KindOf(GetParam()));
}

TEST_P(ParameterSpecKindTest, AllowMultiple_IsTrueForTheListKinds) {
    const bool isList = KindOf(GetParam()) == ParameterType::StringList ||
                        KindOf(GetParam()) == ParameterType::IntList ||
                        KindOf(GetParam()) == ParameterType::BoolList;
    EXPECT_EQ(ParameterSpec::New("vm-name", KindOf(GetParam()))->AllowMultiple(), isList);
}

TEST_P(ParameterSpecKindTest, SetSecret_IsForStringParametersAlone) {
    const auto parameter = ParameterSpec::New("vm-name", KindOf(GetParam()));
    const bool isString = KindOf(GetParam()) == ParameterType::String;
    const std::string expected = isString ? kNothingThrown : "Cannot be set for parameter vm-name";
    EXPECT_EQ(ThrownBy([&] { parameter->SetSecret(true); }), expected);
    EXPECT_EQ(parameter->IsSecret(), isString);
    EXPECT_EQ(ThrownBy([&] { parameter->SetSecret(false); }), expected);
    EXPECT_FALSE(parameter->IsSecret());
}

INSTANTIATE_TEST_SUITE_P(Kinds, ParameterSpecKindTest, testing::Range(0, 7));

bool Fits(ParameterType kind, ParameterConstraintType constraint) {
    using Fitting = std::pair<ParameterType, ParameterConstraintType>;
    const std::vector<Fitting> fitting = {
        {ParameterType::Int, ParameterConstraintType::IntRange},
        {ParameterType::Int, ParameterConstraintType::IntEnum},
        {ParameterType::IntList, ParameterConstraintType::IntRange},
        {ParameterType::IntList, ParameterConstraintType::IntEnum},
        {ParameterType::String, ParameterConstraintType::StringEnum},
        {ParameterType::String, ParameterConstraintType::StringRegex},
        {ParameterType::StringList, ParameterConstraintType::StringEnum},
        {ParameterType::StringList, ParameterConstraintType::StringRegex},
    };
    return std::find(fitting.begin(), fitting.end(), Fitting{kind, constraint}) != fitting.end();
}

// Kind of the parameter, type of the constraint; the last type is an unknown one.
class ParameterSpecConstraintTest : public testing::TestWithParam<std::tuple<int, int>> {};

TEST_P(ParameterSpecConstraintTest, SetConstraint_MustFitTheKind) {
    const auto kind = KindOf(std::get<0>(GetParam()));
    const auto type = static_cast<ParameterConstraintType>(std::get<1>(GetParam()));
    const auto parameter = ParameterSpec::New("vm-name", kind);
    const auto constraint = ParameterConstraint::New(type);
    const std::string thrown = ThrownBy([&] { parameter->SetConstraint(constraint); });
    if (Fits(kind, type)) {
        EXPECT_EQ(thrown, kNothingThrown);
        EXPECT_EQ(parameter->GetConstraint(), constraint);
        return;
    }
    EXPECT_EQ(thrown,
              "Invalid constraint specified for parameter vm-name.  The parameter constraint "
              "specified is not allowed for a parameter of this type.");
    EXPECT_EQ(parameter->GetConstraint(), nullptr);
}

INSTANTIATE_TEST_SUITE_P(KindsAndTypes, ParameterSpecConstraintTest,
                         testing::Combine(testing::Range(0, 7), testing::Range(0, 6)));

TEST(ParameterSpecTest, SetConstraint_Again_ReplacesTheConstraint) {
    const auto parameter = StringParameter();
    const auto second = ParameterConstraint::New(ParameterConstraintType::StringRegex);
    parameter->SetConstraint(ParameterConstraint::New(ParameterConstraintType::StringEnum));
    parameter->SetConstraint(second);
    EXPECT_EQ(parameter->GetConstraint(), second);
}

TEST(ParameterSpecTest, SetConstraint_EmptyPointer_KeepsThePresentConstraint) {
    const auto parameter = StringParameter();
    const auto constraint = ParameterConstraint::New(ParameterConstraintType::StringEnum);
    parameter->SetConstraint(constraint);
    parameter->SetConstraint(nullptr);
    EXPECT_EQ(parameter->GetConstraint(), constraint);
}

TEST(ParameterSpecTest, SetConstraint_Misfit_KeepsThePresentConstraint) {
    const auto parameter = StringParameter();
    const auto constraint = ParameterConstraint::New(ParameterConstraintType::StringEnum);
    parameter->SetConstraint(constraint);
    const auto range = ParameterConstraint::New(ParameterConstraintType::IntRange);
    EXPECT_NE(ThrownBy([&] { parameter->SetConstraint(range); }), kNothingThrown);
    EXPECT_EQ(parameter->GetConstraint(), constraint);
}

std::shared_ptr<ParameterConstraint> Switches() {
    auto constraint = ParameterConstraint::New(ParameterConstraintType::StringEnum);
    constraint->AddStringEnum("on", "Switched on");
    constraint->AddStringEnum("auto");
    constraint->AddStringEnum("off", "Switched off");
    return constraint;
}

struct Expansion : NamedRow {
    std::string description;
    std::string expanded;
};

class ParameterSpecDescriptionTest : public testing::TestWithParam<Expansion> {};

TEST_P(ParameterSpecDescriptionTest, GetDescription_Expanded_ReplacesThePlaceholders) {
    const auto parameter = StringParameter();
    parameter->SetConstraint(Switches());
    parameter->SetDescription(GetParam().description);
    EXPECT_EQ(parameter->GetDescription(true), GetParam().expanded);
}

TEST_P(ParameterSpecDescriptionTest, GetDescription_NotExpanded_LeavesThePlaceholders) {
    const auto parameter = StringParameter();
    parameter->SetConstraint(Switches());
    parameter->SetDescription(GetParam().description);
    EXPECT_EQ(parameter->GetDescription(false), GetParam().description);
}

TEST_P(ParameterSpecDescriptionTest, GetDescription_WithoutConstraint_LeavesThePlaceholders) {
    const auto parameter = StringParameter();
    parameter->SetDescription(GetParam().description);
    EXPECT_EQ(parameter->GetDescription(true), GetParam().description);
}

INSTANTIATE_TEST_SUITE_P(
    Descriptions, ParameterSpecDescriptionTest,
    testing::Values(Expansion{{"empty"}, "", ""},
                    Expansion{{"no placeholder"}, "The mode", "The mode"},
                    Expansion{{"ENUM at the end"}, "One of %ENUM%", "One of [on, auto, off]"},
                    Expansion{{"REGEX"}, "Like %REGEX%.", "Like [on, auto, off]."},
                    Expansion{{"every occurrence"},
                              "%ENUM%%ENUM% %REGEX%, %REGEX%",
                              "[on, auto, off][on, auto, off] [on, auto, off], [on, auto, off]"},
                    Expansion{{"FULLENUM"},
                              "Modes:%FULLENUM%End",
                              "Modes:\n    off: Switched off\n    on: Switched on\nEnd"},
                    Expansion{{"FULLENUM twice"},
                              "%FULLENUM%%FULLENUM%",
                              "\n    off: Switched off\n    on: Switched on\n"
                              "\n    off: Switched off\n    on: Switched on\n"},
                    Expansion{{"all three"},
                              "%FULLENUM%%REGEX%%ENUM%",
                              "\n    off: Switched off\n    on: Switched on\n"
                              "[on, auto, off][on, auto, off]"},
                    Expansion{{"other case"}, "%enum% %Regex%", "%enum% %Regex%"},
                    Expansion{{"unclosed"}, "100% ENUM% %ENUM", "100% ENUM% %ENUM"}));

std::string Expanded(const std::string& description, ParameterType kind,
                     const std::shared_ptr<ParameterConstraint>& constraint) {
    const auto parameter = ParameterSpec::New("vm-name", kind);
    parameter->SetDescription(description);
    parameter->SetConstraint(constraint);
    return parameter->GetDescription(true);
}

TEST(ParameterSpecTest, GetDescription_OtherConstraints_PrintInTheirFormsAndHaveNoFullEnum) {
    const std::string description = "<%ENUM%|%REGEX%|%FULLENUM%>";
    const auto range = ParameterConstraint::New(ParameterConstraintType::IntRange);
    range->SetIntRange(-5, 10);
    EXPECT_EQ(Expanded(description, ParameterType::Int, range),
              "<integer in the range -5-10|integer in the range -5-10|>");
    const auto numbers = ParameterConstraint::New(ParameterConstraintType::IntEnum);
    numbers->AddIntEnum(3);
    numbers->AddIntEnum(1);
    EXPECT_EQ(Expanded(description, ParameterType::IntList, numbers), "<[3, 1]|[3, 1]|>");
    const auto expression = ParameterConstraint::New(ParameterConstraintType::StringRegex);
    expression->SetStringRegex("[0-9]+");
    expression->AddStringEnum("documented", "But of no effect");
    EXPECT_EQ(Expanded(description, ParameterType::StringList, expression),
              "<a string matching the regular expression [0-9]+|a string matching the regular "
              "expression [0-9]+|>");
}

TEST(ParameterSpecTest, GetDescription_FullEnumWithoutDocumentedValues_IsEmpty) {
    const auto constraint = ParameterConstraint::New(ParameterConstraintType::StringEnum);
    EXPECT_EQ(Expanded("<%FULLENUM%>", ParameterType::String, constraint), "<>");
    constraint->AddStringEnum("a");
    EXPECT_EQ(Expanded("<%FULLENUM%>", ParameterType::String, constraint), "<>");
}

TEST(ParameterSpecTest, GetDescription_TextInsertedEarlier_IsSeenByTheLaterPlaceholders) {
    const auto constraint = ParameterConstraint::New(ParameterConstraintType::StringEnum);
    constraint->AddStringEnum("%ENUM%");
    EXPECT_EQ(Expanded("%REGEX%", ParameterType::String, constraint), "[[%ENUM%]]");
    EXPECT_EQ(Expanded("%ENUM%", ParameterType::String, constraint), "[%ENUM%]");
    constraint->AddStringEnum("%FULLENUM%", "of %REGEX%");
    EXPECT_EQ(Expanded("%ENUM%", ParameterType::String, constraint),
              "[%ENUM%, \n    %FULLENUM%: of %REGEX%\n]");
}

} // namespace
