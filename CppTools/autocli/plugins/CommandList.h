#pragma once

#include <CppTools/autocli/Command.h>

namespace CppTools::MetaObj {
class MetaList;
class MetaStruct;
} // namespace CppTools::MetaObj

namespace CppTools::AutoCli {

class Namespace;

/// `tandril command list`: every command of the tree with its namespace and description,
/// optionally narrowed by three case-sensitive substring filters.
class CPPTOOLS_EXPORT CommandList : public Command {
  public:
    /// Lists the tree below `root`, which owns this command in the end and is not kept alive by
    /// it.
    explicit CommandList(std::shared_ptr<Namespace> root);
    ~CommandList() override;

    /// Makes one, see the constructor.
    static std::shared_ptr<CommandList> New(std::shared_ptr<Namespace> root);

    std::shared_ptr<CallSpec::InputSpec> GetInputSpecInternal() override;
    std::shared_ptr<CallSpec::OutputSpec> GetOutputSpecInternal() override;
    void ExecuteInternal(const std::shared_ptr<CallSpec::Input>& input,
                         const std::shared_ptr<CallSpec::Output>& output) override;

  private:
    std::shared_ptr<MetaObj::MetaStruct> GetOutputStructure() const;
    void AddChildren(const std::string& namespaceFilter, const std::string& commandFilter,
                     const std::string& descriptionFilter, NamespaceNode& node,
                     MetaObj::MetaList& list) const;

    Namespace* root_;
};

} // namespace CppTools::AutoCli
