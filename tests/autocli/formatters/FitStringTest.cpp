#include <CppTools/autocli/formatters/FieldText.h>

#include <tests/support/NamedRow.h>
#include <tests/support/Wrapping.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <ios>
#include <sstream>
#include <string>
#include <vector>

namespace {

using CppTools::AutoCli::AutoCli_FitString;
using TestSupport::WrapByLines;
using TestSupport::WrapEachLine;

constexpr char kNoMark = '\0';

/// The arguments of one call, with the values most cases share.
struct Fit {
    int indent = 0;
    int width = 0;
    std::string text;
    bool continueLine = false;
    bool newlineAtEnd = true;
    char breakMark = kNoMark;
    bool splitLines = false;

    std::string Run() const {
        std::ostringstream out;
        AutoCli_FitString(indent, width, text, continueLine, out, newlineAtEnd, breakMark,
                          splitLines);
        return out.str();
    }
};

struct FitCase : TestSupport::NamedRow {
    Fit fit;
    std::string written;
};

class FitStringTest : public testing::TestWithParam<FitCase> {};

TEST_P(FitStringTest, WritesTheTextFittedToTheWidth) {
    EXPECT_EQ(GetParam().fit.Run(), GetParam().written);
}

std::string CaseName(const testing::TestParamInfo<FitCase>& row) {
    return row.param.name;
}

constexpr const char* kFiveWords = "aaaa bbbb cccc dddd eeee";

INSTANTIATE_TEST_SUITE_P(
    Wrapping, FitStringTest,
    testing::Values(
        FitCase{{"WrappedLineEndsInABlank"},
                {10, 30, kFiveWords},
                "          aaaa bbbb cccc dddd \n          eeee\n"},
        FitCase{{"TextAsLongAsTheRoomStaysWhole"},
                {10, 34, kFiveWords},
                "          aaaa bbbb cccc dddd eeee\n"},
        FitCase{{"TextOneLongerThanTheRoomIsWrapped"},
                {10, 33, kFiveWords},
                "          aaaa bbbb cccc dddd \n          eeee\n"},
        FitCase{{"EveryWordCostsItsLengthPlusOne"},
                {10, 29, kFiveWords},
                "          aaaa bbbb cccc \n          dddd eeee\n"},
        FitCase{{"OneWordPerLine"}, {2, 7, "aaaa bbbb cccc"}, "  aaaa \n  bbbb \n  cccc\n"},
        FitCase{{"FirstWordTooLongLeavesABlankLine"}, {2, 7, "aaaaa bb"}, "   \n  aaaaa \n  bb\n"},
        FitCase{
            {"LongWordIsNeverCut"}, {2, 7, "aa bbbbbbbbbbbb cc"}, "  aa \n  bbbbbbbbbbbb \n  cc\n"},
        FitCase{{"SingleWordLongerThanTheRoom"}, {2, 7, "bbbbbbbbbbbb"}, "   \n  bbbbbbbbbbbb\n"},
        FitCase{{"SingleWordAsLongAsTheRoom"}, {2, 7, "bbbbb"}, "  bbbbb\n"},
        FitCase{{"ConsecutiveBlanksAreEmptyWords"}, {2, 8, "a   b cc"}, "  a   b \n  cc\n"},
        FitCase{{"LeadingBlanksAreEmptyWords"}, {2, 7, "  aa bb"}, "    aa \n  bb\n"},
        FitCase{{"LastOfTheTrailingBlanksIsDropped"}, {2, 7, "aaa bb  "}, "  aaa \n  bb \n"},
        FitCase{{"BlanksAlone"}, {2, 5, "     "}, "     \n   \n"},
        FitCase{{"LengthsAreBytes"}, {2, 7, "\xC3\xA9\xC3\xA9 bb"}, "  \xC3\xA9\xC3\xA9 \n  bb\n"},
        FitCase{{"TabsAreNoSeparators"}, {2, 7, "aa\tbb\tcc dd"}, "   \n  aa\tbb\tcc \n  dd\n"}),
    CaseName);

INSTANTIATE_TEST_SUITE_P(
    Ends, FitStringTest,
    testing::Values(
        FitCase{{"NoNewlineAfterAFittingText"}, {3, 20, "aaaa", false, false}, "   aaaa"},
        FitCase{
            {"NoNewlineAfterAWrappedText"}, {2, 7, "aaaa bbbb", false, false}, "  aaaa \n  bbbb"},
        FitCase{{"NoNewlineAfterAnUnwrappableText"}, {3, 3, "aaaa", false, false}, "   aaaa"},
        FitCase{{"NewlineAfterAnEmptyText"}, {3, 20, ""}, "   \n"},
        FitCase{{"NothingButTheIndentForAnEmptyText"}, {3, 20, "", false, false}, "   "},
        FitCase{{"NothingForAnEmptyContinuedText"}, {3, 20, "", true, false}, ""}),
    CaseName);

INSTANTIATE_TEST_SUITE_P(
    Indent, FitStringTest,
    testing::Values(
        FitCase{{"ZeroStillWritesOneBlank"}, {0, 20, "aaaa"}, " aaaa\n"},
        FitCase{{"One"}, {1, 20, "aaaa"}, " aaaa\n"},
        FitCase{{"Twelve"}, {12, 20, "aaaa"}, "            aaaa\n"},
        FitCase{{"ZeroIndentLeavesTheWholeWidth"}, {0, 9, "aaaa bbbb cc"}, " aaaa \n bbbb cc\n"}),
    CaseName);

INSTANTIATE_TEST_SUITE_P(
    ContinuedLine, FitStringTest,
    testing::Values(FitCase{{"FittingTextHasNoIndent"}, {10, 30, "aaaa", true}, "aaaa\n"},
                    FitCase{{"OnlyFurtherLinesHaveTheIndent"},
                            {10, 30, kFiveWords, true},
                            "aaaa bbbb cccc dddd \n          eeee\n"},
                    FitCase{
                        {"FirstWordTooLong"}, {2, 7, "aaaaaa bb", true}, " \n  aaaaaa \n  bb\n"},
                    FitCase{{"UnwrappableTextHasNoIndent"},
                            {10, 10, kFiveWords, true},
                            "aaaa bbbb cccc dddd eeee\n"}),
    CaseName);

INSTANTIATE_TEST_SUITE_P(
    NoRoom, FitStringTest,
    testing::Values(
        FitCase{{"WidthZero"}, {5, 0, kFiveWords}, "     aaaa bbbb cccc dddd eeee\n"},
        FitCase{{"WidthZeroAndIndentZero"}, {0, 0, kFiveWords}, " aaaa bbbb cccc dddd eeee\n"},
        FitCase{{"WidthBelowIndent"}, {5, 4, kFiveWords}, "     aaaa bbbb cccc dddd eeee\n"},
        FitCase{{"WidthIsIndent"}, {5, 5, kFiveWords}, "     aaaa bbbb cccc dddd eeee\n"},
        FitCase{{"OneColumn"}, {5, 6, "a b"}, "      \n     a \n     b\n"},
        FitCase{{"EmbeddedLineEndsStay"}, {5, 0, "a\nb"}, "     a\nb\n"}),
    CaseName);

INSTANTIATE_TEST_SUITE_P(BreakMark, FitStringTest,
                         testing::Values(FitCase{{"ReplacesTheTrailingBlank"},
                                                 {2, 7, "aaaa bbbb cccc", false, true, '\\'},
                                                 "  aaaa\\\n  bbbb\\\n  cccc\n"},
                                         FitCase{{"StandsAloneBeforeAFirstWordThatIsTooLong"},
                                                 {2, 7, "aaaaaa bb", false, true, '\\'},
                                                 "  \\\n  aaaaaa\\\n  bb\n"},
                                         FitCase{{"IsNotWrittenWithoutABreak"},
                                                 {2, 20, "aaaa bbbb", false, true, '\\'},
                                                 "  aaaa bbbb\n"},
                                         FitCase{
                                             {"ReachesEverySplitLine"},
                                             {2, 7, "aaaa bbbb\ncccc dddd", false, true, '+', true},
                                             "  aaaa+\n  bbbb\n  cccc+\n  dddd\n"}),
                         CaseName);

INSTANTIATE_TEST_SUITE_P(
    SplitLines, FitStringTest,
    testing::Values(
        FitCase{{"OffLeavesLineEndsInTheirWords"},
                {2, 20, "a\nb", false, true, kNoMark, false},
                "  a\nb\n"},
        FitCase{{"EveryLineIsIndented"},
                {2, 20, "a\nb\nc", false, true, kNoMark, true},
                "  a\n  b\n  c\n"},
        FitCase{{"NewlinesStandBetweenLinesOnly"},
                {2, 20, "a\nb\nc", false, false, kNoMark, true},
                "  a\n  b\n  c"},
        FitCase{{"OnlyTheFirstLineIsContinued"},
                {2, 20, "a\nb\nc", true, true, kNoMark, true},
                "a\n  b\n  c\n"},
        FitCase{{"OnlyTheFirstLineIsContinuedWithoutNewline"},
                {2, 20, "a\nb", true, false, kNoMark, true},
                "a\n  b"},
        FitCase{{"EveryLineIsWrapped"},
                {2, 7, "aaaa bbbb\ncccc dddd", true, true, kNoMark, true},
                "aaaa \n  bbbb\n  cccc \n  dddd\n"},
        FitCase{{"EmptyTextWritesNothing"}, {2, 20, "", false, true, kNoMark, true}, ""},
        FitCase{
            {"EmptyTextWritesNothingWhenContinued"}, {2, 20, "", true, true, kNoMark, true}, ""},
        FitCase{
            {"InnerEmptyLine"}, {2, 20, "a\n\nb", false, true, kNoMark, true}, "  a\n  \n  b\n"},
        FitCase{{"LeadingEmptyLine"}, {2, 20, "\nb", true, true, kNoMark, true}, "\n  b\n"},
        FitCase{{"NoTrailingEmptyLine"}, {2, 20, "a\n", false, true, kNoMark, true}, "  a\n"},
        FitCase{{"OnlyOneTrailingLineEndIsDropped"},
                {2, 20, "a\n\n", false, false, kNoMark, true},
                "  a\n  "},
        FitCase{{"LineEndAlone"}, {2, 20, "\n", false, true, kNoMark, true}, "  \n"},
        FitCase{{"WithoutRoomLinesAreStillSplit"},
                {2, 0, "aaaa bbbb\ncccc", true, true, kNoMark, true},
                "aaaa bbbb\n  cccc\n"}),
    CaseName);

const std::vector<std::string>& SampleTexts() {
    static const std::vector<std::string> texts = {
        "",
        " ",
        "word",
        "a b c d e f g h i j k l m n o p q r s t u v w x y z",
        "The list of fields and the order in which to print them for the type named here",
        "  leading, double  and   triple blanks, and trailing ones   ",
        "Optionally remove the line of '-' characters after the header.  By default this "
        "paramter is assumed to be true.",
        "https://host.example/a/very/long/address/that/nobody/ever/cuts/anywhere then short words",
        "short words then https://host.example/a/very/long/address/that/nobody/ever/cuts",
        "naïve café, fünf Wörter, ein Satz: drei größere Brüche über Ärger",
    };
    return texts;
}

class FitStringWidthTest : public testing::TestWithParam<int> {};

TEST_P(FitStringWidthTest, EveryWidthAgreesWithWrappingLineByLine) {
    for (const auto& text : SampleTexts()) {
        for (int width = 0; width <= 120; ++width) {
            for (const bool continueLine : {false, true}) {
                SCOPED_TRACE("width " + std::to_string(width) + ", text '" + text + "'");
                const Fit fit{GetParam(), width, text, continueLine, false};
                const std::string margin(static_cast<std::size_t>(std::max(GetParam(), 1)), ' ');
                ASSERT_EQ(fit.Run(),
                          (continueLine ? "" : margin) + WrapByLines(text, GetParam(), width));
            }
        }
    }
}

TEST_P(FitStringWidthTest, EveryWidthAgreesWithABreakMark) {
    for (const auto& text : SampleTexts()) {
        for (int width = 0; width <= 120; ++width) {
            SCOPED_TRACE("width " + std::to_string(width) + ", text '" + text + "'");
            const Fit fit{GetParam(), width, text, true, true, '\\'};
            ASSERT_EQ(fit.Run(), WrapByLines(text, GetParam(), width, '\\') + "\n");
        }
    }
}

TEST_P(FitStringWidthTest, EveryWidthAgreesWithSplittingFirst) {
    const std::string text = "WARNING: nobody reads this.\n\n  But all of it is wrapped, each line "
                             "for itself,\nwhatever the width.\n";
    for (int width = 0; width <= 120; ++width) {
        const Fit fit{GetParam(), width, text, true, false, kNoMark, true};
        ASSERT_EQ(fit.Run(), WrapEachLine(text, GetParam(), width)) << "width " << width;
    }
}

TEST_P(FitStringWidthTest, NoLineOfSeveralWordsIsWiderThanTheRoom) {
    const int indent = GetParam();
    for (const auto& text : SampleTexts()) {
        for (int width = indent + 1; width <= 120; ++width) {
            SCOPED_TRACE("width " + std::to_string(width) + ", text '" + text + "'");
            const auto widest = static_cast<std::size_t>(std::max(indent, 1) + width - indent);
            std::istringstream lines(Fit{indent, width, text, true}.Run());
            for (std::string line; std::getline(lines, line);) {
                const auto start = line.find_first_not_of(' ');
                if (start != std::string::npos && line.find(' ', start) < line.size() - 1) {
                    ASSERT_LE(line.size(), widest) << line;
                }
            }
        }
    }
}

TEST_P(FitStringWidthTest, NoByteOfTheTextIsLostExceptBlanks) {
    for (const auto& text : SampleTexts()) {
        for (int width = 0; width <= 120; ++width) {
            std::string written = Fit{GetParam(), width, text}.Run();
            std::string expected = text;
            std::erase_if(written, [](char c) { return c == ' ' || c == '\n'; });
            std::erase(expected, ' ');
            ASSERT_EQ(written, expected) << "width " << width;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Indents, FitStringWidthTest, testing::Values(-3, 0, 1, 2, 8, 30, 119));

TEST(FitStringStreamTest, Indent_StandsBeforeTheTextInEveryAdjustment) {
    for (const auto adjustment :
         {std::ios_base::left, std::ios_base::right, std::ios_base::internal}) {
        std::ostringstream out;
        out.setf(adjustment, std::ios_base::adjustfield);
        AutoCli_FitString(4, 9, "aaaa bbbb", false, out, true, kNoMark, false);
        EXPECT_EQ(out.str(), "    aaaa \n    bbbb\n");
    }
}

TEST(FitStringStreamTest, FieldWidth_IsUsedUpByTheIndent) {
    std::ostringstream out;
    AutoCli_FitString(4, 20, "aaaa", false, out, false, kNoMark, false);
    out << "|";
    EXPECT_EQ(out.str(), "    aaaa|");
}

TEST(FitStringStreamTest, LongText_IsWrappedToTheEnd) {
    constexpr int kWords = 100'000;
    std::string text = "word";
    std::string expected = " word";
    for (int i = 1; i < kWords; ++i) {
        text += " word";
        expected += i % 2 == 0 ? " \n word" : " word";
    }
    // Not by EXPECT_EQ, which would look for the smallest difference between so many lines.
    EXPECT_TRUE((Fit{0, 10, text, false, false}.Run() == expected));
}

} // namespace
