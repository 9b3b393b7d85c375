#include "CliDispatcherFixture.h"

#include <tests/support/ChildRun.h>
#include <tests/support/PseudoTerminal.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <ios>
#include <sstream>
#include <string>
#include <unistd.h>
#include <vector>

using CppTools::CallSpec::ParameterType;
using TestSupport::ChildRun;
using TestSupport::ListingHead;
using TestSupport::OptionalParameter;
using TestSupport::RunInChild;
using TestSupport::UsageText;

namespace {

/// What `HandleArgvInput` does to its process, seen from outside. The command "system login"
/// takes a secret and gives it back.
class CliDispatcherArgvTest : public TestSupport::CliDispatcherFixture {
  protected:
    CliDispatcherArgvTest() {
        const auto password = OptionalParameter("text", ParameterType::String);
        password->SetSecret(true);
        login->parameters = {password};
        login->prototype = echo->prototype;
        login->work = echo->work;
        login->SetDefaultOutputFormatter("simple");
        dispatcher.GetRootNamespace()->SubNamespace("system")->RegisterNamespaceNode(login,
                                                                                     "login");
    }

    [[noreturn]] void HandleArgv(const std::vector<const char*>& argv) {
        dispatcher.HandleArgvInput(static_cast<int>(argv.size()), argv.data());
    }

    ChildRun Run(const std::vector<const char*>& argv, const std::string& input = "") {
        return RunInChild([&] { HandleArgv(argv); }, input);
    }

    const std::shared_ptr<TestSupport::ScriptedCommand> login = TestSupport::ScriptedCommand::New();
};

using CliDispatcherArgvDeathTest = CliDispatcherArgvTest;

TEST_F(CliDispatcherArgvDeathTest, Success_EndsTheProcessWithZero) {
    EXPECT_EXIT(HandleArgv({"tandril", "system", "count"}), testing::ExitedWithCode(0), "^$");
}

TEST_F(CliDispatcherArgvDeathTest, Failure_EndsTheProcessWithOne) {
    EXPECT_EXIT(HandleArgv({"tandril", "system", "fail"}), testing::ExitedWithCode(1),
                testing::Eq("Errors: \nfirst\nsecond\n"));
}

TEST_F(CliDispatcherArgvTest, Success_PrintsTheResult) {
    const ChildRun run = Run({"tandril", "system", "echo", "--text", "a b"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, "a b\n");
    EXPECT_EQ(run.err, "");
}

TEST_F(CliDispatcherArgvTest, NoArguments_ListTheRootAndFail) {
    const ChildRun run = Run({"/bin/mytool"});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.out, ListingHead("/bin/mytool", "") +
                           "Available Namespaces: \n\nsystem   The system.\ntandril  Commands that "
                           "operate on the tandril system itself allowing users to get additional "
                           "information.\n\nAvailable Commands: \n\n\n");
    EXPECT_EQ(run.err, "");
}

TEST_F(CliDispatcherArgvTest, NoWordsAtAll_ListTheRootOfTandril) {
    const ChildRun run = Run({});
    EXPECT_EQ(run.status, 1);
    EXPECT_THAT(run.out, testing::StartsWith(ListingHead("tandril", "")));
}

TEST_F(CliDispatcherArgvTest, Namespace_IsListedAndFails) {
    EXPECT_EQ(Run({"tandril", "system"}).status, 1);
}

TEST_F(CliDispatcherArgvTest, UnknownOption_IsReportedAndFails) {
    const ChildRun run = Run({"tandril", "--foo", "--formatter=simple", "system", "count"});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, "Errors: \nUnknown dispatcher parameter: foo\n");
}

TEST_F(CliDispatcherArgvTest, Help_PrintsTheUsageAndEndsWithOne) {
    for (const char* help : {"--help", "-h"}) {
        const ChildRun run = Run({"/bin/mytool", help, "system", "count"});
        EXPECT_EQ(run.status, 1);
        EXPECT_EQ(run.out, UsageText("/bin/mytool"));
        EXPECT_EQ(run.err, "");
    }
}

TEST_F(CliDispatcherArgvTest, Help_KeepsOtherErrorsToItself) {
    const ChildRun run = Run({"tandril", "--foo", "--help"});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.out, UsageText("tandril"));
    EXPECT_EQ(run.err, "");
}

TEST_F(CliDispatcherArgvTest, Help_OnALineOfAStream_EndsTheProcessWithOne) {
    const ChildRun run = RunInChild([&] {
        std::istringstream stream("system count\n--help\nsystem count\n");
        dispatcher.ParseStreamInput(stream);
    });
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.out, "7\n" + UsageText("tandril"));
    EXPECT_EQ(run.err, "");
}

