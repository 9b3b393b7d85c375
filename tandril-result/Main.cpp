/// Turns what ordinary tools print into the result document of an extension command.
#include "Conversion.h"
#include "Errors.h"
#include "HelpText.h"
#include "ResultWriter.h"

#include <csignal>
#include <cstdio>
#include <unistd.h>

namespace TandrilResult {

namespace {

void Run(int argc, char** argv, HeldOutput& output) {
    const Options options = ParseOptions(argc, argv);
    if (options.help || options.version) {
        output.Write(options.help ? kHelpText : "tandril-result " TANDRIL_RESULT_VERSION "\n");
        output.Flush();
    } else {
        Convert(options, output);
    }
}

/// The exit status.
int RunAndReport(int argc, char** argv) {
    HeldOutput output(STDOUT_FILENO);
    try {
        Run(argc, argv, output);
        return 0;
    } catch (const OutputError&) {
        throw;
    } catch (const std::exception& problem) {
        WriteFailure(output, problem.what());
        return 1;
    }
}

} // namespace

} // namespace TandrilResult

int main(int argc, char** argv) {
    // A reader that goes away is an error of writing like any other.
    std::signal(SIGPIPE, SIG_IGN);
    try {
        return TandrilResult::RunAndReport(argc, argv);
    } catch (const std::exception& problem) {
        std::fprintf(stderr, "tandril-result: %s\n", problem.what());
        return 1;
    }
}
