#include <CppTools/autocli/Namespace.h>
#include <CppTools/autocli/formatters/Tokens.h>
#include <CppTools/autocli/plugins/ExtensionCommand.h>
#include <CppTools/autocli/plugins/NoFormatters.h>
#include <CppTools/autocli/plugins/XmlDescriptor.h>
#include <CppTools/autocli/plugins/XmlElements.h>
#include <CppTools/autocli/plugins/XmlNodeTree.h>
#include <CppTools/autocli/plugins/XmlPlugin.h>
#include <CppTools/autocli/plugins/XmlTree.h>
#include <CppTools/autocli/plugins/XmlUtil.h>
#include <CppTools/host/RegularFile.h>
#include <CppTools/metaobj/CppToolException.h>

#include <libxml/parser.h>
#include <libxml/xmlversion.h>

#include <list>
#include <optional>
#include <string_view>

namespace CppTools::AutoCli {

namespace {

constexpr const char* kVersion = "1.0.0";

/// A dotted path in two: what leads to the parent, with its last dot, and the node's own name. A
/// dot at the end of the whole path does not count.
struct PathPieces {
    std::string_view parents;
    std::string name;
};

PathPieces SplitPath(std::string_view path) {
    if (path.ends_with('.')) {
        path.remove_suffix(1);
    }
    const std::size_t parentsSize = path.rfind('.') + 1;
    return {path.substr(0, parentsSize), std::string(path.substr(parentsSize))};
}

/// The root element of a file that is a plain document; null for any other, and nothing is said
/// about the reason. Only regular files are read, since the others cannot be read again.
xmlNode* ReadPlainFile(const std::string& path, XmlNodeTree& tree) {
    const auto text = Host::ReadRegularFile(path, PlainXmlParser::kLongestText);
    return text ? tree.Read(*text) : nullptr;
}

/// The element that a command cannot do without.
_xmlNode* RequireChild(_xmlNode* element, const std::string& name) {
    auto* const child = XmlUtil_FindChildNode(element, name);
    if (child == nullptr) {
        throw CppToolException("Unable to find <" + name +
                               "> element, which is required for a command.");
    }
    return child;
}

std::shared_ptr<ExtensionCommand> BuildCommand(_xmlNode* element, const std::string& path) {
    if (path.empty()) {
        throw CppToolException("Invalid command specification found.  <command> tags must have a "
                               "non-empty 'path' attribute");
    }
    std::string description = XmlUtil_GetContentForChildByTag(element, "description");
    auto command = ExtensionCommand::New();
    command->SetDescription(std::move(description));
    if (auto* const metaData = XmlUtil_FindChildNode(element, "meta-data")) {
        ExtractMetaData(metaData);
    }
    command->SetInputSpec(ExtractInputSpec(RequireChild(element, "input-spec")));
    command->SetOutputSpec(ExtractOutputSpec(RequireChild(element, "output-spec")));
    ExtractFormatParams(RequireChild(element, "format-parameters"), *command);
    const std::string execute = XmlUtil_GetContentForChildByTag(element, "execute");
    if (execute.empty()) {
        throw CppToolException("Missing or empty <execute> tag.  This tag must specify a valid "
                               "execution string for this command.");
    }
    command->SetExecuteCommand(execute);
    command->SetStdin(XmlUtil_GetContentForChildByTag(element, "stdin"));
    return command;
}

bool AreNamespaces(NamespaceNode& one, NamespaceNode& other) {
    return one.GetType() == NamespaceNode::kNamespaceType &&
           other.GetType() == NamespaceNode::kNamespaceType;
}

std::shared_ptr<NamespaceNode> Resolve(const std::vector<std::string>& names, NamespaceNode& root) {
    std::list<std::string> path(names.begin(), names.end());
    return root.ResolveNode(path);
}

/// Where a node is to be registered, as far as the tree already goes; empty when an earlier
/// entry of the same descriptor has yet to create it.
std::shared_ptr<NamespaceNode> FindParent(const std::string& parents, NamespaceNode& root) {
    if (parents.empty()) {
        return root.GetThis();
    }
    const auto names = SplitTokens(parents, '.');
    if (!root.HasNamespaceNode(names.front())) {
        return nullptr;
    }
    try {
        return Resolve(names, root);
    } catch (const CppToolException&) {
        return nullptr;
    }
}

/// The parent that must be there by now.
std::shared_ptr<NamespaceNode> RequireParent(const std::string& parents, NamespaceNode& root) {
    auto parent = Resolve(SplitTokens(parents, '.'), root);
    return parent ? parent : root.GetThis();
}

} // namespace

/// Looks parents up one after the other. Most entries stand in the namespace of the entry before
/// them, so the last answer is kept.
class XmlPlugin::Parents {
  public:
    using Lookup = std::shared_ptr<NamespaceNode> (*)(const std::string&, NamespaceNode&);

    Parents(Lookup lookUp, NamespaceNode& root) : lookUp_(lookUp), root_(root) {}

    const std::shared_ptr<NamespaceNode>& Of(std::string_view parents) {
        if (!asked_ || *asked_ != parents) {
            asked_.reset();
            parent_ = lookUp_(std::string(parents), root_);
            asked_ = parents;
        }
        return parent_;
    }

    const NamespaceNode& Root() const { return root_; }

