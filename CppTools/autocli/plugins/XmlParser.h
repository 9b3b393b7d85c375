#pragma once

#include <libxml/parser.h>

#include <memory>
#include <new>

namespace CppTools::AutoCli {

struct XmlParserDeleter {
    /// A parser that reads declarations of entities keeps them in a document that it leaves
    /// behind.
    void operator()(xmlParserCtxt* parser) const noexcept {
        xmlFreeDoc(parser->myDoc);
        xmlFreeParserCtxt(parser);
    }
};

using XmlParser = std::unique_ptr<xmlParserCtxt, XmlParserDeleter>;

inline XmlParser NewXmlParser() {
    XmlParser parser(xmlNewParserCtxt());
    if (!parser) {
        throw std::bad_alloc();
    }
    return parser;
}

} // namespace CppTools::AutoCli
