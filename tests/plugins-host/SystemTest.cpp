#include "Samples.h"
#include "tests/support/NamedRow.h"

#include <gtest/gtest.h>
#include <ostream>

using HostPack::AddSystemFacts;
using HostPack::Column;
using HostPack::FailsWith;
using HostPack::Machine;
using HostPack::ResultOf;
using HostPack::Words;
using TestSupport::kRowName;

namespace {

std::string Environ(const Words& entries) {
    std::string text;
    for (const std::string& entry : entries) {
        text += entry + '\0';
    }
    return text;
}

TEST(UptimeTest, Get_DaysAndTime_AreTakenFromTheSeconds) {
    const Machine machine;
    AddSystemFacts(machine);
    EXPECT_EQ(ResultOf(machine.Ask({"uptime", "get"}))->ToString(),
              "{'Booted' => '2001-09-09T01:46:40Z', 'Duration' => '2 days 02:01:02', "
              "'Seconds' => '180062', }");
}

TEST(UptimeTest, Get_OneDay_IsNamedInTheSingular) {
    const Machine machine;
    machine.Write("/proc/uptime", "86400.00 1.00\n");
    machine.Write("/proc/stat", "btime 0\n");
    EXPECT_EQ(ResultOf(machine.Ask({"uptime", "get"}))->ToString(),
              "{'Booted' => '1970-01-01T00:00:00Z', 'Duration' => '1 day 00:00:00', "
              "'Seconds' => '86400', }");
}

TEST(UptimeTest, Get_NoUptimeFile_ErrorSaysWhatAndWhy) {
    const Machine machine;
    EXPECT_TRUE(FailsWith(machine.Ask({"uptime", "get"}),
                          "ERROR:Unable to read /proc/uptime: No such file or directory\n"));
}

TEST(UptimeTest, Get_NoBootTime_ErrorSaysWhatIsMissing) {
    const Machine machine;
    machine.Write("/proc/uptime", "1.00 1.00\n");
    machine.Write("/proc/stat", "cpu 1\n");
    EXPECT_TRUE(FailsWith(
        machine.Ask({"uptime", "get"}),
        "ERROR:Unable to read /proc/stat: it does not say when the machine was started\n"));
}

TEST(LoadTest, Get_AveragesArePercentOfOneProcessor) {
    const Machine machine;
    AddSystemFacts(machine);
    EXPECT_EQ(ResultOf(machine.Ask({"load", "get"}))->ToString(),
              "{'Fifteen Minutes' => '1100', 'Five Minutes' => '70', 'One Minute' => '205', "
              "'Overloaded' => 'true', 'Processors' => '2', 'Running' => '3', "
              "'Tasks' => '456', }");
}

TEST(LoadTest, Get_AsMuchLoadAsProcessors_IsNotOverloaded) {
    const Machine machine;
    machine.Write("/proc/loadavg", "1.00 0.00 0.00 1/1 1\n");
    machine.Write("/proc/stat", "cpu0 1\n");
    EXPECT_EQ(ResultOf(machine.Ask({"load", "get"}))->ToString(),
              "{'Fifteen Minutes' => '0', 'Five Minutes' => '0', 'One Minute' => '100', "
              "'Overloaded' => 'false', 'Processors' => '1', 'Running' => '1', 'Tasks' => '1', }");
}

TEST(LoadTest, Get_TooFewWords_ErrorNamesTheFile) {
    const Machine machine;
    machine.Write("/proc/loadavg", "1.00\n");
    EXPECT_TRUE(FailsWith(machine.Ask({"load", "get"}),
                          "ERROR:Unable to read /proc/loadavg: unexpected contents\n"));
}

TEST(MemoryTest, Get_UsedIsWhatIsNotAvailable) {
    const Machine machine;
    AddSystemFacts(machine);
    EXPECT_EQ(ResultOf(machine.Ask({"memory", "get"}))->ToString(),
              "{'Available' => '250', 'Buffers' => '10', 'Cached' => '20', 'Free' => '100', "
              "'Shared' => '5', 'Swap Free' => '70', 'Swap Total' => '80', 'Total' => '1000', "
              "'Used' => '750', 'Used Percent' => '75', }");
}

TEST(MemoryTest, Get_NoTotal_ErrorSaysWhatIsMissing) {
    const Machine machine;
    machine.Write("/proc/meminfo", "MemFree: 3 kB\n");
    EXPECT_TRUE(FailsWith(machine.Ask({"memory", "get"}),
                          "ERROR:Unable to read /proc/meminfo: it has no MemTotal\n"));
}

TEST(UsersTest, List_EveryFieldOfAnAccount) {
    const Machine machine;
    machine.AddAccounts();
    machine.AddProcess({.pid = 1, .uid = 1000});
    machine.AddProcess({.pid = 2, .uid = 1000});
    EXPECT_EQ(ResultOf(machine.Ask({"user", "list", "--name=ada"}))->ToString(),
              "{'Full Name' => 'Ada <ada@example.org>', 'GID' => '1000', 'Group' => 'ada', "
              "'Home' => '/home/ada', 'Login' => 'false', 'Name' => 'ada', 'Processes' => '2', "
              "'Shell' => '/usr/sbin/nologin', 'System' => 'false', 'UID' => '1000', }");
}

TEST(UsersTest, List_LinesThatAreNoAccounts_ArePassedOver) {
    const Machine machine;
    machine.MakeDirectory("/proc");
    machine.Write("/etc/passwd", "\n# text\nhalf:x:1\nnone:x:a:b:c:d:e\n+::::::\n"
                                 "ok:x:5:6:g:/h:/s\n");
    EXPECT_EQ(Column(machine.Ask({"user", "list"}), "Name"), (Words{"ok"}));
}

TEST(UsersTest, List_GroupWithoutName_NumberStands) {
    const Machine machine;
    machine.MakeDirectory("/proc");
    machine.Write("/etc/passwd", "ok:x:5:6:g:/h:/s\n");
    EXPECT_EQ(Column(machine.Ask({"user", "list"}), "Group"), (Words{"6"}));
}

TEST(UsersTest, List_NoPasswdFile_ErrorSaysWhatAndWhy) {
    const Machine machine;
    machine.MakeDirectory("/proc");
    EXPECT_TRUE(FailsWith(machine.Ask({"user", "list"}),
                          "ERROR:Unable to read /etc/passwd: No such file or directory\n"));
}

struct UserChoice {
    const char* name;
    std::string option;
    Words names;
};

std::ostream& operator<<(std::ostream& out, const UserChoice& choice) {
    return out << choice.name;
}

class UserChoiceTest : public testing::TestWithParam<UserChoice> {};

TEST_P(UserChoiceTest, List_OptionChooses) {
    const Machine machine;
    machine.AddAccounts();
    machine.MakeDirectory("/proc");
    EXPECT_EQ(Column(machine.Ask({"user", "list", GetParam().option}), "Name"), GetParam().names);
}

INSTANTIATE_TEST_SUITE_P(All, UserChoiceTest,
                         testing::Values(UserChoice{"Name", "--name=ada,nobody", {"ada"}},
                                         UserChoice{"Number", "--uid=0,7", {"root"}},
                                         UserChoice{"System", "--system=true", {"root"}},
                                         UserChoice{"People", "--system=false", {"ada"}},
                                         UserChoice{"Login", "--login=1", {"root"}},
                                         UserChoice{"NoLogin", "--login=0", {"ada"}}),
                         kRowName);

TEST(EnvironmentTest, Get_VariablesAreInTheOrderOfTheirNames) {
    const Machine machine;
    machine.Write("/proc/self/environ", Environ({"b=2", "a=x=y", "alone", "c="}));
    EXPECT_EQ(ResultOf(machine.Ask({"environment", "get"}))->ToString(),
              "{'Matches' => 'false', 'Name' => 'a', 'Size' => '3', 'Value' => 'x=y', }, "
              "{'Matches' => 'false', 'Name' => 'alone', 'Size' => '0', 'Value' => '', }, "
              "{'Matches' => 'false', 'Name' => 'b', 'Size' => '1', 'Value' => '2', }, "
              "{'Matches' => 'false', 'Name' => 'c', 'Size' => '0', 'Value' => '', }");
}

TEST(EnvironmentTest, Get_EmptyEnvironment_ListIsEmpty) {
    const Machine machine;
    machine.Write("/proc/self/environ", "");
    EXPECT_EQ(Column(machine.Ask({"environment", "get"}), "Name"), Words{});
}

TEST(EnvironmentTest, Get_Process_ItsVariablesAreShown) {
    const Machine machine;
    machine.Write("/proc/7/environ", Environ({"a=1"}));
    EXPECT_EQ(Column(machine.Ask({"environment", "get", "--pid=7"}), "Name"), (Words{"a"}));
}

TEST(EnvironmentTest, Get_VariablesThatAreNotSet_EachHasAnErrorLine) {
    const Machine machine;
    machine.Write("/proc/self/environ", Environ({"a=1"}));
    EXPECT_TRUE(
        FailsWith(machine.Ask({"environment", "get", "--name=x,a,y"}),
                  "ERROR:Unable to find the variable 'x': the environment does not hold it\n"
                  "ERROR:Unable to find the variable 'y': the environment does not hold it\n"));
}

TEST(EnvironmentTest, Get_HiddenValues_NamesAndSizesStay) {
    const Machine machine;
    machine.Write("/proc/self/environ", Environ({"a=12345"}));
    EXPECT_EQ(ResultOf(machine.Ask({"environment", "get", "--hide-values"}))->ToString(),
              "{'Matches' => 'false', 'Name' => 'a', 'Size' => '5', 'Value' => '', }");
}

TEST(EnvironmentTest, Get_Secret_IsComparedByteForByteAndNoValueIsShown) {
    const Machine machine;
    machine.Write("/proc/self/environ", Environ({"a=it's}$x", "b=it's}$", "c=it's}$x "}));
    EXPECT_EQ(ResultOf(machine.Ask({"environment", "get", "--compare"}, "it's}$x"))->ToString(),
              "{'Matches' => 'true', 'Name' => 'a', 'Size' => '7', 'Value' => '', }, "
              "{'Matches' => 'false', 'Name' => 'b', 'Size' => '6', 'Value' => '', }, "
              "{'Matches' => 'false', 'Name' => 'c', 'Size' => '8', 'Value' => '', }");
}

TEST(EnvironmentTest, Get_TextOnInputWithoutComparison_IsReadAndIgnored) {
    const Machine machine;
    machine.Write("/proc/self/environ", Environ({"a=$val{secret}"}));
    EXPECT_EQ(ResultOf(machine.Ask({"environment", "get"}, "$val{secret}"))->ToString(),
              "{'Matches' => 'false', 'Name' => 'a', 'Size' => '12', "
              "'Value' => '$val{secret}', }");
}

} // namespace
