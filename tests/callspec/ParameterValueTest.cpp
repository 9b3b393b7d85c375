#include <CppTools/callspec/Output.h>
#include <CppTools/callspec/ParameterSpec.h>

#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/NamedRow.h"

// The reading of raw values, and their validation against a parameter's declaration.

namespace {

using CppTools::CallSpec::Output;
using CppTools::CallSpec::ParameterConstraint;
using CppTools::CallSpec::ParameterConstraintType;
using CppTools::CallSpec::ParameterSpec;
using CppTools::CallSpec::ParameterType;
using TestSupport::NamedRow;
using namespace std::string_literals;

using Messages = std::vector<std::string>;

constexpr long kSmallest = std::numeric_limits<long>::min();
constexpr long kLargest = std::numeric_limits<long>::max();

using Number = std::pair<std::string, long>;

class IntegerReadingTest : public testing::TestWithParam<Number> {};

TEST_P(IntegerReadingTest, GetInt_WholeDecimalNumber_IsRead) {
    long result = 77;
    EXPECT_TRUE(ParameterSpec::GetInt(GetParam().first, result));
    EXPECT_EQ(result, GetParam().second);
}

INSTANTIATE_TEST_SUITE_P(Texts, IntegerReadingTest,
                         testing::Values(Number{"0", 0}, Number{"42", 42}, Number{"-42", -42},
                                         Number{"+42", 42}, Number{"-0", 0}, Number{"010", 10},
                                         Number{" 42", 42}, Number{"\t\n\v\f\r -42", -42},
                                         Number{"9223372036854775807", kLargest},
                                         Number{"-9223372036854775808", kSmallest},
                                         Number{"9223372036854775808", kLargest},
                                         Number{"-9223372036854775809", kSmallest},
                                         Number{"99999999999999999999999999", kLargest},
                                         Number{"-99999999999999999999999999", kSmallest}));

class NoIntegerTest : public testing::TestWithParam<std::string> {};

TEST_P(NoIntegerTest, GetInt_EmptyTextOrAnythingLeftOver_FailsAndKeepsTheResult) {
    long result = 77;
    EXPECT_FALSE(ParameterSpec::GetInt(GetParam(), result));
    EXPECT_EQ(result, 77);
}

INSTANTIATE_TEST_SUITE_P(Texts, NoIntegerTest,
                         testing::Values("", " ", "4x", "x4", "0x1F", "0x10", "12 ", "12\n", "-",
                                         "+", "+-5", "--5", "- 5", "1 2", "1.5", "1e3", "1,000",
                                         "42\0"s, "4\0002"s));

struct Word : NamedRow {
    bool value;
};

class BooleanReadingTest : public testing::TestWithParam<Word> {};

TEST_P(BooleanReadingTest, GetBool_AcceptedWord_IsRead) {
    bool result = !GetParam().value;
    EXPECT_TRUE(ParameterSpec::GetBool(GetParam().name, result));
    EXPECT_EQ(result, GetParam().value);
}

INSTANTIATE_TEST_SUITE_P(TrueWords, BooleanReadingTest,
                         testing::Values(Word{{"1"}, true}, Word{{"yes"}, true}, Word{{"y"}, true},
                                         Word{{"true"}, true}, Word{{"True"}, true},
                                         Word{{"t"}, true}, Word{{"T"}, true}));
INSTANTIATE_TEST_SUITE_P(FalseWords, BooleanReadingTest,
                         testing::Values(Word{{"0"}, false}, Word{{"no"}, false},
                                         Word{{"n"}, false}, Word{{"false"}, false},
                                         Word{{"False"}, false}, Word{{"f"}, false},
                                         Word{{"F"}, false}));

class NoBooleanTest : public testing::TestWithParam<std::string> {};

TEST_P(NoBooleanTest, GetBool_AnythingElse_FailsAndKeepsTheResult) {
    for (const bool before : {true, false}) {
        bool result = before;
        EXPECT_FALSE(ParameterSpec::GetBool(GetParam(), result));
        EXPECT_EQ(result, before);
    }
}

INSTANTIATE_TEST_SUITE_P(Texts, NoBooleanTest,
                         testing::Values("", "YES", "Yes", "Y", "TRUE", "tRUE", "NO", "No", "N",
                                         "FALSE", "on", "off", "2", "01", " 1", "1 ", "true\n",
                                         "y\0"s));

/// The result, and what was added behind a message that was there before.
using Verdict = std::pair<bool, Messages>;

Verdict Validate(const std::shared_ptr<ParameterSpec>& parameter, const Messages& values) {
    const auto output = Output::New();
    output->AddErrorMessage("earlier");
    const bool result = parameter->Validate(values, output);
    Messages errors = output->GetErrors();
    EXPECT_EQ(errors.front(), "earlier");
    errors.erase(errors.begin());
    return {result, errors};
}

std::shared_ptr<ParameterSpec> Parameter(ParameterType kind) {
    return ParameterSpec::New("size", kind);
}

struct Case : NamedRow {
    ParameterType kind;
    Messages values;
    Verdict verdict;
};

class ParameterValueTest : public testing::TestWithParam<Case> {};

TEST_P(ParameterValueTest, Validate_GivesResultAndMessages) {
    EXPECT_EQ(Validate(Parameter(GetParam().kind), GetParam().values), GetParam().verdict);
}

const Verdict kAccepted = {true, {}};
const Verdict kNoValues = {true, {"Missing value for parameter size"}};
const std::string kMultiple =
    "Found multiple values for size this parameter can only accept a single value.";

std::string NoInteger(const std::string& value) {
    return "Invalid data '" + value + "' for parameter size expected type Integer";
}

std::string NoBoolean(const std::string& value) {
    return "Invalid data '" + value +
           "' for parameter size expected one of [1, 0, y, n, true, false, True, False, yes, no, "
           "t, f, T, F]";
}

std::string NoFlag(const std::string& value) {
    return "Invalid data '" + value +
           "' for parameter size.  This parameter is a flag and cannot accept any values. ";
}

INSTANTIATE_TEST_SUITE_P(
    NoValues, ParameterValueTest,
    testing::Values(Case{{"String"}, ParameterType::String, {}, kNoValues},
                    Case{{"Int"}, ParameterType::Int, {}, kNoValues},
                    Case{{"Bool"}, ParameterType::Bool, {}, kNoValues},
                    Case{{"Flag"}, ParameterType::Flag, {}, kNoValues},
                    Case{{"StringList"}, ParameterType::StringList, {}, kNoValues},
                    Case{{"IntList"}, ParameterType::IntList, {}, kNoValues},
                    Case{{"BoolList"}, ParameterType::BoolList, {}, kNoValues}));

INSTANTIATE_TEST_SUITE_P(
    OneValue, ParameterValueTest,
    testing::Values(
        Case{{"String"}, ParameterType::String, {"any text"}, kAccepted},
        Case{{"empty String"}, ParameterType::String, {""}, kAccepted},
        Case{{"StringList"}, ParameterType::StringList, {"\xFF"}, kAccepted},
        Case{{"Int"}, ParameterType::Int, {"-42"}, kAccepted},
        Case{{"IntList"}, ParameterType::IntList, {"7"}, kAccepted},
        Case{{"Int unreadable"}, ParameterType::Int, {"4x"}, {false, {NoInteger("4x")}}},
        Case{{"Int empty"}, ParameterType::Int, {""}, {false, {NoInteger("")}}},
        Case{{"IntList unreadable"}, ParameterType::IntList, {"x"}, {false, {NoInteger("x")}}},
        Case{{"Bool"}, ParameterType::Bool, {"False"}, kAccepted},
        Case{{"BoolList"}, ParameterType::BoolList, {"y"}, kAccepted},
        Case{{"Bool unreadable"}, ParameterType::Bool, {"TRUE"}, {false, {NoBoolean("TRUE")}}},
        Case{{"Bool empty"}, ParameterType::Bool, {""}, {false, {NoBoolean("")}}},
        Case{{"BoolList unreadable"}, ParameterType::BoolList, {"on"}, {false, {NoBoolean("on")}}},
        Case{{"Flag"}, ParameterType::Flag, {""}, kAccepted},
        Case{{"Flag with value"}, ParameterType::Flag, {"yes"}, {false, {NoFlag("yes")}}}));

INSTANTIATE_TEST_SUITE_P(
    SeveralValues, ParameterValueTest,
    testing::Values(Case{{"String"}, ParameterType::String, {"a", "b"}, {true, {kMultiple}}},
                    Case{{"Int"}, ParameterType::Int, {"1", "2"}, {true, {kMultiple}}},
                    Case{{"Bool"}, ParameterType::Bool, {"1", "0", "y"}, {true, {kMultiple}}},
                    Case{{"Flag"}, ParameterType::Flag, {"", ""}, {true, {kMultiple}}},
                    Case{{"StringList"}, ParameterType::StringList, {"a", "", "a"}, kAccepted},
                    Case{{"IntList"}, ParameterType::IntList, {"1", "2", "1"}, kAccepted},
                    Case{{"BoolList"}, ParameterType::BoolList, {"1", "no"}, kAccepted},
                    Case{{"Int, first unreadable"},
                         ParameterType::Int,
                         {"x", "2"},
                         {false, {kMultiple, NoInteger("x")}}},
                    Case{{"IntList, each problem in order"},
                         ParameterType::IntList,
                         {"x", "1", "y", "2"},
                         {false, {NoInteger("x"), NoInteger("y")}}},
                    Case{{"BoolList, each problem in order"},
                         ParameterType::BoolList,
                         {"on", "t", "off"},
                         {false, {NoBoolean("on"), NoBoolean("off")}}},
                    Case{{"Flag, each problem in order"},
                         ParameterType::Flag,
                         {"a", "", "b"},
                         {false, {kMultiple, NoFlag("a"), NoFlag("b")}}}));

TEST(ParameterValueTest, Validate_IntegerConstraint_IsConsultedForReadableValues) {
    const auto constraint = ParameterConstraint::New(ParameterConstraintType::IntRange);
    constraint->SetIntRange(1, 5);
    const auto parameter = Parameter(ParameterType::IntList);
    parameter->SetConstraint(constraint);
    EXPECT_EQ(Validate(parameter, {"1", "5"}), kAccepted);
    EXPECT_EQ(Validate(parameter, {"6", "x", "3", "0"}),
              Verdict(false, {"Invalid data constraint for parameter 'size'. Expected integer in "
                              "the range 1-5",
                              NoInteger("x"),
                              "Invalid data constraint for parameter 'size'. Expected integer in "
                              "the range 1-5"}));
}

TEST(ParameterValueTest, Validate_IntegerSetOnASingleInt_IsConsulted) {
    const auto constraint = ParameterConstraint::New(ParameterConstraintType::IntEnum);
    constraint->AddIntEnum(1);
    const auto parameter = Parameter(ParameterType::Int);
    parameter->SetConstraint(constraint);
    EXPECT_EQ(Validate(parameter, {"1"}), kAccepted);
    EXPECT_EQ(Validate(parameter, {"2"}),
              Verdict(false, {"Invalid data constraint for parameter 'size'. Expected a single "
                              "value from the set [1]"}));
}

TEST(ParameterValueTest, Validate_StringConstraint_IsConsultedForEachValue) {
    const auto constraint = ParameterConstraint::New(ParameterConstraintType::StringEnum);
    constraint->AddStringEnum("on");
    constraint->AddStringEnum("off");
    for (const ParameterType kind : {ParameterType::String, ParameterType::StringList}) {
        const auto parameter = Parameter(kind);
        parameter->SetConstraint(constraint);
        EXPECT_EQ(Validate(parameter, {"on"}), kAccepted);
        EXPECT_EQ(Validate(parameter, {"ON"}),
                  Verdict(false, {"Invalid data constraint for parameter 'size'. Expected a single "
                                  "value from the set [on, off] got 'ON'"}));
    }
}

TEST(ParameterValueTest, Validate_RefusedValueBeforeAnAcceptedOne_StaysRefused) {
    const auto constraint = ParameterConstraint::New(ParameterConstraintType::StringRegex);
    constraint->SetStringRegex("[0-9]+");
    const auto parameter = Parameter(ParameterType::StringList);
    parameter->SetConstraint(constraint);
    const std::string message = "Invalid data constraint for parameter 'size'. Value does not "
                                "match the expected regular expression ([0-9]+)";
    EXPECT_EQ(Validate(parameter, {"a", "1"}), Verdict(false, {message}));
    EXPECT_EQ(Validate(parameter, {"1", "a"}), Verdict(false, {message}));
    EXPECT_EQ(Validate(parameter, {"a", "b"}), Verdict(false, {message, message}));
}

TEST(ParameterValueTest, Validate_TooManyConstrainedValues_ReportsTheNumberThenEachValue) {
    const auto constraint = ParameterConstraint::New(ParameterConstraintType::IntRange);
    constraint->SetIntRange(1, 5);
    const auto parameter = Parameter(ParameterType::Int);
    parameter->SetConstraint(constraint);
    const std::string message =
        "Invalid data constraint for parameter 'size'. Expected integer in the range 1-5";
    EXPECT_EQ(Validate(parameter, {"6", "x", "3"}),
              Verdict(false, {kMultiple, message, NoInteger("x")}));
}

TEST(ParameterValueTest, Validate_ReplacedConstraint_IsNoLongerConsulted) {
    const auto first = ParameterConstraint::New(ParameterConstraintType::StringEnum);
    first->AddStringEnum("on");
    const auto second = ParameterConstraint::New(ParameterConstraintType::StringRegex);
    second->SetStringRegex("[0-9]+");
    const auto parameter = Parameter(ParameterType::String);
    parameter->SetConstraint(first);
    parameter->SetConstraint(second);
    EXPECT_EQ(Validate(parameter, {"7"}), kAccepted);
    EXPECT_EQ(Validate(parameter, {"on"}),
              Verdict(false, {"Invalid data constraint for parameter 'size'. Value does not match "
                              "the expected regular expression ([0-9]+)"}));
}

TEST(ParameterValueTest, Validate_ConstraintOfTwoParameters_NamesTheOneThatIsChecked) {
    const auto constraint = ParameterConstraint::New(ParameterConstraintType::IntEnum);
    constraint->AddIntEnum(1);
    for (const std::string name : {"first", "second"}) {
        const auto parameter = ParameterSpec::New(name, ParameterType::Int);
        parameter->SetConstraint(constraint);
        EXPECT_EQ(Validate(parameter, {"2"}),
                  Verdict(false, {"Invalid data constraint for parameter '" + name +
                                  "'. Expected a single value from the set [1]"}));
    }
}

TEST(ParameterValueTest, Validate_InvalidExpression_LetsTheLibrarysExceptionPass) {
    const auto constraint = ParameterConstraint::New(ParameterConstraintType::StringRegex);
    constraint->SetStringRegex("[0-9");
    const auto parameter = Parameter(ParameterType::String);
    parameter->SetConstraint(constraint);
    EXPECT_THROW(parameter->Validate({"1"}, Output::New()), std::runtime_error);
}

TEST(ParameterValueTest, Validate_NoValuesWithConstraint_ConsultsNothing) {
    const auto parameter = Parameter(ParameterType::String);
    parameter->SetConstraint(ParameterConstraint::New(ParameterConstraintType::StringEnum));
    EXPECT_EQ(Validate(parameter, {}), kNoValues);
}

} // namespace
