#include <CppTools/metaobj/MetaList.h>
#include <CppTools/metaobj/MetaString.h>
#include <CppTools/metaobj/MetaStruct.h>
#include <CppTools/metaobj/PlainText.h>

namespace CppTools::MetaObj {

void PlainTextWriter::Append(const MetaObject& value) {
    if (const auto* text = dynamic_cast<const MetaString*>(&value)) {
        text_ += text->GetValue();
    } else if (const auto* list = dynamic_cast<const MetaList*>(&value)) {
        AppendList(*list);
    } else if (const auto* structure = dynamic_cast<const MetaStruct*>(&value)) {
        AppendStruct(*structure);
    } else {
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
