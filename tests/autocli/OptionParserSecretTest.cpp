#include <CppTools/autocli/OptionParser.h>

#include <CppTools/callspec/InputSpec.h>
#include <tests/support/ChildRun.h>
#include <tests/support/FailingSystemCall.h>
#include <tests/support/PseudoTerminal.h>
#include <tests/support/ScriptedCommand.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <gtest/gtest.h>
#include <iostream>
#include <memory>
#include <string>
#include <sys/ioctl.h>
#include <system_error>
#include <unistd.h>
#include <vector>

using CppTools::AutoCli::OptionParser;
using CppTools::CallSpec::InputSpec;
using CppTools::CallSpec::ParameterSpec;
using CppTools::CallSpec::ParameterType;
using TestSupport::ChildRun;
using TestSupport::PseudoTerminal;
using TestSupport::RunInChild;
using TestSupport::StatusOf;
using TestSupport::WithFailingRequest;

namespace {

std::shared_ptr<InputSpec> SpecWithPassword() {
    const auto password = TestSupport::OptionalParameter("password", ParameterType::String, "p");
    password->SetSecret(true);
    auto spec = InputSpec::New();
    spec->AddParameter(password);
    spec->AddParameter(TestSupport::OptionalParameter("user", ParameterType::String));
    return spec;
}

/// Parses a command's options and prints what came out of them.
void ParseAndPrint(const std::vector<std::string>& words) {
    OptionParser parser;
    parser.ParseVector(words);
    parser.SetInputSpec(SpecWithPassword());
    for (const auto& [name, value] : parser.GetCommandParameters()) {
        std::cout << name << "='" << value << "'\n";
    }
    for (const std::string& error : parser.GetParseErrors()) {
        std::cout << error << '\n';
    }
}

ChildRun ParseInChild(const std::vector<std::string>& words, const std::string& input) {
    return RunInChild([&] { ParseAndPrint(words); }, input);
}

TEST(OptionParserSecretTest, WithoutAValue_IsPromptedForByTheLongName) {
    const ChildRun run = ParseInChild({"login", "--password"}, "hunter2\nnext\n");
    EXPECT_EQ(run.out, "Enter value for 'password': \npassword='hunter2'\n");
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.status, 0);
}

TEST(OptionParserSecretTest, ShortNameWithoutAValue_IsPromptedForByTheLongName) {
    EXPECT_EQ(ParseInChild({"login", "-p", "--user=me"}, "hunter2\n").out,
              "Enter value for 'password': \np='hunter2'\nuser='me'\n");
}

TEST(OptionParserSecretTest, ValueInTheWord_IsNotPromptedFor) {
    EXPECT_EQ(ParseInChild({"login", "--password=given"}, "hunter2\n").out, "password='given'\n");
}

TEST(OptionParserSecretTest, ValueInTheNextWord_IsNotPromptedFor) {
    EXPECT_EQ(ParseInChild({"login", "--password", "given"}, "hunter2\n").out,
              "password='given'\n");
}

TEST(OptionParserSecretTest, GivenTwiceWithoutAValue_IsPromptedForTwice) {
    EXPECT_EQ(ParseInChild({"login", "--password", "--password"}, "one\ntwo\n").out,
              "Enter value for 'password': \nEnter value for 'password': \npassword='one'\n"
              "password='two'\n");
}

TEST(OptionParserSecretTest, SeveralQuestions_PromptOnce) {
    const ChildRun run = RunInChild(
        [] {
            OptionParser parser;
            parser.ParseVector({"login", "--password"});
            parser.SetInputSpec(SpecWithPassword());
            parser.HasCommandParameter("password");
            parser.GetCommandParameters();
            std::cout << parser.GetCommandParameter("password").front();
        },
        "one\ntwo\n");
    EXPECT_EQ(run.out, "Enter value for 'password': \none");
}

TEST(OptionParserSecretTest, OtherParameterWithoutAValue_IsNotPromptedFor) {
    EXPECT_EQ(ParseInChild({"login", "--user"}, "hunter2\n").out,
              "user=''\n--user must have value\n");
}

