#include <CppTools/autocli/plugins/ExtensionCommand.h>
#include <CppTools/callspec/Input.h>

#include <gtest/gtest.h>
#include <tests/support/NamedRow.h>
#include <tests/support/TemplateFilling.h>
#include <tests/support/Thrown.h>

#include <string>

namespace {

using TestSupport::FilledLine;
using TestSupport::FilledStdin;
using TestSupport::GivenParameters;
using TestSupport::kRowName;
using TestSupport::NamedRow;
using TestSupport::NewInput;
using TestSupport::NewTemplateCommand;
using TestSupport::ThrownBy;

/// What a template of the command line becomes.
struct LineRow : NamedRow {
    std::string text;
    GivenParameters given;
    std::string line;
};

class CommandTemplateTest : public testing::TestWithParam<LineRow> {};

TEST_P(CommandTemplateTest, SubstituteInput_FillsTheCommandLine) {
    EXPECT_EQ(FilledLine(GetParam().text, GetParam().given), GetParam().line);
}

INSTANTIATE_TEST_SUITE_P(Plain, CommandTemplateTest,
                         testing::Values(LineRow{{"Empty"}, "", {{"name", "x"}}, ""},
                                         LineRow{{"NoDollar"},
                                                 "echo {name,a} if{force,x} 'val{name}'",
                                                 {{"name", "x"}, {"force", ""}},
                                                 "echo {name,a} if{force,x} 'val{name}'"},
                                         LineRow{{"ShellVariablesStay"},
                                                 "echo $HOME ${HOME} $(date) $1 $$ $",
                                                 {{"name", "x"}},
                                                 "echo $HOME ${HOME} $(date) $1 $$ $"},
                                         LineRow{{"OtherWordsStay"},
                                                 "$value{name} $VAL{name} $iff{name,x}",
                                                 {{"name", "x"}},
                                                 "$value{name} $VAL{name} $iff{name,x}"}),
                         kRowName);

INSTANTIATE_TEST_SUITE_P(
    Val, CommandTemplateTest,
    testing::Values(
        LineRow{{"PlainValue"}, "echo $val{name}", {{"name", "abc"}}, "echo abc"},
        LineRow{{"Sanitised"}, "echo $val{name}", {{"name", "a;b"}}, "echo a\\;b"},
        LineRow{{"BlanksAreNotBad"}, "echo $val{name}", {{"name", "a b\tc#d"}}, "echo a b\tc#d"},
        LineRow{{"InSingleQuotes"}, "echo '$val{name}'", {{"name", "it's"}}, "echo 'its'"},
        LineRow{{"InSingleQuotesNothingElseIsTouched"},
                "echo '$val{name}'",
                {{"name", "'a;b' $c \"d\" \\e"}},
                "echo 'a;b $c \"d\" \\e'"},
        LineRow{{"QuoteBeforeOnly"}, "echo '$val{name} '", {{"name", "it's"}}, "echo 'it\\'s '"},
        LineRow{{"QuoteBehindOnly"}, "echo ' $val{name}'", {{"name", "it's"}}, "echo ' it\\'s'"},
        LineRow{{"QuoteAtTheVeryStart"}, "'$val{name}'", {{"name", "it's"}}, "'its'"},
        LineRow{{"NothingAround"}, "$val{name}", {{"name", "it's"}}, "it\\'s"},
        LineRow{{"NothingBehind"}, "'$val{name}", {{"name", "it's"}}, "'it\\'s"},
        LineRow{{"NothingBefore"}, "$val{name}'", {{"name", "it's"}}, "it\\'s'"},
        LineRow{{"InDoubleQuotes"}, "\"$val{name}\"", {{"name", "a;b"}}, "\"a\\;b\""},
        LineRow{{"EveryOccurrence"}, "$val{name}-$val{name}-$val{name}", {{"name", "a"}}, "a-a-a"},
        LineRow{{"LastOccurrenceQuotedDecides"},
                "$val{name} '$val{name}'",
                {{"name", "a;b'c"}},
                "a;bc 'a;bc'"},
        LineRow{{"LastOccurrenceUnquotedDecides"},
                "'$val{name}' $val{name}",
                {{"name", "a;b'c"}},
                "'a\\;b\\'c' a\\;b\\'c"},
        LineRow{{"NoFormatCharacters"},
                "'$val{name}'",
                {{"name", "$1 $& \\1 (?1a:b) ${x}"}},
                "'$1 $& \\1 (?1a:b) ${x}'"},
        LineRow{{"NoFormatCharactersWhenSanitised"},
                "$val{name}",
                {{"name", "$1$&\\1"}},
                "\\$1\\$\\&\\\\1"},
        LineRow{{"LineEndsAround"}, "a\n$val{name}\nb", {{"name", "c"}}, "a\nc\nb"},
        LineRow{{"EmptyValue"}, "[$val{name}]", {{"name", ""}}, "[]"},
        LineRow{{"GivenTwice"}, "[$val{name}]", {{"name", "a"}, {"name", "b"}}, "[]"},
        LineRow{{"Integer"}, "$val{count}", {{"count", "+07"}}, "+07"},
        LineRow{{"Boolean"}, "$val{on}", {{"on", "yes"}}, "yes"},
        LineRow{{"BuiltInHelp"}, "$val{help}", {{"help", "yes"}}, "yes"},
        LineRow{{"AbsentStays"}, "$val{zone} $val{name}", {{"name", "a"}}, "$val{zone} a"},
        LineRow{{"UnknownStays"}, "$val{nobody}", {{"nobody", "a"}}, "$val{nobody}"},
        LineRow{{"NamesAreWhole"},
                "$val{name-2} $val{name} $val{nam} $val{ name}",
                {{"name", "a"}, {"name-2", "b"}},
                "b a $val{nam} $val{ name}"},
        LineRow{{"Unclosed"}, "$val{name $val{name", {{"name", "a"}}, "$val{name $val{name"},
        LineRow{{"BackslashBeforeThePlaceholderStays"}, "\\$val{name}", {{"name", "a"}}, "\\a"}),
    kRowName);

INSTANTIATE_TEST_SUITE_P(
    If, CommandTemplateTest,
    testing::Values(
        LineRow{{"PresentFlag"}, "run $if{force,--force} x", {{"force", ""}}, "run --force x"},
        LineRow{{"AbsentFlag"}, "run $if{force,--force} x", {}, "run  x"},
        LineRow{{"PresentWhateverItsValue"}, "$if{on,yes}", {{"on", "false"}}, "yes"},
        LineRow{{"PresentList"}, "$if{ip,some}", {{"ip", "a"}, {"ip", "b"}}, "some"},
        LineRow{
            {"EveryOccurrence"}, "$if{force,a} $if{force,b}$if{force,c}", {{"force", ""}}, "a bc"},
        LineRow{{"TextIsInsertedAsItStands"},
                "$if{force,a;b $HOME \\1 $& 'c'}",
                {{"force", ""}},
                "a;b $HOME \\1 $& 'c'"},
        LineRow{{"TextWithCommas"}, "$if{force,a,b,,c}", {{"force", ""}}, "a,b,,c"},
        LineRow{{"TextOverLines"}, "$if{force,a\nb}", {{"force", ""}}, "a\nb"},
        LineRow{{"TextEndsAtTheFirstBrace"}, "$if{force,{a}}", {{"force", ""}}, "{a}"},
        LineRow{{"TextHasAtLeastOneCharacter"}, "$if{force,}}", {{"force", ""}}, "}"},
        LineRow{{"EmptyTextIsNone"}, "$if{force,}", {{"force", ""}}, "$if{force,}"},
        LineRow{{"EmptyTextOfAbsentStaysToo"}, "$if{force,}", {}, "$if{force,}"},
        LineRow{{"NoComma"}, "$if{force}", {{"force", ""}}, "$if{force}"},
        LineRow{{"NoCommaAndAbsent"}, "$if{force} x", {}, "$if{force} x"},
        LineRow{{"Unclosed"}, "$if{force,abc", {{"force", ""}}, "$if{force,abc"},
        LineRow{{"UnclosedAndAbsent"}, "$if{force,abc", {}, "$if{force,abc"},
        LineRow{{"AbsentNestedBracesGoWhole"}, "a$if{zone,{a}}b", {}, "ab"},
        LineRow{{"AbsentDeeplyNestedBracesGoWhole"}, "a$if{zone,{b{c}{d}}e{f}}g", {}, "ag"},
        LineRow{{"AbsentWithPlaceholderInside"}, "a $if{zone,-z $val{zone}} b", {}, "a  b"},
        LineRow{{"AbsentWithFilledPlaceholderInside"},
                "a $if{zone,-z $val{name}} b",
                {{"name", "n"}},
                "a  b"},
        LineRow{{"AbsentInsideAbsent"}, "a$if{zone,x$if{force,y}z}b", {}, "ab"},
        LineRow{{"SeveralAbsent"}, "$if{zone,a}$if{force,b} $if{on,c}", {}, " "},
        LineRow{{"UnknownNamesAreAbsent"}, "a$if{no-1body,x}b", {}, "ab"},
        LineRow{{"NamesThatCannotBeStay"}, "$if{No_Body,x}", {}, "$if{No_Body,x}"},
        LineRow{{"OtherBracesStay"}, "${HOME} {x} $if{zone,a}${B}", {}, "${HOME} {x} ${B}"},
        LineRow{{"NextBehindARemovedOne"}, "$if{zone,a}{$if{zone,b}}", {}, "{}"},
        LineRow{{"RemovedFromTheLastDollarBeforeTheBrace"}, "a $x{$if{zone,b}} c", {}, "a  c"},
        LineRow{{"UnpairedBraceBefore"}, "{ $if{zone,a} b", {}, "{  b"},
        LineRow{{"PresentWithValueInside"},
                "$if{name,--name $val{name}}",
                {{"name", "a;b"}},
                "--name a\\;b"},
        LineRow{{"PresentWithLaterParameterInside"},
                "$if{force,--name $val{name}}",
                {{"force", ""}, {"name", "a"}},
                "--name a"},
        LineRow{{"PresentWithListInside"},
                "$if{ip,--ip $list{ip,',',true}}",
                {{"ip", "a"}, {"ip", "b"}},
                "--ip \"a,b\""},
        LineRow{
            {"BraceInAValueEndsTheText"}, "$if{name,<$val{name}>}", {{"name", "a}b"}}, "<ab>}"}),
    kRowName);

INSTANTIATE_TEST_SUITE_P(
    List, CommandTemplateTest,
    testing::Values(
        LineRow{{"QuotedAsAWhole"}, "$list{ip,',',true}", {{"ip", "a"}, {"ip", "b"}}, "\"a,b\""},
        LineRow{{"Unquoted"}, "$list{ip,':',false}", {{"ip", "a"}, {"ip", "b"}}, "a:b"},
        LineRow{{"OneValue"}, "$list{ip,',',false}", {{"ip", "a"}}, "a"},
        LineRow{{"NoSeparator"}, "$list{ip,'',false}", {{"ip", "a"}, {"ip", "b"}}, "ab"},
        LineRow{{"BlankSeparator"}, "$list{ip,' ',true}", {{"ip", "a"}, {"ip", "b"}}, "\"a b\""},
        LineRow{{"QuoteAsSeparator"}, "$list{ip,''',false}", {{"ip", "a"}, {"ip", "b"}}, "a\\'b"},
        LineRow{{"SeparatorIsSanitisedToo"},
                "$list{ip,';',false}",
                {{"ip", "a"}, {"ip", "b"}},
                "a\\;b"},
        LineRow{
            {"LineEndAsSeparator"}, "$list{ip,'\n',false}", {{"ip", "a"}, {"ip", "b"}}, "a\\\nb"},
        LineRow{
            {"TwoSeparatorsAreNone"}, "$list{ip,', ',true}", {{"ip", "a"}}, "$list{ip,', ',true}"},
        LineRow{{"ValuesAreSanitisedInsideTheQuotes"},
                "$list{ip,',',true}",
                {{"ip", "$a"}, {"ip", "b\"c"}},
                "\"\\$a,b\\\"c\""},
        LineRow{{"SingleQuotesAroundChangeNothing"},
                "'$list{ip,',',false}'",
                {{"ip", "a'b"}},
                "'a\\'b'"},
        LineRow{{"NoFormatCharacters"}, "$list{ip,',',false}", {{"ip", "$1\\2"}}, "\\$1\\\\2"},
        LineRow{{"LastOccurrenceDecidesForAll"},
                "$list{ip,',',true} $list{ip,':',false}",
                {{"ip", "a"}, {"ip", "b"}},
                "a:b a:b"},
        LineRow{
            {"IntegersAsGiven"}, "$list{port,',',false}", {{"port", "1"}, {"port", "+2"}}, "1,+2"},
        LineRow{
            {"Booleans"}, "$list{switch,'/',false}", {{"switch", "y"}, {"switch", "no"}}, "y/no"},
        LineRow{{"SingleValuedParameter"}, "$list{name,',',true}", {{"name", "a;b"}}, "\"a\\;b\""},
        LineRow{{"Flag"}, "[$list{force,',',false}]", {{"force", ""}}, "[]"},
        LineRow{{"OtherQuoteWord"}, "$list{ip,',',yes}", {{"ip", "a"}}, "$list{ip,',',yes}"},
        LineRow{{"OtherQuoteWordCase"}, "$list{ip,',',True}", {{"ip", "a"}}, "$list{ip,',',True}"},
        LineRow{{"SeparatorWithoutQuotes"}, "$list{ip,,true}", {{"ip", "a"}}, "$list{ip,,true}"},
        LineRow{{"BlankBehindAComma"}, "$list{ip, ',',true}", {{"ip", "a"}}, "$list{ip, ',',true}"},
        LineRow{{"AbsentStays"}, "$list{ip,',',true}", {}, "$list{ip,',',true}"}),
    kRowName);

INSTANTIATE_TEST_SUITE_P(
    MultiList, CommandTemplateTest,
    testing::Values(
        LineRow{{"QuotedOneByOne"},
                "run$multilist{ip,--ip,true}",
                {{"ip", "a"}, {"ip", "b"}},
                "run --ip \"a\" --ip \"b\""},
        LineRow{{"Unquoted"},
                "run$multilist{ip,--ip,false} x",
                {{"ip", "a"}, {"ip", "b"}},
                "run --ip a --ip b x"},
        LineRow{{"UnquotedValuesAreSanitised"},
                "$multilist{ip,-i,false}",
                {{"ip", "a;b"}, {"ip", "\"c\""}},
                " -i a\\;b -i \\\"c\\\""},
        LineRow{{"QuotedValuesLoseTheirDoubleQuotesOnly"},
                "$multilist{ip,-i,true}",
                {{"ip", "a\"b\"c"}, {"ip", "$d;'e'\\"}},
                " -i \"abc\" -i \"$d;'e'\\\""},
        LineRow{{"OptionIsNeverSanitised"},
                "$multilist{ip,-a;$b 'c',true}",
                {{"ip", "x"}},
                " -a;$b 'c' \"x\""},
        LineRow{{"OptionWithCommas"}, "$multilist{ip,a,b,true}", {{"ip", "x"}}, " a,b \"x\""},
        LineRow{{"OptionThatIsAQuoteWord"}, "$multilist{ip,true,false}", {{"ip", "x"}}, " true x"},
        LineRow{{"OptionReachesToTheQuoteWordThatIsClosed"},
                "$multilist{ip,a} b,true}",
                {{"ip", "x"}},
                " a} b \"x\""},
        LineRow{{"OptionOverLines"}, "$multilist{ip,a\nb,false}", {{"ip", "x"}}, " a\nb x"},
        LineRow{
            {"EmptyOptionIsNone"}, "$multilist{ip,,true}", {{"ip", "x"}}, "$multilist{ip,,true}"},
        LineRow{{"OneCommaAsOption"}, "$multilist{ip,,,true}", {{"ip", "x"}}, " , \"x\""},
        LineRow{{"EmptyValue"}, "$multilist{ip,-i,true}", {{"ip", ""}}, " -i \"\""},
        LineRow{
            {"NoFormatCharacters"}, "$multilist{ip,$1,true}", {{"ip", "$&\\1"}}, " $1 \"$&\\1\""},
        LineRow{{"LastOccurrenceDecidesForAll"},
                "$multilist{ip,-a,true};$multilist{ip,-b,false}",
                {{"ip", "x"}},
                " -b x; -b x"},
        LineRow{
            {"SingleValuedParameter"}, "$multilist{name,-n,true}", {{"name", "x"}}, " -n \"x\""},
        LineRow{
            {"OtherQuoteWord"}, "$multilist{ip,-i,yes}", {{"ip", "x"}}, "$multilist{ip,-i,yes}"},
        LineRow{{"AbsentStays"}, "$multilist{ip,-i,true}", {}, "$multilist{ip,-i,true}"}),
    kRowName);

INSTANTIATE_TEST_SUITE_P(Order, CommandTemplateTest,
                         testing::Values(LineRow{{"LaterParametersSeeWhatWasInserted"},
                                                 "'$val{early}'",
                                                 {{"early", "$val{zone}"}, {"zone", "z;'"}},
                                                 "'z;'"},
                                         LineRow{{"LaterParametersSeeItBehindABackslashToo"},
                                                 "$val{early}",
                                                 {{"early", "$val{zone}"}, {"zone", "z;"}},
                                                 "\\z\\;"},
                                         LineRow{{"EarlierParametersDoNot"},
                                                 "'$val{zone}'",
                                                 {{"early", "e"}, {"zone", "$val{early}"}},
                                                 "'$val{early}'"},
                                         LineRow{{"OneParametersKindsComeInTheirOrder"},
                                                 "'$val{name}'",
                                                 {{"name", "$if{name,x}$list{name,,true}"}},
                                                 "'x$list{name,,true}'"},
                                         LineRow{{"IfComesBeforeList"},
                                                 "$if{ip,$list{ip,',',true}}",
                                                 {{"ip", "a}b"}},
                                                 "\"a}b\""},
                                         LineRow{{"IfComesBeforeMultiList"},
                                                 "$if{ip,$multilist{ip,-i,true}}",
                                                 {{"ip", "a}b"}},
                                                 " -i \"a}b\""},
                                         LineRow{{"ListComesBeforeMultiList"},
                                                 "$list{ip,',',false}",
                                                 {{"ip", "$multilist{ip,-i,false}"}},
                                                 "\\ -i \\$multilist{ip,-i,false}"},
                                         LineRow{{"MultiListComesBehindList"},
                                                 "$multilist{ip,-i,true}",
                                                 {{"ip", "$list{ip,',',true}"}},
                                                 " -i \"$list{ip,',',true}\""},
                                         LineRow{{"AParameterDoesNotSeeItselfAgain"},
                                                 "'$val{name}'",
                                                 {{"name", "<$val{name}>"}},
                                                 "'<$val{name}>'"},
                                         LineRow{{"InsertedIfOfAnAbsentParameterIsRemoved"},
                                                 "'$val{name}'",
                                                 {{"name", "a$if{zone,b}c"}},
                                                 "'ac'"}),
                         kRowName);

/// What a template of the standard input becomes.
struct StdinRow : LineRow {};

class StdinTemplateTest : public testing::TestWithParam<StdinRow> {};

TEST_P(StdinTemplateTest, SubstituteInput_FillsTheStandardInputAsGiven) {
    EXPECT_EQ(FilledStdin(GetParam().text, GetParam().given), GetParam().line);
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, StdinTemplateTest,
    testing::Values(
        StdinRow{{{"Empty"}, "", {{"name", "x"}}, ""}},
        StdinRow{{{"NoDollar"}, "a;b\n'c'", {}, "a;b\n'c'"}},
        StdinRow{{{"Val"}, "$val{name}\n", {{"name", "it's;\n\"$x\""}}, "it's;\n\"$x\"\n"}},
        StdinRow{{{"ValInSingleQuotes"}, "'$val{name}'", {{"name", "it's"}}, "'it's'"}},
        StdinRow{{{"If"}, "$if{force,a;b}", {{"force", ""}}, "a;b"}},
        StdinRow{{{"AbsentIf"}, "a$if{force,{b}}c", {}, "ac"}},
        StdinRow{{{"List"}, "$list{ip,';',false}", {{"ip", "$a"}, {"ip", "b"}}, "$a;b"}},
        StdinRow{
            {{"QuotedList"}, "$list{ip,',',true}", {{"ip", "\"a"}, {"ip", "b;"}}, "\"\"a,b;\""}},
        StdinRow{{{"MultiList"},
                  "$multilist{ip,-i,false}",
                  {{"ip", "a;b"}, {"ip", "\"c\""}},
                  " -i a;b -i \"c\""}},
        StdinRow{{{"QuotedMultiList"}, "$multilist{ip,-i,true}", {{"ip", "a\"b"}}, " -i \"a\"b\""}},
        StdinRow{{{"AbsentStays"}, "$val{zone}", {}, "$val{zone}"}}),
    kRowName);

TEST(SubstituteInputTest, FillsTheOneAskedFor) {
    const auto command = NewTemplateCommand();
    command->SetExecuteCommand("line $val{name}");
    command->SetStdin("stdin $val{name}");
    const auto input = NewInput(*command, {{"name", "a;"}});
    EXPECT_EQ(command->SubstituteInput(input, false), "line a\\;");
    EXPECT_EQ(command->SubstituteInput(input, true), "stdin a;");
}

TEST(SubstituteInputTest, TheTemplateStaysForTheNextCall) {
    const auto command = NewTemplateCommand();
    command->SetExecuteCommand("$val{name}");
    EXPECT_EQ(command->SubstituteInput(NewInput(*command, {{"name", "a"}}), false), "a");
    EXPECT_EQ(command->SubstituteInput(NewInput(*command, {{"name", "b"}}), false), "b");
}

TEST(SubstituteInputTest, ATemplateWithoutDollarNeedsNoSpecification) {
    const auto command = CppTools::AutoCli::ExtensionCommand::New();
    command->SetExecuteCommand("echo {name,a} if{force,b}");
    command->SetStdin("some input");
    const auto input = CppTools::CallSpec::Input::New();
    EXPECT_EQ(command->SubstituteInput(input, false), "echo {name,a} if{force,b}");
    EXPECT_EQ(command->SubstituteInput(input, true), "some input");
}

TEST(SubstituteInputTest, ValOfAFlagIsRefused) {
    EXPECT_EQ(ThrownBy([] {
                  FilledLine("$val{force}", {{"force", ""}});
              }),
              "Request for GetParameter on a flag type parameter: force");
}

TEST(SubstituteInputTest, ValOfAListIsRefused) {
    EXPECT_EQ(ThrownBy([] {
                  FilledLine("$val{ip}", {{"ip", "a"}});
              }),
              "Request for GetParameter on a parameter that can have multiple values: ip");
}

TEST(SubstituteInputTest, ValOfAnAbsentListStays) {
    EXPECT_EQ(FilledLine("$val{ip} $val{force}", {}), "$val{ip} $val{force}");
}

} // namespace
