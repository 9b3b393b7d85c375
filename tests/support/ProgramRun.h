#pragma once

#include <tests/support/ChildRun.h>

#include <cerrno>
#include <string>
#include <system_error>
#include <unistd.h>
#include <vector>

namespace TestSupport {

/// Runs a program of the machine, found as a shell finds it, with these words, the first of which
/// names it, in `directory`.
inline ChildRun RunProgram(const std::vector<std::string>& words, const std::string& directory) {
    return RunInChild([&] {
        std::vector<char*> arguments;
        for (const std::string& word : words) {
            arguments.push_back(const_cast<char*>(word.c_str()));
        }
        arguments.push_back(nullptr);
        if (chdir(directory.c_str()) == 0) {
            execvp(arguments.front(), arguments.data());
        }
        throw std::system_error(errno, std::generic_category(), words.front());
    });
}

} // namespace TestSupport
