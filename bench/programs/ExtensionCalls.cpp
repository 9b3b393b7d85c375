// extension-calls FILE CALLS [MEGABYTES]: runs an extension command that prints a file, from a
// process that holds so many megabytes besides.

#include "../support/Measure.h"

#include <CppTools/CppTools.h>

#include <cstdlib>
#include <iostream>
#include <vector>

namespace {

using namespace CppTools;

std::shared_ptr<AutoCli::ExtensionCommand> NewCatCommand(const std::string& file) {
    auto command = AutoCli::ExtensionCommand::New();
    command->SetExecuteCommand("cat '" + file + "'");
    command->SetInputSpec(CallSpec::InputSpec::New());
    return command;
}

} // namespace

int main(int argc, char** argv) {
    using namespace Bench;
    const int calls = argc > 2 ? std::atoi(argv[2]) : 0;
    if (calls < 1) {
        std::cerr << "usage: extension-calls FILE CALLS [MEGABYTES]\n";
        return 2;
    }
    const std::vector<char> ballast(argc > 3 ? std::strtoul(argv[3], nullptr, 10) << 20U : 0, 1);
    const auto command = NewCatCommand(argv[1]);
    const auto input = CallSpec::Input::New();
    bool answered = true;
    const Stopwatch running;
    for (int i = 0; i < calls; ++i) {
        const auto output = CallSpec::Output::New();
        command->ExecuteInternal(input, output);
        answered = answered && (output->GetRootObject() || output->HasError());
    }
    const double microseconds = running.Microseconds();
    const double size = static_cast<double>(ReadFile(argv[1]).size());
    Report("extension calls", "us_per_call", microseconds / calls);
    Report("extension calls", "mb_per_s", size * calls / microseconds);
    return answered ? 0 : 1;
}
