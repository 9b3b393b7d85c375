#pragma once

#include <CppTools/Export.h>

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace CppTools::CallSpec {
class InputSpec;
} // namespace CppTools::CallSpec

namespace CppTools::AutoCli {

/// How much a hazard weighs.
enum class HazardSeverity {
    Warning, ///< The command may not do what its author meant.
    Error    ///< A value may become more than a value, or it cannot be shown that none does.
};

/// One thing in a command's templates that its author should change.
struct TemplateHazard {
    std::string rule;        ///< The name of one of `AutoCli_GetTemplateRules`.
    HazardSeverity severity; ///< That of the rule.
    bool inStdin;            ///< Whether it is in the standard input's template.
    std::size_t position;    ///< The byte of that template at which it begins.
    std::string placeholder; ///< As the template has it; empty when none is concerned.
    std::string message;     ///< What is wrong.
    std::string advice;      ///< What to write instead.
};

/// One rule that templates are checked against.
struct TemplateRule {
    std::string name;        ///< Such as "bare-text"; the same in later versions.
    HazardSeverity severity; ///< Of everything that breaks the rule.
    std::string message;     ///< What is wrong.
    std::string advice;      ///< What to write instead.
};

/// All rules, in a fixed order. The reference stays valid.
CPPTOOLS_EXPORT const std::vector<TemplateRule>& AutoCli_GetTemplateRules();

/// Checks the templates of a command. What comes back has no error exactly when the command line
/// is of a form that all shells read alike and each placeholder stands where no value that
/// `inputSpec` lets through can be more than part of one word. That holds while
/// `Feature::StrictTemplates` is on; the program that is called may still do anything with the
/// values. Understood are lists of simple commands, joined by ; && || | and line ends, with plain
/// redirections; all else is refused once a placeholder is in the line.
///
/// Hazards come in the order of their positions, those of the standard input last. `inputSpec`
/// must not be null. Never throws.
CPPTOOLS_EXPORT std::vector<TemplateHazard>
AutoCli_CheckTemplate(const std::string& commandTemplate,
                      const std::shared_ptr<CallSpec::InputSpec>& inputSpec,
                      const std::string& stdinTemplate);

} // namespace CppTools::AutoCli
