#include <CppTools/autocli/plugins/ShellCmd.h>

#include <gtest/gtest.h>
#include <tests/support/OpenDescriptors.h>
#include <tests/support/ShellRunning.h>
#include <tests/support/Thrown.h>

#include <algorithm>
#include <csignal>
#include <cstddef>
#include <fcntl.h>
#include <iterator>
#include <string>
#include <sys/resource.h>
#include <unistd.h>
#include <vector>

namespace {

using CppTools::AutoCli::AutoCli_ShellCmd;
using CppTools::AutoCli::AutoCli_ShellCmdWithNelUsername;
using TestSupport::CountOpenDescriptors;
using TestSupport::HasNoChild;
using TestSupport::ListenerLog;
using TestSupport::RunInShell;
using TestSupport::SignalHandling;
using TestSupport::ThrownBy;

/// More than any pipe holds.
std::string LargeInput() {
    return std::string(4UL * 1024 * 1024, 'x');
}

/// The longest line that the system takes is far shorter.
std::string TooLongCommand() {
    return "true #" + std::string(4UL * 1024 * 1024, 'x');
}

TEST(ShellCmdFailureTest, UnreadInput_IsAFailureToWrite) {
    const SignalHandling plain(SIGPIPE, SIG_DFL);
    EXPECT_EQ(ThrownBy([] { RunInShell("exit 0", LargeInput()); }),
              "Unable to write to sub-process: Broken pipe");
}

TEST(ShellCmdFailureTest, UnreadInput_ReadOnlyInPartIsAFailureToo) {
    const SignalHandling plain(SIGPIPE, SIG_DFL);
    EXPECT_EQ(ThrownBy([] { RunInShell("head -c 100000 >/dev/null", LargeInput()); }),
              "Unable to write to sub-process: Broken pipe");
}

TEST(ShellCmdFailureTest, UnreadInput_LeavesNoChildAndNoDescriptor) {
    const auto before = CountOpenDescriptors();
    ThrownBy([] { RunInShell("exit 0", LargeInput()); });
    EXPECT_TRUE(HasNoChild());
    EXPECT_EQ(CountOpenDescriptors(), before);
}

TEST(ShellCmdFailureTest, UnreadInput_TheListenerIsNotTold) {
    const ListenerLog log;
    ThrownBy([] { RunInShell("exit 0", LargeInput()); });
    EXPECT_TRUE(ListenerLog::Entries().empty());
}

volatile std::sig_atomic_t pipeSignals = 0;

TEST(ShellCmdFailureTest, UnreadInput_TheCallersHandlerOfSigpipeIsNotCalled) {
    const SignalHandling counting(SIGPIPE, [](int) { pipeSignals = pipeSignals + 1; });
    pipeSignals = 0;
    ThrownBy([] { RunInShell("exit 0", LargeInput()); });
    EXPECT_EQ(pipeSignals, 0);
}

TEST(ShellCmdFailureTest, UnreadInput_SignalsAreAsBeforeAfterwards) {
    const SignalHandling counting(SIGPIPE, [](int) { pipeSignals = pipeSignals + 1; });
    pipeSignals = 0;
    sigset_t before = {};
    sigset_t after = {};
    sigprocmask(SIG_SETMASK, nullptr, &before);
    ThrownBy([] { RunInShell("exit 0", LargeInput()); });
    sigprocmask(SIG_SETMASK, nullptr, &after);
    EXPECT_EQ(sigismember(&after, SIGPIPE), sigismember(&before, SIGPIPE));
    std::raise(SIGPIPE);
    EXPECT_EQ(pipeSignals, 1);
}

TEST(ShellCmdFailureTest, UnreadInput_ASignalThatWasWaitingStillWaits) {
    const SignalHandling counting(SIGPIPE, [](int) { pipeSignals = pipeSignals + 1; });
    pipeSignals = 0;
    sigset_t pipeSignal = {};
    sigemptyset(&pipeSignal);
    sigaddset(&pipeSignal, SIGPIPE);
    sigset_t before = {};
    sigprocmask(SIG_BLOCK, &pipeSignal, &before);
    std::raise(SIGPIPE);
    ThrownBy([] { RunInShell("exit 0", LargeInput()); });
    EXPECT_EQ(pipeSignals, 0);
    sigprocmask(SIG_SETMASK, &before, nullptr);
    EXPECT_EQ(pipeSignals, 1);
}

TEST(ShellCmdFailureTest, Start_ALineThatIsTooLongIsNamedWithTheReason) {
    const std::string command = TooLongCommand();
    const std::string message = ThrownBy([&] { RunInShell(command); });
    EXPECT_TRUE(message == "Failed to call process '" + command + "': Argument list too long")
        << message.substr(0, 40) << " ... " << message.substr(message.size() - 40);
}

TEST(ShellCmdFailureTest, Start_TheMessageShowsTheLineWithTheUserName) {
    const std::string command = TooLongCommand();
    std::string output;
    const std::string message =
        ThrownBy([&] { AutoCli_ShellCmdWithNelUsername(command, "root", output, ""); });
    EXPECT_TRUE(message == "Failed to call process 'NEL_USERNAME='root' " + command +
                               "': Argument list too long")
        << message.substr(0, 60) << " ... " << message.substr(message.size() - 40);
}

TEST(ShellCmdFailureTest, Start_AFailureLeavesNoChildNoDescriptorAndNoOutput) {
    const ListenerLog log;
    const auto before = CountOpenDescriptors();
    std::string output = "before";
    ThrownBy([&] { AutoCli_ShellCmd(TooLongCommand(), output, "input"); });
    EXPECT_EQ(output, "before");
    EXPECT_TRUE(HasNoChild());
    EXPECT_EQ(CountOpenDescriptors(), before);
    EXPECT_TRUE(ListenerLog::Entries().empty());
}

TEST(ShellCmdFailureTest, Wait_AChildThatTheSystemReapedIsAFailure) {
    const ListenerLog log;
    const auto before = CountOpenDescriptors();
    const SignalHandling reaping(SIGCHLD, SIG_IGN);
    EXPECT_EQ(ThrownBy([] { RunInShell("echo x; exit 3"); }),
              "Error waiting for process 'echo x; exit 3': No child processes");
    EXPECT_EQ(CountOpenDescriptors(), before);
    EXPECT_TRUE(ListenerLog::Entries().empty());
}

/// Leaves this process room for a given number of further descriptors and no more.
class RoomForDescriptors {
  public:
    explicit RoomForDescriptors(std::size_t count) {
        getrlimit(RLIMIT_NOFILE, &before_);
        rlimit narrow = before_;
        narrow.rlim_cur = 100;
        setrlimit(RLIMIT_NOFILE, &narrow);
        for (int taken = Open(); taken >= 0; taken = Open()) {
            taken_.push_back(taken);
        }
        for (; count > 0 && !taken_.empty(); --count) {
            close(taken_.back());
            taken_.pop_back();
        }
    }

