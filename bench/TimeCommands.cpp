// time-commands ROUNDS COMMAND...: runs each command (split at blanks, output discarded) ROUNDS
// times, in turns so that load on the machine meets all alike, and prints for each the median
// milliseconds from its start to its end and the ratio to the first.

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <iostream>
#include <iterator>
#include <spawn.h>
#include <sstream>
#include <stdexcept>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

struct Measured {
    std::string command;
    std::vector<std::string> words;
    std::vector<double> milliseconds;

    double Median() const {
        auto sorted = milliseconds;
        std::sort(sorted.begin(), sorted.end());
        return sorted[sorted.size() / 2];
    }
};

Measured ReadCommand(const std::string& text) {
    std::istringstream in(text);
    return {text, {std::istream_iterator<std::string>(in), {}}, {}};
}

/// Runs a command with its output discarded, whatever its status.
void RunOnce(Measured& measured, const posix_spawn_file_actions_t& actions) {
    std::vector<char*> arguments;
    for (auto& word : measured.words) {
        arguments.push_back(word.data());
    }
    arguments.push_back(nullptr);
    pid_t child = 0;
    const auto begin = Clock::now();
    if (posix_spawnp(&child, arguments[0], &actions, nullptr, arguments.data(), environ) != 0) {
        throw std::runtime_error("cannot run " + measured.command);
    }
    int status = 0;
    waitpid(child, &status, 0);
    const std::chrono::duration<double, std::milli> took = Clock::now() - begin;
    measured.milliseconds.push_back(took.count());
}

void Measure(int rounds, std::vector<Measured>& commands) {
    posix_spawn_file_actions_t discard;
    posix_spawn_file_actions_init(&discard);
    posix_spawn_file_actions_addopen(&discard, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&discard, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    for (int round = 0; round < rounds; ++round) {
        for (auto& command : commands) {
            RunOnce(command, discard);
        }
    }
    posix_spawn_file_actions_destroy(&discard);
}

} // namespace

int main(int argc, char** argv) {
    const int rounds = argc > 2 ? std::atoi(argv[1]) : 0;
    if (rounds < 1) {
        std::cerr << "usage: time-commands ROUNDS COMMAND...\n";
        return 1;
    }
    try {
        std::vector<Measured> commands;
        std::transform(argv + 2, argv + argc, std::back_inserter(commands), ReadCommand);
        Measure(rounds, commands);
        const double first = commands.front().Median();
        for (const auto& command : commands) {
            std::printf("%8.3f ms  %5.2f x  %s\n", command.Median(), command.Median() / first,
                        command.command.c_str());
        }
    } catch (const std::exception& failure) {
        std::cerr << failure.what() << '\n';
        return 1;
    }
}
