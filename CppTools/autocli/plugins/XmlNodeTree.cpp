#include <CppTools/autocli/plugins/XmlNodeTree.h>

#include <libxml/parserInternals.h>

#include <cstddef>
#include <cstring>
#include <new>

namespace CppTools::AutoCli {

namespace {

/// Holds the nodes of a descriptor of some commands.
constexpr std::size_t kFirstBlock = 64 * 1024;

/// Name, prefix, namespace, and the begin and end of the value.
constexpr std::ptrdiff_t kAttributePieces = 5;

} // namespace

/// What libxml2's parser calls, each time with the tree as the first argument.
struct XmlNodeTree::Events {
    static void OpenElement(void* tree, const xmlChar* name, const xmlChar* /*prefix*/,
                            const xmlChar* /*uri*/, int /*namespaceCount*/,
                            const xmlChar** /*namespaces*/, int attributeCount,
                            int /*defaultedCount*/, const xmlChar** attributes) {
        static_cast<XmlNodeTree*>(tree)->OpenElement(name, attributeCount, attributes);
    }

    static void CloseElement(void* tree, const xmlChar* /*name*/, const xmlChar* /*prefix*/,
                             const xmlChar* /*uri*/) {
        static_cast<XmlNodeTree*>(tree)->CloseElement();
    }

    static void AddText(void* tree, const xmlChar* text, int size) {
        static_cast<XmlNodeTree*>(tree)->AddText(XML_TEXT_NODE, text,
                                                 static_cast<std::size_t>(size));
    }

    static void AddCharacterData(void* tree, const xmlChar* text, int size) {
        static_cast<XmlNodeTree*>(tree)->AddText(XML_CDATA_SECTION_NODE, text,
                                                 static_cast<std::size_t>(size));
    }

    static void AddComment(void* tree, const xmlChar* text) {
        static_cast<XmlNodeTree*>(tree)->AddRemark(XML_COMMENT_NODE, text);
    }

    static void AddInstruction(void* tree, const xmlChar* /*target*/, const xmlChar* text) {
        static_cast<XmlNodeTree*>(tree)->AddRemark(XML_PI_NODE, text);
    }

    static void DeclareType(void* tree, const xmlChar* /*name*/, const xmlChar* /*publicId*/,
                            const xmlChar* /*systemId*/) {
        static_cast<XmlNodeTree*>(tree)->GiveUp();
    }

    static void Report(void* tree, xmlError* /*error*/) {
        static_cast<XmlNodeTree*>(tree)->GiveUp();
    }

    static xmlSAXHandler Handler() {
        xmlSAXHandler handler{};
        handler.initialized = XML_SAX2_MAGIC;
        handler.startElementNs = OpenElement;
        handler.endElementNs = CloseElement;
        handler.characters = AddText;
        handler.ignorableWhitespace = AddText;
        handler.cdataBlock = AddCharacterData;
        handler.comment = AddComment;
        handler.processingInstruction = AddInstruction;
        handler.internalSubset = DeclareType;
        handler.serror = Report;
        return handler;
    }
};

XmlNodeTree::XmlNodeTree() : memory_(kFirstBlock), parser_(xmlNewParserCtxt()) {
    if (parser_) {
        *parser_->sax = Events::Handler();
        parser_->userData = this;
    }
}

XmlNodeTree::~XmlNodeTree() = default;

xmlNode* XmlNodeTree::Read(const std::string& text) {
    // The limits on longer texts depend on who builds the tree.
    if (!parser_ || text.size() > XML_MAX_TEXT_LENGTH) {
        return nullptr;
    }
    // Without this option the ampersands in attributes are left for the tree to decode.
    xmlCtxtReadMemory(parser_.get(), text.data(), static_cast<int>(text.size()), nullptr, nullptr,
                      XML_PARSE_NOENT);
    return isPlain_ ? root_ : nullptr;
}

template <typename Node>
Node* XmlNodeTree::NewNode(xmlElementType type, const xmlChar* name) {
    auto* const node = new (memory_.allocate(sizeof(Node), alignof(Node))) Node{};
    node->type = type;
    node->name = name;
    return node;
}

xmlNode* XmlNodeTree::NewContent(xmlElementType type, const xmlChar* text, std::size_t size) {
    auto* const copy = static_cast<xmlChar*>(memory_.allocate(size + 1, 1));
    std::memcpy(copy, text, size);
    copy[size] = '\0';
    auto* const node = NewNode<xmlNode>(type, nullptr);
    node->content = copy;
    return node;
}

xmlAttr* XmlNodeTree::NewAttribute(const xmlChar** pieces, xmlNode* element) {
    auto* const attribute = NewNode<xmlAttr>(XML_ATTRIBUTE_NODE, pieces[0]);
    attribute->children =
        NewContent(XML_TEXT_NODE, pieces[3], static_cast<std::size_t>(pieces[4] - pieces[3]));
    attribute->last = attribute->children;
    attribute->parent = element;
    return attribute;
}

void XmlNodeTree::AddChild(xmlNode* node) {
    node->parent = open_;
    node->prev = open_->last;
    (open_->last != nullptr ? open_->last->next : open_->children) = node;
    open_->last = node;
}

void XmlNodeTree::OpenElement(const xmlChar* name, int attributeCount, const xmlChar** attributes) {
    EndText();
    auto* const element = NewNode<xmlNode>(XML_ELEMENT_NODE, name);
    if (open_ != nullptr) {
        AddChild(element);
    } else {
        root_ = element;
    }
    open_ = element;
    xmlAttr** next = &element->properties;
    for (std::ptrdiff_t i = 0; i < attributeCount; ++i) {
        *next = NewAttribute(attributes + i * kAttributePieces, element);
        next = &(*next)->next;
    }
}

void XmlNodeTree::CloseElement() {
    EndText();
    open_ = open_->parent;
}

void XmlNodeTree::AddText(xmlElementType type, const xmlChar* text, std::size_t size) {
    if (type != textType_) {
        EndText();
        textType_ = type;
    }
    hasText_ = true;
    text_.append(reinterpret_cast<const char*>(text), size);
}

void XmlNodeTree::EndText() {
    if (hasText_) {
        AddChild(
            NewContent(textType_, reinterpret_cast<const xmlChar*>(text_.data()), text_.size()));
        text_.clear();
        hasText_ = false;
    }
}

/// A comment or a processing instruction, which may have no text. Those outside the root are
/// nobody's children.
void XmlNodeTree::AddRemark(xmlElementType type, const xmlChar* text) {
    if (open_ == nullptr) {
        return;
    }
    EndText();
    AddChild(text != nullptr
                 ? NewContent(type, text, std::strlen(reinterpret_cast<const char*>(text)))
                 : NewNode<xmlNode>(type, nullptr));
}

void XmlNodeTree::GiveUp() {
    isPlain_ = false;
    xmlStopParser(parser_.get());
}

} // namespace CppTools::AutoCli
