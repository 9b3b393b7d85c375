#include <CppTools/autocli/plugins/PlainXml.h>

#include <libxml/parserInternals.h>

#include <utility>

namespace CppTools::AutoCli {

/// What libxml2 calls, each time with the parser as the first argument.
struct PlainXmlParser::Handler {
    static PlainXmlParser& Of(void* parser) { return *static_cast<PlainXmlParser*>(parser); }

    static void OpenElement(void* parser, const xmlChar* name, const xmlChar* /*prefix*/,
                            const xmlChar* /*uri*/, int /*namespaceCount*/,
                            const xmlChar** /*namespaces*/, int attributeCount,
                            int /*defaultedCount*/, const xmlChar** attributes) {
        Of(parser).Tell([&](XmlEvents& events) {
            events.OpenElement(name, XmlAttributes(attributes, attributeCount));
        });
    }

    static void CloseElement(void* parser, const xmlChar* /*name*/, const xmlChar* /*prefix*/,
                             const xmlChar* /*uri*/) {
        Of(parser).Tell([](XmlEvents& events) { events.CloseElement(); });
    }

    static void AddText(void* parser, const xmlChar* text, int size) {
        Of(parser).TellOfText(XML_TEXT_NODE, text, size);
    }

    static void AddCharacterData(void* parser, const xmlChar* text, int size) {
        Of(parser).TellOfText(XML_CDATA_SECTION_NODE, text, size);
    }

    static void AddComment(void* parser, const xmlChar* text) {
        Of(parser).Tell([&](XmlEvents& events) { events.AddRemark(XML_COMMENT_NODE, text); });
    }

    static void AddInstruction(void* parser, const xmlChar* /*target*/, const xmlChar* text) {
        Of(parser).Tell([&](XmlEvents& events) { events.AddRemark(XML_PI_NODE, text); });
    }

    static void DeclareType(void* parser, const xmlChar* /*name*/, const xmlChar* /*publicId*/,
                            const xmlChar* /*systemId*/) {
        Of(parser).GiveUp();
    }

    static void Report(void* parser, xmlError* /*error*/) { Of(parser).GiveUp(); }

    static xmlSAXHandler New() {
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

PlainXmlParser::PlainXmlParser() : parser_(NewXmlParser()) {
    *parser_->sax = Handler::New();
    parser_->userData = this;
}

bool PlainXmlParser::Read(const std::string& text, XmlEvents& events) {
    if (text.size() > kLongestText || text.find("xml:id") != std::string::npos) {
        return false;
    }
    events_ = &events;
    // Without this option the ampersands in attributes would be left for a tree to decode.
    xmlCtxtReadMemory(parser_.get(), text.data(), static_cast<int>(text.size()), nullptr, nullptr,
                      XML_PARSE_NOENT | XML_PARSE_NONET);
    if (isPlain_ && failure_) {
        std::rethrow_exception(failure_);
    }
    return isPlain_ && parser_->wellFormed != 0;
}

/// No exception can pass through libxml2.
template <typename Event>
void PlainXmlParser::Tell(Event event) {
    textSize_ = 0;
    if (failure_) {
        return;
    }
    try {
        event(*events_);
    } catch (...) {
        failure_ = std::current_exception();
    }
}

void PlainXmlParser::TellOfText(xmlElementType type, const xmlChar* text, int size) {
    const std::size_t textSize = textSize_ + static_cast<std::size_t>(size);
    if (textSize > XML_MAX_TEXT_LENGTH) {
        GiveUp();
        return;
    }
    Tell([&](XmlEvents& events) {
        events.AddText(type, {reinterpret_cast<const char*>(text), static_cast<std::size_t>(size)});
    });
    textSize_ = textSize;
}

/// The parser goes on to the end without telling. It cannot be stopped from here: where it has just
/// made a remark it still holds places in the text, and would read on from there without an end.
void PlainXmlParser::GiveUp() {
    isPlain_ = false;
    parser_->disableSAX = 1;
}

} // namespace CppTools::AutoCli
