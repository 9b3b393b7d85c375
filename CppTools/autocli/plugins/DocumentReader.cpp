#include <CppTools/autocli/plugins/DocumentReader.h>
#include <CppTools/autocli/plugins/ValueBuilder.h>
#include <CppTools/autocli/plugins/XmlElements.h>
#include <CppTools/autocli/plugins/XmlUtil.h>
#include <CppTools/metaobj/CppToolException.h>

#include <boost/algorithm/string/replace.hpp>

#include <libxml/parserInternals.h>

#include <exception>
#include <limits>
#include <string_view>

namespace CppTools::AutoCli {

using MetaObj::MetaObject;

namespace {

constexpr const char* kDocumentName = "STDOUT";

std::string_view View(const xmlChar* text) {
    return reinterpret_cast<const char*>(text);
}

/// One attribute as the parser tells of it: five pointers, of which the last two are the begin and
/// the end of the value.
class Attribute {
  public:
    static constexpr int kPointers = 5;

    explicit Attribute(const xmlChar** pointers) : pointers_(pointers) {}

    /// In a tree, a prefix that stands for no namespace is part of the name.
    bool IsNamed(std::string_view name) const {
        const bool isWholeName = pointers_[1] == nullptr || pointers_[2] != nullptr;
        return isWholeName && View(pointers_[0]) == name;
    }

    /// The parser leaves an ampersand escaped for whoever resolves entities.
    std::string Value() const {
        std::string value(reinterpret_cast<const char*>(pointers_[3]),
                          static_cast<std::size_t>(pointers_[4] - pointers_[3]));
        if (value.find('&') != std::string::npos) {
            boost::algorithm::replace_all(value, "&#38;", "&");
        }
        return value;
    }

  private:
    const xmlChar** pointers_;
};

/// Feeds a builder from the events of a parser.
class EventReader {
  public:
    /// Sets `parser`, which must live as long as this, up to report to this.
    explicit EventReader(xmlParserCtxt& parser);

    /// Whether the document can only be understood as a tree.
    bool NeedsTree() const { return needsTree_; }

    /// The value that was read. Throws what the builder threw.
    std::shared_ptr<MetaObject> TakeValue() const {
        if (failure_) {
            std::rethrow_exception(failure_);
        }
        return builder_.GetValue();
    }

  private:
    using Content = ValueBuilder::Content;

    static void OnStart(void* context, const xmlChar* name, const xmlChar* prefix,
                        const xmlChar* uri, int namespaceCount, const xmlChar** namespaces,
                        int attributeCount, int defaultedCount, const xmlChar** attributes);
    static void OnEnd(void* context, const xmlChar* name, const xmlChar* prefix,
                      const xmlChar* uri);
    static void OnText(void* context, const xmlChar* text, int size);
    static void OnCharacterData(void* context, const xmlChar* text, int size);
    static void OnComment(void* context, const xmlChar* text);
    static void OnInstruction(void* context, const xmlChar* target, const xmlChar* data);
    static void OnDocumentType(void* context, const xmlChar* name, const xmlChar* externalId,
                               const xmlChar* systemId);

    static EventReader& Of(void* context) {
        return *static_cast<EventReader*>(static_cast<xmlParserCtxt*>(context)->_private);
    }

    /// No exception can pass through the parser. The first one is kept; a document that turns out
    /// not to be well-formed has no value and no other fault.
    template <typename Step>
    void Try(Step step) {
        if (failure_) {
            return;
        }
        try {
            step();
        } catch (...) {
            failure_ = std::current_exception();
        }
    }

    void StartElement(std::string_view name, const xmlChar** attributes, int count);
    void AddContent(Content kind, const xmlChar* text, std::size_t size);
    void AskForTree();

