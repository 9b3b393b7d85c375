#pragma once

#include <CppTools/autocli/plugins/Plugin.h>

#include <string>
#include <utility>
#include <vector>

struct _xmlNode;

namespace CppTools::AutoCli {

class NamespaceNode;

/// A plug-in described by an XML file (version "1.0.0"), whose commands run shell templates.
/// Several descriptors may share a top-level namespace if they describe it alike.
class CPPTOOLS_EXPORT XmlPlugin : public Plugin {
  public:
    /// Touches no file before `Initialize`.
    explicit XmlPlugin(const std::string& path);
    ~XmlPlugin() override;

    /// Touches no file.
    static std::shared_ptr<XmlPlugin> New(const std::string& path);

    /// Reads the whole descriptor; a second call reads it afresh. Throws "Unable to handle XML
    /// Plugin P.  There was an error while parsing: " and the reason.
    void Initialize() override;

    /// The path.
    const std::string& GetName() const override;

    /// Checks every namespace and command against the tree before it registers the first, so
    /// that a descriptor that clashes with another registers nothing. Throws
    /// - "Tandril path is already registered: " and the dotted path;
    /// - "Duplicate top-level namespaces must have the same description: " and the path;
    /// - what `NamespaceNode::RegisterNamespaceNode` and `ResolveNode` throw.
    void RegisterNamespaces(std::shared_ptr<Namespace> root) override;

    bool HasFormatter(const std::string& name) override;

    /// Always throws "Xml Plugin doesn't not support formatters".
    std::shared_ptr<Formatter> GetFormatter(const std::string& name) override;

    /// The same empty vector for every instance.
    std::vector<std::shared_ptr<Formatter>>& GetFormatters() override;

  private:
    /// A dotted path below the root, and what is to stand there.
    using Registration = std::pair<std::string, std::shared_ptr<NamespaceNode>>;

    void ReadDescriptor();
    void AddNamespaces(_xmlNode* namespaces);
    void AddNamespace(_xmlNode* element);
    void AddCommands(_xmlNode* commands);
    void AddCommand(_xmlNode* element);

    class Parents;
    void CheckRegistration(const Registration& registration, Parents& parents) const;
    static void Register(const Registration& registration, Parents& parents);

    std::string path_;
    std::vector<Registration> registrations_;
};

} // namespace CppTools::AutoCli
