#pragma once

#include <memory>
#include <string>

namespace CppTools::MetaObj {
class MetaObject;
} // namespace CppTools::MetaObj

namespace CppTools::AutoCli {

/// The value of the first element below the root of a document, which is read once from begin to
/// end and never held as a whole beside its text. Empty when there is no such element and when the
/// text is no well-formed document; libxml2 then says on standard error why not. Throws as
/// `XmlUtil_ParseXmlOutput` says, though only for well-formed documents.
std::shared_ptr<MetaObj::MetaObject> ReadDocument(const std::string& text);

} // namespace CppTools::AutoCli
