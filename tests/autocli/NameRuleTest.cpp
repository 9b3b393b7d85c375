#include <CppTools/autocli/NamespaceNode.h>

#include <tests/support/EveryWord.h>
#include <tests/support/LongText.h>
#include <tests/support/NamedRow.h>

#include <gtest/gtest.h>
#include <regex>
#include <string>
#include <vector>

using CppTools::AutoCli::AutoCli_IsValidName;
using TestSupport::EveryWord;
using TestSupport::kRowName;
using TestSupport::LongText;

namespace {

constexpr std::size_t kMillion = 1000000;

TEST(NameRuleTest, IsValidName_EveryShortWord_AnswersAsThePattern) {
    const std::regex pattern("([a-z0-9]+[A-Z0-9]{0,1})+");
    std::size_t accepted = 0;
    for (const std::string& word : EveryWord(5, "azAZ9-")) {
        const bool expected = std::regex_match(word, pattern);
        accepted += expected ? 1 : 0;
        ASSERT_EQ(AutoCli_IsValidName(word), expected) << "'" << word << "'";
    }
    EXPECT_GT(accepted, 0U);
}

TEST(NameRuleTest, IsValidName_EveryByteAlone_OnlyLowerCaseLettersAndDigits) {
    for (int byte = 0; byte < 256; ++byte) {
        const bool expected = (byte >= 'a' && byte <= 'z') || (byte >= '0' && byte <= '9');
        EXPECT_EQ(AutoCli_IsValidName(std::string(1, static_cast<char>(byte))), expected) << byte;
    }
}

TEST(NameRuleTest, IsValidName_EveryByteBehindALowerCaseLetter_OnlyLettersAndDigits) {
    for (int byte = 0; byte < 256; ++byte) {
        const bool expected = (byte >= 'a' && byte <= 'z') || (byte >= '0' && byte <= '9') ||
                              (byte >= 'A' && byte <= 'Z');
        const std::string name{'a', static_cast<char>(byte)};
        EXPECT_EQ(AutoCli_IsValidName(name), expected) << byte;
    }
}

struct NameRow : TestSupport::NamedRow {
    LongText word;
    bool valid;
};

class NameRuleRowTest : public testing::TestWithParam<NameRow> {};

TEST_P(NameRuleRowTest, IsValidName) {
    EXPECT_EQ(AutoCli_IsValidName(GetParam().word.Build()), GetParam().valid);
}

INSTANTIATE_TEST_SUITE_P(
    Names, NameRuleRowTest,
    testing::Values(NameRow{{"CamelCase"}, "fooBar", true}, NameRow{{"EndsInDigit"}, "get2", true},
                    NameRow{{"EndsInUpperCase"}, "fooB", true},
                    NameRow{{"DigitFirst"}, "2get", true},
                    NameRow{{"UpperCaseBehindDigit"}, "get2X", true},
                    NameRow{{"DigitBetweenUpperCase"}, "fooB1C", true},
                    NameRow{{"UpperCaseFirst"}, "FooBar", false},
                    NameRow{{"TwoUpperCaseInARow"}, "fooBAR", false},
                    NameRow{{"Dash"}, "foo-bar", false}, NameRow{{"Empty"}, "", false},
                    NameRow{{"LineEndBehind"}, "foo\n", false},
                    NameRow{{"NulInside"}, std::string("fo\0o", 4), false},
                    NameRow{{"MillionLowerCase"}, LongText("a", kMillion), true},
                    NameRow{{"MillionDigits"}, LongText("7", kMillion), true},
                    NameRow{{"MillionCamels"}, LongText("aB", kMillion / 2), true},
                    NameRow{{"MillionAndADash"}, LongText("a", kMillion - 1) + "-", false},
                    NameRow{{"MillionCamelsAndADash"}, LongText("aB", kMillion / 2) + "-", false},
                    NameRow{{"MillionAndTwoUpperCase"}, LongText("a", kMillion - 2) + "BB", false}),
    kRowName);

} // namespace
