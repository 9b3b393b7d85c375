#include <devkit/CommandProbe.h>
#include <devkit/DescriptorFile.h>

#include <CppTools/CppTools.h>

#include <algorithm>

namespace Devkit {

namespace {

std::vector<xmlNode*> PiecesOf(const xmlNode& command) {
    std::vector<xmlNode*> pieces;
    for (xmlNode* child : ChildrenOf(command)) {
        if (NameOf(*child) == "input-spec") {
            const auto parts = ChildrenOf(*child);
            pieces.insert(pieces.end(), parts.begin(), parts.end());
        } else {
            pieces.push_back(child);
        }
    }
    return pieces;
}

/// Asks the engine about every piece of a command that it refuses.
Trial FindRefusals(xmlNode& command, const std::string& whole, Findings& findings) {
    CommandProbe probe(command);
    bool isExplained = false;
    const auto report = [&](const xmlNode& place, const std::string& refusal) {
        if (!refusal.empty()) {
            findings.Add(Rule::Refused, LineOf(place), refusal);
            isExplained = true;
        }
    };
    for (xmlNode* piece : PiecesOf(command)) {
        report(*piece, probe.Add(*piece));
    }
    for (const char* name : {"input-spec", "output-spec", "format-parameters", "execute"}) {
        if (ChildOf(command, name) == nullptr) {
            report(command, probe.RefusalWithout(name));
        }
    }
    if (!isExplained) {
        report(command, whole);
    }
    return probe.Result();
}

std::vector<ParameterElement> ParametersOf(const xmlNode& command) {
    std::vector<ParameterElement> parameters;
    auto* const inputSpec = ChildOf(command, "input-spec");
    if (inputSpec == nullptr) {
        return parameters;
    }
    for (xmlNode* element : ChildrenOf(*inputSpec, "parameter")) {
        parameters.push_back({element, AttributeOf(*element, "name"),
                              AttributeOf(*element, "shortname"), AttributeOf(*element, "type")});
    }
    return parameters;
}

CommandElement TakeCommand(xmlNode& element, Findings& findings) {
    Trial trial = TryCommand(element);
    if (!trial.command) {
        trial = FindRefusals(element, trial.refusal, findings);
    }
    return {&element, AttributeOf(element, "path"), ParametersOf(element), trial.command};
}

} // namespace

DescriptorFile TakeApart(XmlDocument document, Findings& findings) {
    DescriptorFile file;
    auto* const root = xmlDocGetRootElement(document.get());
    file.document = std::move(document);
    if (auto* const namespaces = ChildOf(*root, "namespaces")) {
        for (xmlNode* element : ChildrenOf(*namespaces, "namespace")) {
            file.namespaces.push_back(
                {element, AttributeOf(*element, "path"), TextOfChild(*element, "description")});
        }
    }
    if (auto* const commands = ChildOf(*root, "commands")) {
        for (xmlNode* element : ChildrenOf(*commands, "command")) {
            file.commands.push_back(TakeCommand(*element, findings));
        }
    }
    return file;
}

TemplateText TemplateOf(const CommandElement& command, const std::string& child) {
    auto* const element = ChildOf(*command.element, child);
    return element == nullptr ? TemplateText{"", 0}
                              : TemplateText{TextOf(*element), LineOf(*element)};
}

long LineOf(const TemplateText& text, std::size_t position) {
    const auto end = text.text.begin() + static_cast<std::ptrdiff_t>(position);
    return text.line + std::count(text.text.begin(), end, '\n');
}

} // namespace Devkit
