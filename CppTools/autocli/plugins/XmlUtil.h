#pragma once

#include <CppTools/Export.h>

#include <memory>
#include <string>

struct _xmlNode; // libxml2's node

namespace CppTools::MetaObj {
class MetaList;
class MetaObject;
class MetaStruct;
} // namespace CppTools::MetaObj

/// Reading of XML elements, and of the documents that extension commands print. Nodes are
/// libxml2 nodes that the caller owns and must not be null. Only elements are looked at; one that
/// is named "text" or "comment" is passed over like a text or a comment.
namespace CppTools::AutoCli {

/// The attribute's value; empty when it is absent.
CPPTOOLS_EXPORT std::string XmlUtil_ExtractAttribute(_xmlNode* node, const std::string& name);

/// The content of the last child node that has one, comments and processing instructions
/// included; empty when no child has. The texts of several children are not joined.
CPPTOOLS_EXPORT std::string XmlUtil_GetContent(_xmlNode* node);

/// The text of the child element of that name; empty when there is none. Throws "Illegal
/// Duplicate tags found.  The tag T was expected only once, but was found multiple times." when
/// another follows one that was not empty.
CPPTOOLS_EXPORT std::string XmlUtil_GetContentForChildByTag(_xmlNode* node, const std::string& tag);

/// The child element of that name, or null. Throws "More than one instance of N found, expected
/// only one."
CPPTOOLS_EXPORT _xmlNode* XmlUtil_FindChildNode(_xmlNode* node, const std::string& name);

/// The value that an element describes. Throws
/// - "Trying to make a meta object from a text field";
/// - "Trying to make a meta object from a comment";
/// - "Unable to read an int value from: 'T'", for numbers out of range too;
/// - "Unable to make a MetaObject from a node with tag 'N'";
/// - what the two functions below throw.
CPPTOOLS_EXPORT std::shared_ptr<MetaObj::MetaObject> XmlUtil_BuildMetaObject(_xmlNode* node);

/// The list that a list element describes; a list of structures takes its first item as the
/// template. Throws "Invalid list type attribute.  Must be one of [string, int, bool, structure,
/// list]" and what `MetaList::New` and `Add` throw.
CPPTOOLS_EXPORT std::shared_ptr<MetaObj::MetaList> BuildMetaList(_xmlNode* node);

/// The structure that a structure element describes. Throws "Invalid <field> tag found.  <field>
/// requires a 'name' attribute." and what `MetaStruct::New` throws.
CPPTOOLS_EXPORT std::shared_ptr<MetaObj::MetaStruct> BuildMetaStruct(_xmlNode* node);

/// The value of a whole document: that of the first element below its root. Empty when there is
/// none, and when `text` is no well-formed document. Throws "Error parsing command output. ..."
/// and the reason when the element describes no value.
CPPTOOLS_EXPORT std::shared_ptr<MetaObj::MetaObject>
XmlUtil_ParseXmlOutput(const std::string& text);

} // namespace CppTools::AutoCli
