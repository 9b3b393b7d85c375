#include <CppTools/autocli/formatters/PythonFormatter.h>
#include <CppTools/callspec/Output.h>
#include <CppTools/metaobj/CppToolException.h>
#include <CppTools/metaobj/MetaBool.h>
#include <CppTools/metaobj/MetaInt.h>
#include <CppTools/metaobj/MetaList.h>
#include <CppTools/metaobj/MetaString.h>
#include <CppTools/metaobj/MetaStruct.h>

#include <boost/algorithm/string/replace.hpp>

#include <algorithm>
#include <ostream>

namespace CppTools::AutoCli {

using MetaObj::MetaList;
using MetaObj::MetaObject;
using MetaObj::MetaStruct;
using MetaObj::MetaType;

namespace {

/// Writes values. What does not convert becomes a line that says so.
class PythonWriter {
  public:
    explicit PythonWriter(std::ostream& out) : out_(out) {}

    void Write(const MetaObject& value) {
        switch (value.GetType()) {
        case MetaType::Bool:
            WriteBool(dynamic_cast<const MetaObj::MetaBool*>(&value));
            break;
        case MetaType::Int:
            WriteInt(dynamic_cast<const MetaObj::MetaInt*>(&value));
            break;
        case MetaType::String:
            WriteString(dynamic_cast<const MetaObj::MetaString*>(&value));
            break;
        case MetaType::Struct:
            WriteStruct(dynamic_cast<const MetaStruct*>(&value));
            break;
        case MetaType::List:
            WriteList(dynamic_cast<const MetaList*>(&value));
            break;
        default:
            out_ << "Unknown data type\n";
        }
    }

  private:
    void WriteBool(const MetaObj::MetaBool* value) {
        if (value == nullptr) {
            out_ << "Error reading a bool\n";
            return;
        }
        out_ << (value->GetValue() ? "True" : "False");
    }

    void WriteInt(const MetaObj::MetaInt* value) {
        out_ << (value != nullptr ? value->ToString() : "Error reading a int\n");
    }

    void WriteString(const MetaObj::MetaString* value) {
        if (value == nullptr) {
            out_ << "Error reading a string\n";
            return;
        }
        std::string text = value->GetValue();
        boost::algorithm::replace_all(text, "\"", "\\\"");
        boost::algorithm::replace_all(text, "\n", "\\n");
        out_ << R"(""")" << text << R"(""")";
    }

    void WriteStruct(const MetaStruct* value) {
        if (value == nullptr) {
            out_ << "Error reading a struct from output.\n";
            return;
        }
        out_ << '{';
        for (const auto& name : value->GetFieldNames()) {
            out_ << '"' << name << "\": ";
            Write(*value->GetField(name));
            out_ << ", ";
        }
        out_ << '}';
    }

    void WriteList(const MetaList* value) {
        if (value == nullptr) {
            out_ << "Error reading a List\n";
            return;
        }
        out_ << '[';
        for (const auto& element : value->GetObjects()) {
            Write(*element);
            out_ << ", ";
        }
        out_ << ']';
    }

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

void PythonFormatter::Format(std::shared_ptr<MetaObject> value, std::ostream& out, int /*level*/) {
    if (!value) {
        throw CppToolException("Invalid MetaObject passed to Format in PythonFormatter");
    }
    PythonWriter(out).Write(*value);
}

bool PythonFormatter::IsAllAscii(const std::string& text) {
    return std::all_of(text.begin(), text.end(),
                       [](char byte) { return static_cast<unsigned char>(byte) < 0x80; });
}

} // namespace CppTools::AutoCli
