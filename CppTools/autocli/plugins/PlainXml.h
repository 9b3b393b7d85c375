#pragma once

#include <CppTools/autocli/plugins/XmlParser.h>

#include <cstddef>
#include <exception>
#include <limits>
#include <string>
#include <string_view>

namespace CppTools::AutoCli {

/// The attributes of one element, as the parser keeps them for as long as it tells of it.
class XmlAttributes {
  public:
    XmlAttributes(const xmlChar** pieces, int count)
        : pieces_(pieces), count_(static_cast<std::size_t>(count)) {}

    std::size_t Count() const { return count_; }

    /// Without its prefix. Lives as long as the parser.
    const xmlChar* Name(std::size_t index) const { return At(index)[0]; }

    std::string_view Value(std::size_t index) const {
        const xmlChar* const* pieces = At(index);
        return {reinterpret_cast<const char*>(pieces[3]),
                static_cast<std::size_t>(pieces[4] - pieces[3])};
    }

  private:
    /// Name, prefix, namespace, and the begin and end of the value.
    static constexpr std::size_t kPieces = 5;

    const xmlChar* const* At(std::size_t index) const { return pieces_ + index * kPieces; }

    const xmlChar** pieces_;
    std::size_t count_;
};

/// Is told what a document consists of, in document order.
class XmlEvents {
  public:
    XmlEvents() = default;
    XmlEvents(const XmlEvents&) = delete;
    XmlEvents& operator=(const XmlEvents&) = delete;
    virtual ~XmlEvents() = default;

    /// `name` is without prefix and lives as long as the parser.
    virtual void OpenElement(const xmlChar* name, const XmlAttributes& attributes) = 0;
    virtual void CloseElement() = 0;

    /// A text or a section of character data, or a piece of one: neighbours of one type belong
    /// together.
    virtual void AddText(xmlElementType type, std::string_view text) = 0;

    /// A comment or a processing instruction; `text` is null when it has none.
    virtual void AddRemark(xmlElementType type, const xmlChar* text) = 0;
};

/// Reads plain documents: well-formed ones on which libxml2 has no remark, however small, and which
/// neither declare a document type nor identify elements. Any other is to be read as libxml2's
/// tree, which has rules of its own for all that, and says what it finds on standard error.
class PlainXmlParser {
  public:
    /// Longer texts are never plain.
    static constexpr std::size_t kLongestText = std::numeric_limits<int>::max();

    PlainXmlParser();
    PlainXmlParser(const PlainXmlParser&) = delete;
    PlainXmlParser& operator=(const PlainXmlParser&) = delete;

    /// Whether the document is plain; if it is not, `events` has been told of some part of it.
    /// Prints nothing. Throws the first exception of `events`, which hears no more after it, once
    /// the document has turned out to be plain.
    bool Read(const std::string& text, XmlEvents& events);

  private:
    struct Handler;

    template <typename Event>
    void Tell(Event event);
    void TellOfText(xmlElementType type, const xmlChar* text, int size);
    void GiveUp();

    XmlParser parser_;
    XmlEvents* events_ = nullptr;
    bool isPlain_ = true;
    std::size_t textSize_ = 0; ///< Of the text that is being told of in pieces.
    std::exception_ptr failure_;
};

} // namespace CppTools::AutoCli
