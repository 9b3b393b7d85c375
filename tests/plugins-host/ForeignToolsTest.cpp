#include "Tool.h"

#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <ostream>

using HostPack::FileOf;
using HostPack::JsonOf;
using HostPack::RunTool;
using HostPack::Words;

namespace {

/// Programs that stand in front of, or in place of, those of the machine.
class FakeTools {
  public:
    /// The program prints `output`, ends with `status` and writes down what it was called with.
    void Install(const std::string& name, const std::string& output, int status = 0) const {
        const std::string printed = directory_.Write(name + ".out", output);
        const std::string script = directory_.Write(
            name, "#!/bin/sh\nprintf '%s\\n' \"$@\" >'" + directory_ / (name + ".words") +
                      "'\ncat '" + printed + "'\nexit " + std::to_string(status) + "\n");
        std::filesystem::permissions(script, std::filesystem::perms::owner_all);
    }

    /// One word a line.
    std::string WordsFor(const std::string& name) const {
        return FileOf(directory_ / (name + ".words"));
    }

    TestSupport::ChildRun Run(const std::string& path, const Words& options = {},
                              const std::string& formatter = "json") const {
        return RunTool(path, options, "", {{"PATH", directory_.Path() + ":" + std::getenv("PATH")}},
                       formatter);
    }

    /// Where no program is installed.
    TestSupport::ChildRun RunWithoutTools(const std::string& path) const {
        return RunTool(path, {}, "", {{"PATH", directory_.Path()}});
    }

  private:
    TestSupport::TempDirectory directory_;
};

const char kVolumes[] = R"({"blockdevices": [
  {"name": "sda", "type": "disk", "size": 1000, "ro": false, "rm": true, "fstype": null,
   "label": null, "uuid": null, "mountpoints": [null], "children": [
    {"name": "sda1", "type": "part", "size": 600, "ro": true, "rm": true, "fstype": "ext4",
     "label": "a <b> & 'c'", "uuid": "12-34", "mountpoints": ["/", "/home"]}]}]})";
const char kMounts[] = R"({"filesystems": [
  {"target": "/", "source": "/dev/sda1", "fstype": "ext4", "options": "rw",
   "propagation": "shared", "children": [
    {"target": "/proc", "source": "proc", "fstype": "proc", "options": "rw,nosuid",
     "propagation": "private"}]}]})";
const char kAddresses[] = R"([{}, {"ifname": "eth0", "operstate": "UP", "addr_info": [
  {"family": "inet", "local": "192.0.2.1", "prefixlen": 24, "scope": "global", "dynamic": true,
   "valid_life_time": 70, "preferred_life_time": 60},
  {"family": "inet6", "local": "fe80::1", "prefixlen": 64, "scope": "link",
   "valid_life_time": 4294967295, "preferred_life_time": 4294967295}]}])";
const char kNeighbours[] = R"([
  {"dst": "192.0.2.7", "dev": "eth0", "lladdr": "02:00:00:00:00:07", "state": ["STALE"]},
  {"dst": "fe80::7", "state": ["FAILED", "PROBE"]}])";

/// A command, what the tool behind it prints, and what becomes of that.
struct ForeignCall {
    const char* name;
    const char* path;
    Words options;
    const char* tool;
    const char* printed;
    const char* words; ///< What the tool is called with, one word a line.
    const char* json;
};

std::ostream& operator<<(std::ostream& out, const ForeignCall& call) {
    return out << call.name;
}

