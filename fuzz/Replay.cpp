// Runs one fuzzer over files: those named, and those in folders named. Whatever breaks a law ends
// the program as it ends the fuzzer.

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

namespace fs = std::filesystem;

std::vector<fs::path> FilesOf(const fs::path& path) {
    if (!fs::is_directory(path)) {
        return {path};
    }
    std::vector<fs::path> files;
    for (const auto& entry : fs::directory_iterator(path)) {
        files.push_back(entry.path());
    }
    std::sort(files.begin(), files.end());
    return files;
}

bool Run(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    const std::string text((std::istreambuf_iterator<char>(file)), {});
    if (!file) {
        std::fprintf(stderr, "Unable to read %s\n", path.c_str());
        return false;
    }
    std::fprintf(stderr, "%s\n", path.c_str());
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(text.data()), text.size());
    return true;
}

} // namespace

int main(int argc, char** argv) {
    std::size_t count = 0;
    for (int i = 1; i < argc; ++i) {
        for (const fs::path& file : FilesOf(argv[i])) {
            if (!Run(file)) {
                return 1;
            }
            ++count;
        }
    }
    std::fprintf(stderr, "%zu inputs\n", count);
    return count > 0 ? 0 : 1;
}
