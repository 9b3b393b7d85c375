#include <CppTools/autocli/Namespace.h>

#include <memory>

extern "C" __attribute__((visibility("default"))) void
AutoCli_RegisterNamespaces(std::shared_ptr<CppTools::AutoCli::Namespace> root) {
    root->SubNamespace("library")->RegisterNamespaceNode(CppTools::AutoCli::Namespace::New(),
                                                         "part");
}
