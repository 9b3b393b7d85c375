#include <CppTools/autocli/plugins/XmlElements.h>
#include <CppTools/autocli/plugins/XmlUtil.h>
#include <CppTools/callspec/ValueReading.h>
#include <CppTools/metaobj/CppToolException.h>
#include <CppTools/metaobj/MetaBool.h>
#include <CppTools/metaobj/MetaInt.h>
#include <CppTools/metaobj/MetaList.h>
#include <CppTools/metaobj/MetaString.h>
#include <CppTools/metaobj/MetaStruct.h>

#include <libxml/parser.h>

#include <array>
#include <limits>
#include <utility>

namespace CppTools::AutoCli {

using MetaObj::MetaList;
using MetaObj::MetaObject;
using MetaObj::MetaStruct;
using MetaObj::MetaType;

namespace {

struct XmlTextDeleter {
    void operator()(xmlChar* text) const noexcept { xmlFree(text); }
};

MetaType ReadListType(_xmlNode* node) {
    static constexpr std::array<std::pair<std::string_view, MetaType>, 5> kTypes = {
        {{"string", MetaType::String},
         {"int", MetaType::Int},
         {"bool", MetaType::Bool},
         {"structure", MetaType::Struct},
         {"list", MetaType::List}}};
    const std::string word = XmlUtil_ExtractAttribute(node, "type");
    for (const auto& [name, type] : kTypes) {
        if (name == word) {
            return type;
        }
    }
    throw CppToolException(
        "Invalid list type attribute.  Must be one of [string, int, bool, structure, list]");
}

std::shared_ptr<MetaObject> BuildMetaInt(_xmlNode* node) {
    const std::string text = XmlUtil_GetContent(node);
    long number = 0;
    if (!text.empty() && !CallSpec::ReadLeadingInteger(text, number)) {
        throw CppToolException("Unable to read an int value from: '" + text + "'");
    }
    return MetaObj::MetaInt::New(number);
}

std::shared_ptr<MetaObject> BuildMetaBool(_xmlNode* node) {
    const std::string text = XmlUtil_GetContent(node);
    return MetaObj::MetaBool::New(text != "false" && text != "f" && text != "0");
}

/// A copy of a structure, and of those inside it, for use as a template. Lists are shared: each
/// holds its items beside a template of its own, so that copies would double with each level.
std::shared_ptr<MetaObject> CopyForTemplate(const std::shared_ptr<MetaObject>& value) {
    const auto* structure = dynamic_cast<const MetaStruct*>(value.get());
    if (structure == nullptr) {
        return value;
    }
    auto copy = MetaStruct::New(structure->GetTypeName());
    for (const auto& name : structure->GetFieldNames()) {
        copy->SetField(name, CopyForTemplate(structure->GetField(name)));
    }
    return copy;
}

/// The first item is read only once, and copied for the template, since reading it twice would
/// take twice as long for each level of lists within lists.
std::shared_ptr<MetaList> BuildListWithTemplate(MetaType type, _xmlNode* node) {
    auto* const first = FirstElementFrom(node->children);
    const auto firstItem = first != nullptr ? XmlUtil_BuildMetaObject(first) : nullptr;
    auto list = MetaList::New(type, CopyForTemplate(firstItem));
    ForEachElement(*node, [&](_xmlNode* child) {
        list->Add(child == first ? firstItem : XmlUtil_BuildMetaObject(child));
    });
    return list;
}

std::shared_ptr<MetaObject> BuildRootValue(_xmlNode* element) {
    try {
        return XmlUtil_BuildMetaObject(element);
    } catch (const CppToolException& failure) {
        throw CppToolException(
            std::string("Error parsing command output.  Unable to build a proper metaobject from "
                        "output tag.  output must contain properly formatted tags of type bool, "
                        "int, string, structure and list. Error was : ") +
            failure.what());
    }
}

} // namespace

std::string XmlUtil_ExtractAttribute(_xmlNode* node, const std::string& name) {
    const std::unique_ptr<xmlChar, XmlTextDeleter> value(
        xmlGetProp(node, reinterpret_cast<const xmlChar*>(name.c_str())));
    return value ? reinterpret_cast<const char*>(value.get()) : std::string();
}

std::string XmlUtil_GetContent(_xmlNode* node) {
    const char* last = "";
    ForEachContent(*node, [&](const char* content) { last = content; });
    return last;
}

std::string XmlUtil_GetContentForChildByTag(_xmlNode* node, const std::string& tag) {
    std::string content;
    ForEachElementNamed(*node, tag, [&](_xmlNode* child) {
        if (!content.empty()) {
            throw CppToolException("Illegal Duplicate tags found.  The tag " + tag +
                                   " was expected only once, but was found multiple times.");
        }
        content = XmlUtil_GetContent(child);
    });
    return content;
}

_xmlNode* XmlUtil_FindChildNode(_xmlNode* node, const std::string& name) {
    _xmlNode* found = nullptr;
    ForEachElementNamed(*node, name, [&](_xmlNode* child) {
        if (found != nullptr) {
            throw CppToolException("More than one instance of " + name +
                                   " found, expected only one.");
        }
        found = child;
    });
    return found;
}

std::shared_ptr<MetaObject> XmlUtil_BuildMetaObject(_xmlNode* node) {
    const std::string_view name = NodeName(*node);
    if (name == "text") {
        throw CppToolException("Trying to make a meta object from a text field");
    }
    if (name == "comment") {
        throw CppToolException("Trying to make a meta object from a comment");
    }
    if (name == "list") {
        return BuildMetaList(node);
    }
    if (name == "structure") {
        return BuildMetaStruct(node);
    }
    if (name == "int") {
        return BuildMetaInt(node);
    }
    if (name == "bool") {
        return BuildMetaBool(node);
    }
    if (name == "string") {
        return MetaObj::MetaString::New(XmlUtil_GetContent(node));
    }
    throw CppToolException("Unable to make a MetaObject from a node with tag '" +
                           std::string(name) + "'");
}

std::shared_ptr<MetaList> BuildMetaList(_xmlNode* node) {
    const MetaType type = ReadListType(node);
    if (type == MetaType::Struct || type == MetaType::List) {
        return BuildListWithTemplate(type, node);
    }
    auto list = MetaList::New(type);
    ForEachElement(*node, [&](_xmlNode* child) { list->Add(XmlUtil_BuildMetaObject(child)); });
    return list;
}

std::shared_ptr<MetaStruct> BuildMetaStruct(_xmlNode* node) {
    auto structure = MetaStruct::New(XmlUtil_ExtractAttribute(node, "typeName"));
    ForEachElementNamed(*node, "field", [&](_xmlNode* field) {
        const std::string name = XmlUtil_ExtractAttribute(field, "name");
        if (name.empty()) {
            throw CppToolException(
                "Invalid <field> tag found.  <field> requires a 'name' attribute.");
        }
        if (auto* const value = FirstElementFrom(field->children)) {
            structure->SetField(name, XmlUtil_BuildMetaObject(value), "");
        }
    });
    return structure;
}

std::shared_ptr<MetaObject> XmlUtil_ParseXmlOutput(const std::string& text) {
    if (text.size() > static_cast<std::size_t>(std::numeric_limits<int>::max())) {
        return nullptr;
    }
    const XmlDocument document(
        xmlReadMemory(text.data(), static_cast<int>(text.size()), "STDOUT", nullptr, 0));
    if (!document) {
        return nullptr;
    }
    const xmlNode* root = xmlDocGetRootElement(document.get());
    if (root == nullptr) {
        throw CppToolException("Error parsing command output.  Unable to find a properly formatted "
                               "output tag as the document root");
    }
    auto* const element = FirstElementFrom(root->children);
    return element != nullptr ? BuildRootValue(element) : nullptr;
}

} // namespace CppTools::AutoCli
