// Preloaded into the tool, this makes one call of one function fail, as sweep.py asks for through
// the environment:
//
//   FAULTS_FUNCTION  the function, as in the table below
//   FAULTS_CALL      which of its calls, counted from 1
//   FAULTS_MANNER    "once", "lasting" (every later one fails too), "short" (it moves one byte),
//                    "interrupted" (EINTR) or "storm" (every call is interrupted before it
//                    succeeds)
//   FAULTS_COUNTS    a file that is to hold how often each function was called
//
// What is asked for is taken out of the environment, so that the tool's children run as ever. Calls
// that the system's C library makes on its own account do not come by here; those that it makes to
// read standard input or write standard output fail because the descriptor is exchanged meanwhile.
//
// Nothing here may allocate or throw: the first call arrives before any constructor has run.

#include <array>
#include <cerrno>
#include <cstdarg>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <spawn.h>
#include <string_view>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
}

namespace {

enum class Function {
    Memory, // malloc, calloc, realloc, and with them operator new
    Pipe,
    Spawn,
    Read,
    Write,
    Wait,
    Open,
    OpenDirectory,
    ReadDirectory,
    LoadLibrary,
    GetTerminal,
    SetTerminal,
    Control, // ioctl
    Status,  // stat
    Duplicate,
    ReadInput,   // stdin
    WriteOutput, // stdout
};

constexpr std::array<const char*, 17> kNames = {
    "memory", "pipe",    "posix_spawn", "read",   "write",     "waitpid",
    "open",   "opendir", "readdir",     "dlopen", "tcgetattr", "tcsetattr",
    "ioctl",  "stat",    "fcntl",       "stdin",  "stdout"};

struct Plan {
    bool isRead = false;
    int function = -1;
    long call = 0;
    bool lasting = false;
    bool isShort = false;
    bool interrupted = false;
    bool storm = false;
    const char* counts = nullptr;
};

Plan plan;
std::array<long, kNames.size()> calls;

/// A storm interrupts every other call.
std::array<bool, kNames.size()> interruptedLast;

const char* Taken(const char* variable) {
    const char* const value = getenv(variable);
    unsetenv(variable);
    return value != nullptr ? value : "";
}

void ReadPlan() {
    plan.isRead = true;
    const std::string_view function = Taken("FAULTS_FUNCTION");
    for (std::size_t i = 0; i < kNames.size(); ++i) {
        if (function == kNames[i]) {
            plan.function = static_cast<int>(i);
        }
    }
    plan.call = std::strtol(Taken("FAULTS_CALL"), nullptr, 10);
    const std::string_view manner = Taken("FAULTS_MANNER");
    plan.lasting = manner == "lasting";
    plan.isShort = manner == "short";
    plan.interrupted = manner == "interrupted";
    plan.storm = manner == "storm";
    plan.counts = Taken("FAULTS_COUNTS");
    unsetenv("LD_PRELOAD");
}

/// Counts a call and tells whether it is one of those that have to fail.
bool Strikes(Function function) {
    if (!plan.isRead) {
        ReadPlan();
    }
    const auto index = static_cast<std::size_t>(function);
    const long call = ++calls[index];
    if (plan.function != static_cast<int>(index)) {
        return false;
    }
    if (plan.storm) {
        return interruptedLast[index] = !interruptedLast[index];
    }
    return call == plan.call || (plan.lasting && call > plan.call);
}

bool IsInterruption() {
    return plan.interrupted || plan.storm;
}

template <typename Result>
Result Failure(int error, Result result) {
    errno = IsInterruption() ? EINTR : error;
    return result;
}

/// The definition that this library stands in front of.
template <typename Call>
Call* Behind(const char* name) {
    return reinterpret_cast<Call*>(dlsym(RTLD_NEXT, name));
}

/// While it lasts, a standard descriptor stands for a file that cannot do what is asked of it.
class SpoiltDescriptor {
  public:
    SpoiltDescriptor(int descriptor, const char* path, int access, bool isSpoilt)
        : descriptor_(descriptor) {
        if (isSpoilt) {
            kept_ = static_cast<int>(syscall(SYS_fcntl, descriptor, F_DUPFD_CLOEXEC, 100));
            const auto useless = static_cast<int>(syscall(SYS_openat, AT_FDCWD, path, access));
            syscall(SYS_dup2, useless, descriptor);
            syscall(SYS_close, useless);
        }
    }