  private:
    Lookup lookUp_;
    NamespaceNode& root_;
    std::optional<std::string> asked_;
    std::shared_ptr<NamespaceNode> parent_;
};

XmlPlugin::XmlPlugin(const std::string& path) : path_(path) {}

XmlPlugin::~XmlPlugin() = default;

std::shared_ptr<XmlPlugin> XmlPlugin::New(const std::string& path) {
    return std::make_shared<XmlPlugin>(path);
}

void XmlPlugin::Initialize() {
    registrations_.clear();
    try {
        ReadDescriptor();
    } catch (const CppToolException& failure) {
        throw CppToolException("Unable to handle XML Plugin " + path_ +
                               ".  There was an error while parsing: " + failure.what());
    }
}

void XmlPlugin::ReadDescriptor() {
    LIBXML_TEST_VERSION
    XmlNodeTree tree;
    XmlDocument document;
    auto* root = ReadPlainFile(path_, tree);
    if (root == nullptr && !Host::IsSpecialFile(path_)) {
        document = ReadXmlFile(path_);
        root = document ? xmlDocGetRootElement(document.get()) : nullptr;
    }
    if (root == nullptr) {
        throw CppToolException("Unable to parse XML descriptor: " + path_);
    }
    if (XmlUtil_GetContentForChildByTag(root, "version") != kVersion) {
        throw CppToolException("Unknown tandril extention version.  Valid versions are: '1.0.0'");
    }
    auto* const namespaces = XmlUtil_FindChildNode(root, "namespaces");
    if (namespaces != nullptr) {
        AddNamespaces(namespaces);
    }
    auto* const commands = XmlUtil_FindChildNode(root, "commands");
    if (commands != nullptr) {
        AddCommands(commands);
    }
    registrations_.shrink_to_fit();
    if (namespaces == nullptr && commands == nullptr) {
        throw CppToolException("Unable to find any namespaces or commands to register for plugin " +
                               path_);
    }
}

void XmlPlugin::AddNamespaces(_xmlNode* namespaces) {
    ForEachElementNamed(*namespaces, "namespace", [this](_xmlNode* child) { AddNamespace(child); });
}

void XmlPlugin::AddNamespace(_xmlNode* element) {
    std::string path = AttributeOf(element, "path");
    std::string description = XmlUtil_GetContentForChildByTag(element, "description");
    if (path.empty() || description.empty()) {
        throw CppToolException("Unable to register a namespace without valid 'path' attribute or "
                               "<description> being present.");
    }
    auto created = Namespace::New();
    created->SetDescription(std::move(description));
    registrations_.emplace_back(std::move(path), std::move(created));
}

void XmlPlugin::AddCommands(_xmlNode* commands) {
    ForEachElementNamed(*commands, "command", [this](_xmlNode* child) { AddCommand(child); });
}

void XmlPlugin::AddCommand(_xmlNode* element) {
    const std::string path = AttributeOf(element, "path");
    try {
        registrations_.emplace_back(path, BuildCommand(element, path));
    } catch (const CppToolException& failure) {
        throw CppToolException("Unable to register the command 'tandril " + path + "'  Error was " +
                               failure.what());
    }
}

const std::string& XmlPlugin::GetName() const {
    return path_;
}

void XmlPlugin::RegisterNamespaces(std::shared_ptr<Namespace> root) {
    Parents found(FindParent, *root);
    for (const auto& registration : registrations_) {
        CheckRegistration(registration, found);
    }
    Parents required(RequireParent, *root);
    for (const auto& registration : registrations_) {
        Register(registration, required);
    }
}

void XmlPlugin::CheckRegistration(const Registration& registration, Parents& parents) const {
    const auto& [path, node] = registration;
    if (path.empty()) {
        throw CppToolException("Invalid NULL registration found in XML plugin: " + path_ +
                               " all namespaces and commands must have a valid 'path' field");
    }
    if (!node) {
        throw CppToolException("Invalid null node: " + path);
    }
    const auto pieces = SplitPath(path);
    const auto& parent = parents.Of(pieces.parents);
    const auto existing = parent ? parent->GetNamespaceNode(pieces.name) : nullptr;
    if (!existing) {
        return;
    }
    if (parent.get() != &parents.Root() || !AreNamespaces(*existing, *node)) {
        throw CppToolException("Tandril path is already registered: " + path);
    }
    if (existing->GetDescription() != node->GetDescription()) {
        throw CppToolException("Duplicate top-level namespaces must have the same description: " +
                               path);
    }
}

void XmlPlugin::Register(const Registration& registration, Parents& parents) {
    const auto& [path, node] = registration;
    const auto pieces = SplitPath(path);
    const auto& parent = parents.Of(pieces.parents);
    if (parent.get() == &parents.Root()) {
        const auto existing = parent->GetNamespaceNode(pieces.name);
        if (existing && AreNamespaces(*existing, *node) &&
            existing->GetDescription() == node->GetDescription()) {
            return;
        }
    }
    parent->RegisterNamespaceNode(node, pieces.name);
}

bool XmlPlugin::HasFormatter(const std::string& /*name*/) {
    return false;
}

std::shared_ptr<Formatter> XmlPlugin::GetFormatter(const std::string& /*name*/) {
    throw CppToolException("Xml Plugin doesn't not support formatters");
}

std::vector<std::shared_ptr<Formatter>>& XmlPlugin::GetFormatters() {
    return NoFormatters();
}

} // namespace CppTools::AutoCli
