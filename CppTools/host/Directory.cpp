#include <CppTools/host/Directory.h>

#include <cerrno>
#include <dirent.h>
#include <memory>

namespace CppTools::Host {

namespace {

struct DirectoryCloser {
    void operator()(DIR* directory) const noexcept { closedir(directory); }
};

} // namespace

DirectoryListing ListDirectory(const std::string& path, std::vector<std::string>& names) {
    const std::unique_ptr<DIR, DirectoryCloser> directory(opendir(path.c_str()));
    if (!directory) {
        return DirectoryListing::NotOpened;
    }
    errno = 0;
    while (const dirent* entry = readdir(directory.get())) {
        const std::string name = entry->d_name;
        if (name != "." && name != "..") {
            names.push_back(name);
        }
        errno = 0;
    }
    return errno == 0 ? DirectoryListing::Complete : DirectoryListing::CutShort;
}

} // namespace CppTools::Host
