#include "tests/support/ProgramRun.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <vector>

namespace {

/// A command line of the page, and what stands below it.
struct DocumentedRun {
    std::string line;
    std::string output;
};

/// Runs are the indented lines that begin with "$ "; their output follows without it.
std::vector<DocumentedRun> RunsOfThePage() {
    static const std::string indent = "    ";
    std::ifstream page(RESULT_DOCUMENTS_PAGE);
    std::vector<DocumentedRun> runs;
    bool isInRun = false;
    for (std::string line; std::getline(page, line);) {
        if (line.starts_with(indent + "$ ")) {
            runs.push_back({line.substr(indent.size() + 2), ""});
            isInRun = true;
        } else if (isInRun && line.starts_with(indent)) {
            runs.back().output += line.substr(indent.size()) + "\n";
        } else {
            isInRun = false;
        }
    }
    return runs;
}

TEST(DocumentedRunsTest, EveryRunOfThePage_PrintsWhatStandsThere) {
    const std::string folder = std::filesystem::path(TANDRIL_RESULT_PROGRAM).parent_path();
    const auto runs = RunsOfThePage();
    EXPECT_GE(runs.size(), 10U);
    for (const DocumentedRun& documented : runs) {
        const auto run = TestSupport::RunInChild([&] {
            setenv("PATH", (folder + ":" + std::getenv("PATH")).c_str(), 1);
            TestSupport::Become("/bin/sh", {"/bin/sh", "-c", documented.line});
        });
        EXPECT_EQ(run.out, documented.output) << documented.line;
        EXPECT_EQ(run.err, "") << documented.line;
    }
}

} // namespace
