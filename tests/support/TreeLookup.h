#pragma once

#include <CppTools/autocli/Namespace.h>
#include <CppTools/autocli/RootNamespace.h>

#include <initializer_list>
#include <list>
#include <memory>
#include <string>

namespace TestSupport {

/// The root of a tree that belongs to no dispatcher.
inline std::shared_ptr<CppTools::AutoCli::RootNamespace> NewRoot() {
    return CppTools::AutoCli::RootNamespace::New(nullptr);
}

/// The node at a path of names; throws when there is none.
template <typename Node = CppTools::AutoCli::NamespaceNode>
std::shared_ptr<Node> NodeAt(const std::shared_ptr<CppTools::AutoCli::Namespace>& root,
                             std::initializer_list<std::string> path) {
    std::list<std::string> names(path);
    return std::dynamic_pointer_cast<Node>(root->ResolveNode(names));
}

} // namespace TestSupport
