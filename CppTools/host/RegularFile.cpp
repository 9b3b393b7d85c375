#include <CppTools/host/FileDescriptor.h>
#include <CppTools/host/RegularFile.h>

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace CppTools::Host {

namespace {

ssize_t ReadSome(int file, char* buffer, std::size_t size) {
    ssize_t count = 0;
    do {
        count = read(file, buffer, size);
    } while (count < 0 && errno == EINTR);
    return count;
}

} // namespace

std::optional<std::string> ReadRegularFile(const std::string& path, std::size_t mostBytes) {
    // A FIFO is not even opened: its writer would notice.
    struct stat status {};

    const bool isWanted = stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) &&
                          static_cast<std::size_t>(status.st_size) <= mostBytes;
    const FileDescriptor file(isWanted ? open(path.c_str(), O_RDONLY | O_CLOEXEC) : -1);
    if (file.Get() < 0) {
        return std::nullopt;
    }
    std::string content(static_cast<std::size_t>(status.st_size), '\0');
    std::size_t size = 0;
    ssize_t count = 0;
    while (size < content.size() &&
           (count = ReadSome(file.Get(), content.data() + size, content.size() - size)) > 0) {
        size += static_cast<std::size_t>(count);
    }
    content.resize(size);
    return count < 0 ? std::nullopt : std::optional(std::move(content));
}

} // namespace CppTools::Host
