#include "Boxes.h"

#include <tests/support/PseudoTerminal.h>

#include <gtest/gtest.h>
#include <string>

using Cli::BecomeTool;
using Cli::Boxes;
using Cli::DisksOn40Columns;
using Cli::RunTool;
using Cli::UnwrappedDisks;
using Cli::Words;
using TestSupport::PseudoTerminal;
using TestSupport::StatusOf;

namespace {

/// What the tool shows on a terminal of so many columns.
std::string ShownOn(unsigned short columns, const Words& words, int status = 0) {
    PseudoTerminal terminal(columns);
    const pid_t tool = terminal.Start([&] { BecomeTool(words); });
    const std::string screen = terminal.ReadRest();
    EXPECT_EQ(StatusOf(tool), status);
    return screen;
}

/// An option word for the width and whether it stands for 40 columns.
struct WidthWord {
    const char* word;
    bool isFor40;
};

void PrintTo(const WidthWord& width, std::ostream* out) {
    *out << width.word;
}

class ToolScreenWidthTest : public testing::TestWithParam<WidthWord> {
  protected:
    ToolScreenWidthTest() { boxes_.AddDisks(); }

    Words DisksAt(const std::string& word) const {
        return boxes_.WithPlugins({"--screen-width", word, "box", "disks"});
    }

    Boxes boxes_;
};

TEST_P(ToolScreenWidthTest, WithoutATerminal_OnlyAnAcceptedWordWraps) {
    const auto run = RunTool(DisksAt(GetParam().word));
    EXPECT_EQ(run.out, GetParam().isFor40 ? DisksOn40Columns() : UnwrappedDisks());
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.status, 0);
}

TEST_P(ToolScreenWidthTest, OnANarrowTerminal_OnlyAnAcceptedWordReplacesItsWidth) {
    // Too narrow for any wrapping: only another width shows the wrapped table.
    EXPECT_EQ(ShownOn(23, DisksAt(GetParam().word)),
              GetParam().isFor40 ? DisksOn40Columns() : UnwrappedDisks());
}

INSTANTIATE_TEST_SUITE_P(
    Words, ToolScreenWidthTest,
    testing::Values(WidthWord{"40", true}, WidthWord{"0x28", true}, WidthWord{"0X28", true},
                    WidthWord{"050", true}, WidthWord{"  +40", true}, WidthWord{"40columns", true},
                    WidthWord{"0", false}, WidthWord{"-40", false}, WidthWord{"10000", false},
                    WidthWord{"10040", false}, WidthWord{"65576", false}, WidthWord{"wide", false},
                    WidthWord{"0x", false}, WidthWord{"99999999999999999999", false}));

/// Tables and help on terminals of several widths.
class ToolTerminalTest : public testing::Test {
  protected:
    ToolTerminalTest() { boxes_.AddDisks(); }

    std::string DisksOn(unsigned short columns, const Words& options = {}) const {
        return ShownOn(columns, boxes_.WithPlugins(Cli::Join(options, {"box", "disks"})));
    }

    Boxes boxes_;
};

TEST_F(ToolTerminalTest, Table_IsWrappedToTheColumns) {
    EXPECT_EQ(DisksOn(40), DisksOn40Columns());
    EXPECT_EQ(DisksOn(68), UnwrappedDisks());
    EXPECT_EQ(DisksOn(67), "Name   Size  Ready  Note\n"
                           "-----  ----  -----  ----\n"
                           "sda     512  true   The first disk of the box, with the system on \n"
                           "                    it\n"
                           "sdb10    64  false  \n");
}

TEST_F(ToolTerminalTest, Table_IsNotWrappedWhereTheHeaderDoesNotFit) {
    EXPECT_EQ(DisksOn(24), "Name   Size  Ready  Note\n"
                           "-----  ----  -----  ----\n"
                           "sda     512  true   The \n"
                           "                    first \n"
                           "                    disk \n"
                           "                    of \n"
                           "                    the \n"
                           "                    box, \n"
                           "                    with \n"
                           "                    the \n"
                           "                    system \n"
                           "                    on \n"
                           "                    it\n"
                           "sdb10    64  false  \n");
    EXPECT_EQ(DisksOn(23), UnwrappedDisks());
}

