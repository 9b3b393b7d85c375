// cli11-start WORD...: a tool on CLI11 with as many commands as BENCH_COMMANDS says.

#include "Cli11Tree.h"

#include <cstdlib>

int main(int argc, char** argv) {
    const char* const commands = std::getenv("BENCH_COMMANDS");
    CLI::App app("benchmark tool");
    Bench::Cli11Values values;
    Bench::AddCli11Commands(app, commands == nullptr ? 10 : std::atol(commands), values);
    CLI11_PARSE(app, argc, argv);
}
