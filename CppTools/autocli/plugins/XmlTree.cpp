#include <CppTools/autocli/plugins/XmlParser.h>
#include <CppTools/autocli/plugins/XmlTree.h>
#include <CppTools/metaobj/CppToolException.h>

#include <libxml/SAX2.h>
#include <libxml/parserInternals.h>
#include <libxml/xmlerror.h>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <new>
#include <system_error>
#include <unordered_map>
#include <utility>

namespace CppTools::AutoCli {

namespace {

/// What the declarations of one document may stand for.
class Allowance {
  public:
    explicit Allowance(std::size_t documentSize)
        : left_(std::max(kAlways, documentSize * kTimesTheDocument)) {}

    /// Uses some of it up. Every use counts a little, even of something empty, so that the number
    /// of uses is bounded too.
    void Spend(std::size_t size) {
        if (size >= left_) {
            Exceed();
        } else {
            left_ -= size + 1;
        }
    }

    void Exceed() {
        left_ = 0;
        isExceeded_ = true;
    }

    bool IsExceeded() const { return isExceeded_; }

  private:
    static constexpr std::size_t kAlways = 10'000'000;
    static constexpr std::size_t kTimesTheDocument = 10;

    std::size_t left_;
    bool isExceeded_ = false;
};

/// More uses of entities in a short document type are what some versions of libxml2 never come back
/// from.
constexpr unsigned long kMostUsesInType = 9000;

/// Parameter entities are replaced while the document is being parsed, wherever they are named. In
/// a document that is broken already that could only lead to more complaints.
xmlEntity* FindParameterEntity(void* context, const xmlChar* name) {
    auto* const parser = static_cast<xmlParserCtxt*>(context);
    auto& allowance = *static_cast<Allowance*>(parser->_private);
    auto* const entity = xmlSAX2GetParameterEntity(parser, name);
    if (parser->nbentities > kMostUsesInType) {
        allowance.Exceed();
    } else if (entity != nullptr) {
        allowance.Spend(static_cast<std::size_t>(entity->length));
    }
    if (allowance.IsExceeded() || parser->wellFormed == 0) {
        xmlStopParser(parser);
        return nullptr;
    }
    return entity;
}

void Watch(xmlParserCtxt& parser, Allowance& allowance) {
    parser._private = &allowance;
    parser.sax->getParameterEntity = FindParameterEntity;
}

std::size_t LengthOf(const xmlChar* text) {
    return text != nullptr ? std::strlen(reinterpret_cast<const char*>(text)) : 0;
}

/// Counts what the declarations of a finished document stand for. The tree only names entities and
/// leaves defaults out; readers of the tree put them in.
class UseOfDeclarations {
  public:
    UseOfDeclarations(const xmlDoc& document, Allowance& allowance)
        : document_(document), allowance_(allowance) {}

    void CountIn(const xmlNode& element) {
        CountDefaults(element);
        for (const auto* attribute = element.properties; attribute != nullptr;
             attribute = attribute->next) {
            CountEntities(attribute->children);
        }
        for (const auto* child = element.children; child != nullptr && !allowance_.IsExceeded();
             child = child->next) {
            if (child->type == XML_ELEMENT_NODE) {
                CountIn(*child);
            } else if (child->type == XML_ENTITY_REF_NODE) {
                allowance_.Spend(LengthOf(child->content));
            }
        }
    }

  private:
    void CountDefaults(const xmlNode& element) {
        const auto* declared = xmlGetDtdElementDesc(document_.intSubset, element.name);
        const auto* attribute = declared != nullptr ? declared->attributes : nullptr;
        for (; attribute != nullptr && !allowance_.IsExceeded(); attribute = attribute->nexth) {
            allowance_.Spend(LengthOf(attribute->defaultValue));
        }
    }

    void CountEntities(const xmlNode* piece) {
        for (; piece != nullptr && !allowance_.IsExceeded(); piece = piece->next) {
            if (piece->type == XML_ENTITY_REF_NODE) {
                allowance_.Spend(SizeOf(*piece));
            }
        }
    }

