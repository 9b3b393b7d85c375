#pragma once

#include <tests/support/ProgramRun.h>
#include <tests/support/TempDirectory.h>

#include <string>
#include <vector>

/// The built tool with the plug-in authors' tools.
namespace DevkitTest {

/// Runs it in a folder with these words behind its name.
inline TestSupport::ChildRun RunDevkit(const std::vector<std::string>& words,
                                       const TestSupport::TempDirectory& folder) {
    std::vector<std::string> all = {TANDRIL_PROGRAM, "--plugin", DEVKIT_PLUGIN};
    all.insert(all.end(), words.begin(), words.end());
    return TestSupport::RunProgram(all, folder.Path());
}

} // namespace DevkitTest
