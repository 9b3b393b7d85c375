#include "Tool.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <mntent.h>
#include <pwd.h>
#include <set>
#include <sys/statvfs.h>
#include <unistd.h>

using HostPack::BytesOf;
using HostPack::FileOf;
using HostPack::JsonColumn;
using HostPack::JsonOf;
using HostPack::RowWith;
using HostPack::RunTool;
using HostPack::Words;

namespace {

std::set<long> PidsInProc() {
    std::set<long> pids;
    for (const auto& entry : std::filesystem::directory_iterator("/proc")) {
        const std::string name = entry.path().filename();
        if (name.find_first_not_of("0123456789") == std::string::npos) {
            pids.insert(std::stol(name));
        }
    }
    return pids;
}

/// The number behind "key" at the beginning of a line.
long NumberBehind(const std::string& text, const std::string& key) {
    const auto place = ("\n" + text).find("\n" + key);
    if (place == std::string::npos) {
        throw std::runtime_error("no " + key + " in: " + text);
    }
    return std::stol(text.substr(place + key.size()));
}

std::string WithoutLineEnd(std::string text) {
    text.erase(text.find_last_not_of('\n') + 1);
    return text;
}

Words LinesOf(const std::string& text) {
    std::istringstream stream(text);
    Words lines;
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    return lines;
}

TEST(LiveProcessTest, List_HoldsEveryProcessThatLivedThroughIt) {
    const std::set<long> before = PidsInProc();
    const auto list = JsonOf(RunTool("system process list"));
    const std::set<long> after = PidsInProc();
    std::set<long> listed;
    for (const auto& pid : JsonColumn(list, "PID")) {
        listed.insert(pid.get<long>());
    }
    for (const long pid : before) {
        if (after.contains(pid)) {
            EXPECT_TRUE(listed.contains(pid)) << pid;
        }
    }
}

TEST(LiveProcessTest, List_ThisProcess_IsAsProcSaysIt) {
    const auto row = RowWith(JsonOf(RunTool("system process list")), "PID", getpid());
    const std::string status = FileOf("/proc/self/status");
    std::string commandLine = FileOf("/proc/self/cmdline");
    commandLine.pop_back();
    std::replace(commandLine.begin(), commandLine.end(), '\0', ' ');
    EXPECT_EQ(row["Parent"], NumberBehind(status, "PPid:"));
    EXPECT_EQ(row["Threads"], NumberBehind(status, "Threads:"));
    EXPECT_EQ(BytesOf(row["Name"]), WithoutLineEnd(FileOf("/proc/self/comm")));
    EXPECT_EQ(BytesOf(row["Command"]), commandLine);
    EXPECT_EQ(BytesOf(row["User"]), getpwuid(geteuid())->pw_name);
    EXPECT_EQ(row["Kernel Thread"], false);
    EXPECT_GT(row["Resident"], 0);
}

TEST(LiveProcessTest, Get_ThisProcess_IsAsProcSaysIt) {
    const auto list =
        JsonOf(RunTool("system process get", {"--paths", "--pid", std::to_string(getpid())}));
    ASSERT_EQ(list.size(), 1U);
    EXPECT_EQ(list[0]["PID"], getpid());
    EXPECT_EQ(BytesOf(list[0]["Executable"]),
              std::filesystem::read_symlink("/proc/self/exe").string());
    EXPECT_EQ(BytesOf(list[0]["Directory"]), std::filesystem::current_path().string());
}

TEST(LiveProcessTest, Get_NumberBeyondAllProcesses_ErrorNamesIt) {
    const auto run = RunTool("system process get", {"--pid", "4194304"});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.err, "Errors: \nUnable to read /proc/4194304/stat: No such file or directory\n");
}

TEST(LiveSystemTest, Uptime_LiesBetweenTwoReadings) {
    const long before = std::stol(FileOf("/proc/uptime"));
    const auto uptime = JsonOf(RunTool("system uptime get"));
    const long after = std::stol(FileOf("/proc/uptime"));
    EXPECT_GE(uptime["Seconds"], before);
    EXPECT_LE(uptime["Seconds"], after);
}

TEST(LiveSystemTest, Load_ProcessorsAreThoseOfProcStat) {
    const std::string stat = FileOf("/proc/stat");
    long processors = 0;
    while (stat.find("\ncpu" + std::to_string(processors) + " ") != std::string::npos) {
        ++processors;
    }
    EXPECT_EQ(JsonOf(RunTool("system load get"))["Processors"], processors);
}

TEST(LiveSystemTest, Memory_TotalsAreThoseOfMeminfo) {
    const auto memory = JsonOf(RunTool("system memory get"));
    const std::string meminfo = FileOf("/proc/meminfo");
    EXPECT_EQ(memory["Total"], NumberBehind(meminfo, "MemTotal:"));
    EXPECT_EQ(memory["Swap Total"], NumberBehind(meminfo, "SwapTotal:"));
}

TEST(LiveSystemTest, Users_AreThoseOfThePasswordFile) {
    Words names;
    for (const std::string& line : LinesOf(FileOf("/etc/passwd"))) {
        names.push_back(line.substr(0, line.find(':')));
    }
    Words listed;
    for (const auto& name : JsonColumn(JsonOf(RunTool("system user list")), "Name")) {
        listed.push_back(BytesOf(name));
    }
    EXPECT_EQ(listed, names);
}

