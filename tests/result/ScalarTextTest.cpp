#include "Support.h"
#include "tests/support/NamedRow.h"

#include <tandril-result/ScalarText.h>

#include <gtest/gtest.h>

#include <cstdint>

using ResultTests::ErrorOf;
using ResultTests::Record;
using TandrilResult::ElementText;
using TandrilResult::IsPlainInteger;
using TandrilResult::kLongestText;
using TandrilResult::NameForMessage;
using TandrilResult::ScalarElement;
using TandrilResult::ScalarText;
using TandrilResult::ScalarType;

namespace {

struct ScalarCase : TestSupport::NamedRow {
    ScalarType type;
    Record value;
    std::string text;
};

class ScalarTextTest : public testing::TestWithParam<ScalarCase> {};

TEST_P(ScalarTextTest, ValueOfTheType_IsThisText) {
    EXPECT_EQ(ScalarText(GetParam().value, GetParam().type), GetParam().text);
}

const std::vector<ScalarCase> kScalars = {
    {{"StringOfText"},
     ScalarType::String,
     "a<&>\"b\"'\r\n\t",
     "a&lt;&amp;&gt;&quot;b&quot;'&#13;\n\t"},
    {{"StringOfBadBytes"}, ScalarType::String, "\xFF\x1B[31m", "\\xff\\x1b[31m"},
    {{"StringOfNothing"}, ScalarType::String, "", ""},
    {{"StringOfInteger"}, ScalarType::String, -7, "-7"},
    {{"StringOfLargeNumber"}, ScalarType::String, UINT64_MAX, "18446744073709551615"},
    {{"StringOfBoolean"}, ScalarType::String, true, "true"},
    {{"IntOfInteger"}, ScalarType::Int, INT64_MIN, "-9223372036854775808"},
    {{"IntOfText"}, ScalarType::Int, "9223372036854775807", "9223372036854775807"},
    {{"IntOfTextWithZeros"}, ScalarType::Int, "-007", "-7"},
    {{"BoolOfBoolean"}, ScalarType::Bool, false, "false"},
    {{"BoolOfNumber"}, ScalarType::Bool, 1, "true"},
    {{"BoolOfWord"}, ScalarType::Bool, "no", "false"},
};

INSTANTIATE_TEST_SUITE_P(All, ScalarTextTest, testing::ValuesIn(kScalars), TestSupport::kRowName);

struct BadScalar : TestSupport::NamedRow {
    ScalarType type;
    Record value;
    std::string error;
};

class BadScalarTest : public testing::TestWithParam<BadScalar> {};

TEST_P(BadScalarTest, ValueOfAnotherType_IsRefused) {
    EXPECT_EQ(ErrorOf([&] { ScalarText(GetParam().value, GetParam().type); }),
              "input: " + GetParam().error);
}

const std::vector<BadScalar> kBadScalars = {
    {{"IntOfWord"}, ScalarType::Int, "x", "'x' is not an integer of 64 bits"},
    {{"IntOfHalf"}, ScalarType::Int, "1.5", "'1.5' is not an integer of 64 bits"},
    {{"IntWithBlank"}, ScalarType::Int, " 1", "' 1' is not an integer of 64 bits"},
    {{"IntWithPlus"}, ScalarType::Int, "+1", "'+1' is not an integer of 64 bits"},
    {{"IntWithUnit"}, ScalarType::Int, "1K", "'1K' is not an integer of 64 bits"},
    {{"IntOfNothing"}, ScalarType::Int, "", "'' is not an integer of 64 bits"},
    {{"IntTooLarge"},
     ScalarType::Int,
     "9223372036854775808",
     "'9223372036854775808' is not an integer of 64 bits"},
    {{"IntOfLargeNumber"},
     ScalarType::Int,
     UINT64_MAX,
     "'18446744073709551615' is not an integer of 64 bits"},
    {{"IntOfBoolean"}, ScalarType::Int, true, "'true' is not an integer of 64 bits"},
    {{"BoolOfWord"}, ScalarType::Bool, "on", "'on' is not a boolean"},
    {{"BoolOfNumber"}, ScalarType::Bool, 2, "'2' is not a boolean"},
    {{"Null"}, ScalarType::String, nullptr, "'null' is not a single value"},
    {{"List"}, ScalarType::String, Record::array(), "a list is not a single value"},
    {{"Object"}, ScalarType::String, Record::object(), "an object is not a single value"},
};

INSTANTIATE_TEST_SUITE_P(All, BadScalarTest, testing::ValuesIn(kBadScalars), TestSupport::kRowName);

TEST(ElementTextTest, TextsUpToTheLimit_AreAccepted) {
    EXPECT_EQ(ElementText(std::string(kLongestText, 'a')).size(), kLongestText);
    EXPECT_EQ(ErrorOf([] { ElementText(std::string(kLongestText + 1, 'a')); }),
              "input: the text of 10000001 bytes is too long; a result holds texts of up to "
              "10000000");
}

TEST(ScalarElementTest, TypeNamesTheElement) {
    EXPECT_EQ(ScalarElement(1, ScalarType::Int), "<int>1</int>");
    EXPECT_EQ(ScalarElement(1, ScalarType::Bool), "<bool>true</bool>");
    EXPECT_EQ(ScalarElement(1, ScalarType::String), "<string>1</string>");
}

TEST(NameForMessageTest, LongText_IsCut) {
    EXPECT_EQ(NameForMessage(std::string(60, 'a')), "'" + std::string(60, 'a') + "'");
    EXPECT_EQ(NameForMessage(std::string(61, 'a')), "'" + std::string(60, 'a') + "...'");
}

TEST(IsPlainIntegerTest, OnlyWhatIsPrintedTheSameAgain) {
    for (const char* text : {"0", "7", "-7", "9223372036854775807"}) {
        EXPECT_TRUE(IsPlainInteger(text)) << text;
    }
    for (const char* text :
         {"", "-", "-0", "007", "+7", " 7", "7 ", "7.0", "9223372036854775808"}) {
        EXPECT_FALSE(IsPlainInteger(text)) << text;
    }
}

} // namespace
