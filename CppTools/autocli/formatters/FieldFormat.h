#pragma once

#include <CppTools/autocli/formatters/PrintfFormat.h>
#include <CppTools/metaobj/FieldValue.h>

#include <optional>
#include <string>
#include <string_view>

namespace CppTools::MetaObj {
class MetaStruct;
} // namespace CppTools::MetaObj

namespace CppTools::AutoCli {

class FormatParameters;
class TextBuffer;

/// How the values of one field of one type of structure are shown: what the parameters "printf:T.F"
/// and "units:T.F" ask for, looked up once for many values.
class FieldFormat {
  public:
    /// `params` must outlive this, unchanged.
    FieldFormat(const std::string& typeName, const std::string& fieldName,
                const FormatParameters& params);

    /// Writes the text of the value.
    void Write(const MetaObj::FieldValue& value, TextBuffer& out) const;

    /// How wide a text is made, and of what.
    struct Padding {
        std::size_t width;
        char fill;
    };

    /// The same with the padding behind it, or before it.
    void WriteLeft(const MetaObj::FieldValue& value, Padding padding, TextBuffer& out) const;
    void WriteRight(const MetaObj::FieldValue& value, Padding padding, TextBuffer& out) const;

    /// The length of what `Write` writes.
    std::size_t Length(const MetaObj::FieldValue& value) const;

    /// The text of a value: its plain text, or what the format makes of it, and the units.
    std::string Text(const MetaObj::MetaObject& value) const;

  private:
    bool IsPlain() const { return !printf_ && units_ == nullptr; }

    std::string Text(const MetaObj::FieldValue& value) const;

    template <typename Content>
    std::string TextOf(const Content& content) const;

    std::string printfKey_;
    std::optional<PrintfFormat> printf_;
    std::size_t printfRoom_ = 0; ///< For what the format makes, beyond the plain text's length.
    const std::string* units_;   ///< Null when there is no such parameter.
};

/// The value that a path names, found as `GetSubField` finds it; null when there is none.
MetaObj::FieldValue* FindSubField(const MetaObj::MetaStruct& structure, std::string_view path);

} // namespace CppTools::AutoCli
