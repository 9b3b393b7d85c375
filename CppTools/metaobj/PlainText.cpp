#include <CppTools/metaobj/MetaList.h>
#include <CppTools/metaobj/MetaString.h>
#include <CppTools/metaobj/MetaStruct.h>
#include <CppTools/metaobj/PlainText.h>

namespace CppTools::MetaObj {

void PlainTextWriter::Append(const MetaObject& value) {
    switch (value.GetType()) {
    case MetaType::String:
        text_ += static_cast<const MetaString&>(value).GetValue();
        break;
    case MetaType::List:
        AppendList(static_cast<const MetaList&>(value));
        break;
    case MetaType::Struct:
        AppendStruct(static_cast<const MetaStruct&>(value));
        break;
    default:
        text_ += value.ToString();
    }
}

void PlainTextWriter::AppendList(const MetaList& list) {
    const char* separator = "";
    for (const auto& item : list.GetObjects()) {
        text_ += separator;
        Append(*item);
        separator = ", ";
    }
}

void PlainTextWriter::AppendStruct(const MetaStruct& structure) {
    text_ += '{';
    for (const auto& [name, field] : structure.fields_) {
        text_ += '\'';
        text_ += name;
        text_ += "' => '";
        Append(*field.value);
        text_ += "', ";
    }
    text_ += '}';
}

} // namespace CppTools::MetaObj
