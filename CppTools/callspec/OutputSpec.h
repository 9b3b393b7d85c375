#pragma once

#include <CppTools/callspec/Output.h>

namespace CppTools::CallSpec {

/// The declared shape of a command's result: a prototype of the root value, and a description.
class CPPTOOLS_EXPORT OutputSpec {
  public:
    /// Makes one that declares no result yet.
    static std::shared_ptr<OutputSpec> New();

    /// One sentence about the result, for help.
    void SetDescription(const std::string& description);

    /// "Documentation missing" when no description was set.
    const std::string& GetDescription() const;

    /// Sets the prototype. Throws "Root object cannot be set to null".
    void SetRootObject(std::shared_ptr<MetaObj::MetaObject>&& root);
    void SetRootObject(const std::shared_ptr<MetaObj::MetaObject>& root);
    void SetRootObject(const std::shared_ptr<MetaObj::MetaBool>& root);
    void SetRootObject(const std::shared_ptr<MetaObj::MetaInt>& root);
    void SetRootObject(const std::shared_ptr<MetaObj::MetaString>& root);
    void SetRootObject(const std::shared_ptr<MetaObj::MetaList>& root);
    void SetRootObject(const std::shared_ptr<MetaObj::MetaStruct>& root);

    /// Empty until one was set.
    std::shared_ptr<MetaObj::MetaObject> GetRootObject() const { return rootObject_; }

    /// Whether the root of `output` has the shape of the prototype, which is the pattern. The
    /// reasons go to `errors`, unless that is null.
    bool Validate(const std::shared_ptr<Output>& output, std::vector<std::string>* errors) const;

  private:
    std::shared_ptr<MetaObj::MetaObject> rootObject_;
    std::string description_;
};

} // namespace CppTools::CallSpec
