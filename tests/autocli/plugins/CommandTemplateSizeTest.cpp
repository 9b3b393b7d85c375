#include <gtest/gtest.h>
#include <tests/support/NamedRow.h>
#include <tests/support/TemplateFilling.h>

#include <cstddef>
#include <string>

// Long templates and long values have to be filled in time that grows as they do. Each of these
// would keep a step that is quadratic in the number of pieces busy far beyond any patience.

namespace {

using TestSupport::FilledLine;
using TestSupport::FilledStdin;
using TestSupport::GivenParameters;
using TestSupport::kRowName;
using TestSupport::NamedRow;

constexpr std::size_t kMany = 100'000;

std::string Times(std::size_t count, const std::string& piece) {
    std::string text;
    text.reserve(count * piece.size());
    for (std::size_t i = 0; i < count; ++i) {
        text += piece;
    }
    return text;
}

const GivenParameters kNothing;
const GivenParameters kEverything = {{"early", "e"}, {"force", ""}, {"ip", "a"},
                                     {"ip", "b"},    {"name", "n"}, {"zone", "z"}};

/// A piece that is repeated many times between two others, and what becomes of it each time.
struct SizeRow : NamedRow {
    std::string before;
    std::string piece;
    std::string after;
    const GivenParameters* given;
    std::string filledBefore;
    std::string filledPiece;
    std::string filledAfter;
};

class CommandTemplateSizeTest : public testing::TestWithParam<SizeRow> {};

TEST_P(CommandTemplateSizeTest, SubstituteInput_EndsPromptly) {
    const SizeRow& row = GetParam();
    const std::string filled =
        FilledLine(row.before + Times(kMany, row.piece) + row.after, *row.given);
    // Not compared by EXPECT_EQ, which would print a megabyte.
    EXPECT_TRUE(filled == row.filledBefore + Times(kMany, row.filledPiece) + row.filledAfter)
        << "begins " << filled.substr(0, 100) << " and has " << filled.size() << " bytes";
}

INSTANTIATE_TEST_SUITE_P(
    Unclosed, CommandTemplateSizeTest,
    testing::Values(
        SizeRow{{"Val"}, "", "$val{name", "", &kEverything, "", "$val{name", ""},
        SizeRow{{"IfPresent"}, "", "$if{force,", "", &kEverything, "", "$if{force,", ""},
        SizeRow{{"IfAbsent"}, "", "$if{force,", "", &kNothing, "", "$if{force,", ""},
        SizeRow{{"List"}, "", "$list{ip,',',", "", &kEverything, "", "$list{ip,',',", ""},
        SizeRow{{"ListName"}, "", "$list{ip", "", &kEverything, "", "$list{ip", ""},
        SizeRow{
            {"MultiList"}, "", "$multilist{ip,-i,", "", &kEverything, "", "$multilist{ip,-i,", ""},
        SizeRow{{"MultiListNearlyClosed"},
                "$multilist{ip,",
                "-i,true",
                "",
                &kEverything,
                "$multilist{ip,",
                "-i,true",
                ""},
        SizeRow{{"EveryKind"},
                "",
                "$val{name$if{zone,$list{ip,',',$multilist{ip,a,",
                "",
                &kEverything,
                "",
                "$val{name$if{zone,$list{ip,',',$multilist{ip,a,",
                ""},
        SizeRow{{"Dollars"}, "", "$", "", &kEverything, "", "$", ""},
        SizeRow{{"OpeningBraces"}, "$", "{", "", &kEverything, "$", "{", ""},
        SizeRow{{"LineEnds"}, "$if{force,", "\n", "", &kEverything, "$if{force,", "\n", ""}),
    kRowName);

INSTANTIATE_TEST_SUITE_P(
    Filled, CommandTemplateSizeTest,
    testing::Values(
        SizeRow{{"Val"}, "", "$val{name} ", "", &kEverything, "", "n ", ""},
        SizeRow{{"If"}, "", "$if{force,a} ", "", &kEverything, "", "a ", ""},
        SizeRow{{"LongIf"}, "$if{force,", "a", "}", &kEverything, "", "a", ""},
        SizeRow{{"List"}, "", "$list{ip,',',true} ", "", &kEverything, "", "\"a,b\" ", ""},
        SizeRow{
            {"MultiList"}, "", "$multilist{ip,-i,false}", "", &kEverything, "", " -i a -i b", ""},
        SizeRow{{"LongOption"}, "$multilist{name,", "-", ",false}", &kEverything, " ", "-", " n"},
        SizeRow{{"PlaceholdersOfOthers"},
                "",
                "$val{nobody} ",
                "",
                &kEverything,
                "",
                "$val{nobody} ",
                ""}),
    kRowName);

INSTANTIATE_TEST_SUITE_P(
    Removed, CommandTemplateSizeTest,
    testing::Values(
        SizeRow{{"Alone"}, "run ", "$if{zone,a}", "", &kNothing, "run ", "", ""},
        SizeRow{{"Apart"}, "", "a $if{zone,a} b ", "", &kNothing, "", "a  b ", ""},
        SizeRow{{"NestedText"}, "$if{zone,", "{a}", "}b", &kNothing, "", "", "b"},
        SizeRow{{"NextToOtherBraces"}, "", "${A}", "$if{zone,a}", &kNothing, "", "${A}", ""},
        SizeRow{{"BehindPairsOfOneDollar"}, "$q", "{a}", "$if{zone,a}", &kNothing, "$q", "{a}", ""},
        SizeRow{{"BeforePairsOfOneDollar"}, "$if{zone,a}$", "{}", "", &kNothing, "$", "{}", ""},
        SizeRow{{"BehindUnpairedBraces"}, "$", "{", "$if{zone,a}", &kNothing, "$", "{", ""},
        SizeRow{{"BeforeUnclosedOnes"},
                "$if{zone,a} ",
                "$if{zone,",
                "",
                &kNothing,
                " ",
                "$if{zone,",
                ""},
        SizeRow{{"BehindIfsOfImpossibleNames"},
                "",
                "$if{No,a} ",
                "$if{zone,a}",
                &kNothing,
                "",
                "$if{No,a} ",
                ""}),
    kRowName);

TEST(LargeTemplateTest, SubstituteInput_NestedAbsentIfsEndPromptly) {
    EXPECT_EQ(FilledLine("a" + Times(kMany, "$if{zone,") + Times(kMany, "}") + "b", kNothing),
              "ab");
}

TEST(LargeTemplateTest, SubstituteInput_LongValuesEndPromptly) {
    const GivenParameters given = {{"name", Times(kMany, "a;'")}};
    EXPECT_TRUE(FilledLine("$val{name}", given) == Times(kMany, "a\\;\\'"));
    EXPECT_TRUE(FilledLine("'$val{name}'", given) == "'" + Times(kMany, "a;") + "'");
    EXPECT_TRUE(FilledStdin("$val{name}", given) == Times(kMany, "a;'"));
}

TEST(LargeTemplateTest, SubstituteInput_LongListsEndPromptly) {
    const GivenParameters given(kMany, {"ip", "a;"});
    EXPECT_TRUE(FilledLine("$list{ip,',',false},", given) == Times(kMany, "a\\;,"));
    EXPECT_TRUE(FilledLine("$multilist{ip,-i,true}", given) == Times(kMany, " -i \"a;\""));
}

TEST(LargeTemplateTest, SubstituteInput_ValuesFullOfPlaceholdersEndPromptly) {
    const GivenParameters given = {{"early", Times(kMany, "$val{zone $if{zone, $if{force,a}")},
                                   {"zone", "z"}};
    EXPECT_TRUE(FilledStdin("$val{early}", given) == Times(kMany, "$val{zone  $if{force,a"));
}

} // namespace
