#include <CppTools/autocli/plugins/ShellCmd.h>
#include <CppTools/host/FileDescriptor.h>
#include <CppTools/host/ProcessSpawn.h>
#include <CppTools/metaobj/CppToolException.h>

#include <boost/algorithm/string/replace.hpp>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace CppTools::AutoCli {

namespace {

constexpr const char* kShell = "/bin/sh";

/// What one read takes at most: as much as a pipe holds.
constexpr std::size_t kReadSize = 65536;

/// What the pipe of a child that prints much is to hold: the most that the system grants everybody.
constexpr int kLargePipe = 1048576;

CommandExecListener commandExecListener = nullptr;
ChildRpZornOptionMaker childRpZornOptionMaker = nullptr;

[[noreturn]] void Fail(const std::string& what, int error) {
    throw CppToolException(what + Host::StatusText(error));
}

/// A started child. One that nobody waited for is reaped at the end of its lifetime.
class Child {
  public:
    Child() = default;
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;

    ~Child() {
        if (int ignored = 0; pid_ > 0) {
            WaitFor(ignored);
        }
    }

    void Start(const std::string& command, const Host::Pipe& input, const Host::Pipe& output) {
        std::vector<std::string> arguments = {kShell};
        if (std::string option = MakeChildRpZornOption(-1); !option.empty()) {
            arguments.push_back(std::move(option));
        }
        arguments.insert(arguments.end(), {"-c", command});
        const int error = Host::SpawnProcess(
            kShell, arguments, {input.readEnd.Get(), output.writeEnd.Get(), STDERR_FILENO}, pid_);
        if (error != 0) {
            pid_ = -1;
            Fail("Failed to call process '" + command + "': ", error);
        }
    }

    int Wait(const std::string& command) {
        int status = 0;
        if (const int error = WaitFor(status); error != 0) {
            Fail("Error waiting for process '" + command + "': ", error);
        }
        return status;
    }

  private:
    /// Returns 0 or an errno number; either way there is nothing left to wait for.
    int WaitFor(int& status) {
        pid_t waited = 0;
        do {
            waited = waitpid(pid_, &status, 0);
        } while (waited < 0 && errno == EINTR);
        pid_ = -1;
        return waited < 0 ? errno : 0;
    }

    pid_t pid_ = -1;
};

/// Holds SIGPIPE back from this thread, so that a child that does not read makes a write fail
/// instead of ending the process. One that was pending before is left to its owner.
class SigpipeHeldBack {
  public:
    SigpipeHeldBack() {
        sigset_t pending;
        sigpending(&pending);
        wasPending_ = sigismember(&pending, SIGPIPE) == 1;
        sigemptyset(&sigpipe_);
        sigaddset(&sigpipe_, SIGPIPE);
        pthread_sigmask(SIG_BLOCK, &sigpipe_, &previousMask_);
    }

    SigpipeHeldBack(const SigpipeHeldBack&) = delete;
    SigpipeHeldBack& operator=(const SigpipeHeldBack&) = delete;

    ~SigpipeHeldBack() {
        if (!wasPending_) {
            const timespec noTime{};
            while (sigtimedwait(&sigpipe_, nullptr, &noTime) < 0 && errno == EINTR) {
            }
        }
        pthread_sigmask(SIG_SETMASK, &previousMask_, nullptr);
    }

  private:
    sigset_t sigpipe_{};
    sigset_t previousMask_{};
    bool wasPending_ = false;
};

void WriteAll(const Host::FileDescriptor& descriptor, const std::string& text) {
    const SigpipeHeldBack heldBack;
    std::size_t written = 0;
    while (written < text.size()) {
        const ssize_t count = write(descriptor.Get(), text.data() + written, text.size() - written);
        if (count >= 0) {
            written += static_cast<std::size_t>(count);
        } else if (errno != EINTR) {
            Fail("Unable to write to sub-process: ", errno);
        }
    }
}

/// Reads at most `kReadSize` bytes; none at the end.
std::size_t ReadSome(const Host::FileDescriptor& pipe, char* buffer) {
    const ssize_t count = Host::ReadSome(pipe, buffer, kReadSize);
    if (count < 0) {
        Fail("Unable to read from sub-process: ", errno);
    }
    return static_cast<std::size_t>(count);
}

/// Makes room for another read. Room that is never used costs no memory, but moving a large text
/// to a larger place does; so it grows by more than the usual factor of two.
void MakeRoom(std::string& text) {
    if (text.capacity() - text.size() < kReadSize) {
        text.reserve(std::max(text.size() + kReadSize, text.capacity() * 4));
    }
}

/// Reads what follows of a large output, each piece straight to its place.
void ReadMuch(const Host::FileDescriptor& pipe, std::string& text) {
    // With a larger pipe reader and writer take turns less often. Where the system refuses one,
    // all goes on as before.
    fcntl(pipe.Get(), F_SETPIPE_SZ, kLargePipe);
    std::size_t count = 0;
    do {
        const std::size_t size = text.size();
        MakeRoom(text);
        text.resize(size + kReadSize);
        count = ReadSome(pipe, text.data() + size);
        text.resize(size + count);
    } while (count > 0);
}

void ReadAll(const Host::FileDescriptor& pipe, std::string& text) {
    std::array<char, kReadSize> buffer;
    while (const std::size_t count = ReadSome(pipe, buffer.data())) {
        text.append(buffer.data(), count);
        if (count == kReadSize) {
            ReadMuch(pipe, text);
            return;
        }
    }
}

} // namespace

int AutoCli_ShellCmd(const std::string& command, std::string& output, const std::string& input) {
    // The pipes are declared behind the child and so are closed before it is waited for: a child
    // that still has something to print could otherwise never end.
    Child child;
    Host::Pipe childInput;
    Host::Pipe childOutput;
    if (const int error = childInput.Open(); error != 0) {
        Fail("Can't create input pipe: ", error);
    }
    if (const int error = childOutput.Open(); error != 0) {
        Fail("Can't create output pipe: ", error);
    }
    child.Start(command, childInput, childOutput);
    childInput.readEnd.Close();
    childOutput.writeEnd.Close();

    WriteAll(childInput.writeEnd, input);
    childInput.writeEnd.Close();
    ReadAll(childOutput.readEnd, output);
    childOutput.readEnd.Close();

    const int status = child.Wait(command);
    if (commandExecListener != nullptr) {
        commandExecListener(command, status);
    }
    return status;
}

int AutoCli_ShellCmdWithNelUsername(const std::string& command, const std::string& userName,
                                    std::string& output, const std::string& input) {
    if (userName.empty()) {
        return AutoCli_ShellCmd(command, output, input);
    }
    const std::string quoted = boost::algorithm::replace_all_copy(userName, "'", "'\\''");
    return AutoCli_ShellCmd("NEL_USERNAME='" + quoted + "' " + command, output, input);
}

void SetCommandExecListener(CommandExecListener listener) {
    commandExecListener = listener;
}

void SetChildRpZornOptionMaker(ChildRpZornOptionMaker maker) {
    childRpZornOptionMaker = maker;
}

std::string MakeChildRpZornOption(int id) {
    return childRpZornOptionMaker != nullptr ? childRpZornOptionMaker(id) : std::string();
}

void Panic(const char* format, ...) {
    static std::array<char, 256> message;
    va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(message.data(), message.size(), format, arguments);
    va_end(arguments);
    std::fprintf(stderr, "panic: %s", message.data());
    std::abort();
}

} // namespace CppTools::AutoCli
