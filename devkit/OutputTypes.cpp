#include <devkit/OutputTypes.h>

#include <CppTools/CppTools.h>

namespace Devkit {

namespace {

using CppTools::MetaObj::MetaList;
using CppTools::MetaObj::MetaObject;
using CppTools::MetaObj::MetaStruct;

void Collect(const std::shared_ptr<MetaObject>& value, OutputTypes& types) {
    if (const auto list = std::dynamic_pointer_cast<MetaList>(value)) {
        Collect(list->GetListStructure(), types);
    } else if (const auto structure = std::dynamic_pointer_cast<MetaStruct>(value)) {
        types.emplace(structure->GetTypeName(), structure);
        for (const std::string& name : structure->GetFieldNames()) {
            Collect(structure->GetField(name), types);
        }
    }
}

} // namespace

OutputTypes TypesOf(const std::shared_ptr<MetaObject>& prototype) {
    OutputTypes types;
    Collect(prototype, types);
    return types;
}

std::shared_ptr<MetaStruct> RowTypeOf(const std::shared_ptr<MetaObject>& prototype) {
    const auto list = std::dynamic_pointer_cast<MetaList>(prototype);
    return list ? list->GetListStructure() : nullptr;
}

} // namespace Devkit
