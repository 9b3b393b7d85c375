#include "Samples.h"
#include "Tool.h"
#include "tests/support/NamedRow.h"

#include <gtest/gtest.h>
#include <ostream>

using HostPack::AddEverything;
using HostPack::JsonColumn;
using HostPack::JsonOf;
using HostPack::Machine;
using HostPack::ToolOn;
using HostPack::Words;
using TestSupport::kRowName;

namespace {

/// Options that a user gives, and what one column of the result then holds.
struct OptionChoice {
    const char* name;
    const char* path;
    Words options;
    const char* field;
    std::vector<nlohmann::json> values;
};

std::ostream& operator<<(std::ostream& out, const OptionChoice& choice) {
    return out << choice.path;
}

class OptionsTest : public testing::TestWithParam<OptionChoice> {};

const char kProcesses[] = "system process list";
const char kUsers[] = "system user list";
const char kVariables[] = "system environment get";
const char kFilesystems[] = "storage filesystem list";
const char kDevices[] = "storage device list";
const char kInterfaces[] = "network interface list";
const char kRoutes[] = "network route list";
const char kConnections[] = "network connection list";
const char kModules[] = "kernel module list";
const char kParameters[] = "kernel parameter list";
const char kPackages[] = "software package list";

const std::vector<OptionChoice> kChoices = {
    {"Processes", kProcesses, {}, "PID", {1, 3, 20}},
    {"ProcessesOfUsers", kProcesses, {"--user", "ada", "-u", "42"}, "PID", {3}},
    {"ProcessesInStates", kProcesses, {"--state=idle", "-s", "running"}, "PID", {3, 20}},
    {"ProcessesThatFit", kProcesses, {"--match", "*it*"}, "PID", {1, 3}},
    {"KernelThreads", kProcesses, {"--kernel-threads", "t"}, "PID", {20}},
    {"ProcessesSorted", kProcesses, {"--sort", "memory", "--reverse"}, "PID", {20, 1, 3}},
    {"ProcessesLimited", kProcesses, {"-n", " +2"}, "PID", {1, 3}},
    {"ProcessesByAll",
     kProcesses,
     {"-u", "root", "-s", "idle", "-m", "k*", "-k", "1", "-o", "cpu", "-r", "-n", "1"},
     "PID",
     {20}},
    {"Process", "system process get", {"--pid", "3", "-p", "1"}, "PID", {3, 1}},
    {"ProcessWithPaths", "system process get", {"--pid=1", "--paths"}, "Executable", {""}},
    {"Users", kUsers, {}, "Name", {"root", "ada"}},
    {"UsersByName", kUsers, {"--name", "ada", "--name", "bob"}, "Name", {"ada"}},
    {"UsersByNumber", kUsers, {"--uid=0", "--uid=4294967295"}, "Name", {"root"}},
    {"UsersOfSystem", kUsers, {"--system", "no"}, "Name", {"ada"}},
    {"UsersWithLogin", kUsers, {"--login", "True"}, "Name", {"root"}},
    {"Variables", kVariables, {}, "Value", {"vi", "it's}$x"}},
    {"VariablesByName", kVariables, {"--name=EDITOR"}, "Value", {"vi"}},
    {"VariablesHidden", kVariables, {"--hide-values"}, "Value", {"", ""}},
    {"VariablesWithSecret", kVariables, {"--secret", "it's}$x"}, "Matches", {false, true}},
    {"VariablesWithOtherSecret", kVariables, {"--secret=$HOME"}, "Matches", {false, false}},
    {"Filesystems", kFilesystems, {"--all"}, "Mount Point", {"/", "/gone"}},
    {"FilesystemsOfTypes", kFilesystems, {"-t", "xfs", "-t", "fuse.x"}, "Mount Point", {"/gone"}},
    {"FilesystemsThatAreFull", kFilesystems, {"--minimum-use=100"}, "Mount Point", {}},
    {"FilesystemAround", kFilesystems, {"--within", "/proc"}, "Mount Point", {"/"}},
    {"Devices", kDevices, {}, "Name", {"cciss/c0d0", "sda"}},
    {"DevicesAll", kDevices, {"--all"}, "Name", {"cciss/c0d0", "loop0", "sda"}},
    {"DevicesPartitions", kDevices, {"-p", "-s", "401"}, "Name", {"sda", "sda1"}},
    {"DevicesRotational", kDevices, {"--rotational=false"}, "Name", {"cciss/c0d0"}},
    {"Interfaces", kInterfaces, {}, "Name", {"eth0", "lo"}},
    {"InterfacesThatFit", kInterfaces, {"--match=?o"}, "Name", {"lo"}},
    {"InterfacesUp", kInterfaces, {"--up=y"}, "Name", {"eth0"}},
    {"Routes", kRoutes, {}, "Metric", {100, 0, 256, 1024}},
    {"RoutesOfFamily", kRoutes, {"-f", "6"}, "Metric", {256, 1024}},
    {"RoutesOfInterfaces", kRoutes, {"-i", "eth1", "-i", "lo"}, "Metric", {0}},
    {"RoutesAll", kRoutes, {"-i", "lo", "--all"}, "Metric", {4294967295}},
    {"Connections", kConnections, {}, "Local Port", {22, 65535, 22, 53}},
    {"ConnectionsOfProtocol", kConnections, {"--protocol=udp"}, "Local Port", {53}},
    {"ConnectionsOfFamily", kConnections, {"--family=4", "-p", "tcp"}, "Local Port", {22, 65535}},
    {"ConnectionsInState", kConnections, {"--state", "unconnected"}, "Local Port", {53}},
    {"ConnectionsWithPorts", kConnections, {"-n", "80", "-n", "53"}, "Local Port", {65535, 53}},
    {"ConnectionsListening", kConnections, {"-l"}, "Local Port", {22, 22}},
    {"Modules", kModules, {}, "Name", {"ext4", "jbd2", "shared", "idle_one", "fixed"}},
    {"ModulesThatFit", kModules, {"--match=*4"}, "Name", {"ext4"}},
    {"ModulesInState", kModules, {"--state=unloading", "-s", "loading"}, "Name", {"shared"}},
    {"ModulesUnused", kModules, {"--unused"}, "Name", {"idle_one", "fixed"}},
    {"Parameters", kParameters, {}, "Value", {"Linux", "1", "4096\t131072\t6291456"}},
    {"ParametersThatFit", kParameters, {"--match=kernel.*"}, "Value", {"Linux"}},
    {"ParametersUnreadable", kParameters, {"--readable=false"}, "Value", {}},
    {"ParametersReadOnly", kParameters, {"--writable=false"}, "Value", {}},
    {"Parameter", "kernel parameter get", {"-n", "kernel.ostype"}, "Value", {"Linux"}},
    {"Packages", kPackages, {}, "Name", {"libx", "libx", "zsh"}},
    {"PackagesAll", kPackages, {"--all", "--match=o*"}, "Name", {"old"}},
    {"PackagesOfSections", kPackages, {"-s", "shells", "-s", "libs"}, "Name", {"libx", "zsh"}},
    {"PackagesOfPriority", kPackages, {"--priority=required"}, "Name", {"libx"}},
    {"PackagesOfSize", kPackages, {"--minimum-size=31"}, "Name", {"zsh"}},
    {"PackagesSorted", kPackages, {"--sort=size"}, "Name", {"zsh", "libx", "libx"}},
    {"Package", "software package get", {"-n", "zsh", "-n", "libx:i386"}, "Name", {"zsh", "libx"}},
};

TEST_P(OptionsTest, OptionsReachTheProgramAndThoseLeftOutDoNot) {
    const Machine machine;
    AddEverything(machine);
    const auto run =
        ToolOn(machine).Run(GetParam().path, GetParam().options, {"--formatter", "json"});
    EXPECT_EQ(JsonColumn(JsonOf(run), GetParam().field), GetParam().values);
}

INSTANTIATE_TEST_SUITE_P(All, OptionsTest, testing::ValuesIn(kChoices), kRowName);

/// Options that a constraint refuses, and what the tool says.
struct Refusal {
    const char* name;
    const char* path;
    Words options;
    const char* errors;
};

std::ostream& operator<<(std::ostream& out, const Refusal& refusal) {
    return out << refusal.path;
}

class RefusalTest : public testing::TestWithParam<Refusal> {};

const std::vector<Refusal> kRefusals = {
    {"Range",
     "system process get",
     {"--pid", "4194305"},
     "Invalid data constraint for parameter 'pid'. Expected integer in the range 1-4194304\n"},
    {"IntegerSet",
     kRoutes,
     {"--family", "5"},
     "Invalid data constraint for parameter 'family'. Expected a single value from the set "
     "[4, 6]\n"},
    {"StringSet",
     kPackages,
     {"--sort", "age"},
     "Invalid data constraint for parameter 'sort'. Expected a single value from the set "
     "[name, size] got 'age'\n"},
    {"Expression",
     kProcesses,
     {"--user", "$(reboot)"},
     "Invalid data constraint for parameter 'user'. Value does not match the expected regular "
     "expression ([A-Za-z0-9_][A-Za-z0-9_.-]*)\n"},
    {"Quote",
     "kernel parameter get",
     {"--name", "a'b"},
     "Invalid data constraint for parameter 'name'. Value does not match the expected regular "
     "expression ([A-Za-z0-9_][A-Za-z0-9_./:@+-]*)\n"},
    {"Required", "network interface get", {}, "Missing required parameter --name\n"},
    {"ErrorOfTheProgram",
     "software package get",
     {"--name", "no", "--name", "nor"},
     "Unable to find the package 'no': /var/lib/dpkg/status does not list it\n"
     "Unable to find the package 'nor': /var/lib/dpkg/status does not list it\n"},
};

TEST_P(RefusalTest, NothingIsPrintedButTheErrors) {
    const Machine machine;
    AddEverything(machine);
    const auto run = ToolOn(machine).Run(GetParam().path, GetParam().options);
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, std::string("Errors: \n") + GetParam().errors);
}

INSTANTIATE_TEST_SUITE_P(All, RefusalTest, testing::ValuesIn(kRefusals), kRowName);

} // namespace
