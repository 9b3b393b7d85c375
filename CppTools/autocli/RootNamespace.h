#pragma once

#include <CppTools/autocli/Namespace.h>

namespace CppTools::AutoCli {

/// The root of one dispatcher's command tree. It has no name, no parent and an empty path.
class CPPTOOLS_EXPORT RootNamespace : public Namespace {
  public:
    /// `dispatcher` is not owned and must outlive every question for it.
    explicit RootNamespace(Dispatcher* dispatcher);
    ~RootNamespace() override;

    /// Makes a root of its own tree. `dispatcher` is not owned and may be null.
    static std::shared_ptr<RootNamespace> New(Dispatcher* dispatcher);

    std::shared_ptr<NamespaceNode> GetThis() override;
    int GetType() override;
    std::list<std::string> GetPath() override;
    std::string GetPathString(char separator) override;
    Dispatcher* GetDispatcher() override;

    /// Always throws "Error, Root namespace cannot be assigned a parent node".
    void SetParent(std::shared_ptr<NamespaceNode> parent) override;

    /// Always empty.
    std::shared_ptr<NamespaceNode> GetParent() override;

  private:
    Dispatcher* dispatcher_;
};

} // namespace CppTools::AutoCli
