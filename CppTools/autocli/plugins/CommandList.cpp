#include <CppTools/autocli/Namespace.h>
#include <CppTools/autocli/plugins/CommandList.h>
#include <CppTools/callspec/Input.h>
#include <CppTools/callspec/InputSpec.h>
#include <CppTools/callspec/OutputSpec.h>
#include <CppTools/metaobj/MetaList.h>
#include <CppTools/metaobj/MetaStruct.h>

namespace CppTools::AutoCli {

using CallSpec::ParameterSpec;
using MetaObj::MetaList;
using MetaObj::MetaStruct;
using MetaObj::MetaType;

namespace {

constexpr const char* kRecord = "TandrilCommand";
constexpr const char* kNamespace = "Namespace";
constexpr const char* kCommand = "Command";
constexpr const char* kDescription = "Description";

constexpr const char* kNamespaceFilter = "namespace-filter";
constexpr const char* kCommandFilter = "command-filter";
constexpr const char* kDescriptionFilter = "description-filter";

std::shared_ptr<ParameterSpec> NewFilter(const char* name, const char* shortName,
                                         const char* description) {
    auto filter = ParameterSpec::New(name, CallSpec::ParameterType::String);
    filter->SetShortName(shortName);
    filter->SetDescription(description);
    filter->SetRequired(false);
    return filter;
}

/// The empty filter occurs in every text.
bool Passes(const std::string& filter, const std::string& text) {
    return text.find(filter) != std::string::npos;
}

} // namespace

CommandList::CommandList(std::shared_ptr<Namespace> root) : root_(root.get()) {
    SetDescription("List all of the tandril commands.");
    SetDefaultOutputFormatter("table");
    SetDefaultOutputParameter("fields:TandrilCommand", "Namespace,Command,Description");
    SetDefaultOutputParameter("wrap-last", "true");
}

CommandList::~CommandList() = default;

std::shared_ptr<CommandList> CommandList::New(std::shared_ptr<Namespace> root) {
    return std::make_shared<CommandList>(std::move(root));
}

std::shared_ptr<CallSpec::InputSpec> CommandList::GetInputSpecInternal() {
    auto inputSpec = CallSpec::InputSpec::New();
    inputSpec->AddParameter(
        NewFilter(kNamespaceFilter, "n",
                  "Show only commands containing the specified string in their namespace path."));
    inputSpec->AddParameter(NewFilter(
        kCommandFilter, "c", "Show only commands containing the specified string in their name."));
    inputSpec->AddParameter(
        NewFilter(kDescriptionFilter, "d",
                  "Show only commands containing the specified string in their description."));
    return inputSpec;
}

std::shared_ptr<CallSpec::OutputSpec> CommandList::GetOutputSpecInternal() {
    auto outputSpec = CallSpec::OutputSpec::New();
    outputSpec->SetRootObject(MetaList::New(MetaType::Struct, GetOutputStructure()));
    return outputSpec;
}

void CommandList::ExecuteInternal(const std::shared_ptr<CallSpec::Input>& input,
                                  const std::shared_ptr<CallSpec::Output>& output) {
    auto list = MetaList::New(MetaType::Struct, GetOutputStructure());
    AddChildren(input->GetParameter(kNamespaceFilter), input->GetParameter(kCommandFilter),
                input->GetParameter(kDescriptionFilter), *root_, *list);
    output->SetRootObject(list);
}

std::shared_ptr<MetaStruct> CommandList::GetOutputStructure() const {
    auto record = MetaStruct::New(kRecord);
    record->SetField(kNamespace, "");
    record->SetField(kCommand, "");
    record->SetField(kDescription, "");
    return record;
}

void CommandList::AddChildren(const std::string& namespaceFilter, const std::string& commandFilter,
                              const std::string& descriptionFilter, NamespaceNode& node,
                              MetaList& list) const {
    const std::string path = node.GetPathString('.');
    const auto children = node.GetNamespaceNodes();
    list.EnsureCapacity(children.size());
    for (const auto& child : children) {
        if (child->GetType() == NamespaceNode::kNamespaceType) {
            AddChildren(namespaceFilter, commandFilter, descriptionFilter, *child, list);
        } else if (child->GetType() == NamespaceNode::kCommandType &&
                   Passes(namespaceFilter, path) && Passes(commandFilter, child->GetName()) &&
                   Passes(descriptionFilter, child->GetDescription())) {
            auto record = GetOutputStructure();
            record->SetField(kCommand, child->GetName());
            record->SetField(kNamespace, path);
            record->SetField(kDescription, child->GetDescription());
            list.Add(record);
        }
    }
}

} // namespace CppTools::AutoCli
