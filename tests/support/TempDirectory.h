#pragma once

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <system_error>

namespace TestSupport {

/// A fresh directory that is removed with everything in it when the test is over.
class TempDirectory {
  public:
    TempDirectory() {
        std::string pattern = (std::filesystem::temp_directory_path() / "cpptools-XXXXXX").string();
        if (mkdtemp(pattern.data()) == nullptr) {
            throw std::system_error(errno, std::generic_category(), "mkdtemp " + pattern);
        }
        path_ = pattern;
    }

    TempDirectory(const TempDirectory&) = delete;
    TempDirectory& operator=(const TempDirectory&) = delete;

    ~TempDirectory() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    const std::string& Path() const { return path_; }

    std::string operator/(const std::string& name) const { return path_ + "/" + name; }

    /// Writes a file, with the directories on its way; returns its path.
    std::string Write(const std::string& name, const std::string& content) const {
        const std::string file = *this / name;
        std::filesystem::create_directories(std::filesystem::path(file).parent_path());
        std::ofstream stream(file, std::ios::binary);
        stream << content;
        if (!stream.flush()) {
            throw std::system_error(errno, std::generic_category(), "write " + file);
        }
        return file;
    }

    std::string MakeDirectory(const std::string& name) const {
        std::filesystem::create_directories(*this / name);
        return *this / name;
    }

  private:
    std::string path_;
};

} // namespace TestSupport
