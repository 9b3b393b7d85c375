#include "Boxes.h"

#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>
#include <thread>

using Cli::BecomeTool;
using Cli::Boxes;
using Cli::RunTool;
using Cli::Words;
using TestSupport::ChildRun;

namespace {

/// Commands that succeed, fail, and say what they were given.
class ToolStreamTest : public testing::Test {
  protected:
    ToolStreamTest() {
        boxes_.AddShell("good", Cli::PrintDocument("<string>fine</string>"));
        boxes_.AddShell("bad", "printf 'ERROR:spoilt\\n'");
        boxes_.AddDisks();
        TestSupport::CommandPieces pieces;
        pieces.inputSpec = "<input-spec>" +
                           TestSupport::ParameterElement(R"(name="text" type="string-list")",
                                                         "<description>D.</description>") +
                           "</input-spec>";
        pieces.formatParameters =
            "<format-parameters><formatter>simple</formatter></format-parameters>";
        pieces.execute = "<execute>printf '%s' '&lt;output>&lt;string>' "
                         "$list{text,',',true} '&lt;/string>&lt;/output>'</execute>";
        boxes_.Add("say", pieces);
    }

    /// Runs the lines from a file.
    ChildRun RunLines(const std::string& lines, const Words& options = {}) const {
        const std::string file = boxes_.Write("lines", lines);
        return boxes_.Run(Cli::Join(options, {"--input", file}));
    }

    Boxes boxes_;
};

const std::string kSpoilt = "Errors: \nspoilt\n";

TEST_F(ToolStreamTest, File_EachLineIsACommandLineOfItsOwn) {
    const ChildRun run = RunLines("box good\nbox say --text one\nbox good\n");
    EXPECT_EQ(run.out, "fine\none\nfine\n");
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.status, 0);
}

TEST_F(ToolStreamTest, StandardInput_IsReadUnderItsName) {
    const ChildRun run = boxes_.Run({"--input", "STDIN"}, "box good\nbox say --text=two\n");
    EXPECT_EQ(run.out, "fine\ntwo\n");
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.status, 0);
}

TEST_F(ToolStreamTest, LowerCaseName_IsAFile) {
    const ChildRun run = boxes_.Run({"--input", "stdin"}, "box good\n");
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, "Unable to open file stdin\n");
    EXPECT_EQ(run.status, 1);
}

TEST_F(ToolStreamTest, CommentsAndBlankLines_ArePassedOver) {
    const ChildRun run = RunLines("# box bad\n\n \t \n   # box bad\nbox good # box bad\n"
                                  "\"# box bad\n\"\"\n#\n");
    EXPECT_EQ(run.out, "fine\n");
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.status, 0);
}

TEST_F(ToolStreamTest, Quotes_KeepBlanksTogetherAndAreTakenAway) {
    const ChildRun run = RunLines("box say --text \"a  b\" --text=\"c d\"e\"f\" --text a#b\n"
                                  "\tbox \t say  --text one\\two --text \"\\\"\n");
    EXPECT_EQ(run.out, "a  b,c def,a#b\none\\two,\\\n");
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.status, 0);
}

TEST_F(ToolStreamTest, LastLineWithoutLineEnd_IsRunToo) {
    const ChildRun run = RunLines("box bad\nbox good");
    EXPECT_EQ(run.out, "fine\n");
    EXPECT_EQ(run.status, 0);
}

TEST_F(ToolStreamTest, FailingFirstLine_DoesNotCount) {
    const ChildRun run = RunLines("box bad\nbox good\n");
    EXPECT_EQ(run.out, "fine\n");
    EXPECT_EQ(run.err, kSpoilt);
    EXPECT_EQ(run.status, 0);
}

TEST_F(ToolStreamTest, FailingLastLine_EndsWith1) {
    const ChildRun run = RunLines("box good\nbox bad\n");
    EXPECT_EQ(run.out, "fine\n");
    EXPECT_EQ(run.err, kSpoilt);
    EXPECT_EQ(run.status, 1);
}

TEST_F(ToolStreamTest, CommentsBehindAFailingLine_DoNotMendIt) {
    EXPECT_EQ(RunLines("box good\nbox bad\n\n# the end\n").status, 1);
}

TEST_F(ToolStreamTest, ListingOnTheLastLine_EndsWith1) {
    const ChildRun run = RunLines("box good\ntandril\n");
    EXPECT_EQ(run.out, "fine\n" + RunTool({"tandril"}).out);
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.status, 1);
}

