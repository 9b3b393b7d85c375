// Descriptors of commands: the input is one. Nothing of it is run.

#include <fuzz/Laws.h>
#include <fuzz/Rendering.h>
#include <fuzz/Sections.h>
#include <fuzz/XmlDocument.h>

#include <CppTools/autocli/CommandInput.h>
#include <CppTools/autocli/CommandSpec.h>
#include <CppTools/autocli/RootNamespace.h>
#include <CppTools/autocli/formatters/CommandHelpFormatter.h>
#include <CppTools/autocli/plugins/XmlPlugin.h>
#include <CppTools/autocli/plugins/XmlUtil.h>
#include <CppTools/callspec/InputSpec.h>
#include <CppTools/callspec/OutputSpec.h>
#include <CppTools/metaobj/CppToolException.h>

#include <boost/regex/pattern_except.hpp>
#include <list>
#include <memory>
#include <string>
#include <sys/mman.h>
#include <unistd.h>

namespace {

using namespace CppTools::AutoCli;
using CppTools::CppToolException;
using CppTools::CallSpec::InputSpec;
using CppTools::CallSpec::Output;
using Fuzz::Require;

/// A file in memory, which is written anew for each input.
class MemoryFile {
  public:
    MemoryFile() : descriptor_(memfd_create("descriptor.xml", MFD_CLOEXEC)) {}

    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    ~MemoryFile() { close(descriptor_); }

    void Write(const std::string& text) const {
        Require(ftruncate(descriptor_, 0) == 0 && pwrite(descriptor_, text.data(), text.size(),
                                                         0) == static_cast<ssize_t>(text.size()),
                "a file can be written");
    }

    std::string Path() const { return "/proc/self/fd/" + std::to_string(descriptor_); }

  private:
    int descriptor_;
};

template <typename Action>
bool Succeeds(Action action) {
    try {
        action();
        return true;
    } catch (const CppToolException&) {
        return false;
    }
}

/// Every node below another: its path, its kind and what is said of it.
std::string Listing(NamespaceNode& node) {
    std::string text;
    for (const auto& child : node.GetNamespaceNodes()) {
        text += child->GetPathString('.') + " " + std::to_string(child->GetType()) + " " +
                child->GetDescription() + "\n";
        if (child->GetType() != NamespaceNode::kCommandType) {
            text += Listing(*child);
        }
    }
    return text;
}

/// The node that a dotted path names; a dot at its end does not count.
std::shared_ptr<NamespaceNode> Find(const std::string& path, NamespaceNode& root) {
    const auto names =
        Fuzz::Split(path.ends_with('.') ? path.substr(0, path.size() - 1) : path, '.');
    std::list<std::string> rest(names.begin(), names.end());
    std::shared_ptr<NamespaceNode> found;
    Require(Succeeds([&] { found = root.ResolveNode(rest); }) && found,
            "what was registered is found", path);
    return found;
}

void RequireAll(const xmlNode& document, const std::string& group, const std::string& element,
                int type, NamespaceNode& root) {
    for (const xmlNode* entries : Fuzz::ElementsOf(document, group)) {
        for (xmlNode* entry : Fuzz::ElementsOf(*entries, element)) {
            const auto node = Find(XmlUtil_ExtractAttribute(entry, "path"), root);
            Require(node->GetType() == type, "as what it was declared");
            Require(node->GetDescription() == XmlUtil_GetContentForChildByTag(entry, "description"),
                    "with its description");
        }
    }
}

/// An expression that is none is noticed when it is needed.
void CheckValues(const InputSpec& inputSpec, const std::shared_ptr<Output>& output) {
    for (const auto& parameter : inputSpec.GetParameters()) {
        try {
            parameter->Validate({"a1", ""}, output);
        } catch (const boost::regex_error&) {
        }
    }
}

/// The declarations of a command can be asked for, and its help can be shown.
void CheckCommand(CommandSpec& command) {
    static CommandHelpFormatter formatter;
    std::shared_ptr<InputSpec> inputSpec;
    if (!Succeeds([&] { inputSpec = command.GetInputSpec(); })) {
        return; // it declares "help" itself
    }
    auto output = Output::New();
    CheckValues(*inputSpec, output);
    const auto prototype = command.GetOutputSpec()->GetRootObject();
    output->SetRootObject(prototype);
    Require(!prototype || command.GetOutputSpec()->Validate(output, nullptr),
            "a prototype has its own shape");
    auto input = CommandInput::New();
    input->SetDispatcher("tandril");
    input->SetCommandPath(command.GetPath());
    command.GenerateHelpOutput(input, output);
    const auto help = Fuzz::Render(formatter, output->GetRootObject(), {}, 60);
    Require(help.succeeded && help.text.starts_with("Usage: tandril " + command.GetPathString(' ') +
                                                    " <options>\n"),
            "help begins with the path", help.text);
}

void CheckCommands(NamespaceNode& node) {
    for (const auto& child : node.GetNamespaceNodes()) {
        if (const auto command = std::dynamic_pointer_cast<CommandSpec>(child)) {
            CheckCommand(*command);
        } else {
            CheckCommands(*child);
        }
    }
}

std::shared_ptr<XmlPlugin> NewPlugin(const std::string& path) {
    auto plugin = XmlPlugin::New(path);
    return Succeeds([&] { plugin->Initialize(); }) ? plugin : nullptr;
}

void CheckRegistered(const std::string& text, const std::string& path,
                     const std::shared_ptr<RootNamespace>& root) {
    const Fuzz::XmlDocument document(text);
    Require(document.Root() != nullptr, "only documents are descriptors");
    RequireAll(*document.Root(), "namespaces", "namespace", NamespaceNode::kNamespaceType, *root);
    RequireAll(*document.Root(), "commands", "command", NamespaceNode::kCommandType, *root);
    CheckCommands(*root);
    const std::string listing = Listing(*root);
    const auto again = NewPlugin(path);
    Require(again != nullptr, "a descriptor can be read again");
    Succeeds([&] { again->RegisterNamespaces(root); });
    Require(listing == Listing(*root), "a second registration changes nothing", listing);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const MemoryFile file;
    static const Fuzz::XmlDocument silence("");
    const std::string text(Fuzz::TextOf(data, size));
    file.Write(text);
    const auto plugin = NewPlugin(file.Path());
    const auto root = RootNamespace::New(nullptr);
    if (plugin && Succeeds([&] { plugin->RegisterNamespaces(root); })) {
        CheckRegistered(text, file.Path(), root);
    }
    return 0;
}
