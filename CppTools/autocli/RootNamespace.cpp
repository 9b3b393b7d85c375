#include <CppTools/autocli/RootNamespace.h>
#include <CppTools/metaobj/CppToolException.h>

namespace CppTools::AutoCli {

RootNamespace::RootNamespace(Dispatcher* dispatcher) : dispatcher_(dispatcher) {}

RootNamespace::~RootNamespace() = default;

std::shared_ptr<RootNamespace> RootNamespace::New(Dispatcher* dispatcher) {
    return std::make_shared<RootNamespace>(dispatcher);
}

std::shared_ptr<NamespaceNode> RootNamespace::GetThis() {
    return shared_from_this();
}

int RootNamespace::GetType() {
    return kRootType;
}

std::list<std::string> RootNamespace::GetPath() {
    return {};
}

std::string RootNamespace::GetPathString(char /*separator*/) {
    return {};
}

Dispatcher* RootNamespace::GetDispatcher() {
    return dispatcher_;
}

void RootNamespace::SetParent(std::shared_ptr<NamespaceNode> /*parent*/) {
    throw CppToolException("Error, Root namespace cannot be assigned a parent node");
}

std::shared_ptr<NamespaceNode> RootNamespace::GetParent() {
    return nullptr;
}

} // namespace CppTools::AutoCli
