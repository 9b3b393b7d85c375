#include "Tool.h"

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>

namespace HostPack {

namespace {

void AppendPath(Words& words, const std::string& path) {
    std::istringstream names(path);
    words.insert(words.end(), std::istream_iterator<std::string>(names), {});
}

/// Puts the option that names the made-up machine behind the program's name.
std::string OverMachine(std::string descriptor, const std::string& root) {
    const std::string program = std::string("'") + HOST_FACTS_PROGRAM + "'";
    const std::string option = " '--root=" + root + "'";
    auto place = descriptor.find(program);
    while (place != std::string::npos) {
        descriptor.insert(place + program.size(), option);
        place = descriptor.find(program, place + program.size());
    }
    return descriptor;
}

} // namespace

const std::string& PackDirectory() {
    static const PackCopy copy([](const std::string& descriptor) { return descriptor; });
    return copy.Path();
}

TestSupport::ChildRun RunTool(const std::string& path, Words options, const std::string& input,
                              const Environment& environment, const std::string& formatter) {
    Words words{"--plugin-dir", PackDirectory(), "--formatter", formatter};
    AppendPath(words, path);
    words.insert(words.end(), options.begin(), options.end());
    return Run(TANDRIL_PROGRAM, words, input, environment);
}

nlohmann::json JsonOf(const TestSupport::ChildRun& run) {
    if (run.status != 0 || !run.err.empty()) {
        throw std::runtime_error("no result but: " + run.out + run.err);
    }
    return nlohmann::json::parse(run.out);
}

std::string BytesOf(const nlohmann::json& text) {
    std::string bytes;
    const std::string characters = text.get<std::string>();
    for (std::size_t i = 0; i < characters.size(); ++i) {
        const auto lead = static_cast<unsigned char>(characters[i]);
        if (lead < 0x80) {
            bytes += characters[i];
        } else { // two bytes stand for one of 0x80 to 0xFF
            const auto trail = static_cast<unsigned char>(characters.at(++i));
            bytes += static_cast<char>((lead & 0x03) << 6 | (trail & 0x3F));
        }
    }
    return bytes;
}

nlohmann::json RowWith(const nlohmann::json& list, const std::string& field,
                       const nlohmann::json& value) {
    for (const auto& row : list) {
        if (row.at(field) == value) {
            return row;
        }
    }
    throw std::runtime_error("no row with " + field + " " + value.dump());
}

std::vector<nlohmann::json> JsonColumn(const nlohmann::json& list, const std::string& field) {
    std::vector<nlohmann::json> column;
    for (const auto& row : list) {
        column.push_back(row.at(field));
    }
    return column;
}

std::string FileOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::string text{std::istreambuf_iterator<char>(file), {}};
    if (!file) {
        throw std::system_error(errno, std::generic_category(), "read " + path);
    }
    return text;
}

ToolOn::ToolOn(const Machine& machine)
    : pack_(
          [&](const std::string& descriptor) { return OverMachine(descriptor, machine.Root()); }) {}

PackCopy::PackCopy(const std::function<std::string(const std::string&)>& change) {
    for (const auto& entry : std::filesystem::directory_iterator(HOST_PACK_DIR)) {
        if (entry.path().extension() == ".xml") {
            directory_.Write(entry.path().filename(), change(FileOf(entry.path())));
        }
    }
}

TestSupport::ChildRun ToolOn::Run(const std::string& path, const Words& options,
                                  const Words& dispatcherOptions) const {
    Words words{"--plugin-dir", pack_.Path()};
    words.insert(words.end(), dispatcherOptions.begin(), dispatcherOptions.end());
    AppendPath(words, path);
    words.insert(words.end(), options.begin(), options.end());
    return HostPack::Run(TANDRIL_PROGRAM, words);
}

} // namespace HostPack
