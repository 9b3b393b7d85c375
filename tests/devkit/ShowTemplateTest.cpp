#include "DevkitTool.h"

#include <tests/support/CommandDescriptor.h>

#include <gtest/gtest.h>

namespace {

using DevkitTest::RunDevkit;
using TestSupport::CommandPieces;
using TestSupport::ParameterElement;
using TestSupport::TempDirectory;

/// A command with a text, a flag and a list, which run this.
std::string Running(const std::string& line, const std::string& input = "") {
    const std::string description = "<description>A parameter.</description>";
    CommandPieces pieces;
    pieces.inputSpec =
        "<input-spec>" +
        ParameterElement("name='text' type='string' shortname='t' required='true'", description) +
        ParameterElement("name='force' type='flag'", description) +
        ParameterElement("name='size' type='int-list'", description) + "</input-spec>";
    pieces.execute = "<execute>" + line + "</execute>";
    pieces.standardInput = "<stdin>" + input + "</stdin>";
    return TestSupport::CommandDescriptor(pieces);
}

/// Shows demo.run of "a.xml" with these settings.
TestSupport::ChildRun Show(const TempDirectory& folder, const std::vector<std::string>& settings) {
    std::vector<std::string> words = {"plugin", "template",  "show",    "--file",
                                      "a.xml",  "--command", "demo.run"};
    for (const std::string& setting : settings) {
        words.insert(words.end(), {"--set", setting});
    }
    return RunDevkit(words, folder);
}

TEST(ShowTemplate, SimpleCommand_IsShownWithItsWords) {
    const TempDirectory folder;
    folder.Write("a.xml",
                 Running("touch trace -t '$val{text}'$if{force, -f} $multilist{size,-s,false}",
                         "text is $val{text}\n"));
    const auto run = Show(folder, {"text=it's; here", "force", "size=1", "size=2"});
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.out, "FilledTemplate:\n"
                       "   Line: touch trace -t 'its; here' -f  -s 1 -s 2\n"
                       "   Stdin: text is it's; here\n\n"
                       "   Form: a simple command\n"
                       "   Words: touch, trace, -t, its; here, -f, -s, 1, -s, 2\n");
    EXPECT_EQ(run.status, 0);
    EXPECT_FALSE(std::filesystem::exists(folder / "trace"));
}

TEST(ShowTemplate, MoreThanASimpleCommand_IsNamedAndNotDivided) {
    const TempDirectory folder;
    folder.Write("a.xml", Running("\ncat ~/x*  | sort $HOME # '$val{text}\n"));
    const auto run = Show(folder, {"t=a"});
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.out, "FilledTemplate:\n"
                       "   Line: \ncat ~/x*  | sort $HOME # 'a\n\n"
                       "   Stdin: \n"
                       "   Form: not a simple command: operators, expansions, patterns of file "
                       "names, a home directory, a comment\n"
                       "   Words: \n");
}

TEST(ShowTemplate, OpenQuote_IsNamed) {
    const TempDirectory folder;
    folder.Write("a.xml", Running("echo '"));
    EXPECT_NE(Show(folder, {"text=a"}).out.find("not a simple command: an open quote\n"),
              std::string::npos);
}

TEST(ShowTemplate, BadValues_AreRefusedAsInACall) {
    const TempDirectory folder;
    folder.Write("a.xml", Running("true"));
    const auto run = Show(folder, {"size=many", "none=1"});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, "Errors: \n"
                       "Unknown parameter : none\n"
                       "Invalid data 'many' for parameter size expected type Integer\n"
                       "Missing required parameter --text\n");
}

TEST(ShowTemplate, CallForHelp_IsRefused) {
    const TempDirectory folder;
    folder.Write("a.xml", Running("true"));
    EXPECT_EQ(Show(folder, {"help"}).err, "Errors: \nA call with --help runs nothing\n");
}

TEST(ShowTemplate, OtherPlaces_AreRefused) {
    const TempDirectory folder;
    folder.Write("a.xml", Running("true"));
    const std::vector<std::string> words = {"plugin", "template", "show", "--file", "a.xml"};
    const auto with = [&](const std::string& path) {
        auto all = words;
        all.insert(all.end(), {"--command", path});
        return RunDevkit(all, folder).err;
    };
    EXPECT_EQ(with("demo"),
              "Errors: \nError on command plugin template show : There is no command at 'demo'\n");
    EXPECT_EQ(with("demo.walk"),
              "Errors: \nError on command plugin template show : Unable to find a command or "
              "namespace with the name 'walk' in namespace demo\n");
    EXPECT_EQ(with("tandril.command.list"), "Errors: \nError on command plugin template show : "
                                            "There is no command at 'tandril.command.list'\n");
}

} // namespace
