// Says what the engine thinks of every file in a folder, once as a descriptor and once as the
// result of a command. Each line is an object of JSON: the file's name, and under "descriptor" and
// "result" null when the engine takes it, or the reason why it does not.

#include <CppTools/CppTools.h>

#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <libxml/parser.h>
#include <nlohmann/json.hpp>
#include <string>

namespace {

using nlohmann::json;

/// Runs `step`; null, or the message of what it throws.
template <typename Step>
json Verdict(Step step) {
    try {
        step();
        return nullptr;
    } catch (const CppTools::CppToolException& refusal) {
        return refusal.what();
    }
}

/// Reads a descriptor and registers all that it declares in an empty tree.
void ReadDescriptor(const std::filesystem::path& file) {
    const auto plugin = CppTools::AutoCli::XmlPlugin::New(file);
    plugin->Initialize();
    plugin->RegisterNamespaces(CppTools::AutoCli::RootNamespace::New(nullptr));
}

bool IsWellFormed(const std::string& text) {
    auto* const document =
        xmlReadMemory(text.data(), static_cast<int>(text.size()), "STDOUT", nullptr, 0);
    xmlFreeDoc(document);
    return document != nullptr;
}

/// The reader gives nothing both for a document without a value and for what is no document.
void ReadResult(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    const std::string text(std::istreambuf_iterator<char>(stream), {});
    if (!CppTools::AutoCli::XmlUtil_ParseXmlOutput(text) && !IsWellFormed(text)) {
        throw CppTools::CppToolException("not well-formed");
    }
}

} // namespace

int main(int, char** arguments) {
    for (const auto& entry : std::filesystem::directory_iterator(arguments[1])) {
        const auto& file = entry.path();
        const json line = {{"file", file.filename().string()},
                           {"descriptor", Verdict([&] { ReadDescriptor(file); })},
                           {"result", Verdict([&] { ReadResult(file); })}};
        std::cout << line.dump(-1, ' ', false, json::error_handler_t::replace) << '\n';
    }
}
