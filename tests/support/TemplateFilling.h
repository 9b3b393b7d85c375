#pragma once

#include <CppTools/autocli/plugins/ExtensionCommand.h>
#include <CppTools/callspec/Input.h>
#include <CppTools/callspec/InputSpec.h>
#include <CppTools/callspec/OutputSpec.h>
#include <CppTools/metaobj/MetaString.h>

#include <initializer_list>
#include <memory>
#include <string>
#include <utility>
#include <vector>

/// Extension commands with parameters of every kind, and the calls that fill their templates.
namespace TestSupport {

/// Parameter names with a value each; a name repeated gives a parameter several values.
using GivenParameters = std::vector<std::pair<std::string, std::string>>;

/// A command with one parameter of each kind, and two more strings around "name" in name order.
inline std::shared_ptr<CppTools::AutoCli::ExtensionCommand> NewTemplateCommand() {
    using CppTools::CallSpec::ParameterSpec;
    using CppTools::CallSpec::ParameterType;
    auto inputSpec = CppTools::CallSpec::InputSpec::New();
    const std::initializer_list<std::pair<const char*, ParameterType>> parameters = {
        {"count", ParameterType::Int},       {"early", ParameterType::String},
        {"force", ParameterType::Flag},      {"ip", ParameterType::StringList},
        {"name", ParameterType::String},     {"name-2", ParameterType::String},
        {"on", ParameterType::Bool},         {"port", ParameterType::IntList},
        {"switch", ParameterType::BoolList}, {"zone", ParameterType::String}};
    for (const auto& [name, type] : parameters) {
        auto parameter = ParameterSpec::New(name, type);
        parameter->SetRequired(false);
        inputSpec->AddParameter(parameter);
    }
    auto outputSpec = CppTools::CallSpec::OutputSpec::New();
    outputSpec->SetRootObject(CppTools::MetaObj::MetaString::New());
    auto command = CppTools::AutoCli::ExtensionCommand::New();
    command->SetInputSpec(inputSpec);
    command->SetOutputSpec(outputSpec);
    return command;
}

inline std::shared_ptr<CppTools::CallSpec::Input>
NewInput(CppTools::AutoCli::ExtensionCommand& command, const GivenParameters& given) {
    auto input = CppTools::CallSpec::Input::New();
    for (const auto& [name, value] : given) {
        input->AddParameter(name, value);
    }
    input->SetInputSpec(command.GetInputSpec());
    return input;
}

/// The command line that a template makes.
inline std::string FilledLine(const std::string& text, const GivenParameters& given) {
    const auto command = NewTemplateCommand();
    command->SetExecuteCommand(text);
    return command->SubstituteInput(NewInput(*command, given), false);
}

/// The standard input that a template makes.
inline std::string FilledStdin(const std::string& text, const GivenParameters& given) {
    const auto command = NewTemplateCommand();
    command->SetStdin(text);
    return command->SubstituteInput(NewInput(*command, given), true);
}

} // namespace TestSupport
