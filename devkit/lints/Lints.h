#pragma once

#include <devkit/DescriptorFile.h>

#include <map>

/// What descriptors are looked through for, beyond what the engine refuses. Each function looks at
/// one command and reports one or two rules.
namespace Devkit::Lints {

/// A path of an earlier place of all descriptors that were given.
struct TakenPath {
    bool isNamespace;
    std::string description;
};

/// What stands at the paths so far.
using Paths = std::map<std::string, TakenPath>;

/// Names of paths, paths that are taken, namespaces that are missing; adds the descriptor's own.
void CheckPaths(const DescriptorFile& file, Paths& paths, Findings& findings);

void CheckDescription(const CommandElement& command, Findings& findings);
void CheckHelp(const CommandElement& command, Findings& findings);
void CheckShortNames(const CommandElement& command, Findings& findings);
void CheckEnumerations(const CommandElement& command, Findings& findings);
void CheckRegularExpressions(const CommandElement& command, Findings& findings);
void CheckUnusedParameters(const CommandElement& command, Findings& findings);
void CheckListPlaceholders(const CommandElement& command, Findings& findings);

/// What `AutoCli_CheckTemplate` finds, under the names of its rules.
void CheckTemplates(const CommandElement& command, Findings& findings);

void CheckOutputShape(const CommandElement& command, Findings& findings);
void CheckFormatNames(const CommandElement& command, Findings& findings);
void CheckPrintfFormats(const CommandElement& command, Findings& findings);

} // namespace Devkit::Lints
