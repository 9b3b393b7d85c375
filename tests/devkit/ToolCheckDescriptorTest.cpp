#include "Checking.h"
#include "DevkitTool.h"

#include <gtest/gtest.h>

namespace {

using DevkitTest::RunDevkit;
using TestSupport::TempDirectory;

/// One warning and nothing else.
std::string Doubtful() {
    auto pieces = DevkitTest::FaultlessCommand();
    pieces.formatParameters = "<format-parameters/>";
    return TestSupport::CommandDescriptor(pieces);
}

TEST(ToolCheckDescriptor, Warnings_AreShownAsRows) {
    const TempDirectory folder;
    folder.Write("a.xml", Doubtful());
    const auto run = RunDevkit({"plugin", "descriptor", "check", "--file", "a.xml"}, folder);
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, "File   Line  Severity  Rule          Message\n"
                       "-----  ----  --------  ------------  -------\n"
                       "a.xml     1  warning   no-formatter  The command 'demo.run' names no "
                       "formatter\n");
    EXPECT_EQ(run.err, "");
}

TEST(ToolCheckDescriptor, StrictCall_FailsOnWarnings) {
    const TempDirectory folder;
    folder.Write("a.xml", Doubtful());
    const auto run =
        RunDevkit({"plugin", "descriptor", "check", "--file", "a.xml", "--strict"}, folder);
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, "Errors: \na.xml:1: warning: The command 'demo.run' names no formatter "
                       "[no-formatter]. Name simple, table, xml, json or python.\n");
}

TEST(ToolCheckDescriptor, Report_ShowsErrorsAsRowsAndSucceeds) {
    const TempDirectory folder;
    folder.Write("a.xml", "<plugin>");
    const auto run = RunDevkit({"--formatter", "python", "plugin", "descriptor", "check", "-f",
                                "a.xml", "--strict", "--report"},
                               folder);
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out,
              "[{\"Advice\": \"\"\"Mend this first; the rest is checked afterwards.\"\"\", "
              "\"File\": \"\"\"a.xml\"\"\", \"Line\": 1, \"Message\": \"\"\"column 9: "
              "Premature end of data in tag plugin line 1\"\"\", \"Rule\": "
              "\"\"\"syntax\"\"\", \"Severity\": \"\"\"error\"\"\", }, ]\n");
    EXPECT_EQ(run.err, "");
}

TEST(ToolCheckDescriptor, Errors_FailTheCall) {
    const TempDirectory folder;
    folder.Write("a.xml", "<plugin>");
    const auto run = RunDevkit({"plugin", "descriptor", "check", "-f", "a.xml"}, folder);
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, "Errors: \na.xml:1: error: column 9: Premature end of data in tag plugin "
                       "line 1 [syntax]. Mend this first; the rest is checked afterwards.\n");
}

} // namespace
