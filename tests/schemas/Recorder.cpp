// Preloaded into a program, keeps every XML text that the program and its children have libxml2
// read, each as a file of its own in the folder RECORDED_TEXTS. What cannot be written is left out:
// programs whose writing is made to fail go on as if nobody watched.

#include <libxml/parser.h>

#include <cerrno>
#include <cstdlib>
#include <dlfcn.h>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <string>
#include <string_view>
#include <system_error>
#include <unistd.h>

namespace {

/// Writes to a file of this process first, so that nobody ever sees half a text.
void Write(std::string_view text, const std::filesystem::path& folder) {
    const auto file = folder / (std::to_string(std::hash<std::string_view>{}(text)) + ".xml");
    std::error_code failure;
    if (std::filesystem::exists(file, failure)) {
        return;
    }
    const auto draft = folder / ("draft." + std::to_string(getpid()));
    if (std::ofstream(draft, std::ios::binary) << text << std::flush) {
        std::filesystem::rename(draft, file, failure);
    } else {
        std::filesystem::remove(draft, failure);
    }
}

void Record(std::string_view text) {
    const int error = errno;
    if (const char* const folder = std::getenv("RECORDED_TEXTS")) {
        Write(text, folder);
    }
    errno = error;
}

void RecordFile(const char* path) {
    const int error = errno;
    std::error_code failure;
    if (std::filesystem::is_regular_file(path, failure)) {
        std::ifstream file(path, std::ios::binary);
        Record(std::string(std::istreambuf_iterator<char>(file), {}));
    }
    errno = error;
}

/// libxml2's own function, which the one of the same name here stands in front of.
template <typename Function>
Function* Own(const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

} // namespace

extern "C" {

xmlDoc* xmlReadFile(const char* path, const char* encoding, int options) {
    RecordFile(path);
    return Own<decltype(xmlReadFile)>("xmlReadFile")(path, encoding, options);
}

xmlDoc* xmlReadMemory(const char* text, int size, const char* url, const char* encoding,
                      int options) {
    Record({text, static_cast<std::size_t>(size)});
    return Own<decltype(xmlReadMemory)>("xmlReadMemory")(text, size, url, encoding, options);
}

xmlDoc* xmlCtxtReadMemory(xmlParserCtxt* parser, const char* text, int size, const char* url,
                          const char* encoding, int options) {
    Record({text, static_cast<std::size_t>(size)});
    return Own<decltype(xmlCtxtReadMemory)>("xmlCtxtReadMemory")(parser, text, size, url, encoding,
                                                                 options);
}

} // extern "C"
