#include "Boxes.h"

#include <tests/support/FailingSystemCall.h>
#include <tests/support/PseudoTerminal.h>

#include <csignal>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <string>
#include <sys/ioctl.h>
#include <sys/resource.h>

using Cli::BecomeTool;
using Cli::Boxes;
using Cli::Words;
using TestSupport::ChildRun;
using TestSupport::ParameterElement;
using TestSupport::PseudoTerminal;
using TestSupport::StatusOf;

namespace {

/// "box login" with a secret, asked for from a pipe or a terminal.
class ToolSecretTest : public testing::Test {
  protected:
    ToolSecretTest() {
        TestSupport::CommandPieces pieces;
        pieces.inputSpec =
            "<input-spec>" +
            ParameterElement(R"(name="user" type="string")", "<description>D.</description>") +
            ParameterElement(R"(name="pass-word" type="string" secret="true" shortname="p")",
                             "<description>D.</description>") +
            ParameterElement(R"(name="pin" type="string" secret="true")",
                             "<description>D.</description>") +
            "</input-spec>";
        pieces.formatParameters =
            "<format-parameters><formatter>simple</formatter></format-parameters>";
        pieces.execute = "<execute>printf '%s' '&lt;output>&lt;string>' "
                         "'$if{user,u=$val{user}}' '$if{pass-word, p=$val{pass-word}}' "
                         "'$if{pin, pin=$val{pin}}' '&lt;/string>&lt;/output>'</execute>";
        boxes_.Add("login", pieces);
    }

    ChildRun RunLogin(const Words& options, const std::string& input) const {
        return boxes_.Run(Cli::Join({"box", "login"}, options), input);
    }

    pid_t StartLogin(PseudoTerminal& terminal, const Words& options) const {
        const Words words = boxes_.WithPlugins(Cli::Join({"box", "login"}, options));
        return terminal.Start([&] {
            const rlimit noCore{0, 0};
            setrlimit(RLIMIT_CORE, &noCore);
            BecomeTool(words);
        });
    }

    Boxes boxes_;
};

/// Tells whether two terminals behave the same.
void ExpectSameSettings(const termios& before, const termios& after) {
    EXPECT_EQ(after.c_iflag, before.c_iflag);
    EXPECT_EQ(after.c_oflag, before.c_oflag);
    EXPECT_EQ(after.c_cflag, before.c_cflag);
    EXPECT_EQ(after.c_lflag, before.c_lflag);
    for (std::size_t i = 0; i < NCCS; ++i) {
        EXPECT_EQ(after.c_cc[i], before.c_cc[i]) << "control character " << i;
    }
}

TEST_F(ToolSecretTest, Pipe_GivesOneLineForEachSecret) {
    const ChildRun run = RunLogin({"-p", "--user=me", "--pin"}, "open  sesame\n12 34\nnot read\n");
    EXPECT_EQ(run.out, "Enter value for 'pass-word': \nEnter value for 'pin': \n"
                       "u=me p=open  sesame pin=12 34\n");
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.status, 0);
}

TEST_F(ToolSecretTest, Pipe_LastLineNeedsNoLineEnd) {
    EXPECT_EQ(RunLogin({"--pass-word"}, "x").out, "Enter value for 'pass-word': \n p=x\n");
}

TEST_F(ToolSecretTest, Pipe_AtItsEndTheSecretIsEmpty) {
    const ChildRun run = RunLogin({"--pass-word", "--pin"}, "only one\n");
    EXPECT_EQ(run.out, "Enter value for 'pass-word': \nEnter value for 'pin': \n"
                       " p=only one pin=\n");
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.status, 0);
}

TEST_F(ToolSecretTest, InputThatCannotBeRead_IsReportedAndTheCommandDoesNotRun) {
    const Words words = boxes_.WithPlugins({"box", "login", "--pass-word"});
    const ChildRun run = TestSupport::RunInChild([&] {
        dup2(open("/", O_RDONLY | O_CLOEXEC), STDIN_FILENO);
        BecomeTool(words);
    });
    EXPECT_EQ(run.out, "Enter value for 'pass-word': \n");
    EXPECT_EQ(run.err, "Errors: \nUnable to read the value of 'pass-word': Is a directory\n");
    EXPECT_EQ(run.status, 1);
}

TEST_F(ToolSecretTest, GivenOnTheCommandLine_IsNotAskedFor) {
    const ChildRun run = RunLogin({"--pass-word=x", "--pin", "-"}, "not read\n");
    EXPECT_EQ(run.out, " p=x pin=-\n");
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.status, 0);
}

