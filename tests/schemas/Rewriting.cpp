// Writes XML texts again in other words that mean the same to the engine: without what a grammar
// does not see as the engine does.
//
//     schema_rewriting FOLDER descriptor|result STEP... <FILES
//
// reads the names of files from its standard input, line by line, and writes each, with all of the
// steps done, under the same name into the folder. What is no document is left out.

#include <CppTools/autocli/plugins/XmlUtil.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iostream>
#include <iterator>
#include <libxml/parser.h>
#include <libxml/tree.h>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

using CppTools::AutoCli::XmlUtil_ExtractAttribute;
using CppTools::AutoCli::XmlUtil_GetContent;
using Names = std::set<std::string_view>;
using Document = std::unique_ptr<xmlDoc, void (*)(xmlDoc*)>;

const xmlChar* Xml(const std::string& text) {
    return reinterpret_cast<const xmlChar*>(text.c_str());
}

std::string_view NameOf(const xmlNode& node) {
    return reinterpret_cast<const char*>(node.name);
}

std::vector<xmlNode*> ChildrenOf(const xmlNode& parent) {
    std::vector<xmlNode*> children;
    for (auto* child = parent.children; child != nullptr; child = child->next) {
        children.push_back(child);
    }
    return children;
}

bool IsElement(const xmlNode* node) {
    return node->type == XML_ELEMENT_NODE;
}

void Remove(xmlNode* node) {
    xmlUnlinkNode(node);
    xmlFreeNode(node);
}

/// Calls `visit` with an element and all elements below it, those that it removes excepted.
template <typename Visit>
void ForEachBelow(xmlNode& element, Visit visit) {
    visit(element);
    for (auto* const child : ChildrenOf(element)) {
        if (IsElement(child)) {
            ForEachBelow(*child, visit);
        }
    }
}

bool HasContent(const xmlNode& element) {
    const auto children = ChildrenOf(element);
    return std::any_of(children.begin(), children.end(),
                       [](const xmlNode* child) { return child->content != nullptr; });
}

/// Prefixes mean nothing. Of attributes that then are the same the first one counts.
void DropPrefixes(xmlNode& root) {
    ForEachBelow(root, [](xmlNode& element) {
        std::vector<std::pair<std::string, std::string>> attributes;
        for (const auto* each = element.properties; each != nullptr; each = each->next) {
            const std::string name = reinterpret_cast<const char*>(each->name);
            attributes.emplace_back(name, XmlUtil_ExtractAttribute(&element, name));
        }
        xmlFreePropList(std::exchange(element.properties, nullptr));
        for (const auto& [name, value] : attributes) {
            if (xmlHasProp(&element, Xml(name)) == nullptr ||
                xmlHasProp(&element, Xml(name))->type == XML_ATTRIBUTE_DECL) {
                xmlNewProp(&element, Xml(name), Xml(value));
            }
        }
        element.ns = nullptr;
    });
    ForEachBelow(root,
                 [](xmlNode& element) { xmlFreeNsList(std::exchange(element.nsDef, nullptr)); });
}

/// Only the last piece of a text counts, and no element in it. An entry of a set is one entry for
/// each piece.
void JoinPieces(xmlNode& root) {
    static const Names texts = {"version", "description", "execute",    "stdin",
                                "int",     "regex",       "enum-value", "meta-data-entry"};
    ForEachBelow(root, [](xmlNode& element) {
        if (!texts.contains(NameOf(element))) {
            return;
        }
        const std::string text = XmlUtil_GetContent(&element);
        const auto children = ChildrenOf(element);
        const auto pieces = std::count_if(children.begin(), children.end(),
                                          [](xmlNode* child) { return child->content != nullptr; });
        if (NameOf(element) == "enum-value" && pieces > 1) {
            return;
        }
        std::for_each(children.begin(), children.end(), Remove);
        if (!text.empty()) {
            xmlAddChild(&element, xmlNewText(Xml(text)));
        }
    });
}

/// A type of documents gives attributes and names texts. Beside elements such a name means nothing.
void ApplyDocumentType(xmlNode& root) {
    static const std::set<std::string> attributes = {"path",   "name",      "type", "required",
                                                     "secret", "shortname", "min",  "value",
                                                     "max",    "typeName"};
    ForEachBelow(root, [](xmlNode& element) {
        for (const auto& name : attributes) {
            if (xmlHasProp(&element, Xml(name)) != nullptr) {
                const std::string value = XmlUtil_ExtractAttribute(&element, name);
                xmlUnsetProp(&element, Xml(name));
                xmlNewProp(&element, Xml(name), Xml(value));
            }
        }
        for (auto* const child : ChildrenOf(element)) {
            if (child->type == XML_ENTITY_REF_NODE) {
                Remove(child);
            }
        }
    });
    if (auto* const type = xmlGetIntSubset(root.doc)) {
        xmlUnlinkNode(reinterpret_cast<xmlNode*>(type));
        xmlFreeDtd(type);
    }
}

void RenameRoot(xmlNode& root, const std::string& name) {
    xmlNodeSetName(&root, Xml(name));
}

