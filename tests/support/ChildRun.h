#pragma once

#include <array>
#include <cerrno>
#include <cstdio>
#include <exception>
#include <iostream>
#include <memory>
#include <string>
#include <sys/types.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>

namespace TestSupport {

/// How a child ended and what it printed.
struct ChildRun {
    int status = 0; ///< The exit status, or the negative number of the signal that ended it.
    std::string out;
    std::string err;
};

/// Waits for a child of this process.
inline int StatusOf(pid_t child) {
    int status = 0;
    while (waitpid(child, &status, 0) < 0) {
        if (errno != EINTR) {
            throw std::system_error(errno, std::generic_category(), "waitpid");
        }
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

/// Runs the body in a process that is already a child, and ends that with 0, or with 97 and the
/// message on standard error when an exception leaves the body.
template <typename Body>
[[noreturn]] void EndWith(Body&& body) {
    int status = 0;
    try {
        body();
    } catch (const std::exception& thrown) {
        std::cerr << "uncaught: " << thrown.what();
        status = 97;
    }
    std::cout.flush();
    std::cerr.flush();
    std::fflush(stdout);
    std::fflush(stderr);
    _exit(status);
}

/// Runs `body` in a child whose standard input is a pipe that holds `input`, at most what a pipe
/// takes at once. For what ends the process, reads standard input or must not touch this one.
template <typename Body>
ChildRun RunInChild(Body&& body, const std::string& input = "") {
    using File = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;
    const File out(std::tmpfile(), &std::fclose);
    const File err(std::tmpfile(), &std::fclose);
    std::array<int, 2> ends{};
    if (!out || !err || pipe(ends.data()) != 0 ||
        write(ends[1], input.data(), input.size()) != static_cast<ssize_t>(input.size())) {
        throw std::system_error(errno, std::generic_category(), "prepare child");
    }
    close(ends[1]);
    std::cout.flush();
    std::fflush(stdout);
    const pid_t child = fork();
    if (child == 0) {
        dup2(ends[0], STDIN_FILENO);
        dup2(fileno(out.get()), STDOUT_FILENO);
        dup2(fileno(err.get()), STDERR_FILENO);
        EndWith(body);
    }
    close(ends[0]);
    if (child < 0) {
        throw std::system_error(errno, std::generic_category(), "fork");
    }
    const auto content = [](std::FILE* file) {
        std::string text;
        std::rewind(file);
        for (int c = std::fgetc(file); c != EOF; c = std::fgetc(file)) {
            text.push_back(static_cast<char>(c));
        }
        return text;
    };
    const int status = StatusOf(child);
    return {status, content(out.get()), content(err.get())};
}

} // namespace TestSupport
