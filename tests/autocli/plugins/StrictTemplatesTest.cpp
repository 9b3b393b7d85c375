#include <CppTools/autocli/plugins/ExtensionCommand.h>
#include <CppTools/callspec/Input.h>
#include <CppTools/callspec/InputSpec.h>
#include <CppTools/callspec/Output.h>
#include <CppTools/host/FeatureStates.h>
#include <CppTools/metaobj/MetaObject.h>

#include <gtest/gtest.h>
#include <tests/support/NamedRow.h>
#include <tests/support/ShellRunning.h>
#include <tests/support/StrictFeatures.h>
#include <tests/support/TemplateFilling.h>
#include <tests/support/Thrown.h>

#include <string>
#include <vector>

// Values that change templates, while the host wants them refused and while it does not.

namespace {

using CppTools::CallSpec::Output;
using TestSupport::GivenParameters;
using TestSupport::kRowName;
using TestSupport::ListenerLog;
using TestSupport::NamedRow;
using TestSupport::NewInput;
using TestSupport::NewTemplateCommand;
using TestSupport::StrictFeatures;
using TestSupport::ThrownBy;

using Texts = std::vector<std::string>;

/// What one call left behind.
struct Call {
    Texts errors;
    std::string result;
    Texts lines; ///< That a shell was given.
};

/// Prints its arguments and its input as a result.
std::string Printing(const std::string& arguments) {
    return "printf '<output><string>'; printf '<%s>' " + arguments +
           " | tr '<>' '()'; cat; printf '</string></output>'";
}

Call CallWith(const std::string& arguments, const std::string& input,
              const GivenParameters& given) {
    const ListenerLog log;
    const auto command = NewTemplateCommand();
    command->SetExecuteCommand(Printing(arguments));
    command->SetStdin(input);
    const auto output = Output::New();
    command->ExecuteInternal(NewInput(*command, given), output);
    const auto root = output->GetRootObject();
    return {output->GetErrors(), root ? root->ToString() : "", ListenerLog::Lines()};
}

std::string Spells(const std::string& name) {
    return "Refused value for parameter " + name +
           ".  It spells a placeholder of command templates, one of $val{, $if{, $list{ and "
           "$multilist{.";
}

std::string SpellsTogether(const std::string& name) {
    return "Refused value for parameter " + name +
           ".  With the template or another value it spells a placeholder.";
}

struct RefusedRow : NamedRow {
    std::string arguments;
    GivenParameters given;
    Texts errors;
    std::string input = "";
};

class StrictRefusalTest : public testing::TestWithParam<RefusedRow> {};

TEST_P(StrictRefusalTest, Strict_RunsNothingAndNamesTheParameter) {
    const StrictFeatures features;
    const Call call = CallWith(GetParam().arguments, GetParam().input, GetParam().given);
    EXPECT_EQ(call.errors, GetParam().errors);
    EXPECT_EQ(call.result, "");
    EXPECT_EQ(call.lines, Texts{});
}

INSTANTIATE_TEST_SUITE_P(
    Alone, StrictRefusalTest,
    testing::Values(
        RefusedRow{{"Val"}, "'$val{name}'", {{"name", "a$val{zone}"}}, {Spells("name")}},
        RefusedRow{{"If"}, "$val{name}", {{"name", "$if{x,y};id"}}, {Spells("name")}},
        RefusedRow{{"List"}, "$list{ip,',',false}", {{"ip", "$list{"}}, {Spells("ip")}},
        RefusedRow{{"MultiList"},
                   "'$val{name}'",
                   {{"name", "$multilist{name,x,true}';id #"}},
                   {Spells("name")}},
        RefusedRow{{"InTheInput"}, "", {{"name", "$if{a,b}"}}, {Spells("name")}, "$val{name}"},
        RefusedRow{
            {"InATemplateWithoutPlaceholders"}, "", {{"name", "$if{a,b}"}}, {Spells("name")}},
        RefusedRow{{"EachParameterIsNamed"},
                   "",
                   {{"early", "$if{a,b}"}, {"ip", "$val{"}, {"ip", "$val{a}"}, {"name", "a"}},
                   {Spells("early"), Spells("ip")}},
        RefusedRow{{"Nul"},
                   "'$val{name}'",
                   {{"name", std::string("a\0b", 3)}},
                   {"Refused value for parameter name.  It holds a NUL character, which ends "
                    "command lines."}},
        RefusedRow{{"WhiteSpaceBeforeAnInteger"},
                   "$val{count}",
                   {{"count", "\n1"}},
                   {"Invalid data '\n1' for parameter count expected type Integer"}},
        RefusedRow{{"WhiteSpaceBeforeAnIntegerOfAList"},
                   "$list{port,',',false}",
                   {{"port", "1"}, {"port", " 2"}},
                   {"Invalid data ' 2' for parameter port expected type Integer"}},
        RefusedRow{{"WhiteSpaceBeforeAnIntegerInWhatIsNotUnderstood"},
                   "\\'$val{count}\\'",
                   {{"count", " 1"}},
                   {"Invalid data ' 1' for parameter count expected type Integer"}},
        RefusedRow{{"LineEndBeforeAnIntegerAmongOtherText"},
                   "' $val{count}'",
                   {{"count", "\n1"}},
                   {"Invalid data '\n1' for parameter count expected type Integer"}},
        RefusedRow{{"LineEndBeforeAnIntegerInDoubleQuotes"},
                   "\"$val{count}\"",
                   {{"count", "\n1"}},
                   {"Invalid data '\n1' for parameter count expected type Integer"}},
        RefusedRow{{"SeveralValues"},
                   "'$val{name}'",
                   {{"name", "a"}, {"name", "b"}},
                   {"Found multiple values for name this parameter can only accept a single "
                    "value."}}),
    kRowName);

INSTANTIATE_TEST_SUITE_P(
    Together, StrictRefusalTest,
    testing::Values(RefusedRow{{"AcrossValues"},
                               "$val{early}$val{name}",
                               {{"early", "$va"}, {"name", "l{zone}"}, {"zone", "z"}},
                               {SpellsTogether("name")}},
                    RefusedRow{{"OnceQuotesAreRemoved"},
                               "'$val{early}'",
                               {{"early", "$'val{name}"}, {"name", "n"}},
                               {SpellsTogether("early")}},
                    RefusedRow{{"JoinedWithItsNeighbourInAList"},
                               "$list{ip,'',false}",
                               {{"ip", "$va"}, {"ip", "l{name}"}, {"name", "n"}},
                               {SpellsTogether("ip")}},
                    RefusedRow{{"WithTheTemplate"},
                               "'$val{early}{name}'",
                               {{"early", "$val"}, {"name", "n"}},
                               {SpellsTogether("early")}},
                    RefusedRow{{"BraceEndsAConditional"},
                               "$if{name,'$val{name}' b}",
                               {{"name", "a}"}},
                               {SpellsTogether("name")}},
                    RefusedRow{{"EmptyTextOfAConditional"},
                               "a$if{name,$val{name}} $if{force,b}",
                               {{"name", ""}},
                               {SpellsTogether("name")}},
                    RefusedRow{{"BracesAroundAConditional"},
                               "'$val{early}' $if{force,b} '$val{name}'",
                               {{"early", "{"}, {"name", "}"}},
                               {SpellsTogether("name")}},
                    RefusedRow{{"InTheInputToo"},
                               "",
                               {{"early", "$va"}, {"name", "l{zone}"}, {"zone", "z"}},
                               {SpellsTogether("name")},
                               "$val{early}$val{name}"}),
    kRowName);

struct AcceptedRow : NamedRow {
    std::string arguments;
    GivenParameters given;
    std::string result;
    std::string input = "";
};

class StrictAcceptanceTest : public testing::TestWithParam<AcceptedRow> {};

TEST_P(StrictAcceptanceTest, Strict_FillsAsEver) {
    const StrictFeatures features;
    const Call call = CallWith(GetParam().arguments, GetParam().input, GetParam().given);
    EXPECT_EQ(call.errors, Texts{});
    EXPECT_EQ(call.result, GetParam().result);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, StrictAcceptanceTest,
    testing::Values(
        AcceptedRow{{"NoValues"}, "a", {}, "(a)"},
        AcceptedRow{{"EveryKind"},
                    "'$val{name}' $if{force,b} $list{ip,',',false} $multilist{port,-p,true}",
                    {{"force", ""}, {"ip", "c"}, {"ip", "d"}, {"name", "it's"}, {"port", "1"}},
                    "(its)(b)(c,d)(-p)(1)"},
        AcceptedRow{{"DollarsAndBraces"}, "'$val{name}'", {{"name", "${a} {} $"}}, "(${a} {} $)"},
        AcceptedRow{{"BracesOfOneValue"}, "'$val{name}' $if{force,b}", {{"name", "{a}"}}, "({a})"},
        AcceptedRow{{"SignedInteger"}, "$val{count}", {{"count", "+1"}}, "(+1)"},
        AcceptedRow{{"WhiteSpaceBeforeAQuotedInteger"},
                    "'$val{count}' $val{name}",
                    {{"count", " +1"}, {"name", "a"}},
                    "( +1)(a)"},
        AcceptedRow{{"EmptyInteger"}, "a$val{count}", {{"count", ""}}, "(a)"},
        AcceptedRow{{"InputWithLineEnds"}, "", {{"name", "a\nb"}}, "()a\nb", "$val{name}"},
        AcceptedRow{{"UnknownParameter"}, "a", {{"other", "$val{a}"}}, "(a)"}),
    kRowName);

TEST(StrictTemplatesTest, NotStrict_SameValuesAreFilledInAsSpecified) {
    const Call call = CallWith("'$val{name}'", "", {{"name", "a$val{zone}"}, {"zone", "b"}});
    EXPECT_EQ(call.errors, Texts{});
    EXPECT_EQ(call.result, "(ab)");
}

TEST(StrictTemplatesTest, Strict_MessageOfTheValidationIsNotRepeated) {
    const StrictFeatures features;
    const auto command = NewTemplateCommand();
    command->SetExecuteCommand("echo");
    const auto input = NewInput(*command, {{"name", "a"}, {"name", "b"}});
    const auto output = Output::New();
    ASSERT_TRUE(command->GetInputSpec()->Validate(input, output));
    const Texts errors = output->GetErrors();
    ASSERT_EQ(errors.size(), 1u);
    command->ExecuteInternal(input, output);
    EXPECT_EQ(output->GetErrors(), errors);
}

TEST(StrictTemplatesTest, SubstituteInput_BytesThatNoTextHoldsStay) {
    const std::string bytes = "\xFE"
                              "0\xFF \xFE"
                              "12 \xFE";
    EXPECT_EQ(TestSupport::FilledLine(bytes + " $val{name}", {{"name", "\xFE"
                                                                       "0\xFF"}}),
              bytes + " \xFE"
                      "0\xFF");
}

TEST(StrictTemplatesTest, Strict_BytesThatNoTextHoldsStay) {
    const StrictFeatures features;
    const std::string bytes = "'\xFE"
                              "9\xFF \xFE"
                              "0 \xFE'";
    const Call call = CallWith("'$val{name}'; true " + bytes, "", {{"name", "a"}});
    EXPECT_EQ(call.errors, Texts{});
    EXPECT_EQ(call.result, "");
    EXPECT_EQ(call.lines, Texts{Printing("'a'; true " + bytes)});
}

TEST(StrictTemplatesTest, Strict_ValOfAListThrowsAsEver) {
    const StrictFeatures features;
    EXPECT_EQ(ThrownBy([] {
                  CallWith("$val{ip}", "", {{"ip", "a"}});
              }),
              "Request for GetParameter on a parameter that can have multiple values: ip");
}

} // namespace
