#include <CppTools/host/InputFile.h>

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>

namespace CppTools::Host {

namespace {

bool IsDirectory(const FileDescriptor& file) {
    struct stat status {};

    return fstat(file.Get(), &status) == 0 && S_ISDIR(status.st_mode);
}

} // namespace

InputFile::InputFile(const std::string& path) {
    FileDescriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (file.Get() < 0) {
        buffer_.error = errno;
    } else if (IsDirectory(file)) {
        buffer_.error = EISDIR;
    } else {
        buffer_.file = std::move(file);
    }
}

InputFile::Buffer::int_type InputFile::Buffer::underflow() {
    const ssize_t count = ReadSome(file, bytes.data(), bytes.size());
    if (count < 0) {
        error = errno;
    }
    if (count <= 0) {
        return traits_type::eof();
    }
    setg(bytes.data(), bytes.data(), bytes.data() + count);
    return traits_type::to_int_type(*gptr());
}

} // namespace CppTools::Host
