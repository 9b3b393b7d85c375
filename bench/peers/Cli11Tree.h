#pragma once

/// The tree of commands with four parameters, as a program on CLI11 declares it.

#include <CLI/CLI.hpp>

#include <cstdio>
#include <string>

namespace Bench {

/// Where the values of the options go; every command has the same.
struct Cli11Values {
    std::string name;
    std::string mode;
    int size = 0;
    bool force = false;
};

inline void AddCli11Command(CLI::App& group, const std::string& name, Cli11Values& values) {
    auto* const command = group.add_subcommand(name, "Does one thing to the object that is named");
    command->add_option("-n,--name", values.name, "Name of the object to work on")->required();
    command->add_option("--size", values.size, "Size in megabytes")->check(CLI::Range(1, 65536));
    command->add_option("-m,--mode", values.mode, "Mode")->check(CLI::IsMember({"fast", "safe"}));
    command->add_flag("--force", values.force, "Do not ask");
    command->callback([] { std::puts("done"); });
}

/// So many commands, ten in a group.
inline void AddCli11Commands(CLI::App& app, long count, Cli11Values& values) {
    char name[32];
    app.require_subcommand(1);
    for (long number = 0; number < count;) {
        std::snprintf(name, sizeof name, "ns%04ld", number / 10);
        auto* const group =
            app.add_subcommand(name, "Namespace number " + std::to_string(number / 10));
        group->require_subcommand(1);
        for (long i = 0; i < 10 && number < count; ++i, ++number) {
            std::snprintf(name, sizeof name, "cmd%03ld", i);
            AddCli11Command(*group, name, values);
        }
    }
}

} // namespace Bench
