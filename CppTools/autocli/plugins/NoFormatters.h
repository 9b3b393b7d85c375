#pragma once

#include <memory>
#include <vector>

namespace CppTools::AutoCli {

class Formatter;

/// The one vector, always empty, of all plug-ins that offer no formatters.
std::vector<std::shared_ptr<Formatter>>& NoFormatters();

} // namespace CppTools::AutoCli
