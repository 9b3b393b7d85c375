#include <CppTools/autocli/CliDispatcher.h>

#include <algorithm>
#include <csignal>
#include <exception>
#include <filesystem>
#include <iostream>

namespace {

bool IsDirectory(const std::string& path) {
    std::error_code ignored;
    return std::filesystem::is_directory(path, ignored);
}

void HearNothing(int /*signal*/) {}

/// Signals as this program wants them, whatever it was started by. A reader of its output who goes
/// away is a failure to write, which is reported; that takes a handler, since commands would
/// inherit it if the signal were ignored. Commands cannot be waited for while their signal is
/// ignored.
void ArrangeSignals() {
    if (std::signal(SIGPIPE, HearNothing) == SIG_IGN) {
        std::signal(SIGPIPE, SIG_IGN);
    }
    std::signal(SIGCHLD, SIG_DFL);
}

} // namespace

int main(int argc, char** argv) {
    using CppTools::AutoCli::CliDispatcher;
    ArrangeSignals();
    try {
        CliDispatcher dispatcher;
        const auto& directories = CliDispatcher::GetDefaultDirectories();
        if (std::any_of(directories.begin(), directories.end(), IsDirectory)) {
            dispatcher.AddDefaultDirectories();
        }
        dispatcher.HandleArgvInput(argc, argv);
    } catch (const std::exception& failure) {
        std::cerr << failure.what() << '\n';
        return 1;
    }
}
