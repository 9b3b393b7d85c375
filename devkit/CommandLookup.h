#pragma once

#include <memory>
#include <string>
#include <vector>

namespace CppTools::AutoCli {
class ExtensionCommand;
} // namespace CppTools::AutoCli

namespace Devkit {

/// The command at a dotted path, from descriptors that are loaded in this order. Throws what the
/// engine says to a descriptor or path that it does not take, and "There is no command at 'P'".
std::shared_ptr<CppTools::AutoCli::ExtensionCommand>
LoadCommand(const std::vector<std::string>& files, const std::string& path);

} // namespace Devkit
