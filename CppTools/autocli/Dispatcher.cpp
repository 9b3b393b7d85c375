#include <CppTools/autocli/Command.h>
#include <CppTools/autocli/CommandInput.h>
#include <CppTools/autocli/CommandOutput.h>
#include <CppTools/autocli/Dispatcher.h>
#include <CppTools/autocli/RootNamespace.h>
#include <CppTools/autocli/formatters/Formatter.h>
#include <CppTools/autocli/plugins/InternalPlugin.h>
#include <CppTools/autocli/plugins/SharedLibraryPlugin.h>
#include <CppTools/autocli/plugins/XmlPlugin.h>
#include <CppTools/callspec/InputSpec.h>
#include <CppTools/host/Directory.h>
#include <CppTools/host/FeatureStates.h>
#include <CppTools/host/FileTrust.h>
#include <CppTools/metaobj/CppToolException.h>

#include <algorithm>
#include <iostream>
#include <string_view>
#include <unistd.h>

namespace CppTools::AutoCli {

namespace {

std::string RegistrationFailed(const std::string& plugin, const std::string& reason) {
    return "Error while trying to register the plugin " + plugin + " " + reason +
           " The functionality in " + plugin +
           " will not be available until this issue is "
           "resolved.";
}

/// Whether the path ends in the extension and holds anything in front of it.
bool HasExtension(const std::string& path, std::string_view extension) {
    return path.size() > extension.size() && path.ends_with(extension);
}

/// The kind of plug-in that a file name stands for; empty when it stands for none.
std::shared_ptr<Plugin> NewPluginForFile(const std::string& path) {
    if (HasExtension(path, ".so")) {
        return SharedLibraryPlugin::New(path);
    }
    if (HasExtension(path, ".xml")) {
        return XmlPlugin::New(path);
    }
    return nullptr;
}

/// Whether the path is a name alone, which the loader looks for in directories of its own.
bool IsLookedUpByLoader(const std::string& path) {
    return HasExtension(path, ".so") && path.find('/') == std::string::npos;
}

bool IsSwitchedOff(const std::string& fileName) {
    const auto states = Host::GetFeatureStateSource();
    return (fileName == "tandril-syslog.xml" && states->IsOn(Host::Feature::BuiltInSyslog)) ||
           (fileName == "pelorquencmd.xml" && !states->IsOn(Host::Feature::PelorquenCommands));
}

} // namespace

const std::array<std::string, 2>& Dispatcher::GetDefaultDirectories() {
    static const std::array<std::string, 2> directories = {"/usr/lib/corvane/tandril",
                                                           "/usr/lib/corvane/tandril/ext"};
    return directories;
}

Dispatcher::Dispatcher() : trust_(std::make_unique<Host::FileTrust>(geteuid())) {
    Host::GetFeatureStateSource()->Initialize();
    auto builtIn = InternalPlugin::New();
    root_ = RootNamespace::New(this);
    builtIn->Initialize();
    RegisterPlugin(std::move(builtIn));
}

Dispatcher::~Dispatcher() = default;

void Dispatcher::ResetRegistrations() {
    plugins_.clear();
}

void Dispatcher::RegisterPlugin(std::shared_ptr<Plugin> plugin) {
    loadedPlugins_.push_back(plugin);
    try {
        plugin->RegisterNamespaces(root_);
    } catch (const CppToolException& failure) {
        throw CppToolException(RegistrationFailed(plugin->GetName(), failure.what()));
    }
    RegisterFormatters(plugin);
    plugins_.push_back(std::move(plugin));
}

void Dispatcher::RegisterFormatters(const std::shared_ptr<Plugin>& plugin) {
    std::vector<std::string> names;
    for (const auto& formatter : plugin->GetFormatters()) {
        const std::string& name = formatter->GetName();
        if (const auto earlier = formatterRegistry_.find(name);
            earlier != formatterRegistry_.end()) {
            throw CppToolException(RegistrationFailed(
                plugin->GetName(), " this plugin has a formatter " + name +
                                       " that was already registered from the plugin " +
                                       earlier->second->GetName() + " "));
        }
        names.push_back(name);
    }
    for (const auto& name : names) {
        formatterRegistry_[name] = plugin;
    }
}

void Dispatcher::AddPlugin(const std::string& path) {
    if (auto plugin = NewPluginForFile(path)) {
        WarnOfWeakness(path);
        plugin->Initialize();
        RegisterPlugin(std::move(plugin));
    }
}

void Dispatcher::WarnOfWeakness(const std::string& path) {
    if (IsLookedUpByLoader(path)) {
        return;
    }
    if (const auto weakness = trust_->FindNewWeakness(path)) {
        std::cerr << "Warning: plugin " << path
                  << " can be changed by others than root: " << weakness->path << ' '
                  << weakness->reason << '\n';
    }
}

void Dispatcher::AddExternalDirectoryInt(const std::string& directory, bool reportMissing) {
    std::vector<std::string> names;
    const auto listing = Host::ListDirectory(directory, names);
    if (listing == Host::DirectoryListing::NotOpened) {
        if (reportMissing) {
            std::cerr << "Unable to open directory " << directory << " for plugin registration\n";
        }
        return;
    }
    if (listing == Host::DirectoryListing::CutShort) {
        std::cerr << "Unable to read all of directory " << directory
                  << " for plugin registration\n";
    }
    std::erase_if(names, IsSwitchedOff);
    std::sort(names.begin(), names.end());
    for (const auto& name : names) {
        const std::string path = directory + "/" + name;
        try {
            AddPlugin(path);
        } catch (const CppToolException& failure) {
            std::cerr << "Error loading plugin " << path
                      << " skipping.  Error was: " << failure.what() << '\n';
        }
    }
}

void Dispatcher::AddExternalDirectory(const std::string& directory) {
    AddExternalDirectoryInt(directory + "/lib64", false);
    AddExternalDirectoryInt(directory, true);
}

void Dispatcher::AddDefaultDirectories() {
    for (const auto& directory : GetDefaultDirectories()) {
        AddExternalDirectory(directory);
    }
}

std::shared_ptr<Command> Dispatcher::GetCommand(std::shared_ptr<CommandInput> input,
                                                std::shared_ptr<CommandOutput> output) {
    std::shared_ptr<NamespaceNode> node;
    try {
        auto path = input->GetCommandPath();
        node = root_->ResolveNode(path);
    } catch (const CppToolException& failure) {
        output->AddErrorMessage(failure.what());
    }
    if (!node) {
        output->AddErrorMessage("Unable to find command");
        return nullptr;
    }
    if (node->GetType() != NamespaceNode::kCommandType) {
        output->AddErrorMessage("Path refers to a namespace, not a command.");
        return nullptr;
    }
    return std::dynamic_pointer_cast<Command>(node);
}

bool Dispatcher::ExecuteCommand(std::shared_ptr<CommandInput> input,
                                std::shared_ptr<CommandOutput> output) {
    const auto command = GetCommand(input, output);
    if (!command) {
        return false;
    }
    const auto inputSpec = command->GetInputSpec();
    input->SetInputSpec(inputSpec);
    if (inputSpec->Validate(input, output)) {
        command->Execute(input, output);
    } else if (!output->HasError() && !output->GetRootObject()) {
        output->AddErrorMessage("Command output has no root object nor error messages.  This is a "
                                "problem with the command and should be repaired.");
    }
    return !output->HasError();
}

bool Dispatcher::HasFormatter(const std::string& name) {
    const auto found = formatterRegistry_.find(name);
    return found != formatterRegistry_.end() && found->second->HasFormatter(name);
}

std::shared_ptr<Formatter> Dispatcher::GetFormatter(const std::string& name) {
    return HasFormatter(name) ? formatterRegistry_.at(name)->GetFormatter(name) : nullptr;
}

bool Dispatcher::FormatOutput(const std::shared_ptr<CallSpec::Output>& output,
                              FormatParameters& parameters, DisplayContext& display,
                              std::ostream& out) {
    const std::string& name = parameters.GetFormatter();
    if (name.empty()) {
        return true;
    }
    if (const auto formatter = GetFormatter(name)) {
        formatter->Format(output, parameters, display, out);
        return true;
    }
    output->AddErrorMessage("Unable to find requested formatter: " + name);
    return false;
}

FormatParameters
Dispatcher::GetDefaultOutputFormatParameters(std::shared_ptr<CommandInput> input,
                                             std::shared_ptr<CommandOutput> output) {
    const auto command = GetCommand(std::move(input), std::move(output));
    return command ? command->GetDefaultOutputFormatParameters() : FormatParameters();
}

std::vector<std::shared_ptr<Formatter>> Dispatcher::GetFormatters() {
    std::vector<std::shared_ptr<Formatter>> formatters;
    formatters.reserve(formatterRegistry_.size());
    for (const auto& [name, plugin] : formatterRegistry_) {
        formatters.push_back(plugin->GetFormatter(name));
    }
    return formatters;
}

std::vector<std::string> Dispatcher::GetPluginNames() const {
    std::vector<std::string> names;
    names.reserve(plugins_.size());
    for (const auto& plugin : plugins_) {
        names.push_back(plugin->GetName());
    }
    return names;
}

} // namespace CppTools::AutoCli
