#pragma once

#include <CppTools/metaobj/MetaObject.h>

namespace CppTools::MetaObj {

class MetaList;
class MetaStruct;

/// Appends the plain text form of values to one text, so that nested values are not copied once
/// for each level above them.
class PlainTextWriter {
  public:
    explicit PlainTextWriter(std::string& text) : text_(text) {}

    void Append(const MetaObject& value);
    void AppendList(const MetaList& list);
    void AppendStruct(const MetaStruct& structure);

    /// The room that `ToString` sets aside for each item or field of the outermost value.
    static constexpr std::size_t kRoomPerItem = 15;

  private:
    std::string& text_;
};

} // namespace CppTools::MetaObj
