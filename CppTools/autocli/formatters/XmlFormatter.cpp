#include <CppTools/autocli/formatters/FieldText.h>
#include <CppTools/autocli/formatters/FormatParameters.h>
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

/// The entity that stands for a character; null when it stands for itself.
const char* EntityFor(char character) {
    switch (character) {
    case '&':
        return "&amp;";
    case '<':
        return "&lt;";
    case '>':
        return "&gt;";
    case '%':
        return "&#37;";
    case '"':
        return "&quot;";
    case '\'':
        return "&apos;";
    default:
        return nullptr;
    }
}

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
    explicit XmlWriter(std::ostream& out) : out_(out) {}

    void Write(const MetaObject& value, int level) { Dispatch(value, *this, level); }

    void WriteValue(const MetaObj::MetaBool& value, int level) {
        out_ << GetIndent(level) << "<boolean>" << value.ToString() << "</boolean>\n";
    }

    void WriteValue(const MetaObj::MetaInt& value, int level) {
        out_ << GetIndent(level) << "<integer>" << value.ToString() << "</integer>\n";
    }

    void WriteValue(const MetaObj::MetaString& value, int level) {
        out_ << GetIndent(level) << "<string>" << SantizeString(value.GetValue()) << "</string>\n";
    }

    void WriteValue(const MetaStruct& value, int level) {
        const std::string indent = GetIndent(level);
        const std::string fieldIndent = GetIndent(level + 1);
        out_ << indent << "<structure typeName=\"" << SantizeString(value.GetTypeName()) << "\">\n";
        for (const auto& name : value.GetFieldNames()) {
            out_ << fieldIndent << "<field name=\"" << SantizeString(name) << "\">\n";
            Write(*value.GetField(name), level + 2);
            out_ << fieldIndent << "</field>\n";
        }
        out_ << indent << "</structure>\n";
    }

    void WriteValue(const MetaList& value, int level) {
        const std::string indent = GetIndent(level);
        out_ << indent << "<list type=\"" << ListKind(value.GetListType()) << "\">\n";
        for (const auto& element : value.GetObjects()) {
            Write(*element, level + 2);
        }
        out_ << indent << "</list>\n";
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
    std::ostream& out_;
};

void WriteMetaData(const FormatParameters& params, std::ostream& out) {
    const std::string indent = GetIndent(1);
    out << indent << "<meta-data>\n";
    for (const auto& [key, value] : params.GetParameters()) {
        out << GetIndent(2) << "<meta-data-field name=\"" << SantizeString(key) << "\" value=\""
            << SantizeString(value) << "\"/>\n";
    }
    out << indent << "</meta-data>\n";
}

} // namespace

std::string SantizeString(std::string text) {
    std::string sanitized;
    sanitized.reserve(text.size());
    for (const char character : text) {
        if (const char* entity = EntityFor(character)) {
            sanitized += entity;
        } else {
            sanitized += character;
        }
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
    out << "<?xml version=\"1.0\"?>\n";
    if (params.HasParameter("stylesheet")) {
        out << "<?xml-stylesheet type=\"text/xsl\" href=\"" << params.GetParameter("stylesheet")
            << "\"?>\n";
    }
    out << "<output xmlns:tandril=\"" << kNamespaceUri << "\">\n";
    WriteMetaData(params, out);
    const std::string indent = GetIndent(1);
    out << indent << "<root>\n";
    Format(output->GetRootObject(), out, 2);
    out << indent << "</root>\n</output>\n";
    return true;
}

void XmlFormatter::Format(std::shared_ptr<MetaObject> value, std::ostream& out, int level) {
    if (value) {
        XmlWriter(out).Write(*value, level);
    }
}

} // namespace CppTools::AutoCli
