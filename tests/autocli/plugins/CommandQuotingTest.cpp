#include <CppTools/autocli/plugins/ShellCmd.h>

#include <gtest/gtest.h>
#include <tests/support/NamedRow.h>
#include <tests/support/TemplateFilling.h>

#include <string>

// What the shell makes of filled templates: the arguments that a command really gets.

namespace {

using TestSupport::FilledLine;
using TestSupport::GivenParameters;
using TestSupport::kRowName;
using TestSupport::NamedRow;

/// Runs the filled template behind a command that prints each argument in angle brackets.
std::string ArgumentsOf(const std::string& text, const GivenParameters& given) {
    std::string output;
    CppTools::AutoCli::AutoCli_ShellCmd("printf '<%s>' " + FilledLine(text, given), output, "");
    return output;
}

struct QuotingRow : NamedRow {
    std::string text;
    GivenParameters given;
    std::string arguments;
};

class CommandQuotingTest : public testing::TestWithParam<QuotingRow> {};

TEST_P(CommandQuotingTest, Shell_GivesTheCommandTheseArguments) {
    EXPECT_EQ(ArgumentsOf(GetParam().text, GetParam().given), GetParam().arguments);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, CommandQuotingTest,
    testing::Values(
        QuotingRow{{"ValIsOneArgument"}, "$val{name}", {{"name", "a;b"}}, "<a;b>"},
        QuotingRow{{"ValRunsNothing"},
                   "$val{name}",
                   {{"name", "$(echo;x)`echo;y`&&z||w"}},
                   "<$(echo;x)`echo;y`&&z||w>"},
        QuotingRow{{"ValLeavesBlanksToTheTemplate"},
                   "$val{name}",
                   {{"name", "two words"}},
                   "<two><words>"},
        QuotingRow{{"ValLosesLineEnds"}, "$val{name}", {{"name", "a\nb"}}, "<ab>"},
        QuotingRow{{"QuotedValKeepsEverythingButSingleQuotes"},
                   "'$val{name}'",
                   {{"name", "it's $HOME; `x` \"y\" \\z\nnext *"}},
                   "<its $HOME; `x` \"y\" \\z\nnext *>"},
        QuotingRow{{"QuotedValCannotLeaveItsQuotes"},
                   "'$val{name}'",
                   {{"name", "'; echo injected; '"}},
                   "<; echo injected; >"},
        QuotingRow{
            {"ListIsOneArgument"}, "$list{ip,' ',true}", {{"ip", "a b"}, {"ip", "c"}}, "<a b c>"},
        QuotingRow{{"ListKeepsWhatDoubleQuotesWouldExpand"},
                   "$list{ip,',',true}",
                   {{"ip", "$HOME"}, {"ip", "`x`"}, {"ip", "\"y\\"}},
                   "<$HOME,`x`,\"y\\>"},
        QuotingRow{{"UnquotedListIsOneArgument"},
                   "$list{ip,';',false}",
                   {{"ip", "$a"}, {"ip", "'b'"}},
                   "<$a;'b'>"},
        QuotingRow{{"UnquotedListWithBlanksIsSeveral"},
                   "$list{ip,' ',false}",
                   {{"ip", "a"}, {"ip", "b;"}},
                   "<a><b;>"},
        QuotingRow{{"MultiListGivesPairsOfArguments"},
                   "$multilist{ip,--ip,true}",
                   {{"ip", "a b"}, {"ip", "c;d 'e'"}},
                   "<--ip><a b><--ip><c;d 'e'>"},
        QuotingRow{{"MultiListValueCannotLeaveItsQuotes"},
                   "$multilist{ip,--ip,true}",
                   {{"ip", "a\"; echo injected; \""}},
                   "<--ip><a; echo injected; >"},
        QuotingRow{{"UnquotedMultiListGivesPairsToo"},
                   "$multilist{ip,--ip,false}",
                   {{"ip", "$a"}, {"ip", "\"b\"|c"}},
                   "<--ip><$a><--ip><\"b\"|c>"},
        QuotingRow{
            {"IfAddsAnArgument"}, "a $if{force,--force} b", {{"force", ""}}, "<a><--force><b>"},
        QuotingRow{{"AbsentIfAddsNone"}, "a $if{force,--force} b", {}, "<a><b>"}),
    kRowName);

// Where the escapes and the quotes around a placeholder do not fit together, and what is never
// escaped. Authors of templates have to know it.
INSTANTIATE_TEST_SUITE_P(
    Limits, CommandQuotingTest,
    testing::Values(
        QuotingRow{{"LastOccurrenceQuotedLeavesTheFirstOpen"},
                   "$val{name} '$val{name}'",
                   {{"name", "a $((1+2)) 'b'"}},
                   "<a><3><b><a $((1+2)) b>"},
        QuotingRow{{"LastOccurrenceUnquotedEscapesTheFirstInItsQuotes"},
                   "'$val{name}' $val{name}",
                   {{"name", "a;b"}},
                   "<a\\;b><a;b>"},
        QuotingRow{
            {"BlankBehindAQuotedValEscapesIt"}, "'$val{name} '", {{"name", "a;b"}}, "<a\\;b >"},
        QuotingRow{
            {"BlankBeforeAQuotedValEscapesIt"}, "' $val{name}'", {{"name", "a;b"}}, "< a\\;b>"},
        QuotingRow{
            {"DoubleQuotesKeepTheBackslash"}, "\"$val{name}\"", {{"name", "a;b$c"}}, "<a\\;b$c>"},
        QuotingRow{{"ListInSingleQuotesKeepsTheBackslash"},
                   "'$list{ip,',',false}'",
                   {{"ip", "a;"}, {"ip", "b"}},
                   "<a\\;,b>"},
        QuotingRow{
            {"ListSeparatorIsEscaped"}, "$list{ip,''',false}", {{"ip", "a"}, {"ip", "b"}}, "<a'b>"},
        QuotingRow{{"ListSeparatedByLineEndsLosesThem"},
                   "$list{ip,'\n',false}",
                   {{"ip", "a"}, {"ip", "b"}},
                   "<ab>"},
        QuotingRow{{"ListWithoutSeparatorIsOneWord"},
                   "$list{ip,'',true}",
                   {{"ip", "a"}, {"ip", "b c"}},
                   "<ab c>"},
        QuotingRow{{"MultiListOptionIsNeverEscaped"},
                   "$multilist{ip,-o$((1+2)),true}",
                   {{"ip", "a"}},
                   "<-o3><a>"},
        QuotingRow{{"QuotedMultiListExpandsItsValues"},
                   "$multilist{ip,-o,true}",
                   {{"ip", "$((1+2))"}},
                   "<-o><3>"},
        QuotingRow{{"UnquotedMultiListLosesAnEmptyValue"},
                   "$multilist{ip,-o,false}",
                   {{"ip", ""}},
                   "<-o>"},
        QuotingRow{{"IfIsNeverEscaped"}, "$if{force,$((1+2)) 'a b'}", {{"force", ""}}, "<3><a b>"}),
    kRowName);

/// Every bad character but the line end, which no backslash can keep.
class BadCharacterTest : public testing::TestWithParam<char> {};

TEST_P(BadCharacterTest, Shell_KeepsItInAValue) {
    const std::string value = std::string("a") + GetParam() + "b" + GetParam();
    const std::string arguments = "<" + value + ">";
    EXPECT_EQ(ArgumentsOf("$val{name}", {{"name", value}}), arguments);
    EXPECT_EQ(ArgumentsOf("$list{ip,'',false}", {{"ip", value}}), arguments);
    EXPECT_EQ(ArgumentsOf("$multilist{ip,-i,false}", {{"ip", value}}), "<-i>" + arguments);
}

INSTANTIATE_TEST_SUITE_P(Characters, BadCharacterTest,
                         testing::Values('!', '"', '$', '&', '\'', '(', ')', '*', ';', '<', '>',
                                         '\\', '^', '`', '|'),
                         [](const auto& row) {
                             return "Byte" + std::to_string(static_cast<int>(row.param));
                         });

} // namespace
