#include <devkit/SkeletonTexts.h>
#include <devkit/Skeletons.h>

#include <CppTools/metaobj/CppToolException.h>

#include <boost/algorithm/string/replace.hpp>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <system_error>

namespace Devkit {

namespace {

using CppTools::CppToolException;

std::string Named(const char* skeleton, const std::string& name) {
    return boost::replace_all_copy(std::string(skeleton), "@NAME@", name);
}

/// Never overwrites what somebody else may have written in the meantime.
void Write(const std::string& path, const std::string& content) {
    using File = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;
    const File file(std::fopen(path.c_str(), "wbx"), &std::fclose);
    if (!file || std::fwrite(content.data(), 1, content.size(), file.get()) != content.size() ||
        std::fflush(file.get()) != 0) {
        throw CppToolException("Unable to write " + path + ": " +
                               std::generic_category().message(errno));
    }
}

} // namespace

std::vector<SkeletonFile> NewDescriptorFiles(const std::string& name) {
    return {{name + ".xml", "the descriptor", Named(SkeletonTexts::kDescriptor, name)}};
}

std::vector<SkeletonFile> NewLibraryFiles(const std::string& name) {
    return {{name + ".cpp", "the library", Named(SkeletonTexts::kLibrary, name)},
            {"CMakeLists.txt", "builds it with CMake", Named(SkeletonTexts::kCMakeLists, name)},
            {"Makefile", "builds it with make", Named(SkeletonTexts::kMakefile, name)}};
}

void WriteFiles(const std::vector<SkeletonFile>& files, const std::string& directory) {
    const std::filesystem::path folder(directory);
    for (const SkeletonFile& file : files) {
        std::error_code unknown;
        if (std::filesystem::exists(std::filesystem::symlink_status(folder / file.name, unknown))) {
            throw CppToolException((folder / file.name).string() +
                                   " exists already; nothing was written");
        }
    }
    for (const SkeletonFile& file : files) {
        Write(folder / file.name, file.content);
    }
}

} // namespace Devkit