TEST(OptionParserSecretTest, EndOfFile_IsTheEmptyValue) {
    const ChildRun run = ParseInChild({"login", "--password"}, "");
    EXPECT_EQ(run.out, "Enter value for 'password': \npassword=''\n");
    EXPECT_EQ(run.status, 0);
}

TEST(OptionParserSecretTest, EmptyLine_IsTheEmptyValue) {
    EXPECT_EQ(ParseInChild({"login", "--password"}, "\nhunter2\n").out,
              "Enter value for 'password': \npassword=''\n");
}

TEST(OptionParserSecretTest, GetSilentString_FromAPipe_ReadsLineByLineWithoutLineEnds) {
    const ChildRun run = RunInChild(
        [] {
            for (int i = 0; i < 4; ++i) {
                std::cout << '[' << OptionParser::GetSilentString() << ']';
            }
        },
        " one\t\n\ntwo");
    EXPECT_EQ(run.out, "[ one\t][][two][]");
    EXPECT_EQ(run.err, "");
}

/// The standard input of this process is a pipe that holds `text`, as long as this lives.
class PipedInput {
  public:
    explicit PipedInput(const std::string& text) : saved_(dup(STDIN_FILENO)) {
        std::array<int, 2> ends{};
        if (pipe(ends.data()) != 0 ||
            write(ends[1], text.data(), text.size()) != static_cast<ssize_t>(text.size())) {
            throw std::system_error(errno, std::generic_category(), "pipe");
        }
        dup2(ends[0], STDIN_FILENO);
        close(ends[0]);
        close(ends[1]);
    }

    PipedInput(const PipedInput&) = delete;
    PipedInput& operator=(const PipedInput&) = delete;

    ~PipedInput() {
        dup2(saved_, STDIN_FILENO);
        close(saved_);
    }

  private:
    int saved_;
};

TEST(OptionParserSecretTest, GetSilentString_OfTheCallersOwnInput_IsTheLine) {
    const PipedInput input("typed here\n");
    EXPECT_EQ(OptionParser::GetSilentString(), "typed here");
}

TEST(OptionParserSecretTest, GetSilentString_LeavesTheNextLineToOthers) {
    const ChildRun run = RunInChild(
        [] {
            OptionParser::GetSilentString();
            std::string line;
            std::getline(std::cin, line);
            std::cout << line;
        },
        "secret\nnext\n");
    EXPECT_EQ(run.out, "next");
}

TEST(OptionParserSecretTest, OnATerminal_NothingTypedIsShown) {
    PseudoTerminal terminal;
    ASSERT_TRUE(terminal.Echoes());
    const pid_t child = terminal.Start([] { ParseAndPrint({"login", "--password"}); });
    const std::string prompt = terminal.ReadUntil(": ");
    terminal.AwaitSilence();
    terminal.Type("hunter2\n");
    EXPECT_EQ(StatusOf(child), 0);
    EXPECT_EQ(prompt + terminal.ReadRest(), "Enter value for 'password': \npassword='hunter2'\n");
}

TEST(OptionParserSecretTest, OnATerminal_TheSettingsAreAsBeforeAfterwards) {
    PseudoTerminal terminal;
    const termios before = terminal.Settings();
    const pid_t child = terminal.Start([] { OptionParser::GetSilentString(); });
    terminal.AwaitSilence();
    terminal.Type("hunter2\n");
    EXPECT_EQ(StatusOf(child), 0);
    const termios after = terminal.Settings();
    EXPECT_EQ(after.c_lflag, before.c_lflag);
    EXPECT_EQ(after.c_iflag, before.c_iflag);
    EXPECT_EQ(after.c_oflag, before.c_oflag);
}

TEST(OptionParserSecretTest, OnATerminal_OnlyTheEchoIsSwitchedOff) {
    PseudoTerminal terminal;
    const termios before = terminal.Settings();
    const pid_t child = terminal.Start([] { OptionParser::GetSilentString(); });
    terminal.AwaitSilence();
    EXPECT_EQ(terminal.Settings().c_lflag, before.c_lflag & ~static_cast<tcflag_t>(ECHO));
    terminal.Type("hunter2\n");
    EXPECT_EQ(StatusOf(child), 0);
}

