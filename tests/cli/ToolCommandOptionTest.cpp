#include "Boxes.h"

#include <gtest/gtest.h>
#include <string>

using Cli::Boxes;
using Cli::RunTool;
using Cli::Words;
using TestSupport::ChildRun;
using TestSupport::ParameterElement;

namespace {

std::string Described(const std::string& attributes, const std::string& constraint = "") {
    return ParameterElement(attributes, "<description>D.</description>" + constraint);
}

/// Parameters of every type and with every constraint; "name" and "owner" are required.
std::string AllParameters() {
    return "<input-spec>" +
           Described(R"(name="name" type="string" shortname="n" required="true")") +
           Described(R"(name="owner" type="string" required="true")") +
           Described(R"(name="count" type="int" shortname="c")",
                     R"(<constraint type="range"><range min="-1" max="10"/></constraint>)") +
           Described(R"(name="level" type="int")",
                     R"(<constraint type="intenum"><enum><enum-value value="1">-</enum-value>)"
                     R"(<enum-value value="3">-</enum-value></enum></constraint>)") +
           Described(R"(name="mode" type="string")",
                     R"(<constraint type="stringenum"><enum><enum-value value="on">-</enum-value>)"
                     R"(<enum-value value="off">-</enum-value></enum></constraint>)") +
           Described(R"(name="code" type="string")",
                     R"(<constraint type="regex"><regex>[0-9]+x</regex></constraint>)") +
           Described(R"(name="sure" type="bool")") +
           Described(R"(name="force" type="flag" shortname="f")") +
           Described(R"(name="tag" type="string-list" shortname="t")") +
           Described(R"(name="id" type="int-list")") +
           Described(R"(name="answer" type="bool-list")") + "</input-spec>";
}

/// "box call" prints, as a list, the words that its template turned its options into.
void AddCall(const Boxes& boxes) {
    TestSupport::CommandPieces pieces;
    pieces.inputSpec = AllParameters();
    pieces.outputSpec = R"(<output-spec><list type="string"/></output-spec>)";
    pieces.formatParameters =
        "<format-parameters><formatter>python</formatter></format-parameters>";
    pieces.execute =
        "<execute>" +
        Cli::EscapeXml("show() { printf '<output><list type=\"string\">'; "
                       "printf '<string>%s</string>' \"$@\"; printf '</list></output>'; }; "
                       "show '$val{name}' $val{owner} $if{force,--force} $if{count,-c $val{count}}"
                       "$if{tag,$multilist{tag,--tag,true}}$if{id, $list{id,',',true}}"
                       "$if{level, --level=$val{level}}") +
        "</execute>";
    boxes.Add("call", pieces);
}

/// Options of "box call" and the words that they come to.
struct Accepted {
    Words options;
    std::string out;
};

void PrintTo(const Accepted& accepted, std::ostream* out) {
    *out << testing::PrintToString(accepted.options);
}

class ToolAcceptedOptionTest : public testing::TestWithParam<Accepted> {};

TEST_P(ToolAcceptedOptionTest, ReachTheCommandWordByWord) {
    const Boxes boxes;
    AddCall(boxes);
    const ChildRun run = boxes.Run(Cli::Join({"box", "call"}, GetParam().options));
    EXPECT_EQ(run.out, GetParam().out + "\n");
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.status, 0);
}

