#include <CppTools/host/FileDescriptor.h>

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace CppTools::Host {

namespace {

/// Moves a descriptor above the standard ones; returns 0 or an errno number.
int MoveAboveStandard(FileDescriptor& descriptor) {
    if (descriptor.Get() > STDERR_FILENO) {
        return 0;
    }
    FileDescriptor moved(fcntl(descriptor.Get(), F_DUPFD_CLOEXEC, STDERR_FILENO + 1));
    if (moved.Get() < 0) {
        return errno;
    }
    descriptor = std::move(moved);
    return 0;
}

} // namespace

void FileDescriptor::Close() {
    if (number_ >= 0) {
        close(std::exchange(number_, -1));
    }
}

ssize_t ReadSome(const FileDescriptor& file, char* buffer, std::size_t size) {
    ssize_t count = 0;
    do {
        count = read(file.Get(), buffer, size);
    } while (count < 0 && errno == EINTR);
    return count;
}

int Pipe::Open() {
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) {
        return errno;
    }
    readEnd = FileDescriptor(ends[0]);
    writeEnd = FileDescriptor(ends[1]);
    const int error = MoveAboveStandard(readEnd);
    return error != 0 ? error : MoveAboveStandard(writeEnd);
}

} // namespace CppTools::Host