TEST(OptionParserSecretTest, OnATerminal_EndOfFileIsTheEmptyValue) {
    PseudoTerminal terminal;
    const pid_t child = terminal.Start([] { ParseAndPrint({"login", "--password"}); });
    terminal.AwaitSilence();
    terminal.Type("\x04");
    EXPECT_EQ(StatusOf(child), 0);
    EXPECT_TRUE(terminal.Echoes());
    EXPECT_EQ(terminal.ReadRest(), "Enter value for 'password': \npassword=''\n");
}

TEST(OptionParserSecretTest, OnATerminal_InterruptRestoresTheEchoAndEndsTheProcess) {
    PseudoTerminal terminal;
    const pid_t child = terminal.Start([] { ParseAndPrint({"login", "--password"}); });
    terminal.AwaitSilence();
    terminal.Type("hun\x03");
    EXPECT_EQ(StatusOf(child), -SIGINT);
    EXPECT_TRUE(terminal.Echoes());
}

TEST(OptionParserSecretTest, OnATerminal_TerminationRestoresTheEchoAndEndsTheProcess) {
    PseudoTerminal terminal;
    const pid_t child = terminal.Start([] { OptionParser::GetSilentString(); });
    terminal.AwaitSilence();
    kill(child, SIGTERM);
    EXPECT_EQ(StatusOf(child), -SIGTERM);
    EXPECT_TRUE(terminal.Echoes());
}

TEST(OptionParserSecretTest, OnATerminal_ThePromptStandsThereBeforeAnythingIsRead) {
    PseudoTerminal terminal;
    const pid_t child = terminal.Start([] {
        std::cin.tie(nullptr);
        ParseAndPrint({"login", "--password"});
    });
    terminal.AwaitSilence();
    kill(child, SIGTERM);
    EXPECT_EQ(StatusOf(child), -SIGTERM);
    EXPECT_EQ(terminal.ReadRest(), "Enter value for 'password': ");
}

/// A terminal that refuses one of the requests that the prompt needs.
class OptionParserRefusedRequestTest : public testing::TestWithParam<unsigned> {};

TEST_P(OptionParserRefusedRequestTest, NothingIsReadWhereItWouldBeShown) {
    PseudoTerminal terminal;
    terminal.Type("hunter2\n");
    const pid_t child = terminal.Start([] {
        WithFailingRequest(GetParam(), EIO, [] {
            ParseAndPrint({"login", "--password"});
            std::cout << '[' << OptionParser::GetSilentString() << ']';
        });
    });
    EXPECT_EQ(StatusOf(child), 0);
    EXPECT_TRUE(terminal.Echoes());
    EXPECT_EQ(terminal.ReadRest(), "hunter2\nEnter value for 'password': \npassword=''\n"
                                   "Unable to read the value of 'password': Input/output error\n"
                                   "[]");
}

INSTANTIATE_TEST_SUITE_P(Requests, OptionParserRefusedRequestTest, testing::Values(TCGETS, TCSETS));

/// Signals that would end a process that does not expect them.
class OptionParserSignalTest : public testing::TestWithParam<int> {};

TEST_P(OptionParserSignalTest, OnATerminal_RestoresTheEchoAndEndsTheProcess) {
    PseudoTerminal terminal;
    const pid_t child = terminal.Start([] {
        std::signal(GetParam(), SIG_DFL);
        OptionParser::GetSilentString();
    });
    terminal.AwaitSilence();
    kill(child, GetParam());
    EXPECT_EQ(StatusOf(child), -GetParam());
    EXPECT_TRUE(terminal.Echoes());
}

INSTANTIATE_TEST_SUITE_P(Signals, OptionParserSignalTest,
                         testing::Values(SIGHUP, SIGQUIT, SIGPIPE, SIGALRM, SIGUSR1, SIGUSR2,
                                         SIGVTALRM, SIGIO, SIGPWR, SIGRTMIN, SIGRTMIN + 1));

