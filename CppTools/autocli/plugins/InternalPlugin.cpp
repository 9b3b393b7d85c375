#include <CppTools/autocli/Namespace.h>
#include <CppTools/autocli/formatters/CommandHelpFormatter.h>
#include <CppTools/autocli/formatters/JsonFormatter.h>
#include <CppTools/autocli/formatters/PythonFormatter.h>
#include <CppTools/autocli/formatters/SimpleFormatter.h>
#include <CppTools/autocli/formatters/TableFormatter.h>
#include <CppTools/autocli/formatters/XmlFormatter.h>
#include <CppTools/autocli/plugins/CommandList.h>
#include <CppTools/autocli/plugins/InternalPlugin.h>

#include <algorithm>

namespace CppTools::AutoCli {

namespace {

const std::string kName = "Internal";

std::shared_ptr<Namespace> NewNamespace(const char* description) {
    auto created = Namespace::New();
    created->SetDescription(description);
    return created;
}

} // namespace

InternalPlugin::InternalPlugin() = default;
InternalPlugin::~InternalPlugin() = default;

std::shared_ptr<InternalPlugin> InternalPlugin::New() {
    return std::make_shared<InternalPlugin>();
}

void InternalPlugin::Initialize() {
    formatters_.reserve(formatters_.size() + 6);
    formatters_.push_back(std::make_shared<TableFormatter>());
    formatters_.push_back(std::make_shared<SimpleFormatter>());
    formatters_.push_back(std::make_shared<XmlFormatter>());
    formatters_.push_back(std::make_shared<PythonFormatter>());
    formatters_.push_back(std::make_shared<JsonFormatter>());
    formatters_.push_back(std::make_shared<CommandHelpFormatter>());
}

const std::string& InternalPlugin::GetName() const {
    return kName;
}

void InternalPlugin::RegisterNamespaces(std::shared_ptr<Namespace> root) {
    const auto system =
        NewNamespace("Commands that operate on the tandril system itself allowing users to get "
                     "additional information.");
    const auto commands = NewNamespace("Operations to get information about commands.");
    commands->RegisterNamespaceNode(CommandList::New(root), "list");
    system->RegisterNamespaceNode(commands, "command");
    root->RegisterNamespaceNode(system, "tandril");
}

bool InternalPlugin::HasFormatter(const std::string& name) {
    return GetFormatter(name) != nullptr;
}

std::shared_ptr<Formatter> InternalPlugin::GetFormatter(const std::string& name) {
    const auto found =
        std::find_if(formatters_.begin(), formatters_.end(),
                     [&](const auto& formatter) { return formatter->GetName() == name; });
    return found == formatters_.end() ? nullptr : *found;
}

std::vector<std::shared_ptr<Formatter>>& InternalPlugin::GetFormatters() {
    return formatters_;
}

} // namespace CppTools::AutoCli
