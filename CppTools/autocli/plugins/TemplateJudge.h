#pragma once

#include <CppTools/autocli/plugins/TemplateScanner.h>

#include <vector>

namespace CppTools::CallSpec {
class InputSpec;
} // namespace CppTools::CallSpec

namespace CppTools::AutoCli {

/// Judges what the commands of a template call and what values can do in their words.
void JudgeCommands(const std::vector<SimpleCommand>& commands, const CallSpec::InputSpec& inputSpec,
                   Findings& findings);

/// Judges whether the placeholders of any template name parameters that they fit.
void JudgeNames(std::string_view text, const CallSpec::InputSpec& inputSpec, Findings& findings);

} // namespace CppTools::AutoCli
