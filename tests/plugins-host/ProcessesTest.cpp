#include "Samples.h"
#include "tests/support/NamedRow.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <ostream>
#include <unistd.h>

using HostPack::AddProcesses;
using HostPack::Column;
using HostPack::FailsWith;
using HostPack::Machine;
using HostPack::ResultOf;
using HostPack::Words;
using TestSupport::kRowName;

namespace {

std::string Bytes(const char* text, std::size_t size) {
    return std::string(text, size);
}

TEST(ProcessesTest, List_NumbersOfProcessesAreInNumericalOrder) {
    const Machine machine;
    AddProcesses(machine);
    EXPECT_EQ(Column(machine.Ask({"process", "list"}), "PID"), (Words{"1", "3", "20"}));
}

TEST(ProcessesTest, List_OneProcess_DocumentHoldsEveryField) {
    const Machine machine;
    machine.AddAccounts();
    machine.AddProcess({.pid = 3,
                        .name = "editor",
                        .commandLine = Bytes("editor\0a b\0", 11),
                        .state = "R",
                        .parent = 1,
                        .uid = 1000,
                        .residentKb = 900,
                        .nice = -5});
    EXPECT_EQ(machine.Ask({"process", "list"}).out,
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
              "<output><list type=\"structure\"><structure typeName=\"Process\">"
              "<field name=\"PID\"><int>3</int></field>"
              "<field name=\"Parent\"><int>1</int></field>"
              "<field name=\"User\"><string>ada</string></field>"
              "<field name=\"State\"><string>running</string></field>"
              "<field name=\"Nice\"><int>-5</int></field>"
              "<field name=\"Threads\"><int>3</int></field>"
              "<field name=\"Resident\"><int>900</int></field>"
              "<field name=\"CPU Time\"><int>0</int></field>"
              "<field name=\"Kernel Thread\"><bool>false</bool></field>"
              "<field name=\"Name\"><string>editor</string></field>"
              "<field name=\"Command\"><string>editor a b</string></field>"
              "</structure></list></output>\n");
}

TEST(ProcessesTest, List_NoProcesses_ListIsEmptyAndSaysWhatItIsOf) {
    const Machine machine;
    machine.MakeDirectory("/proc");
    EXPECT_EQ(machine.Ask({"process", "list"}).out,
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
              "<output><list type=\"structure\"/></output>\n");
}

TEST(ProcessesTest, List_NoProcDirectory_ErrorSaysWhatAndWhy) {
    const Machine machine;
    EXPECT_TRUE(FailsWith(machine.Ask({"process", "list"}),
                          "ERROR:Unable to read /proc: No such file or directory\n"));
}

TEST(ProcessesTest, List_ProcessWithoutFiles_IsTakenForEndedAndLeftOut) {
    const Machine machine;
    AddProcesses(machine);
    machine.MakeDirectory("/proc/77");
    std::filesystem::remove(machine.Root() + "/proc/1/cmdline");
    EXPECT_EQ(Column(machine.Ask({"process", "list"}), "PID"), (Words{"3", "20"}));
}

TEST(ProcessesTest, List_StatWithTooFewFields_ErrorNamesTheFile) {
    const Machine machine;
    AddProcesses(machine);
    machine.Write("/proc/3/stat", "3 (editor) R 1 2 3\n");
    EXPECT_TRUE(FailsWith(machine.Ask({"process", "list"}),
                          "ERROR:Unable to read /proc/3/stat: unexpected contents\n"));
}

TEST(ProcessesTest, List_CommandLineIsEmpty_NameStandsInBrackets) {
    const Machine machine;
    AddProcesses(machine);
    EXPECT_EQ(Column(machine.Ask({"process", "list"}), "Command"),
              (Words{"[init]", "[editor]", "[kworker/0:1]"}));
}

TEST(ProcessesTest, List_UserWithoutName_NumberStands) {
    const Machine machine;
    machine.AddProcess({.pid = 1, .uid = 4242});
    EXPECT_EQ(Column(machine.Ask({"process", "list"}), "User"), (Words{"4242"}));
}

TEST(ProcessesTest, List_CpuTime_IsSumOfUserAndSystemTimeInMilliseconds) {
    const Machine machine;
    const long ticksPerSecond = sysconf(_SC_CLK_TCK);
    machine.AddProcess({.pid = 1, .ticks = 4 * ticksPerSecond});
    EXPECT_EQ(Column(machine.Ask({"process", "list"}), "CPU Time"), (Words{"4000"}));
}

TEST(ProcessesTest, Get_EveryField_IsTakenFromItsFile) {
    const Machine machine;
    machine.AddAccounts();
    machine.Write("/proc/stat", "cpu 1 2 3\nbtime 1000000000\n");
    machine.AddProcess({.pid = 3,
                        .name = "editor",
                        .commandLine = Bytes("editor\0", 7),
                        .parent = 1,
                        .uid = 1000,
                        .startTicks = 60 * sysconf(_SC_CLK_TCK)});
    machine.MakeLink("/proc/3/exe", "/usr/bin/editor");
    machine.MakeLink("/proc/3/cwd", "/home/ada");
    EXPECT_EQ(ResultOf(machine.Ask({"process", "get", "--pid=3", "--paths"}))->ToString(),
              "{'CPU Time' => '0', 'Command' => 'editor', 'Directory' => '/home/ada', "
              "'Executable' => '/usr/bin/editor', 'Group' => 'ada', 'Groups' => '4, 24', "
              "'Kernel Thread' => 'false', 'Name' => 'editor', 'Nice' => '0', 'PID' => '3', "
              "'Parent' => '1', 'Peak Resident' => '300', 'Preemptions' => '12', "
              "'Resident' => '100', 'Started' => '2001-09-09T01:47:40Z', 'State' => 'sleeping', "
              "'Swapped' => '5', 'Threads' => '3', 'User' => 'ada', 'Virtual' => '2000', "
              "'Yields' => '11', }");
}

TEST(ProcessesTest, Get_WithoutPaths_LinksAreNotFollowed) {
    const Machine machine;
    machine.Write("/proc/stat", "btime 1000000000\n");
    machine.AddProcess({.pid = 3});
    machine.MakeLink("/proc/3/exe", "/usr/bin/editor");
    EXPECT_EQ(Column(machine.Ask({"process", "get", "--pid=3"}), "Executable"), (Words{""}));
}

TEST(ProcessesTest, Get_SeveralThatEnded_EachHasAnErrorLineAndThereIsNoDocument) {
    const Machine machine;
    machine.Write("/proc/stat", "btime 1000000000\n");
    machine.AddProcess({.pid = 3});
    EXPECT_TRUE(FailsWith(machine.Ask({"process", "get", "--pid=8,3,9"}),
                          "ERROR:Unable to read /proc/8/stat: No such file or directory\n"
                          "ERROR:Unable to read /proc/9/stat: No such file or directory\n"));
}

/// Options of the list and the processes of `AddProcesses` that they leave, in order.
struct ProcessChoice {
    const char* name;
    Words options;
    Words pids;
};

std::ostream& operator<<(std::ostream& out, const ProcessChoice& choice) {
    return out << choice.name;
}

class ProcessChoiceTest : public testing::TestWithParam<ProcessChoice> {};

TEST_P(ProcessChoiceTest, List_OptionsChooseAndSort) {
    const Machine machine;
    AddProcesses(machine);
    Words words{"process", "list"};
    words.insert(words.end(), GetParam().options.begin(), GetParam().options.end());
    EXPECT_EQ(Column(machine.Ask(words), "PID"), GetParam().pids);
}

INSTANTIATE_TEST_SUITE_P(
    All, ProcessChoiceTest,
    testing::Values(ProcessChoice{"UserByName", {"--user=ada"}, {"3"}},
                    ProcessChoice{"UserByNumber", {"--user=1000"}, {"3"}},
                    ProcessChoice{"SeveralUsers", {"--user=ada,root"}, {"1", "3", "20"}},
                    ProcessChoice{"State", {"--state=idle,running"}, {"3", "20"}},
                    ProcessChoice{"Pattern", {"--match=k*:?"}, {"20"}},
                    ProcessChoice{"KernelThreads", {"--kernel-threads=yes"}, {"20"}},
                    ProcessChoice{"NoKernelThreads", {"--kernel-threads=F"}, {"1", "3"}},
                    ProcessChoice{"ByName", {"--sort=name"}, {"3", "1", "20"}},
                    ProcessChoice{"ByMemory", {"--sort=memory"}, {"3", "1", "20"}},
                    ProcessChoice{"ByProcessorTime", {"--sort=cpu"}, {"3", "1", "20"}},
                    ProcessChoice{"Reversed", {"--reverse"}, {"20", "3", "1"}},
                    ProcessChoice{"Limit", {"--limit=2"}, {"1", "3"}},
                    ProcessChoice{"LimitBeyondAll", {"--limit=9"}, {"1", "3", "20"}},
                    ProcessChoice{"LimitOfTheReversed", {"--reverse", "--limit=1"}, {"20"}}),
    kRowName);

} // namespace
