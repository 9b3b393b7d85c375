// descriptor-walk FOLDER: libxml2 reads every descriptor of a folder, and each node, attribute and
// text is looked at once. What a reader that keeps libxml2's tree pays before it builds anything.

#include "../support/Measure.h"

#include <algorithm>
#include <filesystem>
#include <iostream>
#include <libxml/parser.h>
#include <vector>

namespace {

std::vector<std::string> DescriptorsOf(const char* folder) {
    std::vector<std::string> paths;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        paths.push_back(entry.path());
    }
    std::sort(paths.begin(), paths.end());
    return paths;
}

std::size_t SizeOf(const xmlChar* text) {
    return text == nullptr ? 0 : static_cast<std::size_t>(xmlStrlen(text));
}

/// Bytes of text and attributes, so that nothing is left out.
std::size_t Walk(const xmlNode* node) {
    std::size_t bytes = 0;
    for (; node != nullptr; node = node->next) {
        if (node->type != XML_ELEMENT_NODE) {
            bytes += SizeOf(node->content);
            continue;
        }
        for (const auto* attribute = node->properties; attribute != nullptr;
             attribute = attribute->next) {
            xmlChar* const value = xmlGetProp(node, attribute->name);
            bytes += SizeOf(value);
            xmlFree(value);
        }
        bytes += Walk(node->children);
    }
    return bytes;
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        std::cerr << "usage: descriptor-walk FOLDER\n";
        return 2;
    }
    xmlInitParser();
    const Bench::Stopwatch walking;
    std::size_t bytes = 0;
    for (const auto& path : DescriptorsOf(argv[1])) {
        auto* const document = xmlReadFile(path.c_str(), nullptr, 0);
        bytes += Walk(xmlDocGetRootElement(document));
        xmlFreeDoc(document);
    }
    Bench::Report("libxml2 walk", "ms", walking.Milliseconds());
    return bytes > 0 ? 0 : 1;
}
