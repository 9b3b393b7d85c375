#include "Accounts.h"
#include "Commands.h"
#include "HostError.h"
#include "Moments.h"
#include "ProcessReader.h"
#include "TextTools.h"

#include <algorithm>
#include <functional>

namespace HostFacts {

namespace {

using IsBefore = std::function<bool(const Process&, const Process&)>;

IsBefore OrderOf(const std::string& name) {
    if (name == "pid") {
        return [](const Process& a, const Process& b) { return a.pid < b.pid; };
    }
    if (name == "name") {
        return [](const Process& a, const Process& b) { return a.name < b.name; };
    }
    if (name == "memory") {
        return [](const Process& a, const Process& b) { return a.resident > b.resident; };
    }
    if (name == "cpu") {
        return [](const Process& a, const Process& b) {
            return a.cpuMilliseconds > b.cpuMilliseconds;
        };
    }
    throw HostError("Unknown sort order '" + name + "'");
}

void Sort(std::vector<Process>& processes, const Arguments& arguments) {
    const IsBefore isBefore = OrderOf(arguments.Text("sort", "pid"));
    std::stable_sort(processes.begin(), processes.end(), isBefore);
    if (arguments.HasFlag("reverse")) {
        std::reverse(processes.begin(), processes.end());
    }
}

bool IsUserWanted(const std::vector<std::string>& wanted, const Process& process,
                  AccountNames& names) {
    return wanted.empty() || IsWanted(wanted, names.UserName(process.uid)) ||
           IsWanted(wanted, std::to_string(process.uid));
}

void KeepWanted(std::vector<Process>& processes, const Arguments& arguments, AccountNames& names) {
    const auto users = arguments.List("user");
    const auto states = arguments.List("state");
    const auto pattern = arguments.Text("match", "*");
    const auto kernelThreads = arguments.Switch("kernel-threads");
    std::erase_if(processes, [&](const Process& process) {
        return !IsUserWanted(users, process, names) || !IsWanted(states, process.state) ||
               !FitsPattern(process.name, pattern) ||
               process.isKernelThread != kernelThreads.value_or(process.isKernelThread);
    });
}

void KeepFirst(std::vector<Process>& processes, std::optional<long> limit) {
    if (limit && *limit >= 0 && static_cast<std::size_t>(*limit) < processes.size()) {
        processes.erase(processes.begin() + *limit, processes.end());
    }
}

void WriteCommonFields(const Process& process, AccountNames& names, ResultDocument& document) {
    document.AddNumber("PID", process.pid);
    document.AddNumber("Parent", process.parent);
    document.AddText("User", names.UserName(process.uid));
    document.AddText("State", process.state);
    document.AddNumber("Nice", process.nice);
    document.AddNumber("Threads", process.threads);
    document.AddNumber("Resident", process.resident);
    document.AddNumber("CPU Time", process.cpuMilliseconds);
    document.AddSwitch("Kernel Thread", process.isKernelThread);
    document.AddText("Name", process.name);
    document.AddText("Command", process.command);
}

std::vector<long> SupplementaryGroups(const Process& process) {
    std::vector<long> groups;
    const auto field = process.status.find("Groups");
    if (field != process.status.end()) {
        for (const std::string_view word : Words(field->second)) {
            groups.push_back(LeadingNumber(word).value_or(0));
        }
    }
    return groups;
}

/// Only the owner and the superuser may follow these links. A process without an executable has
/// a link that leads nowhere.
std::string PathBehind(const Request& request, const Process& process, const char* link) {
    if (!request.arguments.HasFlag("paths")) {
        return "";
    }
    try {
        return request.files.LinkTarget("/proc/" + std::to_string(process.pid) + "/" + link);
    } catch (const HostError& error) {
        if (error.IsGone()) {
            return "";
        }
        throw;
    }
}

void WriteDetails(const Request& request, const Process& process, AccountNames& names,
                  ResultDocument& document) {
    // Found out before the structure is opened: the result has either all fields or none.
    const std::string executable = PathBehind(request, process, "exe");
    const std::string directory = PathBehind(request, process, "cwd");
    const long started = BootTime(request.files) + process.startSecondsAfterBoot;
    const auto structure = document.OpenStructure("ProcessDetail");
    WriteCommonFields(process, names, document);
    document.AddText("Group", names.GroupName(process.gid));
    document.AddNumbers("Groups", SupplementaryGroups(process));
    document.AddText("Started", MomentText(started));
    document.AddNumber("Virtual", NumberOf(process.status, "VmSize"));
    document.AddNumber("Peak Resident", NumberOf(process.status, "VmHWM"));
    document.AddNumber("Swapped", NumberOf(process.status, "VmSwap"));
    document.AddNumber("Yields", NumberOf(process.status, "voluntary_ctxt_switches"));
    document.AddNumber("Preemptions", NumberOf(process.status, "nonvoluntary_ctxt_switches"));
    document.AddText("Executable", executable);
    document.AddText("Directory", directory);
}

} // namespace

void ListProcesses(const Request& request, ResultDocument& document) {
    AccountNames names(request.files);
    std::vector<Process> processes = ReadProcesses(request.files);
    KeepWanted(processes, request.arguments, names);
    Sort(processes, request.arguments);
    KeepFirst(processes, request.arguments.Number("limit"));
    const auto list = document.OpenList();
    for (const Process& process : processes) {
        const auto structure = document.OpenStructure("Process");
        WriteCommonFields(process, names, document);
    }
}

void GetProcesses(const Request& request, ResultDocument& document) {
    AccountNames names(request.files);
    const auto list = document.OpenList();
    for (const long pid : request.arguments.Numbers("pid")) {
        try {
            WriteDetails(request, ReadProcess(request.files, pid), names, document);
        } catch (const HostError& error) {
            document.AddError(error.what());
        }
    }
}

} // namespace HostFacts