const std::vector<ForeignCall> kForeignCalls = {
    {"Volumes",
     "storage volume list",
     {},
     "lsblk",
     kVolumes,
     "--json\n--bytes\n--output\nNAME,TYPE,SIZE,RO,RM,FSTYPE,LABEL,UUID,MOUNTPOINTS\n",
     R"([
{"File System": "", "Kind": "disk", "Label": "", "Mount Points": [], "Name": "sda", "Parent": "",
 "Read Only": false, "Removable": true, "Size": 1000, "UUID": ""},
{"File System": "ext4", "Kind": "part", "Label": "a <b> & 'c'", "Mount Points": ["/", "/home"],
 "Name": "sda1", "Parent": "sda", "Read Only": true, "Removable": true, "Size": 600,
 "UUID": "12-34"}])"},
    {"VolumesByAll",
     "storage volume list",
     {"--all", "--name", "mapper/x"},
     "lsblk",
     R"({"blockdevices": []})",
     "--json\n--bytes\n--output\nNAME,TYPE,SIZE,RO,RM,FSTYPE,LABEL,UUID,MOUNTPOINTS\n"
     "--all\n/dev/mapper/x\n",
     "[]"},
    {"Mounts",
     "storage mount list",
     {},
     "findmnt",
     kMounts,
     "--json\n--output\nTARGET,SOURCE,FSTYPE,OPTIONS,PROPAGATION\n",
     R"([
{"Mount Point": "/", "Options": "rw", "Propagation": "shared", "Source": "/dev/sda1",
 "Type": "ext4"},
{"Mount Point": "/proc", "Options": "rw,nosuid", "Propagation": "private", "Source": "proc",
 "Type": "proc"}])"},
    {"MountsByAll",
     "storage mount list",
     {"--type", "ext4", "--within", "/proc/../proc/self"},
     "findmnt",
     kMounts,
     "--json\n--output\nTARGET,SOURCE,FSTYPE,OPTIONS,PROPAGATION\n"
     "--types\next4\n--target\n/proc/../proc/self\n",
     R"([
{"Mount Point": "/", "Options": "rw", "Propagation": "shared", "Source": "/dev/sda1",
 "Type": "ext4"},
{"Mount Point": "/proc", "Options": "rw,nosuid", "Propagation": "private", "Source": "proc",
 "Type": "proc"}])"},
    {"Addresses",
     "network address list",
     {},
     "ip",
     kAddresses,
     "-json\naddress\nshow\n",
     R"([
{"Address": "192.0.2.1", "Dynamic": true, "Family": "inet", "Interface": "eth0",
 "Preferred Lifetime": 60, "Prefix Length": 24, "Scope": "global", "State": "UP",
 "Valid Lifetime": 70},
{"Address": "fe80::1", "Dynamic": false, "Family": "inet6", "Interface": "eth0",
 "Preferred Lifetime": 4294967295, "Prefix Length": 64, "Scope": "link", "State": "UP",
 "Valid Lifetime": 4294967295}])"},
    {"AddressesByAll",
     "network address list",
     {"-f", "6", "-i", "br-1.2"},
     "ip",
     "[{}]",
     "-json\n-6\naddress\nshow\ndev\nbr-1.2\n",
     "[]"},
    {"NeighboursByAll",
     "network neighbour list",
     {"--family=4", "--interface=eth1"},
     "ip",
     kNeighbours,
     "-json\n-4\nneighbour\nshow\ndev\neth1\n",
     R"([
{"Address": "192.0.2.7", "Hardware Address": "02:00:00:00:00:07", "Interface": "eth0",
 "State": ["STALE"]},
{"Address": "fe80::7", "Hardware Address": "", "Interface": "eth1",
 "State": ["FAILED", "PROBE"]}])"},
    {"NoNeighbours", "network neighbour list", {}, "ip", "", "-json\nneighbour\nshow\n", "[]"},
};

class ForeignToolsTest : public testing::TestWithParam<ForeignCall> {};

TEST_P(ForeignToolsTest, Call_ToolGetsTheseWordsAndItsOutputBecomesThisResult) {
    const FakeTools tools;
    tools.Install(GetParam().tool, GetParam().printed);
    const auto run = tools.Run(GetParam().path, GetParam().options);
    EXPECT_EQ(JsonOf(run), nlohmann::json::parse(GetParam().json));
    EXPECT_EQ(tools.WordsFor(GetParam().tool), GetParam().words);
}

INSTANTIATE_TEST_SUITE_P(All, ForeignToolsTest, testing::ValuesIn(kForeignCalls),
                         [](const auto& row) { return row.param.name; });

/// A command and the tool behind it.
struct ToolBehind {
    const char* name;
    const char* path;
    const char* tool;
    const char* printed;
    const char* table;
};

std::ostream& operator<<(std::ostream& out, const ToolBehind& behind) {
    return out << behind.name;
}

class ToolBehindTest : public testing::TestWithParam<ToolBehind> {};

TEST_P(ToolBehindTest, DefaultFormatter_PrintsThisTable) {
    const FakeTools tools;
    tools.Install(GetParam().tool, GetParam().printed);
    const auto run = tools.Run(GetParam().path, {}, "table");
    EXPECT_EQ(run.out, GetParam().table);
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.status, 0);
}

TEST_P(ToolBehindTest, NotInstalled_ErrorNamesTheTool) {
    const FakeTools tools;
    const auto run = tools.RunWithoutTools(GetParam().path);
    EXPECT_EQ(run.err, std::string("Errors: \nUnable to run '") + GetParam().tool +
                           "': No such file or directory; is it installed?\n");
    EXPECT_EQ(run.status, 1);
}