    SpoiltDescriptor(const SpoiltDescriptor&) = delete;
    SpoiltDescriptor& operator=(const SpoiltDescriptor&) = delete;

    ~SpoiltDescriptor() {
        if (kept_ >= 0) {
            const int error = errno;
            syscall(SYS_dup2, kept_, descriptor_);
            syscall(SYS_close, kept_);
            errno = error;
        }
    }

  private:
    int descriptor_;
    int kept_ = -1;
};

class SpoiltInput : SpoiltDescriptor {
  public:
    explicit SpoiltInput(std::FILE* file)
        : SpoiltDescriptor(STDIN_FILENO, "/proc/self/mem", O_RDONLY,
                           file == stdin && Strikes(Function::ReadInput)) {}
};

class SpoiltOutput : SpoiltDescriptor {
  public:
    explicit SpoiltOutput(std::FILE* file)
        : SpoiltDescriptor(STDOUT_FILENO, "/dev/full", O_WRONLY,
                           file == stdout && Strikes(Function::WriteOutput)) {}
};

__attribute__((destructor)) void WriteCounts() {
    if (plan.counts == nullptr || *plan.counts == '\0') {
        return;
    }
    const auto file = static_cast<int>(
        syscall(SYS_openat, AT_FDCWD, plan.counts, O_WRONLY | O_CREAT | O_TRUNC, 0600));
    for (std::size_t i = 0; i < kNames.size(); ++i) {
        dprintf(file, "%s %ld\n", kNames[i], calls[i]);
    }
    syscall(SYS_close, file);
}

} // namespace