TEST_F(ToolSecretTest, AskedForEvenWhenTheLineIsWrong) {
    const ChildRun run = RunLogin({"--pass-word", "--user"}, "x\n");
    EXPECT_EQ(run.out, "Enter value for 'pass-word': \n");
    EXPECT_EQ(run.err, "Errors: \n--user must have value\n");
    EXPECT_EQ(run.status, 1);
}

TEST_F(ToolSecretTest, Terminal_ShowsThePromptAndNothingTyped) {
    PseudoTerminal terminal;
    const pid_t tool = StartLogin(terminal, {"--user=me", "--pass-word", "--pin"});
    EXPECT_EQ(terminal.ReadUntil(": "), "Enter value for 'pass-word': ");
    terminal.AwaitSilence();
    terminal.Type("open sesame\n");
    EXPECT_EQ(terminal.ReadUntil(": "), "\nEnter value for 'pin': ");
    terminal.AwaitSilence();
    terminal.Type("1234\n");
    EXPECT_EQ(StatusOf(tool), 0);
    EXPECT_EQ(terminal.ReadRest(), "\nu=me p=open sesame pin=1234\n");
}

TEST_F(ToolSecretTest, Terminal_IsAsBeforeAfterwards) {
    PseudoTerminal terminal;
    const termios before = terminal.Settings();
    const pid_t tool = StartLogin(terminal, {"-p"});
    terminal.AwaitSilence();
    terminal.Type("open sesame\n");
    EXPECT_EQ(StatusOf(tool), 0);
    ExpectSameSettings(before, terminal.Settings());
}

TEST_F(ToolSecretTest, Terminal_EchoesAgainWhileTheCommandRuns) {
    boxes_.Add("look", [] {
        TestSupport::CommandPieces pieces;
        pieces.inputSpec = "<input-spec>" +
                           ParameterElement(R"(name="key" type="string" secret="true")",
                                            "<description>D.</description>") +
                           "</input-spec>";
        pieces.formatParameters =
            "<format-parameters><formatter>simple</formatter></format-parameters>";
        pieces.execute =
            "<execute>printf '&lt;output>&lt;string>%s&lt;/string>&lt;/output>' "
            "\"$(stty -a &lt;/dev/tty | tr '\\n' ' ' | grep -o '[-]*echo ')\"</execute>";
        return pieces;
    }());
    PseudoTerminal terminal;
    const Words words = boxes_.WithPlugins({"box", "look", "--key"});
    const pid_t tool = terminal.Start([&] { BecomeTool(words); });
    terminal.AwaitSilence();
    terminal.Type("x\n");
    EXPECT_EQ(StatusOf(tool), 0);
    EXPECT_EQ(terminal.ReadRest(), "Enter value for 'key': \necho \n");
}

TEST_F(ToolSecretTest, Terminal_EndOfFileIsTheEmptySecret) {
    PseudoTerminal terminal;
    const termios before = terminal.Settings();
    const pid_t tool = StartLogin(terminal, {"--pass-word"});
    terminal.AwaitSilence();
    terminal.Type("\x04");
    EXPECT_EQ(StatusOf(tool), 0);
    ExpectSameSettings(before, terminal.Settings());
    EXPECT_EQ(terminal.ReadRest(), "Enter value for 'pass-word': \n p=\n");
}

TEST_F(ToolSecretTest, Terminal_ErasedCharactersDoNotCount) {
    PseudoTerminal terminal;
    const pid_t tool = StartLogin(terminal, {"--pass-word"});
    terminal.AwaitSilence();
    terminal.Type("wrong\x15"
                  "rights\x7f\n");
    EXPECT_EQ(StatusOf(tool), 0);
    EXPECT_EQ(terminal.ReadRest(), "Enter value for 'pass-word': \n p=right\n");
}

/// A terminal that refuses one of the requests that the prompt needs.
class ToolRefusedRequestTest : public ToolSecretTest,
                               public testing::WithParamInterface<unsigned> {};

TEST_P(ToolRefusedRequestTest, NothingIsReadAndTheCommandDoesNotRun) {
    PseudoTerminal terminal;
    const Words words = boxes_.WithPlugins({"box", "login", "--pass-word"});
    const pid_t tool = terminal.Start(
        [&] { TestSupport::WithFailingRequest(GetParam(), EIO, [&] { BecomeTool(words); }); });
    EXPECT_EQ(StatusOf(tool), 1);
    EXPECT_TRUE(terminal.Echoes());
    EXPECT_EQ(terminal.ReadRest(),
              "Enter value for 'pass-word': \n"
              "Errors: \nUnable to read the value of 'pass-word': Input/output error\n");
}

