#pragma once

#include <CppTools/metaobj/MetaObject.h>

namespace CppTools::MetaObj {

/// A signed 64-bit integer. The values -1 to 20 are shared instances and are never allocated.
class CPPTOOLS_EXPORT MetaInt final : public MetaObject {
  public:
    /// For `New` alone.
    MetaInt(long value, FactoryFlag flag) : MetaObject(MetaType::Int, flag), value_(value) {}

    /// The shared instance of 0.
    static std::shared_ptr<MetaInt> New();
    static std::shared_ptr<MetaInt> New(long value);

    /// The value, which never changes.
    long GetValue() const { return value_; }

    /// Decimal, with a leading "-" for negative values.
    std::string ToString() const override;

    /// Builds the shared instances when the library is loaded; later calls change nothing.
    /// Always true.
    static bool Init();

  private:
    static bool _sInitialized;

    long value_;
};

} // namespace CppTools::MetaObj