TEST_F(ToolStreamTest, NoLines_Succeed) {
    const ChildRun run = RunLines("");
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.status, 0);
}

TEST_F(ToolStreamTest, Help_EndsTheProcessWith1) {
    const ChildRun run = RunLines("box good\n--help\nbox good\n");
    EXPECT_EQ(run.out, "fine\n" + RunTool({"--help"}).out);
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.status, 1);
}

TEST_F(ToolStreamTest, HelpOfACommand_GoesOn) {
    const ChildRun run = RunLines("box good --help\nbox good\n");
    EXPECT_EQ(run.out, "Usage: tandril box good <options>\n\nDescription: Runs.\n\n"
                       "  -h|--help   Show the help message.\nfine\n");
    EXPECT_EQ(run.status, 0);
}

TEST_F(ToolStreamTest, Lines_AreCalledByTheToolsOwnName) {
    const std::string file = boxes_.Write("lines", "--help\n");
    const ChildRun run = TestSupport::RunInChild([&] {
        BecomeTool({"--input", file}, "/opt/bin/other");
    });
    EXPECT_EQ(run.out, RunTool({"--help"}).out);
}

TEST_F(ToolStreamTest, UnknownPath_EndsTheProcessWithItsMessage) {
    const ChildRun run = RunLines("box good\nnothing\nbox good\n");
    EXPECT_EQ(run.out, "fine\n");
    EXPECT_EQ(run.err,
              "Unable to find a command or namespace with the name 'nothing' in namespace \n");
    EXPECT_EQ(run.status, 1);
}

TEST_F(ToolStreamTest, Formatter_HoldsForItsLineAlone) {
    const ChildRun run = RunLines("--formatter json box good\nbox good\n", {"--formatter", "xml"});
    EXPECT_EQ(run.out, "\"fine\"\nfine\n");
    EXPECT_EQ(run.status, 0);
}

TEST_F(ToolStreamTest, ScreenWidth_HoldsForTheLinesBehind) {
    const ChildRun run = RunLines("box disks\n--screen-width 40 box disks\nbox disks\n"
                                  "--screen-width 0 box disks\n");
    EXPECT_EQ(run.out, Cli::UnwrappedDisks() + Cli::DisksOn40Columns() + Cli::DisksOn40Columns() +
                           Cli::UnwrappedDisks());
    EXPECT_EQ(run.status, 0);
}

TEST_F(ToolStreamTest, ScreenWidthBeforeTheStream_HoldsForItsLines) {
    const ChildRun run = RunLines("box disks\n", {"--screen-width=40"});
    EXPECT_EQ(run.out, Cli::DisksOn40Columns());
    EXPECT_EQ(run.status, 0);
}

TEST_F(ToolStreamTest, PluginOfALine_StaysForTheLinesBehind) {
    const std::string descriptor =
        boxes_.Write("late.xml", TestSupport::NamespaceDescriptor("late", "Comes late."));
    const ChildRun run = RunLines("--plugin " + descriptor + " box good\nlate\n");
    EXPECT_EQ(run.out, "fine\nUsage: tandril [disp options] late <namespaces> <command>\n\n"
                       "For help please run tandril --help\n\n"
                       "Available Namespaces: \n\n\nAvailable Commands: \n\n\n");
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.status, 1);
}

TEST_F(ToolStreamTest, MistakesInALine_AreReportedAndTheNextLineRuns) {
    const ChildRun run =
        RunLines("--foo=1 box good\nbox say --text\nbox good --zoo=1 x\nbox good\n");
    EXPECT_EQ(run.out, "fine\n");
    EXPECT_EQ(run.err, "Errors: \nUnknown dispatcher parameter: foo\n"
                       "Errors: \n--text must have value\n"
                       "Errors: \nFound Extra non-parameter arguments at the end of input: 'x' \n");
    EXPECT_EQ(run.status, 0);
}

TEST_F(ToolStreamTest, InputOnALine_IsAnUnknownOption) {
    const std::string file = boxes_.Write("more", "box good\n");
    const ChildRun run = RunLines("--input " + file + " box good\n");
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, "Errors: \nUnknown dispatcher parameter: input\n");
    EXPECT_EQ(run.status, 1);
}

