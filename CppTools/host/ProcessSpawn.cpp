#include <CppTools/host/ProcessSpawn.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <spawn.h>
#include <unistd.h>

namespace CppTools::Host {

namespace {

class FileActions {
  public:
    FileActions() : error_(posix_spawn_file_actions_init(&actions_)) { ready_ = error_ == 0; }

    FileActions(const FileActions&) = delete;
    FileActions& operator=(const FileActions&) = delete;

    ~FileActions() {
        if (ready_) {
            posix_spawn_file_actions_destroy(&actions_);
        }
    }

    void Duplicate(int from, int to) {
        if (error_ == 0 && from != to) {
            error_ = posix_spawn_file_actions_adddup2(&actions_, from, to);
        }
    }

    int Error() const { return error_; }

    const posix_spawn_file_actions_t* Get() const { return &actions_; }

  private:
    posix_spawn_file_actions_t actions_{};
    int error_;
    bool ready_ = false;
};

bool HoldsNul(const std::string& text) {
    return text.find('\0') != std::string::npos;
}

/// The vector that exec wants; it points into `arguments` and is not written to.
std::vector<char*> ArgumentPointers(const std::vector<std::string>& arguments) {
    std::vector<char*> pointers;
    pointers.reserve(arguments.size() + 1);
    for (const auto& argument : arguments) {
        pointers.push_back(const_cast<char*>(argument.c_str()));
    }
    pointers.push_back(nullptr);
    return pointers;
}

} // namespace

int SpawnProcess(const std::string& program, const std::vector<std::string>& arguments,
                 const StandardDescriptors& descriptors, pid_t& child) {
    if (std::any_of(arguments.begin(), arguments.end(), HoldsNul)) {
        return EINVAL;
    }
    FileActions actions;
    actions.Duplicate(descriptors.input, STDIN_FILENO);
    actions.Duplicate(descriptors.output, STDOUT_FILENO);
    actions.Duplicate(descriptors.error, STDERR_FILENO);
    const auto pointers = ArgumentPointers(arguments);
    return actions.Error() != 0 ? actions.Error()
                                : posix_spawn(&child, program.c_str(), actions.Get(), nullptr,
                                              pointers.data(), environ);
}

std::string StatusText(int error) {
    std::array<char, 256> buffer{};
    return strerror_r(error, buffer.data(), buffer.size());
}

} // namespace CppTools::Host
