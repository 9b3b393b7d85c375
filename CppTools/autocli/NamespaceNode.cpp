#include <CppTools/autocli/Namespace.h>
#include <CppTools/autocli/NamespaceNode.h>
#include <CppTools/metaobj/CppToolException.h>

namespace CppTools::AutoCli {

namespace {

bool IsLowerOrDigit(char character) {
    return (character >= 'a' && character <= 'z') || (character >= '0' && character <= '9');
}

bool IsUpper(char character) {
    return character >= 'A' && character <= 'Z';
}

} // namespace

// The rule is the pattern ([a-z0-9]+[A-Z0-9]{0,1})+. It is scanned by hand because a matcher
// that backtracks takes exponential time to refuse a long name.
bool AutoCli_IsValidName(const std::string& name) {
    bool mayBeUpper = false;
    for (const char character : name) {
        const bool isUpper = IsUpper(character);
        if (!IsLowerOrDigit(character) && !(isUpper && mayBeUpper)) {
            return false;
        }
        mayBeUpper = !isUpper;
    }
    return !name.empty();
}

NamespaceNode::NamespaceNode() = default;
NamespaceNode::~NamespaceNode() = default;

std::list<std::string> NamespaceNode::GetPath() {
    const auto parent = GetParent();
    if (!parent) {
        throw CppToolException("GetPath: Invalid state for Namespace Node with the name '" + name_ +
                               "' No parent node has been set");
    }
    auto path = parent->GetPath();
    path.push_back(name_);
    return path;
}

std::string NamespaceNode::GetPathString(char separator) {
    const auto parent = GetParent();
    if (!parent) {
        throw CppToolException("GetPathString: Invalid state for Namespace Node with the name '" +
                               name_ + "' No parent node has been set");
    }
    std::string path = parent->GetPathString(separator);
    if (!path.empty()) {
        path += separator;
    }
    path += name_;
    return path;
}

bool NamespaceNode::HasNamespaceNode(const std::string& name) {
    return children_.contains(name);
}

std::vector<std::string> NamespaceNode::GetNamespaceNodeNames() {
    std::vector<std::string> names;
    names.reserve(children_.size());
    for (const auto& [name, node] : children_) {
        names.push_back(name);
    }
    return names;
}

std::vector<std::shared_ptr<NamespaceNode>> NamespaceNode::GetNamespaceNodes() {
    std::vector<std::shared_ptr<NamespaceNode>> nodes;
    nodes.reserve(children_.size());
    for (const auto& [name, node] : children_) {
        nodes.push_back(node);
    }
    return nodes;
}

std::shared_ptr<NamespaceNode> NamespaceNode::GetNamespaceNode(const std::string& name) {
    const auto found = children_.find(name);
    return found == children_.end() ? nullptr : found->second;
}

void NamespaceNode::RegisterNamespaceNode(std::shared_ptr<NamespaceNode> node, std::string name) {
    if (HasNamespaceNode(name)) {
        throw CppToolException("Duplicate registration in namespace " + GetPathString(' ') +
                               " attempt to register two objects with name " + name);
    }
    if (!node) {
        throw CppToolException("Null namespace node named '" + name + "' passed to namespace " +
                               GetPathString(' '));
    }
    node->SetName(name);
    node->SetParent(GetThis());
    children_.emplace(std::move(name), std::move(node));
}

void NamespaceNode::RegisterNamespaceNode(std::shared_ptr<NamespaceNode> node, const char* name) {
    RegisterNamespaceNode(std::move(node), std::string(name));
}

std::shared_ptr<NamespaceNode> NamespaceNode::ResolveNode(std::list<std::string>& names) {
    if (names.empty()) {
        return nullptr;
    }
    // The name leaves the list for the time of the search and stays out when that throws.
    std::list<std::string> taken;
    taken.splice(taken.begin(), names, names.begin());
    const std::string& name = taken.front();
    auto node = GetNamespaceNode(name);
    if (!node) {
        throw CppToolException("Unable to find a command or namespace with the name '" + name +
                               "' in namespace " + GetPathString(' '));
    }
    if (!names.empty()) {
        node = node->ResolveNode(names);
    }
    names.splice(names.begin(), taken);
    return node;
}

std::shared_ptr<NamespaceNode> NamespaceNode::SubNamespace(const std::string& name) {
    if (auto existing = GetNamespaceNode(name)) {
        return existing;
    }
    auto created = Namespace::New();
    RegisterNamespaceNode(created, name);
    return created;
}

void NamespaceNode::SetName(const std::string& name) {
    if (!AutoCli_IsValidName(name)) {
        throw CppToolException("Invalid name for namespace '" + name +
                               "', must be a name consisting of letters and numbers and must "
                               "conform to 'camel' casing.");
    }
    name_ = name;
}

void NamespaceNode::SetDescription(std::string description) {
    description_ = std::move(description);
}

void NamespaceNode::SetDescription(const char* description) {
    description_ = description;
}

} // namespace CppTools::AutoCli
