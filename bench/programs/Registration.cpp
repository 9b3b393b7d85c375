// registration registered|specified COMMANDS: registers commands of four parameters in a tree.
// "registered" is what the tree costs; "specified" adds the specifications, which the engine asks
// each command for only when the command is used.

#include "../support/EngineCommands.h"
#include "../support/Measure.h"

#include <cstdlib>
#include <iostream>

namespace {

using namespace Bench;

template <typename Visit>
void Measure(const std::string& what, long count, Visit visit) {
    CppTools::AutoCli::Dispatcher dispatcher;
    const double residentBefore = HeldBytes();
    const double allocatedBefore = AllocatedBytes();
    const Stopwatch registering;
    RegisterCommands(dispatcher.GetRootNamespace(), count, visit);
    const double commands = static_cast<double>(count);
    Report(what, "us_per_command", registering.Microseconds() / commands);
    Report(what, "held_bytes_per_command", (HeldBytes() - residentBefore) / commands);
    Report(what, "allocated_bytes_per_command", (AllocatedBytes() - allocatedBefore) / commands);
}

} // namespace

int main(int argc, char** argv) {
    const long count = argc > 2 ? std::atol(argv[2]) : 0;
    const std::string mode = argc > 1 ? argv[1] : "";
    if (count < 1) {
        std::cerr << "usage: registration registered|specified COMMANDS\n";
        return 2;
    }
    if (mode == "specified") {
        Measure("registration specified", count, [](CppTools::AutoCli::Command& command) {
            command.GetInputSpec();
            command.GetOutputSpec();
        });
    } else {
        Measure("registration", count, [](CppTools::AutoCli::Command&) {});
    }
}
