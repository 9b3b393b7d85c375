#pragma once

#include <devkit/Finding.h>

namespace CppTools::CallSpec {
class OutputSpec;
} // namespace CppTools::CallSpec

namespace Devkit {

/// Everything that is wrong with what a command printed, in the order of the lines. `declared` is
/// what the command promises; empty when that is unknown. Throws when `schemaFolder` does not hold
/// the grammar.
std::vector<Finding> CheckDocument(const std::string& text, const std::string& name,
                                   const std::string& schemaFolder,
                                   const CppTools::CallSpec::OutputSpec* declared);

} // namespace Devkit
