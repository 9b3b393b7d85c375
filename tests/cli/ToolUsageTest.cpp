#include "Boxes.h"

#include <gtest/gtest.h>
#include <string>

using Cli::BecomeTool;
using Cli::Boxes;
using Cli::RunTool;
using Cli::Words;
using TestSupport::ChildRun;
using TestSupport::RunInChild;

namespace {

std::string UsageOf(const std::string& name) {
    return name + " [dispatcher options] <namespaces> <command> [options]\n" +
           "      For a list of available namespaces run " + name +
           " with no arguments.  \n"
           "      Objects can be listed by specifying just the namespace.\n"
           "      Commands can be listed by specifying the namespace and object.\n"
           "\n"
           " Dispatcher Options: \n"
           "       --plugin-dir                    Add all the plug-ins from this directory\n"
           "       --plugin                        Add a specific file plugin.  (Multiple "
           "--plugin options can be passed.)\n"
           "       --formatter <formatter>         Override the formatter to use for a given "
           "command\n"
           "       --format-param <key>=<value>    Set a formatter parameter to give the "
           "formatter information about how to format the command\n"
           "       --screen-width <width>          Use the specified screen width when "
           "formatting text\n"
           "    -h|--help                          Show this message.\n"
           "\n";
}

std::string RootListingOf(const std::string& name) {
    return "Usage: " + name +
           " [disp options] <namespaces> <command>\n"
           "\n"
           "For help please run " +
           name +
           " --help\n"
           "\n"
           "Available Namespaces: \n"
           "\n"
           "tandril  Commands that operate on the tandril system itself allowing users to get "
           "additional information.\n"
           "\n"
           "Available Commands: \n"
           "\n"
           "\n";
}

/// Option words that ask for the usage text.
class ToolUsageTextTest : public testing::TestWithParam<Words> {};

TEST_P(ToolUsageTextTest, IsPrintedInsteadOfEverythingElseAndEndsWith1) {
    const ChildRun run = RunTool(GetParam());
    EXPECT_EQ(run.out, UsageOf("tandril"));
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.status, 1);
}

INSTANTIATE_TEST_SUITE_P(Options, ToolUsageTextTest,
                         testing::Values(Words{"--help"}, Words{"-h"}, Words{"--help=yes"},
                                         Words{"-h", "ignored"}, Words{"--help", "--formatter"},
                                         Words{"--frobnicate", "--help"},
                                         Words{"--input", "STDIN", "-h"},
                                         Words{"-h", "--plugin", "/nowhere.xml"},
                                         Words{"--formatter", "a", "--formatter", "b", "-h"},
                                         Words{"--help", "tandril", "command", "list", "--help"}));

TEST(ToolUsageTest, UsageText_NamesTheToolAsItWasCalled) {
    const ChildRun run = RunInChild([] { BecomeTool({"--help"}, "/opt/bin/other-name"); });
    EXPECT_EQ(run.out, UsageOf("/opt/bin/other-name"));
    EXPECT_EQ(run.status, 1);
}

TEST(ToolUsageTest, NoArguments_ListTheRootAndEndWith1) {
    const ChildRun run = RunTool({});
    EXPECT_EQ(run.out, RootListingOf("tandril"));
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.status, 1);
}

TEST(ToolUsageTest, RootListing_NamesTheToolAsItWasCalled) {
    EXPECT_EQ(RunInChild([] { BecomeTool({}, "./t"); }).out, RootListingOf("./t"));
}

TEST(ToolUsageTest, FirstWordIsEmpty_IsAPathThatNobodyHolds) {
    const ChildRun run = RunTool({""});
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, "Unable to find a command or namespace with the name '' in namespace \n");
    EXPECT_EQ(run.status, 1);
}

/// What stands in front of a listing, and what is said about it under the listing.
struct Complaint {
    Words words;
    std::string errors;
};

void PrintTo(const Complaint& complaint, std::ostream* out) {
    *out << testing::PrintToString(complaint.words);
}

class ToolDispatcherOptionTest : public testing::TestWithParam<Complaint> {};

TEST_P(ToolDispatcherOptionTest, Mistakes_AreReportedUnderAListing) {
    const ChildRun run = RunTool(GetParam().words);
    EXPECT_EQ(run.out, RootListingOf("tandril"));
    EXPECT_EQ(run.err, "Errors: \n" + GetParam().errors);
    EXPECT_EQ(run.status, 1);
}

TEST_P(ToolDispatcherOptionTest, Mistakes_KeepTheCommandFromRunning) {
    Boxes boxes;
    const std::string trace = boxes.Write("trace", "");
    boxes.AddShell("leave", "echo ran >'" + trace + "'");
    const ChildRun run =
        boxes.Run(Cli::Join(Cli::Join(GetParam().words, {"--screen-width=80"}), {"box", "leave"}));
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, "Errors: \n" + GetParam().errors);
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(Cli::ContentOf(trace), "");
}

INSTANTIATE_TEST_SUITE_P(
    Options, ToolDispatcherOptionTest,
    testing::Values(
        Complaint{{"--foo"}, "Unknown dispatcher parameter: foo\n"},
        Complaint{{"--foo=bar"}, "Unknown dispatcher parameter: foo\n"},
        Complaint{{"-x", "value"}, "Unknown dispatcher parameter: x\n"},
        Complaint{{"-f", "-g", "--foo", "-f"},
                  "Unknown dispatcher parameter: f\nUnknown dispatcher parameter: g\n"
                  "Unknown dispatcher parameter: foo\nUnknown dispatcher parameter: f\n"},
        Complaint{{"--formatter"},
                  "--formatter requires the name of the formatter to use for this command\n"},
        Complaint{{"--formatter", "xml", "--formatter", "json"},
                  "Only one --formatter option can be passed to a command\n"},
        Complaint{{"--formatter", "--formatter"},
                  "Only one --formatter option can be passed to a command\n"},
        Complaint{{"--format-param", "fields"}, "Unable to read format parameter fields\n"},
        Complaint{{"--format-param"}, "Unable to read format parameter \n"},
        Complaint{{"--format-param", "fields="}, "Unable to read format parameter fields=\n"},
        Complaint{{"--format-param", "=Name"}, "Unable to read format parameter =Name\n"},
        Complaint{{"--format-param", "a_b=c", "--format-param=units:Disk.Size=GB", "--format-param",
                   "fields/Name"},
                  "Unable to read format parameter a_b=c\n"
                  "Unable to read format parameter fields/Name\n"},
        Complaint{{"--format-param", "fields", "--formatter", "--zoo", "--ape"},
                  "Unknown dispatcher parameter: zoo\nUnknown dispatcher parameter: ape\n"
                  "--formatter requires the name of the formatter to use for this command\n"
                  "Unable to read format parameter fields\n"}));

} // namespace
