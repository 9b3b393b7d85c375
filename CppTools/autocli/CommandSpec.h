#pragma once

#include <CppTools/autocli/NamespaceNode.h>
#include <CppTools/autocli/formatters/FormatParameters.h>
#include <CppTools/callspec/CallTarget.h>

#include <utility>

namespace CppTools::AutoCli {

/// The declaring side of a command, a leaf of the tree: its parameters, the shape of its result,
/// examples, how its result is shown by default, and its help record.
class CPPTOOLS_EXPORT CommandSpec : public CallSpec::CallTargetSpec, public NamespaceNode {
  public:
    ~CommandSpec() override;

    /// What `GetInputSpecInternal` declares, with the built-in parameter "help" (short name "h")
    /// added. Built when first asked for; when that throws, the next call tries again. Throws
    /// what `InputSpec::AddParameter` throws when the command declares "help" or "h" itself, and
    /// "The command 'N' declares no input specification." for an empty declaration.
    std::shared_ptr<CallSpec::InputSpec> GetInputSpec() override;

    /// What `GetOutputSpecInternal` declares, asked for once. Throws "The command 'N' declares no
    /// output specification." for an empty declaration.
    std::shared_ptr<CallSpec::OutputSpec> GetOutputSpec() override;

    std::shared_ptr<NamespaceNode> GetThis() override;

    /// Always false: a command has no children.
    bool HasNamespaceNode(const std::string& name) override;

    /// Always throws "Unable to find a namespace or command with the name 'N' on the command
    /// 'P'. Commands cannot have sub-commands or sub-namespaces."
    std::shared_ptr<NamespaceNode> GetNamespaceNode(const std::string& name) override;

    /// Always throw "Attempt to register a command or namespace 'N' on command 'P'. Commands
    /// cannot have sub-commands or sub-namespaces."
    void RegisterNamespaceNode(std::shared_ptr<NamespaceNode> node, std::string name) override;
    void RegisterNamespaceNode(std::shared_ptr<NamespaceNode> node, const char* name) override;

    /// Always throws the text of `GetNamespaceNode`, with all names joined by one blank, and
    /// leaves the list as it is.
    std::shared_ptr<NamespaceNode> ResolveNode(std::list<std::string>& names) override;

    /// The parent's dispatcher. Without a parent this throws "Invalid state for command with
    /// name 'N'. No parent node has been set."
    Dispatcher* GetDispatcher() override;
    void SetParent(std::shared_ptr<NamespaceNode> parent) override;
    std::shared_ptr<NamespaceNode> GetParent() override;
    int GetType() override;

    /// The command's own declarations, made afresh or kept by the command. Two commands cannot
    /// share one input specification, since each adds its help parameter to it.
    virtual std::shared_ptr<CallSpec::InputSpec> GetInputSpecInternal() = 0;

    /// The shape of the result, see `GetOutputSpec`.
    virtual std::shared_ptr<CallSpec::OutputSpec> GetOutputSpecInternal() = 0;

    /// Pairs of arguments and description, in the order added.
    const std::vector<std::pair<std::string, std::string>>& GetExamples() const {
        return examples_;
    }

    /// Adds an example for the help record: what is typed after the path of the command, and what
    /// that does. Pointers must not be null.
    void AddExample(std::string arguments, std::string description);
    void AddExample(const char* arguments, const char* description);

    /// The formatter of results when the user names none. Until set nothing is printed. The name is
    /// looked up when a result is shown.
    void SetDefaultOutputFormatter(std::string name);
    void SetDefaultOutputFormatter(const char* name);

    /// A parameter for that formatter; the user's own win.
    void SetDefaultOutputParameter(std::string key, std::string value);
    void SetDefaultOutputParameter(const char* key, const char* value);

    /// A copy, so that the options of one call do not outlast it.
    FormatParameters GetDefaultOutputFormatParameters() const { return defaultOutputFormat_; }

    /// Makes the help record of this command the result of `output`.
    void GenerateHelpOutput(const std::shared_ptr<CallSpec::Input>& input,
                            const std::shared_ptr<CallSpec::Output>& output);

  protected:
    CommandSpec();

  private:
    std::vector<std::pair<std::string, std::string>> examples_;
    std::shared_ptr<CallSpec::InputSpec> inputSpec_;
    std::shared_ptr<CallSpec::OutputSpec> outputSpec_;
    FormatParameters defaultOutputFormat_;
    std::weak_ptr<NamespaceNode> parent_;
};

} // namespace CppTools::AutoCli
