/// The program behind the commands of the host pack: finds out facts about the machine that it
/// runs on and prints them as one result document, or error lines when it cannot.
///
///     tandril-host-facts [--root=DIRECTORY] <subject> <verb> [--option[=value]]...
///
/// With --root the files below DIRECTORY stand for those of the machine.
#include "Commands.h"
#include "HostError.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <initializer_list>
#include <string>
#include <string_view>
#include <unistd.h>
#include <vector>

namespace HostFacts {

namespace {

struct Command {
    std::string_view name;
    void (*run)(const Request&, ResultDocument&);
    std::initializer_list<std::string_view> options;
    /// Text that no quoting of the shell could carry unharmed comes on standard input. It is
    /// then always read to its end, so that the writer never finds the pipe closed.
    bool readsInput = false;
};

// clang-format off
const Command kCommands[] = {
    {"process list", ListProcesses,
     {"user", "state", "match", "kernel-threads", "sort", "reverse", "limit"}},
    {"process get", GetProcesses, {"pid", "paths"}},
    {"uptime get", GetUptime, {}},
    {"load get", GetLoad, {}},
    {"memory get", GetMemory, {}},
    {"user list", ListUsers, {"name", "uid", "system", "login"}},
    {"environment get", GetEnvironment, {"pid", "name", "hide-values", "compare"}, true},
    {"filesystem list", ListFilesystems, {"type", "all", "minimum-use", "within"}, true},
    {"device list", ListDevices, {"all", "partitions", "rotational", "minimum-size"}},
    {"interface list", ListInterfaces, {"match", "up"}},
    {"interface get", GetInterface, {"name"}},
    {"route list", ListRoutes, {"family", "interface", "all"}},
    {"connection list", ListConnections, {"protocol", "family", "state", "port", "listening"}},
    {"module list", ListModules, {"match", "state", "unused"}},
    {"parameter list", ListKernelParameters, {"match", "writable", "readable"}},
    {"parameter get", GetKernelParameters, {"name"}},
    {"package list", ListPackages,
     {"match", "section", "priority", "minimum-size", "sort", "all"}},
    {"package get", GetPackages, {"name"}},
};

// clang-format on

const Command& FindCommand(const std::string& name) {
    for (const Command& command : kCommands) {
        if (command.name == name) {
            return command;
        }
    }
    throw HostError("Unknown command '" + name + "'");
}

std::string TakeRoot(std::vector<std::string>& words) {
    static constexpr std::string_view option = "--root=";
    if (words.empty() || !words.front().starts_with(option)) {
        return "";
    }
    // Without links, as paths below it are compared with others that were resolved.
    const auto root = std::filesystem::weakly_canonical(words.front().substr(option.size()));
    words.erase(words.begin());
    return root;
}

std::string TakeName(std::vector<std::string>& words) {
    if (words.size() < 2) {
        throw HostError("A subject and a verb are needed, such as 'process list'");
    }
    const std::string name = words[0] + " " + words[1];
    words.erase(words.begin(), words.begin() + 2);
    return name;
}

std::string ReadInput() {
    std::string input;
    std::array<char, 4096> chunk{};
    while (true) {
        const ssize_t count = read(STDIN_FILENO, chunk.data(), chunk.size());
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count < 0) {
            const int reason = errno;
            throw HostError("Unable to read standard input", reason);
        }
        if (count == 0) {
            return input;
        }
        input.append(chunk.data(), static_cast<std::size_t>(count));
    }
}

void RunCommand(std::vector<std::string> words, ResultDocument& document) {
    const HostFiles files(TakeRoot(words));
    const Command& command = FindCommand(TakeName(words));
    const std::string input = command.readsInput ? ReadInput() : "";
    const Arguments arguments(words, command.options);
    command.run({arguments, files, input}, document);
}

int Run(const std::vector<std::string>& words) {
    ResultDocument document;
    try {
        RunCommand(words, document);
    } catch (const std::exception& error) {
        document.AddError(error.what());
    }
    const std::string text = document.Finish();
    const bool isWritten =
        std::fwrite(text.data(), 1, text.size(), stdout) == text.size() && std::fflush(stdout) == 0;
    return isWritten && !document.HasErrors() ? 0 : 1;
}

} // namespace

} // namespace HostFacts

int main(int argc, char** argv) {
    try {
        return HostFacts::Run({argv + (argc > 0 ? 1 : 0), argv + argc});
    } catch (const std::exception& error) {
        std::printf("ERROR:%s\n", error.what());
        return 1;
    }
}
