#include "Boxes.h"

#include <gtest/gtest.h>
#include <string>

using Cli::Boxes;
using Cli::RunTool;
using Cli::Words;
using TestSupport::ChildRun;
using TestSupport::NamespaceElement;

namespace {

/// A path and the part of its listing behind the line about help.
struct Place {
    Words path;
    std::string shownPath;
    std::string tables;
};

void PrintTo(const Place& place, std::ostream* out) {
    *out << testing::PrintToString(place.path);
}

std::string Listing(const std::string& shownPath, const std::string& tables) {
    return "Usage: tandril [disp options]" + shownPath +
           " <namespaces> <command>\n"
           "\n"
           "For help please run tandril --help\n"
           "\n" +
           tables;
}

/// A tree that is three namespaces deep and has commands at every depth.
std::string DeepTree() {
    using TestSupport::CommandElementAt;
    return TestSupport::Descriptor(
        TestSupport::NamespacesElement(NamespaceElement("deep", "Goes down.") +
                                       NamespaceElement("deep.downHill", "Goes on down.") +
                                       NamespaceElement("deep.downHill.end", "Has no more.") +
                                       NamespaceElement("deep.aside", "Stays.")) +
        TestSupport::CommandsElement(CommandElementAt("atTop") + CommandElementAt("deep.zeta") +
                                     CommandElementAt("deep.alpha") +
                                     CommandElementAt("deep.downHill.run")));
}

class ToolListingTest : public testing::TestWithParam<Place> {};

TEST_P(ToolListingTest, Place_IsListedInOrderOfNamesAndEndsWith1) {
    const TestSupport::TempDirectory directory;
    const std::string descriptor = directory.Write("deep.xml", DeepTree());
    const ChildRun run = RunTool(Cli::Join({"--plugin", descriptor}, GetParam().path));
    EXPECT_EQ(run.out, Listing(GetParam().shownPath, GetParam().tables));
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.status, 1);
}

const Place kPlaces[] = {
    {{},
     "",
     "Available Namespaces: \n\n"
     "deep     Goes down.\n"
     "tandril  Commands that operate on the tandril system itself allowing users to get "
     "additional information.\n\n"
     "Available Commands: \n\n"
     "atTop  Runs.\n\n"},
    {{"deep"},
     " deep",
     "Available Namespaces: \n\n"
     "aside     Stays.\n"
     "downHill  Goes on down.\n\n"
     "Available Commands: \n\n"
     "alpha  Runs.\n"
     "zeta   Runs.\n\n"},
    {{"deep", "downHill"},
     " deep downHill",
     "Available Namespaces: \n\n"
     "end   Has no more.\n\n"
     "Available Commands: \n\n"
     "run   Runs.\n\n"},
    {{"deep", "downHill", "end"},
     " deep downHill end",
     "Available Namespaces: \n\n\n"
     "Available Commands: \n\n\n"},
    {{"tandril"},
     " tandril",
     "Available Namespaces: \n\n"
     "command  Operations to get information about commands.\n\n"
     "Available Commands: \n\n\n"},
    {{"tandril", "command"},
     " tandril command",
     "Available Namespaces: \n\n\n"
     "Available Commands: \n\n"
     "list  List all of the tandril commands.\n\n"},
};

INSTANTIATE_TEST_SUITE_P(Depths, ToolListingTest, testing::ValuesIn(kPlaces));

TEST(ToolListingOptionTest, Formatter_HasNoEffectOnAListing) {
    const ChildRun plain = RunTool({"tandril"});
    const ChildRun run =
        RunTool({"--formatter", "json", "--format-param", "table-header=true", "tandril"});
    EXPECT_EQ(run.out, plain.out);
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.status, 1);
}

TEST(ToolListingOptionTest, UnknownFormatter_HasNoEffectOnAListing) {
    const ChildRun run = RunTool({"--formatter", "nonsense", "tandril"});
    EXPECT_EQ(run.out, RunTool({"tandril"}).out);
    EXPECT_EQ(run.err, "");
}

TEST(ToolListingOptionTest, OptionsBehindANamespace_AreNotRead) {
    const ChildRun run = RunTool({"tandril", "--anything", "goes", "here", "too"});
    EXPECT_EQ(run.out, RunTool({"tandril"}).out);
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.status, 1);
}

/// A path that leads nowhere and what is said about it.
struct WrongPath {
    Words path;
    std::string message;
};

void PrintTo(const WrongPath& wrong, std::ostream* out) {
    *out << testing::PrintToString(wrong.path);
}

class ToolWrongPathTest : public testing::TestWithParam<WrongPath> {};

TEST_P(ToolWrongPathTest, IsOneLineOnStandardErrorAndStatus1) {
    const ChildRun run = RunTool(GetParam().path);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, GetParam().message + "\n");
    EXPECT_EQ(run.status, 1);
}

INSTANTIATE_TEST_SUITE_P(
    Paths, ToolWrongPathTest,
    testing::Values(
        WrongPath{{"nothing"},
                  "Unable to find a command or namespace with the name 'nothing' in namespace "},
        WrongPath{{"tandril", "nothing", "more"},
                  "Unable to find a command or namespace with the name 'nothing' in namespace "
                  "tandril"},
        WrongPath{{"tandril", "command", "List"},
                  "Unable to find a command or namespace with the name 'List' in namespace "
                  "tandril command"},
        WrongPath{{"tandril", "command", "list", "extra", "words", "--help"},
                  "Unable to find a namespace or command with the name 'extra words' on the "
                  "command 'tandril command list'. Commands cannot have sub-commands or "
                  "sub-namespaces."},
        WrongPath{{"--foo", "--formatter", "json", "nothing"},
                  "Unable to find a command or namespace with the name 'nothing' in namespace "},
        WrongPath{
            {"--formatter=", "tandril"},
            "Unable to find a command or namespace with the name '--formatter=' in namespace "},
        WrongPath{{"-"}, "Unable to find a command or namespace with the name '-' in namespace "},
        WrongPath{{"-ab", "tandril"},
                  "Unable to find a command or namespace with the name '-ab' in namespace "}));

} // namespace
