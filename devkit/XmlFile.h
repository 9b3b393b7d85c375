#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <libxml/tree.h>

namespace Devkit {

/// What libxml2 has to say about one place.
struct XmlProblem {
    long line;
    int column; ///< 0 when it is unknown.
    int depth;  ///< How many elements stand around the one that it is about.
    std::string text;
};

struct FreeXmlDocument {
    void operator()(xmlDoc* document) const { xmlFreeDoc(document); }
};

using XmlDocument = std::unique_ptr<xmlDoc, FreeXmlDocument>;

/// The whole content of a file. Throws "Unable to read F: " and the reason.
std::string ReadFile(const std::string& path);

/// Reads a document; empty when it is not well-formed, and `problems` says why.
XmlDocument ReadXml(const std::string& text, const std::string& name,
                    std::vector<XmlProblem>& problems);

/// "column C: TEXT", or the text alone.
std::string ToText(const XmlProblem& problem);

long LineOf(const xmlNode& node);

/// The child elements of that name; all of them when it is empty.
std::vector<xmlNode*> ChildrenOf(const xmlNode& parent, const std::string& name = "");

/// The first of them, or null.
xmlNode* ChildOf(const xmlNode& parent, const std::string& name);

std::string NameOf(const xmlNode& node);
std::string AttributeOf(xmlNode& node, const std::string& name);

/// The text of an element as the library reads it.
std::string TextOf(xmlNode& node);

/// The same of the child of that name; empty without one.
std::string TextOfChild(xmlNode& node, const std::string& name);

} // namespace Devkit
