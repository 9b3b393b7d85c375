// document-parsing tree|push|pull FILE: libxml2 reads a document and nothing is built from it: as a
// tree that is freed again, through handlers that do nothing, or pulled node by node.

#include "../support/Measure.h"

#include <iostream>
#include <libxml/parser.h>
#include <libxml/xmlreader.h>

namespace {

bool ParseTree(const std::string& text) {
    auto* const document =
        xmlReadMemory(text.data(), static_cast<int>(text.size()), "STDOUT", nullptr, 0);
    const bool parsed = document != nullptr;
    xmlFreeDoc(document);
    return parsed;
}

void OnElement(void* /*context*/, const xmlChar* /*name*/, const xmlChar* /*prefix*/,
               const xmlChar* /*uri*/, int /*namespaceCount*/, const xmlChar** /*namespaces*/,
               int /*attributeCount*/, int /*defaulted*/, const xmlChar** /*attributes*/) {}

void OnText(void* /*context*/, const xmlChar* /*text*/, int /*size*/) {}

bool ParsePush(const std::string& text) {
    xmlSAXHandler handlers = {};
    handlers.initialized = XML_SAX2_MAGIC;
    handlers.startElementNs = OnElement;
    handlers.characters = OnText;
    return xmlSAXUserParseMemory(&handlers, nullptr, text.data(), static_cast<int>(text.size())) ==
           0;
}

bool ParsePull(const std::string& text) {
    auto* const reader =
        xmlReaderForMemory(text.data(), static_cast<int>(text.size()), "STDOUT", nullptr, 0);
    int state = 1;
    while (state == 1) {
        state = xmlTextReaderRead(reader);
    }
    xmlFreeTextReader(reader);
    return state == 0;
}

} // namespace

int main(int argc, char** argv) {
    using namespace Bench;
    const std::string mode = argc > 1 ? argv[1] : "";
    const std::string text = argc > 2 ? ReadFile(argv[2]) : "";
    if (text.empty()) {
        std::cerr << "usage: document-parsing tree|push|pull FILE\n";
        return 2;
    }
    xmlInitParser();
    ForgetPeak();
    const double before = HeldBytes();
    const Stopwatch parsing;
    const bool parsed = mode == "push"   ? ParsePush(text)
                        : mode == "pull" ? ParsePull(text)
                                         : ParseTree(text);
    Report("libxml2 " + mode, "ms", parsing.Milliseconds());
    Report("libxml2 " + mode, "peak_bytes_per_byte",
           (PeakBytes() - before) / static_cast<double>(text.size()));
    return parsed ? 0 : 1;
}
