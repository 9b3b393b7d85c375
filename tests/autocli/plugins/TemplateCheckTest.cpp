#include <CppTools/autocli/plugins/TemplateCheck.h>

#include <gtest/gtest.h>
#include <tests/support/NamedRow.h>
#include <tests/support/TemplateChecking.h>

#include <set>
#include <string>
#include <vector>

// Every rule that templates are checked against: what trips it, and what comes near and does not.

namespace {

using CppTools::AutoCli::AutoCli_CheckTemplate;
using CppTools::AutoCli::AutoCli_GetTemplateRules;
using CppTools::AutoCli::HazardSeverity;
using CppTools::AutoCli::TemplateHazard;
using TestSupport::kRowName;
using TestSupport::NamedRow;
using TestSupport::NewCheckSpec;
using TestSupport::Texts;

/// A hazard as "rule position placeholder".
std::string ToText(const TemplateHazard& hazard) {
    return hazard.rule + (hazard.inStdin ? " stdin " : " ") + std::to_string(hazard.position) +
           (hazard.placeholder.empty() ? "" : " ") + hazard.placeholder;
}

Texts Check(const std::string& commandLine, const std::string& input = "") {
    Texts texts;
    for (const auto& hazard : AutoCli_CheckTemplate(commandLine, NewCheckSpec(), input)) {
        texts.push_back(ToText(hazard));
    }
    return texts;
}

struct CheckRow : NamedRow {
    std::string commandLine;
    Texts hazards;
    std::string input = "";
};

class TemplateCheckTest : public testing::TestWithParam<CheckRow> {};

TEST_P(TemplateCheckTest, Check_FindsExactlyThese) {
    EXPECT_EQ(Check(GetParam().commandLine, GetParam().input), GetParam().hazards);
}

INSTANTIATE_TEST_SUITE_P(
    Accepted, TemplateCheckTest,
    testing::Values(
        CheckRow{{"TextInQuotesThatTouch"}, "/bin/x -- '$val{text}'", {}},
        CheckRow{{"TextBehindAnOptionName"}, "/bin/x --text='$val{text}' -t '$val{text}'", {}},
        CheckRow{{"TextBesideQuotedText"}, "/bin/x -t'a b''$val{text}'\"c d\"", {}},
        CheckRow{{"TextInItsConditional"}, "/bin/x $if{text,-t '$val{text}'}", {}},
        CheckRow{{"TextThatMayBeAbsent"}, "/bin/x -t '$val{may-text}'", {}},
        CheckRow{
            {"NumbersAndSetsBare"}, "/bin/x $val{count} a$val{on}b $val{mode} $val{level}", {}},
        CheckRow{{"NumbersAnywhereInQuotes"}, "/bin/x 'a $val{number}' \"b $val{number}\"", {}},
        CheckRow{{"TameTextAnywhereInQuotes"}, "/bin/x 'a $val{title}' \"b $val{title}\"", {}},
        CheckRow{{"Lists"},
                 "/bin/x -p $list{ports,',',false} -t '$list{tags,'',false}' "
                 "-t=$list{titles,',',true} $list{switches,':',false}",
                 {}},
        CheckRow{{"MultiLists"},
                 "/bin/x $multilist{ports,-p,false} $multilist{titles,--title,true}",
                 {}},
        CheckRow{{"ConditionalWords"},
                 "/bin/x $if{flag,--flag yes} $if{may-count,-c $val{may-count}}; /bin/y",
                 {}},
        CheckRow{{"ConditionalList"}, "/bin/x $if{ports,$multilist{ports,-p,false}}", {}},
        CheckRow{{"ListsOfCommands"},
                 "/bin/x $val{count} | /bin/y && /bin/z || echo a\n\n/bin/w ; cat\n",
                 {}},
        CheckRow{{"Redirections"}, "/bin/x $val{count} >/dev/null 2>&1 < '/etc/a b' >> c >&2", {}},
        CheckRow{{"ContinuedLines"}, "/bin/x \\\n$val{count} \\\n  -t '$val{text}'", {}},
        CheckRow{{"Variables"}, "LC_ALL=C A_1='b c' /bin/x $val{count}", {}},
        CheckRow{{"Prefixes"},
                 "sudo -n -u root env -i A=b nice -n 5 timeout -k 1 9s /bin/x $val{count}",
                 {}},
        CheckRow{{"PrintfWithItsFormat"}, "printf '%s' \"$val{title}\"", {}},
        CheckRow{{"ConstantScript"}, "true\nif [ $x = `y` ]; then sh; fi # z", {}},
        CheckRow{{"ConstantCommandWithInput"}, "cat", {}, "$val{text} $list{texts,',',true}"},
        CheckRow{{"EveryKindInTheInput"}, "cat", {}, "$if{flag,a} $multilist{texts,-t,true}"},
        CheckRow{{"FilterWithInput"}, "cat | tr a b", {}, "$val{text}"}),
    kRowName);

INSTANTIATE_TEST_SUITE_P(
    Placeholders, TemplateCheckTest,
    testing::Values(
        CheckRow{{"UnknownParameter"}, "/bin/x '$val{other}'", {"unknown-parameter 8 $val{other}"}},
        CheckRow{{"UnknownCondition"}, "/bin/x $if{other,a}", {"unknown-parameter 7 $if{other,"}},
        CheckRow{{"UnknownInTheInput"},
                 "cat",
                 {"unknown-parameter stdin 1 $val{other}"},
                 "a$val{other}"},
        CheckRow{{"ValOfAFlag"}, "/bin/x -f '$val{flag}'", {"wrong-kind 11 $val{flag}"}},
        CheckRow{{"ValOfAList"}, "/bin/x -p '$val{ports}'", {"wrong-kind 11 $val{ports}"}},
        CheckRow{{"ListOfAFlag"},
                 "/bin/x -f '$list{flag,',',false}'",
                 {"wrong-kind 11 $list{flag,',',false}"}},
        CheckRow{{"MultiListOfAFlagInTheInput"},
                 "cat",
                 {"wrong-kind stdin 0 $multilist{flag,-f,false}"},
                 "$multilist{flag,-f,false}"},
        CheckRow{{"ListOfASingleValue"}, "/bin/x -m $list{mode,',',false}", {}},
        CheckRow{
            {"ValWithoutItsEnd"}, "/bin/x $val{count", {"malformed-placeholder 7", "brace 11"}},
        CheckRow{{"ValWithoutAName"},
                 "/bin/x $val{} $val{count}",
                 {"malformed-placeholder 7", "brace 11", "brace 12"}},
        CheckRow{{"IfWithoutAText"},
                 "/bin/x $if{flag,}",
                 {"malformed-placeholder 7", "brace 10", "brace 16"}},
        CheckRow{{"IfWithoutItsComma"},
                 "/bin/x $if{flag}",
                 {"malformed-placeholder 7", "brace 10", "brace 15"}},
        CheckRow{{"IfWithoutItsEnd"}, "/bin/x $if{flag,a", {"malformed-placeholder 7 $if{flag,"}},
        CheckRow{{"ListWithTwoSeparators"},
                 "/bin/x \"$list{tags,'ab',false}\"",
                 {"malformed-placeholder 8", "brace 13", "brace 29"}},
        CheckRow{{"ListWithoutQuotes"},
                 "/bin/x \"$list{tags,false}\"",
                 {"malformed-placeholder 8", "brace 13", "brace 24"}},
        CheckRow{{"MultiListWithoutQuoteFlag"},
                 "/bin/x \"$multilist{tags,-t,}\"",
                 {"malformed-placeholder 8", "brace 18", "brace 27"}},
        CheckRow{{"MultiListWithoutOption"},
                 "/bin/x \"$multilist{tags}\"",
                 {"malformed-placeholder 8", "brace 18", "brace 23"}},
        CheckRow{{"SpelledAcrossAConditional"},
                 "/bin/x \"$v$if{flag,al}{text}\"",
                 {"spelled-together 8", "conditional 10 $if{flag,", "brace 13", "brace 21",
                  "brace 22", "brace 27"}},
        CheckRow{{"NameSpelledAcross"},
                 "/bin/x \"$val{te$val{mode}}\"",
                 {"spelled-together 8", "brace 12", "brace 25"}},
        CheckRow{{"BegunInAConditional"},
                 "/bin/x $if{flag,$val}{count}",
                 {"conditional 7 $if{flag,", "spelled-together 16", "brace 21", "brace 27"}}),
    kRowName);

INSTANTIATE_TEST_SUITE_P(
    Shell, TemplateCheckTest,
    testing::Values(
        CheckRow{{"Variable"}, "/bin/x $HOME $val{count}", {"expansion 7"}},
        CheckRow{{"VariableInQuotes"}, "/bin/x \"$HOME\" $val{count}", {"expansion 8"}},
        CheckRow{{"VariableInBraces"},
                 "/bin/x \"${a}\" $val{count}",
                 {"expansion 8", "brace 9", "brace 11"}},
        CheckRow{{"DollarQuote"}, "/bin/x $'a' $val{count}", {"expansion 7"}},
        CheckRow{{"DollarAtTheEnd"}, "/bin/x $val{count} $", {"expansion 19"}},
        CheckRow{{"CommandSubstitution"},
                 "/bin/x \"$(a '$val{text}')\"",
                 {"command-substitution 8", "double-quoted-text 13 $val{text}"}},
        CheckRow{{"BackQuotes"},
                 "/bin/x `a` $val{count}",
                 {"command-substitution 7", "command-substitution 9"}},
        CheckRow{{"BackQuotesInQuotes"}, "/bin/x \"`\" $val{count}", {"command-substitution 8"}},
        CheckRow{{"Arithmetic"}, "/bin/x \"$(($val{count}))\"", {"arithmetic 8"}},
        CheckRow{{"ArithmeticCommand"},
                 "((a=$val{count}))",
                 {"arithmetic 0", "no-simple-command 1", "command-position 2",
                  "no-simple-command 2", "complex-shell 15", "complex-shell 16"}},
        CheckRow{{"Backslash"}, "/bin/x \\$val{count}", {"backslash 7"}},
        CheckRow{{"ContinuedWord"}, "/bin/x a\\\n$val{count}", {"backslash 8"}},
        CheckRow{{"ContinuedBeforeAnything"}, "\\\n/bin/x $val{count}", {"backslash 0"}},
        CheckRow{{"BackslashInQuotes"}, "/bin/x \"\\$val{count}\"", {"backslash 8"}},
        CheckRow{{"BackslashInSingleQuotes"}, "/bin/x '\\' $val{count}", {}},
        CheckRow{{"Brace"}, "/bin/x a}{ $val{count}", {"brace 8", "brace 9"}},
        CheckRow{{"BraceInQuotes"}, "/bin/x '{' $val{count}", {"brace 8"}},
        CheckRow{
            {"Glob"}, "/bin/x a*? $val{count}", {"special-character 8", "special-character 9"}},
        CheckRow{{"GlobInQuotes"}, "/bin/x 'a*?' $val{count}", {}},
        CheckRow{{"Tilde"}, "/bin/x ~ $val{count}", {"special-character 7"}},
        CheckRow{{"EqualsSignAtTheHead"}, "/bin/x =a a=b $val{count}", {"special-character 7"}},
        CheckRow{{"HashInAWord"}, "/bin/x a#b $val{count}", {"special-character 8"}},
        CheckRow{{"Test"},
                 "[ $val{count} = 1 ]",
                 {"special-character 0", "unknown-command 0", "special-character 14",
                  "special-character 18"}},
        CheckRow{{"PatternTest"},
                 "[[ a = $val{count} ]]",
                 {"shell-pattern 0", "unknown-command 0", "special-character 1",
                  "special-character 5", "special-character 19", "special-character 20"}},
        CheckRow{{"Case"}, "true; case $val{count} in", {"shell-pattern 6"}},
        CheckRow{{"Comment"}, "/bin/x $val{count} # a\n/bin/y", {"comment 19"}},
        CheckRow{{"CommentAtTheEnd"}, "/bin/x $val{count} # a", {"comment 19"}},
        CheckRow{{"HereDocument"}, "/bin/x $val{count} <<END", {"here-document 19"}},
        CheckRow{{"OpenSingleQuote"}, "/bin/x $val{count} 'a", {"open-quote 19"}},
        CheckRow{{"OpenDoubleQuote"}, "/bin/x $val{count} \"a", {"open-quote 19"}},
        CheckRow{{"Background"}, "/bin/x $val{count} & /bin/y", {"complex-shell 19"}},
        CheckRow{
            {"Subshell"}, "true; (/bin/x $val{count})", {"complex-shell 6", "complex-shell 25"}},
        CheckRow{{"Function"},
                 "f() /bin/x $val{count}",
                 {"unknown-command 0", "complex-shell 1", "complex-shell 2"}},
        CheckRow{{"Loop"}, "true; for a in $val{count}", {"complex-shell 6"}},
        CheckRow{{"QuotedReservedWord"}, "'if' $val{count}", {"unknown-command 0"}},
        CheckRow{{"EmptyCommand"}, "true;; /bin/x $val{count}", {"complex-shell 5"}},
        CheckRow{{"NothingBeforeAnOperator"}, "true\n&& /bin/x $val{count}", {"complex-shell 5"}},
        CheckRow{{"OrWithoutACommand"}, "|| /bin/x $val{count}", {"no-simple-command 0"}},
        CheckRow{{"Empty"}, "", {"no-simple-command 0"}},
        CheckRow{{"Blank"}, " ", {"no-simple-command 0"}},
        CheckRow{{"LineEndFirst"}, "\ntrue", {"no-simple-command 0"}},
        CheckRow{{"SubshellFirst"}, "(true)", {"no-simple-command 0"}},
        CheckRow{{"LoopFirst"}, "while true; do true; done", {"no-simple-command 0"}},
        CheckRow{{"VariableAlone"}, "a=1", {"no-simple-command 0"}},
        CheckRow{{"ConditionalInAWord"},
                 "/bin/x a$if{flag,b}",
                 {"conditional 8 $if{flag,", "brace 11", "brace 18"}},
        CheckRow{{"WordOnAConditional"}, "/bin/x $if{flag,b}a", {"conditional 7 $if{flag,"}},
        CheckRow{{"ConditionalTouchesARedirection"},
                 "/bin/x $if{flag,1}>a",
                 {"conditional 7 $if{flag,"}},
        CheckRow{{"OperatorInAConditional"}, "/bin/x $if{flag,a;b}", {"conditional 17"}},
        CheckRow{{"CommentInAConditional"}, "/bin/x $if{flag,#}", {"conditional 16"}},
        CheckRow{{"OtherParameterInAConditional"},
                 "/bin/x $if{flag,$val{count}}",
                 {"conditional 16 $val{count}"}},
        CheckRow{{"ConditionalInAConditional"},
                 "/bin/x $if{flag,$if{text,a}}",
                 {"conditional 7 $if{flag,", "conditional 16 $if{text,", "brace 19", "brace 27"}},
        CheckRow{{"ListBeforeTheEndOfAConditional"},
                 "/bin/x $if{ports,$list{ports,',',false}a}",
                 {"conditional 17 $list{ports,',',false}"}},
        CheckRow{{"ConditionalEndsInQuotes"}, "/bin/x $if{flag,'a}'}", {"brace 18"}}),
    kRowName);

INSTANTIATE_TEST_SUITE_P(
    Commands, TemplateCheckTest,
    testing::Values(
        CheckRow{{"ValueInAFileName"}, "/bin/x > '$val{text}'", {"redirection 7"}},
        CheckRow{{"NoFileName"}, "/bin/x $val{count} >", {"redirection 19"}},
        CheckRow{{"EmptyFileName"}, "/bin/x $val{count} < ''", {"redirection 19"}},
        CheckRow{{"ConditionalFileName"},
                 "/bin/x < $if{flag,a}",
                 {"conditional 9 $if{flag,", "brace 12", "brace 19"}},
        CheckRow{{"ValueBeforeARedirection"}, "/bin/x $val{count}>a", {"redirection 18"}},
        CheckRow{{"DigitsBeforeARedirection"}, "/bin/x $val{count} 12>a", {"redirection 21"}},
        CheckRow{{"QuotedDigitBeforeARedirection"}, "/bin/x $val{count} '2'>a", {"redirection 22"}},
        CheckRow{{"DescriptorFromAValue"}, "/bin/x 2>&$val{count}", {"redirection 8"}},
        CheckRow{{"DescriptorWithMore"}, "/bin/x $val{count} >&12", {"redirection 19"}},
        CheckRow{{"RedirectionOnARedirection"}, "/bin/x $val{count} 2>&1>> a", {"redirection 20"}},
        CheckRow{{"DuplicatedInput"},
                 "/bin/x $val{count} <&1",
                 {"redirection 19", "complex-shell 20", "unknown-command 21"}},
        CheckRow{{"ValueAsCommand"}, "$val{mode} a", {"command-position 0 $val{mode}"}},
        CheckRow{{"ValueInTheCommand"}, "/bin/$val{mode} a", {"command-position 0"}},
        CheckRow{{"ConditionalCommand"}, "$if{flag,sudo} /bin/x", {"command-position 9"}},
        CheckRow{{"ValueInAVariable"}, "A='$val{text}' /bin/x", {"command-position 0"}},
        CheckRow{{"ValueInAVariablesName"}, "A$val{count}=a /bin/x", {"command-position 0"}},
        CheckRow{{"DigitAtTheHeadOfAWord"},
                 "=a $val{count}",
                 {"special-character 0", "unknown-command 0"}},
        CheckRow{{"ValueBehindAPrefix"}, "nice '$val{text}'", {"prefix-option 0"}},
        CheckRow{{"PrefixWithAnotherOption"}, "sudo -s /bin/x $val{count}", {"prefix-option 0"}},
        CheckRow{{"PrefixWithALongOption"},
                 "nice --adjustment=5 /bin/x $val{count}",
                 {"prefix-option 0"}},
        CheckRow{{"PrefixWithAValueAsOption"}, "nice -n $val{count} /bin/x", {"prefix-option 0"}},
        CheckRow{{"PrefixWithNothingBehindItsOption"},
                 "true $val{count}; nice -n",
                 {"prefix-option 18"}},
        CheckRow{{"PrefixAlone"}, "true $val{count}; env", {"no-simple-command 18"}},
        CheckRow{{"Shell"}, "sh -c 'echo $val{count}'", {"nested-shell 0"}},
        CheckRow{
            {"ShellByPathAndVersion"}, "/usr/bin/python3.11 -c $val{count}", {"nested-shell 0"}},
        CheckRow{{"ShellBehindPrefixes"},
                 "sudo -u a nice env A=b bash -c '$val{text}'",
                 {"nested-shell 23"}},
        CheckRow{{"ShellBehindAPipe"}, "echo $val{count} | xargs rm", {"nested-shell 19"}},
        CheckRow{{"Eval"}, "eval $val{count}", {"nested-shell 0"}},
        CheckRow{{"ShellReadsTheInput"},
                 "a; while true; do . /dev/stdin; done",
                 {"nested-shell 18"},
                 "$val{text}"},
        CheckRow{{"ShellAloneReadsTheInput"}, "sudo sh", {"nested-shell 5"}, "$val{text}"},
        CheckRow{{"ScriptReadsTheInput"},
                 "read x; if true; then echo \"$x\"; fi",
                 {"unchecked-script 0"},
                 "$val{text}"},
        CheckRow{{"FilterInAScript"},
                 "read x; awk '{print $1}' | sed s/a/b/",
                 {"unchecked-script 0"},
                 "$val{text}"},
        CheckRow{{"NameWithoutAPath"}, "frobnicate $val{count}", {"unknown-command 0"}},
        CheckRow{{"RelativePath"}, "./x $val{count}", {"unknown-command 0"}},
        CheckRow{{"Builtin"}, "read $val{mode}", {"unknown-command 0"}},
        CheckRow{{"PrintfOption"}, "printf -v $val{mode}", {"printf-format 0"}},
        CheckRow{{"PrintfValue"}, "printf $val{mode}", {"printf-format 0"}},
        CheckRow{{"PrintfAlone"}, "true $val{mode}; printf", {"printf-format 17"}}),
    kRowName);

INSTANTIATE_TEST_SUITE_P(
    Values, TemplateCheckTest,
    testing::Values(
        CheckRow{{"BareText"},
                 "/bin/x -t $val{text}",
                 {"bare-text 10 $val{text}", "may-be-absent 10 $val{text}"}},
        CheckRow{{"BareTitle"}, "/bin/x -t $val{title}", {"bare-text 10 $val{title}"}},
        CheckRow{{"TextInDoubleQuotes"},
                 "/bin/x \"-t=$val{text}\"",
                 {"double-quoted-text 11 $val{text}"}},
        CheckRow{{"TextWithABlankInItsQuotes"},
                 "/bin/x -t '$val{text} '",
                 {"quotes-do-not-touch 11 $val{text}"}},
        CheckRow{{"TextBehindATextInItsQuotes"},
                 "/bin/x -t 'a$val{text}'",
                 {"quotes-do-not-touch 12 $val{text}"}},
        CheckRow{{"QuotesAroundTheOutside"},
                 "/bin/x 'a'$val{text}'b'",
                 {"bare-text 10 $val{text}", "may-be-absent 10 $val{text}"}},
        CheckRow{{"TwoTextsInOnePairOfQuotes"},
                 "/bin/x -t '$val{text}$val{may-text}'",
                 {"quotes-do-not-touch 11 $val{text}", "quotes-do-not-touch 21 $val{may-text}"}},
        CheckRow{{"TextQuotedTwoWays"},
                 "/bin/x -t \"$val{text}\" -t '$val{text}'",
                 {"quoted-two-ways 11 $val{text}", "quoted-two-ways 27 $val{text}"}},
        CheckRow{{"TextQuotedTwoWaysInAConditional"},
                 "/bin/x -t '$val{text}' $if{text,a $val{text}}",
                 {"quoted-two-ways 11 $val{text}", "quoted-two-ways 34 $val{text}",
                  "may-be-absent 34 $val{text}", "option-injection 34 $val{text}"}},
        CheckRow{{"NumberQuotedTwoWays"}, "/bin/x -n $val{number} -n '$val{number}'", {}},
        CheckRow{{"TitleQuotedTwoWays"}, "/bin/x -t \"$val{title}\" -t '$val{title}'", {}},
        CheckRow{
            {"ListOfTexts"},
            "/bin/x -t $list{texts,',',true}",
            {"list-of-text 10 $list{texts,',',true}", "may-be-absent 10 $list{texts,',',true}"}},
        CheckRow{{"ListOfTextsInQuotes"},
                 "/bin/x -t '$list{texts,',',false}'",
                 {"list-of-text 11 $list{texts,',',false}"}},
        CheckRow{{"ListOfTitlesBare"},
                 "/bin/x -t $list{titles,',',false}",
                 {"list-of-text 10 $list{titles,',',false}"}},
        CheckRow{{"MultiListOfTexts"},
                 "/bin/x $multilist{texts,-t,true}",
                 {"list-of-text 7 $multilist{texts,-t,true}",
                  "may-be-absent 7 $multilist{texts,-t,true}"}},
        CheckRow{{"MultiListOfTitlesBare"},
                 "/bin/x $multilist{titles,-t,false}",
                 {"list-of-text 7 $multilist{titles,-t,false}"}},
        CheckRow{{"SeparatorOfTheShell"},
                 "/bin/x -t '$list{tags,';',false}'",
                 {"list-form 11 $list{tags,';',false}"}},
        CheckRow{{"OptionOfTheShell"},
                 "/bin/x $multilist{tags,;a,false}",
                 {"list-form 7 $multilist{tags,;a,false}"}},
        CheckRow{{"ListWithQuotesInQuotes"},
                 "/bin/x -t \"$list{tags,',',true}\"",
                 {"list-form 11 $list{tags,',',true}"}},
        CheckRow{{"MultiListInQuotes"},
                 "/bin/x '$multilist{tags,-t,false}'",
                 {"list-form 8 $multilist{tags,-t,false}"}},
        CheckRow{{"MultiListInAWord"},
                 "/bin/x a$multilist{tags,-t,false}",
                 {"list-form 8 $multilist{tags,-t,false}"}},
        CheckRow{{"ListTwoWays"},
                 "/bin/x -t $list{tags,',',false} -t $list{tags,':',false}",
                 {"quoted-two-ways 10 $list{tags,',',false}",
                  "quoted-two-ways 35 $list{tags,':',false}"}},
        CheckRow{
            {"ListAndMultiList"}, "/bin/x -t $list{tags,',',false} $multilist{tags,-t,false}", {}},
        CheckRow{{"NumberAtTheHead"}, "/bin/x $val{number}", {"option-injection 7 $val{number}"}},
        CheckRow{{"NumberFromZero"}, "/bin/x $val{sign}", {"option-injection 7 $val{sign}"}},
        CheckRow{{"ZeroInASet"}, "/bin/x $val{step}", {"option-injection 7 $val{step}"}},
        CheckRow{{"OptionsInASet"}, "/bin/x $val{option}", {"option-injection 7 $val{option}"}},
        CheckRow{{"QuotedTextAtTheHead"},
                 "/bin/x ''\"\"'$val{text}'",
                 {"option-injection 12 $val{text}"}},
        CheckRow{{"ListAtTheHead"}, "/bin/x $list{ports,',',false}", {}},
        CheckRow{{"BehindAConditionalMark"},
                 "/bin/x $if{flag,--} a '$val{text}'",
                 {"option-injection 23 $val{text}"}},
        CheckRow{{"BehindAConditionalOption"},
                 "/bin/x $if{flag,-a} '$val{text}'",
                 {"option-injection 21 $val{text}"}},
        CheckRow{{"BehindTheMark"}, "/bin/x -- a '$val{text}'", {}},
        CheckRow{{"EmptyWord"}, "/bin/x '' $val{count}", {}},
        CheckRow{{"BareNumberThatMayBeAbsent"},
                 "/bin/x $val{may-count}",
                 {"may-be-absent 7 $val{may-count}"}},
        CheckRow{{"BareValueThatMayBeEmpty"},
                 "/bin/x $val{optional}",
                 {"may-be-absent 7 $val{optional}"}},
        CheckRow{{"BareListOfASingleValue"},
                 "/bin/x $list{may-count,',',false}",
                 {"may-be-absent 7 $list{may-count,',',false}"}}),
    kRowName);

TEST(TemplateRulesTest, GetTemplateRules_EachHasANameOfItsOwnAndTexts) {
    std::set<std::string> names;
    for (const auto& rule : AutoCli_GetTemplateRules()) {
        EXPECT_TRUE(names.insert(rule.name).second) << rule.name;
        EXPECT_FALSE(rule.message.empty()) << rule.name;
        EXPECT_FALSE(rule.advice.empty()) << rule.name;
    }
    EXPECT_EQ(names.size(), 32u);
}

TEST(TemplateRulesTest, Check_HazardHasTheTextsOfItsRule) {
    const auto hazards = AutoCli_CheckTemplate("/bin/x $val{number}", NewCheckSpec(), "");
    ASSERT_EQ(hazards.size(), 1u);
    EXPECT_EQ(hazards[0].rule, "option-injection");
    EXPECT_EQ(hazards[0].severity, HazardSeverity::Warning);
    EXPECT_FALSE(hazards[0].inStdin);
    EXPECT_EQ(hazards[0].position, 7u);
    EXPECT_EQ(hazards[0].placeholder, "$val{number}");
    EXPECT_EQ(hazards[0].message, "The value may begin with - and be taken for an option.");
    EXPECT_EQ(hazards[0].advice,
              "Write it behind -- or an option's name, or constrain how it begins.");
}

} // namespace
