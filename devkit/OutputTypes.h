#pragma once

#include <map>
#include <memory>
#include <string>

namespace CppTools::MetaObj {
class MetaObject;
class MetaStruct;
} // namespace CppTools::MetaObj

namespace Devkit {

/// The structures of a declared result by the names of their types, nested ones too.
using OutputTypes = std::map<std::string, std::shared_ptr<CppTools::MetaObj::MetaStruct>>;

OutputTypes TypesOf(const std::shared_ptr<CppTools::MetaObj::MetaObject>& prototype);

/// The structure of a list's elements; empty when it is no list of structures.
std::shared_ptr<CppTools::MetaObj::MetaStruct>
RowTypeOf(const std::shared_ptr<CppTools::MetaObj::MetaObject>& prototype);

} // namespace Devkit
