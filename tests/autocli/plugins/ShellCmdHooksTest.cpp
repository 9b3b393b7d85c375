#include <CppTools/autocli/plugins/ShellCmd.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <tests/support/ShellRunning.h>

#include <csignal>
#include <string>
#include <sys/wait.h>
#include <vector>

namespace {

using CppTools::AutoCli::AutoCli_ShellCmdWithNelUsername;
using CppTools::AutoCli::MakeChildRpZornOption;
using CppTools::AutoCli::Panic;
using CppTools::AutoCli::SetChildRpZornOptionMaker;
using CppTools::AutoCli::SetCommandExecListener;
using TestSupport::ListenerLog;
using TestSupport::RunInShell;

using Entries = std::vector<ListenerLog::Entry>;

/// Both hooks are empty again after each test.
class ShellCmdHooksTest : public testing::Test {
  protected:
    const ListenerLog log_;
};

TEST_F(ShellCmdHooksTest, Listener_IsToldOfEveryFinishedCommand) {
    RunInShell("exit 3");
    RunInShell("echo x; kill -KILL $$");
    EXPECT_EQ(ListenerLog::Entries(), (Entries{{"exit 3", W_EXITCODE(3, 0)},
                                               {"echo x; kill -KILL $$", W_EXITCODE(0, SIGKILL)}}));
}

TEST_F(ShellCmdHooksTest, Listener_NullEmptiesTheSlot) {
    SetCommandExecListener(nullptr);
    RunInShell("true");
    EXPECT_EQ(ListenerLog::Entries(), Entries{});
}

TEST_F(ShellCmdHooksTest, Listener_ALaterOneReplacesAnEarlierOne) {
    SetCommandExecListener([](const std::string& line, int status) {
        ListenerLog::Entries().push_back({"second: " + line, status});
    });
    RunInShell("true");
    EXPECT_EQ(ListenerLog::Entries(), (Entries{{"second: true", 0}}));
}

TEST_F(ShellCmdHooksTest, Listener_SeesTheLineWithTheUserName) {
    std::string output;
    AutoCli_ShellCmdWithNelUsername("true", "root", output, "");
    AutoCli_ShellCmdWithNelUsername("true", "O'Brien", output, "");
    AutoCli_ShellCmdWithNelUsername("true", "", output, "");
    EXPECT_EQ(ListenerLog::Lines(),
              (std::vector<std::string>{"NEL_USERNAME='root' true",
                                        "NEL_USERNAME='O'\\''Brien' true", "true"}));
}

TEST_F(ShellCmdHooksTest, OptionMaker_NoneMeansNoOption) {
    EXPECT_EQ(MakeChildRpZornOption(-1), "");
    EXPECT_EQ(MakeChildRpZornOption(7), "");
}

TEST_F(ShellCmdHooksTest, OptionMaker_IsAskedWithTheNumber) {
    SetChildRpZornOptionMaker([](int id) { return "option " + std::to_string(id); });
    EXPECT_EQ(MakeChildRpZornOption(-1), "option -1");
    EXPECT_EQ(MakeChildRpZornOption(7), "option 7");
}

TEST_F(ShellCmdHooksTest, OptionMaker_NullEmptiesTheSlot) {
    SetChildRpZornOptionMaker([](int) { return std::string("-e"); });
    SetChildRpZornOptionMaker(nullptr);
    EXPECT_EQ(MakeChildRpZornOption(-1), "");
    EXPECT_EQ(RunInShell("false; echo still here").output, "still here\n");
}

TEST_F(ShellCmdHooksTest, OptionMaker_ItsOptionStandsBehindTheShell) {
    SetChildRpZornOptionMaker([](int id) { return std::string(id == -1 ? "-e" : "-x"); });
    const std::string command = "cat /proc/$$/cmdline; :";
    EXPECT_EQ(RunInShell(command).output, std::string("/bin/sh\0-e\0-c\0", 14) + command + '\0');
}

TEST_F(ShellCmdHooksTest, OptionMaker_ItsOptionReachesTheShell) {
    SetChildRpZornOptionMaker([](int) { return std::string("-e"); });
    const auto run = RunInShell("echo before; false; echo behind");
    EXPECT_EQ(run.output, "before\n");
    EXPECT_EQ(run.status, W_EXITCODE(1, 0));
}

TEST_F(ShellCmdHooksTest, OptionMaker_AnEmptyOptionIsNone) {
    SetChildRpZornOptionMaker([](int) { return std::string(); });
    const std::string command = "cat /proc/$$/cmdline; :";
    EXPECT_EQ(RunInShell(command).output, std::string("/bin/sh\0-c\0", 11) + command + '\0');
}

TEST_F(ShellCmdHooksTest, OptionMaker_TheListenerSeesTheLineAlone) {
    SetChildRpZornOptionMaker([](int) { return std::string("-e"); });
    RunInShell("true");
    EXPECT_EQ(ListenerLog::Lines(), std::vector<std::string>{"true"});
}

TEST(PanicDeathTest, Panic_WritesItsMessageAndAborts) {
    EXPECT_EXIT(Panic("%s failed with %d", "disk", 5), testing::KilledBySignal(SIGABRT),
                testing::Eq("panic: disk failed with 5"));
}

TEST(PanicDeathTest, Panic_AMessageOf255BytesIsWhole) {
    const std::string message(255, 'x');
    EXPECT_EXIT(Panic("%s", message.c_str()), testing::KilledBySignal(SIGABRT),
                testing::Eq("panic: " + message));
}

TEST(PanicDeathTest, Panic_ALongerMessageIsCut) {
    const std::string message = std::string(255, 'x') + "yz";
    EXPECT_EXIT(Panic("%s", message.c_str()), testing::KilledBySignal(SIGABRT),
                testing::Eq("panic: " + std::string(255, 'x')));
}

TEST(PanicDeathTest, Panic_WhatItPrintsIsNoFormat) {
    EXPECT_EXIT(Panic("%s", "100%s %n"), testing::KilledBySignal(SIGABRT),
                testing::Eq("panic: 100%s %n"));
}

} // namespace
