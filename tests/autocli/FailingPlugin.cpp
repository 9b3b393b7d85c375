#include <CppTools/autocli/Namespace.h>

#include <memory>
#include <stdexcept>

extern "C" __attribute__((visibility("default"))) void
AutoCli_RegisterNamespaces(std::shared_ptr<CppTools::AutoCli::Namespace>) {
    throw std::runtime_error("out of order");
}
