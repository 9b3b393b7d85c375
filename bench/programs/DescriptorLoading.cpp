// descriptor-loading FOLDER COMMANDS: loads a folder of descriptors that hold so many commands.

#include "../support/Measure.h"

#include <CppTools/CppTools.h>

#include <cstdlib>
#include <iostream>

int main(int argc, char** argv) {
    using namespace Bench;
    const double commands = argc > 2 ? std::atof(argv[2]) : 0;
    if (commands < 1) {
        std::cerr << "usage: descriptor-loading FOLDER COMMANDS\n";
        return 2;
    }
    CppTools::AutoCli::Dispatcher dispatcher;
    const double residentBefore = HeldBytes();
    const double allocatedBefore = AllocatedBytes();
    const Stopwatch loading;
    dispatcher.AddExternalDirectory(argv[1]);
    const std::string what = "descriptor loading";
    Report(what, "ms", loading.Milliseconds());
    Report(what, "us_per_command", loading.Microseconds() / commands);
    Report(what, "held_bytes_per_command", (HeldBytes() - residentBefore) / commands);
    Report(what, "allocated_bytes_per_command", (AllocatedBytes() - allocatedBefore) / commands);
    std::list<std::string> path = {"ns0000", "cmd000"};
    return dispatcher.GetRootNamespace()->ResolveNode(path) ? 0 : 1;
}
