#include <CppTools/autocli/formatters/PythonFormatter.h>
#include <CppTools/autocli/formatters/ValueDispatch.h>
#include <CppTools/callspec/Output.h>
#include <CppTools/metaobj/CppToolException.h>

#include <boost/algorithm/string/replace.hpp>

#include <algorithm>
#include <ostream>

namespace CppTools::AutoCli {

using MetaObj::MetaList;
using MetaObj::MetaObject;
using MetaObj::MetaStruct;
using MetaObj::MetaType;

namespace {

/// Writes values as Python literals; the level makes no difference.
class PythonWriter {
  public:
    explicit PythonWriter(std::ostream& out) : out_(out) {}

    void Write(const MetaObject& value, int level) { Dispatch(value, *this, level); }

    void WriteValue(const MetaObj::MetaBool& value, int /*level*/) {
        out_ << (value.GetValue() ? "True" : "False");
    }

    void WriteValue(const MetaObj::MetaInt& value, int /*level*/) { out_ << value.ToString(); }

    void WriteValue(const MetaObj::MetaString& value, int /*level*/) {
        std::string text = value.GetValue();
        boost::algorithm::replace_all(text, "\"", "\\\"");
        boost::algorithm::replace_all(text, "\n", "\\n");
        out_ << R"(""")" << text << R"(""")";
    }

    void WriteValue(const MetaStruct& value, int level) {
        out_ << '{';
        for (const auto& name : value.GetFieldNames()) {
            out_ << '"' << name << "\": ";
            Write(*value.GetField(name), level + 2);
            out_ << ", ";
        }
        out_ << '}';
    }

    void WriteValue(const MetaList& value, int level) {
        out_ << '[';
        for (const auto& element : value.GetObjects()) {
            Write(*element, level + 2);
            out_ << ", ";
        }
        out_ << ']';
    }

    void WriteFailure(MetaType kind) { out_ << ConversionFailure(kind) << '\n'; }

    void WriteUnknown() { out_ << "Unknown data type\n"; }

  private:
    std::ostream& out_;
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
    PythonWriter(out).Write(*value, level);
}

bool PythonFormatter::IsAllAscii(const std::string& text) {
    return std::all_of(text.begin(), text.end(),
                       [](char byte) { return static_cast<unsigned char>(byte) < 0x80; });
}

} // namespace CppTools::AutoCli
