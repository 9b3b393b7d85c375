#include "Machine.h"

#include <gtest/gtest.h>
#include <ostream>

using HostPack::Column;
using HostPack::FailsWith;
using HostPack::Machine;
using HostPack::Words;

namespace {

/// A name that something on a machine may have, and what the document's reader gets for it.
struct Name {
    const char* title;
    std::string onMachine;
    std::string inResult;
};

std::ostream& operator<<(std::ostream& out, const Name& name) {
    return out << name.title;
}

class NameTest : public testing::TestWithParam<Name> {};

const std::vector<Name> kNames = {
    {"Markup", "<b>&amp;</b>]]>", "<b>&amp;</b>]]>"},
    {"Quotes", "\"double\" 'single' `back`", "\"double\" 'single' `back`"},
    {"Blanks", "  two  blanks  ", "  two  blanks  "},
    {"OnlyBlanks", "   ", "   "},
    {"Parentheses", "a) R 1 (b", "a) R 1 (b"},
    {"Newline", "first\nsecond", "first\nsecond"},
    {"NewlineAtEnd", "line\n", "line\n"},
    {"Tab", "a\tb", "a\tb"},
    {"CarriageReturn", "a\rb\r\nc\r", "a\rb\r\nc\r"},
    {"Backslash", "a\\b\\n", "a\\b\\n"},
    {"ShellMarks", "$(reboot); $val{match}", "$(reboot); $val{match}"},
    {"ErrorLine", "ERROR:no error", "ERROR:no error"},
    {"Accents", "\xC3\xA9\xE2\x82\xAC\xF0\x9F\x90\xA7", "\xC3\xA9\xE2\x82\xAC\xF0\x9F\x90\xA7"},
    {"InvalidUtf8", "a\xFF\xC3(\xE2\x82", "a\\xff\\xc3(\\xe2\\x82"},
    {"OverlongUtf8", "\xC0\xAF", "\\xc0\\xaf"},
    {"Surrogate", "\xED\xA0\x80", "\\xed\\xa0\\x80"},
    {"ControlCharacters", "\x01\x1B[31m\x7F", "\\x01\\x1b[31m\\x7f"},
    {"C1ControlCharacters", "\xC2\x80\xC2\x9B\xC2\xA0", "\\xc2\\x80\\xc2\\x9b\xC2\xA0"},
    {"NoCharacters", "\xEF\xBF\xBE\xEF\xBF\xBF\xEF\xBF\xBD",
     "\\xef\\xbf\\xbe\\xef\\xbf\\xbf\xEF\xBF\xBD"},
};

TEST_P(NameTest, NameOfProcess_DocumentStaysWellFormedAndHoldsTheName) {
    const Machine machine;
    machine.AddProcess({.pid = 1, .name = GetParam().onMachine});
    EXPECT_EQ(Column(machine.Ask({"process", "list"}), "Name"), (Words{GetParam().inResult}));
}

TEST_P(NameTest, WordOfCommandLine_DocumentStaysWellFormedAndHoldsIt) {
    const Machine machine;
    machine.AddProcess({.pid = 1,
                        .commandLine = "run" + std::string(1, '\0') + GetParam().onMachine +
                                       std::string(1, '\0')});
    EXPECT_EQ(Column(machine.Ask({"process", "list"}), "Command"),
              (Words{"run " + GetParam().inResult}));
}

TEST_P(NameTest, ValueOfVariable_DocumentStaysWellFormedAndHoldsIt) {
    const Machine machine;
    machine.Write("/proc/self/environ", "X=" + GetParam().onMachine + std::string(1, '\0'));
    EXPECT_EQ(Column(machine.Ask({"environment", "get"}), "Value"), (Words{GetParam().inResult}));
}

TEST_P(NameTest, ValueOfKernelParameter_DocumentStaysWellFormedAndHoldsIt) {
    const Machine machine;
    machine.Write("/proc/sys/kernel/x", GetParam().onMachine + "\n");
    EXPECT_EQ(Column(machine.Ask({"parameter", "get", "--name=kernel.x"}), "Value"),
              (Words{GetParam().inResult}));
}

INSTANTIATE_TEST_SUITE_P(All, NameTest, testing::ValuesIn(kNames),
                         [](const auto& row) { return row.param.title; });

TEST(ErrorLineTest, NameWithLineEndsAndInvalidBytes_ErrorStaysOneLine) {
    const Machine machine;
    machine.MakeDirectory("/proc/sys");
    EXPECT_TRUE(FailsWith(
        machine.Ask({"parameter", "get", "--name=a\nERROR:b\r\xFF"}),
        "ERROR:Unable to read /proc/sys/a\\nERROR:b\\r\\xff: No such file or directory\n"));
}

/// Words that no descriptor passes, and what the program says to them.
struct Misuse {
    const char* title;
    Words words;
    const char* message;
};

std::ostream& operator<<(std::ostream& out, const Misuse& misuse) {
    return out << misuse.title;
}

class MisuseTest : public testing::TestWithParam<Misuse> {};

TEST_P(MisuseTest, WordsThatNoDescriptorPasses_ErrorSaysWhatIsWrong) {
    const Machine machine;
    machine.MakeDirectory("/proc");
    EXPECT_TRUE(FailsWith(machine.Ask(GetParam().words), GetParam().message));
}

INSTANTIATE_TEST_SUITE_P(
    All, MisuseTest,
    testing::Values(
        Misuse{"NoCommand", {}, "ERROR:A subject and a verb are needed, such as 'process list'\n"},
        Misuse{"UnknownCommand", {"process", "kill"}, "ERROR:Unknown command 'process kill'\n"},
        Misuse{"UnknownOption", {"process", "list", "--x=1"}, "ERROR:Unknown option '--x=1'\n"},
        Misuse{"NoOption", {"process", "list", "user"}, "ERROR:Unknown option 'user'\n"},
        Misuse{"NoNumber",
               {"process", "list", "--limit=1x"},
               "ERROR:Invalid value '1x' for --limit: not an integer\n"},
        Misuse{"NoBoolean",
               {"process", "list", "--kernel-threads=on"},
               "ERROR:Invalid value 'on' for --kernel-threads: not a boolean\n"},
        Misuse{
            "UnknownOrder", {"process", "list", "--sort=age"}, "ERROR:Unknown sort order 'age'\n"},
        Misuse{"NameOfInterfaceLeadsOut",
               {"interface", "get", "--name=../block"},
               "ERROR:'../block' is not the name of a network interface\n"},
        Misuse{"NameOfParameterLeadsOut",
               {"parameter", "get", "--name=//.//.etc.passwd"},
               "ERROR:'//.//.etc.passwd' is not the name of a kernel parameter\n"}),
    [](const auto& row) { return row.param.title; });

TEST(ArgumentsTest, UnfilledPlaceholders_CountAsOptionsThatWereNotGiven) {
    const Machine machine;
    machine.AddProcess({.pid = 1});
    EXPECT_EQ(Column(machine.Ask({"process", "list", "--user=$list{user,,,false}",
                                  "--match=$val{match}", "--limit=$val{limit}"}),
                     "PID"),
              (Words{"1"}));
}

} // namespace