TEST_P(ToolBehindTest, Failing_ErrorNamesToolAndStatus) {
    const FakeTools tools;
    tools.Install(GetParam().tool, GetParam().printed, 32);
    const auto run = tools.Run(GetParam().path);
    EXPECT_EQ(run.err, std::string("Errors: \n'") + GetParam().tool + "' failed with status 32\n");
    EXPECT_EQ(run.status, 1);
}

TEST_P(ToolBehindTest, OutputCutShort_IsAnErrorNotAShorterList) {
    const FakeTools tools;
    const std::string printed = GetParam().printed;
    tools.Install(GetParam().tool, printed.substr(0, printed.rfind('}')));
    const auto run = tools.Run(GetParam().path);
    EXPECT_TRUE(run.err.starts_with(std::string("Errors: \nUnable to read the output of '") +
                                    GetParam().tool + "' as json: parse error at line "))
        << run.err;
    EXPECT_EQ(run.status, 1);
}

INSTANTIATE_TEST_SUITE_P(
    All, ToolBehindTest,
    testing::Values(
        ToolBehind{"Volumes", "storage volume list", "lsblk", kVolumes,
                   "Name  Parent  Kind  Size    Read Only  File System  Label        Mount Points\n"
                   "----  ------  ----  ------  ---------  -----------  -----------  ------------\n"
                   "sda           disk  1000 B  false                                \n"
                   "sda1  sda     part   600 B  true       ext4         a <b> & 'c'  /, /home\n"},
        ToolBehind{"Mounts", "storage mount list", "findmnt", kMounts,
                   "Source     Type  Mount Point  Options\n"
                   "---------  ----  -----------  -------\n"
                   "/dev/sda1  ext4  /            rw\n"
                   "proc       proc  /proc        rw,nosuid\n"},
        ToolBehind{"Addresses", "network address list", "ip", kAddresses,
                   "Interface  State  Family  Scope   Dynamic  Prefix Length  Address\n"
                   "---------  -----  ------  ------  -------  -------------  -------\n"
                   "eth0       UP     inet    global  true                24  192.0.2.1\n"
                   "eth0       UP     inet6   link    false               64  fe80::1\n"},
        ToolBehind{"Neighbours", "network neighbour list", "ip",
                   R"([{"dst": "192.0.2.7", "dev": "eth0", "lladdr": "02:00:00:00:00:07",
                        "state": ["STALE", "PROBE"]}])",
                   "Interface  Address    Hardware Address   State\n"
                   "---------  ---------  -----------------  -----\n"
                   "eth0       192.0.2.7  02:00:00:00:00:07  STALE, PROBE\n"}),
    [](const auto& row) { return row.param.name; });

TEST(MountListTest, TypeThatNothingHas_IsAnEmptyList) {
    const FakeTools tools;
    tools.Install("findmnt", "", 1);
    EXPECT_EQ(JsonOf(tools.Run("storage mount list", {"--type=ext9"})), nlohmann::json::array());
}

TEST(MountListTest, NothingFoundWithoutAType_IsAnError) {
    const FakeTools tools;
    tools.Install("findmnt", "", 1);
    EXPECT_EQ(tools.Run("storage mount list").err, "Errors: \n'findmnt' failed with status 1\n");
}

TEST(MountListTest, TypeThatWouldMeanAllOthers_IsRefused) {
    const FakeTools tools;
    EXPECT_EQ(tools.Run("storage mount list", {"--type=noext4"}).err,
              "Errors: \nInvalid data constraint for parameter 'type'. Value does not match the "
              "expected regular expression ((?!no)[A-Za-z0-9_.-]+)\n");
}

TEST(MountListTest, WithinAnyName_ReachesTheToolAsItIs) {
    const FakeTools tools;
    tools.Install("findmnt", kMounts);
    const TestSupport::TempDirectory directory;
    const std::string name = directory.MakeDirectory(" a 'b' \"c\" $(d) `e`;\nf\n");
    const auto run = tools.Run("storage mount list", {"--within=" + name});
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_TRUE(tools.WordsFor("findmnt").ends_with("--target\n" + name + "\n"));
}

TEST(MountListTest, WithinWhatIsNotThere_IsAnError) {
    const FakeTools tools;
    tools.Install("findmnt", "", 1);
    EXPECT_EQ(tools.Run("storage mount list", {"--within=/no/thing"}).err,
              "Errors: \n'findmnt' failed with status 1\n");
}

} // namespace
