#include <CppTools/autocli/plugins/ShellCmd.h>
#include <tests/support/FailingSystemCall.h>
#include <tests/support/OpenDescriptors.h>
#include <tests/support/Thrown.h>

#include <cerrno>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <string>
#include <sys/syscall.h>
#include <unistd.h>

using CppTools::AutoCli::AutoCli_ShellCmd;
using TestSupport::CountOpenDescriptors;
using TestSupport::ThrownBy;
using TestSupport::WithFailing;

namespace {

/// Runs a command without input and gives what it printed.
std::string OutputOf(const std::string& command) {
    std::string output;
    AutoCli_ShellCmd(command, output, "");
    return output;
}

TEST(ProcessSpawnTest, ArgumentWithANul_IsRefusedRatherThanCut) {
    const auto before = CountOpenDescriptors();
    const std::string command("echo a\0b", 8);
    std::string output;
    // The message holds the whole command; as a C string it ends where the command does.
    EXPECT_EQ(ThrownBy([&] { AutoCli_ShellCmd(command, output, ""); }),
              "Failed to call process 'echo a");
    EXPECT_EQ(output, "");
    EXPECT_EQ(CountOpenDescriptors(), before);
}

/// This process lacks a standard descriptor for a while.
class Missing {
  public:
    explicit Missing(int descriptor)
        : descriptor_(descriptor), saved_(fcntl(descriptor, F_DUPFD_CLOEXEC, STDERR_FILENO + 1)) {
        close(descriptor_);
    }

    Missing(const Missing&) = delete;
    Missing& operator=(const Missing&) = delete;

    ~Missing() {
        dup2(saved_, descriptor_);
        close(saved_);
    }

  private:
    const int descriptor_;
    const int saved_;
};

class PipeTest : public testing::TestWithParam<int> {
  private:
    const Missing missing_{GetParam()};
};

TEST_P(PipeTest, StandardDescriptorIsMissing_NeitherEndTakesItsPlace) {
    const auto before = CountOpenDescriptors();
    EXPECT_EQ(OutputOf("echo a"), "a\n");
    EXPECT_EQ(CountOpenDescriptors(), before);
}

TEST_P(PipeTest, EndCannotBeMoved_NeitherStaysOpen) {
    const auto before = CountOpenDescriptors();
    std::string message;
    WithFailing(SYS_fcntl, EMFILE, [&] { message = ThrownBy([] { OutputOf("echo a"); }); });
    EXPECT_EQ(message, "Can't create input pipe: Too many open files");
    EXPECT_EQ(CountOpenDescriptors(), before);
}

INSTANTIATE_TEST_SUITE_P(Streams, PipeTest,
                         testing::Values(STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO));

/// Says something on both output streams, as a hook of the host program may; asks for no option.
std::string SayOnBothStreams(int /*id*/) {
    for (const int stream : {STDOUT_FILENO, STDERR_FILENO}) {
        EXPECT_EQ(write(stream, "noise", 5), -1);
    }
    return "";
}

TEST(PipeStreamTest, OutputStreamsAreMissing_WhatIsSaidOnThemReachesNoChild) {
    const Missing output(STDOUT_FILENO);
    const Missing error(STDERR_FILENO);
    CppTools::AutoCli::SetChildRpZornOptionMaker(SayOnBothStreams);
    std::string text;
    AutoCli_ShellCmd("cat", text, "given");
    CppTools::AutoCli::SetChildRpZornOptionMaker(nullptr);
    EXPECT_EQ(text, "given");
}

} // namespace
