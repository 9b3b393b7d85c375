#pragma once

#include <CppTools/autocli/plugins/XmlElements.h>

#include <string>

/// Documents as libxml2's trees. Nothing that a document names is opened: no entity, no document
/// type, no other document, and nothing over a network. Elements nest 256 deep at most.
///
/// A document type can make a little text stand for very much: by entities that hold entities, and
/// by attributes with defaults. What all of them stand for where they are used may be 10 MB, or ten
/// times the document if that is more; the memory for reading a document stays in step with its
/// size. Beyond that, and where entities in attributes nest deeper than elements may, both
/// functions throw "The document's entities and attribute defaults stand for too much text".
namespace CppTools::AutoCli {

/// Empty when the file cannot be read or is no well-formed document; libxml2 then says on standard
/// error why not.
XmlDocument ReadXmlFile(const std::string& path);

/// The same of a text, whose size an int can hold; libxml2 calls it `name`.
XmlDocument ReadXmlText(const std::string& text, const char* name);

} // namespace CppTools::AutoCli
