#include "Process.h"
#include "tests/support/NamedRow.h"

#include <CppTools/autocli/plugins/XmlUtil.h>
#include <tandril-result/HelpText.h>

#include <gtest/gtest.h>

using CppTools::AutoCli::XmlUtil_ParseXmlOutput;
using ResultTests::RunLines;
using ResultTests::RunResult;
using TestSupport::ChildRun;

namespace {

using ResultWords = std::vector<std::string>;

testing::AssertionResult EndsWith(const ChildRun& run, int status, const std::string& out,
                                  const std::string& err = "") {
    if (run.status == status && run.out == out && run.err == err) {
        return testing::AssertionSuccess();
    }
    return testing::AssertionFailure() << "status " << run.status << ", printed:\n"
                                       << run.out << run.err;
}

/// An input, and what the engine's reader makes of the document.
struct ConversionCase : TestSupport::NamedRow {
    ResultWords words;
    std::string input;
    std::string value;
};

class ConversionTest : public testing::TestWithParam<ConversionCase> {};

TEST_P(ConversionTest, Input_DocumentHoldsThisValue) {
    const ChildRun run = RunResult(GetParam().words, GetParam().input);
    ASSERT_TRUE(EndsWith(run, 0, run.out));
    EXPECT_EQ(XmlUtil_ParseXmlOutput(run.out)->ToString(), GetParam().value);
}

const std::vector<ConversionCase> kConversions = {
    {{"Json"},
     {"--from=json", "--structure=T", "--infer"},
     R"([{"a": 1, "b": "<x>&"}, {"a": 2, "b": " \r\n"}])",
     "{'a' => '1', 'b' => '<x>&', }, {'a' => '2', 'b' => ' \r\n', }"},
    {{"JsonRowsAndChildren"},
     {"--from=json", "--structure=T", "--rows=r", "--children=c", "--field=n", "--field=p=^n",
      "--default=p=-"},
     R"({"r": [{"n": 1, "c": [{"n": 2}]}]})",
     "{'n' => '1', 'p' => '-', }, {'n' => '2', 'p' => '1', }"},
    {{"JsonEach"},
     {"--from=json", "--structure=T", "--each=e", "--field=n", "--field=o=^o"},
     R"([{"o": 1, "e": [{"n": 2}, {"n": 3}]}])",
     "{'n' => '2', 'o' => '1', }, {'n' => '3', 'o' => '1', }"},
    {{"JsonObject"},
     {"--from=json", "--structure=T", "--one", "--field=x=a.b"},
     R"({"a": {"b": "\ud83d\udc27"}})",
     "{'x' => '\xF0\x9F\x90\xA7', }"},
    {{"JsonScalars"}, {"--from=json", "--list=int"}, "[1, -2, \"3\"]", "1, -2, 3"},
    {{"JsonScalar"}, {"--from=json", "--list=bool", "--one"}, "true", "true"},
    {{"JsonLines"},
     {"--from=jsonl", "--structure=T"},
     "{\"a\": 1}\n{\"a\": 2}\n",
     "{'a' => '1', }, {'a' => '2', }"},
    {{"Tsv"}, {"--from=tsv", "--structure=T", "--field=A:int=a"}, "a\tb\n7\tx\n", "{'A' => '7', }"},
    {{"Csv"},
     {"--from=csv", "--structure=T"},
     "a,b\r\n\"1,2\",\xFF\r\n",
     "{'a' => '1,2', 'b' => '\\xff', }"},
    {{"Pairs"},
     {"--from=pairs", "--structure=T"},
     "a=1\n\na=2\n",
     "{'a' => '1', }, {'a' => '2', }"},
    {{"NulPairs"},
     {"--from=nul", "--structure=T"},
     std::string("a=1\n\0b=\0", 8),
     "{'a' => '1\n', 'b' => '', }"},
    {{"NulColumns"},
     {"--from=nul", "--structure=T", "--columns=a,b"},
     std::string("1\0x=\0", 5),
     "{'a' => '1', 'b' => 'x=', }"},
    {{"NulValues"}, {"--from=nul", "--list=string"}, std::string("a\nb\0c\0", 6), "a\nb, c"},
    {{"Lines"}, {"--from=lines", "--list=string"}, "a\tb\n\x1B\n", "a\tb, \\x1b"},
};

INSTANTIATE_TEST_SUITE_P(All, ConversionTest, testing::ValuesIn(kConversions),
                         TestSupport::kRowName);

TEST(ResultProcessTest, Document_IsThisText) {
    EXPECT_TRUE(EndsWith(
        RunResult({"--from=tsv", "--structure=T", "--infer"}, "a & b\tc\n1\ttrue\n2\tfalse\n"), 0,
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
        "<output><list type=\"structure\">\n"
        "<structure typeName=\"T\"><field name=\"a &amp; b\"><int>1</int></field>"
        "<field name=\"c\"><bool>true</bool></field></structure>\n"
        "<structure typeName=\"T\"><field name=\"a &amp; b\"><int>2</int></field>"
        "<field name=\"c\"><bool>false</bool></field></structure>\n"
        "</list></output>\n"));
}

TEST(ResultProcessTest, LongestText_IsReadBack) {
    const ChildRun run = RunLines("head -c 10000000 /dev/zero | tr '\\0' a | sed '$a\\' |"
                                  " \"$RESULT\" --from lines --list string");
    ASSERT_EQ(run.status, 0);
    EXPECT_EQ(XmlUtil_ParseXmlOutput(run.out)->ToString(), std::string(10'000'000, 'a'));
}

TEST(ResultProcessTest, BadRecord_ErrorSaysWhereAndWhy) {
    EXPECT_TRUE(EndsWith(RunResult({"--from=tsv", "--structure=T", "--field=a:int"}, "a\n1\nx\n"),
                         1,
                         "ERROR:Unable to use record 2 of standard input: field 'a': 'x' is not an "
                         "integer of 64 bits\n"));
    EXPECT_TRUE(EndsWith(RunResult({"--from=lines", "--list=int"}, "1\nx\n"), 1,
                         "ERROR:Unable to use record 2 of standard input: 'x' is not an integer of "
                         "64 bits\n"));
}

TEST(ResultProcessTest, BadInput_ErrorSaysWhatAndWhy) {
    EXPECT_TRUE(EndsWith(RunResult({"--from=csv", "--structure=T"}, "a\n\"x\ny"), 1,
                         "ERROR:Unable to read standard input as csv: line 2 begins a quoted cell "
                         "that has no end\n"));
    EXPECT_TRUE(EndsWith(RunLines("\"$RESULT\" --from lines --list int </"), 1,
                         "ERROR:Unable to read standard input as lines: Is a directory\n"));
}

TEST(ResultProcessTest, One_NeitherNoneNorSeveral) {
    EXPECT_TRUE(EndsWith(RunResult({"--from=json", "--list=int", "--one"}, "[]"), 1,
                         "ERROR:Unable to use standard input: there is no record, but --one needs "
                         "one\n"));
    EXPECT_TRUE(EndsWith(RunResult({"--from=json", "--list=int", "--one"}, "[1, 2]"), 1,
                         "ERROR:Unable to use record 2 of standard input: it is one more than the "
                         "one that --one allows\n"));
}

TEST(ResultProcessTest, BadOptions_AreAnErrorLineToo) {
    EXPECT_TRUE(EndsWith(RunResult({"--from=json", "--structure=a\nERROR:b"}), 1,
                         "ERROR:Invalid name for a structure: 'a\\nERROR:b'; it must consist of "
                         "letters and digits (tandril-result --help explains)\n"));
}

TEST(ResultProcessTest, Program_ItsOutputIsRead) {
    const ChildRun run =
        RunResult({"--from=lines", "--list=int", "--", "printf", "%s\\n", "4", "5"});
    ASSERT_TRUE(EndsWith(run, 0, run.out));
    EXPECT_EQ(XmlUtil_ParseXmlOutput(run.out)->ToString(), "4, 5");
}

TEST(ResultProcessTest, Program_HasTheStandardInput) {
    const ChildRun run = RunResult({"--from=lines", "--list=int", "--", "cat"}, "6\n");
    EXPECT_EQ(XmlUtil_ParseXmlOutput(run.out)->ToString(), "6");
}

TEST(ResultProcessTest, ArgumentFromInput_IsTheProgramsLastOneByteForByte) {
    const std::string argument = " a 'b' \"c\" $(d)\n";
    const ChildRun run = RunResult(
        {"--from=nul", "--list=string", "--argument-from-input", "--", "printf", "%s\\0", "first"},
        argument);
    ASSERT_TRUE(EndsWith(run, 0, run.out));
    EXPECT_EQ(XmlUtil_ParseXmlOutput(run.out)->ToString(), "first, " + argument);
}

TEST(ResultProcessTest, ArgumentFromInput_WithANulIsRefusedRatherThanCut) {
    EXPECT_TRUE(
        EndsWith(RunResult({"--from=lines", "--list=string", "--argument-from-input", "--", "echo"},
                           std::string("a\0b", 3)),
                 1,
                 "ERROR:Unable to run 'echo': the argument on standard input holds a "
                 "NUL\n"));
}

TEST(ResultProcessTest, ArgumentFromInput_InputThatCannotBeReadIsAnError) {
    EXPECT_TRUE(EndsWith(
        RunLines("\"$RESULT\" --from lines --list string --argument-from-input -- echo </"), 1,
        "ERROR:Unable to read standard input: Is a directory\n"));
}

TEST(ResultProcessTest, ProgramThatFails_IsTheErrorWhateverItPrinted) {
    for (const char* lines : {"exit 3", "echo 1; exit 3", "printf 1; exit 3"}) {
        EXPECT_TRUE(EndsWith(RunResult({"--from=lines", "--list=int", "--", "sh", "-c", lines}), 1,
                             "ERROR:'sh' failed with status 3\n"));
    }
    EXPECT_TRUE(EndsWith(
        RunResult({"--from=json", "--list=int", "--", "sh", "-c", "echo 'no!' >&2; exit 4"}), 1,
        "ERROR:'sh' failed with status 4\n", "no!\n"));
    EXPECT_TRUE(
        EndsWith(RunResult({"--from=lines", "--list=int", "--", "sh", "-c", "echo 1; kill -9 $$"}),
                 1, "ERROR:'sh' was ended by signal 9\n"));
}

TEST(ResultProcessTest, ProgramWithABadRecord_IsNotWaitedFor) {
    EXPECT_TRUE(EndsWith(
        RunResult({"--from=lines", "--list=int", "--", "sh", "-c",
                   "yes x | head -n 99999; "
                   "exec sleep 1000"}),
        1,
        "ERROR:Unable to use record 1 of the output of 'sh': 'x' is not an integer of 64 bits\n"));
}

TEST(ResultProcessTest, ProgramThatGoesWell_BadOutputIsTheError) {
    EXPECT_TRUE(EndsWith(RunResult({"--from=lines", "--list=int", "--", "printf", "1"}), 1,
                         "ERROR:Unable to read the output of 'printf' as lines: line 1 has no end, "
                         "so the input was cut short\n"));
}

TEST(ResultProcessTest, EmptyStatus_NothingPrintedMeansNothingFound) {
    const auto run = [](const char* status, const char* lines) {
        return RunResult(
            {"--from=json", "--structure=T", "--empty-status", status, "--", "sh", "-c", lines});
    };
    const std::string empty = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                              "<output><list type=\"structure\">\n</list></output>\n";
    EXPECT_TRUE(EndsWith(run("1", "exit 1"), 0, empty));
    EXPECT_TRUE(EndsWith(run("0", "exit 0"), 0, empty));
    EXPECT_TRUE(EndsWith(run("1", "exit 2"), 1, "ERROR:'sh' failed with status 2\n"));
    EXPECT_TRUE(EndsWith(run("1", "echo '[]'; exit 1"), 1, "ERROR:'sh' failed with status 1\n"));
    EXPECT_EQ(run("1", "exit 0").status, 1);
    EXPECT_TRUE(EndsWith(run("1", "echo '[]'"), 0, empty));
}

TEST(ResultProcessTest, Help_IsPrinted) {
    EXPECT_TRUE(EndsWith(RunResult({"--help"}), 0, TandrilResult::kHelpText));
}

TEST(ResultProcessTest, Help_FitsATerminalAndNamesEveryFormat) {
    std::istringstream lines(TandrilResult::kHelpText);
    for (std::string line; std::getline(lines, line);) {
        EXPECT_LE(line.size(), 80U) << line;
    }
}

TEST(ResultProcessTest, FullDevice_IsReportedOnStandardError) {
    EXPECT_TRUE(EndsWith(RunLines("echo 1 | \"$RESULT\" --from lines --list int >/dev/full"), 1, "",
                         "tandril-result: Unable to write the result: No space left on device\n"));
    EXPECT_TRUE(EndsWith(RunLines("\"$RESULT\" >/dev/full"), 1, "",
                         "tandril-result: Unable to write the result: No space left on device\n"));
}

TEST(ResultProcessTest, ReaderThatGoesAway_IsReportedOnStandardError) {
    EXPECT_TRUE(EndsWith(RunLines("{ yes 1 | head -n 1000000 | \"$RESULT\" --from lines --list int;"
                                  " echo $? >&2; } | head -c 5"),
                         0, "<?xml",
                         "tandril-result: Unable to write the result: Broken pipe\n1\n"));
}

} // namespace
