#pragma once

#include <libxml/parser.h>
#include <libxml/tree.h>
#include <libxml/xmlerror.h>

#include <memory>
#include <string>
#include <vector>

namespace Fuzz {

/// A text as libxml2 reads it, which may be no document. What libxml2 says is said to nobody, here
/// and in the library.
class XmlDocument {
  public:
    explicit XmlDocument(const std::string& text, int options = 0)
        : document_(Read(text, options), &xmlFreeDoc) {}

    /// Null when there is no document.
    xmlNode* Root() const { return document_ ? xmlDocGetRootElement(document_.get()) : nullptr; }

  private:
    static void SayNothing(void* /*context*/, const char* /*format*/, ...) {}

    static xmlDoc* Read(const std::string& text, int options) {
        xmlSetGenericErrorFunc(nullptr, SayNothing);
        return xmlReadMemory(text.data(), static_cast<int>(text.size()), nullptr, nullptr, options);
    }

    std::unique_ptr<xmlDoc, void (*)(xmlDoc*)> document_;
};

inline std::string NameOf(const xmlNode& node) {
    return reinterpret_cast<const char*>(node.name);
}

/// The elements among the children that are not passed over for their names.
inline std::vector<xmlNode*> ElementsOf(const xmlNode& node) {
    std::vector<xmlNode*> elements;
    for (xmlNode* child = node.children; child != nullptr; child = child->next) {
        if (child->type == XML_ELEMENT_NODE && NameOf(*child) != "text" &&
            NameOf(*child) != "comment") {
            elements.push_back(child);
        }
    }
    return elements;
}

inline std::vector<xmlNode*> ElementsOf(const xmlNode& node, const std::string& name) {
    std::vector<xmlNode*> elements = ElementsOf(node);
    std::erase_if(elements, [&](const xmlNode* each) { return NameOf(*each) != name; });
    return elements;
}

} // namespace Fuzz
