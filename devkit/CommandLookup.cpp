#include <devkit/CommandLookup.h>

#include <CppTools/CppTools.h>

#include <boost/algorithm/string.hpp>

namespace Devkit {

using CppTools::AutoCli::ExtensionCommand;
using CppTools::AutoCli::XmlPlugin;

std::shared_ptr<ExtensionCommand> LoadCommand(const std::vector<std::string>& files,
                                              const std::string& path) {
    CppTools::AutoCli::Dispatcher tree;
    for (const std::string& file : files) {
        const auto plugin = XmlPlugin::New(file);
        plugin->Initialize();
        plugin->RegisterNamespaces(tree.GetRootNamespace());
    }
    std::list<std::string> names;
    boost::split(names, path, boost::is_any_of("."));
    auto command =
        std::dynamic_pointer_cast<ExtensionCommand>(tree.GetRootNamespace()->ResolveNode(names));
    if (!command) {
        throw CppTools::CppToolException("There is no command at '" + path + "'");
    }
    return command;
}

} // namespace Devkit
