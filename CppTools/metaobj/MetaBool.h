#pragma once

#include <CppTools/metaobj/MetaObject.h>

namespace CppTools::MetaObj {

/// A boolean. There are two instances, shared by everybody; nothing is ever allocated for one.
class CPPTOOLS_EXPORT MetaBool final : public MetaObject {
  public:
    /// For `New` alone.
    MetaBool(bool value, FactoryFlag flag) : MetaObject(MetaType::Bool, flag), value_(value) {}

    /// The shared instance of false. References from both forms stay valid until the library is
    /// unloaded.
    static const std::shared_ptr<MetaBool>& New();
    static const std::shared_ptr<MetaBool>& New(bool value);

    /// The value, which never changes.
    bool GetValue() const { return value_; }

    /// "true" or "false".
    std::string ToString() const override;

    /// Builds the shared instances when the library is loaded; later calls change nothing.
    /// Always true.
    static bool Init();

  private:
    static bool _sInitialized;

    bool value_;
};

} // namespace CppTools::MetaObj
