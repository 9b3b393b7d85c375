#pragma once

#include <CppTools/autocli/Dispatcher.h>
#include <CppTools/autocli/Namespace.h>
#include <CppTools/autocli/NamespaceNode.h>
#include <CppTools/autocli/RootNamespace.h>

#include <tests/support/RandomSource.h>
#include <tests/support/ScriptedCommand.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

/// Command trees that chance has grown.
namespace TestSupport {

using Node = std::shared_ptr<CppTools::AutoCli::NamespaceNode>;

/// Path, type and description of a node and of everything below it, a line each.
inline std::string TreeText(const Node& node) {
    std::string text = node->GetPathString(' ') + " | " + std::to_string(node->GetType()) + " | " +
                       node->GetDescription() + "\n";
    for (const Node& child : node->GetNamespaceNodes()) {
        text += TreeText(child);
    }
    return text;
}

/// A dispatcher whose tree holds namespaces and commands beside the built-in ones.
class RandomTree {
  public:
    explicit RandomTree(RandomSource& random) : random_(&random) {
        // Each node without which some refusal could not be provoked.
        GrowAt(Root(), NewNamespace(), "space");
        GrowAt(Root(), NewCommand(), "command");
        GrowAt(NodeNamed("space"), NewCommand(), "inner");
        GrowAt(NodeNamed("space"), NewNamespace(), "room");
        for (std::size_t count = random_->Between(5, 25); count > 0; --count) {
            const Node parent = AnyNamespace();
            if (const std::string name = AnyName(); !parent->HasNamespaceNode(name)) {
                GrowAt(parent, random_->Chance(50) ? NewNamespace() : NewCommand(), name);
            }
        }
    }

    CppTools::AutoCli::Dispatcher& Dispatcher() { return dispatcher_; }

    Node Root() const { return dispatcher_.GetRootNamespace(); }

    std::string Text() const { return TreeText(Root()); }

    /// Every node that was grown, without the root.
    const std::vector<Node>& Nodes() const { return nodes_; }

    /// A namespace that was grown, or the root.
    Node AnyNamespace() {
        auto namespaces = OfType(CppTools::AutoCli::NamespaceNode::kNamespaceType);
        namespaces.push_back(Root());
        return random_->Pick(namespaces);
    }

    Node AnyCommand() {
        return random_->Pick(OfType(CppTools::AutoCli::NamespaceNode::kCommandType));
    }

    Node AnyNode() { return random_->Pick(nodes_); }

    static Node NewNamespace() { return CppTools::AutoCli::Namespace::New(); }

    static Node NewCommand() { return ScriptedCommand::New(); }

    Node NewNode() { return random_->Chance(50) ? NewNamespace() : NewCommand(); }

    /// A name that a node may have, and may have already.
    std::string AnyName() {
        static const std::vector<std::string> names = {"a",     "list", "get2", "fooBar",
                                                       "x1Y2z", "b0",   "0",    "tandril"};
        return random_->Pick(names);
    }

    /// A name that no node may have.
    std::string IllegalName() {
        static const std::vector<std::string> names = {
            "", "List", "fooBAR", "foo-bar", "foo bar", "a.b", "foo_bar", "\xC3\xA9", "a\n", "A"};
        return random_->Pick(names);
    }

  private:
    Node NodeNamed(const std::string& name) const {
        return *std::ranges::find_if(nodes_,
                                     [&](const Node& node) { return node->GetName() == name; });
    }

    std::vector<Node> OfType(int type) const {
        std::vector<Node> found;
        std::ranges::copy_if(nodes_, std::back_inserter(found),
                             [&](const Node& node) { return node->GetType() == type; });
        return found;
    }

    void GrowAt(const Node& parent, const Node& node, const std::string& name) {
        parent->RegisterNamespaceNode(node, name);
        node->SetDescription("Number " + std::to_string(nodes_.size()) + ".");
        nodes_.push_back(node);
    }

    RandomSource* random_;
    CppTools::AutoCli::Dispatcher dispatcher_;
    std::vector<Node> nodes_;
};

} // namespace TestSupport