TEST(OptionParserSecretTest, OnATerminal_SignalsThatEndNothingDoNotMatter) {
    PseudoTerminal terminal;
    const pid_t child = terminal.Start([] { ParseAndPrint({"login", "--password"}); });
    terminal.AwaitSilence();
    for (const int signal : {SIGCHLD, SIGCONT, SIGURG, SIGWINCH}) {
        kill(child, signal);
    }
    EXPECT_FALSE(terminal.Echoes());
    terminal.Type("hunter2\n");
    EXPECT_EQ(StatusOf(child), 0);
    EXPECT_EQ(terminal.ReadRest(), "Enter value for 'password': \npassword='hunter2'\n");
}

void HandleNothing(int /*signal*/) {}

TEST(OptionParserSecretTest, OnATerminal_TheSignalHandlersAreAsBeforeAfterwards) {
    PseudoTerminal terminal;
    const pid_t child = terminal.Start([] {
        constexpr std::array<int, 5> signals = {SIGHUP, SIGINT, SIGQUIT, SIGTERM, SIGTSTP};
        for (const int signal : signals) {
            std::signal(signal, HandleNothing);
        }
        OptionParser::GetSilentString();
        for (const int signal : signals) {
            struct sigaction action {};

            sigaction(signal, nullptr, &action);
            std::cout << (action.sa_handler == HandleNothing ? "kept " : "lost ");
        }
    });
    terminal.AwaitSilence();
    terminal.Type("hunter2\n");
    EXPECT_EQ(StatusOf(child), 0);
    EXPECT_EQ(terminal.ReadRest(), "kept kept kept kept kept ");
}

/// Runs `body` as the foreground job of a shell that reports when the job was stopped, wakes it,
/// and waits for its end.
template <typename Body>
void RunAsJob(Body&& body) {
    const pid_t job = fork();
    if (job == 0) {
        setpgid(0, 0);
        std::signal(SIGTTOU, SIG_IGN); // It is in the background until the next line.
        tcsetpgrp(STDIN_FILENO, getpid());
        std::signal(SIGTTOU, SIG_DFL);
        TestSupport::EndWith(body);
    }
    int status = 0;
    waitpid(job, &status, WUNTRACED);
    termios settings{};
    tcgetattr(STDIN_FILENO, &settings);
    const bool echoes = (settings.c_lflag & static_cast<tcflag_t>(ECHO)) != 0;
    std::cout << (WIFSTOPPED(status) ? "stopped, " : "ended, ") << (echoes ? "echoing" : "silent")
              << std::endl;
    kill(job, SIGCONT);
    StatusOf(job);
}

TEST(OptionParserSecretTest, OnATerminal_SuspensionRestoresTheEchoUntilItIsContinued) {
    PseudoTerminal terminal;
    const pid_t shell = terminal.Start([] {
        RunAsJob([] { ParseAndPrint({"login", "--password"}); });
    });
    terminal.AwaitSilence();
    terminal.Type("\x1a");
    const std::string before = terminal.ReadUntil("echoing\n");
    terminal.AwaitSilence();
    terminal.Type("hunter2\n");
    EXPECT_EQ(StatusOf(shell), 0);
    EXPECT_EQ(before + terminal.ReadRest(),
              "Enter value for 'password': stopped, echoing\n\npassword='hunter2'\n");
}

TEST(OptionParserSecretTest, OnATerminal_InterruptAfterASuspensionRestoresTheEchoToo) {
    PseudoTerminal terminal;
    const pid_t shell = terminal.Start([] {
        RunAsJob([] { ParseAndPrint({"login", "--password"}); });
    });
    terminal.AwaitSilence();
    terminal.Type("\x1a");
    terminal.ReadUntil("echoing\n");
    terminal.AwaitSilence();
    terminal.Type("\x03");
    EXPECT_EQ(StatusOf(shell), 0);
    EXPECT_TRUE(terminal.Echoes());
}

} // namespace
