// Documents that commands print, and the values that they become, through every formatter. The
// input is the document, and keys and values of format parameters.

#include <fuzz/Laws.h>
#include <fuzz/Rendering.h>
#include <fuzz/Sections.h>
#include <fuzz/XmlDocument.h>

#include <CppTools/autocli/formatters/CliDispatcherHelpFormatter.h>
#include <CppTools/autocli/formatters/CommandHelpFormatter.h>
#include <CppTools/autocli/formatters/JsonFormatter.h>
#include <CppTools/autocli/formatters/PythonFormatter.h>
#include <CppTools/autocli/formatters/SimpleFormatter.h>
#include <CppTools/autocli/formatters/TableFormatter.h>
#include <CppTools/autocli/formatters/XmlFormatter.h>
#include <CppTools/autocli/plugins/XmlUtil.h>
#include <CppTools/metaobj/CppToolException.h>
#include <CppTools/metaobj/MetaList.h>
#include <CppTools/metaobj/MetaString.h>
#include <CppTools/metaobj/MetaStruct.h>

#include <algorithm>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace {

using namespace CppTools::AutoCli;
using CppTools::CppToolException;
using CppTools::MetaObj::MetaList;
using CppTools::MetaObj::MetaObject;
using CppTools::MetaObj::MetaStruct;
using CppTools::MetaObj::MetaType;
using Fuzz::Render;
using Fuzz::Require;
using Value = std::shared_ptr<MetaObject>;

/// What a walk over a value makes of each kind.
template <typename Visitor>
auto Visit(const Value& value, Visitor& visitor) {
    switch (value->GetType()) {
    case MetaType::Struct:
        return visitor.Structure(static_cast<const MetaStruct&>(*value));
    case MetaType::List:
        return visitor.List(static_cast<const MetaList&>(*value));
    default:
        return visitor.Scalar(*value);
    }
}

/// Everything that is in a value, the templates of lists included.
struct Describer {
    std::string Structure(const MetaStruct& structure) {
        std::string text = "Struct(" + structure.GetTypeName() + ":";
        for (const std::string& name : structure.GetFieldNames()) {
            text += name + "=" + Describe(structure.GetField(name)) + ";";
        }
        return text + ")";
    }

    std::string List(const MetaList& list) {
        std::string text =
            "List(" + MetaTypeString(list.GetListType()) + " " + Describe(list.GetListStructure());
        for (const Value& item : list.GetObjects()) {
            text += "," + Describe(item);
        }
        return text + ")";
    }

    std::string Scalar(const MetaObject& value) {
        return MetaTypeString(value.GetType()) + "(" + value.ToString() + ")";
    }

    static std::string Describe(const Value& value) {
        Describer describer;
        return value ? Visit(value, describer) : "nothing";
    }
};

Value ReadByTree(const std::string& text) {
    const Fuzz::XmlDocument document(text);
    const auto elements =
        document.Root() != nullptr ? Fuzz::ElementsOf(*document.Root()) : std::vector<xmlNode*>();
    try {
        return elements.empty() ? nullptr : XmlUtil_BuildMetaObject(elements.front());
    } catch (const CppToolException& failure) {
        throw CppToolException(
            std::string("Error parsing command output.  Unable to build a proper "
                        "metaobject from output tag.  output must contain "
                        "properly formatted tags of type bool, int, string, "
                        "structure and list. Error was : ") +
            failure.what());
    }
}

/// A value, or the reason why there is none.
struct Outcome {
    Value value;
    std::string text;
};

template <typename Reading>
Outcome Try(Reading reading) {
    try {
        const Value value = reading();
        return {value, Describer::Describe(value)};
    } catch (const CppToolException& failure) {
        return {nullptr, failure.what()};
    }
}

/// What an XML reader makes of the line ends of a text, and of the white space of an attribute.
std::string LineEndsRead(std::string text) {
    for (std::size_t at = text.find('\r'); at != text.npos; at = text.find('\r', at)) {
        text.replace(at, text.compare(at, 2, "\r\n") == 0 ? 2 : 1, "\n");
    }
    return text;
}

