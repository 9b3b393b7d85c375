// The plug-in authors' tools: a plug-in that looks at plug-ins. Nobody else needs it, so it stands
// outside of the folders that the tool loads by itself.

#include <devkit/commands/Commands.h>

#include <CppTools/CppTools.h>

namespace {

using CppTools::AutoCli::Namespace;
using CppTools::AutoCli::NamespaceNode;

std::shared_ptr<NamespaceNode> AddNamespace(NamespaceNode& parent, const char* name,
                                            const char* description) {
    auto added = parent.SubNamespace(name);
    added->SetDescription(description);
    return added;
}

} // namespace

extern "C" __attribute__((visibility("default"))) void
AutoCli_RegisterNamespaces(std::shared_ptr<Namespace> root) {
    using namespace Devkit::Commands;
    const auto plugin = AddNamespace(*root, "plugin", "Tools for those who write plug-ins.");
    AddNamespace(*plugin, "descriptor", "Descriptors, the plug-ins without code.")
        ->RegisterNamespaceNode(NewCheckDescriptor(), "check");
    AddNamespace(*plugin, "template", "Templates, from which shell lines are made.")
        ->RegisterNamespaceNode(NewShowTemplate(), "show");
    AddNamespace(*plugin, "document", "Documents, the results that commands print.")
        ->RegisterNamespaceNode(NewCheckDocument(), "check");
    plugin->RegisterNamespaceNode(NewNewPlugin(), "new");
}
