#pragma once

#include <tests/support/ChildRun.h>
#include <tests/support/ProgramRun.h>

#include <fstream>
#include <iterator>
#include <string>
#include <vector>

/// The built tool, run as its users run it.
namespace Cli {

using Words = std::vector<std::string>;

/// One list of words behind another.
inline Words Join(Words first, const Words& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

[[noreturn]] inline void BecomeTool(const Words& words, const std::string& name = "tandril") {
    TestSupport::Become(TANDRIL_PROGRAM, Join({name}, words));
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