TEST_F(CliDispatcherArgvTest, CommandHelp_EndsWithZero) {
    const ChildRun run = Run({"tandril", "system", "echo", "--help"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, "Usage: tandril system echo <options>\n\nDescription: Repeats.\n\n"
                       "     --text   The text.\n  -h|--help   Show the help message.\n");
}

TEST_F(CliDispatcherArgvTest, UnknownName_IsThrownToTheCaller) {
    const ChildRun run = Run({"tandril", "nothing"});
    EXPECT_EQ(run.status, 97);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, "uncaught: Unable to find a command or namespace with the name 'nothing' in "
                       "namespace ");
}

TEST_F(CliDispatcherArgvTest, StandardInput_IsReadAsLines) {
    const ChildRun run =
        Run({"tandril", "--input", "STDIN"}, "# a comment\nsystem fail\nsystem count\n");
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, "7\n");
    EXPECT_EQ(run.err, "Errors: \nfirst\nsecond\n");
}

TEST_F(CliDispatcherArgvTest, StandardInput_LastLineFails_EndsWithOne) {
    EXPECT_EQ(Run({"tandril", "--input", "STDIN"}, "system count\nsystem fail\n").status, 1);
}

TEST_F(CliDispatcherArgvTest, StandardInput_NameInLowerCase_IsAFile) {
    const ChildRun run = Run({"tandril", "--input", "stdin"}, "system count\n");
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, "Unable to open file stdin\n");
}

TEST_F(CliDispatcherArgvTest, StandardInput_LinesAreNamedTandril) {
    const ChildRun run = Run({"/bin/mytool", "--input", "STDIN"}, "--help\n");
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.out, UsageText("tandril"));
}

TEST_F(CliDispatcherArgvTest, Secret_IsPromptedForAndGiven) {
    const ChildRun run = Run({"tandril", "system", "login", "--text"}, "hunter2\n");
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, "Enter value for 'text': \nhunter2\n");
    EXPECT_EQ(run.err, "");
}

TEST_F(CliDispatcherArgvTest, Secret_OfALineThatIsWrongAlready_IsPromptedForAllTheSame) {
    const ChildRun run = Run(
        {"tandril", "--foo=1", "system", "login", "--text", "-x", "more", "words"}, "hunter2\n");
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.out, "Enter value for 'text': \n");
    EXPECT_EQ(run.err, "Errors: \nUnknown dispatcher parameter: foo\nFound Extra non-parameter "
                       "arguments at the end of input: 'words' \n");
}

TEST_F(CliDispatcherArgvTest, Secret_OnALineOfStandardInput_IsTheNextLine) {
    const ChildRun run = Run({"tandril", "--input", "STDIN"},
                             "system login --text\nhunter2\nsystem echo --text=next\n");
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, "Enter value for 'text': \nhunter2\nnext\n");
}

TEST_F(CliDispatcherArgvTest, Terminal_ItsWidthWrapsTheListing) {
    TestSupport::PseudoTerminal terminal(40, 24);
    const pid_t child = terminal.Start([&] { HandleArgv({"tandril"}); });
    EXPECT_EQ(TestSupport::StatusOf(child), 1);
    EXPECT_EQ(terminal.ReadRest(), ListingHead("tandril", "") +
                                       "Available Namespaces: \n\n"
                                       "system   The system.\n"
                                       "tandril  Commands that operate on the \n"
                                       "         tandril system itself allowing \n"
                                       "         users to get additional \n"
                                       "         information.\n"
                                       "\nAvailable Commands: \n\n\n");
}

TEST_F(CliDispatcherArgvTest, ResultThatNobodyTakes_IsNoSuccess) {
    const ChildRun run = RunInChild([&] {
        const int full = open("/dev/full", O_WRONLY);
        dup2(full, STDOUT_FILENO);
        HandleArgv({"tandril", "system", "count"});
    });
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.err,
              std::string("Unable to write to standard output: ") + std::strerror(ENOSPC) + "\n");
}

TEST_F(CliDispatcherArgvTest, TextOfTheCStreamThatNobodyTakes_IsNoSuccessEither) {
    count->SetDefaultOutputFormatter("");
    const ChildRun run = RunInChild([&] {
        const int full = open("/dev/full", O_WRONLY);
        dup2(full, STDOUT_FILENO);
        std::ios::sync_with_stdio(false);
        std::fputs("left over", stdout);
        HandleArgv({"tandril", "system", "count"});
    });
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.err,
              std::string("Unable to write to standard output: ") + std::strerror(ENOSPC) + "\n");
}

} // namespace
