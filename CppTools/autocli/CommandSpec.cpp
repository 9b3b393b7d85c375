#include <CppTools/autocli/CommandInput.h>
#include <CppTools/autocli/CommandSpec.h>
#include <CppTools/autocli/HelpRecords.h>
#include <CppTools/callspec/InputSpec.h>
#include <CppTools/callspec/Output.h>
#include <CppTools/callspec/OutputSpec.h>
#include <CppTools/metaobj/CppToolException.h>
#include <CppTools/metaobj/MetaList.h>
#include <CppTools/metaobj/MetaStruct.h>

#include <boost/algorithm/string/join.hpp>

namespace CppTools::AutoCli {

using CallSpec::InputSpec;
using CallSpec::ParameterSpec;
using MetaObj::MetaList;
using MetaObj::MetaStruct;
using MetaObj::MetaType;

namespace {

constexpr const char* kHelp = "help";
constexpr const char* kNoChildren = "'. Commands cannot have sub-commands or sub-namespaces.";

std::string NotFound(const std::string& name, const std::string& path) {
    return "Unable to find a namespace or command with the name '" + name + "' on the command '" +
           path + kNoChildren;
}

std::shared_ptr<ParameterSpec> NewHelpParameter() {
    auto help = ParameterSpec::New(kHelp, CallSpec::ParameterType::Bool);
    help->SetShortName("h");
    help->SetDescription("Show the help message.");
    help->SetRequired(false);
    return help;
}

std::shared_ptr<MetaStruct> NewParameterRecord(const std::string& name,
                                               const std::string& shortName,
                                               const std::string& description, bool required,
                                               bool secret) {
    auto record = MetaStruct::New(HelpRecords::kParameter);
    record->SetField(HelpRecords::kName, name);
    record->SetField(HelpRecords::kShortName, shortName);
    record->SetField(HelpRecords::kDescription, description);
    record->SetField(HelpRecords::kRequired, required);
    record->SetField(HelpRecords::kSecret, secret);
    return record;
}

std::shared_ptr<MetaStruct> DescribeParameter(const ParameterSpec& parameter) {
    return NewParameterRecord(parameter.GetName(), parameter.GetShortName(),
                              parameter.GetDescription(true), parameter.IsRequired(),
                              parameter.IsSecret());
}

/// In the order of the specification, with the built-in help at the end.
std::shared_ptr<MetaList> DescribeParameters(const InputSpec& inputSpec) {
    auto list = MetaList::New(MetaType::Struct, NewParameterRecord("", "", "", false, false));
    for (const auto& parameter : inputSpec.GetParameters()) {
        if (parameter->GetName() != kHelp) {
            list->Add(DescribeParameter(*parameter));
        }
    }
    if (const auto help = inputSpec.FindParameter(kHelp)) {
        list->Add(DescribeParameter(*help));
    }
    return list;
}

std::shared_ptr<MetaStruct> NewExampleRecord(const std::string& description,
                                             const std::string& syntax) {
    auto record = MetaStruct::New(HelpRecords::kExample);
    record->SetField(HelpRecords::kDescription, description);
    record->SetField(HelpRecords::kSyntax, syntax);
    return record;
}

} // namespace

CommandSpec::CommandSpec() = default;
CommandSpec::~CommandSpec() = default;

std::shared_ptr<InputSpec> CommandSpec::GetInputSpec() {
    if (!inputSpec_) {
        auto declared = GetInputSpecInternal();
        if (!declared) {
            throw CppToolException("The command '" + GetName() +
                                   "' declares no input specification.");
        }
        declared->AddParameter(NewHelpParameter());
        inputSpec_ = std::move(declared);
    }
    return inputSpec_;
}

std::shared_ptr<CallSpec::OutputSpec> CommandSpec::GetOutputSpec() {
    if (!outputSpec_) {
        outputSpec_ = GetOutputSpecInternal();
        if (!outputSpec_) {
            throw CppToolException("The command '" + GetName() +
                                   "' declares no output specification.");
        }
    }
    return outputSpec_;
}

std::shared_ptr<NamespaceNode> CommandSpec::GetThis() {
    return shared_from_this();
}

bool CommandSpec::HasNamespaceNode(const std::string& /*name*/) {
    return false;
}

std::shared_ptr<NamespaceNode> CommandSpec::GetNamespaceNode(const std::string& name) {
    throw CppToolException(NotFound(name, GetPathString(' ')));
}

void CommandSpec::RegisterNamespaceNode(std::shared_ptr<NamespaceNode> /*node*/, std::string name) {
    throw CppToolException("Attempt to register a command or namespace '" + name +
                           "' on command '" + GetPathString(' ') + kNoChildren);
}

void CommandSpec::RegisterNamespaceNode(std::shared_ptr<NamespaceNode> node, const char* name) {
    RegisterNamespaceNode(std::move(node), std::string(name));
}

std::shared_ptr<NamespaceNode> CommandSpec::ResolveNode(std::list<std::string>& names) {
    throw CppToolException(NotFound(boost::algorithm::join(names, " "), GetPathString(' ')));
}

Dispatcher* CommandSpec::GetDispatcher() {
    const auto parent = GetParent();
    if (!parent) {
        throw CppToolException("Invalid state for command with name '" + GetName() +
                               "'. No parent node has been set.");
    }
    return parent->GetDispatcher();
}

void CommandSpec::SetParent(std::shared_ptr<NamespaceNode> parent) {
    parent_ = parent;
}

std::shared_ptr<NamespaceNode> CommandSpec::GetParent() {
    return parent_.lock();
}

int CommandSpec::GetType() {
    return kCommandType;
}

void CommandSpec::AddExample(std::string arguments, std::string description) {
    examples_.emplace_back(std::move(arguments), std::move(description));
}

void CommandSpec::AddExample(const char* arguments, const char* description) {
    examples_.emplace_back(arguments, description);
}

void CommandSpec::SetDefaultOutputFormatter(std::string name) {
    defaultOutputFormat_.SetFormatter(std::move(name));
}

void CommandSpec::SetDefaultOutputFormatter(const char* name) {
    defaultOutputFormat_.SetFormatter(name);
}

void CommandSpec::SetDefaultOutputParameter(std::string key, std::string value) {
    defaultOutputFormat_.SetParameter(std::move(key), std::move(value));
}

void CommandSpec::SetDefaultOutputParameter(const char* key, const char* value) {
    defaultOutputFormat_.SetParameter(key, value);
}

void CommandSpec::GenerateHelpOutput(const std::shared_ptr<CallSpec::Input>& input,
                                     const std::shared_ptr<CallSpec::Output>& output) {
    auto record = MetaStruct::New(HelpRecords::kCommandHelp);
    std::string commandLine;
    if (const auto* commandInput = dynamic_cast<const CommandInput*>(input.get())) {
        const std::string path = commandInput->GetCommandPathString();
        record->SetField(HelpRecords::kDispatcher, commandInput->GetDispatcher());
        record->SetField(HelpRecords::kPath, path);
        commandLine = commandInput->GetDispatcher() + " " + path;
    }
    record->SetField(HelpRecords::kDescription, GetDescription());
    record->SetField(HelpRecords::kParameterList, DescribeParameters(*GetInputSpec()));

    auto exampleList = MetaList::New(MetaType::Struct, NewExampleRecord("", ""));
    for (const auto& [arguments, description] : examples_) {
        exampleList->Add(
            NewExampleRecord(description + " :", "# " + commandLine + " " + arguments));
    }
    record->SetField(HelpRecords::kExampleList, exampleList);

    output->SetRootObject(record);
    output->SetOutputType(CallSpec::Output::OutputType::Help);
}

} // namespace CppTools::AutoCli
