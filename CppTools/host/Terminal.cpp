#include <CppTools/host/Terminal.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <iostream>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

namespace CppTools::Host {

namespace {

/// One more than the last signal.
constexpr int kSignals = NSIG;

/// Signals that end or stop a process at a terminal while it waits for a line.
constexpr std::array<int, 5> kTerminalSignals = {SIGHUP, SIGINT, SIGQUIT, SIGTERM, SIGTSTP};

/// Signals that do neither by default, or only to a process in the background, which must not touch
/// the terminal.
constexpr std::array<int, 6> kQuietSignals = {SIGCHLD, SIGCONT, SIGURG, SIGWINCH, SIGTTIN, SIGTTOU};

/// What the handler works on; it can see nothing but static data.
termios echoingSettings{};
termios silentSettings{};
std::array<struct sigaction, static_cast<std::size_t>(kSignals)> savedActions{};

template <std::size_t Size>
bool IsAmong(const std::array<int, Size>& signals, int signal) {
    return std::find(signals.begin(), signals.end(), signal) != signals.end();
}

/// Whether the terminal has to be seen to when the signal arrives. Who ignores one wants to be left
/// alone; who handles another than those of the terminal goes on after that.
bool EndsTheSilence(int signal, const struct sigaction& action) {
    return action.sa_handler == SIG_DFL
               ? !IsAmong(kQuietSignals, signal)
               : action.sa_handler != SIG_IGN && IsAmong(kTerminalSignals, signal);
}

void RestoreAndRaise(int signal);

void InstallHandlers() {
    struct sigaction action {};

    action.sa_handler = RestoreAndRaise;
    action.sa_flags = SA_RESTART;
    sigfillset(&action.sa_mask);
    // The system refuses what it has no signal for and what nobody can handle.
    for (int signal = 1; signal < kSignals; ++signal) {
        struct sigaction& saved = savedActions[static_cast<std::size_t>(signal)];
        if (sigaction(signal, nullptr, &saved) == 0 && EndsTheSilence(signal, saved)) {
            sigaction(signal, &action, nullptr);
        }
    }
}

void RestoreActions() {
    for (int signal = 1; signal < kSignals; ++signal) {
        const struct sigaction& saved = savedActions[static_cast<std::size_t>(signal)];
        if (EndsTheSilence(signal, saved)) {
            sigaction(signal, &saved, nullptr);
        }
    }
}

/// Tries twice: there is nobody who could be told that the terminal stays silent.
void RestoreEcho() {
    if (tcsetattr(STDIN_FILENO, TCSANOW, &echoingSettings) != 0) {
        tcsetattr(STDIN_FILENO, TCSANOW, &echoingSettings);
    }
}

/// Puts everything back and lets the signal do what it would have done. A process that goes on
/// after that (it was stopped and continued) falls silent again. Only functions that are safe in
/// a handler are called.
void RestoreAndRaise(int signal) {
    const int savedErrno = errno;
    RestoreEcho();
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

/// Switches the echo of the terminal on standard input off for its lifetime. Where no terminal is,
/// there is nothing to switch.
class EchoOff {
  public:
    EchoOff() {
        if (tcgetattr(STDIN_FILENO, &echoingSettings) != 0) {
            error_ = errno == ENOTTY ? 0 : errno;
            return;
        }
        silentSettings = echoingSettings;
        silentSettings.c_lflag &= ~static_cast<tcflag_t>(ECHO);
        InstallHandlers();
        isOff_ = true;
        if (tcsetattr(STDIN_FILENO, TCSANOW, &silentSettings) != 0) {
            error_ = errno;
        }
    }

    EchoOff(const EchoOff&) = delete;
    EchoOff& operator=(const EchoOff&) = delete;

    ~EchoOff() {
        if (isOff_) {
            RestoreEcho();
            RestoreActions();
        }
    }

    /// Why there still is an echo: an errno number; 0 when there is none.
    int Error() const { return error_; }

  private:
    int error_ = 0;
    bool isOff_ = false;
};

int ReadLine(std::string& line) {
    errno = 0;
    std::getline(std::cin, line);
    const int error = errno;
    return std::cin.eof() && std::ferror(stdin) != 0 ? error : 0;
}

} // namespace

std::optional<TerminalSize> GetTerminalSize() {
    winsize size{};
    if (ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) != 0) {
        return std::nullopt;
    }
    return TerminalSize{size.ws_col, size.ws_row};
}

int ReadLineWithoutEcho(std::string& line) {
    const EchoOff echoOff;
    return echoOff.Error() != 0 ? echoOff.Error() : ReadLine(line);
}

} // namespace CppTools::Host