INSTANTIATE_TEST_SUITE_P(
    Options, ToolAcceptedOptionTest,
    testing::Values(
        Accepted{{"--name", "a b", "--owner=me"}, R"(["""a b""", """me""", ])"},
        Accepted{{"-n", "it's", "--owner", "a;b|c"}, R"(["""its""", """a;b|c""", ])"},
        Accepted{
            {"--owner", "$HOME `id` $(id) *", "-n", "$HOME `id` \"q\""},
            R"py(["""$HOME `id` \"q\"""", """$HOME""", """`id`""", """$(id)""", """*""", ])py"},
        Accepted{{"--name=-x", "--owner", "-5", "-c", "-1", "-f"},
                 R"(["""-x""", """-5""", """--force""", """-c""", """-1""", ])"},
        Accepted{{"--name=n", "--owner=o", "-t", "one two", "--tag=th\"ree", "-t", "four"},
                 R"(["""n""", """o""", """--tag""", """three""", """--tag""", """one two""", )"
                 R"("""--tag""", """four""", ])"},
        Accepted{{"--name=n", "--owner=o", "--id=7", "--id", "+8", "--level=3"},
                 R"(["""n""", """o""", """7,+8""", """--level=3""", ])"},
        Accepted{{"--name=n", "--owner=o", "--mode=off", "--code=42x", "--sure=T", "--answer=n",
                  "--answer=1"},
                 R"(["""n""", """o""", ])"}));

/// Options of "box call" and what is wrong with them.
struct Refused {
    Words options;
    std::string errors;
};

void PrintTo(const Refused& refused, std::ostream* out) {
    *out << testing::PrintToString(refused.options);
}

class ToolRefusedOptionTest : public testing::TestWithParam<Refused> {};

TEST_P(ToolRefusedOptionTest, AllMistakesAreReportedInOrder) {
    const Boxes boxes;
    AddCall(boxes);
    const ChildRun run = boxes.Run(Cli::Join({"box", "call"}, GetParam().options));
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, "Errors: \n" + GetParam().errors);
    EXPECT_EQ(run.status, 1);
}

INSTANTIATE_TEST_SUITE_P(
    Validation, ToolRefusedOptionTest,
    testing::Values(
        Refused{{}, "Missing required parameter --name\nMissing required parameter --owner\n"},
        Refused{{"-z", "1", "--owner=o", "--Name=x"},
                "Unknown parameter : Name\nUnknown parameter : z\n"
                "Missing required parameter --name\n"},
        Refused{{"--zoo=1", "--sure=YES", "--name=a", "-n", "b", "--mode=ON", "--level=2", "--id=1",
                 "--id=x", "--force=yes", "--count=11", "--code=42", "--answer=on", "--answer=off"},
                "Invalid data 'on' for parameter answer expected one of [1, 0, y, n, true, false, "
                "True, False, yes, no, t, f, T, F]\n"
                "Invalid data 'off' for parameter answer expected one of [1, 0, y, n, true, false, "
                "True, False, yes, no, t, f, T, F]\n"
                "Invalid data constraint for parameter 'code'. Value does not match the expected "
                "regular expression ([0-9]+x)\n"
                "Invalid data constraint for parameter 'count'. Expected integer in the range "
                "-1-10\n"
                "Invalid data 'yes' for parameter force.  This parameter is a flag and cannot "
                "accept any values. \n"
                "Invalid data 'x' for parameter id expected type Integer\n"
                "Invalid data constraint for parameter 'level'. Expected a single value from the "
                "set [1, 3]\n"
                "Invalid data constraint for parameter 'mode'. Expected a single value from the "
                "set [on, off] got 'ON'\n"
                "Found multiple values for name this parameter can only accept a single value.\n"
                "Invalid data 'YES' for parameter sure expected one of [1, 0, y, n, true, false, "
                "True, False, yes, no, t, f, T, F]\n"
                "Unknown parameter : zoo\n"
                "Missing required parameter --owner\n"},
        Refused{{"--name=n", "--owner=o", "--count=0x5", "--level=many"},
                "Invalid data '0x5' for parameter count expected type Integer\n"
                "Invalid data 'many' for parameter level expected type Integer\n"},
        Refused{
            {"--name=n", "--owner=o", "--name=n"},
            "Found multiple values for name this parameter can only accept a single value.\n"}));

INSTANTIATE_TEST_SUITE_P(
    Shape, ToolRefusedOptionTest,
    testing::Values(
        Refused{{"--name", "--count", "-f", "-c"},
                "--name must have value\n--count must have value\n-c must have value\n"},
        Refused{{"--name=n", "x", "--owner=o", "-5", "y z"},
                "Found Extra non-parameter arguments at the end of input: 'x' '--owner=o' '-5' "
                "'y z' \n"},
        Refused{{"--tag", "--name", "n", "--x", "y"},
                "--tag must have value\n"
                "Found Extra non-parameter arguments at the end of input: '--x' 'y' \n"},
        Refused{{"--level=2", "--zoo", "--name", "-f", "yes", "no"},
                "--name must have value\n"
                "Found Extra non-parameter arguments at the end of input: 'no' \n"}));

TEST(ToolRefusedOptionOrderTest, ToolsOwnMistakes_StandBeforeTheCommands) {
    const Boxes boxes;
    AddCall(boxes);
    const ChildRun run = boxes.Run({"--foo=1", "--formatter", "--bar=2", "box", "call", "--name"});
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, "Errors: \n"
                       "Unknown dispatcher parameter: foo\n"
                       "Unknown dispatcher parameter: bar\n"
                       "--formatter requires the name of the formatter to use for this command\n"
                       "--name must have value\n");
    EXPECT_EQ(run.status, 1);
}

TEST(ToolRefusedOptionOrderTest, BuiltInCommand_RefusesLikeAnyOther) {
    const ChildRun run = RunTool({"tandril", "command", "list", "-n", "a", "-n", "b", "--all=1"});
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err,
              "Errors: \n"
              "Unknown parameter : all\n"
              "Found multiple values for namespace-filter this parameter can only accept a single "
              "value.\n");
    EXPECT_EQ(run.status, 1);
}

TEST(ToolCommandListTest, Filters_KeepWhatHoldsAllOfThem) {
    const Boxes boxes;
    AddCall(boxes);
    const ChildRun all = boxes.Run({"tandril", "command", "list"});
    EXPECT_EQ(all.out, "Namespace        Command  Description\n"
                       "---------------  -------  -----------\n"
                       "box              call     Runs.\n"
                       "tandril.command  list     List all of the tandril commands.\n");
    EXPECT_EQ(all.status, 0);
    EXPECT_EQ(
        boxes.Run({"tandril", "command", "list", "-n", "ox", "--command-filter=all", "-d", "uns."})
            .out,
        "Namespace  Command  Description\n"
        "---------  -------  -----------\n"
        "box        call     Runs.\n");
}

TEST(ToolCommandListTest, FilterThatNothingHolds_LeavesAnEmptyTableAndSucceeds) {
    const ChildRun run = RunTool({"tandril", "command", "list", "-c", "LIST"});
    EXPECT_EQ(run.out, "Namespace  Command  Description\n"
                       "---------  -------  -----------\n");
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.status, 0);
}

} // namespace
