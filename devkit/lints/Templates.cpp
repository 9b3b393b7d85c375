#include <devkit/Placeholders.h>
#include <devkit/lints/Lints.h>

#include <CppTools/CppTools.h>

#include <algorithm>
#include <set>

namespace Devkit::Lints {

namespace {

using CppTools::AutoCli::HazardSeverity;
using CppTools::AutoCli::TemplateHazard;

const ParameterElement* FindParameter(const CommandElement& command, const std::string& name) {
    const auto found =
        std::find_if(command.parameters.begin(), command.parameters.end(),
                     [&](const ParameterElement& parameter) { return parameter.name == name; });
    return found == command.parameters.end() ? nullptr : &*found;
}

/// Whether it is about a parameter that the engine refused, which was said already.
bool IsExplained(const CommandElement& command, const TemplateHazard& hazard) {
    const auto named = FindPlaceholders(hazard.placeholder);
    return hazard.rule == "unknown-parameter" && !named.empty() &&
           FindParameter(command, named.front().name) != nullptr;
}

Finding ToFinding(const TemplateHazard& hazard, const TemplateText& text,
                  const Findings& findings) {
    const std::string subject = hazard.placeholder.empty() ? "" : hazard.placeholder + ": ";
    return {findings.File(),
            LineOf(text, hazard.position),
            hazard.severity == HazardSeverity::Error ? Severity::Error : Severity::Warning,
            hazard.rule,
            subject + hazard.message,
            hazard.advice};
}

} // namespace

void CheckUnusedParameters(const CommandElement& command, Findings& findings) {
    std::set<std::string> used;
    for (const char* child : {"execute", "stdin"}) {
        for (const Placeholder& placeholder : FindPlaceholders(TemplateOf(command, child).text)) {
            used.insert(placeholder.name);
        }
    }
    for (const ParameterElement& parameter : command.parameters) {
        if (!used.contains(parameter.name)) {
            findings.Add(Rule::UnusedParameter, LineOf(*parameter.element),
                         "No template uses --" + parameter.name);
        }
    }
}

void CheckListPlaceholders(const CommandElement& command, Findings& findings) {
    for (const char* child : {"execute", "stdin"}) {
        const TemplateText text = TemplateOf(command, child);
        for (const auto& [word, name, position] : FindPlaceholders(text.text)) {
            const auto* const parameter = FindParameter(command, name);
            const bool isForLists = word == "list" || word == "multilist";
            if (isForLists && parameter != nullptr && parameter->type != "flag" &&
                !parameter->IsList()) {
                findings.Add(Rule::ListOfOne, LineOf(text, position),
                             "$" + word + " names --" + name + ", which has a single value");
            }
        }
    }
}

void CheckTemplates(const CommandElement& command, Findings& findings) {
    if (!command.command) {
        return;
    }
    const TemplateText line = TemplateOf(command, "execute");
    const TemplateText input = TemplateOf(command, "stdin");
    for (const TemplateHazard& hazard : CppTools::AutoCli::AutoCli_CheckTemplate(
             line.text, command.command->GetInputSpecInternal(), input.text)) {
        if (!IsExplained(command, hazard)) {
            findings.Add(ToFinding(hazard, hazard.inStdin ? input : line, findings));
        }
    }
}

} // namespace Devkit::Lints
