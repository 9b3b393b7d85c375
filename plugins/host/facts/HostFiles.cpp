#include "HostFiles.h"

#include "HostError.h"
#include "TextTools.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <unistd.h>

namespace HostFacts {

namespace {

class FileDescriptor {
  public:
    explicit FileDescriptor(const std::string& path)
        : number_(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY)) {}

    ~FileDescriptor() {
        if (number_ >= 0) {
            close(number_);
        }
    }

    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;

    int Number() const { return number_; }

  private:
    int number_;
};

struct CloseDirectory {
    void operator()(DIR* directory) const { closedir(directory); }
};

[[noreturn]] void FailToRead(const std::string& path) {
    const int reason = errno;
    throw HostError("Unable to read " + path, reason);
}

} // namespace

std::string HostFiles::Read(const std::string& path) const {
    const FileDescriptor file(RealPath(path));
    if (file.Number() < 0) {
        FailToRead(path);
    }
    std::string contents;
    std::array<char, 16384> chunk{};
    while (true) {
        const ssize_t count = read(file.Number(), chunk.data(), chunk.size());
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count < 0) {
            FailToRead(path);
        }
        if (count == 0) {
            return contents;
        }
        contents.append(chunk.data(), static_cast<std::size_t>(count));
    }
}

std::optional<std::string> HostFiles::ReadIfThere(const std::string& path) const {
    try {
        return Read(path);
    } catch (const HostError& error) {
        if (error.IsGone()) {
            return std::nullopt;
        }
        throw;
    }
}

std::string HostFiles::FirstLine(const std::string& path) const {
    try {
        const std::string contents = Read(path);
        return contents.substr(0, contents.find('\n'));
    } catch (const HostError&) {
        return "";
    }
}

long HostFiles::Number(const std::string& path, long otherwise) const {
    return LeadingNumber(FirstLine(path)).value_or(otherwise);
}

std::vector<std::string> HostFiles::Names(const std::string& path) const {
    const std::unique_ptr<DIR, CloseDirectory> directory(opendir(RealPath(path).c_str()));
    if (!directory) {
        FailToRead(path);
    }
    std::vector<std::string> names;
    errno = 0;
    while (const dirent* entry = readdir(directory.get())) {
        const std::string name = entry->d_name;
        if (name != "." && name != "..") {
            names.push_back(name);
        }
        errno = 0;
    }
    if (errno != 0) {
        FailToRead(path);
    }
    std::sort(names.begin(), names.end());
    return names;
}

bool HostFiles::Exists(const std::string& path) const {
    return access(RealPath(path).c_str(), F_OK) == 0;
}

std::string HostFiles::LinkTarget(const std::string& path) const {
    std::string target(PATH_MAX, '\0');
    const ssize_t length = readlink(RealPath(path).c_str(), target.data(), target.size());
    if (length < 0) {
        FailToRead(path);
    }
    target.resize(static_cast<std::size_t>(length));
    return target;
}

} // namespace HostFacts
