#include "Boxes.h"

#include <array>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <pty.h>
#include <string>

using Cli::BecomeTool;
using Cli::Boxes;
using Cli::PrintDocument;
using Cli::Words;
using TestSupport::ChildRun;
using TestSupport::RunInChild;

namespace {

/// Runs the tool with a pipe for its output whose reader has gone.
ChildRun RunWithoutReader(const Words& words) {
    return RunInChild([&] {
        std::array<int, 2> ends{};
        if (pipe(ends.data()) == 0) {
            close(ends[0]);
            dup2(ends[1], STDOUT_FILENO);
            close(ends[1]);
        }
        BecomeTool(words);
    });
}

ChildRun RunWithFullOutput(const Words& words) {
    return RunInChild([&] {
        const int full = open("/dev/full", O_WRONLY | O_CLOEXEC);
        dup2(full, STDOUT_FILENO);
        BecomeTool(words);
    });
}

/// Runs the tool with some of the standard descriptors closed.
ChildRun RunWithout(const std::vector<int>& descriptors, const Words& words) {
    return RunInChild(
        [&] {
            for (const int descriptor : descriptors) {
                close(descriptor);
            }
            BecomeTool(words);
        },
        "line\n");
}

/// Command lines that print something, each by another part of the tool.
class ToolFullOutputTest : public testing::TestWithParam<Words> {};

TEST_P(ToolFullOutputTest, IsReportedOnStandardErrorAndEndsWith1) {
    const ChildRun run = RunWithFullOutput(GetParam());
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, "Unable to write to standard output: No space left on device\n");
    EXPECT_EQ(run.status, 1);
}

TEST_P(ToolFullOutputTest, WithoutAReaderIsReportedOnStandardErrorAndEndsWith1) {
    const ChildRun run = RunWithoutReader(GetParam());
    EXPECT_EQ(run.err, "Unable to write to standard output: Broken pipe\n");
    EXPECT_EQ(run.status, 1);
}

TEST_P(ToolFullOutputTest, OnATerminalThatIsGoneIsReportedOnStandardErrorAndEndsWith1) {
    const ChildRun run = RunInChild([&] {
        int keyboard = -1;
        int line = -1;
        if (openpty(&keyboard, &line, nullptr, nullptr, nullptr) == 0) {
            close(keyboard);
            dup2(line, STDOUT_FILENO);
            close(line);
        }
        BecomeTool(GetParam());
    });
    EXPECT_EQ(run.err, "Unable to write to standard output: some of the output was lost\n");
    EXPECT_EQ(run.status, 1);
}

INSTANTIATE_TEST_SUITE_P(
    Lines, ToolFullOutputTest,
    testing::Values(Words{"tandril", "command", "list"}, Words{}, Words{"--help"},
                    Words{"tandril", "command", "list", "--help"},
                    Words{"--formatter", "simple", "tandril", "command", "list"},
                    Words{"--formatter", "xml", "tandril", "command", "list"},
                    Words{"--formatter", "json", "tandril", "command", "list"}));

/// The python formatter takes no list.
TEST(ToolFullOutputStreamTest, PythonLiteral_IsReportedAndEndsWith1) {
    Boxes boxes;
    boxes.AddDisk();
    const Words words = boxes.WithPlugins({"--formatter", "python", "box", "disk"});
    const ChildRun full = RunWithFullOutput(words);
    EXPECT_EQ(full.err, "Unable to write to standard output: No space left on device\n");
    EXPECT_EQ(full.status, 1);
    const ChildRun unread = RunWithoutReader(words);
    EXPECT_EQ(unread.err, "Unable to write to standard output: Broken pipe\n");
    EXPECT_EQ(unread.status, 1);
}

TEST(ToolFullOutputStreamTest, WithoutAReader_EveryLineIsRunAndTheStatusIs1) {
    Boxes boxes;
    const std::string trace = boxes.Write("trace", "");
    boxes.AddShell("long", "echo x >>'" + trace +
                               "'; printf '<output><string>'; seq 1 20000; "
                               "printf '</string></output>'");
    const std::string file = boxes.Write("lines", "box long\nbox long\nbox long\n");
    const ChildRun run = RunWithoutReader(boxes.WithPlugins({"--input", file}));
    EXPECT_TRUE(run.err.starts_with("Unable to write to standard output: ")) << run.err;
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(Cli::ContentOf(trace), "x\nx\nx\n");
}

