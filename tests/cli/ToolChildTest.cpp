#include "Boxes.h"

#include <tests/support/PseudoTerminal.h>

#include <csignal>
#include <gtest/gtest.h>
#include <string>

using Cli::BecomeTool;
using Cli::Boxes;
using Cli::PrintDocument;
using Cli::Words;
using TestSupport::ChildRun;
using TestSupport::PseudoTerminal;
using TestSupport::RunInChild;
using TestSupport::StatusOf;

namespace {

/// Commands whose shells do not behave.
class ToolChildTest : public testing::Test {
  protected:
    ChildRun RunShell(const std::string& line) const {
        boxes_.AddShell("run", line);
        return boxes_.Run({"box", "run"});
    }

    void ExpectResult(const ChildRun& run, const std::string& result) const {
        EXPECT_EQ(run.out, result + "\n");
        EXPECT_EQ(run.err, "");
        EXPECT_EQ(run.status, 0);
    }

    /// Adds a command that is given more on its standard input than a pipe holds.
    void AddFed(const std::string& name, const std::string& line) const {
        TestSupport::CommandPieces pieces;
        pieces.execute = "<execute>" + Cli::EscapeXml(line) + "</execute>";
        pieces.standardInput = "<stdin>" + std::string(200'000, 'x') + "</stdin>";
        boxes_.Add(name, pieces);
    }

    Boxes boxes_;
};

/// A shell line that prints as its result what `command` prints.
std::string PrintResultOf(const std::string& command) {
    return "printf '<output><string>%s</string></output>' \"$(" + command + ")\"";
}

TEST_F(ToolChildTest, ClosingItsOutputEarly_IsWaitedFor) {
    const std::string trace = boxes_.Write("trace", "");
    ExpectResult(
        RunShell(PrintDocument("<string>early</string>") + "; exec >&-; echo end >'" + trace + "'"),
        "early");
    EXPECT_EQ(Cli::ContentOf(trace), "end\n");
}

TEST_F(ToolChildTest, LeavingAGrandchildWithItsOutput_TheGrandchildsOutputBelongsToIt) {
    const std::string fifo = boxes_.Directory() + "/fifo";
    ExpectResult(RunShell("mkfifo '" + fifo + "'; { read -r word <'" + fifo +
                          "'; printf '%s</string></output>' \"$word\"; } & "
                          "printf '<output><string>child and '; { echo grandchild >'" +
                          fifo + "'; } >&- &"),
                 "child and grandchild");
}

TEST_F(ToolChildTest, KilledBehindItsOutput_ItsResultCounts) {
    ExpectResult(RunShell(PrintDocument("<string>done</string>") + "; kill -KILL $$"), "done");
}

TEST_F(ToolChildTest, KilledInTheMiddleOfItsOutput_IsNoResult) {
    const ChildRun run = RunShell("printf '<output><string>half'; kill -SEGV $$");
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, "STDOUT:1: parser error : Premature end of data in tag string line 1\n"
                       "<output><string>half\n"
                       "                    ^\n"
                       "Errors: \n"
                       "No root object set for output. The command did not provide proper "
                       "output.\n"
                       "Implementation error! The output of this command does not match the "
                       "declared output type, see errors above.\n");
    EXPECT_EQ(run.status, 1);
}

TEST_F(ToolChildTest, PrintingTwoHundredMegabytes_IsReadWhole) {
    ExpectResult(RunShell("printf '<output><string>much</string>'; yes \"<!--$(printf %1000s)-->\" "
                          "| head -n 200000; printf '</output>'"),
                 "much");
}

TEST_F(ToolChildTest, Children_GetTheStandardDescriptorsAlone) {
    const std::string list = "'" + boxes_.Write("list", "") + "'";
    boxes_.AddShell("run", "(ls /proc/$$/fd >" + list + "); " + PrintResultOf("cat " + list));
    const std::string file = boxes_.Write("lines", "box run\nbox run\n");
    const ChildRun run = RunInChild([&] {
        // What the tool was started with is the caller's to share.
        closefrom(STDERR_FILENO + 1);
        BecomeTool(boxes_.WithPlugins({"--input", file}));
    });
    ExpectResult(run, "0\n1\n2\n0\n1\n2");
}

TEST_F(ToolChildTest, FailingCommands_LeaveNoChildBehind) {
    AddFed("unread", "exec <&-; sleep 0.01");
    boxes_.AddShell("count", PrintResultOf("ps -o pid= --ppid $PPID | wc -l"));
    const ChildRun run =
        boxes_.Run({"--input", "STDIN"}, "box unread\nbox unread\nbox unread\nbox count\n");
    EXPECT_EQ(run.out, "1\n");
    EXPECT_EQ(run.status, 0);
}

/// How a child that sends itself SIGPIPE ends: 0 when it ignores that.
TEST_F(ToolChildTest, Children_HaveTheSignalsThatTheToolWasStartedWith) {
    boxes_.AddShell("run", PrintResultOf("sh -c 'kill -PIPE $$'; echo $?"));
    const Words words = boxes_.WithPlugins({"box", "run"});
    ExpectResult(RunInChild([&] {
                     std::signal(SIGPIPE, SIG_DFL);
                     BecomeTool(words);
                 }),
                 "141");
    ExpectResult(RunInChild([&] {
                     std::signal(SIGPIPE, SIG_IGN);
                     BecomeTool(words);
                 }),
                 "0");
}

TEST_F(ToolChildTest, StartedByOneWhoDoesNotCareForChildren_TheToolDoes) {
    boxes_.AddShell("run", PrintDocument("<string>x</string>"));
    const Words words = boxes_.WithPlugins({"box", "run"});
    ExpectResult(RunInChild([&] {
                     std::signal(SIGCHLD, SIG_IGN);
                     BecomeTool(words);
                 }),
                 "x");
}

TEST_F(ToolChildTest, InterruptedByTheUser_EndsAtOnceWithTheTerminalAsItWas) {
    boxes_.AddShell("wait", "echo waiting >&2; exec sleep 1000");
    PseudoTerminal terminal;
    const termios before = terminal.Settings();
    const Words words = boxes_.WithPlugins({"box", "wait"});
    const pid_t tool = terminal.Start([&] { BecomeTool(words); });
    terminal.ReadUntil("waiting\n");
    terminal.Type("\x03");
    EXPECT_EQ(StatusOf(tool), -SIGINT);
    EXPECT_EQ(terminal.Settings().c_lflag, before.c_lflag);
    EXPECT_EQ(terminal.Settings().c_iflag, before.c_iflag);
    EXPECT_EQ(terminal.Settings().c_oflag, before.c_oflag);
    EXPECT_EQ(terminal.ReadRest(), "^C");
}

} // namespace
