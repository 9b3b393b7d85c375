#pragma once

#include <devkit/Finding.h>

namespace Devkit {

/// Everything that is wrong with these descriptors, which are loaded in this order: file by file,
/// in the order of the lines. Throws when `schemaFolder` does not hold the grammar.
std::vector<Finding> CheckDescriptors(const std::vector<std::string>& files,
                                      const std::string& schemaFolder);

} // namespace Devkit
