#pragma once

#include <CppTools/metaobj/MetaBool.h>
#include <CppTools/metaobj/MetaInt.h>
#include <CppTools/metaobj/MetaList.h>
#include <CppTools/metaobj/MetaString.h>
#include <CppTools/metaobj/MetaStruct.h>

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

/// Calls `writer.WriteValue` with the value as what it is, or `writer.WriteFailure` with its kind
/// when it is something else than it claims.
template <typename Value, typename Writer>
void DispatchAs(const MetaObj::MetaObject& value, Writer& writer, int level) {
    if (const auto* converted = dynamic_cast<const Value*>(&value)) {
        writer.WriteValue(*converted, level);
    } else {
        writer.WriteFailure(value.GetType());
    }
}

/// Hands a value at a nesting level to a writer of one format, by its kind; one of no known kind
/// goes to `writer.WriteUnknown`.
template <typename Writer>
void Dispatch(const MetaObj::MetaObject& value, Writer& writer, int level) {
    switch (value.GetType()) {
    case MetaObj::MetaType::Bool:
        return DispatchAs<MetaObj::MetaBool>(value, writer, level);
    case MetaObj::MetaType::Int:
        return DispatchAs<MetaObj::MetaInt>(value, writer, level);
    case MetaObj::MetaType::String:
        return DispatchAs<MetaObj::MetaString>(value, writer, level);
    case MetaObj::MetaType::Struct:
        return DispatchAs<MetaObj::MetaStruct>(value, writer, level);
    case MetaObj::MetaType::List:
        return DispatchAs<MetaObj::MetaList>(value, writer, level);
    }
    writer.WriteUnknown();
}

} // namespace CppTools::AutoCli