TEST_F(ToolTerminalTest, TerminalOfNoColumns_WrapsNothing) {
    EXPECT_EQ(DisksOn(0), UnwrappedDisks());
}

TEST_F(ToolTerminalTest, WidestWidths_AreTheTerminalsAndTheOptions) {
    EXPECT_EQ(DisksOn(65535), UnwrappedDisks());
    EXPECT_EQ(DisksOn(40, {"--screen-width", "9999"}), UnwrappedDisks());
    EXPECT_EQ(DisksOn(40, {"--screen-width", "10000"}), DisksOn40Columns());
    EXPECT_EQ(DisksOn(40, {"--screen-width", "0"}), DisksOn40Columns());
    EXPECT_EQ(DisksOn(0, {"--screen-width", "40"}), DisksOn40Columns());
}

TEST_F(ToolTerminalTest, SmallestWidthOfTheOption_IsTaken) {
    EXPECT_EQ(DisksOn(40, {"--screen-width", "1"}), UnwrappedDisks());
}

TEST_F(ToolTerminalTest, OptionGivenTwice_TheLastCounts) {
    EXPECT_EQ(DisksOn(0, {"--screen-width", "30", "--screen-width", "40"}), DisksOn40Columns());
    EXPECT_EQ(DisksOn(40, {"--screen-width", "9999", "--screen-width", "0"}), DisksOn40Columns());
}

TEST_F(ToolTerminalTest, ColumnsVariable_IsNotRead) {
    const std::string wide = ShownOn(40, boxes_.WithPlugins({"box", "disks"}));
    PseudoTerminal terminal(40);
    const Words words = boxes_.WithPlugins({"box", "disks"});
    const pid_t tool = terminal.Start([&] {
        setenv("COLUMNS", "200", 1);
        BecomeTool(words);
    });
    EXPECT_EQ(terminal.ReadRest(), wide);
    EXPECT_EQ(StatusOf(tool), 0);
}

TEST_F(ToolTerminalTest, Help_IsWrappedInItsColumn) {
    EXPECT_EQ(ShownOn(60, {"tandril", "command", "list", "--help"}),
              "Usage: tandril tandril command list <options>\n"
              "\n"
              "Description: List all of the tandril commands.\n"
              "\n"
              "  -c|--command-filter       Show only commands containing \n"
              "                            the specified string in their \n"
              "                            name.\n"
              "  -d|--description-filter   Show only commands containing \n"
              "                            the specified string in their \n"
              "                            description.\n"
              "  -n|--namespace-filter     Show only commands containing \n"
              "                            the specified string in their \n"
              "                            namespace path.\n"
              "  -h|--help                 Show the help message.\n");
}

TEST_F(ToolTerminalTest, Help_IsNotWrappedWhereItsColumnDoesNotFit) {
    const std::string unwrapped = RunTool({"tandril", "command", "list", "--help"}).out;
    EXPECT_EQ(ShownOn(28, {"tandril", "command", "list", "--help"}), unwrapped);
    EXPECT_EQ(ShownOn(0, {"tandril", "command", "list", "--help"}), unwrapped);
}

TEST_F(ToolTerminalTest, Listing_IsWrappedInItsSecondColumn) {
    EXPECT_EQ(ShownOn(50, {}, 1), "Usage: tandril [disp options] <namespaces> <command>\n"
                                  "\n"
                                  "For help please run tandril --help\n"
                                  "\n"
                                  "Available Namespaces: \n"
                                  "\n"
                                  "tandril  Commands that operate on the tandril \n"
                                  "         system itself allowing users to get \n"
                                  "         additional information.\n"
                                  "\n"
                                  "Available Commands: \n"
                                  "\n"
                                  "\n");
}

TEST_F(ToolTerminalTest, OtherFormats_AreNotWrapped) {
    for (const char* formatter : {"simple", "xml", "json", "python"}) {
        SCOPED_TRACE(formatter);
        const Words words = boxes_.WithPlugins({"--formatter", formatter, "box", "disks"});
        EXPECT_EQ(ShownOn(30, words), RunTool(words).out);
    }
}

} // namespace
