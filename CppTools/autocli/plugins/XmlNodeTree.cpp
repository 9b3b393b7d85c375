#include <CppTools/autocli/plugins/XmlNodeTree.h>

#include <algorithm>
#include <new>

namespace CppTools::AutoCli {

namespace {

/// Holds the nodes of a descriptor of some commands.
constexpr std::size_t kFirstBlock = 64 * 1024;

} // namespace

XmlNodeTree::XmlNodeTree() : memory_(kFirstBlock) {}

XmlNodeTree::~XmlNodeTree() = default;

xmlNode* XmlNodeTree::Read(const std::string& text) {
    return parser_.Read(text, *this) ? root_ : nullptr;
}

template <typename Node>
Node* XmlNodeTree::NewNode(xmlElementType type, const xmlChar* name) {
    auto* const node = new (memory_.allocate(sizeof(Node), alignof(Node))) Node{};
    node->type = type;
    node->name = name;
    return node;
}

xmlNode* XmlNodeTree::NewContent(xmlElementType type, std::string_view text) {
    auto* const copy = static_cast<xmlChar*>(memory_.allocate(text.size() + 1, 1));
    *std::copy(text.begin(), text.end(), copy) = '\0';
    auto* const node = NewNode<xmlNode>(type, nullptr);
    node->content = copy;
    return node;
}

xmlAttr* XmlNodeTree::NewAttribute(const xmlChar* name, std::string_view value, xmlNode* element) {
    auto* const attribute = NewNode<xmlAttr>(XML_ATTRIBUTE_NODE, name);
    attribute->children = NewContent(XML_TEXT_NODE, value);
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

void XmlNodeTree::OpenElement(const xmlChar* name, const XmlAttributes& attributes) {
    EndText();
    auto* const element = NewNode<xmlNode>(XML_ELEMENT_NODE, name);
    if (open_ != nullptr) {
        AddChild(element);
    } else {
        root_ = element;
    }
    open_ = element;
    xmlAttr** next = &element->properties;
    for (std::size_t i = 0; i < attributes.Count(); ++i) {
        *next = NewAttribute(attributes.Name(i), attributes.Value(i), element);
        next = &(*next)->next;
    }
}

void XmlNodeTree::CloseElement() {
    EndText();
    open_ = open_->parent;
}

void XmlNodeTree::AddText(xmlElementType type, std::string_view text) {
    if (type != textType_) {
        EndText();
        textType_ = type;
    }
    hasText_ = true;
    text_ += text;
}

void XmlNodeTree::EndText() {
    if (hasText_) {
        AddChild(NewContent(textType_, text_));
        text_.clear();
        hasText_ = false;
    }
}

/// Those outside the root are nobody's children.
void XmlNodeTree::AddRemark(xmlElementType type, const xmlChar* text) {
    if (open_ == nullptr) {
        return;
    }
    EndText();
    AddChild(text != nullptr ? NewContent(type, reinterpret_cast<const char*>(text))
                             : NewNode<xmlNode>(type, nullptr));
}

} // namespace CppTools::AutoCli
