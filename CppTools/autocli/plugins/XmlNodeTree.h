#pragma once

#include <libxml/parser.h>

#include <memory>
#include <memory_resource>
#include <string>

namespace CppTools::AutoCli {

struct XmlParserDeleter {
    void operator()(xmlParserCtxt* parser) const noexcept { xmlFreeParserCtxt(parser); }
};

/// A plain document as a tree of libxml2's nodes that costs a fraction of libxml2's own to make and
/// to give back: its parser's events are written down in one block of memory after the other.
///
/// The nodes have their kinds, names, attributes and contents, and the links between parents,
/// children and siblings; they belong to no document.
class XmlNodeTree {
  public:
    XmlNodeTree();
    ~XmlNodeTree();
    XmlNodeTree(const XmlNodeTree&) = delete;
    XmlNodeTree& operator=(const XmlNodeTree&) = delete;

    /// The root element, which this tree owns. Null when the text is not plain: libxml2 has a
    /// remark on it, however small, or it declares a document type. Prints nothing.
    xmlNode* Read(const std::string& text);

  private:
    struct Events;

    template <typename Node>
    Node* NewNode(xmlElementType type, const xmlChar* name);
    xmlNode* NewContent(xmlElementType type, const xmlChar* text, std::size_t size);
    xmlAttr* NewAttribute(const xmlChar** pieces, xmlNode* element);
    void AddChild(xmlNode* node);
    void OpenElement(const xmlChar* name, int attributeCount, const xmlChar** attributes);
    void CloseElement();
    void AddText(xmlElementType type, const xmlChar* text, std::size_t size);
    void EndText();
    void AddRemark(xmlElementType type, const xmlChar* text);
    void GiveUp();

    std::pmr::monotonic_buffer_resource memory_;
    std::unique_ptr<xmlParserCtxt, XmlParserDeleter> parser_;
    xmlNode* root_ = nullptr;
    xmlNode* open_ = nullptr;
    bool isPlain_ = true;

    // Neighbouring pieces of text, or of character data, become one node.
    xmlElementType textType_ = XML_TEXT_NODE;
    bool hasText_ = false;
    std::string text_;
};

} // namespace CppTools::AutoCli
