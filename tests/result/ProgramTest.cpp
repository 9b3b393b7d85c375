#include "Support.h"
#include "tests/support/ShellRunning.h"

#include <tandril-result/DescriptorStream.h>
#include <tandril-result/Program.h>

#include <csignal>
#include <gtest/gtest.h>
#include <iterator>

using ResultTests::ErrorOf;
using TandrilResult::DescriptorStream;
using TandrilResult::Program;

namespace {

std::string OutputOf(const Program& program) {
    DescriptorStream stream(program.Output());
    return {std::istreambuf_iterator<char>(stream), {}};
}

TEST(ProgramTest, Words_ArriveAsTheyAre) {
    Program program({"printf", "<%s>", "a b", "", "$HOME 'x'"});
    EXPECT_EQ(OutputOf(program), "<a b><><$HOME 'x'>");
    EXPECT_EQ(program.Wait(), 0);
}

TEST(ProgramTest, Status_IsTheProgramsOwn) {
    Program program({"sh", "-c", "exit 7"});
    EXPECT_EQ(OutputOf(program), "");
    EXPECT_EQ(program.Wait(), 7);
}

TEST(ProgramTest, Signal_IsAnError) {
    Program program({"sh", "-c", "kill -9 $$"});
    EXPECT_EQ(ErrorOf([&] { program.Wait(); }), "result: 'sh' was ended by signal 9");
}

TEST(ProgramTest, NotThere_ErrorAsksWhetherItIsInstalled) {
    EXPECT_EQ(ErrorOf([] {
                  Program({"no-such-tool", "x"});
              }),
              "result: Unable to run 'no-such-tool': No such file or directory; is it installed?");
    EXPECT_TRUE(TestSupport::HasNoChild());
}

TEST(ProgramTest, NotToBeRun_ErrorSaysWhy) {
    EXPECT_EQ(ErrorOf([] { Program({"/dev/null"}); }),
              "result: Unable to run '/dev/null': Permission denied");
}

TEST(ProgramTest, NobodyWaits_ProgramIsEnded) {
    { const Program program({"sleep", "1000"}); }
    EXPECT_TRUE(TestSupport::HasNoChild());
}

TEST(ProgramTest, SignalOfAClosedPipe_IsNotIgnoredInTheProgram) {
    const TestSupport::SignalHandling ignoring(SIGPIPE, SIG_IGN);
    Program program({"sed", "-n", "s/^SigIgn:\t//p", "/proc/self/status"});
    const unsigned long ignored = std::stoul(OutputOf(program), nullptr, 16);
    EXPECT_EQ(ignored & (1UL << (SIGPIPE - 1)), 0U);
    EXPECT_EQ(program.Wait(), 0);
}

} // namespace
