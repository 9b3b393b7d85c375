#pragma once

#include <CppTools/host/FileDescriptor.h>

#include <array>
#include <istream>
#include <streambuf>
#include <string>

namespace CppTools::Host {

/// A file that is read from its begin to its end and that no child gets to see: the standard
/// library's streams leave theirs open in every child.
class InputFile {
  public:
    /// What cannot be opened, a directory among it, has an error and a stream at its end.
    explicit InputFile(const std::string& path);

    std::istream& Stream() { return stream_; }

    /// Why the file was not opened, or why its stream came to an end before the file's: an errno
    /// number; 0 when nothing went wrong.
    int Error() const { return buffer_.error; }

  private:
    struct Buffer : std::streambuf {
        int_type underflow() override;

        FileDescriptor file;
        std::array<char, 65536> bytes{};
        int error = 0;
    };

    Buffer buffer_;
    std::istream stream_{&buffer_};
};

} // namespace CppTools::Host
