#include "Samples.h"

#include <filesystem>
#include <gtest/gtest.h>

using HostPack::AddModules;
using HostPack::AddParameters;
using HostPack::Column;
using HostPack::FailsWith;
using HostPack::Machine;
using HostPack::ResultOf;
using HostPack::Words;

TEST(ModulesTest, List_EveryField) {
    const Machine machine;
    AddModules(machine);
    EXPECT_EQ(ResultOf(machine.Ask({"module", "list", "--match=s*"}))->ToString(),
              "{'Name' => 'shared', 'Size' => '4096', 'State' => 'loading', "
              "'Tainting' => 'true', 'Used By' => 'a, b', 'Uses' => '2', }");
}

TEST(ModulesTest, List_UsersAndTaint_AreTakenFromEachLine) {
    const Machine machine;
    AddModules(machine);
    const auto run = machine.Ask({"module", "list"});
    EXPECT_EQ(Column(run, "Used By"), (Words{"", "ext4", "a, b", "", ""}));
    EXPECT_EQ(Column(run, "Uses"), (Words{"2", "1", "2", "0", "0"}));
    EXPECT_EQ(Column(run, "Tainting"), (Words{"false", "false", "true", "false", "false"}));
}

TEST(ModulesTest, List_StateAndUnused_Choose) {
    const Machine machine;
    AddModules(machine);
    EXPECT_EQ(Column(machine.Ask({"module", "list", "--state=loading"}), "Name"),
              (Words{"shared"}));
    EXPECT_EQ(Column(machine.Ask({"module", "list", "--unused"}), "Name"),
              (Words{"idle_one", "fixed"}));
}

TEST(ModulesTest, List_KernelWithoutModules_ErrorSaysWhatAndWhy) {
    const Machine machine;
    EXPECT_TRUE(FailsWith(machine.Ask({"module", "list"}),
                          "ERROR:Unable to read /proc/modules: No such file or directory\n"));
}

TEST(ModulesTest, List_LineThatIsNoModule_ErrorNamesTheFile) {
    const Machine machine;
    machine.Write("/proc/modules", "ext4 1\n");
    EXPECT_TRUE(FailsWith(machine.Ask({"module", "list"}),
                          "ERROR:Unable to read /proc/modules: unexpected contents\n"));
}

TEST(KernelParametersTest, List_DotsWithinAPartOfTheName_AreSlashes) {
    const Machine machine;
    AddParameters(machine);
    EXPECT_EQ(Column(machine.Ask({"parameter", "list"}), "Name"),
              (Words{"kernel.ostype", "net.ipv4.conf.eth0/100.forwarding", "net.ipv4.tcp_rmem"}));
}

TEST(KernelParametersTest, List_Pattern_IsForTheWholeName) {
    const Machine machine;
    AddParameters(machine);
    EXPECT_EQ(Column(machine.Ask({"parameter", "list", "--match=net.*_rmem"}), "Value"),
              (Words{"4096\t131072\t6291456"}));
    EXPECT_EQ(Column(machine.Ask({"parameter", "list", "--match=net"}), "Value"), Words{});
}

TEST(KernelParametersTest, List_Writable_IsSaidByThePermissions) {
    const Machine machine;
    AddParameters(machine);
    std::filesystem::permissions(machine.Root() + "/proc/sys/kernel/ostype",
                                 std::filesystem::perms::owner_read);
    EXPECT_EQ(ResultOf(machine.Ask({"parameter", "list", "--writable=false"}))->ToString(),
              "{'Name' => 'kernel.ostype', 'Problem' => '', 'Readable' => 'true', "
              "'Value' => 'Linux', 'Writable' => 'false', }");
}

TEST(KernelParametersTest, List_EntryThatCannotBeRead_IsListedWithTheReason) {
    const Machine machine;
    AddParameters(machine);
    // A link to itself can be read by nobody, the superuser included.
    machine.MakeLink("/proc/sys/kernel/loop", "loop");
    EXPECT_EQ(ResultOf(machine.Ask({"parameter", "list", "--readable=false"}))->ToString(),
              "{'Name' => 'kernel.loop', 'Problem' => 'Unable to read /proc/sys/kernel/loop: "
              "Too many levels of symbolic links', 'Readable' => 'false', 'Value' => '', "
              "'Writable' => 'false', }");
}

TEST(KernelParametersTest, List_NoParameters_ErrorSaysWhatAndWhy) {
    const Machine machine;
    EXPECT_TRUE(FailsWith(machine.Ask({"parameter", "list"}),
                          "ERROR:Unable to read /proc/sys/: No such file or directory\n"));
}

TEST(KernelParametersTest, Get_NamesInTheOrderGiven) {
    const Machine machine;
    AddParameters(machine);
    const auto run =
        machine.Ask({"parameter", "get", "--name=net.ipv4.conf.eth0/100.forwarding,kernel.ostype"});
    EXPECT_EQ(Column(run, "Value"), (Words{"1", "Linux"}));
    EXPECT_EQ(Column(run, "Name"), (Words{"net.ipv4.conf.eth0/100.forwarding", "kernel.ostype"}));
}

TEST(KernelParametersTest, Get_WhatCannotBeRead_EachHasAnErrorLine) {
    const Machine machine;
    AddParameters(machine);
    EXPECT_TRUE(
        FailsWith(machine.Ask({"parameter", "get", "--name=kernel.no,kernel.ostype,kernel"}),
                  "ERROR:Unable to read /proc/sys/kernel/no: No such file or directory\n"
                  "ERROR:Unable to read /proc/sys/kernel: Is a directory\n"));
}
