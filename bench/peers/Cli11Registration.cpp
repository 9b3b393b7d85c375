// cli11-registration COMMANDS: what a command with four parameters costs in a tree of CLI11.

#include "../support/Measure.h"
#include "Cli11Tree.h"

#include <iostream>

int main(int argc, char** argv) {
    using namespace Bench;
    const long count = argc > 1 ? std::atol(argv[1]) : 0;
    if (count < 1) {
        std::cerr << "usage: cli11-registration COMMANDS\n";
        return 2;
    }
    const double commands = static_cast<double>(count);
    const double held = HeldBytes();
    const double allocated = AllocatedBytes();
    const Stopwatch registering;
    CLI::App app("benchmark tool");
    Cli11Values values;
    AddCli11Commands(app, count, values);
    Report("CLI11", "us_per_command", registering.Microseconds() / commands);
    Report("CLI11", "held_bytes_per_command", (HeldBytes() - held) / commands);
    Report("CLI11", "allocated_bytes_per_command", (AllocatedBytes() - allocated) / commands);
}
