#include <CppTools/host/Terminal.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <iostream>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

namespace CppTools::Host {

namespace {

/// Signals that end or stop a process at a terminal while it waits for a line.
constexpr std::array<int, 5> kTerminalSignals = {SIGHUP, SIGINT, SIGQUIT, SIGTERM, SIGTSTP};

/// What the handler works on; it can see nothing but static data.
termios echoingSettings{};
termios silentSettings{};
std::array<struct sigaction, kTerminalSignals.size()> savedActions{};

void RestoreAndRaise(int signal);

void InstallHandlers() {
    struct sigaction action {};

    action.sa_handler = RestoreAndRaise;
    action.sa_flags = SA_RESTART;
    sigemptyset(&action.sa_mask);
    for (std::size_t i = 0; i < kTerminalSignals.size(); ++i) {
        sigaction(kTerminalSignals[i], nullptr, &savedActions[i]);
        if (savedActions[i].sa_handler != SIG_IGN) {
            sigaction(kTerminalSignals[i], &action, nullptr);
        }
    }
}

void RestoreActions() {
    for (std::size_t i = 0; i < kTerminalSignals.size(); ++i) {
        sigaction(kTerminalSignals[i], &savedActions[i], nullptr);
    }
}

/// Puts everything back and lets the signal do what it would have done. A process that goes on
/// after that (it was stopped and continued) falls silent again. Only functions that are safe in
/// a handler are called.
void RestoreAndRaise(int signal) {
    const int savedErrno = errno;
    tcsetattr(STDIN_FILENO, TCSANOW, &echoingSettings);
    RestoreActions();
    sigset_t raised;
    sigemptyset(&raised);
    sigaddset(&raised, signal);
    raise(signal);
    sigprocmask(SIG_UNBLOCK, &raised, nullptr);
    InstallHandlers();
    tcsetattr(STDIN_FILENO, TCSANOW, &silentSettings);
    errno = savedErrno;
}

/// Switches the echo of the terminal on standard input off for its lifetime.
class EchoOff {
  public:
    EchoOff() : isTerminal_(tcgetattr(STDIN_FILENO, &echoingSettings) == 0) {
        if (isTerminal_) {
            silentSettings = echoingSettings;
            silentSettings.c_lflag &= ~static_cast<tcflag_t>(ECHO);
            InstallHandlers();
            tcsetattr(STDIN_FILENO, TCSANOW, &silentSettings);
        }
    }

    EchoOff(const EchoOff&) = delete;
    EchoOff& operator=(const EchoOff&) = delete;

    ~EchoOff() {
        if (isTerminal_) {
            tcsetattr(STDIN_FILENO, TCSANOW, &echoingSettings);
            RestoreActions();
        }
    }

  private:
    bool isTerminal_;
};

} // namespace

std::optional<TerminalSize> GetTerminalSize() {
    winsize size{};
    if (ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) != 0) {
        return std::nullopt;
    }
    return TerminalSize{size.ws_col, size.ws_row};
}

std::string ReadLineWithoutEcho() {
    const EchoOff echoOff;
    std::string line;
    std::getline(std::cin, line);
    return line;
}

} // namespace CppTools::Host
