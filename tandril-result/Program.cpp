#include "Program.h"

#include "Errors.h"

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <system_error>

namespace TandrilResult {

namespace {

/// What is arranged for the child: its output, and the signals that this process ignores.
class Arrangements {
  public:
    explicit Arrangements(int output) {
        posix_spawn_file_actions_init(&actions_);
        posix_spawn_file_actions_adddup2(&actions_, output, STDOUT_FILENO);
        sigset_t defaults;
        sigemptyset(&defaults);
        sigaddset(&defaults, SIGPIPE);
        posix_spawnattr_init(&attributes_);
        posix_spawnattr_setsigdefault(&attributes_, &defaults);
        posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSIGDEF);
    }

    Arrangements(const Arrangements&) = delete;
    Arrangements& operator=(const Arrangements&) = delete;

    ~Arrangements() {
        posix_spawnattr_destroy(&attributes_);
        posix_spawn_file_actions_destroy(&actions_);
    }

    /// 0 or an errno number.
    int Start(const std::vector<std::string>& words, pid_t& process) const {
        std::vector<char*> arguments;
        for (const std::string& word : words) {
            arguments.push_back(const_cast<char*>(word.c_str()));
        }
        arguments.push_back(nullptr);
        return posix_spawnp(&process, arguments[0], &actions_, &attributes_, arguments.data(),
                            environ);
    }

  private:
    posix_spawn_file_actions_t actions_;
    posix_spawnattr_t attributes_;
};

[[noreturn]] void FailToRun(const std::string& name, int reason) {
    throw ResultError("Unable to run '" + name + "': " + std::generic_category().message(reason) +
                      (reason == ENOENT ? "; is it installed?" : ""));
}

int WaitFor(pid_t process) {
    int status = 0;
    while (waitpid(process, &status, 0) < 0 && errno == EINTR) {
    }
    return status;
}

} // namespace

Program::Program(const std::vector<std::string>& words) : name_(words.front()) {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) {
        FailToRun(name_, errno);
    }
    output_ = Descriptor(ends[0]);
    const Descriptor writeEnd(ends[1]);
    const int problem = Arrangements(writeEnd.Number()).Start(words, process_);
    if (problem != 0) {
        process_ = -1;
        FailToRun(name_, problem);
    }
}

Program::~Program() {
    if (process_ > 0) {
        output_.Close();
        kill(process_, SIGKILL);
        WaitFor(process_);
    }
}

int Program::Wait() {
    const int status = WaitFor(std::exchange(process_, -1));
    if (WIFSIGNALED(status)) {
        throw ResultError("'" + name_ + "' was ended by signal " +
                          std::to_string(WTERMSIG(status)));
    }
    return WEXITSTATUS(status);
}

} // namespace TandrilResult
