#pragma once

#include <CppTools/metaobj/MetaObject.h>

#include <string>
#include <string_view>

namespace CppTools::MetaObj {

class FieldValue;
class MetaList;
class MetaStruct;

/// Appends the plain text form of values to one text, so that nested values are not copied once
/// for each level above them.
class PlainTextWriter {
  public:
    explicit PlainTextWriter(std::string& text) : text_(text) {}

    void Append(const MetaObject& value);

    void Append(bool value) { text_ += value ? "true" : "false"; }

    void Append(long value) { text_ += std::to_string(value); }

    void Append(std::string_view text) { text_ += text; }

    void AppendList(const MetaList& list);
    void AppendStruct(const MetaStruct& structure);

    /// The room that `ToString` sets aside for each item or field of the outermost value.
    static constexpr std::size_t kRoomPerItem = 15;

  private:
    std::string& text_;
};

/// The plain text form of a field's value, which must be present.
std::string PlainText(const FieldValue& value);

} // namespace CppTools::MetaObj