    /// What an entity stands for in an attribute, all entities in it included.
    struct Extent {
        std::size_t size = 0;
        std::size_t depth = 0;
    };

    /// Those that go past all bounds stay there.
    std::size_t SizeOf(const xmlNode& reference) { return ExtentOf(reference, 0).size; }

    Extent ExtentOf(const xmlNode& reference, std::size_t outerDepth) {
        const auto* const entity = xmlGetDocEntity(&document_, reference.name);
        const auto [known, isNew] = extents_.emplace(entity, Extent{});
        return isNew && entity != nullptr ? ExtentOfNew(*entity, outerDepth + 1) : known->second;
    }

    Extent ExtentOfNew(const xmlEntity& entity, std::size_t outerDepth) {
        Extent extent;
        for (const auto* piece = entity.children;
             piece != nullptr && outerDepth + extent.depth < kDeepest; piece = piece->next) {
            const bool isEntity = piece->type == XML_ENTITY_REF_NODE;
            const Extent inner = isEntity ? ExtentOf(*piece, outerDepth)
                                          : Extent{.size = LengthOf(piece->content), .depth = 0};
            extent.size = std::min(extent.size + inner.size, kPastAllBounds);
            extent.depth = std::max(extent.depth, inner.depth);
        }
        ++extent.depth;
        if (outerDepth + extent.depth > kDeepest) {
            extent.size = kPastAllBounds;
        }
        return extents_[&entity] = extent;
    }

    static constexpr std::size_t kPastAllBounds = std::size_t{1} << 60;
    static constexpr std::size_t kDeepest = 256; ///< As of elements.

    const xmlDoc& document_;
    Allowance& allowance_;
    std::unordered_map<const xmlEntity*, Extent> extents_;
};

/// The document, unless its declarations stand for more than they may.
XmlDocument Checked(XmlDocument document, Allowance& allowance) {
    if (document && document->intSubset != nullptr && !allowance.IsExceeded()) {
        UseOfDeclarations(*document, allowance).CountIn(*xmlDocGetRootElement(document.get()));
    }
    if (allowance.IsExceeded()) {
        throw CppToolException("The document's entities and attribute defaults stand for too much "
                               "text");
    }
    return document;
}

/// The document that `read` gets from libxml2. Without memory libxml2 goes on and leaves out what
/// it had no place for; that is no document but throws `std::bad_alloc`.
template <typename Read>
XmlDocument ReadWhole(Read read) {
    xmlResetLastError();
    XmlDocument document(read());
    const auto* const last = xmlGetLastError();
    if (last != nullptr && last->code == XML_ERR_NO_MEMORY) {
        throw std::bad_alloc();
    }
    return document;
}

/// As of a parser without options of its own: what is broken is no document.
xmlDoc* Parse(xmlParserCtxt& parser) {
    xmlParseDocument(&parser);
    XmlDocument document(std::exchange(parser.myDoc, nullptr));
    return parser.wellFormed != 0 ? document.release() : nullptr;
}

} // namespace

XmlDocument ReadXmlFile(const std::string& path) {
    std::error_code noSize; // what is no regular file has none
    const auto size = std::filesystem::file_size(path, noSize);
    Allowance allowance(noSize ? 0 : size);
    auto document = ReadWhole([&] {
        const XmlParser parser(xmlCreateURLParserCtxt(path.c_str(), XML_PARSE_NONET));
        if (!parser) {
            return static_cast<xmlDoc*>(nullptr);
        }
        Watch(*parser, allowance);
        return Parse(*parser);
    });
    return Checked(std::move(document), allowance);
}

XmlDocument ReadXmlText(const std::string& text, const char* name) {
    const XmlParser parser = NewXmlParser();
    Allowance allowance(text.size());
    Watch(*parser, allowance);
    auto document = ReadWhole([&] {
        return xmlCtxtReadMemory(parser.get(), text.data(), static_cast<int>(text.size()), name,
                                 nullptr, XML_PARSE_NONET);
    });
    return Checked(std::move(document), allowance);
}

} // namespace CppTools::AutoCli
