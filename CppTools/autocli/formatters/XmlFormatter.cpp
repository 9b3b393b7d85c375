#include <CppTools/autocli/formatters/FormatParameters.h>
#include <CppTools/autocli/formatters/TextBuffer.h>
#include <CppTools/autocli/formatters/ValueDispatch.h>
#include <CppTools/autocli/formatters/XmlFormatter.h>
#include <CppTools/callspec/Output.h>

#include <array>
#include <ostream>

namespace CppTools::AutoCli {

using MetaObj::MetaList;
using MetaObj::MetaObject;
using MetaObj::MetaStruct;
using MetaObj::MetaType;

namespace {

constexpr const char* kNamespaceUri = "urn:corvane:tandril:output:1";

constexpr Escapes XmlEscapes() {
    Escapes escapes;
    escapes.Set('&', "&amp;");
    escapes.Set('<', "&lt;");
    escapes.Set('>', "&gt;");
    escapes.Set('%', "&#37;");
    escapes.Set('"', "&quot;");
    escapes.Set('\'', "&apos;");
    return escapes;
}

constexpr Escapes kEscapes = XmlEscapes();

/// The names of the kinds of elements, at the kinds' own numbers.
constexpr std::array<const char*, 5> kListKinds = {"integer", "boolean", "string", "structure",
                                                   "list"};

const char* ListKind(MetaType type) {
    const auto number = static_cast<std::size_t>(type);
    return number < kListKinds.size() ? kListKinds[number] : "";
}

/// Writes values as lines of elements.
class XmlWriter {
  public:
    explicit XmlWriter(TextBuffer& out) : out_(out) {}

    void Write(bool value, int level) {
        out_.Indent(level) << "<boolean>" << value << "</boolean>\n";
    }

    void Write(long value, int level) {
        out_.Indent(level) << "<integer>" << value << "</integer>\n";
    }

    void Write(std::string_view text, int level) {
        (out_.Indent(level) << "<string>").Escaped(text, kEscapes) << "</string>\n";
    }

    void Write(const MetaStruct& value, int level) {
        (out_.Indent(level) << "<structure typeName=\"").Escaped(value.GetTypeName(), kEscapes)
            << "\">\n";
        for (const auto& [name, field] : MetaObj::StructFields(value)) {
            (out_.Indent(level + 1) << "<field name=\"").Escaped(name, kEscapes) << "\">\n";
            Dispatch(field, *this, level + 2);
            out_.Indent(level + 1) << "</field>\n";
        }
        out_.Indent(level) << "</structure>\n";
    }

    void Write(const MetaList& value, int level) {
        out_.Indent(level) << "<list type=\"" << ListKind(value.GetListType()) << "\">\n";
        for (const auto& element : value.GetObjects()) {
            Dispatch(*element, *this, level + 2);
        }
        out_.Indent(level) << "</list>\n";
    }

    /// Only the one for booleans is a comment; the others make the document ill-formed.
    void WriteFailure(MetaType kind) {
        if (kind == MetaType::Bool) {
            out_ << "<!-- " << ConversionFailure(kind) << " -->\n";
        } else {
            out_ << ConversionFailure(kind) << '\n';
        }
    }

    void WriteUnknown() {
        out_ << "Error Only simple int, bool, string and struct output supported\n";
    }

  private:
    TextBuffer& out_;
};

void WriteMetaData(const FormatParameters& params, TextBuffer& out) {
    out.Indent(1) << "<meta-data>\n";
    for (const auto& [key, value] : params.GetParameters()) {
        (out.Indent(2) << "<meta-data-field name=\"").Escaped(key, kEscapes) << "\" value=\"";
        out.Escaped(value, kEscapes) << "\"/>\n";
    }
    out.Indent(1) << "</meta-data>\n";
}

void WriteValue(const std::shared_ptr<MetaObject>& value, TextBuffer& out, int level) {
    if (value) {
        XmlWriter writer(out);
        Dispatch(*value, writer, level);
    }
}

} // namespace

std::string SantizeString(std::string text) {
    std::string sanitized;
    sanitized.reserve(text.size());
    for (const char character : text) {
        const std::string_view entity = kEscapes.For(character);
        sanitized += entity.empty() ? std::string_view(&character, 1) : entity;
    }
    return sanitized;
}

XmlFormatter::XmlFormatter() : Formatter("xml") {
    SetDescription(
        "Print an XML document to the screen representing the output for a given command");
    AddParam("stylesheet", "The file name or URL to a stylesheet for this document.  ");
}

XmlFormatter::~XmlFormatter() = default;

bool XmlFormatter::Format(const std::shared_ptr<CallSpec::Output>& output, FormatParameters& params,
                          DisplayContext& /*display*/, std::ostream& out) {
    TextBuffer buffer(out);
    buffer << "<?xml version=\"1.0\"?>\n";
    if (params.HasParameter("stylesheet")) {
        buffer << "<?xml-stylesheet type=\"text/xsl\" href=\"" << params.GetParameter("stylesheet")
               << "\"?>\n";
    }
    buffer << "<output xmlns:tandril=\"" << kNamespaceUri << "\">\n";
    WriteMetaData(params, buffer);
    buffer.Indent(1) << "<root>\n";
    WriteValue(output->GetRootObject(), buffer, 2);
    buffer.Indent(1) << "</root>\n</output>\n";
    buffer.Flush();
    return true;
}

void XmlFormatter::Format(std::shared_ptr<MetaObject> value, std::ostream& out, int level) {
    TextBuffer buffer(out);
    WriteValue(value, buffer, level);
    buffer.Flush();
}

} // namespace CppTools::AutoCli
