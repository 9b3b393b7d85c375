#include <CppTools/callspec/Output.h>
#include <CppTools/callspec/ParameterConstraint.h>

#include <gtest/gtest.h>

#include <limits>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "tests/support/NamedRow.h"
#include "tests/support/Thrown.h"

namespace {

using CppTools::CallSpec::Output;
using CppTools::CallSpec::ParameterConstraint;
using CppTools::CallSpec::ParameterConstraintType;
using TestSupport::NamedRow;
using TestSupport::ThrownBy;
using namespace std::string_literals;

using Constraint = std::shared_ptr<ParameterConstraint>;
using Messages = std::vector<std::string>;

constexpr long kSmallest = std::numeric_limits<long>::min();
constexpr long kLargest = std::numeric_limits<long>::max();
constexpr auto kUnknownType = static_cast<ParameterConstraintType>(5);

const std::string kBadRange =
    "Invalid values for SetIntRange, constraints must have a min value <= max value";

Constraint IntRange(long min, long max) {
    auto constraint = ParameterConstraint::New(ParameterConstraintType::IntRange);
    constraint->SetIntRange(min, max);
    return constraint;
}

Constraint IntEnum(const std::vector<long>& values) {
    auto constraint = ParameterConstraint::New(ParameterConstraintType::IntEnum);
    for (const long value : values) {
        constraint->AddIntEnum(value);
    }
    return constraint;
}

Constraint StringEnum(const std::vector<std::string>& values) {
    auto constraint = ParameterConstraint::New(ParameterConstraintType::StringEnum);
    for (const auto& value : values) {
        constraint->AddStringEnum(value, "");
    }
    return constraint;
}

Constraint Regex(const std::string& expression) {
    auto constraint = ParameterConstraint::New(ParameterConstraintType::StringRegex);
    constraint->SetStringRegex(expression);
    return constraint;
}

/// The result, and what was added behind a message that was there before.
using Verdict = std::pair<bool, Messages>;

Verdict Validate(const Constraint& constraint, const std::string& value) {
    const auto output = Output::New();
    output->AddErrorMessage("earlier");
    const bool result = constraint->Validate(value, "size", output);
    Messages errors = output->GetErrors();
    EXPECT_EQ(errors.front(), "earlier");
    errors.erase(errors.begin());
    return {result, errors};
}

const Verdict kAccepted = {true, {}};

TEST(ParameterConstraintTest, Types_HaveTheirNumbers) {
    EXPECT_EQ(static_cast<int>(ParameterConstraintType::None), 0);
    EXPECT_EQ(static_cast<int>(ParameterConstraintType::IntRange), 1);
    EXPECT_EQ(static_cast<int>(ParameterConstraintType::IntEnum), 2);
    EXPECT_EQ(static_cast<int>(ParameterConstraintType::StringEnum), 3);
    EXPECT_EQ(static_cast<int>(ParameterConstraintType::StringRegex), 4);
}

TEST(ParameterConstraintTest, VirtualOperations_ThereAreNone) {
    EXPECT_FALSE(std::is_polymorphic_v<ParameterConstraint>);
}

class ParameterConstraintTypeTest : public testing::TestWithParam<int> {};

TEST_P(ParameterConstraintTypeTest, New_StoresTheTypeAndNothingElse) {
    const auto type = static_cast<ParameterConstraintType>(GetParam());
    const auto constraint = ParameterConstraint::New(type);
    long min = 1;
    long max = 1;
    constraint->GetIntRange(min, max);
    EXPECT_EQ(constraint->GetType(), type);
    EXPECT_EQ(min, 0);
    EXPECT_EQ(max, 0);
    EXPECT_TRUE(constraint->GetIntEnum().empty());
    EXPECT_TRUE(constraint->GetStringEnum().empty());
    EXPECT_TRUE(constraint->GetStringEnumWithDesc().empty());
    EXPECT_EQ(constraint->GetStringRegex(), "");
}

TEST_P(ParameterConstraintTypeTest, Setters_IgnoreTheTypeAndLeaveItAlone) {
    const auto type = static_cast<ParameterConstraintType>(GetParam());
    const auto constraint = ParameterConstraint::New(type);
    constraint->SetIntRange(-5, 10);
    constraint->AddIntEnum(3);
    constraint->AddStringEnum("on", "Switched on");
    constraint->SetStringRegex("[0-9]+");
    long min = 0;
    long max = 0;
    constraint->GetIntRange(min, max);
    EXPECT_EQ(min, -5);
    EXPECT_EQ(max, 10);
    EXPECT_EQ(constraint->GetIntEnum(), std::vector<long>{3});
    EXPECT_EQ(constraint->GetStringEnum(), Messages{"on"});
    EXPECT_EQ(constraint->GetStringRegex(), "[0-9]+");
    EXPECT_EQ(constraint->GetType(), type);
}

INSTANTIATE_TEST_SUITE_P(Types, ParameterConstraintTypeTest, testing::Range(0, 5));

TEST(ParameterConstraintTest, SetIntRange_MinAboveMax_ThrowsAndKeepsTheRange) {
    const auto constraint = IntRange(1, 2);
    EXPECT_EQ(ThrownBy([&] { constraint->SetIntRange(6, 5); }), kBadRange);
    EXPECT_EQ(ThrownBy([&] { constraint->SetIntRange(kLargest, kSmallest); }), kBadRange);
    EXPECT_EQ(constraint->ToString(), "integer in the range 1-2");
}

TEST(ParameterConstraintTest, SetIntRange_Again_ReplacesTheRange) {
    const auto constraint = IntRange(1, 2);
    constraint->SetIntRange(5, 5);
    EXPECT_EQ(constraint->ToString(), "integer in the range 5-5");
    EXPECT_FALSE(Validate(constraint, "2").first);
    EXPECT_EQ(Validate(constraint, "5"), kAccepted);
}

TEST(ParameterConstraintTest, AddIntEnum_NewValues_KeepTheirOrder) {
    EXPECT_EQ(IntEnum({3, -1, 2})->GetIntEnum(), (std::vector<long>{3, -1, 2}));
}

TEST(ParameterConstraintTest, AddIntEnum_DuplicateValue_ThrowsAndKeepsTheSet) {
    const auto constraint = IntEnum({3, 4});
    EXPECT_EQ(ThrownBy([&] { constraint->AddIntEnum(3); }),
              "Duplicate Value found in ParameterConstraint::AddIntEnum");
    EXPECT_EQ(constraint->GetIntEnum(), (std::vector<long>{3, 4}));
}

TEST(ParameterConstraintTest, AddStringEnum_EveryForm_AppendsTheValue) {
    const auto constraint = StringEnum({});
    constraint->AddStringEnum("zeta"s, "The last"s);
    constraint->AddStringEnum("beta", "The second");
    constraint->AddStringEnum("mid");
    constraint->AddStringEnum("alpha"s, ""s);
    constraint->AddStringEnum("eta", "");
    EXPECT_EQ(constraint->GetStringEnum(), (Messages{"zeta", "beta", "mid", "alpha", "eta"}));
}

TEST(ParameterConstraintTest, AddStringEnum_Descriptions_AreKeptByValueUnlessEmpty) {
    const auto constraint = StringEnum({});
    constraint->AddStringEnum("zeta"s, "The last"s);
    constraint->AddStringEnum("beta", "The second");
    constraint->AddStringEnum("mid");
    constraint->AddStringEnum("alpha"s, ""s);
    EXPECT_EQ(constraint->GetStringEnumWithDesc(),
              (std::map<std::string, std::string>{{"beta", "The second"}, {"zeta", "The last"}}));
}

TEST(ParameterConstraintTest, AddStringEnum_DuplicateValue_ThrowsInEveryFormAndKeepsTheSet) {
    const auto constraint = StringEnum({"a"});
    const std::string message = "Duplicate Value found in ParameterConstraint::AddStringEnum: a";
    EXPECT_EQ(ThrownBy([&] { constraint->AddStringEnum("a", "described now"); }), message);
    EXPECT_EQ(ThrownBy([&] { constraint->AddStringEnum("a"s, "described now"s); }), message);
    EXPECT_EQ(ThrownBy([&] { constraint->AddStringEnum("a"); }), message);
    EXPECT_EQ(constraint->GetStringEnum(), Messages{"a"});
    EXPECT_TRUE(constraint->GetStringEnumWithDesc().empty());
}

TEST(ParameterConstraintTest, AddStringEnum_DuplicateOfADescribedValue_KeepsItsDescription) {
    const auto constraint = StringEnum({});
    constraint->AddStringEnum("a", "first");
    EXPECT_EQ(ThrownBy([&] { constraint->AddStringEnum("a", "second"); }),
              "Duplicate Value found in ParameterConstraint::AddStringEnum: a");
    EXPECT_EQ(constraint->GetStringEnumWithDesc().at("a"), "first");
}

TEST(ParameterConstraintTest, AddIntEnum_ManyValues_EachIsKnownAndKeepsItsPlace) {
    const auto constraint = IntEnum({});
    std::vector<long> expected;
    for (long i = 0; i < 200; ++i) {
        const long value = (i * 77) % 200 - 100;
        ASSERT_FALSE(Validate(constraint, std::to_string(value)).first) << value;
        constraint->AddIntEnum(value);
        expected.push_back(value);
        ASSERT_EQ(ThrownBy([&] { constraint->AddIntEnum(expected[expected.size() / 2]); }),
                  "Duplicate Value found in ParameterConstraint::AddIntEnum");
        ASSERT_EQ(Validate(constraint, std::to_string(value)), kAccepted) << value;
    }
    EXPECT_EQ(constraint->GetIntEnum(), expected);
}

TEST(ParameterConstraintTest, AddStringEnum_ManyValues_EachIsKnownAndKeepsItsPlace) {
    const auto constraint = StringEnum({});
    Messages expected;
    for (int i = 0; i < 200; ++i) {
        const std::string value = "value " + std::to_string((i * 77) % 200);
        ASSERT_FALSE(Validate(constraint, value).first) << value;
        constraint->AddStringEnum(value, i % 2 == 0 ? value : "");
        expected.push_back(value);
        const std::string& earlier = expected[expected.size() / 2];
        ASSERT_EQ(ThrownBy([&] { constraint->AddStringEnum(earlier, "again"); }),
                  "Duplicate Value found in ParameterConstraint::AddStringEnum: " + earlier);
        ASSERT_EQ(Validate(constraint, value), kAccepted) << value;
    }
    EXPECT_EQ(constraint->GetStringEnum(), expected);
    EXPECT_EQ(constraint->GetStringEnumWithDesc().size(), 100U);
}

TEST(ParameterConstraintTest, Getters_ReferencesTakenBeforeAValue_SeeIt) {
    const auto constraint = ParameterConstraint::New(ParameterConstraintType::None);
    const auto& numbers = constraint->GetIntEnum();
    const auto& texts = constraint->GetStringEnum();
    const auto& described = constraint->GetStringEnumWithDesc();
    const auto& expression = constraint->GetStringRegex();
    EXPECT_TRUE(numbers.empty() && texts.empty() && described.empty() && expression.empty());
    constraint->AddIntEnum(7);
    constraint->AddStringEnum("a", "b");
    constraint->SetStringRegex("c");
    EXPECT_EQ(numbers, std::vector<long>{7});
    EXPECT_EQ(texts, Messages{"a"});
    EXPECT_EQ(described.at("a"), "b");
    EXPECT_EQ(expression, "c");
}

TEST(ParameterConstraintTest, Validate_ExpressionNeverSet_AcceptsTheEmptyTextAlone) {
    const auto constraint = ParameterConstraint::New(ParameterConstraintType::StringRegex);
    EXPECT_EQ(Validate(constraint, ""), kAccepted);
    EXPECT_FALSE(Validate(constraint, "x").first);
}

TEST(ParameterConstraintTest, AddStringEnum_OtherCaseOrEmpty_IsNoDuplicate) {
    EXPECT_EQ(StringEnum({"on", "ON", "On", ""})->GetStringEnum(),
              (Messages{"on", "ON", "On", ""}));
}

TEST(ParameterConstraintTest, Getters_ReturnTheStoredContainers) {
    const auto constraint = StringEnum({"a"});
    EXPECT_EQ(&constraint->GetStringEnum(), &constraint->GetStringEnum());
    EXPECT_EQ(&constraint->GetIntEnum(), &constraint->GetIntEnum());
}

struct Printed : NamedRow {
    Constraint constraint;
    std::string text;
};

class ParameterConstraintPrintTest : public testing::TestWithParam<Printed> {};

TEST_P(ParameterConstraintPrintTest, ToString_DependsOnTheType) {
    EXPECT_EQ(GetParam().constraint->ToString(), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Constraints, ParameterConstraintPrintTest,
    testing::Values(
        Printed{{"none"}, ParameterConstraint::New(ParameterConstraintType::None), "no constraint"},
        Printed{{"range"}, IntRange(1, 5), "integer in the range 1-5"},
        Printed{{"negative range"}, IntRange(-5, 10), "integer in the range -5-10"},
        Printed{{"range below zero"}, IntRange(-9, -5), "integer in the range -9--5"},
        Printed{{"widest range"},
                IntRange(kSmallest, kLargest),
                "integer in the range -9223372036854775808-9223372036854775807"},
        Printed{{"range never set"},
                ParameterConstraint::New(ParameterConstraintType::IntRange),
                "integer in the range 0-0"},
        Printed{{"no integers"}, IntEnum({}), "[]"}, Printed{{"one integer"}, IntEnum({7}), "[7]"},
        Printed{{"integers"}, IntEnum({3, -1, 2}), "[3, -1, 2]"},
        Printed{{"no strings"}, StringEnum({}), "[]"},
        Printed{{"strings"}, StringEnum({"on", "off"}), "[on, off]"},
        Printed{{"strings with blanks"}, StringEnum({"a b", "", "c"}), "[a b, , c]"},
        Printed{{"expression"}, Regex("[0-9]+"), "a string matching the regular expression [0-9]+"},
        Printed{{"empty expression"}, Regex(""), "a string matching the regular expression "},
        Printed{{"unknown type"}, ParameterConstraint::New(kUnknownType), "unknown"}));

struct Accepted : NamedRow {
    Constraint constraint;
    std::vector<std::string> values;
};

class ParameterConstraintAcceptTest : public testing::TestWithParam<Accepted> {};

TEST_P(ParameterConstraintAcceptTest, Validate_FittingValue_IsAcceptedSilently) {
    for (const auto& value : GetParam().values) {
        SCOPED_TRACE(value);
        EXPECT_EQ(Validate(GetParam().constraint, value), kAccepted);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Constraints, ParameterConstraintAcceptTest,
    testing::Values(
        Accepted{{"none"},
                 ParameterConstraint::New(ParameterConstraintType::None),
                 {"", "abc", "12", "\xFF"}},
        Accepted{{"both bounds of a range"}, IntRange(-5, 10), {"-5", "0", "10", "+3", " 4"}},
        Accepted{{"range of one"}, IntRange(5, 5), {"5"}},
        Accepted{{"range never set"},
                 ParameterConstraint::New(ParameterConstraintType::IntRange),
                 {"0"}},
        Accepted{{"clamped numbers"},
                 IntRange(kSmallest, kLargest),
                 {"99999999999999999999", "-99999999999999999999"}},
        Accepted{{"integers"}, IntEnum({3, -1}), {"3", "-1", "+3", "003"}},
        Accepted{{"strings"}, StringEnum({"on", "off", ""}), {"on", "off", ""}},
        Accepted{{"expression"}, Regex("[0-9]+"), {"0", "0123456789"}},
        Accepted{{"empty expression"}, Regex(""), {""}},
        Accepted{{"longer alternative"}, Regex("a|ab"), {"a", "ab"}},
        Accepted{{"anchored"}, Regex("^a+$"), {"aaa"}},
        Accepted{{"Perl syntax"}, Regex("(?i)(?:a\\d+?){2}(?!z)\\w*\\b"), {"a1A22", "A1a2bc"}},
        Accepted{{"dot and line end"}, Regex("a.b"), {"axb", "a\nb"}}));

struct Refused : NamedRow {
    Constraint constraint;
    std::string value;
    std::string message;
};

class ParameterConstraintRefuseTest : public testing::TestWithParam<Refused> {};

TEST_P(ParameterConstraintRefuseTest, Validate_IllFittingValue_AddsOneMessage) {
    EXPECT_EQ(Validate(GetParam().constraint, GetParam().value),
              Verdict(false, {GetParam().message}));
}

const std::string kNoInteger = "Invalid data type for parameter 'size'. Expected an Integer";

Refused NoInteger(const std::string& name, const Constraint& constraint, const std::string& value) {
    return {{name}, constraint, value, kNoInteger};
}

Refused Unfit(const std::string& name, const Constraint& constraint, const std::string& value,
              const std::string& expected) {
    return {{name}, constraint, value, "Invalid data constraint for parameter 'size'. " + expected};
}

INSTANTIATE_TEST_SUITE_P(
    Integers, ParameterConstraintRefuseTest,
    testing::Values(
        NoInteger("word against range", IntRange(1, 5), "abc"),
        NoInteger("empty text against range", IntRange(0, 5), ""),
        NoInteger("trailing blank against range", IntRange(1, 5), "3 "),
        NoInteger("hexadecimal against range", IntRange(1, 5), "0x3"),
        NoInteger("word against integers", IntEnum({1, 2}), "one"),
        NoInteger("fraction against integers", IntEnum({1, 2}), "1.0"),
        Unfit("below range", IntRange(-5, 10), "-6", "Expected integer in the range -5-10"),
        Unfit("above range", IntRange(-5, 10), "11", "Expected integer in the range -5-10"),
        Unfit("beside range of one", IntRange(5, 5), "6", "Expected integer in the range 5-5"),
        Unfit("clamped number above range", IntRange(1, 5), "99999999999999999999",
              "Expected integer in the range 1-5"),
        Unfit("not among integers", IntEnum({3, -1}), "2",
              "Expected a single value from the set [3, -1]"),
        Unfit("between integers", IntEnum({1, 3}), "2",
              "Expected a single value from the set [1, 3]"),
        Unfit("no integers", IntEnum({}), "0", "Expected a single value from the set []")));

INSTANTIATE_TEST_SUITE_P(
    Strings, ParameterConstraintRefuseTest,
    testing::Values(Unfit("other case", StringEnum({"on", "off"}), "ON",
                          "Expected a single value from the set [on, off] got 'ON'"),
                    Unfit("part of a value", StringEnum({"on", "off"}), "o",
                          "Expected a single value from the set [on, off] got 'o'"),
                    Unfit("empty value", StringEnum({"on", "off"}), "",
                          "Expected a single value from the set [on, off] got ''"),
                    Unfit("blank behind", StringEnum({"on"}), "on ",
                          "Expected a single value from the set [on] got 'on '"),
                    Unfit("no strings", StringEnum({}), "x",
                          "Expected a single value from the set [] got 'x'"),
                    Unfit("expression fits the beginning", Regex("[0-9]+"), "12a",
                          "Value does not match the expected regular expression ([0-9]+)"),
                    Unfit("expression fits the end", Regex("[0-9]+"), "a12",
                          "Value does not match the expected regular expression ([0-9]+)"),
                    Unfit("expression fits but for a line end", Regex("[0-9]+"), "12\n",
                          "Value does not match the expected regular expression ([0-9]+)"),
                    Unfit("expression in other case", Regex("[a-z]+"), "ABC",
                          "Value does not match the expected regular expression ([a-z]+)"),
                    Unfit("empty value and expression", Regex("[0-9]+"), "",
                          "Value does not match the expected regular expression ([0-9]+)"),
                    Unfit("empty expression", Regex(""), "x",
                          "Value does not match the expected regular expression ()")));

TEST(ParameterConstraintTest, Validate_UnknownType_RefusesWithoutMessage) {
    EXPECT_EQ(Validate(ParameterConstraint::New(kUnknownType), "1"), Verdict(false, {}));
}

TEST(ParameterConstraintTest, Validate_SettingsOfOtherTypes_AreNotConsulted) {
    const auto strings = StringEnum({"7"});
    strings->SetIntRange(1, 2);
    strings->AddIntEnum(1);
    strings->SetStringRegex("[a-z]+");
    EXPECT_EQ(Validate(strings, "7"), kAccepted);
    const auto integers = IntEnum({7});
    integers->SetIntRange(1, 2);
    EXPECT_EQ(Validate(integers, "7"), kAccepted);
}

TEST(ParameterConstraintTest, Validate_Message_NamesTheParameterGiven) {
    const auto output = Output::New();
    EXPECT_FALSE(IntRange(1, 2)->Validate("3", "vm-name", output));
    EXPECT_EQ(output->GetErrors(), Messages{"Invalid data constraint for parameter 'vm-name'. "
                                            "Expected integer in the range 1-2"});
}

TEST(ParameterConstraintTest, Validate_InvalidExpression_ThrowsTheLibrarysOwnException) {
    for (const std::string expression : {"[0-9", "(", "*a", "a{2,1}"}) {
        SCOPED_TRACE(expression);
        const auto constraint = Regex(expression);
        const auto output = Output::New();
        EXPECT_THROW(constraint->Validate("1", "size", output), std::runtime_error);
        EXPECT_THROW(constraint->Validate("1", "size", output), std::runtime_error);
        EXPECT_FALSE(output->HasError());
    }
}

TEST(ParameterConstraintTest, SetStringRegex_InvalidExpression_IsAcceptedUntilValidation) {
    const auto constraint = Regex("[0-9");
    EXPECT_EQ(constraint->GetStringRegex(), "[0-9");
    constraint->SetStringRegex("[0-9]");
    EXPECT_EQ(Validate(constraint, "1"), kAccepted);
}

TEST(ParameterConstraintTest, SetStringRegex_AfterAValidation_TheNewExpressionCounts) {
    const auto constraint = Regex("[0-9]+");
    EXPECT_EQ(Validate(constraint, "12"), kAccepted);
    constraint->SetStringRegex("[a-z]+");
    EXPECT_EQ(Validate(constraint, "ab"), kAccepted);
    EXPECT_EQ(Validate(constraint, "12"),
              Verdict(false, {"Invalid data constraint for parameter 'size'. Value does not match "
                              "the expected regular expression ([a-z]+)"}));
}

TEST(ParameterConstraintTest, Validate_ValueOfAMillionCharacters_IsJudgedLikeAnyOther) {
    const std::string digits(1000000, '7');
    EXPECT_EQ(Validate(Regex("[0-9]+"), digits), kAccepted);
    EXPECT_EQ(Validate(Regex("[0-9]+"), digits + "a"),
              Verdict(false, {"Invalid data constraint for parameter 'size'. Value does not match "
                              "the expected regular expression ([0-9]+)"}));
}

TEST(ParameterConstraintTest, Validate_ExpressionThatRunsAway_RefusesTheValue) {
    const auto constraint = Regex("(a*)*b");
    EXPECT_EQ(Validate(constraint, std::string(60, 'a')),
              Verdict(false, {"Invalid data constraint for parameter 'size'. Value does not match "
                              "the expected regular expression ((a*)*b)"}));
}

} // namespace
