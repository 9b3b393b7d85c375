#pragma once

#include <devkit/Finding.h>
#include <devkit/XmlFile.h>

namespace Devkit {

/// Reads the document of a file; empty when it cannot be read or is not well-formed, which
/// `findings` says then.
XmlDocument ReadWellFormed(const std::string& path, Findings& findings);

/// The same of a text that was read already.
XmlDocument ReadWellFormedText(const std::string& text, Findings& findings);

} // namespace Devkit