TEST(ToolFullOutputStreamTest, NothingPrinted_IsNoFailure) {
    const ChildRun run = RunWithFullOutput({"--input", "/dev/null"});
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.status, 0);
}

TEST(ToolFullOutputStreamTest, MoreThanIsKept_IsReportedAfterTheErrorsOfTheLine) {
    Boxes boxes;
    boxes.AddShell("long", "printf '<output><string>'; seq 1 20000; printf '</string></output>'");
    boxes.AddShell("bad", "echo ERROR:spoilt");
    const std::string file = boxes.Write("lines", "box long\nbox bad\nbox long\n");
    const ChildRun run = RunWithFullOutput(boxes.WithPlugins({"--input", file}));
    EXPECT_EQ(run.out, "");
    EXPECT_TRUE(run.err.starts_with("Errors: \nspoilt\nUnable to write to standard output: "))
        << run.err;
    EXPECT_EQ(run.status, 1);
}

/// A command that counts its standard input, in a tool that lacks descriptors.
class ToolClosedStreamTest : public testing::Test {
  protected:
    ToolClosedStreamTest() {
        trace_ = boxes_.Write("trace", "");
        boxes_.AddShell("count",
                        "wc -c >'" + trace_ + "'; " + PrintDocument("<string>counted</string>"));
        boxes_.AddShell("warn", "echo ERROR:spoilt; echo careful >&2");
    }

    ChildRun RunCount(const std::vector<int>& closed) const {
        return RunWithout(closed, boxes_.WithPlugins({"box", "count"}));
    }

    Boxes boxes_;
    std::string trace_;
};

TEST_F(ToolClosedStreamTest, NoStandardInput_CommandsRunAsEver) {
    const ChildRun run = RunCount({STDIN_FILENO});
    EXPECT_EQ(run.out, "counted\n");
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(Cli::ContentOf(trace_), "0\n");
}

TEST_F(ToolClosedStreamTest, NoStandardInput_HoldsNoLines) {
    const ChildRun run = RunWithout({STDIN_FILENO}, {"--input", "STDIN"});
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.status, 0);
}

TEST_F(ToolClosedStreamTest, NoStandardInput_FileOfLinesIsReadAsEver) {
    const std::string file = boxes_.Write("lines", "box count\nbox count\n");
    const ChildRun run = RunWithout({STDIN_FILENO}, boxes_.WithPlugins({"--input", file}));
    EXPECT_EQ(run.out, "counted\ncounted\n");
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.status, 0);
}

TEST_F(ToolClosedStreamTest, NoStandardOutput_IsReportedAndEndsWith1) {
    const ChildRun run = RunCount({STDOUT_FILENO});
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, "Unable to write to standard output: Bad file descriptor\n");
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(Cli::ContentOf(trace_), "0\n");
}

TEST_F(ToolClosedStreamTest, NoStandardOutputAndAFileOfLines_LeavesTheFileAlone) {
    const std::string file = boxes_.Write("lines", "box count\n");
    const ChildRun run = RunWithout({STDOUT_FILENO}, boxes_.WithPlugins({"--input", file}));
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, "Unable to write to standard output: Bad file descriptor\n");
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(Cli::ContentOf(file), "box count\n");
}

TEST_F(ToolClosedStreamTest, NoStandardError_ErrorsOnlyShowInTheStatus) {
    const ChildRun run = RunWithout({STDERR_FILENO}, boxes_.WithPlugins({"box", "warn"}));
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.status, 1);
}

TEST_F(ToolClosedStreamTest, NoStandardError_ResultsAreNotTouched) {
    const ChildRun run = RunCount({STDERR_FILENO});
    EXPECT_EQ(run.out, "counted\n");
    EXPECT_EQ(run.status, 0);
}

TEST_F(ToolClosedStreamTest, NothingOpen_TheCommandRunsAllTheSame) {
    const ChildRun run = RunCount({STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO});
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(Cli::ContentOf(trace_), "0\n");
}

TEST_F(ToolClosedStreamTest, NoInputAndNoOutput_TheCommandRunsAllTheSame) {
    const ChildRun run = RunCount({STDIN_FILENO, STDOUT_FILENO});
    EXPECT_EQ(run.err, "Unable to write to standard output: Bad file descriptor\n");
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(Cli::ContentOf(trace_), "0\n");
}

} // namespace
