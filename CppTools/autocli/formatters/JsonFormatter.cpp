#include <CppTools/autocli/formatters/FieldText.h>
#include <CppTools/autocli/formatters/JsonFormatter.h>
#include <CppTools/autocli/formatters/ValueDispatch.h>
#include <CppTools/callspec/Output.h>

#include <ostream>

namespace CppTools::AutoCli {

using MetaObj::MetaList;
using MetaObj::MetaObject;
using MetaObj::MetaStruct;
using MetaObj::MetaType;

namespace {

void AppendEscapedByte(std::string& text, char byte) {
    static constexpr char digits[] = "0123456789abcdef";
    const auto value = static_cast<unsigned char>(byte);
    text += "\\u00";
    text += {digits[value >> 4U], digits[value & 0xFU]};
}

void AppendEscaped(std::string& text, char byte) {
    switch (byte) {
    case '/':
    case '\\':
    case '"':
        text += {'\\', byte};
        break;
    case '\b':
        text += "\\b";
        break;
    case '\t':
        text += "\\t";
        break;
    case '\n':
        text += "\\n";
        break;
    case '\f':
        text += "\\f";
        break;
    case '\r':
        text += "\\r";
        break;
    default:
        if (byte >= 0x20 && byte <= 0x7E) {
            text += byte;
        } else {
            AppendEscapedByte(text, byte);
        }
    }
}

std::string Escape(const std::string& text) {
    std::string escaped;
    escaped.reserve(text.size());
    for (const char byte : text) {
        AppendEscaped(escaped, byte);
    }
    return escaped;
}

/// Writes values as JSON.
class JsonWriter {
  public:
    explicit JsonWriter(std::ostream& out) : out_(out) {}

    void Write(const MetaObject& value, int level) { Dispatch(value, *this, level); }

    void WriteValue(const MetaObj::MetaBool& value, int /*level*/) { out_ << value.ToString(); }

    void WriteValue(const MetaObj::MetaInt& value, int /*level*/) { out_ << value.ToString(); }

    void WriteValue(const MetaObj::MetaString& value, int /*level*/) {
        out_ << '"' << Escape(value.GetValue()) << '"';
    }

    void WriteValue(const MetaStruct& value, int level) {
        const std::string indent = GetIndent(level);
        out_ << '\n' << indent << "{\n";
        const auto names = value.GetFieldNames();
        for (const auto& name : names) {
            out_ << indent << "   \"" << name << "\": ";
            Write(*value.GetField(name), level + 2);
            out_ << (&name == &names.back() ? "\n" : ",\n");
        }
        out_ << indent << '}';
    }

    void WriteValue(const MetaList& value, int level) {
        const std::string indent = GetIndent(level);
        out_ << '\n' << indent << "[\n";
        const auto& elements = value.GetObjects();
        for (const auto& element : elements) {
            out_ << indent;
            Write(*element, level + 3);
            out_ << (&element == &elements.back() ? "\n" : ", \n");
        }
        out_ << indent << ']';
    }

    void WriteFailure(MetaType kind) { out_ << ConversionFailure(kind) << '\n'; }

    void WriteUnknown() { out_ << "Unknown data type\n"; }

  private:
    std::ostream& out_;
};

} // namespace

JsonFormatter::JsonFormatter() : Formatter("json") {
    SetDescription("Print the output as JSON.");
}

JsonFormatter::~JsonFormatter() = default;

bool JsonFormatter::Format(const std::shared_ptr<CallSpec::Output>& output,
                           FormatParameters& /*params*/, DisplayContext& /*display*/,
                           std::ostream& out) {
    Format(output->GetRootObject(), out, -1);
    out << '\n';
    return true;
}

void JsonFormatter::Format(std::shared_ptr<MetaObject> value, std::ostream& out, int level) {
    if (value) {
        JsonWriter(out).Write(*value, level);
    }
}

} // namespace CppTools::AutoCli
