#pragma once

#include <CppTools/Export.h>

#include <list>
#include <map>
#include <memory>
#include <string>
#include <vector>

/// The command tree, its commands, plug-ins and formatters, and the command-line front end.
namespace CppTools::AutoCli {

class Dispatcher;

/// Whether a node may have this name: letters and digits only, a lower-case letter or a digit
/// first, and never two upper-case letters in a row. Linear.
CPPTOOLS_EXPORT bool AutoCli_IsValidName(const std::string& name);

/// A node of the command tree: the root, a namespace or a command.
///
/// A parent owns its children, which refer to it weakly. A node gets its name and its parent
/// when it is registered, once; nothing is ever unregistered. The tree is used by one thread at
/// a time. Every node must be held by a shared pointer.
class CPPTOOLS_EXPORT NamespaceNode : public std::enable_shared_from_this<NamespaceNode> {
  public:
    /// What `GetType` answers. The numbers are part of the interface.
    static constexpr int kRootType = 0;
    static constexpr int kNamespaceType = 1; ///< Has children of its own.
    static constexpr int kCommandType = 2;   ///< A leaf, which is a `Command`.

    virtual ~NamespaceNode();
    NamespaceNode(const NamespaceNode&) = delete;
    NamespaceNode& operator=(const NamespaceNode&) = delete;

    /// This node; `std::bad_weak_ptr` is thrown when no shared pointer holds it.
    virtual std::shared_ptr<NamespaceNode> GetThis() = 0;

    /// One of the three numbers above.
    virtual int GetType() = 0;

    /// The names from below the root down to this node. Throws "GetPath: Invalid state for
    /// Namespace Node with the name 'N' No parent node has been set".
    virtual std::list<std::string> GetPath();

    /// The same names joined by `separator`; empty for the root. Throws the same text with
    /// "GetPathString: " in front.
    virtual std::string GetPathString(char separator);

    /// Whether there is a child of that name. Logarithmic.
    virtual bool HasNamespaceNode(const std::string& name);

    /// The children's names and the children, in ascending name order.
    virtual std::vector<std::string> GetNamespaceNodeNames();
    virtual std::vector<std::shared_ptr<NamespaceNode>> GetNamespaceNodes();

    /// The child of that name, or empty. Logarithmic.
    virtual std::shared_ptr<NamespaceNode> GetNamespaceNode(const std::string& name);

    /// Makes `node` a child of this node. Nothing has changed when this throws:
    /// - "Duplicate registration in namespace P attempt to register two objects with name N";
    /// - "Null namespace node named 'N' passed to namespace P";
    /// - what `SetName` throws.
    virtual void RegisterNamespaceNode(std::shared_ptr<NamespaceNode> node, std::string name);
    virtual void RegisterNamespaceNode(std::shared_ptr<NamespaceNode> node, const char* name);

    /// Follows `names` downwards from this node. Empty for an empty list. On success the list
    /// is as it was; when an exception leaves, it lacks the names up to the failing one. Throws
    /// "Unable to find a command or namespace with the name 'N' in namespace P".
    virtual std::shared_ptr<NamespaceNode> ResolveNode(std::list<std::string>& names);

    /// The child of that name, whatever it is, or else a new namespace registered under it.
    /// Throws like `RegisterNamespaceNode`.
    virtual std::shared_ptr<NamespaceNode> SubNamespace(const std::string& name);

    /// The dispatcher that the tree belongs to, not owned.
    virtual Dispatcher* GetDispatcher() = 0;

    /// Called by the parent that registers this node, which then is referred to weakly.
    virtual void SetParent(std::shared_ptr<NamespaceNode> parent) = 0;

    /// Empty when the node is not registered or its parent is gone.
    virtual std::shared_ptr<NamespaceNode> GetParent() = 0;

    /// Empty until the node is registered.
    const std::string& GetName() const { return name_; }

    /// Throws "Invalid name for namespace 'N', must be a name consisting of letters and numbers
    /// and must conform to 'camel' casing."
    void SetName(const std::string& name);

    /// One or two sentences for listings and help; empty until set.
    const std::string& GetDescription() const { return description_; }

    /// Replaces the description. The pointer must not be null.
    void SetDescription(std::string description);
    void SetDescription(const char* description);

  protected:
    NamespaceNode();

  private:
    std::string name_;
    std::string description_;
    std::map<std::string, std::shared_ptr<NamespaceNode>> children_;
};

} // namespace CppTools::AutoCli
