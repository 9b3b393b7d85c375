#pragma once

#include <CppTools/autocli/Command.h>

/// The commands of this plug-in.
namespace Devkit::Commands {

std::shared_ptr<CppTools::AutoCli::Command> NewCheckDescriptor();
std::shared_ptr<CppTools::AutoCli::Command> NewCheckDocument();
std::shared_ptr<CppTools::AutoCli::Command> NewShowTemplate();
std::shared_ptr<CppTools::AutoCli::Command> NewNewPlugin();

} // namespace Devkit::Commands
