// shell-spawn FILE CALLS BLOCK [MEGABYTES]: runs `/bin/sh -c "cat FILE"` by posix_spawn and reads
// what it prints in blocks of that size, from a process that holds so many megabytes besides.

#include "../support/Measure.h"

#include <cstdlib>
#include <fcntl.h>
#include <iostream>
#include <memory>
#include <spawn.h>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace {

struct Pipe {
    Pipe() {
        if (pipe2(ends, O_CLOEXEC) != 0) {
            throw std::runtime_error("no pipe");
        }
    }

    int ends[2] = {};
};

pid_t StartShell(const std::string& line, const Pipe& in, const Pipe& out) {
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, in.ends[0], STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions, out.ends[1], STDOUT_FILENO);
    std::string words[] = {"/bin/sh", "-c", line};
    char* const arguments[] = {words[0].data(), words[1].data(), words[2].data(), nullptr};
    pid_t child = 0;
    const int error = posix_spawn(&child, arguments[0], &actions, nullptr, arguments, environ);
    posix_spawn_file_actions_destroy(&actions);
    if (error != 0) {
        throw std::runtime_error("cannot start a shell");
    }
    return child;
}

/// Grows by doubling, without clearing or copying what the system can move. It is kept from call to
/// call, so that its pages are new to the first alone.
class Text {
  public:
    /// Room for so many bytes more behind those used.
    char* RoomAfter(std::size_t used, std::size_t size) {
        if (size_ - used < size) {
            size_ = 2 * (size_ + size);
            auto* const grown = static_cast<char*>(std::realloc(bytes_.release(), size_));
            bytes_.reset(grown);
        }
        return bytes_.get() + used;
    }

  private:
    std::size_t size_ = 0;
    std::unique_ptr<char, decltype([](char* bytes) { std::free(bytes); })> bytes_;
};

std::size_t ReadAll(int file, std::size_t block, Text& text) {
    std::size_t used = 0;
    for (;;) {
        const ssize_t size = read(file, text.RoomAfter(used, block), block);
        if (size <= 0) {
            return used;
        }
        used += static_cast<std::size_t>(size);
    }
}

std::size_t Call(const std::string& line, std::size_t block, Text& text) {
    const Pipe in;
    const Pipe out;
    const pid_t child = StartShell(line, in, out);
    close(in.ends[0]);
    close(in.ends[1]);
    close(out.ends[1]);
    const std::size_t size = ReadAll(out.ends[0], block, text);
    close(out.ends[0]);
    int status = 0;
    waitpid(child, &status, 0);
    return size;
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 4) {
        std::cerr << "usage: shell-spawn FILE CALLS BLOCK [MEGABYTES]\n";
        return 2;
    }
    const std::string line = std::string("cat '") + argv[1] + "'";
    const int calls = std::stoi(argv[2]);
    const std::size_t block = std::stoul(argv[3]);
    const std::vector<char> ballast(argc > 4 ? std::stoul(argv[4]) << 20U : 0, 1);
    Text text;
    double bytes = 0;
    const Bench::Stopwatch running;
    for (int i = 0; i < calls; ++i) {
        bytes += static_cast<double>(Call(line, block, text));
    }
    const double microseconds = running.Microseconds();
    Bench::Report("shell spawn", "us_per_call", microseconds / calls);
    Bench::Report("shell spawn", "mb_per_s", bytes / microseconds);
    return bytes > 0 ? 0 : 1;
}
