#include "Samples.h"
#include "tests/support/NamedRow.h"

#include <gtest/gtest.h>
#include <ostream>

using HostPack::AddInterfaces;
using HostPack::AddRoutes;
using HostPack::AddSockets;
using HostPack::Column;
using HostPack::FailsWith;
using HostPack::kRouteHeader;
using HostPack::Machine;
using HostPack::ResultOf;
using HostPack::Words;
using TestSupport::kRowName;

TEST(InterfacesTest, List_EveryFieldOfAnInterface) {
    const Machine machine;
    AddInterfaces(machine);
    EXPECT_EQ(ResultOf(machine.Ask({"interface", "list", "--match=e*"}))->ToString(),
              "{'Addresses' => '', 'Hardware Address' => '02:00:00:00:00:01', 'Index' => '2', "
              "'Loopback' => 'false', 'MTU' => '1500', 'Name' => 'eth0', 'Speed' => '1000', "
              "'State' => 'up', 'Up' => 'true', }");
}

TEST(InterfacesTest, List_FilesBesideTheInterfaces_AreNoInterfaces) {
    const Machine machine;
    AddInterfaces(machine);
    EXPECT_EQ(Column(machine.Ask({"interface", "list"}), "Name"), (Words{"eth0", "lo"}));
}

TEST(InterfacesTest, List_Up_Chooses) {
    const Machine machine;
    AddInterfaces(machine);
    EXPECT_EQ(Column(machine.Ask({"interface", "list", "--up=true"}), "Name"), (Words{"eth0"}));
    EXPECT_EQ(Column(machine.Ask({"interface", "list", "--up=false"}), "Name"), (Words{"lo"}));
}

TEST(InterfacesTest, List_AwkwardName_StaysWhatItIs) {
    const Machine machine;
    machine.Write("/sys/class/net/<a&\"'>\xFF/ifindex", "1\n");
    EXPECT_EQ(Column(machine.Ask({"interface", "list"}), "Name"), (Words{"<a&\"'>\\xff"}));
}

TEST(InterfacesTest, Get_EveryField_WhatIsNotKnownIsZeroAndTheSpeedMinusOne) {
    const Machine machine;
    AddInterfaces(machine);
    EXPECT_EQ(ResultOf(machine.Ask({"interface", "get", "--name=lo"}))->ToString(),
              "{'Addresses' => '', 'Hardware Address' => '', 'Index' => '1', "
              "'Loopback' => 'true', 'MTU' => '0', 'Name' => 'lo', 'Received' => '0', "
              "'Received Drops' => '0', 'Received Errors' => '0', 'Received Packets' => '0', "
              "'Sent' => '0', 'Sent Drops' => '0', 'Sent Errors' => '0', 'Sent Packets' => '0', "
              "'Speed' => '-1', 'State' => 'unknown', 'Up' => 'false', }");
}

TEST(InterfacesTest, Get_Counters_AreTakenFromTheStatistics) {
    const Machine machine;
    AddInterfaces(machine);
    EXPECT_EQ(ResultOf(machine.Ask({"interface", "get", "--name=eth0"}))->ToString(),
              "{'Addresses' => '', 'Hardware Address' => '02:00:00:00:00:01', 'Index' => '2', "
              "'Loopback' => 'false', 'MTU' => '1500', 'Name' => 'eth0', "
              "'Received' => '18446744073', 'Received Drops' => '0', 'Received Errors' => '0', "
              "'Received Packets' => '0', 'Sent' => '0', 'Sent Drops' => '0', "
              "'Sent Errors' => '0', 'Sent Packets' => '77', 'Speed' => '1000', 'State' => 'up', "
              "'Up' => 'true', }");
}

TEST(InterfacesTest, Get_NoSuchInterface_ErrorSaysWhatAndWhy) {
    const Machine machine;
    AddInterfaces(machine);
    EXPECT_TRUE(
        FailsWith(machine.Ask({"interface", "get", "--name=eth7"}),
                  "ERROR:Unable to read /sys/class/net/eth7/ifindex: No such file or directory\n"));
}

TEST(RoutesTest, List_BothFamilies_WithoutTheKernelsOwn) {
    const Machine machine;
    AddRoutes(machine);
    EXPECT_EQ(ResultOf(machine.Ask({"route", "list"}))->ToString(),
              "{'Default' => 'true', 'Destination' => '0.0.0.0/0', 'Family' => '4', "
              "'Flags' => 'UG', 'Gateway' => '192.0.2.1', 'Interface' => 'eth0', "
              "'Metric' => '100', }, "
              "{'Default' => 'false', 'Destination' => '192.0.2.0/23', 'Family' => '4', "
              "'Flags' => 'U', 'Gateway' => '', 'Interface' => 'eth1', 'Metric' => '0', }, "
              "{'Default' => 'false', 'Destination' => '2001:db8::/32', 'Family' => '6', "
              "'Flags' => 'U', 'Gateway' => '', 'Interface' => 'eth0', 'Metric' => '256', }, "
              "{'Default' => 'true', 'Destination' => '::/0', 'Family' => '6', "
              "'Flags' => 'UG', 'Gateway' => 'fe80::1', 'Interface' => 'eth0', "
              "'Metric' => '1024', }");
}