std::string AttributeRead(const std::string& text) {
    std::string read = LineEndsRead(text);
    std::replace_if(
        read.begin(), read.end(), [](char c) { return c == '\n' || c == '\t'; }, ' ');
    return read;
}

/// Compares a value with the element that the xml formatter wrote of it.
struct XmlComparer {
    const xmlNode& element;

    void Structure(const MetaStruct& structure) {
        RequireElement("structure", "typeName", structure.GetTypeName());
        const auto fields = Fuzz::ElementsOf(element);
        const auto names = structure.GetFieldNames();
        Require(fields.size() == names.size(), "every field is written");
        for (std::size_t i = 0; i < names.size(); ++i) {
            XmlComparer{*fields[i]}.RequireElement("field", "name", names[i]);
            const auto values = Fuzz::ElementsOf(*fields[i]);
            Require(values.size() == 1, "a field is written with its value");
            Compare(structure.GetField(names[i]), *values[0]);
        }
    }

    void List(const MetaList& list) {
        static const std::vector<std::string> kinds = {"integer", "boolean", "string", "structure"};
        RequireElement("list", "type", kinds.at(static_cast<std::size_t>(list.GetListType())));
        const auto items = Fuzz::ElementsOf(element);
        Require(items.size() == list.GetCount(), "every element is written");
        for (std::size_t i = 0; i < items.size(); ++i) {
            Compare(list.GetObjects()[i], *items[i]);
        }
    }

    void Scalar(const MetaObject& value) {
        static const std::vector<std::string> names = {"integer", "boolean", "string"};
        Require(Fuzz::NameOf(element) == names.at(static_cast<std::size_t>(value.GetType())),
                "a value is written as its kind");
        const std::unique_ptr<xmlChar, void (*)(void*)> content(xmlNodeGetContent(&element),
                                                                xmlFree);
        Require(reinterpret_cast<const char*>(content.get()) == LineEndsRead(value.ToString()),
                "a text is written so that it can be read");
    }

    void RequireElement(const std::string& name, const std::string& attribute,
                        const std::string& value) const {
        Require(Fuzz::NameOf(element) == name &&
                    XmlUtil_ExtractAttribute(const_cast<xmlNode*>(&element), attribute) ==
                        AttributeRead(value),
                "an element has its name and attribute", value);
    }

    static void Compare(const Value& value, const xmlNode& element) {
        XmlComparer comparer{element};
        Visit(value, comparer);
    }
};

void CheckXml(const Value& value) {
    static XmlFormatter formatter;
    const auto [succeeded, text] = Render(formatter, value);
    // Values are written two elements deeper than they were read.
    const Fuzz::XmlDocument document(text, XML_PARSE_HUGE);
    Require(succeeded && document.Root() != nullptr, "the xml formatter writes a document", text);
    const auto roots = Fuzz::ElementsOf(*document.Root(), "root");
    Require(roots.size() == 1 && Fuzz::ElementsOf(*roots[0]).size() == 1, "with one value", text);
    XmlComparer::Compare(value, *Fuzz::ElementsOf(*roots[0])[0]);
}

/// Bytes as the characters that have their numbers.
std::string Widened(const std::string& bytes) {
    std::string text;
    for (const char byte : bytes) {
        const auto code = static_cast<unsigned char>(byte);
        if (code < 0x80) {
            text += byte;
        } else {
            text +=
                {static_cast<char>(0xC0 | (code >> 6)), static_cast<char>(0x80 | (code & 0x3F))};
        }
    }
    return text;
}

/// The value as the other library holds it. Names that JSON cannot hold as they are are counted.
struct JsonBuilder {
    std::size_t oddNames = 0;

    nlohmann::json Structure(const MetaStruct& structure) {
        auto object = nlohmann::json::object();
        for (const std::string& name : structure.GetFieldNames()) {
            oddNames += std::any_of(name.begin(), name.end(), [](unsigned char c) {
                return c < 0x20 || c == '"' || c == '\\';
            });
            object[name] = Visit(structure.GetField(name), *this);
        }
        return object;
    }

