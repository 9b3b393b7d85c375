#pragma once

#include <cstddef>
#include <sys/types.h>
#include <utility>

namespace CppTools::Host {

/// Owns an open file descriptor; -1 stands for none.
class FileDescriptor {
  public:
    FileDescriptor() = default;

    explicit FileDescriptor(int number) : number_(number) {}

    FileDescriptor(FileDescriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}

    FileDescriptor& operator=(FileDescriptor&& other) noexcept {
        std::swap(number_, other.number_);
        return *this;
    }

    ~FileDescriptor() { Close(); }

    int Get() const { return number_; }

    void Close();

  private:
    int number_ = -1;
};

/// Reads at most `size` bytes, however often it is interrupted. 0 at the end, negative with errno
/// for a failure.
ssize_t ReadSome(const FileDescriptor& file, char* buffer, std::size_t size);

/// A pipe whose ends are closed in every child and never stand in for a standard descriptor,
/// even in a process that was started without some of those.
struct Pipe {
    FileDescriptor readEnd;
    FileDescriptor writeEnd;

    /// Opens the pipe; returns 0 or an errno number. After a failure there is nothing to do with
    /// the pipe but to let it go.
    int Open();
};

} // namespace CppTools::Host
