#pragma once

#include <CppTools/metaobj/MetaBool.h>
#include <CppTools/metaobj/MetaInt.h>
#include <CppTools/metaobj/MetaList.h>
#include <CppTools/metaobj/MetaString.h>
#include <CppTools/metaobj/StructFields.h>
#include <CppTools/metaobj/ValueCast.h>

#include <string_view>

namespace CppTools::AutoCli {

/// What formatters write in place of a value whose class is not that of the kind that it claims.
inline const char* ConversionFailure(MetaObj::MetaType kind) {
    switch (kind) {
    case MetaObj::MetaType::Bool:
        return "Error reading a bool";
    case MetaObj::MetaType::Int:
        return "Error reading a int";
    case MetaObj::MetaType::String:
        return "Error reading a string";
    case MetaObj::MetaType::Struct:
        return "Error reading a struct from output.";
    case MetaObj::MetaType::List:
        break;
    }
    return "Error reading a List";
}

/// Hands a value at a nesting level to a writer of one format as what it is: to `writer.Write` as
/// a bool, a long, a std::string_view, a structure or a list; to `writer.WriteFailure`, with its
/// kind, when it is something else than it claims; to `writer.WriteUnknown` when it is of no known
/// kind.
template <typename Writer>
void Dispatch(const MetaObj::MetaObject& value, Writer& writer, int level) {
    using namespace MetaObj;
    switch (value.GetType()) {
    case MetaType::Bool:
        if (const auto* truth = ValueAs<MetaBool>(value)) {
            return writer.Write(truth->GetValue(), level);
        }
        break;
    case MetaType::Int:
        if (const auto* number = ValueAs<MetaInt>(value)) {
            return writer.Write(number->GetValue(), level);
        }
        break;
    case MetaType::String:
        if (const auto* text = ValueAs<MetaString>(value)) {
            return writer.Write(std::string_view(text->GetValue()), level);
        }
        break;
    case MetaType::Struct:
        if (const auto* structure = ValueAs<MetaStruct>(value)) {
            return writer.Write(*structure, level);
        }
        break;
    case MetaType::List:
        if (const auto* list = ValueAs<MetaList>(value)) {
            return writer.Write(*list, level);
        }
        break;
    default:
        return writer.WriteUnknown();
    }
    writer.WriteFailure(value.GetType());
}

/// The same for the value of a field.
template <typename Writer>
void Dispatch(const MetaObj::FieldValue& value, Writer& writer, int level) {
    value.Visit([&]<typename Content>(const Content& content) {
        if constexpr (std::is_same_v<Content, MetaObj::MetaObject>) {
            Dispatch(content, writer, level);
        } else {
            writer.Write(content, level);
        }
    });
}

} // namespace CppTools::AutoCli
