#include <CppTools/autocli/plugins/DocumentReader.h>
#include <CppTools/autocli/plugins/PlainXml.h>
#include <CppTools/autocli/plugins/ValueBuilder.h>
#include <CppTools/autocli/plugins/XmlElements.h>
#include <CppTools/autocli/plugins/XmlTree.h>
#include <CppTools/autocli/plugins/XmlUtil.h>
#include <CppTools/metaobj/CppToolException.h>

#include <limits>

namespace CppTools::AutoCli {

using MetaObj::MetaObject;

namespace {

std::string_view View(const xmlChar* text) {
    return reinterpret_cast<const char*>(text);
}

/// Builds the value of a document from what its parser tells.
class DocumentEvents final : public XmlEvents {
  public:
    std::shared_ptr<MetaObject> GetValue() const { return builder_.GetValue(); }

    void OpenElement(const xmlChar* name, const XmlAttributes& attributes) override {
        if (depth_++ > 0) { // the name of the root is free
            builder_.StartElement(View(name), FindAttribute(View(name), attributes));
        }
    }

    void CloseElement() override {
        if (--depth_ > 0) {
            builder_.EndElement();
        }
    }

    void AddText(xmlElementType type, std::string_view text) override {
        builder_.AddContent(type == XML_TEXT_NODE ? Content::Text : Content::CharacterData, text);
    }

    void AddRemark(xmlElementType /*type*/, const xmlChar* text) override {
        if (text != nullptr) {
            builder_.AddContent(Content::Other, View(text));
        } else {
            builder_.EndText();
        }
    }

  private:
    using Content = ValueBuilder::Content;

    static std::string FindAttribute(std::string_view element, const XmlAttributes& attributes) {
        const char* const wanted = ValueBuilder::AttributeOf(element);
        for (std::size_t i = 0; wanted != nullptr && i < attributes.Count(); ++i) {
            if (View(attributes.Name(i)) == wanted) {
                return std::string(attributes.Value(i));
            }
        }
        return {};
    }

    ValueBuilder builder_;
    std::size_t depth_ = 0;
};

/// Does what builds the value, and says what it was to be built from when it cannot be.
template <typename Step>
auto Explained(Step step) {
    try {
        return step();
    } catch (const CppToolException& failure) {
        throw CppToolException(
            std::string("Error parsing command output.  Unable to build a proper metaobject from "
                        "output tag.  output must contain properly formatted tags of type bool, "
                        "int, string, structure and list. Error was : ") +
            failure.what());
    }
}

std::shared_ptr<MetaObject> ReadAsTree(const std::string& text) {
    const XmlDocument document = Explained([&] { return ReadXmlText(text, "STDOUT"); });
    if (!document) {
        return nullptr;
    }
    const xmlNode* root = xmlDocGetRootElement(document.get());
    if (root == nullptr) {
        throw CppToolException("Error parsing command output.  Unable to find a properly formatted "
                               "output tag as the document root");
    }
    auto* const element = FirstElementFrom(root->children);
    return element != nullptr ? Explained([&] { return XmlUtil_BuildMetaObject(element); })
                              : nullptr;
}

} // namespace

std::shared_ptr<MetaObject> ReadDocument(const std::string& text) {
    if (text.empty() || text.size() > static_cast<std::size_t>(std::numeric_limits<int>::max())) {
        return nullptr;
    }
    DocumentEvents events;
    const bool isPlain = Explained([&] { return PlainXmlParser().Read(text, events); });
    return isPlain ? events.GetValue() : ReadAsTree(text);
}

} // namespace CppTools::AutoCli
