#include <CppTools/autocli/formatters/JsonFormatter.h>
#include <CppTools/autocli/formatters/TextBuffer.h>
#include <CppTools/autocli/formatters/ValueDispatch.h>
#include <CppTools/callspec/Output.h>

#include <ostream>

namespace CppTools::AutoCli {

using MetaObj::MetaList;
using MetaObj::MetaObject;
using MetaObj::MetaStruct;
using MetaObj::MetaType;

namespace {

constexpr Escapes JsonEscapes() {
    constexpr std::string_view digits = "0123456789abcdef";
    Escapes escapes;
    for (unsigned byte = 0; byte < 256; ++byte) {
        if (byte < 0x20 || byte > 0x7E) {
            const std::array<char, 6> text = {
                '\\', 'u', '0', '0', digits[byte >> 4U], digits[byte & 0xFU]};
            escapes.Set(static_cast<unsigned char>(byte), {text.data(), text.size()});
        }
    }
    escapes.Set('/', "\\/");
    escapes.Set('\\', "\\\\");
    escapes.Set('"', "\\\"");
    escapes.Set('\b', "\\b");
    escapes.Set('\t', "\\t");
    escapes.Set('\n', "\\n");
    escapes.Set('\f', "\\f");
    escapes.Set('\r', "\\r");
    return escapes;
}

constexpr Escapes kEscapes = JsonEscapes();

/// Writes values as JSON.
class JsonWriter {
  public:
    explicit JsonWriter(std::ostream& out) : out_(out) {}

    void Write(bool value, int /*level*/) { out_ << value; }

    void Write(long value, int /*level*/) { out_ << value; }

    void Write(std::string_view text, int /*level*/) {
        (out_ << '"').Escaped(text, kEscapes) << '"';
    }

    void Write(const MetaStruct& value, int level) {
        (out_ << '\n').Indent(level) << '{';
        const char* separator = "\n";
        for (const auto& [name, field] : MetaObj::StructFields(value)) {
            (out_ << separator).Indent(level) << "   \"" << name << "\": ";
            Dispatch(field, *this, level + 2);
            separator = ",\n";
        }
        (out_ << '\n').Indent(level) << '}';
    }

    void Write(const MetaList& value, int level) {
        (out_ << '\n').Indent(level) << '[';
        const char* separator = "\n";
        for (const auto& element : value.GetObjects()) {
            (out_ << separator).Indent(level);
            Dispatch(*element, *this, level + 3);
            separator = ", \n";
        }
        (out_ << '\n').Indent(level) << ']';
    }

    /// Hands over what is written, and throws what the stream does.
    void Finish() { out_.Flush(); }

    void WriteFailure(MetaType kind) { out_ << ConversionFailure(kind) << '\n'; }

    void WriteUnknown() { out_ << "Unknown data type\n"; }

  private:
    TextBuffer out_;
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
        JsonWriter writer(out);
        Dispatch(*value, writer, level);
        writer.Finish();
    }
}

} // namespace CppTools::AutoCli
