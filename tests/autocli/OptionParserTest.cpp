#include <CppTools/autocli/OptionParser.h>

#include <tests/support/EveryWord.h>
#include <tests/support/LongText.h>
#include <tests/support/NamedRow.h>

#include <array>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <regex>
#include <string>
#include <vector>

using CppTools::AutoCli::OptionParser;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using TestSupport::kRowName;
using TestSupport::LongText;

namespace {

struct WordRow : TestSupport::NamedRow {
    LongText word;
    bool option;
};

class OptionWordTest : public testing::TestWithParam<WordRow> {};

TEST_P(OptionWordTest, IsParameter) {
    EXPECT_EQ(OptionParser::IsParameter(GetParam().word.Build()), GetParam().option);
}

TEST_P(OptionWordTest, ParseVector_TakesOptionsAndLeavesTheRestToThePath) {
    OptionParser parser;
    parser.ParseVector({GetParam().word.Build()});
    EXPECT_EQ(parser.GetDispatcherParameters().size(), GetParam().option ? 1U : 0U);
    EXPECT_EQ(parser.GetCommandPath().size(), GetParam().option ? 0U : 1U);
    EXPECT_THAT(parser.GetParseErrors(), IsEmpty());
}

const LongText kMillion("a", 1000000);

INSTANTIATE_TEST_SUITE_P(Options, OptionWordTest,
                         testing::Values(WordRow{{"LowerCaseLetter"}, "-a", true},
                                         WordRow{{"UpperCaseLetter"}, "-Z", true},
                                         WordRow{{"TwoLetterName"}, "--ab", true},
                                         WordRow{{"DigitSecond"}, "--a1", true},
                                         WordRow{{"DashSecond"}, "--a-", true},
                                         WordRow{{"MixedName"}, "--Name-2-x", true},
                                         WordRow{{"Value"}, "--ab=c", true},
                                         WordRow{{"ValueOfEqualsSigns"}, "--ab===", true},
                                         WordRow{{"BlankValue"}, "--ab= ", true},
                                         WordRow{{"LineEndValue"}, "--ab=\n", true},
                                         WordRow{{"ValueOfTwoLines"}, "--ab=x\ny", true},
                                         WordRow{{"LongName"}, "--" + kMillion, true},
                                         WordRow{{"LongValue"}, "--ab=" + kMillion, true}),
                         kRowName);

INSTANTIATE_TEST_SUITE_P(
    Others, OptionWordTest,
    testing::Values(
        WordRow{{"Empty"}, "", false}, WordRow{{"LoneDash"}, "-", false},
        WordRow{{"TwoDashes"}, "--", false}, WordRow{{"ThreeDashes"}, "---ab", false},
        WordRow{{"Digit"}, "-1", false}, WordRow{{"TwoLetters"}, "-ab", false},
        WordRow{{"OneLetterName"}, "--x", false},
        WordRow{{"OneLetterNameWithValue"}, "--x=1", false}, WordRow{{"DigitFirst"}, "--1a", false},
        WordRow{{"DashFirst"}, "---a", false}, WordRow{{"EmptyValue"}, "--ab=", false},
        WordRow{{"Underscore"}, "--a_b", false}, WordRow{{"BlankInName"}, "--ab c", false},
        WordRow{{"ShortWithValue"}, "-a=1", false}, WordRow{{"PlainWord"}, "ab", false},
        WordRow{{"DashInside"}, "a-b", false}, WordRow{{"BlankBefore"}, " -a", false},
        WordRow{{"BlankBehind"}, "-a ", false}, WordRow{{"LineEndBehindShort"}, "-a\n", false},
        WordRow{{"LineEndBehindName"}, "--ab\n", false},
        WordRow{{"Umlaut"}, "--\xc3\xa4\xc3\xb6", false},
        WordRow{{"LongNameWithUnderscore"}, "--" + kMillion + "_", false}),
    kRowName);

OptionParser Parsed(const std::vector<std::string>& words) {
    OptionParser parser;
    parser.ParseVector(words);
    return parser;
}

// The alphabet has each kind of byte that the shape of an option tells apart.
TEST(OptionParserTest, IsParameter_EveryShortWord_AnswersAsThePattern) {
    const std::regex pattern("-[a-zA-Z]|--([a-zA-Z][a-zA-Z0-9-]+)(=[^]+)?");
    std::size_t options = 0;
    for (const std::string& word : TestSupport::EveryWord(6, "-aZ7=\n")) {
        const bool expected = std::regex_match(word, pattern);
        options += expected ? 1 : 0;
        ASSERT_EQ(OptionParser::IsParameter(word), expected) << "'" << word << "'";
    }
    EXPECT_GT(options, 0U);
}

TEST(OptionParserTest, IsParameter_EveryByte_OnlyLettersDigitsAndDashesAreOfAName) {
    for (int byte = 0; byte < 256; ++byte) {
        const char c = static_cast<char>(byte);
        const bool isLetter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
        const bool isInner = isLetter || (c >= '0' && c <= '9') || c == '-';
        EXPECT_EQ(OptionParser::IsParameter({'-', c}), isLetter) << byte;
        EXPECT_EQ(OptionParser::IsParameter({'-', '-', c, 'b'}), isLetter) << byte;
        EXPECT_EQ(OptionParser::IsParameter({'-', '-', 'a', c}), isInner) << byte;
        EXPECT_TRUE(OptionParser::IsParameter({'-', '-', 'a', 'b', '=', c})) << byte;
    }
}

TEST(OptionParserTest, New_IsEmptyAndNamedTandril) {
    OptionParser parser;
    EXPECT_EQ(parser.GetDispatcher(), "tandril");
    EXPECT_FALSE(parser.IsParsed());
    EXPECT_THAT(parser.GetParseErrors(), IsEmpty());
    EXPECT_THAT(parser.GetCommandPath(), IsEmpty());
    EXPECT_THAT(parser.GetDispatcherParameters(), IsEmpty());
    EXPECT_THAT(parser.GetCommandParameters(), IsEmpty());
}

TEST(OptionParserTest, New_WithAName_HasThatName) {
    EXPECT_EQ(OptionParser("mytool").GetDispatcher(), "mytool");
    EXPECT_EQ(OptionParser("").GetDispatcher(), "");
}

TEST(OptionParserTest, ParseArgv_TakesItsNameAndTheWordsInOrder) {
    OptionParser parser;
    const std::array<const char*, 5> argv{"/bin/t", "--formatter", "xml", "network", "list"};
    parser.ParseArgv(static_cast<int>(argv.size()), argv.data());
    EXPECT_EQ(parser.GetDispatcher(), "/bin/t");
    EXPECT_THAT(parser.GetDispatcherParameters(), ElementsAre(Pair("formatter", "xml")));
    EXPECT_THAT(parser.GetCommandPath(), ElementsAre("network", "list"));
}

TEST(OptionParserTest, ParseArgv_NameAlone_SetsTheName) {
    OptionParser parser;
    const std::array<const char*, 1> argv{"/bin/t"};
    parser.ParseArgv(1, argv.data());
    EXPECT_EQ(parser.GetDispatcher(), "/bin/t");
    EXPECT_THAT(parser.GetCommandPath(), IsEmpty());
}

TEST(OptionParserTest, ParseArgv_NoWordsAtAll_ChangesNothing) {
    OptionParser parser("mytool");
    parser.ParseArgv(0, nullptr);
    EXPECT_EQ(parser.GetDispatcher(), "mytool");
    EXPECT_THAT(parser.GetCommandPath(), IsEmpty());
}

TEST(OptionParserTest, ParseVector_KeepsTheDispatcherName) {
    OptionParser parser("mytool");
    parser.ParseVector({"network"});
    EXPECT_EQ(parser.GetDispatcher(), "mytool");
}

TEST(OptionParserTest, ParseVector_SplitsDispatcherOptionsPathAndCommandOptions) {
    auto parser = Parsed({"--formatter", "xml", "network", "list", "--count=5", "-v"});
    EXPECT_THAT(parser.GetDispatcherParameters(), ElementsAre(Pair("formatter", "xml")));
    EXPECT_THAT(parser.GetCommandPath(), ElementsAre("network", "list"));
    EXPECT_THAT(parser.GetCommandParameters(), ElementsAre(Pair("count", "5"), Pair("v", "")));
    EXPECT_THAT(parser.GetParseErrors(), IsEmpty());
}

TEST(OptionParserTest, ParseVector_PlainWordsOnly_AreThePath) {
    auto parser = Parsed({"network", "list", "extra"});
    EXPECT_THAT(parser.GetCommandPath(), ElementsAre("network", "list", "extra"));
    EXPECT_THAT(parser.GetCommandParameters(), IsEmpty());
    EXPECT_THAT(parser.GetParseErrors(), IsEmpty());
}

TEST(OptionParserTest, ParseVector_OptionsOnly_AreTheDispatchers) {
    auto parser = Parsed({"--formatter=xml", "-h"});
    EXPECT_THAT(parser.GetDispatcherParameters(),
                ElementsAre(Pair("formatter", "xml"), Pair("h", "")));
    EXPECT_THAT(parser.GetCommandPath(), IsEmpty());
    EXPECT_THAT(parser.GetCommandParameters(), IsEmpty());
}

TEST(OptionParserTest, ParseVector_ShortOption_KeepsItsLetterAndTakesAValue) {
    auto parser = Parsed({"-f", "xml", "network"});
    EXPECT_THAT(parser.GetDispatcherParameters(), ElementsAre(Pair("f", "xml")));
    EXPECT_THAT(parser.GetCommandPath(), ElementsAre("network"));
}

TEST(OptionParserTest, ParseVector_ValueInTheWord_LeavesTheNextWord) {
    auto parser = Parsed({"--formatter=xml", "network"});
    EXPECT_THAT(parser.GetDispatcherParameters(), ElementsAre(Pair("formatter", "xml")));
    EXPECT_THAT(parser.GetCommandPath(), ElementsAre("network"));
}

TEST(OptionParserTest, ParseVector_ValueInTheWord_RunsFromTheFirstEqualsSign) {
    auto parser = Parsed({"--format-param=units:T.F=a=b", "network"});
    EXPECT_THAT(parser.GetDispatcherParameters(),
                ElementsAre(Pair("format-param", "units:T.F=a=b")));
}

TEST(OptionParserTest, ParseVector_OptionBehindAnOption_IsNoValue) {
    auto parser = Parsed({"--name", "-x"});
    EXPECT_THAT(parser.GetDispatcherParameters(), ElementsAre(Pair("name", ""), Pair("x", "")));
}

TEST(OptionParserTest, ParseVector_WordsThatOnlyLookLikeOptions_AreValues) {
    for (const char* value : {"-5", "-", "--", "--x", "-ab", "--a_b", ""}) {
        auto parser = Parsed({"--count", value, "network"});
        EXPECT_THAT(parser.GetDispatcherParameters(), ElementsAre(Pair("count", value)));
        EXPECT_THAT(parser.GetCommandPath(), ElementsAre("network")) << value;
    }
}

TEST(OptionParserTest, ParseVector_DashedValueInTheWord_IsKept) {
    auto parser = Parsed({"--name=-x"});
    EXPECT_THAT(parser.GetDispatcherParameters(), ElementsAre(Pair("name", "-x")));
}

TEST(OptionParserTest, ParseVector_OptionGivenTwice_KeepsBothInOrder) {
    auto parser = Parsed({"--plugin", "one", "--formatter=xml", "--plugin=two"});
    EXPECT_THAT(
        parser.GetDispatcherParameters(),
        ElementsAre(Pair("plugin", "one"), Pair("formatter", "xml"), Pair("plugin", "two")));
    EXPECT_THAT(parser.GetDispatcherParameter("plugin"), ElementsAre("one", "two"));
}

TEST(OptionParserTest, DispatcherParameterQuestions_GoByTheExactName) {
    auto parser = Parsed({"--formatter=xml", "-h"});
    EXPECT_TRUE(parser.HasDispatcherParameter("formatter"));
    EXPECT_TRUE(parser.HasDispatcherParameter("h"));
    EXPECT_FALSE(parser.HasDispatcherParameter("Formatter"));
    EXPECT_FALSE(parser.HasDispatcherParameter("help"));
    EXPECT_FALSE(parser.HasDispatcherParameter(""));
    EXPECT_THAT(parser.GetDispatcherParameter("help"), IsEmpty());
    EXPECT_THAT(parser.GetDispatcherParameter("h"), ElementsAre(""));
}

TEST(OptionParserTest, GetNamespaces_IsTheCommandPath) {
    auto parser = Parsed({"network", "list"});
    EXPECT_EQ(&parser.GetNamespaces(), &parser.GetCommandPath());
}

TEST(OptionParserTest, ParseVector_NoWords_ChangesNothing) {
    auto parser = Parsed({"--formatter=xml", "network"});
    parser.ParseVector({});
    EXPECT_THAT(parser.GetDispatcherParameters(), ElementsAre(Pair("formatter", "xml")));
    EXPECT_THAT(parser.GetCommandPath(), ElementsAre("network"));
}

TEST(OptionParserTest, ParseVector_SecondLine_ReplacesEverythingButTheErrors) {
    auto parser = Parsed({"--formatter=xml", "network", "--count=5", "extra"});
    EXPECT_THAT(parser.GetCommandParameters(), ElementsAre(Pair("count", "5")));
    parser.ParseVector({"system"});
    EXPECT_THAT(parser.GetDispatcherParameters(), IsEmpty());
    EXPECT_THAT(parser.GetCommandPath(), ElementsAre("system"));
    EXPECT_THAT(parser.GetCommandParameters(), IsEmpty());
    EXPECT_THAT(parser.GetParseErrors(),
                ElementsAre("Found Extra non-parameter arguments at the end of input: 'extra' "));
}

TEST(OptionParserTest, ParseVector_SecondLine_DropsPendingWords) {
    auto parser = Parsed({"network", "--count=5"});
    parser.ParseVector({"system", "--size=6"});
    EXPECT_THAT(parser.GetCommandParameters(), ElementsAre(Pair("size", "6")));
}

} // namespace
