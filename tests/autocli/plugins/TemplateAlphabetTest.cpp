#include <CppTools/autocli/plugins/TemplateCheck.h>

#include <gtest/gtest.h>
#include <tests/support/NamedRow.h>
#include <tests/support/TemplateChecking.h>

#include <memory>
#include <string>

// What patterns let through, as the checker sees it: whether values may stand bare, whether they
// may begin with a minus sign, whether they may be empty.

namespace {

using CppTools::AutoCli::AutoCli_CheckTemplate;
using CppTools::CallSpec::InputSpec;
using CppTools::CallSpec::ParameterType;
using TestSupport::Declare;
using TestSupport::kRowName;
using TestSupport::Matching;
using TestSupport::NamedRow;
using TestSupport::Texts;

struct PatternRow : NamedRow {
    std::string expression;
    Texts rules;
};

class TemplateAlphabetTest : public testing::TestWithParam<PatternRow> {};

TEST_P(TemplateAlphabetTest, Check_KnowsWhatThePatternLetsThrough) {
    const auto spec = InputSpec::New();
    Declare(*spec, "word", ParameterType::String, true, Matching(GetParam().expression));
    Texts rules;
    for (const auto& hazard : AutoCli_CheckTemplate("/bin/x $val{word}", spec, "")) {
        rules.push_back(hazard.rule);
    }
    EXPECT_EQ(rules, GetParam().rules);
}

const Texts kUnknown = {"bare-text", "may-be-absent", "option-injection"};
const Texts kAnyFilled = {"bare-text", "option-injection"};

INSTANTIATE_TEST_SUITE_P(
    Understood, TemplateAlphabetTest,
    testing::Values(PatternRow{{"Literal"}, "abc", {}}, PatternRow{{"Range"}, "[a-z]+", {}},
                    PatternRow{{"SetOfPlainCharacters"}, "[A-Za-z0-9_./:,+@%]+", {}},
                    PatternRow{{"MinusAtTheEndOfASet"}, "[a-z-]+", {"option-injection"}},
                    PatternRow{{"MinusAtTheHeadOfASet"}, "[-a-z]+", {"option-injection"}},
                    PatternRow{{"MinusBehindTheHead"}, "[a-z][a-z-]*", {}},
                    PatternRow{{"MinusBehindWhatMayBeMissing"}, "[a-z]?-", {"option-injection"}},
                    PatternRow{{"RangeFromMinus"}, "[--/]+", {"option-injection"}},
                    PatternRow{{"Many"}, "a*", {"may-be-absent"}},
                    PatternRow{{"Maybe"}, "a?b?", {"may-be-absent"}},
                    PatternRow{{"Lazy"}, "a+?", {}}, PatternRow{{"Possessive"}, "a++", {}},
                    PatternRow{{"Exactly"}, "a{3}", {}}, PatternRow{{"AtLeast"}, "a{3,}", {}},
                    PatternRow{{"FromTo"}, "a{1,14}", {}},
                    PatternRow{{"UpTo"}, "a{0,14}", {"may-be-absent"}},
                    PatternRow{{"ManyOfWhatMayBeMissing"}, "(a*){3}", {"may-be-absent"}},
                    PatternRow{{"Alternatives"}, "a|b|c", {}},
                    PatternRow{{"EmptyAlternative"}, "a|", {"may-be-absent"}},
                    PatternRow{{"Group"}, "(a|b)c", {}}, PatternRow{{"PlainGroup"}, "(?:a|b)c", {}},
                    PatternRow{{"Anchors"}, "^a$", {}},
                    PatternRow{{"AnchorsAlone"}, "^$", {"may-be-absent"}},
                    PatternRow{{"Digits"}, "\\d+", {}}, PatternRow{{"WordCharacters"}, "\\w+", {}},
                    PatternRow{{"EscapedFullStop"}, "a\\.b", {}},
                    PatternRow{{"EscapedInASet"}, "[a\\-\\.b]", {"option-injection"}},
                    PatternRow{{"DigitsInASet"}, "[\\d-]", {"option-injection"}},
                    PatternRow{{"NamedClass"}, "[[:alpha:][:digit:]_]+", {}},
                    PatternRow{{"SemicolonInASet"}, "[a-z;]+", {"bare-text"}},
                    PatternRow{{"BlankInAWord"}, "a b", {"bare-text"}},
                    PatternRow{{"EscapedSemicolon"}, "a\\;", {"bare-text"}},
                    PatternRow{{"RangeOverSpecialCharacters"}, "[#-z]+", kAnyFilled},
                    PatternRow{{"AnyCharacter"}, ".+", kAnyFilled}),
    kRowName);

INSTANTIATE_TEST_SUITE_P(
    NotUnderstood, TemplateAlphabetTest,
    testing::Values(PatternRow{{"NegatedSet"}, "[^;]+", kUnknown},
                    PatternRow{{"BracketAtTheHeadOfASet"}, "[]a]+", kUnknown},
                    PatternRow{{"BracketInASet"}, "[[a]+", kUnknown},
                    PatternRow{{"UnknownClass"}, "[[:space:]]", kUnknown},
                    PatternRow{{"ClassWithoutItsEnd"}, "[[:alpha", kUnknown},
                    PatternRow{{"KnownClassWithoutItsEnd"}, "[[:alpha:", kUnknown},
                    PatternRow{{"SetWithoutItsEnd"}, "[a", kUnknown},
                    PatternRow{{"RangeWithoutItsEnd"}, "[a-", kUnknown},
                    PatternRow{{"RangeBackwards"}, "[z-a]", kUnknown},
                    PatternRow{{"RangeToAnEscape"}, "[a-\\w]", kUnknown},
                    PatternRow{{"RangeToABracket"}, "[A-[]", kUnknown},
                    PatternRow{{"RangeFromAnEscape"}, "[\\d-z]", kUnknown},
                    PatternRow{{"RangeBeyondAscii"}, "[\xC3-\xC4]", kUnknown},
                    PatternRow{{"NotAWordCharacter"}, "\\W", kUnknown},
                    PatternRow{{"WordBoundary"}, "\\ba", kUnknown},
                    PatternRow{{"StartOfAWord"}, "\\<a", kUnknown},
                    PatternRow{{"BackslashAtTheEnd"}, "a\\", kUnknown},
                    PatternRow{{"LookAhead"}, "(?=a)a", kUnknown},
                    PatternRow{{"Flags"}, "(?i)a", kUnknown},
                    PatternRow{{"Verb"}, "(*FAIL)", kUnknown},
                    PatternRow{{"GroupWithoutItsEnd"}, "(a", kUnknown},
                    PatternRow{{"GroupWithoutItsBeginning"}, "a)", kUnknown},
                    PatternRow{
                        {"TooDeepGroups"}, std::string(101, '(') + std::string(101, ')'), kUnknown},
                    PatternRow{{"QuantifierAtTheHead"}, "*a", kUnknown},
                    PatternRow{{"TwoQuantifiers"}, "a**", kUnknown},
                    PatternRow{{"BoundsWithoutANumber"}, "a{,3}", kUnknown},
                    PatternRow{{"BoundsWithoutTheirEnd"}, "a{3", kUnknown},
                    PatternRow{{"BraceAlone"}, "a}", kUnknown}),
    kRowName);

} // namespace