TEST(LiveSystemTest, Environment_OfThisProcess_IsAsProcSaysIt) {
    const std::string environ = FileOf("/proc/self/environ");
    const auto list =
        JsonOf(RunTool("system environment get", {"--pid", std::to_string(getpid())}));
    std::size_t size = 0;
    for (const auto& row : list) {
        const std::string entry = BytesOf(row["Name"]) + "=" + BytesOf(row["Value"]);
        EXPECT_NE(('\0' + environ).find('\0' + entry + '\0'), std::string::npos) << entry;
        size += entry.size() + 1;
    }
    EXPECT_EQ(size, environ.size());
}

TEST(LiveSystemTest, Environment_AwkwardValue_IsTheOneGiven) {
    const auto list = JsonOf(RunTool("system environment get", {"--name=AWKWARD"}, "",
                                     {{"AWKWARD", "a'b\"c\n<d>&\\ \xC3\xA9 $HOME"}}));
    ASSERT_EQ(list.size(), 1U);
    EXPECT_EQ(BytesOf(list[0]["Value"]), "a'b\"c\n<d>&\\ \xC3\xA9 $HOME");
}

TEST(LiveStorageTest, Filesystems_AreMeasuredAsTheSystemMeasuresThem) {
    const auto list = JsonOf(RunTool("storage filesystem list", {"--all"}));
    EXPECT_FALSE(list.empty());
    for (const auto& row : list) {
        struct statvfs numbers {};

        const std::string mountPoint = BytesOf(row["Mount Point"]);
        EXPECT_EQ(row["Measured"], statvfs(mountPoint.c_str(), &numbers) == 0) << mountPoint;
        EXPECT_EQ(row["Size"], numbers.f_blocks * numbers.f_frsize / 1024) << mountPoint;
        EXPECT_EQ(row["Inodes"], numbers.f_files) << mountPoint;
    }
}

TEST(LiveStorageTest, Filesystems_AreThoseOfTheMountTable) {
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> table(setmntent("/proc/self/mounts", "r"),
                                                                endmntent);
    std::set<std::string> mountPoints;
    while (const mntent* entry = getmntent(table.get())) {
        mountPoints.insert(entry->mnt_dir);
    }
    std::set<std::string> listed;
    const auto list = JsonOf(RunTool("storage filesystem list", {"--all"}));
    for (const auto& mountPoint : JsonColumn(list, "Mount Point")) {
        listed.insert(BytesOf(mountPoint));
    }
    EXPECT_EQ(listed, mountPoints);
}

TEST(LiveStorageTest, Devices_SizesAreThoseOfSysfs) {
    const auto list = JsonOf(RunTool("storage device list", {"--all"}));
    std::size_t count = 0;
    for (const auto& entry : std::filesystem::directory_iterator("/sys/block")) {
        std::string name = entry.path().filename();
        const long sectors = std::stol(FileOf(entry.path() / "size"));
        std::replace(name.begin(), name.end(), '!', '/');
        EXPECT_EQ(RowWith(list, "Name", name)["Size"], sectors / 2) << name;
        ++count;
    }
    EXPECT_EQ(list.size(), count);
}

TEST(LiveKernelTest, Modules_AreThoseOfProcModulesIfTheKernelHasAny) {
    const auto run = RunTool("kernel module list");
    if (!std::filesystem::exists("/proc/modules")) {
        EXPECT_EQ(run.err, "Errors: \nUnable to read /proc/modules: No such file or directory\n");
        return;
    }
    std::vector<nlohmann::json> names;
    for (const std::string& line : LinesOf(FileOf("/proc/modules"))) {
        names.emplace_back(line.substr(0, line.find(' ')));
    }
    EXPECT_EQ(JsonColumn(JsonOf(run), "Name"), names);
}

TEST(LiveKernelTest, Parameters_ValuesAreThoseOfProcSys) {
    const auto list = JsonOf(
        RunTool("kernel parameter get", {"--name=kernel.ostype", "--name=kernel.osrelease"}));
    ASSERT_EQ(list.size(), 2U);
    EXPECT_EQ(BytesOf(list[0]["Value"]), WithoutLineEnd(FileOf("/proc/sys/kernel/ostype")));
    EXPECT_EQ(BytesOf(list[1]["Value"]), WithoutLineEnd(FileOf("/proc/sys/kernel/osrelease")));
}

TEST(LiveKernelTest, Parameters_ListHoldsEveryFileOfADirectory) {
    const auto list = JsonOf(RunTool("kernel parameter list", {"--match=kernel.*"}));
    for (const auto& entry : std::filesystem::directory_iterator("/proc/sys/kernel")) {
        if (entry.is_regular_file()) {
            const std::string name = "kernel." + entry.path().filename().string();
            EXPECT_EQ(RowWith(list, "Name", name)["Name"], name);
        }
    }
}

TEST(LiveSoftwareTest, Packages_AreThoseOfTheStatusFileIfThereIsOne) {
    const std::string file = "/var/lib/dpkg/status";
    const auto run = RunTool("software package list");
    if (!std::filesystem::exists(file)) {
        EXPECT_EQ(run.err, "Errors: \nUnable to read " + file + ": No such file or directory\n");
        return;
    }
    const Words lines = LinesOf(FileOf(file));
    const auto installed = std::count(lines.begin(), lines.end(), "Status: install ok installed") +
                           std::count(lines.begin(), lines.end(), "Status: hold ok installed");
    EXPECT_EQ(JsonOf(run).size(), static_cast<std::size_t>(installed));
}

} // namespace
