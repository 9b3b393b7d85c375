#include <devkit/lints/Lints.h>

namespace Devkit::Lints {

void CheckDescription(const CommandElement& command, Findings& findings) {
    if (TextOfChild(*command.element, "description").empty()) {
        findings.Add(Rule::UndescribedCommand, LineOf(*command.element),
                     "The command '" + command.path + "' has no description");
    }
}

void CheckHelp(const CommandElement& command, Findings& findings) {
    for (const ParameterElement& parameter : command.parameters) {
        if (parameter.name == "help") {
            findings.Add(Rule::HelpRedefined, LineOf(*parameter.element),
                         "The parameter --help is the tool's own");
        }
        if (parameter.shortName == "h") {
            findings.Add(Rule::HelpRedefined, LineOf(*parameter.element),
                         "The short name -h of --" + parameter.name + " is that of --help");
        }
    }
}

void CheckShortNames(const CommandElement& command, Findings& findings) {
    std::map<std::string, std::string> owners;
    for (const auto& [element, name, shortName, type] : command.parameters) {
        if (shortName.empty()) {
            continue;
        }
        const auto [owner, isNew] = owners.emplace(shortName, name);
        if (!isNew) {
            findings.Add(Rule::ShortNameClash, LineOf(*element),
                         "The short name -" + shortName + " of --" + name + " is that of --" +
                             owner->second);
        }
    }
}

void CheckEnumerations(const CommandElement& command, Findings& findings) {
    for (const ParameterElement& parameter : command.parameters) {
        for (xmlNode* constraint : ChildrenOf(*parameter.element, "constraint")) {
            for (xmlNode* values : ChildrenOf(*constraint, "enum")) {
                for (xmlNode* value : ChildrenOf(*values, "enum-value")) {
                    if (TextOf(*value).empty()) {
                        findings.Add(Rule::UndescribedValue, LineOf(*value),
                                     "The value '" + AttributeOf(*value, "value") + "' of --" +
                                         parameter.name + " has no description");
                    }
                }
            }
        }
    }
}

} // namespace Devkit::Lints
