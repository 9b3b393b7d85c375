#pragma once

#include <tests/support/ChildRun.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <iostream>
#include <pty.h>
#include <stdexcept>
#include <string>
#include <sys/ioctl.h>
#include <system_error>
#include <termios.h>
#include <thread>
#include <unistd.h>
#include <utmp.h>

namespace TestSupport {

/// A terminal with a keyboard and a screen that the test holds in its hands. Programs need the
/// library "util" for it.
class PseudoTerminal {
  public:
    explicit PseudoTerminal(unsigned short columns = 80, unsigned short rows = 24) {
        const winsize size{rows, columns, 0, 0};
        if (openpty(&keyboard_, &line_, nullptr, nullptr, &size) != 0) {
            throw std::system_error(errno, std::generic_category(), "openpty");
        }
    }

    PseudoTerminal(const PseudoTerminal&) = delete;
    PseudoTerminal& operator=(const PseudoTerminal&) = delete;

    ~PseudoTerminal() {
        Close(line_);
        Close(keyboard_);
    }

    /// Runs `body` in a child whose controlling terminal and standard descriptors this is.
    template <typename Body>
    pid_t Start(Body&& body) {
        std::cout.flush();
        std::fflush(stdout);
        const pid_t child = fork();
        if (child == 0) {
            Close(keyboard_);
            if (login_tty(line_) != 0) {
                _exit(98);
            }
            // As at a login: whoever started the tests in the background had these ignored.
            for (const int signal : {SIGHUP, SIGINT, SIGQUIT}) {
                std::signal(signal, SIG_DFL);
            }
            EndWith(body);
        }
        if (child < 0) {
            throw std::system_error(errno, std::generic_category(), "fork");
        }
        return child;
    }

    void Type(const std::string& keys) {
        if (write(keyboard_, keys.data(), keys.size()) != static_cast<ssize_t>(keys.size())) {
            throw std::system_error(errno, std::generic_category(), "write to terminal");
        }
    }

    termios Settings() const {
        termios settings{};
        if (tcgetattr(line_, &settings) != 0) {
            throw std::system_error(errno, std::generic_category(), "tcgetattr");
        }
        return settings;
    }

    bool Echoes() const { return (Settings().c_lflag & static_cast<tcflag_t>(ECHO)) != 0; }

    /// Returns when the program has switched the echo off. The deadline only serves a program
    /// that never does.
    void AwaitSilence() const {
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(30);
        while (Echoes()) {
            if (std::chrono::steady_clock::now() > deadline) {
                throw std::runtime_error("the terminal still echoes");
            }
            std::this_thread::yield();
        }
    }

    /// Reads the screen until it ends in `end`, and returns what was read.
    std::string ReadUntil(const std::string& end) {
        std::string text;
        while (!text.ends_with(end) && ReadSome(text)) {
        }
        return text;
    }

    /// What is left on the screen once the child has ended.
    std::string ReadRest() {
        Close(line_);
        std::string text;
        while (ReadSome(text)) {
        }
        return text;
    }

  private:
    static void Close(int& descriptor) {
        if (descriptor >= 0) {
            close(descriptor);
            descriptor = -1;
        }
    }

    /// Line ends come as the terminal shows them, behind a carriage return, which is left out.
    bool ReadSome(std::string& text) {
        std::array<char, 512> buffer{};
        const ssize_t count = read(keyboard_, buffer.data(), buffer.size());
        for (ssize_t i = 0; i < count; ++i) {
            if (const char c = buffer[static_cast<std::size_t>(i)]; c != '\r') {
                text.push_back(c);
            }
        }
        return count > 0 || (count < 0 && errno == EINTR);
    }

    int keyboard_ = -1;
    int line_ = -1;
};

} // namespace TestSupport