    RoomForDescriptors(const RoomForDescriptors&) = delete;
    RoomForDescriptors& operator=(const RoomForDescriptors&) = delete;

    ~RoomForDescriptors() {
        for (const int descriptor : taken_) {
            close(descriptor);
        }
        setrlimit(RLIMIT_NOFILE, &before_);
    }

  private:
    static int Open() { return open("/dev/null", O_RDONLY | O_CLOEXEC); }

    rlimit before_ = {};
    std::vector<int> taken_;
};

std::string RefusalWithRoomFor(std::size_t count) {
    const RoomForDescriptors room(count);
    return ThrownBy([] { RunInShell("true"); });
}

TEST(ShellCmdFailureTest, Pipes_NoneForTheInput) {
    EXPECT_EQ(RefusalWithRoomFor(0), "Can't create input pipe: Too many open files");
    EXPECT_EQ(RefusalWithRoomFor(1), "Can't create input pipe: Too many open files");
}

TEST(ShellCmdFailureTest, Pipes_NoneForTheOutput) {
    EXPECT_EQ(RefusalWithRoomFor(2), "Can't create output pipe: Too many open files");
    EXPECT_EQ(RefusalWithRoomFor(3), "Can't create output pipe: Too many open files");
}

TEST(ShellCmdFailureTest, Pipes_AFailureClosesWhatWasOpened) {
    const auto before = CountOpenDescriptors();
    RefusalWithRoomFor(2);
    RefusalWithRoomFor(3);
    EXPECT_EQ(CountOpenDescriptors(), before);
}

/// Which descriptors of this process can be read.
std::vector<int> ReadableDescriptors() {
    std::vector<int> readable;
    for (int descriptor = 0; descriptor < 256; ++descriptor) {
        const int flags = fcntl(descriptor, F_GETFL);
        if (flags >= 0 && (flags & O_ACCMODE) != O_WRONLY) {
            readable.push_back(descriptor);
        }
    }
    return readable;
}

std::vector<int> readableBefore;

/// Replaces the end of the output pipe, the last descriptor to come that can be read, by one that
/// cannot.
std::string SpoilOutputPipe(int /*id*/) {
    const auto readable = ReadableDescriptors();
    std::vector<int> added;
    std::set_difference(readable.begin(), readable.end(), readableBefore.begin(),
                        readableBefore.end(), std::back_inserter(added));
    const int unreadable = open("/dev/null", O_WRONLY | O_CLOEXEC);
    dup3(unreadable, added.at(1), O_CLOEXEC);
    close(unreadable);
    return "";
}

TEST(ShellCmdFailureTest, Read_AFailureIsToldAndLeavesNoChildAndNoDescriptor) {
    const ListenerLog log;
    const auto before = CountOpenDescriptors();
    readableBefore = ReadableDescriptors();
    CppTools::AutoCli::SetChildRpZornOptionMaker(SpoilOutputPipe);
    std::string output = "before";
    EXPECT_EQ(ThrownBy([&] { AutoCli_ShellCmd("exit 3", output, ""); }),
              "Unable to read from sub-process: Bad file descriptor");
    EXPECT_EQ(output, "before");
    EXPECT_TRUE(HasNoChild());
    EXPECT_EQ(CountOpenDescriptors(), before);
    EXPECT_TRUE(ListenerLog::Entries().empty());
}

volatile std::sig_atomic_t interruptions = 0;

/// Commands that send this process signals while it waits for them.
class InterruptedShellCmdTest : public testing::Test {
  protected:
    InterruptedShellCmdTest() { interruptions = 0; }