TEST(RoutesTest, List_All_TheKernelsOwnAreListedToo) {
    const Machine machine;
    AddRoutes(machine);
    EXPECT_EQ(Column(machine.Ask({"route", "list", "--all", "--family=6"}), "Flags"),
              (Words{"U", "UG", "!"}));
}

TEST(RoutesTest, List_FamilyAndInterface_Choose) {
    const Machine machine;
    AddRoutes(machine);
    EXPECT_EQ(Column(machine.Ask({"route", "list", "--family=4"}), "Interface"),
              (Words{"eth0", "eth1"}));
    EXPECT_EQ(Column(machine.Ask({"route", "list", "--interface=eth1,eth9"}), "Interface"),
              (Words{"eth1"}));
}

TEST(RoutesTest, List_KernelWithoutIp6_IsAnErrorOnlyForThoseWhoAskForIt) {
    const Machine machine;
    machine.Write("/proc/net/route", kRouteHeader);
    EXPECT_EQ(Column(machine.Ask({"route", "list"}), "Family"), Words{});
    EXPECT_TRUE(
        FailsWith(machine.Ask({"route", "list", "--family=6"}),
                  "ERROR:Unable to read /proc/net/ipv6_route: No such file or directory\n"));
}

TEST(RoutesTest, List_NoTable_ErrorSaysWhatAndWhy) {
    const Machine machine;
    EXPECT_TRUE(FailsWith(machine.Ask({"route", "list"}),
                          "ERROR:Unable to read /proc/net/route: No such file or directory\n"));
}

TEST(RoutesTest, List_LineThatIsNoRoute_ErrorSaysWhy) {
    const Machine machine;
    machine.Write("/proc/net/route", kRouteHeader + "eth0 1 2\n");
    EXPECT_TRUE(FailsWith(machine.Ask({"route", "list"}),
                          "ERROR:Unable to read /proc/net/route: unexpected contents\n"));
    machine.Write("/proc/net/route", kRouteHeader + "eth0 XY 0 3 0 0 0 0\n");
    EXPECT_TRUE(
        FailsWith(machine.Ask({"route", "list"}), "ERROR:'XY' is not an internet address\n"));
}

TEST(ConnectionsTest, List_EveryFieldOfAConnection) {
    const Machine machine;
    AddSockets(machine);
    EXPECT_EQ(ResultOf(machine.Ask({"connection", "list", "--state=established"}))->ToString(),
              "{'Family' => '4', 'Inode' => '4711', 'Local Address' => '192.0.2.2', "
              "'Local Port' => '65535', 'Protocol' => 'tcp', 'Receive Queue' => '11', "
              "'Remote Address' => '192.0.2.9', 'Remote Port' => '80', 'Send Queue' => '10', "
              "'State' => 'established', 'User' => 'ada', }");
}

TEST(ConnectionsTest, List_TablesAreReadInTurn_AndOneOfIp6MayLack) {
    const Machine machine;
    AddSockets(machine);
    const auto run = machine.Ask({"connection", "list"});
    EXPECT_EQ(Column(run, "Protocol"), (Words{"tcp", "tcp", "tcp", "udp"}));
    EXPECT_EQ(Column(run, "Family"), (Words{"4", "4", "6", "4"}));
    EXPECT_EQ(Column(run, "State"),
              (Words{"listening", "established", "listening", "unconnected"}));
    EXPECT_EQ(Column(run, "Local Address"),
              (Words{"127.0.0.1", "192.0.2.2", "2001:db8::1", "0.0.0.0"}));
    EXPECT_TRUE(FailsWith(machine.Ask({"connection", "list", "--family=6"}),
                          "ERROR:Unable to read /proc/net/udp6: No such file or directory\n"));
}

namespace {

struct ConnectionChoice {
    const char* name;
    Words options;
    Words ports;
};

std::ostream& operator<<(std::ostream& out, const ConnectionChoice& choice) {
    return out << choice.name;
}

class ConnectionChoiceTest : public testing::TestWithParam<ConnectionChoice> {};

TEST_P(ConnectionChoiceTest, List_OptionsChoose) {
    const Machine machine;
    AddSockets(machine);
    Words words{"connection", "list"};
    words.insert(words.end(), GetParam().options.begin(), GetParam().options.end());
    EXPECT_EQ(Column(machine.Ask(words), "Local Port"), GetParam().ports);
}

INSTANTIATE_TEST_SUITE_P(
    All, ConnectionChoiceTest,
    testing::Values(
        ConnectionChoice{"Protocol", {"--protocol=udp"}, {"53"}},
        ConnectionChoice{"BothProtocols", {"--protocol=tcp,udp"}, {"22", "65535", "22", "53"}},
        ConnectionChoice{"Family", {"--family=6", "--protocol=tcp"}, {"22"}},
        ConnectionChoice{"State", {"--state=unconnected,listening"}, {"22", "22", "53"}},
        ConnectionChoice{"LocalPort", {"--port=53"}, {"53"}},
        ConnectionChoice{"RemotePort", {"--port=80"}, {"65535"}},
        ConnectionChoice{"SeveralPorts", {"--port=22,80"}, {"22", "65535", "22"}},
        ConnectionChoice{"Listening", {"--listening"}, {"22", "22"}}),
    kRowName);

} // namespace
