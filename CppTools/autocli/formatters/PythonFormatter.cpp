#include <CppTools/autocli/formatters/PythonFormatter.h>
#include <CppTools/autocli/formatters/TextBuffer.h>
#include <CppTools/autocli/formatters/ValueDispatch.h>
#include <CppTools/callspec/Output.h>
#include <CppTools/metaobj/CppToolException.h>

#include <algorithm>
#include <ostream>

namespace CppTools::AutoCli {

using MetaObj::MetaList;
using MetaObj::MetaObject;
using MetaObj::MetaStruct;
using MetaObj::MetaType;

namespace {

constexpr Escapes PythonEscapes() {
    Escapes escapes;
    escapes.Set('"', "\\\"");
    escapes.Set('\n', "\\n");
    return escapes;
}

constexpr Escapes kEscapes = PythonEscapes();

/// Writes values as Python literals; the level makes no difference.
class PythonWriter {
  public:
    explicit PythonWriter(std::ostream& out) : out_(out) {}

    void Write(bool value, int /*level*/) { out_ << (value ? "True" : "False"); }

    void Write(long value, int /*level*/) { out_ << value; }

    void Write(std::string_view text, int /*level*/) {
        (out_ << R"(""")").Escaped(text, kEscapes) << R"(""")";
    }

    void Write(const MetaStruct& value, int level) {
        out_ << '{';
        for (const auto& [name, field] : MetaObj::StructFields(value)) {
            out_ << '"' << name << "\": ";
            Dispatch(field, *this, level + 2);
            out_ << ", ";
        }
        out_ << '}';
    }

    void Write(const MetaList& value, int level) {
        out_ << '[';
        for (const auto& element : value.GetObjects()) {
            Dispatch(*element, *this, level + 2);
            out_ << ", ";
        }
        out_ << ']';
    }

    /// Hands over what is written, and throws what the stream does.
    void Finish() { out_.Flush(); }

    void WriteFailure(MetaType kind) { out_ << ConversionFailure(kind) << '\n'; }

    void WriteUnknown() { out_ << "Unknown data type\n"; }

  private:
    TextBuffer out_;
};

} // namespace

PythonFormatter::PythonFormatter() : Formatter("python") {
    SetDescription("Print the output as Python syntax suitable for eval().");
}

PythonFormatter::~PythonFormatter() = default;

bool PythonFormatter::Format(const std::shared_ptr<CallSpec::Output>& output,
                             FormatParameters& /*params*/, DisplayContext& /*display*/,
                             std::ostream& out) {
    Format(output->GetRootObject(), out, 2);
    out << '\n';
    return true;
}

void PythonFormatter::Format(std::shared_ptr<MetaObject> value, std::ostream& out, int level) {
    if (!value) {
        throw CppToolException("Invalid MetaObject passed to Format in PythonFormatter");
    }
    PythonWriter writer(out);
    Dispatch(*value, writer, level);
    writer.Finish();
}

bool PythonFormatter::IsAllAscii(const std::string& text) {
    return std::all_of(text.begin(), text.end(),
                       [](char byte) { return static_cast<unsigned char>(byte) < 0x80; });
}

} // namespace CppTools::AutoCli
