#include "Process.h"
#include "tests/support/CommandDescriptor.h"
#include "tests/support/TempDirectory.h"

#include <gtest/gtest.h>

using TestSupport::ChildRun;
using TestSupport::CommandDescriptor;
using TestSupport::CommandPieces;

namespace {

/// The tool with a command whose shell lines call the program as $RESULT.
ChildRun RunCommandOf(const std::string& lines, const std::string& outputSpec) {
    const TestSupport::TempDirectory directory;
    CommandPieces pieces;
    pieces.outputSpec = "<output-spec>" + outputSpec + "</output-spec>";
    pieces.execute = "<execute><![CDATA[" + lines + "]]></execute>";
    const std::string plugin = directory.Write("demo.xml", CommandDescriptor(pieces));
    return TestSupport::RunInChild([&] {
        setenv("RESULT", TANDRIL_RESULT_PROGRAM, 1);
        TestSupport::Become(TANDRIL_PROGRAM, {"tandril", "--plugin", plugin, "--formatter",
                                              "python", "demo", "run"});
    });
}

const std::string kNumbers = "<list type=\"int\"/>";
const std::string kRows = "<list type=\"structure\"><structure typeName=\"Row\"><field name=\"A\">"
                          "<int/></field><field name=\"B\"><string/></field></structure></list>";

TEST(ResultInToolTest, Rows_AreTheCommandsResult) {
    const ChildRun run =
        RunCommandOf("printf 'a\\tb\\n1\\tx <y>\\n2\\t\\n' |"
                     " \"$RESULT\" --from tsv --structure Row --field A:int=a --field B=b",
                     kRows);
    EXPECT_EQ(run.out,
              "[{\"A\": 1, \"B\": \"\"\"x <y>\"\"\", }, {\"A\": 2, \"B\": \"\"\"\"\"\", }, "
              "]\n");
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.status, 0);
}

TEST(ResultInToolTest, NoRows_AreAnEmptyResult) {
    const ChildRun run = RunCommandOf(
        "echo '[]' | \"$RESULT\" --from json --structure Row --field A:int --field B", kRows);
    EXPECT_EQ(run.out, "[]\n");
    EXPECT_EQ(run.status, 0);
}

TEST(ResultInToolTest, EarlyError_IsReportedAsItIs) {
    const ChildRun run =
        RunCommandOf("printf '1\\nx\\n' | \"$RESULT\" --from lines --list int", kNumbers);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, "Errors: \nUnable to use record 2 of standard input: 'x' is not an integer "
                       "of 64 bits\n");
    EXPECT_EQ(run.status, 1);
}

/// What the reader says in front of the reason when the document was begun already.
const std::string kRefused =
    "Errors: \nUnable to parse output of Extension Command: Error parsing command output.  Unable "
    "to build a proper metaobject from output tag.  output must contain properly formatted tags of "
    "type bool, int, string, structure and list. Error was : Unable to read an int value from: ";

TEST(ResultInToolTest, LateError_ResultIsRefusedWithTheReason) {
    const ChildRun run =
        RunCommandOf("{ seq 200000; echo '<x>'; } | \"$RESULT\" --from lines --list int", kNumbers);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, kRefused + "'ERROR:Unable to use record 200001 of standard input: '<x>' is "
                                  "not an integer of 64 bits'\n");
    EXPECT_EQ(run.status, 1);
}

TEST(ResultInToolTest, LateErrorAmongStructures_ResultIsRefusedWithTheReason) {
    const ChildRun run =
        RunCommandOf("{ printf 'A\\tB\\n'; seq 200000 | sed 's/$/\\tx/'; printf '7\\n'; } |"
                     " \"$RESULT\" --from tsv --structure Row --field A:int --field B",
                     kRows);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, kRefused + "'ERROR:Unable to read standard input as tsv: line 200002 has 1 "
                                  "cells for 2 columns'\n");
    EXPECT_EQ(run.status, 1);
}

TEST(ResultInToolTest, ProgramThatFailsLate_ResultIsRefusedWithTheReason) {
    const ChildRun run =
        RunCommandOf("\"$RESULT\" --from lines --list int -- sh -c 'seq 200000; exit 9'", kNumbers);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, kRefused + "'ERROR:'sh' failed with status 9'\n");
    EXPECT_EQ(run.status, 1);
}

TEST(ResultInToolTest, ProgramKilledWithinTheDocument_ResultIsRefused) {
    const ChildRun run = RunCommandOf(
        "seq 200000 | \"$RESULT\" --from lines --list int | head -c 1000000", kNumbers);
    EXPECT_EQ(run.out, "");
    EXPECT_NE(run.err.find("No root object set for output. The command did not provide proper "
                           "output.\n"),
              std::string::npos)
        << run.err;
    EXPECT_EQ(run.status, 1);
}

} // namespace
