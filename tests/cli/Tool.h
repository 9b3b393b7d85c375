#pragma once

#include <tests/support/ChildRun.h>

#include <cerrno>
#include <fstream>
#include <iterator>
#include <string>
#include <system_error>
#include <unistd.h>
#include <vector>

/// The built tool, run as its users run it.
namespace Cli {

using Words = std::vector<std::string>;

/// One list of words behind another.
inline Words Join(Words first, const Words& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

/// Turns this process, which has to be a child, into `program`. The first of `words` is what the
/// program is called by.
[[noreturn]] inline void Become(const std::string& program, const Words& words) {
    std::vector<char*> arguments;
    for (const std::string& word : words) {
        arguments.push_back(const_cast<char*>(word.c_str()));
    }
    arguments.push_back(nullptr);
    execv(program.c_str(), arguments.data());
    throw std::system_error(errno, std::generic_category(), program);
}

[[noreturn]] inline void BecomeTool(const Words& words, const std::string& name = "tandril") {
    Become(TANDRIL_PROGRAM, Join({name}, words));
}

/// Runs the tool with `words` behind its name and `input` on its standard input, which is a pipe
/// and then at its end.
inline TestSupport::ChildRun RunTool(const Words& words, const std::string& input = "") {
    return TestSupport::RunInChild([&] { BecomeTool(words); }, input);
}

/// A file's content; empty when there is no such file.
inline std::string ContentOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

} // namespace Cli
