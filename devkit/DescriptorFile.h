#pragma once

#include <devkit/Finding.h>
#include <devkit/XmlFile.h>

#include <list>

namespace CppTools::AutoCli {
class Dispatcher;
class ExtensionCommand;
} // namespace CppTools::AutoCli

namespace Devkit {

/// A parameter as the descriptor has it.
struct ParameterElement {
    xmlNode* element;
    std::string name;
    std::string shortName;
    std::string type; ///< The type word.

    bool IsList() const { return type.ends_with("-list"); }
};

struct CommandElement {
    xmlNode* element;
    std::string path;
    std::vector<ParameterElement> parameters;

    /// As the engine builds it, without those pieces that it refuses. Empty when nothing is left.
    std::shared_ptr<CppTools::AutoCli::ExtensionCommand> command;
};

struct NamespaceElement {
    xmlNode* element;
    std::string path;
    std::string description;
};

/// A descriptor that is well-formed, taken apart.
struct DescriptorFile {
    XmlDocument document;
    std::vector<NamespaceElement> namespaces;
    std::vector<CommandElement> commands;
};

/// Takes a document apart; what the engine refuses goes to `findings`.
DescriptorFile TakeApart(XmlDocument document, Findings& findings);

/// The text of a placeholder's template and where it stands.
struct TemplateText {
    std::string text;
    long line; ///< Of its beginning; 0 when there is none.
};

/// The template of a command in its child "execute" or "stdin".
TemplateText TemplateOf(const CommandElement& command, const std::string& child);

/// The line of the descriptor in which a byte of the template stands.
long LineOf(const TemplateText& text, std::size_t position);

} // namespace Devkit
