#pragma once

#include <CppTools/autocli/plugins/CommandTemplate.h>

#include <array>
#include <string>
#include <utility>

namespace CppTools::CallSpec {
class InputSpec;
class Output;
} // namespace CppTools::CallSpec

namespace CppTools::AutoCli {

/// The templates of one command, each with what it is filled for, the command line first.
using CommandTemplates = std::array<std::pair<std::string, TemplatePurpose>, 2>;

/// Fills a template from the parameters of a call.
std::string FillTemplate(const std::string& text, TemplatePurpose purpose,
                         const CallSpec::InputSpec& inputSpec, const CallSpec::Input& input);

/// Whether every value of a call only ever stands for itself in the templates: it is one value
/// where one was declared, holds no NUL and no beginning of a placeholder, an integer that
/// may stand elsewhere than in single quotes of its own begins with no white space, and filling a
/// value in changes nothing else about the text. The first three are told of every parameter, the
/// last of the first parameter that does not keep to it; messages go to `output`. Throws what
/// `Input::GetParameter` throws.
bool AreHarmless(const CommandTemplates& templates, const CallSpec::InputSpec& inputSpec,
                 const CallSpec::Input& input, CallSpec::Output& output);

} // namespace CppTools::AutoCli
