#include "Samples.h"
#include "Tool.h"
#include "tests/support/StreamCapture.h"

#include <CppTools/autocli/CliDispatcher.h>
#include <CppTools/autocli/OptionParser.h>
#include <CppTools/autocli/plugins/ShellCmd.h>
#include <gtest/gtest.h>

using HostPack::AddSystemFacts;
using HostPack::Machine;
using HostPack::RunTool;
using HostPack::ToolOn;
using HostPack::Words;

namespace {

std::string& LastCommandLine() {
    static std::string line;
    return line;
}

void RememberCommandLine(const std::string& line, int) {
    LastCommandLine() = line;
}

TEST(SecretTest, GivenSecret_IsNotOnTheCommandLineOfTheProgram) {
    CppTools::AutoCli::CliDispatcher dispatcher;
    CppTools::AutoCli::OptionParser parser;
    parser.ParseVector({"--plugin-dir", HostPack::PackDirectory(), "--formatter", "json", "system",
                        "environment", "get", "--name=PATH", "--secret=sesame"});
    CppTools::AutoCli::SetCommandExecListener(RememberCommandLine);
    bool isSuccess = false;
    const auto printed =
        TestSupport::PrintedBy([&] { isSuccess = dispatcher.HandleOptions(parser, false); });
    CppTools::AutoCli::SetCommandExecListener(nullptr);

    EXPECT_TRUE(isSuccess);
    EXPECT_FALSE(nlohmann::json::parse(printed.out)[0]["Matches"]);
    EXPECT_TRUE(
        LastCommandLine().ends_with(std::string("'") + HOST_FACTS_PROGRAM +
                                    "' environment get --pid='$val{pid}' --name='PATH'  --compare"))
        << LastCommandLine();
}

TEST(SecretTest, SecretWithoutValue_IsAskedForAndCompared) {
    const auto run =
        RunTool("system environment get", {"--name=TOKEN", "--secret"},
                "open \"sesame\" $HOME 'x'\n", {{"TOKEN", "open \"sesame\" $HOME 'x'"}}, "python");
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.out, "Enter value for 'secret': \n"
                       "[{\"Matches\": True, \"Name\": \"\"\"TOKEN\"\"\", \"Size\": 23, "
                       "\"Value\": \"\"\"\"\"\", }, ]\n");
}

TEST(SecretTest, EmptySecret_MatchesWhatIsEmpty) {
    const auto run = RunTool("system environment get", {"--name=NOTHING", "--secret"}, "\n",
                             {{"NOTHING", ""}}, "python");
    EXPECT_EQ(run.out, "Enter value for 'secret': \n"
                       "[{\"Matches\": True, \"Name\": \"\"\"NOTHING\"\"\", \"Size\": 0, "
                       "\"Value\": \"\"\"\"\"\", }, ]\n");
}

} // namespace
