#include <CppTools/autocli/formatters/FieldText.h>
#include <CppTools/autocli/formatters/JsonFormatter.h>
#include <CppTools/callspec/Output.h>
#include <CppTools/metaobj/MetaBool.h>
#include <CppTools/metaobj/MetaInt.h>
#include <CppTools/metaobj/MetaList.h>
#include <CppTools/metaobj/MetaString.h>
#include <CppTools/metaobj/MetaStruct.h>

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

/// Writes values. What does not convert becomes a line that says so.
class JsonWriter {
  public:
    explicit JsonWriter(std::ostream& out) : out_(out) {}

    void Write(const MetaObject& value, int level) {
        switch (value.GetType()) {
        case MetaType::Bool:
            WriteScalar(dynamic_cast<const MetaObj::MetaBool*>(&value), "Error reading a bool\n");
            break;
        case MetaType::Int:
            WriteScalar(dynamic_cast<const MetaObj::MetaInt*>(&value), "Error reading a int\n");
            break;
        case MetaType::String:
            WriteString(dynamic_cast<const MetaObj::MetaString*>(&value));
            break;
        case MetaType::Struct:
            WriteStruct(dynamic_cast<const MetaStruct*>(&value), level);
            break;
        case MetaType::List:
            WriteList(dynamic_cast<const MetaList*>(&value), level);
            break;
        default:
            out_ << "Unknown data type\n";
        }
    }

  private:
    void WriteScalar(const MetaObject* value, const char* failure) {
        out_ << (value != nullptr ? value->ToString() : failure);
    }

    void WriteString(const MetaObj::MetaString* value) {
        if (value == nullptr) {
            out_ << "Error reading a string\n";
            return;
        }
        out_ << '"' << Escape(value->GetValue()) << '"';
    }

    void WriteStruct(const MetaStruct* value, int level) {
        if (value == nullptr) {
            out_ << "Error reading a struct from output.\n";
            return;
        }
        const std::string indent = GetIndent(level);
        out_ << '\n' << indent << "{\n";
        const auto names = value->GetFieldNames();
        for (const auto& name : names) {
            out_ << indent << "   \"" << name << "\": ";
            Write(*value->GetField(name), level + 2);
            out_ << (&name == &names.back() ? "\n" : ",\n");
        }
        out_ << indent << '}';
    }

    void WriteList(const MetaList* value, int level) {
        if (value == nullptr) {
            out_ << "Error reading a List\n";
            return;
        }
        const std::string indent = GetIndent(level);
        out_ << '\n' << indent << "[\n";
        const auto& elements = value->GetObjects();
        for (const auto& element : elements) {
            out_ << indent;
            Write(*element, level + 3);
            out_ << (&element == &elements.back() ? "\n" : ", \n");
        }
        out_ << indent << ']';
    }

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
