#include <CppTools/metaobj/FieldValue.h>
#include <CppTools/metaobj/MetaBool.h>
#include <CppTools/metaobj/MetaInt.h>
#include <CppTools/metaobj/MetaList.h>
#include <CppTools/metaobj/MetaString.h>
#include <CppTools/metaobj/MetaStruct.h>
#include <CppTools/metaobj/StructShape.h>

// The typed forms of `SetField`. Each ends in the general one.

namespace CppTools::MetaObj {

namespace {

const std::string _docEmpty;

template <typename Values>
std::shared_ptr<MetaList> NewList(MetaType type, Values&& values) {
    auto list = MetaList::New(type);
    list->AddAll(std::forward<Values>(values));
    return list;
}

} // namespace

void MetaStruct::SetField(const std::string& name, const std::shared_ptr<MetaObject>& value) {
    SetField(name, value, _docEmpty);
}

void MetaStruct::SetField(const std::string& name, const std::shared_ptr<MetaList>& value) {
    SetField(name, value, _docEmpty);
}

void MetaStruct::SetField(const std::string& name, const std::shared_ptr<MetaStruct>& value) {
    SetField(name, value, _docEmpty);
}

void MetaStruct::SetField(const std::string& name, const std::shared_ptr<MetaInt>& value) {
    SetField(name, value, _docEmpty);
}

void MetaStruct::SetField(const std::string& name, const std::shared_ptr<MetaBool>& value) {
    SetField(name, value, _docEmpty);
}

void MetaStruct::SetField(const std::string& name, const std::shared_ptr<MetaString>& value) {
    SetField(name, value, _docEmpty);
}

void MetaStruct::SetField(const std::string& name, long value) {
    SlotFor(name, _docEmpty).Set(value);
}

void MetaStruct::SetField(const std::string& name, int value) {
    SlotFor(name, _docEmpty).Set(static_cast<long>(value));
}

void MetaStruct::SetField(const std::string& name, bool value) {
    SlotFor(name, _docEmpty).Set(value);
}

void MetaStruct::SetField(const std::string& name, const std::string& value) {
    SlotFor(name, _docEmpty).Set(std::string_view(value));
}

void MetaStruct::SetField(const std::string& name, const char* value) {
    SlotFor(name, _docEmpty).Set(std::string_view(value));
}

void MetaStruct::SetField(const std::string& name, std::string&& value) {
    SlotFor(name, _docEmpty).Set(std::move(value));
}

void MetaStruct::SetField(const std::string& name, const std::vector<std::string>& values) {
    SetField(name, NewList(MetaType::String, values), _docEmpty);
}

void MetaStruct::SetField(const std::string& name, std::vector<std::string>&& values) {
    SetField(name, NewList(MetaType::String, std::move(values)), _docEmpty);
}

void MetaStruct::SetField(const std::string& name, const std::vector<long>& values) {
    SetField(name, NewList(MetaType::Int, values), _docEmpty);
}

void MetaStruct::SetField(const std::string& name, const std::vector<bool>& values) {
    SetField(name, NewList(MetaType::Bool, values), _docEmpty);
}

void MetaStruct::SetField(const char* name, const std::shared_ptr<MetaObject>& value) {
    SetField(std::string(name), value);
}

void MetaStruct::SetField(const char* name, const std::shared_ptr<MetaList>& value) {
    SetField(std::string(name), value);
}

void MetaStruct::SetField(const char* name, const std::shared_ptr<MetaStruct>& value) {
    SetField(std::string(name), value);
}

void MetaStruct::SetField(const char* name, const std::shared_ptr<MetaInt>& value) {
    SetField(std::string(name), value);
}

void MetaStruct::SetField(const char* name, const std::shared_ptr<MetaBool>& value) {
    SetField(std::string(name), value);
}

void MetaStruct::SetField(const char* name, const std::shared_ptr<MetaString>& value) {
    SetField(std::string(name), value);
}

void MetaStruct::SetField(const char* name, long value) {
    SlotFor(name, _docEmpty).Set(value);
}

void MetaStruct::SetField(const char* name, int value) {
    SlotFor(name, _docEmpty).Set(static_cast<long>(value));
}

void MetaStruct::SetField(const char* name, bool value) {
    SlotFor(name, _docEmpty).Set(value);
}

void MetaStruct::SetField(const char* name, const std::string& value) {
    SlotFor(name, _docEmpty).Set(std::string_view(value));
}

void MetaStruct::SetField(const char* name, const char* value) {
    SlotFor(name, _docEmpty).Set(std::string_view(value));
}

void MetaStruct::SetField(const char* name, std::string&& value) {
    SlotFor(name, _docEmpty).Set(std::move(value));
}

void MetaStruct::SetField(const char* name, const std::vector<std::string>& values) {
    SetField(std::string(name), values);
}

void MetaStruct::SetField(const char* name, std::vector<std::string>&& values) {
    SetField(std::string(name), std::move(values));
}

void MetaStruct::SetField(const char* name, const std::vector<long>& values) {
    SetField(std::string(name), values);
}

void MetaStruct::SetField(const char* name, const std::vector<bool>& values) {
    SetField(std::string(name), values);
}

} // namespace CppTools::MetaObj