/// The children that an element of this name takes notice of; null when it minds them all.
const Names* NoticedChildren(const xmlNode& parent) {
    static const std::map<std::string_view, Names> noticed = {
        {"tandril-extension", {"version", "namespaces", "commands"}},
        {"namespaces", {"namespace"}},
        {"namespace", {"description"}},
        {"commands", {"command"}},
        {"command",
         {"description", "meta-data", "input-spec", "output-spec", "format-parameters", "execute",
          "stdin"}},
        {"input-spec", {"parameter", "context-supported"}},
        {"parameter", {"description", "constraint"}},
        {"format-parameters", {"formatter", "format-parameter"}},
        {"structure", {"field"}},
        {"stringenum", {"enum"}},
        {"intenum", {"enum"}},
        {"regex", {"regex"}},
        {"range", {"range"}}};
    const bool isConstraint = NameOf(parent) == "constraint";
    const std::string type =
        isConstraint ? XmlUtil_ExtractAttribute(const_cast<xmlNode*>(&parent), "type") : "";
    const auto found = noticed.find(isConstraint ? std::string_view(type) : NameOf(parent));
    return found != noticed.end() ? &found->second : nullptr;
}

/// What is in an element without children of its own is its text's concern.
void DropUnnoticed(xmlNode& element) {
    static const Names leaves = {"version",
                                 "description",
                                 "execute",
                                 "stdin",
                                 "string",
                                 "int",
                                 "bool",
                                 "enum-value",
                                 "regex",
                                 "range",
                                 "meta-data-entry",
                                 "formatter",
                                 "format-parameter",
                                 "context-supported"};
    static const Names single = {"output", "field"};
    if (leaves.contains(NameOf(element))) {
        return;
    }
    const auto* const noticed = NoticedChildren(element);
    bool isComplete = false;
    for (auto* const child : ChildrenOf(element)) {
        if (!IsElement(child)) {
            continue;
        }
        const auto name = NameOf(*child);
        if (name == "text" || name == "comment" || isComplete ||
            (noticed != nullptr && !noticed->contains(name))) {
            Remove(child);
        } else {
            isComplete = single.contains(NameOf(element));
            DropUnnoticed(*child);
        }
    }
}

/// An element that is to be there once may have empty ones of its name in front of it.
void DropEmptyOnes(xmlNode& root) {
    static const Names once = {"version", "description", "execute", "stdin"};
    ForEachBelow(root, [](xmlNode& element) {
        Names later;
        auto children = ChildrenOf(element);
        std::reverse(children.begin(), children.end());
        for (auto* const child : children) {
            if (!IsElement(child) || !once.contains(NameOf(*child))) {
                continue;
            }
            if (later.contains(NameOf(*child)) && XmlUtil_GetContent(child).empty()) {
                Remove(child);
            } else {
                later.insert(*once.find(NameOf(*child)));
            }
        }
    });
}

void DropEmptyAttributes(xmlNode& root) {
    ForEachBelow(root, [](xmlNode& element) {
        for (const std::string name : {"shortname", "required", "secret"}) {
            if (NameOf(element) == "parameter" &&
                XmlUtil_ExtractAttribute(&element, name).empty()) {
                xmlUnsetProp(&element, Xml(name));
            }
        }
    });
}

bool IsNoEntry(xmlNode& element) {
    const auto has = [&](const std::string& name) {
        return !XmlUtil_ExtractAttribute(&element, name).empty();
    };
    return !HasContent(element) && ((NameOf(element) == "enum-value" && has("value")) ||
                                    (NameOf(element) == "meta-data-entry" && !has("name")));
}

/// Entries without a text are none; nor is a set of none, unless it is the last one.
void DropEntriesWithoutText(xmlNode& root) {
    ForEachBelow(root, [](xmlNode& element) {
        for (auto* const child : ChildrenOf(element)) {
            if (IsElement(child) && IsNoEntry(*child)) {
                Remove(child);
            }
        }
    });
    ForEachBelow(root, [](xmlNode& element) {
        bool isLast = true;
        auto children = ChildrenOf(element);
        std::reverse(children.begin(), children.end());
        for (auto* const child : children) {
            if (IsElement(child) && NameOf(*child) == "enum" && !std::exchange(isLast, false) &&
                xmlChildElementCount(child) == 0) {
                Remove(child);
            }
        }
    });
}

/// In memory, as the results of commands are: files may be refused for their size.
Document Read(const std::string& file) {
    std::ifstream stream(file, std::ios::binary);
    const std::string text(std::istreambuf_iterator<char>(stream), {});
    return {xmlReadMemory(text.data(), static_cast<int>(text.size()), nullptr, nullptr, 0),
            xmlFreeDoc};
}

using Step = std::function<void(xmlNode&)>;

std::map<std::string, Step> StepsFor(const std::string& kind) {
    const std::string rootName = kind == "descriptor" ? "tandril-extension" : "output";
    return {{"prefixes", DropPrefixes},
            {"pieces", JoinPieces},
            {"document-type", ApplyDocumentType},
            {"root-name", [=](xmlNode& root) { RenameRoot(root, rootName); }},
            {"unnoticed", DropUnnoticed},
            {"empty-ones", DropEmptyOnes},
            {"empty-attributes", DropEmptyAttributes},
            {"entries-without-text", DropEntriesWithoutText}};
}

} // namespace

int main(int count, char** arguments) {
    const std::filesystem::path folder = arguments[1];
    const auto steps = StepsFor(arguments[2]);
    for (std::string file; std::getline(std::cin, file);) {
        const Document document = Read(file);
        if (!document) {
            continue;
        }
        for (int i = 3; i < count; ++i) {
            steps.at(arguments[i])(*xmlDocGetRootElement(document.get()));
        }
        const auto written = folder / std::filesystem::path(file).filename();
        xmlSaveFileEnc(written.c_str(), document.get(), "UTF-8");
    }
}
