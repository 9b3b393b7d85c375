#pragma once

#include <CppTools/metaobj/MetaBool.h>
#include <CppTools/metaobj/MetaInt.h>
#include <CppTools/metaobj/MetaList.h>
#include <CppTools/metaobj/MetaString.h>
#include <CppTools/metaobj/MetaStruct.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

/// Value trees written down in one expression.
namespace TestSupport {

using Value = std::shared_ptr<CppTools::MetaObj::MetaObject>;
using Record = std::shared_ptr<CppTools::MetaObj::MetaStruct>;

inline Value Int(long value) {
    return CppTools::MetaObj::MetaInt::New(value);
}

inline Value Bool(bool value) {
    return CppTools::MetaObj::MetaBool::New(value);
}

inline Value Text(std::string value) {
    return CppTools::MetaObj::MetaString::New(std::move(value));
}

inline Value Ints(const std::vector<long>& values) {
    const auto list = CppTools::MetaObj::MetaList::New(CppTools::MetaObj::MetaType::Int);
    list->AddAll(values);
    return list;
}

inline Value Bools(const std::vector<bool>& values) {
    const auto list = CppTools::MetaObj::MetaList::New(CppTools::MetaObj::MetaType::Bool);
    list->AddAll(values);
    return list;
}

inline Value Texts(const std::vector<std::string>& values) {
    const auto list = CppTools::MetaObj::MetaList::New(CppTools::MetaObj::MetaType::String);
    list->AddAll(values);
    return list;
}

inline Record Struct(const std::string& typeName,
                     const std::vector<std::pair<std::string, Value>>& fields) {
    const auto st = CppTools::MetaObj::MetaStruct::New(typeName);
    for (const auto& [name, value] : fields) {
        st->SetField(name, value);
    }
    return st;
}

/// A list of structures under a template of its own.
inline std::shared_ptr<CppTools::MetaObj::MetaList> Rows(const Record& pattern,
                                                         const std::vector<Record>& rows) {
    const auto list =
        CppTools::MetaObj::MetaList::New(CppTools::MetaObj::MetaType::Struct, pattern);
    for (const auto& row : rows) {
        list->Add(row);
    }
    return list;
}

/// A list of structures whose template has the type name and the fields of the first.
inline std::shared_ptr<CppTools::MetaObj::MetaList> Rows(const std::vector<Record>& rows) {
    const auto pattern = CppTools::MetaObj::MetaStruct::New(rows.front()->GetTypeName());
    for (const auto& name : rows.front()->GetFieldNames()) {
        pattern->SetField(name, rows.front()->GetField(name));
    }
    return Rows(pattern, rows);
}

} // namespace TestSupport
