#include <CppTools/autocli/OptionParser.h>

#include <tests/support/LongText.h>
#include <tests/support/NamedRow.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <list>
#include <string>
#include <vector>

using CppTools::AutoCli::OptionParser;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using TestSupport::LongText;

namespace {

struct LineRow : TestSupport::NamedRow {
    LongText line;
    std::list<LongText> words; ///< None of them is shaped like an option.
};

class OptionParserLineTest : public testing::TestWithParam<LineRow> {};

TEST_P(OptionParserLineTest, ParseString_SplitsTheLine) {
    std::list<std::string> words;
    for (const LongText& word : GetParam().words) {
        words.push_back(word.Build());
    }
    OptionParser parser;
    EXPECT_EQ(parser.ParseString(GetParam().line.Build()), words.empty());
    EXPECT_EQ(parser.GetCommandPath(), words);
}

std::string RowName(const testing::TestParamInfo<LineRow>& row) {
    return row.param.name;
}

const LongText kLong("a", 500000);
const LongText kLongBlank(" ", 500000);

INSTANTIATE_TEST_SUITE_P(
    Blanks, OptionParserLineTest,
    testing::Values(LineRow{{"Empty"}, "", {}}, LineRow{{"OneBlank"}, " ", {}},
                    LineRow{{"BlanksAndTabs"}, " \t  \t", {}}, LineRow{{"OneWord"}, "a", {"a"}},
                    LineRow{{"ThreeWords"}, "ab cd ef", {"ab", "cd", "ef"}},
                    LineRow{{"BlanksBefore"}, "  \t a b", {"a", "b"}},
                    LineRow{{"BlanksBetween"}, "a  \t  b", {"a", "b"}},
                    LineRow{{"OneBlankBehind"}, "a ", {"a"}},
                    LineRow{{"BlanksBehind"}, "a b \t ", {"a", "b"}},
                    LineRow{{"TabBetween"}, "a\tb", {"a", "b"}},
                    LineRow{{"CarriageReturnIsNoBlank"}, "a\rb c\r", {"a\rb", "c\r"}},
                    LineRow{{"LineEndsAreNoBlanks"}, "a\n\vb\f", {"a\n\vb\f"}},
                    LineRow{{"Utf8"}, "\xc3\xa4 \xe2\x82\xac", {"\xc3\xa4", "\xe2\x82\xac"}},
                    LineRow{{"LongWords"}, kLong + " " + kLong, {kLong, kLong}},
                    LineRow{{"LongBlanks"}, kLongBlank + "a" + kLongBlank + "b", {"a", "b"}}),
    RowName);

INSTANTIATE_TEST_SUITE_P(
    Quotes, OptionParserLineTest,
    testing::Values(LineRow{{"BlankInQuotes"}, "a \"b c\" d", {"a", "b c", "d"}},
                    LineRow{{"QuotedLine"}, "\"a b\"", {"a b"}},
                    LineRow{{"QuotedWord"}, "\"a\" b", {"a", "b"}},
                    LineRow{{"QuotesInsideAWord"}, "a\"b c\"d e", {"ab cd", "e"}},
                    LineRow{{"SeveralPairsInAWord"}, "\"a b\"\"c d\" e", {"a bc d", "e"}},
                    LineRow{{"EmptyQuotesInsideAWord"}, "a\"\"b", {"ab"}},
                    LineRow{{"TabInQuotes"}, "\"a\tb\"", {"a\tb"}},
                    LineRow{{"BlanksAtTheEndOfQuotes"}, "\"a  \" b", {"a  ", "b"}},
                    LineRow{{"UnclosedQuote"}, "a \"b c", {"a", "b c"}},
                    LineRow{{"UnclosedQuoteAndBlankAtTheEnd"}, "\"a ", {"a "}},
                    LineRow{{"LoneQuote"}, "\"", {}}, LineRow{{"EmptyQuotes"}, "\"\"", {}},
                    LineRow{{"QuoteAtTheEnd"}, "a \"", {"a"}},
                    LineRow{{"EmptyQuotesAtTheEnd"}, "a \"\"", {"a"}},
                    LineRow{{"BackslashIsOrdinary"}, "a\\ b", {"a\\", "b"}},
                    LineRow{{"BackslashEscapesNoQuote"}, "a\\\"b c\" d", {"a\\b c", "d"}},
                    LineRow{{"SingleQuotesAreOrdinary"}, "'a b'", {"'a", "b'"}},
                    LineRow{{"QuoteStartsNoWord"}, "\"  a\" b", {" a", "b"}},
                    LineRow{{"BlankBehindEmptyQuotes"}, "\"\" a", {" a"}},
                    LineRow{{"EmptyQuotesBetweenWords"}, "a \"\" b", {"a", " b"}},
                    LineRow{{"EmptyQuotesAndABlankAtTheEnd"}, "a \"\" ", {"a", " "}},
                    LineRow{{"EmptyQuotesAndABlankAlone"}, "\"\" ", {" "}},
                    LineRow{{"BlankBehindALoneQuote"}, "\" ", {" "}},
                    LineRow{{"BlankBeforeEmptyQuotes"}, " \"\"", {}},
                    LineRow{{"SeveralBlanksBehindALoneQuote"}, "\"  a", {" a"}}),
    RowName);

INSTANTIATE_TEST_SUITE_P(
    Comments, OptionParserLineTest,
    testing::Values(LineRow{{"CommentOnly"}, "# a comment", {}}, LineRow{{"HashOnly"}, "#", {}},
                    LineRow{{"CommentBehindBlanks"}, " \t # a", {}},
                    LineRow{{"CommentWithoutABlank"}, "#a b", {}},
                    LineRow{{"CommentBehindWords"}, "a b # c d", {"a", "b"}},
                    LineRow{{"HashBehindABlankAtTheEnd"}, "a #", {"a"}},
                    LineRow{{"HashInsideAWord"}, "a#b c", {"a#b", "c"}},
                    LineRow{{"HashAtTheEndOfAWord"}, "a# b", {"a#", "b"}},
                    LineRow{{"HashAtTheEndOfTheLine"}, "a#", {"a#"}},
                    LineRow{{"HashInsideAWordBeforeAComment"}, "a#b #c", {"a#b"}},
                    LineRow{{"HashBehindAnOpeningQuote"}, "a \"# b\" c", {"a"}},
                    LineRow{{"HashBehindAQuoteAtTheStart"}, "\"#a b\"", {}},
                    LineRow{{"HashBehindEmptyQuotes"}, "\"\"#a", {}},
                    LineRow{{"HashBehindAQuoteInsideAWord"}, "a\"#b c\"", {"a#b c"}},
                    LineRow{{"HashBehindAQuoteAndABlank"}, "\" #a\" b", {}},
                    LineRow{{"HashLaterInQuotes"}, "\"a # b\" c", {"a # b", "c"}},
                    LineRow{{"CommentBehindQuotes"}, "\"a b\" # \"c", {"a b"}}),
    RowName);

TEST(OptionParserLinesTest, ParseString_WordsAreParsedAsOptionsAndPath) {
    OptionParser parser("mytool");
    EXPECT_FALSE(parser.ParseString("--formatter xml network list --text=\"a b\" -v # all"));
    EXPECT_EQ(parser.GetDispatcher(), "mytool");
    EXPECT_THAT(parser.GetDispatcherParameters(), ElementsAre(Pair("formatter", "xml")));
    EXPECT_THAT(parser.GetCommandPath(), ElementsAre("network", "list"));
    EXPECT_THAT(parser.GetCommandParameters(), ElementsAre(Pair("text", "a b"), Pair("v", "")));
}

TEST(OptionParserLinesTest, ParseString_OptionsOnly_IsALineWithWords) {
    OptionParser parser;
    EXPECT_FALSE(parser.ParseString("--help"));
    EXPECT_TRUE(parser.HasDispatcherParameter("help"));
}

TEST(OptionParserLinesTest, ParseString_NoWords_LeavesTheLineBefore) {
    OptionParser parser;
    parser.ParseString("network list");
    EXPECT_TRUE(parser.ParseString("# nothing"));
    EXPECT_THAT(parser.GetCommandPath(), ElementsAre("network", "list"));
}

TEST(OptionParserLinesTest, ParseString_EmbeddedNul_IsAnOrdinaryCharacter) {
    OptionParser parser;
    EXPECT_FALSE(parser.ParseString(std::string("a\0b c", 5)));
    EXPECT_THAT(parser.GetCommandPath(), ElementsAre(std::string("a\0b", 3), "c"));
}

} // namespace
