#pragma once

#include <CppTools/metaobj/MetaObject.h>

namespace CppTools::MetaObj {

/// A byte string, UTF-8 by convention. The empty string is one shared instance.
class CPPTOOLS_EXPORT MetaString final : public MetaObject {
  public:
    /// For `New` alone.
    MetaString(std::string value, FactoryFlag flag)
        : MetaObject(MetaType::String, flag), value_(std::move(value)) {}

    /// The shared empty string. The reference stays valid until the library is unloaded.
    static const std::shared_ptr<MetaString>& New();

    /// `text` must not be null.
    static std::shared_ptr<MetaString> New(const char* text);
    static std::shared_ptr<MetaString> New(const std::string& text);
    static std::shared_ptr<MetaString> New(std::string&& text);

    /// For text of unknown origin: well-formed UTF-8 is stored unchanged; otherwise every byte
    /// that is not part of a well-formed sequence is stored as "\x" and two lower-case
    /// hexadecimal digits, and all other bytes stay. The whole text is tested, bytes behind an
    /// embedded NUL included. Linear in the length.
    static std::shared_ptr<MetaString> NewUtf8WithEscapes(std::string&& text);

    /// Valid as long as this value is.
    const std::string& GetValue() const { return value_; }

    /// The value, without quotes or escapes.
    std::string ToString() const override;

    /// Builds the shared instance when the library is loaded; later calls change nothing.
    /// Always true.
    static bool Init();

  private:
    static bool _sInitialized;

    std::string value_;
};

} // namespace CppTools::MetaObj
