#include <CppTools/autocli/CliDispatcher.h>

#include <algorithm>
#include <exception>
#include <filesystem>
#include <iostream>

namespace {

bool IsDirectory(const std::string& path) {
    std::error_code ignored;
    return std::filesystem::is_directory(path, ignored);
}

} // namespace

int main(int argc, char** argv) {
    using CppTools::AutoCli::CliDispatcher;
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
