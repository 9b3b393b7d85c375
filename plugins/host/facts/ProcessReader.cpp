#include "ProcessReader.h"

#include "HostError.h"
#include "TextTools.h"

#include <algorithm>
#include <unistd.h>

namespace HostFacts {

namespace {

/// Places of the numbers in /proc/PID/stat, counted from the state, which follows the name.
enum StatPlace : std::size_t {
    kState = 0,
    kParent = 1,
    kFlags = 6,
    kUserTime = 11,
    kSystemTime = 12,
    kNice = 16,
    kStartTime = 19,
    kPlacesNeeded = 20,
};

constexpr long kKernelThreadFlag = 0x00200000;

std::string StateWord(std::string_view letter) {
    static const std::map<std::string_view, std::string_view> words = {
        {"R", "running"}, {"S", "sleeping"}, {"D", "waiting"}, {"Z", "zombie"}, {"T", "stopped"},
        {"t", "traced"},  {"I", "idle"},     {"X", "dead"},    {"P", "parked"}};
    const auto word = words.find(letter);
    return std::string(word == words.end() ? letter : word->second);
}

std::string ProcessDirectory(long pid) {
    return "/proc/" + std::to_string(pid) + "/";
}

/// The name stands in parentheses and may hold blanks and parentheses itself, so what follows it
/// is found from the end.
std::vector<std::string_view> StatFields(std::string_view stat, const std::string& path) {
    const auto nameEnd = stat.rfind(')');
    const auto fields = nameEnd == std::string_view::npos ? std::vector<std::string_view>()
                                                          : Words(Trim(stat.substr(nameEnd + 1)));
    if (fields.size() < kPlacesNeeded) {
        throw HostError("Unable to read " + path + ": unexpected contents");
    }
    return fields;
}

void TakeStat(Process& process, const std::string& stat, const std::string& path) {
    static const long ticksPerSecond = std::max(sysconf(_SC_CLK_TCK), 1L);
    const auto fields = StatFields(stat, path);
    const auto number = [&](StatPlace place) { return LeadingNumber(fields[place]).value_or(0); };
    process.state = StateWord(fields[kState]);
    process.parent = number(kParent);
    process.isKernelThread = (number(kFlags) & kKernelThreadFlag) != 0;
    process.cpuMilliseconds = (number(kUserTime) + number(kSystemTime)) * 1000 / ticksPerSecond;
    process.nice = number(kNice);
    process.startSecondsAfterBoot = number(kStartTime) / ticksPerSecond;
}

/// "Uid" and "Gid" hold the real, the effective and two further numbers.
long EffectiveId(const Process& process, std::string_view key) {
    const auto field = process.status.find(key);
    const auto ids =
        field == process.status.end() ? std::vector<std::string_view>() : Words(field->second);
    return ids.size() < 2 ? 0 : LeadingNumber(ids[1]).value_or(0);
}

void TakeStatus(Process& process, const std::string& status) {
    process.status = ColonFields(status);
    process.uid = EffectiveId(process, "Uid");
    process.gid = EffectiveId(process, "Gid");
    process.threads = NumberOf(process.status, "Threads");
    process.resident = NumberOf(process.status, "VmRSS");
}

std::string WithoutLineEnd(std::string text) {
    if (text.ends_with('\n')) {
        text.pop_back();
    }
    return text;
}

std::string CommandText(std::string commandLine, const std::string& name) {
    commandLine.erase(commandLine.find_last_not_of('\0') + 1);
    std::replace(commandLine.begin(), commandLine.end(), '\0', ' ');
    return commandLine.empty() ? "[" + name + "]" : commandLine;
}

} // namespace

std::vector<long> ProcessNumbers(const HostFiles& files) {
    std::vector<long> numbers;
    for (const std::string& name : files.Names("/proc")) {
        if (name.find_first_not_of("0123456789") == std::string::npos) {
            numbers.push_back(LeadingNumber(name).value_or(0));
        }
    }
    std::sort(numbers.begin(), numbers.end());
    return numbers;
}

Process ReadProcess(const HostFiles& files, long pid) {
    const std::string directory = ProcessDirectory(pid);
    Process process;
    process.pid = pid;
    TakeStat(process, files.Read(directory + "stat"), directory + "stat");
    TakeStatus(process, files.Read(directory + "status"));
    process.name = WithoutLineEnd(files.Read(directory + "comm"));
    process.command = CommandText(files.Read(directory + "cmdline"), process.name);
    return process;
}

std::vector<Process> ReadProcesses(const HostFiles& files) {
    std::vector<Process> processes;
    for (const long pid : ProcessNumbers(files)) {
        try {
            processes.push_back(ReadProcess(files, pid));
        } catch (const HostError& error) {
            if (!error.IsGone() && !error.IsHidden()) {
                throw;
            }
        }
    }
    return processes;
}

} // namespace HostFacts
