#include <CppTools/metaobj/MetaList.h>
#include <CppTools/metaobj/MetaString.h>
#include <CppTools/metaobj/PlainText.h>
#include <CppTools/metaobj/StructFields.h>
#include <CppTools/metaobj/ValueCast.h>

namespace CppTools::MetaObj {

void PlainTextWriter::Append(const MetaObject& value) {
    if (const auto* text = ValueAs<MetaString>(value)) {
        text_ += text->GetValue();
    } else if (const auto* list = ValueAs<MetaList>(value)) {
        AppendList(*list);
    } else if (const auto* structure = ValueAs<MetaStruct>(value)) {
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
    for (const auto& [name, value] : StructFields(structure)) {
        text_ += '\'';
        text_ += name;
        text_ += "' => '";
        value.Visit([this](const auto& content) { Append(content); });
        text_ += "', ";
    }
    text_ += '}';
}

std::string PlainText(const FieldValue& value) {
    std::string text;
    value.Visit(
        [writer = PlainTextWriter(text)](const auto& content) mutable { writer.Append(content); });
    return text;
}

} // namespace CppTools::MetaObj