TEST_F(ToolStreamTest, SecretOnALine_IsTheNextLineOfStandardInput) {
    TestSupport::CommandPieces pieces;
    pieces.inputSpec = "<input-spec>" +
                       TestSupport::ParameterElement(R"(name="key" type="string" secret="true")",
                                                     "<description>D.</description>") +
                       "</input-spec>";
    pieces.formatParameters =
        "<format-parameters><formatter>simple</formatter></format-parameters>";
    pieces.execute = "<execute>printf '%s' '&lt;output>&lt;string>$val{key}&lt;/string>"
                     "&lt;/output>'</execute>";
    boxes_.Add("unlock", pieces);
    const ChildRun run =
        boxes_.Run({"--input", "STDIN"}, "box unlock --key\nopen sesame\nbox good\n");
    EXPECT_EQ(run.out, "Enter value for 'key': \nopen sesame\nfine\n");
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.status, 0);
}

TEST_F(ToolStreamTest, CommandsStandardInput_IsNotTheStream) {
    boxes_.AddShell("count", "printf '<output><string>%s</string></output>' \"$(wc -c)\"");
    const ChildRun run = boxes_.Run({"--input", "STDIN"}, "box count\nbox good\n");
    EXPECT_EQ(run.out, "0\nfine\n");
    EXPECT_EQ(run.status, 0);
}

TEST_F(ToolStreamTest, GivenTwice_IsRefused) {
    const std::string file = boxes_.Write("lines", "box good\n");
    const ChildRun run = boxes_.Run({"--input", file, "--input", file});
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, "Only one --input dispatch parameter is allowed\n");
    EXPECT_EQ(run.status, 1);
}

TEST_F(ToolStreamTest, OtherMistakesBesideInput_AreNotReported) {
    const ChildRun run = RunLines("box good\n", {"--foo=1", "--format-param", "nonsense"});
    EXPECT_EQ(run.out, "fine\n");
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.status, 0);
}

TEST_F(ToolStreamTest, CommandBesideInput_IsNotRun) {
    const std::string file = boxes_.Write("lines", "box good\n");
    const ChildRun run = boxes_.Run({"--input", file, "box", "bad"});
    EXPECT_EQ(run.out, "fine\n");
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.status, 0);
}

TEST_F(ToolStreamTest, FileThatBreaksOff_IsReportedAndEndsWith1) {
    const ChildRun run = RunTool({"--input", "/proc/self/mem"});
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, "Unable to read all of file /proc/self/mem: Input/output error\n");
    EXPECT_EQ(run.status, 1);
}

TEST_F(ToolStreamTest, StandardInputThatBreaksOff_IsReportedAndEndsWith1) {
    const ChildRun run = TestSupport::RunInChild([&] {
        dup2(open("/", O_RDONLY | O_CLOEXEC), STDIN_FILENO);
        BecomeTool({"--input", "STDIN"});
    });
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, "Unable to read all of standard input: Is a directory\n");
    EXPECT_EQ(run.status, 1);
}

TEST_F(ToolStreamTest, FifoAsAFile_IsReadToItsEnd) {
    const std::string fifo = boxes_.Write("fifo", "");
    std::filesystem::remove(fifo);
    ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
    std::thread writer([&] { std::ofstream(fifo) << "box bad\nbox good\n"; });
    const ChildRun run = boxes_.Run({"--input", fifo});
    writer.join();
    EXPECT_EQ(run.out, "fine\n");
    EXPECT_EQ(run.err, kSpoilt);
    EXPECT_EQ(run.status, 0);
}

TEST_F(ToolStreamTest, LongFile_IsReadWhole) {
    const std::string comments(40'000, '#');
    const ChildRun run = RunLines("box good\n#" + comments + "\nbox good\n#" + comments +
                                  "\nbox say --text " + std::string(70'000, 'x'));
    EXPECT_EQ(run.out, "fine\nfine\n" + std::string(70'000, 'x') + "\n");
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.status, 0);
}

/// Names of what cannot be opened as a file of lines.
class ToolUnreadableInputTest : public testing::TestWithParam<std::string> {};

TEST_P(ToolUnreadableInputTest, IsReportedAndEndsWith1) {
    const ChildRun run = RunTool({"--input", GetParam()});
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, "Unable to open file " + GetParam() + "\n");
    EXPECT_EQ(run.status, 1);
}

INSTANTIATE_TEST_SUITE_P(Names, ToolUnreadableInputTest,
                         testing::Values("/nowhere/lines", "/", "/dev/null/lines", ""));

} // namespace
