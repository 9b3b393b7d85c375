#pragma once

#include "HostFiles.h"

#include <map>
#include <string>
#include <vector>

namespace HostFacts {

/// One process as /proc shows it. Memory is in kB.
struct Process {
    long pid = 0;
    long parent = 0;
    long uid = 0;
    long gid = 0;
    long nice = 0;
    long threads = 0;
    long resident = 0;
    long cpuMilliseconds = 0;
    long startSecondsAfterBoot = 0;
    bool isKernelThread = false;
    std::string state;
    std::string name;
    /// The words of the command line with blanks between them; the name in brackets when the
    /// process has none.
    std::string command;
    /// What else /proc/PID/status says.
    std::map<std::string, std::string, std::less<>> status;
};

/// The numbers of the processes that there are now, ascending. Throws HostError.
std::vector<long> ProcessNumbers(const HostFiles& files);

/// Throws HostError; it says `IsGone` when the process ended, even half-way through.
Process ReadProcess(const HostFiles& files, long pid);

/// All processes that are still there when their turn comes and that the caller may see. One
/// that ends while it is read is left out.
std::vector<Process> ReadProcesses(const HostFiles& files);

} // namespace HostFacts
