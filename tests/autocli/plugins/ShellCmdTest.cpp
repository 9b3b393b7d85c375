#include <CppTools/autocli/plugins/ShellCmd.h>

#include <gtest/gtest.h>
#include <tests/support/EnvironmentVariable.h>
#include <tests/support/NamedRow.h>
#include <tests/support/OpenDescriptors.h>
#include <tests/support/ShellRunning.h>
#include <tests/support/StreamCapture.h>

#include <algorithm>
#include <csignal>
#include <cstddef>
#include <fcntl.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using CppTools::AutoCli::AutoCli_ShellCmd;
using CppTools::AutoCli::AutoCli_ShellCmdWithNelUsername;
using TestSupport::CountOpenDescriptors;
using TestSupport::EnvironmentVariable;
using TestSupport::HasNoChild;
using TestSupport::kRowName;
using TestSupport::NamedRow;
using TestSupport::RunInShell;
using TestSupport::SignalHandling;
using TestSupport::StreamCapture;

constexpr std::size_t kTenMegabytes = 10UL * 1024 * 1024;

TEST(ShellCmdTest, Output_IsWhatTheCommandPrints) {
    EXPECT_EQ(RunInShell("echo hello; printf 'two\\nlines'").output, "hello\ntwo\nlines");
}

TEST(ShellCmdTest, Output_IsAppended) {
    std::string output = "before ";
    AutoCli_ShellCmd("printf one", output, "");
    AutoCli_ShellCmd("printf ' two'", output, "");
    EXPECT_EQ(output, "before one two");
}

TEST(ShellCmdTest, Output_OfASilentCommandIsEmpty) {
    const auto run = RunInShell("exit 4");
    EXPECT_EQ(run.output, "");
    EXPECT_TRUE(WIFEXITED(run.status));
    EXPECT_EQ(WEXITSTATUS(run.status), 4);
}

TEST(ShellCmdTest, Output_KeepsEveryByte) {
    EXPECT_EQ(RunInShell("printf 'a\\000b\\377\\n\\n'").output, std::string("a\0b\xFF\n\n", 6));
}

TEST(ShellCmdTest, Output_MayBeLarge) {
    const auto run = RunInShell("head -c 10485760 /dev/zero | tr '\\0' x");
    EXPECT_EQ(run.output.size(), kTenMegabytes);
    EXPECT_EQ(std::count(run.output.begin(), run.output.end(), 'x'),
              static_cast<std::ptrdiff_t>(kTenMegabytes));
    EXPECT_EQ(run.status, 0);
}

class ChunkTest : public testing::TestWithParam<int> {};

TEST_P(ChunkTest, Output_OfAnyLengthArrivesWhole) {
    const std::string length = std::to_string(GetParam());
    EXPECT_EQ(RunInShell("head -c " + length + " /dev/zero | tr '\\0' y").output,
              std::string(static_cast<std::size_t>(GetParam()), 'y'));
}

INSTANTIATE_TEST_SUITE_P(Lengths, ChunkTest, testing::Values(1, 1023, 1024, 1025, 2048, 65537));

TEST(ShellCmdTest, Output_StandardErrorStaysTheCallers) {
    StreamCapture standardError(STDERR_FILENO);
    const auto run = RunInShell("echo out; echo err >&2");
    EXPECT_EQ(standardError.Take(), "err\n");
    EXPECT_EQ(run.output, "out\n");
}

TEST(ShellCmdTest, Input_ReachesTheCommand) {
    EXPECT_EQ(RunInShell("cat", "some\ninput").output, "some\ninput");
    EXPECT_EQ(RunInShell("read line; echo \"[$line]\"", "first\nsecond\n").output, "[first]\n");
}

TEST(ShellCmdTest, Input_KeepsEveryByte) {
    const std::string input("a\0b\xFF\n", 5);
    EXPECT_EQ(RunInShell("cat", input).output, input);
}

TEST(ShellCmdTest, Input_EmptyIsEndOfFileAtOnce) {
    EXPECT_EQ(RunInShell("cat; echo end").output, "end\n");
    EXPECT_EQ(RunInShell("read line || echo none").output, "none\n");
}

TEST(ShellCmdTest, Input_EndsWithEndOfFile) {
    EXPECT_EQ(RunInShell("cat; echo end", "text ").output, "text end\n");
}

TEST(ShellCmdTest, Input_MayBeLarge) {
    EXPECT_EQ(RunInShell("wc -c", std::string(kTenMegabytes, 'x')).output, "10485760\n");
}

TEST(ShellCmdTest, Input_IsWrittenBeforeOutputIsRead) {
    EXPECT_EQ(RunInShell("sort", "b\na\n").output, "a\nb\n");
}

TEST(ShellCmdTest, Input_MayBeReadLate) {
    EXPECT_EQ(RunInShell("echo done; cat >/dev/null", std::string(1000, 'x')).output, "done\n");
}

struct StatusRow : NamedRow {
    std::string command;
    int status;
};

class ShellCmdStatusTest : public testing::TestWithParam<StatusRow> {};

TEST_P(ShellCmdStatusTest, Status_IsAsWaitReportsIt) {
    EXPECT_EQ(RunInShell(GetParam().command).status, GetParam().status);
}

INSTANTIATE_TEST_SUITE_P(
    Ends, ShellCmdStatusTest,
    testing::Values(StatusRow{{"Success"}, "true", 0}, StatusRow{{"Empty"}, "", 0},
                    StatusRow{{"Failure"}, "false", W_EXITCODE(1, 0)},
                    StatusRow{{"Exit"}, "exit 3", W_EXITCODE(3, 0)},
                    StatusRow{{"ExitMax"}, "exit 255", W_EXITCODE(255, 0)},
                    StatusRow{{"NotFound"}, "/no/such/program 2>/dev/null", W_EXITCODE(127, 0)},
                    StatusRow{{"SyntaxError"}, "if 2>/dev/null", W_EXITCODE(2, 0)},
                    StatusRow{{"Killed"}, "kill -KILL $$", W_EXITCODE(0, SIGKILL)},
                    StatusRow{{"Terminated"}, "kill -TERM $$", W_EXITCODE(0, SIGTERM)}),
    kRowName);

