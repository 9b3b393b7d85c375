#include <CppTools/autocli/plugins/DocumentReader.h>
#include <CppTools/autocli/plugins/ValueBuilder.h>
#include <CppTools/autocli/plugins/XmlElements.h>
#include <CppTools/autocli/plugins/XmlUtil.h>
#include <CppTools/metaobj/CppToolException.h>
#include <CppTools/metaobj/MetaList.h>
#include <CppTools/metaobj/MetaStruct.h>

namespace CppTools::AutoCli {

using MetaObj::MetaList;
using MetaObj::MetaObject;
using MetaObj::MetaStruct;

namespace {

void Feed(ValueBuilder& builder, _xmlNode* node, std::string_view name);

void FeedContents(ValueBuilder& builder, const xmlNode& node) {
    for (auto* child = node.children; child != nullptr; child = child->next) {
        if (child->type == XML_ELEMENT_NODE) {
            Feed(builder, child, NodeName(*child));
        } else if (child->content != nullptr) {
            builder.AddContent(ValueBuilder::Content::Other,
                               reinterpret_cast<const char*>(child->content));
        }
    }
}

/// Tells the builder of an element, under a name that it may not have.
void Feed(ValueBuilder& builder, _xmlNode* node, std::string_view name) {
    const char* const attribute = ValueBuilder::AttributeOf(name);
    builder.StartElement(name, attribute != nullptr ? AttributeOf(node, attribute) : std::string());
    FeedContents(builder, *node);
    builder.EndElement();
}

std::shared_ptr<MetaObject> BuildAs(std::string_view name, _xmlNode* node) {
    ValueBuilder builder;
    Feed(builder, node, name);
    return builder.GetValue();
}

} // namespace

std::string XmlUtil_ExtractAttribute(_xmlNode* node, const std::string& name) {
    return AttributeOf(node, name.c_str());
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
    return BuildAs(name, node);
}

std::shared_ptr<MetaList> BuildMetaList(_xmlNode* node) {
    return std::static_pointer_cast<MetaList>(BuildAs("list", node));
}

std::shared_ptr<MetaStruct> BuildMetaStruct(_xmlNode* node) {
    return std::static_pointer_cast<MetaStruct>(BuildAs("structure", node));
}

std::shared_ptr<MetaObject> XmlUtil_ParseXmlOutput(const std::string& text) {
    return ReadDocument(text);
}

} // namespace CppTools::AutoCli