INSTANTIATE_TEST_SUITE_P(Requests, ToolRefusedRequestTest, testing::Values(TCGETS, TCSETS));

/// Keys or signals that end the tool while it waits for the secret.
struct Ending {
    const char* keys;
    int signal;
};

void PrintTo(const Ending& ending, std::ostream* out) {
    *out << (*ending.keys != '\0' ? testing::PrintToString(ending.keys) + " typed, " : "")
         << "signal " << ending.signal;
}

class ToolSecretEndingTest : public ToolSecretTest, public testing::WithParamInterface<Ending> {};

TEST_P(ToolSecretEndingTest, LeavesTheTerminalAsBefore) {
    PseudoTerminal terminal;
    const termios before = terminal.Settings();
    const pid_t tool = StartLogin(terminal, {"--pass-word"});
    terminal.AwaitSilence();
    if (*GetParam().keys != '\0') {
        terminal.Type(GetParam().keys);
    } else {
        kill(tool, GetParam().signal);
    }
    EXPECT_EQ(StatusOf(tool), -GetParam().signal);
    ExpectSameSettings(before, terminal.Settings());
    EXPECT_EQ(terminal.ReadRest(), "Enter value for 'pass-word': ");
}

INSTANTIATE_TEST_SUITE_P(Signals, ToolSecretEndingTest,
                         testing::Values(Ending{"\x03", SIGINT}, Ending{"sesa\x03", SIGINT},
                                         Ending{"\x1c", SIGQUIT}, Ending{"", SIGINT},
                                         Ending{"", SIGTERM}, Ending{"", SIGHUP},
                                         Ending{"", SIGALRM}, Ending{"", SIGUSR1},
                                         Ending{"", SIGXCPU}, Ending{"", SIGSYS}));

TEST_F(ToolSecretTest, Terminal_AReaderThatIsGoneDoesNotEndThePrompt) {
    PseudoTerminal terminal;
    const pid_t tool = StartLogin(terminal, {"--pass-word"});
    terminal.AwaitSilence();
    kill(tool, SIGPIPE);
    terminal.Type("right\n");
    EXPECT_EQ(StatusOf(tool), 0);
    EXPECT_EQ(terminal.ReadRest(), "Enter value for 'pass-word': \n p=right\n");
}

TEST_F(ToolSecretTest, Terminal_EchoesWhileTheToolIsStoppedAndNotWhenItGoesOn) {
    PseudoTerminal terminal;
    const Words words = boxes_.WithPlugins({"box", "login", "--pass-word"});
    const pid_t shell = terminal.Start([&] {
        // The shell has to be the one who hears of the stop, as it is for a user.
        const std::string script = "set -m; \"$@\"; echo stopped; read -r line; fg >/dev/null";
        TestSupport::Become("/bin/sh",
                            Cli::Join({"sh", "-c", script, "sh", TANDRIL_PROGRAM}, words));
    });
    EXPECT_EQ(terminal.ReadUntil(": "), "Enter value for 'pass-word': ");
    terminal.AwaitSilence();
    terminal.Type("\x1a");
    EXPECT_TRUE(terminal.ReadUntil("stopped\n").ends_with("stopped\n"));
    EXPECT_TRUE(terminal.Echoes());
    terminal.Type("\n");
    terminal.AwaitSilence();
    terminal.Type("open sesame\n");
    EXPECT_EQ(StatusOf(shell), 0);
    EXPECT_TRUE(terminal.Echoes());
    EXPECT_EQ(terminal.ReadRest(), "\n\n p=open sesame\n");
}

TEST_F(ToolSecretTest, IgnoredInterrupt_StaysIgnoredAtThePrompt) {
    PseudoTerminal terminal;
    const Words words = boxes_.WithPlugins({"box", "login", "--pass-word"});
    const pid_t tool = terminal.Start([&] {
        std::signal(SIGINT, SIG_IGN);
        BecomeTool(words);
    });
    terminal.AwaitSilence();
    terminal.Type("\x03");
    terminal.Type("right\n");
    EXPECT_EQ(StatusOf(tool), 0);
    EXPECT_EQ(terminal.ReadRest(), "Enter value for 'pass-word': \n p=right\n");
}

} // namespace
