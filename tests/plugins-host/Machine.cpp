#include "Machine.h"
#include "tests/support/ProgramRun.h"

#include <CppTools/autocli/plugins/XmlUtil.h>
#include <CppTools/metaobj/MetaList.h>
#include <CppTools/metaobj/MetaStruct.h>

#include <cstdlib>
#include <filesystem>
#include <stdexcept>

namespace HostPack {

using CppTools::MetaObj::MetaList;
using CppTools::MetaObj::MetaObject;
using CppTools::MetaObj::MetaStruct;
using TestSupport::ChildRun;

ChildRun Run(const std::string& program, const Words& words, const std::string& input,
             const Environment& environment) {
    return TestSupport::RunInChild(
        [&] {
            for (const auto& [name, value] : environment) {
                setenv(name.c_str(), value.c_str(), 1);
            }
            Words called{program};
            called.insert(called.end(), words.begin(), words.end());
            TestSupport::Become(program, called);
        },
        input);
}

std::shared_ptr<MetaObject> ResultOf(const ChildRun& run) {
    auto result = CppTools::AutoCli::XmlUtil_ParseXmlOutput(run.out);
    if (run.status != 0 || !run.err.empty() || !result) {
        throw std::runtime_error("no result but: " + run.out + run.err);
    }
    return result;
}

Words Column(const ChildRun& run, const std::string& field) {
    const auto list = std::dynamic_pointer_cast<MetaList>(ResultOf(run));
    if (!list) {
        throw std::runtime_error("no list but: " + run.out);
    }
    Words column;
    for (const auto& row : list->GetObjects()) {
        column.push_back(std::dynamic_pointer_cast<MetaStruct>(row)->GetField(field)->ToString());
    }
    return column;
}

testing::AssertionResult FailsWith(const ChildRun& run, const std::string& out) {
    if (run.status == 1 && run.out == out && run.err.empty()) {
        return testing::AssertionSuccess();
    }
    return testing::AssertionFailure() << "status " << run.status << ", printed:\n"
                                       << run.out << run.err;
}

void Machine::Write(const std::string& path, const std::string& content) const {
    directory_.Write(path.substr(1), content);
}

void Machine::MakeDirectory(const std::string& path) const {
    directory_.MakeDirectory(path.substr(1));
}

void Machine::MakeLink(const std::string& path, const std::string& target) const {
    const std::filesystem::path link = Root() + path;
    std::filesystem::create_directories(link.parent_path());
    std::filesystem::create_symlink(target, link);
}

void Machine::AddProcess(const MadeUpProcess& process) const {
    const std::string pid = std::to_string(process.pid);
    const std::string directory = "/proc/" + pid + "/";
    const std::string uid = std::to_string(process.uid);
    const std::string halfOfTicks = std::to_string(process.ticks / 2);
    Write(directory + "stat", pid + " (" + process.name + ") " + process.state + " " +
                                  std::to_string(process.parent) + " 1 1 0 -1 " +
                                  std::to_string(process.flags) + " 0 0 0 0 " + halfOfTicks + " " +
                                  halfOfTicks + " 0 0 20 " + std::to_string(process.nice) +
                                  " 3 0 " + std::to_string(process.startTicks) + " 0 0\n");
    Write(directory + "status", "Name:\tx\nUid:\t7\t" + uid + "\t7\t7\nGid:\t8\t" + uid +
                                    "\t8\t8\nGroups:\t4 24 \nVmSize:\t    2000 kB\n"
                                    "VmHWM:\t     300 kB\nVmRSS:\t     " +
                                    std::to_string(process.residentKb) +
                                    " kB\nVmSwap:\t       5 kB\nThreads:\t3\n"
                                    "voluntary_ctxt_switches:\t11\n"
                                    "nonvoluntary_ctxt_switches:\t12\n");
    Write(directory + "comm", process.name + "\n");
    Write(directory + "cmdline", process.commandLine);
}

void Machine::AddAccounts() const {
    Write("/etc/passwd", "root:x:0:0:root:/root:/bin/bash\n"
                         "ada:x:1000:1000:Ada <ada@example.org>:/home/ada:/usr/sbin/nologin\n");
    Write("/etc/group", "root:x:0:\nada:x:1000:\n");
}

ChildRun Machine::Ask(Words words, const std::string& input) const {
    words.insert(words.begin(), "--root=" + Root());
    return Run(HOST_FACTS_PROGRAM, words, input);
}

} // namespace HostPack
