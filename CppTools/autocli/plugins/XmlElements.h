#pragma once

#include <libxml/tree.h>
#include <libxml/xmlerror.h>

#include <memory>
#include <new>
#include <string>
#include <string_view>

namespace CppTools::AutoCli {

struct XmlDocumentDeleter {
    void operator()(xmlDoc* document) const noexcept { xmlFreeDoc(document); }
};

using XmlDocument = std::unique_ptr<xmlDoc, XmlDocumentDeleter>;

/// The document that `read` gets from libxml2; null when it is not well-formed. Without memory
/// libxml2 goes on and leaves out what it had no place for; that is no document but throws
/// `std::bad_alloc`.
template <typename Read>
XmlDocument ReadWholeDocument(Read read) {
    xmlResetLastError();
    XmlDocument document(read());
    const auto* const last = xmlGetLastError();
    if (last != nullptr && last->code == XML_ERR_NO_MEMORY) {
        throw std::bad_alloc();
    }
    return document;
}

/// The node's name; empty for nodes that have none, as sections of character data do.
inline std::string_view NodeName(const xmlNode& node) {
    return node.name != nullptr ? reinterpret_cast<const char*>(node.name) : std::string_view();
}

/// The value of an attribute; empty when there is none. Most values are one text, which is read
/// where it stands; those with entities in them or from a document type are put together first.
inline std::string AttributeOf(const xmlNode* element, const char* name) {
    const auto* const key = reinterpret_cast<const xmlChar*>(name);
    const auto* const attribute = xmlHasProp(element, key);
    if (attribute == nullptr) {
        return {};
    }
    if (attribute->type == XML_ATTRIBUTE_NODE && attribute->children != nullptr &&
        attribute->children->next == nullptr && attribute->children->type == XML_TEXT_NODE) {
        return reinterpret_cast<const char*>(attribute->children->content);
    }
    const std::unique_ptr<xmlChar, void (*)(void*)> value(xmlGetProp(element, key), xmlFree);
    return value ? reinterpret_cast<const char*>(value.get()) : std::string();
}

/// Whether the node counts as an element: one by kind, and not named as texts and comments are.
inline bool IsElement(const xmlNode& node) {
    return node.type == XML_ELEMENT_NODE && NodeName(node) != "text" && NodeName(node) != "comment";
}

/// The first element at or behind a node in the order of siblings; null when there is none.
inline xmlNode* FirstElementFrom(xmlNode* node) {
    while (node != nullptr && !IsElement(*node)) {
        node = node->next;
    }
    return node;
}

/// Calls `visit` with every child element, in document order.
template <typename Visit>
void ForEachElement(const xmlNode& parent, Visit visit) {
    for (auto* child = FirstElementFrom(parent.children); child != nullptr;
         child = FirstElementFrom(child->next)) {
        visit(child);
    }
}

/// Calls `visit` with every child element of that name, in document order.
template <typename Visit>
void ForEachElementNamed(const xmlNode& parent, std::string_view name, Visit visit) {
    ForEachElement(parent, [&](xmlNode* child) {
        if (NodeName(*child) == name) {
            visit(child);
        }
    });
}

/// Calls `visit` with the content of every child that carries some, in document order.
template <typename Visit>
void ForEachContent(const xmlNode& parent, Visit visit) {
    for (const auto* child = parent.children; child != nullptr; child = child->next) {
        if (child->content != nullptr) {
            visit(reinterpret_cast<const char*>(child->content));
        }
    }
}

} // namespace CppTools::AutoCli