TEST(ShellCmdTest, Command_IsShellLanguage) {
    EXPECT_EQ(RunInShell("for i in 1 2 3; do echo $i; done | tail -n 1 && echo ok").output,
              "3\nok\n");
}

TEST(ShellCmdTest, Command_ArgumentsAreShellOptionAndLine) {
    const std::string command = "cat /proc/$$/cmdline; :";
    EXPECT_EQ(RunInShell(command).output, std::string("/bin/sh\0-c\0", 11) + command + '\0');
}

TEST(ShellCmdTest, Command_InheritsTheEnvironment) {
    const EnvironmentVariable variable("CPPTOOLS_TEST_VARIABLE", "some value");
    EXPECT_EQ(RunInShell("echo \"$CPPTOOLS_TEST_VARIABLE\"").output, "some value\n");
}

TEST(ShellCmdTest, Command_HoldsNoEndOfItsOwnPipesBesidesItsStandardDescriptors) {
    EXPECT_EQ(
        RunInShell("first=$(readlink /proc/$$/fd/0); second=$(readlink /proc/$$/fd/1); own=0; "
                   "for link in /proc/$$/fd/*; do case $(readlink $link) in "
                   "\"$first\"|\"$second\") own=$((own + 1));; esac; done; echo $own")
            .output,
        "2\n");
}

TEST(ShellCmdTest, Command_HandlesSigpipeAsEverybodyDoes) {
    const SignalHandling plain(SIGPIPE, SIG_DFL);
    EXPECT_EQ(RunInShell("kill -PIPE $$").status, W_EXITCODE(0, SIGPIPE));
}

TEST(ShellCmdTest, Caller_KeepsNoChildAndNoDescriptor) {
    const auto before = CountOpenDescriptors();
    RunInShell("cat", "input");
    RunInShell("exit 1");
    RunInShell("kill -KILL $$");
    EXPECT_EQ(CountOpenDescriptors(), before);
    EXPECT_TRUE(HasNoChild());
}

/// A standard descriptor of this process is closed as long as this lives.
class ClosedDescriptor {
  public:
    explicit ClosedDescriptor(int descriptor)
        : descriptor_(descriptor), saved_(fcntl(descriptor, F_DUPFD_CLOEXEC, 100)) {
        close(descriptor_);
    }

    ClosedDescriptor(const ClosedDescriptor&) = delete;
    ClosedDescriptor& operator=(const ClosedDescriptor&) = delete;

    ~ClosedDescriptor() {
        dup2(saved_, descriptor_);
        close(saved_);
    }

  private:
    int descriptor_;
    int saved_;
};

TEST(ShellCmdTest, Caller_MayHaveNoStandardInput) {
    TestSupport::ShellRun run;
    {
        const ClosedDescriptor input(STDIN_FILENO);
        run = RunInShell("cat", "text");
    }
    EXPECT_EQ(run.output, "text");
    EXPECT_EQ(run.status, 0);
}

TEST(ShellCmdTest, Caller_MayHaveNeitherStandardInputNorOutput) {
    TestSupport::ShellRun run;
    {
        const ClosedDescriptor input(STDIN_FILENO);
        const ClosedDescriptor output(STDOUT_FILENO);
        run = RunInShell("cat", "text");
    }
    EXPECT_EQ(run.output, "text");
    EXPECT_EQ(run.status, 0);
}

struct UserRow : NamedRow {
    std::string user;
};

class UserNameTest : public testing::TestWithParam<UserRow> {};

TEST_P(UserNameTest, UserName_ReachesTheCommandUnchanged) {
    std::string output;
    const int status =
        AutoCli_ShellCmdWithNelUsername("printenv NEL_USERNAME", GetParam().user, output, "");
    EXPECT_EQ(output, GetParam().user + "\n");
    EXPECT_EQ(status, 0);
}

INSTANTIATE_TEST_SUITE_P(
    Names, UserNameTest,
    testing::Values(UserRow{{"Plain"}, "root"}, UserRow{{"Quote"}, "O'Brien"},
                    UserRow{{"Quotes"}, "'a''b'"}, UserRow{{"OnlyQuotes"}, "''"},
                    UserRow{{"Blanks"}, " two words "}, UserRow{{"Command"}, "x; echo injected"},
                    UserRow{{"Substitution"}, "$(echo x)`echo y`$HOME"},
                    UserRow{{"Backslash"}, "a\\'b\\"}, UserRow{{"LineEnd"}, "a\nb"},
                    UserRow{{"DoubleQuote"}, "a\"b"}),
    kRowName);

TEST(ShellCmdTest, UserName_EmptyAddsNothing) {
    const EnvironmentVariable unset("NEL_USERNAME", std::nullopt);
    std::string output;
    const int status = AutoCli_ShellCmdWithNelUsername("printenv NEL_USERNAME", "", output, "");
    EXPECT_EQ(output, "");
    EXPECT_EQ(status, W_EXITCODE(1, 0));
}

TEST(ShellCmdTest, UserName_TheRestIsAsWithout) {
    std::string output = "before ";
    const int status =
        AutoCli_ShellCmdWithNelUsername("sh -c 'cat; exit 7'", "root", output, "input");
    EXPECT_EQ(output, "before input");
    EXPECT_EQ(status, W_EXITCODE(7, 0));
}

} // namespace
