#include "CliDispatcherFixture.h"

#include <tests/support/CommandDescriptor.h>
#include <tests/support/TempDirectory.h>
#include <tests/support/Thrown.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sstream>
#include <string>

using testing::ElementsAre;
using TestSupport::ListingHead;
using TestSupport::PrintedBy;
using TestSupport::TempDirectory;
using TestSupport::ThrownBy;

namespace {

/// The plug-in of an extension command, "demo run", that gives 5.
std::string DemoDescriptor() {
    TestSupport::CommandPieces pieces;
    pieces.outputSpec = "<output-spec><int/></output-spec>";
    pieces.formatParameters =
        "<format-parameters><formatter>simple</formatter></format-parameters>";
    pieces.execute =
        "<execute>echo '&lt;output&gt;&lt;int&gt;5&lt;/int&gt;&lt;/output&gt;'</execute>";
    return TestSupport::CommandDescriptor(pieces);
}

class CliDispatcherStreamTest : public TestSupport::CliDispatcherFixture {
  protected:
    bool Stream(const std::string& lines) {
        std::istringstream stream(lines);
        bool result = false;
        printed = PrintedBy([&] { result = dispatcher.ParseStreamInput(stream); });
        return result;
    }

    const TempDirectory directory;
};

TEST_F(CliDispatcherStreamTest, NoLines_Succeed) {
    EXPECT_TRUE(Stream(""));
    EXPECT_EQ(printed.out + printed.err, "");
}

TEST_F(CliDispatcherStreamTest, BlankLinesAndComments_Succeed) {
    EXPECT_TRUE(Stream("\n  \t\n# system fail\n   # more\n"));
    EXPECT_EQ(printed.out + printed.err, "");
}

TEST_F(CliDispatcherStreamTest, EveryLine_IsHandled) {
    EXPECT_TRUE(Stream("system count\nsystem echo --text=\"a b\" # a comment\n"));
    EXPECT_EQ(printed.out, "7\na b\n");
    EXPECT_EQ(printed.err, "");
}

TEST_F(CliDispatcherStreamTest, LastLineWithoutALineEnd_IsHandled) {
    EXPECT_TRUE(Stream("system count\nsystem echo --text=end"));
    EXPECT_EQ(printed.out, "7\nend\n");
}

TEST_F(CliDispatcherStreamTest, Result_IsThatOfTheLastLine) {
    EXPECT_TRUE(Stream("system fail\nsystem count\n"));
    EXPECT_FALSE(Stream("system count\nsystem fail\n"));
}

TEST_F(CliDispatcherStreamTest, Result_IsNotChangedByBlankLinesAndComments) {
    EXPECT_FALSE(Stream("system fail\n\n# a comment\n  \n"));
    EXPECT_TRUE(Stream("system count\n\n# a comment\n"));
}

TEST_F(CliDispatcherStreamTest, FailingLine_IsReportedAndTheNextIsHandled) {
    EXPECT_TRUE(Stream("system fail\nsystem count --speed=1\nsystem count\n"));
    EXPECT_EQ(printed.out, "7\n");
    EXPECT_EQ(printed.err, "Errors: \nfirst\nsecond\nErrors: \nUnknown parameter : speed\n");
}

TEST_F(CliDispatcherStreamTest, Listing_Fails) {
    EXPECT_FALSE(Stream("system\n"));
    EXPECT_THAT(printed.out, testing::StartsWith(ListingHead("tandril", " system")));
}

TEST_F(CliDispatcherStreamTest, Options_ApplyToTheirLineOnly) {
    EXPECT_TRUE(Stream("--formatter=probe system count\nsystem count\n"));
    EXPECT_EQ(printed.out, "probe\n7\n");
}

TEST_F(CliDispatcherStreamTest, PlugInsAndScreenWidth_Last) {
    const std::string plugin = directory.Write("demo.xml", DemoDescriptor());
    EXPECT_TRUE(Stream("--plugin=" + plugin + " --screen-width=61 system count\n" +
                       "demo run\n--formatter=probe demo run\n"));
    EXPECT_EQ(printed.out, "7\n5\nprobe\n");
    EXPECT_EQ(printed.err, "");
    EXPECT_EQ(probe->seenWidth, 61);
}

TEST_F(CliDispatcherStreamTest, PlugInOfTheSameLine_IsAlreadyLoaded) {
    const std::string plugin = directory.Write("demo.xml", DemoDescriptor());
    EXPECT_TRUE(Stream("--plugin " + plugin + " demo run\n"));
    EXPECT_EQ(printed.out, "5\n");
}

TEST_F(CliDispatcherStreamTest, Input_IsNotHonoured) {
    const std::string lines = directory.Write("lines", "system echo --text=inner\n");
    EXPECT_FALSE(Stream("--input=" + lines + " system count\n"));
    EXPECT_EQ(printed.out, "");
    EXPECT_EQ(printed.err, "Errors: \nUnknown dispatcher parameter: input\n");
    EXPECT_EQ(count->runs, 0);
}

TEST_F(CliDispatcherStreamTest, UnknownName_IsThrownAndEndsTheStream) {
    std::istringstream stream("system nothing\nsystem count\n");
    EXPECT_EQ(ThrownBy([&] { dispatcher.ParseStreamInput(stream); }),
              "Unable to find a command or namespace with the name 'nothing' in namespace system");
    EXPECT_EQ(count->runs, 0);
}

/// Lines that come from the file of the option "input".
class CliDispatcherInputTest : public CliDispatcherStreamTest {};

TEST_F(CliDispatcherInputTest, File_IsReadAndItsResultCounts) {
    const std::string good = directory.Write("good", "system fail\nsystem count\n");
    EXPECT_TRUE(Handle({"--input", good}, true));
    EXPECT_EQ(printed.out, "7\n");
    EXPECT_EQ(printed.err, "Errors: \nfirst\nsecond\n");
    const std::string bad = directory.Write("bad", "system count\nsystem fail\n");
    EXPECT_FALSE(Handle({"--input", bad}, true));
}

TEST_F(CliDispatcherInputTest, EmptyFile_Succeeds) {
    EXPECT_TRUE(Handle({"--input", directory.Write("empty", "")}, true));
    EXPECT_EQ(printed.out + printed.err, "");
}

TEST_F(CliDispatcherInputTest, PathAndErrorsOfTheLineItself_AreNotLookedAt) {
    const std::string lines = directory.Write("lines", "system echo --text=inner\n");
    EXPECT_TRUE(Handle(
        {"--input", lines, "--foo=1", "--formatter", "--format-param=bad", "system", "count"},
        true));
    EXPECT_EQ(printed.out, "inner\n");
    EXPECT_EQ(printed.err, "");
    EXPECT_EQ(count->runs, 0);
}

TEST_F(CliDispatcherInputTest, LinesInTheFile_MayNotNameAnother) {
    const std::string inner = directory.Write("inner", "system count\n");
    const std::string outer = directory.Write("outer", "--input=" + inner + " system count\n");
    EXPECT_FALSE(Handle({"--input", outer}, true));
    EXPECT_EQ(printed.out, "");
    EXPECT_EQ(printed.err, "Errors: \nUnknown dispatcher parameter: input\n");
}

TEST_F(CliDispatcherInputTest, PlugInsOfTheLine_ServeTheFile) {
    const std::string plugin = directory.Write("demo.xml", DemoDescriptor());
    const std::string lines = directory.Write("lines", "demo run\n");
    EXPECT_TRUE(Handle({"--input", lines, "--plugin", plugin}, true));
    EXPECT_EQ(printed.out, "5\n");
}

TEST_F(CliDispatcherInputTest, MissingFile_IsReported) {
    EXPECT_FALSE(Handle({"--input", directory / "missing", "system", "count"}, true));
    EXPECT_EQ(printed.out, "");
    EXPECT_EQ(printed.err, "Unable to open file " + directory / "missing" + "\n");
    EXPECT_EQ(count->runs, 0);
}

TEST_F(CliDispatcherInputTest, WithoutAValue_IsAFileThatCannotBeOpened) {
    EXPECT_FALSE(Handle({"--input"}, true));
    EXPECT_EQ(printed.out, "");
    EXPECT_EQ(printed.err, "Unable to open file \n");
}

TEST_F(CliDispatcherInputTest, Directory_IsAFileThatCannotBeOpened) {
    EXPECT_FALSE(Handle({"--input", directory.Path()}, true));
    EXPECT_EQ(printed.out, "");
    EXPECT_EQ(printed.err, "Unable to open file " + directory.Path() + "\n");
}

TEST_F(CliDispatcherInputTest, Twice_IsReportedAndNothingRead) {
    const std::string lines = directory.Write("lines", "system count\n");
    EXPECT_FALSE(Handle({"--input", lines, "--input", lines}, true));
    EXPECT_EQ(printed.out, "");
    EXPECT_EQ(printed.err, "Only one --input dispatch parameter is allowed\n");
    EXPECT_EQ(count->runs, 0);
}

} // namespace