    xmlParserCtxt& parser_;
    ValueBuilder builder_;
    std::size_t depth_ = 0;
    std::size_t textSize_ = 0; ///< Of the text that the parser is telling of in pieces.
    bool needsTree_ = false;
    std::exception_ptr failure_;
};

EventReader::EventReader(xmlParserCtxt& parser) : parser_(parser) {
    parser._private = this;
    xmlSAXHandler& events = *parser.sax;
    events.startElementNs = OnStart;
    events.endElementNs = OnEnd;
    events.characters = OnText;
    events.ignorableWhitespace = OnText;
    events.cdataBlock = OnCharacterData;
    events.comment = OnComment;
    events.processingInstruction = OnInstruction;
    events.internalSubset = OnDocumentType;
}

void EventReader::OnStart(void* context, const xmlChar* name, const xmlChar* prefix,
                          const xmlChar* uri, int /*namespaceCount*/,
                          const xmlChar** /*namespaces*/, int attributeCount,
                          int /*defaultedCount*/, const xmlChar** attributes) {
    EventReader& reader = Of(context);
    reader.Try([&] {
        if (prefix != nullptr && uri == nullptr) {
            const std::string whole = std::string(View(prefix)) + ':' + std::string(View(name));
            reader.StartElement(whole, attributes, attributeCount);
        } else {
            reader.StartElement(View(name), attributes, attributeCount);
        }
    });
}

void EventReader::StartElement(std::string_view name, const xmlChar** attributes, int count) {
    textSize_ = 0;
    if (depth_++ == 0) {
        return; // the root, whose name is free
    }
    const char* const wanted = ValueBuilder::AttributeOf(name);
    for (int i = 0; wanted != nullptr && i < count; ++i) {
        const Attribute attribute(attributes + i * Attribute::kPointers);
        if (attribute.IsNamed(wanted)) {
            builder_.StartElement(name, attribute.Value());
            return;
        }
    }
    builder_.StartElement(name, std::string());
}

void EventReader::OnEnd(void* context, const xmlChar* /*name*/, const xmlChar* /*prefix*/,
                        const xmlChar* /*uri*/) {
    EventReader& reader = Of(context);
    reader.Try([&] {
        reader.textSize_ = 0;
        if (--reader.depth_ > 0) {
            reader.builder_.EndElement();
        }
    });
}

void EventReader::OnText(void* context, const xmlChar* text, int size) {
    Of(context).AddContent(Content::Text, text, static_cast<std::size_t>(size));
}

void EventReader::OnCharacterData(void* context, const xmlChar* text, int size) {
    Of(context).AddContent(Content::CharacterData, text, static_cast<std::size_t>(size));
}

void EventReader::OnComment(void* context, const xmlChar* text) {
    Of(context).AddContent(Content::Other, text, View(text).size());
}

void EventReader::OnInstruction(void* context, const xmlChar* /*target*/, const xmlChar* data) {
    EventReader& reader = Of(context);
    if (data != nullptr) {
        reader.AddContent(Content::Other, data, View(data).size());
    } else {
        reader.builder_.EndText();
    }
}

void EventReader::AddContent(Content kind, const xmlChar* text, std::size_t size) {
    textSize_ = kind == Content::Text ? textSize_ + size : 0;
    if (textSize_ > XML_MAX_TEXT_LENGTH) {
        AskForTree(); // which has rules of its own for texts of this length
        return;
    }
    Try([&] { builder_.AddContent(kind, {reinterpret_cast<const char*>(text), size}); });
}

void EventReader::OnDocumentType(void* context, const xmlChar* /*name*/,
                                 const xmlChar* /*externalId*/, const xmlChar* /*systemId*/) {
    Of(context).AskForTree();
}

void EventReader::AskForTree() {
    needsTree_ = true;
    xmlStopParser(&parser_);
}

struct ParserDeleter {
    void operator()(xmlParserCtxt* parser) const noexcept { xmlFreeParserCtxt(parser); }
};

std::shared_ptr<MetaObject> ReadAsTree(const std::string& text) {
    const XmlDocument document(
        xmlReadMemory(text.data(), static_cast<int>(text.size()), kDocumentName, nullptr, 0));
    const xmlNode* root = document ? xmlDocGetRootElement(document.get()) : nullptr;
    auto* const element = root != nullptr ? FirstElementFrom(root->children) : nullptr;
    return element != nullptr ? XmlUtil_BuildMetaObject(element) : nullptr;
}

/// Whether a document declares entities or identifies elements, which only a tree makes sense of.
bool MayNeedTree(std::string_view text) {
    return text.find("<!DOCTYPE") != std::string_view::npos ||
           text.find("xml:id") != std::string_view::npos;
}

} // namespace

std::shared_ptr<MetaObject> ReadDocument(const std::string& text) {
    if (text.empty() || text.size() > static_cast<std::size_t>(std::numeric_limits<int>::max())) {
        return nullptr;
    }
    if (MayNeedTree(text)) {
        return ReadAsTree(text);
    }
    const std::unique_ptr<xmlParserCtxt, ParserDeleter> parser(xmlNewParserCtxt());
    if (!parser) {
        throw std::bad_alloc();
    }
    EventReader reader(*parser);
    const XmlDocument document(xmlCtxtReadMemory(
        parser.get(), text.data(), static_cast<int>(text.size()), kDocumentName, nullptr, 0));
    if (reader.NeedsTree()) {
        return ReadAsTree(text);
    }
    return document ? reader.TakeValue() : nullptr;
}

} // namespace CppTools::AutoCli