    nlohmann::json List(const MetaList& list) {
        auto array = nlohmann::json::array();
        for (const Value& item : list.GetObjects()) {
            array.push_back(Visit(item, *this));
        }
        return array;
    }

    nlohmann::json Scalar(const MetaObject& value) {
        return value.GetType() == MetaType::String ? nlohmann::json(Widened(value.ToString()))
                                                   : nlohmann::json::parse(value.ToString());
    }
};

void CheckJson(const Value& value) {
    static JsonFormatter formatter;
    const auto [succeeded, text] = Render(formatter, value);
    JsonBuilder builder;
    const nlohmann::json expected = Visit(value, builder);
    Require(succeeded &&
                (builder.oddNames > 0 || nlohmann::json::parse(text, nullptr, false) == expected),
            "the json formatter writes the value as JSON", text);
}

void CheckPython(const Value& value) {
    static PythonFormatter formatter;
    const auto [succeeded, text] = Render(formatter, value);
    const std::string names = Describer::Describe(value);
    Require(succeeded && text.ends_with('\n') &&
                (names.find('\n') != names.npos || std::count(text.begin(), text.end(), '\n') == 1),
            "the python formatter writes one line", text);
}

/// Whether each row has one line; a column whose name is a path or is trimmed may be missing.
bool IsSimpleTable(const MetaList& list) {
    const std::string text = Describer().List(list);
    const auto names = list.GetListStructure()->GetFieldNames();
    return text.find('\n') == text.npos &&
           std::none_of(names.begin(), names.end(), [](const auto& name) {
               return name.find('.') != name.npos || name.find_first_of(" \t\f\v\r") != name.npos;
           });
}

void CheckTable(const Value& value) {
    static TableFormatter formatter;
    const auto list = std::dynamic_pointer_cast<MetaList>(value);
    if (!list || !list->GetListStructure() || !IsSimpleTable(*list)) {
        return;
    }
    const auto [succeeded, text] = Render(formatter, value);
    const long headers = list->GetListStructure()->GetFieldNames().empty() ? 0 : 2;
    Require(succeeded && std::count(text.begin(), text.end(), '\n') == headers + list->GetCount(),
            "a table has a line for each row", text);
}

/// With any parameters a formatter writes the same twice, or refuses the value.
void CheckAnyParameters(const Value& value, const FormatParameters& parameters) {
    static const std::vector<std::shared_ptr<Formatter>> formatters = {
        std::make_shared<SimpleFormatter>(),
        std::make_shared<TableFormatter>(),
        std::make_shared<XmlFormatter>(),
        std::make_shared<JsonFormatter>(),
        std::make_shared<PythonFormatter>(),
        std::make_shared<CommandHelpFormatter>(),
        std::make_shared<CliDispatcherHelpFormatter>()};
    for (const auto& formatter : formatters) {
        try {
            const std::string text = Render(*formatter, value, parameters, 40).text;
            Require(text == Render(*formatter, value, parameters, 40).text,
                    "a formatter keeps no state", text);
        } catch (const CppToolException&) {
            // The value is of no kind for it.
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Fuzz::Sections sections(data, size);
    const std::string text = sections.Next();
    FormatParameters parameters;
    while (sections.HasNext()) {
        const std::string key = sections.Next();
        parameters.SetParameter(key, sections.Next());
    }
    const Outcome byTree = Try([&] { return ReadByTree(text); });
    const Outcome read = Try([&] { return XmlUtil_ParseXmlOutput(text); });
    Require(read.text == byTree.text, "a document is read as its tree is",
            read.text + "\n" + byTree.text);
    if (read.value) {
        CheckXml(read.value);
        CheckJson(read.value);
        CheckPython(read.value);
        CheckTable(read.value);
    }
    CheckAnyParameters(read.value, parameters);
    return 0;
}
