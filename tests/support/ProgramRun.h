#pragma once

#include <tests/support/ChildRun.h>

#include <cerrno>
#include <string>
#include <system_error>
#include <unistd.h>
#include <vector>

namespace TestSupport {

/// Turns this process, which has to be a child, into `program`, found as a shell finds it. The
/// first of `words` is what the program is called by.
[[noreturn]] inline void Become(const std::string& program, const std::vector<std::string>& words) {
    std::vector<char*> arguments;
    for (const std::string& word : words) {
        arguments.push_back(const_cast<char*>(word.c_str()));
    }
    arguments.push_back(nullptr);
    execvp(program.c_str(), arguments.data());
    throw std::system_error(errno, std::generic_category(), program);
}

/// Runs a program of the machine with these words, the first of which names it, in `directory`.
inline ChildRun RunProgram(const std::vector<std::string>& words, const std::string& directory) {
    return RunInChild([&] {
        if (chdir(directory.c_str()) != 0) {
            throw std::system_error(errno, std::generic_category(), directory);
        }
        Become(words.front(), words);
    });
}

} // namespace TestSupport
