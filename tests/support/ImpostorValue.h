#pragma once

#include <CppTools/metaobj/MetaList.h>
#include <CppTools/metaobj/MetaObject.h>

#include <memory>
#include <string>
#include <vector>

namespace TestSupport {

/// A value that claims a kind without being an object of that kind's class, as a plug-in that
/// derives from `MetaObject` could make one.
class ImpostorValue final : public CppTools::MetaObj::MetaObject {
  public:
    explicit ImpostorValue(CppTools::MetaObj::MetaType claimed)
        : MetaObject(claimed, FactoryFlag{}) {}

    static std::shared_ptr<MetaObject> New(CppTools::MetaObj::MetaType claimed) {
        return std::make_shared<ImpostorValue>(claimed);
    }

    std::string ToString() const override { return "impostor"; }
};

/// A number that stands for no kind.
inline constexpr auto kUnknownKind = static_cast<CppTools::MetaObj::MetaType>(7);

/// The elements themselves, to damage a list in ways that its own interface refuses.
inline std::vector<std::shared_ptr<CppTools::MetaObj::MetaObject>>&
ElementsOf(const std::shared_ptr<CppTools::MetaObj::MetaList>& list) {
    return const_cast<std::vector<std::shared_ptr<CppTools::MetaObj::MetaObject>>&>(
        list->GetObjects());
}

} // namespace TestSupport
