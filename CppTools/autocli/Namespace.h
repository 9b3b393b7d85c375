#pragma once

#include <CppTools/autocli/NamespaceNode.h>

namespace CppTools::AutoCli {

/// An inner node of the command tree.
class CPPTOOLS_EXPORT Namespace : public NamespaceNode {
  public:
    Namespace();
    ~Namespace() override;

    /// Makes one that is not yet registered.
    static std::shared_ptr<Namespace> New();

    std::shared_ptr<NamespaceNode> GetThis() override;
    int GetType() override;

    /// The parent's dispatcher. Without a parent this throws "Invalid state for namespace 'Nno
    /// parent has been set while attempting to get dispathcer reference."
    Dispatcher* GetDispatcher() override;
    void SetParent(std::shared_ptr<NamespaceNode> parent) override;
    std::shared_ptr<NamespaceNode> GetParent() override;

  private:
    std::weak_ptr<NamespaceNode> parent_;
};

} // namespace CppTools::AutoCli
