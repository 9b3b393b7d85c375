#pragma once

#include <CppTools/autocli/plugins/PlainXml.h>

#include <memory_resource>
#include <string>

namespace CppTools::AutoCli {

/// A plain document as a tree of libxml2's nodes that costs a fraction of libxml2's own to make and
/// to give back: its parser's events are written down in one block of memory after the other.
///
/// The nodes have their kinds, names, attributes and contents, and the links between parents,
/// children and siblings; they belong to no document.
class XmlNodeTree final : private XmlEvents {
  public:
    XmlNodeTree();
    ~XmlNodeTree() override;

    /// The root element, which this tree owns; null when the text is no plain document.
    xmlNode* Read(const std::string& text);

  private:
    void OpenElement(const xmlChar* name, const XmlAttributes& attributes) override;
    void CloseElement() override;
    void AddText(xmlElementType type, std::string_view text) override;
    void AddRemark(xmlElementType type, const xmlChar* text) override;

    template <typename Node>
    Node* NewNode(xmlElementType type, const xmlChar* name);
    xmlNode* NewContent(xmlElementType type, std::string_view text);
    xmlAttr* NewAttribute(const xmlChar* name, std::string_view value, xmlNode* element);
    void AddChild(xmlNode* node);
    void EndText();

    std::pmr::monotonic_buffer_resource memory_;
    PlainXmlParser parser_; ///< Owns the names.
    xmlNode* root_ = nullptr;
    xmlNode* open_ = nullptr;

    // Neighbouring pieces of text, or of character data, become one node.
    xmlElementType textType_ = XML_TEXT_NODE;
    bool hasText_ = false;
    std::string text_;
};

} // namespace CppTools::AutoCli