    /// Sends its signals only while this process sleeps in the call that is to be interrupted.
    static std::string Interrupting(const std::string& before, const std::string& behind) {
        return before +
               " for i in 1 2 3; do"
               " while grep -qs '^State:.[RD]' /proc/$PPID/status; do :; done;"
               " kill -USR1 $PPID; done; " +
               behind;
    }

  private:
    // Without SA_RESTART: the calls that the library makes do end with EINTR.
    const SignalHandling handling_{SIGUSR1, [](int) { interruptions = interruptions + 1; }};
};

TEST_F(InterruptedShellCmdTest, Write_IsRetried) {
    EXPECT_EQ(RunInShell(Interrupting("", "wc -c"), LargeInput()).output, "4194304\n");
    EXPECT_GT(interruptions, 0);
}

TEST_F(InterruptedShellCmdTest, Read_IsRetried) {
    EXPECT_EQ(RunInShell(Interrupting("printf a;", "printf b")).output, "ab");
    EXPECT_GT(interruptions, 0);
}

TEST_F(InterruptedShellCmdTest, Wait_IsRetried) {
    const auto run = RunInShell(Interrupting("printf a; exec >&-;", "exit 9"));
    EXPECT_EQ(run.output, "a");
    EXPECT_EQ(run.status, W_EXITCODE(9, 0));
    EXPECT_GT(interruptions, 0);
}

} // namespace
