#pragma once

#include <CppTools/autocli/plugins/ShellCmd.h>

#include <cerrno>
#include <csignal>
#include <string>
#include <sys/wait.h>
#include <vector>

namespace TestSupport {

/// What a command line printed and how it ended, as waitpid(2) reports it.
struct ShellRun {
    int status = 0;
    std::string output;
};

inline ShellRun RunInShell(const std::string& command, const std::string& input = "") {
    ShellRun run;
    run.status = CppTools::AutoCli::AutoCli_ShellCmd(command, run.output, input);
    return run;
}

/// Whether every child of this process was waited for.
inline bool HasNoChild() {
    return waitpid(-1, nullptr, WNOHANG) == -1 && errno == ECHILD;
}

/// Writes down every command line and status that the listener is told, until the end of the
/// scope, when both hooks are empty again.
class ListenerLog {
  public:
    struct Entry {
        std::string line;
        int status;

        bool operator==(const Entry&) const = default;
    };

    ListenerLog() {
        Entries().clear();
        CppTools::AutoCli::SetCommandExecListener([](const std::string& line, int status) {
            Entries().push_back({line, status});
        });
    }

    ListenerLog(const ListenerLog&) = delete;
    ListenerLog& operator=(const ListenerLog&) = delete;

    ~ListenerLog() {
        CppTools::AutoCli::SetCommandExecListener(nullptr);
        CppTools::AutoCli::SetChildRpZornOptionMaker(nullptr);
    }

    static std::vector<Entry>& Entries() {
        static std::vector<Entry> entries;
        return entries;
    }

    /// The lines alone.
    static std::vector<std::string> Lines() {
        std::vector<std::string> lines;
        for (const auto& entry : Entries()) {
            lines.push_back(entry.line);
        }
        return lines;
    }
};

/// Handles a signal in a way of its own until the end of the scope.
class SignalHandling {
  public:
    SignalHandling(int signal, void (*handler)(int)) : signal_(signal) {
        struct sigaction action = {};
        action.sa_handler = handler;
        sigaction(signal_, &action, &before_);
    }

    SignalHandling(const SignalHandling&) = delete;
    SignalHandling& operator=(const SignalHandling&) = delete;

    ~SignalHandling() { sigaction(signal_, &before_, nullptr); }

  private:
    int signal_;
    struct sigaction before_ = {};
};

} // namespace TestSupport
