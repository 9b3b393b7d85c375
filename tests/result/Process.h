#pragma once

#include "tests/support/ProgramRun.h"

#include <string>
#include <vector>

/// The built program, run as commands run it.
namespace ResultTests {

/// Runs the program with `words` behind its name and `input` on its standard input.
inline TestSupport::ChildRun RunResult(std::vector<std::string> words,
                                       const std::string& input = "") {
    words.insert(words.begin(), "tandril-result");
    return TestSupport::RunInChild([&] { TestSupport::Become(TANDRIL_RESULT_PROGRAM, words); },
                                   input);
}

/// Runs a few lines of shell, which find the program as $RESULT.
inline TestSupport::ChildRun RunLines(const std::string& lines) {
    return TestSupport::RunInChild([&] {
        setenv("RESULT", TANDRIL_RESULT_PROGRAM, 1);
        TestSupport::Become("/bin/sh", {"/bin/sh", "-c", lines});
    });
}

} // namespace ResultTests