extern "C" {

void* malloc(std::size_t size) {
    return Strikes(Function::Memory) ? Failure<void*>(ENOMEM, nullptr) : __libc_malloc(size);
}

void* calloc(std::size_t count, std::size_t size) {
    return Strikes(Function::Memory) ? Failure<void*>(ENOMEM, nullptr) : __libc_calloc(count, size);
}

void* realloc(void* block, std::size_t size) {
    return Strikes(Function::Memory) ? Failure<void*>(ENOMEM, nullptr)
                                     : __libc_realloc(block, size);
}

int pipe2(int* ends, int flags) {
    static auto* const real = Behind<decltype(pipe2)>("pipe2");
    return Strikes(Function::Pipe) ? Failure(EMFILE, -1) : real(ends, flags);
}

int posix_spawn(pid_t* child, const char* path, const posix_spawn_file_actions_t* actions,
                const posix_spawnattr_t* attributes, char* const* arguments,
                char* const* environment) {
    static auto* const real = Behind<decltype(posix_spawn)>("posix_spawn");
    return Strikes(Function::Spawn)
               ? EAGAIN
               : real(child, path, actions, attributes, arguments, environment);
}

ssize_t read(int file, void* buffer, std::size_t size) {
    static auto* const real = Behind<decltype(read)>("read");
    if (!Strikes(Function::Read)) {
        return real(file, buffer, size);
    }
    return plan.isShort ? real(file, buffer, size > 0 ? 1 : 0) : Failure<ssize_t>(EIO, -1);
}

ssize_t write(int file, const void* bytes, std::size_t size) {
    static auto* const real = Behind<decltype(write)>("write");
    if (!Strikes(Function::Write)) {
        return real(file, bytes, size);
    }
    return plan.isShort ? real(file, bytes, size > 0 ? 1 : 0) : Failure<ssize_t>(EIO, -1);
}

ssize_t writev(int file, const iovec* pieces, int count) {
    static auto* const real = Behind<decltype(writev)>("writev");
    return Strikes(Function::Write) ? Failure<ssize_t>(EIO, -1) : real(file, pieces, count);
}

pid_t waitpid(pid_t child, int* status, int options) {
    static auto* const real = Behind<decltype(waitpid)>("waitpid");
    return Strikes(Function::Wait) ? Failure(ECHILD, -1) : real(child, status, options);
}

int open(const char* path, int flags, ...) {
    return Strikes(Function::Open)
               ? Failure(EMFILE, -1)
               : static_cast<int>(syscall(SYS_openat, AT_FDCWD, path, flags, 0666));
}

int open64(const char* path, int flags, ...) {
    return open(path, flags);
}

int openat(int directory, const char* path, int flags, ...) {
    return Strikes(Function::Open)
               ? Failure(EMFILE, -1)
               : static_cast<int>(syscall(SYS_openat, directory, path, flags, 0666));
}

std::FILE* fopen64(const char* path, const char* mode) {
    static auto* const real = Behind<decltype(fopen64)>("fopen64");
    return Strikes(Function::Open) ? Failure<std::FILE*>(EMFILE, nullptr) : real(path, mode);
}

DIR* opendir(const char* path) {
    static auto* const real = Behind<decltype(opendir)>("opendir");
    return Strikes(Function::OpenDirectory) ? Failure<DIR*>(EMFILE, nullptr) : real(path);
}

dirent* readdir(DIR* directory) {
    static auto* const real = Behind<decltype(readdir)>("readdir");
    return Strikes(Function::ReadDirectory) ? Failure<dirent*>(EIO, nullptr) : real(directory);
}

void* dlopen(const char* path, int mode) {
    static auto* const real = Behind<decltype(dlopen)>("dlopen");
    return Strikes(Function::LoadLibrary) ? nullptr : real(path, mode);
}

int tcgetattr(int terminal, termios* settings) {
    static auto* const real = Behind<decltype(tcgetattr)>("tcgetattr");
    return Strikes(Function::GetTerminal) ? Failure(EIO, -1) : real(terminal, settings);
}

int tcsetattr(int terminal, int when, const termios* settings) {
    static auto* const real = Behind<decltype(tcsetattr)>("tcsetattr");
    return Strikes(Function::SetTerminal) ? Failure(EIO, -1) : real(terminal, when, settings);
}

int ioctl(int file, unsigned long request, ...) {
    va_list arguments;
    va_start(arguments, request);
    void* const argument = va_arg(arguments, void*);
    va_end(arguments);
    return Strikes(Function::Control)
               ? Failure(ENOTTY, -1)
               : static_cast<int>(syscall(SYS_ioctl, file, request, argument));
}

int stat(const char* path, struct stat* status) {
    static auto* const real = Behind<decltype(stat)>("stat");
    return Strikes(Function::Status) ? Failure(EACCES, -1) : real(path, status);
}

int fstat(int file, struct stat* status) {
    static auto* const real = Behind<decltype(fstat)>("fstat");
    return Strikes(Function::Status) ? Failure(EIO, -1) : real(file, status);
}

int fcntl(int file, int command, ...) {
    va_list arguments;
    va_start(arguments, command);
    const long argument = va_arg(arguments, long);
    va_end(arguments);
    return Strikes(Function::Duplicate)
               ? Failure(EMFILE, -1)
               : static_cast<int>(syscall(SYS_fcntl, file, command, argument));
}

int getc(std::FILE* file) {
    static auto* const real = Behind<decltype(getc)>("getc");
    const SpoiltInput spoilt(file);
    return real(file);
}

std::size_t fread(void* buffer, std::size_t size, std::size_t count, std::FILE* file) {
    static auto* const real = Behind<decltype(fread)>("fread");
    const SpoiltInput spoilt(file);
    return real(buffer, size, count, file);
}

std::size_t fwrite(const void* bytes, std::size_t size, std::size_t count, std::FILE* file) {
    static auto* const real = Behind<decltype(fwrite)>("fwrite");
    const SpoiltOutput spoilt(file);
    return real(bytes, size, count, file);
}

int putc(int byte, std::FILE* file) {
    static auto* const real = Behind<decltype(putc)>("putc");
    const SpoiltOutput spoilt(file);
    return real(byte, file);
}

int fflush(std::FILE* file) {
    static auto* const real = Behind<decltype(fflush)>("fflush");
    const SpoiltOutput spoilt(file);
    return real(file);
}

} // extern "C"
