#pragma once

#include <devkit/XmlFile.h>

namespace Devkit {

/// Where the grammars of this installation or build tree stand: next to the library that holds
/// this function, or in the folder for shared data above it.
std::string FindSchemaFolder();

/// How a document departs from the grammar (RELAX NG) of a file. Throws "Unable to read F: "
/// or "Unable to use the grammar F: " and the reason.
std::vector<XmlProblem> Validate(xmlDoc& document, const std::string& grammar);

} // namespace Devkit
