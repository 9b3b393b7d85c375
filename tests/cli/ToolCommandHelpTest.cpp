#include "Boxes.h"

#include <gtest/gtest.h>
#include <string>

using Cli::BecomeTool;
using Cli::Boxes;
using Cli::RunTool;
using Cli::Words;
using TestSupport::ChildRun;
using TestSupport::ParameterElement;

namespace {

const std::string kListHelp =
    "Usage: tandril tandril command list <options>\n"
    "\n"
    "Description: List all of the tandril commands.\n"
    "\n"
    "  -c|--command-filter       Show only commands containing the specified string in their "
    "name.\n"
    "  -d|--description-filter   Show only commands containing the specified string in their "
    "description.\n"
    "  -n|--namespace-filter     Show only commands containing the specified string in their "
    "namespace path.\n"
    "  -h|--help                 Show the help message.\n";

/// A command with every flag that help shows, and with each placeholder in a description.
void AddOpen(const Boxes& boxes) {
    TestSupport::CommandPieces pieces;
    pieces.description = "<description>Open a box.\nTwice.</description>";
    pieces.inputSpec =
        "<input-spec>" +
        ParameterElement(
            R"(name="mode" type="string" shortname="m" required="true")",
            "<description>How to open, one of %ENUM%.</description>"
            "<constraint type=\"stringenum\"><enum>"
            "<enum-value value=\"fast\">Breaks it.</enum-value>"
            "<enum-value value=\"slow\">Takes time.</enum-value></enum></constraint>") +
        ParameterElement(R"(name="key" type="string" secret="true" required="true")",
                         "<description>The key.</description>") +
        ParameterElement(R"(name="pin" type="string" secret="true")",
                         "<description>The pin.</description>") +
        ParameterElement(R"(name="times" type="int")",
                         "<description>How often (%REGEX%).</description>"
                         "<constraint type=\"range\"><range min=\"1\" max=\"3\"/></constraint>") +
        "</input-spec>";
    boxes.Add("open", pieces);
}

const std::string kOpenHelp =
    "Usage: tandril box open <options>\n"
    "\n"
    "Description: Open a box.\n"
    "Twice.\n"
    "\n"
    "     --key     The key. (required secret)\n"
    "               WARNING: Providing secret values on the command line is insecure because it "
    "may be logged or preserved in history files. Instead, specify this option with no value on "
    "the command line, and enter the value on the supplied prompt.\n"
    "  -m|--mode    How to open, one of [fast, slow]. (required)\n"
    "     --pin     The pin. (secret)\n"
    "               WARNING: Providing secret values on the command line is insecure because it "
    "may be logged or preserved in history files. Instead, specify this option with no value on "
    "the command line, and enter the value on the supplied prompt.\n"
    "     --times   How often (integer in the range 1-3).\n"
    "  -h|--help    Show the help message.\n";

/// Option words that ask for help about a command.
class ToolCommandHelpTest : public testing::TestWithParam<Words> {};

TEST_P(ToolCommandHelpTest, IsPrintedInsteadOfRunningAndEndsWith0) {
    const ChildRun run = RunTool(Cli::Join({"tandril", "command", "list"}, GetParam()));
    EXPECT_EQ(run.out, kListHelp);
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.status, 0);
}

INSTANTIATE_TEST_SUITE_P(Options, ToolCommandHelpTest,
                         testing::Values(Words{"--help"}, Words{"-h"}, Words{"--help", "word"},
                                         Words{"--help=no"}, Words{"-h", "-h"},
                                         Words{"--unknown=1", "-h"},
                                         Words{"-c", "a", "-c", "b", "--help"}));

TEST(ToolCommandHelpTextTest, RequiredAndSecretOptions_AreMarkedAndWarnedAbout) {
    Boxes boxes;
    AddOpen(boxes);
    const ChildRun run = boxes.Run({"box", "open", "--help"});
    EXPECT_EQ(run.out, kOpenHelp);
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.status, 0);
}

TEST(ToolCommandHelpTextTest, Usage_NamesTheToolAsItWasCalled) {
    const ChildRun run = TestSupport::RunInChild([] {
        BecomeTool({"tandril", "command", "list", "--help"}, "/opt/bin/t");
    });
    EXPECT_EQ(run.out,
              "Usage: /opt/bin/t" + kListHelp.substr(std::string("Usage: tandril").size()));
}

TEST(ToolCommandHelpTextTest, Formatter_ShowsTheHelpRecordItself) {
    Boxes boxes;
    boxes.AddShell("plain", "true");
    const ChildRun run = boxes.Run({"--formatter", "python", "box", "plain", "--help"});
    EXPECT_EQ(run.out,
              "{\"Description\": \"\"\"Runs.\"\"\", \"Dispatcher\": \"\"\"tandril\"\"\", "
              "\"Example List\": [], \"Param List\": [{\"Description\": \"\"\"Show the help "
              "message.\"\"\", \"Name\": \"\"\"help\"\"\", \"Required\": False, \"Secret\": False, "
              "\"Short Name\": \"\"\"h\"\"\", }, ], \"Path\": \"\"\"box plain\"\"\", }\n");
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.status, 0);
}

TEST(ToolCommandHelpTextTest, CommandsOwnFormat_HasNoEffectOnHelp) {
    Boxes boxes;
    boxes.AddDisks();
    const ChildRun run = boxes.Run({"box", "disks", "--help"});
    EXPECT_EQ(run.out, "Usage: tandril box disks <options>\n\n"
                       "Description: Show all disks.\n\n"
                       "  -h|--help   Show the help message.\n");
}

TEST(ToolCommandHelpTextTest, MissingRequiredOptions_DoNotMatterForHelp) {
    Boxes boxes;
    AddOpen(boxes);
    const ChildRun run = boxes.Run({"box", "open", "--times=9", "--mode=ajar", "-h"});
    EXPECT_EQ(run.out, kOpenHelp);
    EXPECT_EQ(run.status, 0);
}

/// A parameter that takes a name away from the built-in one, and what is said about it.
struct TakenName {
    std::string attributes;
    std::string message;
};

void PrintTo(const TakenName& taken, std::ostream* out) {
    *out << taken.attributes;
}

class ToolTakenHelpTest : public testing::TestWithParam<TakenName> {};

TEST_P(ToolTakenHelpTest, UseOfTheCommand_IsOneLineOnStandardErrorAndStatus1) {
    Boxes boxes;
    TestSupport::CommandPieces pieces;
    pieces.inputSpec = "<input-spec>" +
                       ParameterElement(GetParam().attributes, "<description>Mine.</description>") +
                       "</input-spec>";
    boxes.Add("own", pieces);
    const ChildRun run = boxes.Run({"box", "own"});
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, GetParam().message + "\n");
    EXPECT_EQ(run.status, 1);
}

INSTANTIATE_TEST_SUITE_P(
    Names, ToolTakenHelpTest,
    testing::Values(
        TakenName{R"(name="help" type="bool")",
                  "Found a duplicate paramater specification for parameter named 'help'"},
        TakenName{R"(name="host" type="string" shortname="h")",
                  "Invalid short name specified for --help. The short name -h is already used for "
                  "--host"}));

} // namespace
