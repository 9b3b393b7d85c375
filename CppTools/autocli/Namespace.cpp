#include <CppTools/autocli/Namespace.h>
#include <CppTools/metaobj/CppToolException.h>

namespace CppTools::AutoCli {

Namespace::Namespace() = default;
Namespace::~Namespace() = default;

std::shared_ptr<Namespace> Namespace::New() {
    return std::make_shared<Namespace>();
}

std::shared_ptr<NamespaceNode> Namespace::GetThis() {
    return shared_from_this();
}

int Namespace::GetType() {
    return kNamespaceType;
}

Dispatcher* Namespace::GetDispatcher() {
    const auto parent = GetParent();
    if (!parent) {
        throw CppToolException("Invalid state for namespace '" + GetName() +
                               "no parent has been set while attempting to get dispathcer "
                               "reference.");
    }
    return parent->GetDispatcher();
}

void Namespace::SetParent(std::shared_ptr<NamespaceNode> parent) {
    parent_ = parent;
}

std::shared_ptr<NamespaceNode> Namespace::GetParent() {
    return parent_.lock();
}

} // namespace CppTools::AutoCli
