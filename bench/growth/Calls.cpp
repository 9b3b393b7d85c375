#include "../support/EngineCommands.h"
#include "Curves.h"

#include <stdexcept>
#include <vector>

namespace Bench {

using namespace CppTools;
using CallSpec::InputSpec;
using CallSpec::ParameterSpec;
using CallSpec::ParameterType;

namespace {

/// A command that declares `count` parameters of a type.
class Declared : public FourParameters {
  public:
    Declared(long count, ParameterType type) : count_(count), type_(type) {}

    std::shared_ptr<InputSpec> GetInputSpecInternal() override {
        auto spec = InputSpec::New();
        for (long i = 0; i < count_; ++i) {
            spec->AddParameter(ParameterSpec::New("option" + std::to_string(i), type_));
        }
        return spec;
    }

  private:
    long count_;
    ParameterType type_;
};

/// Words of a command line: a command, then `count` options with a value.
std::vector<std::string> WordsOf(long count, long names) {
    std::vector<std::string> words = {"run"};
    for (long i = 0; i < count; ++i) {
        words.push_back("--option" + std::to_string(i % names));
        words.emplace_back("value");
    }
    return words;
}

void RunOnce(AutoCli::Dispatcher& dispatcher, AutoCli::Command& command,
             const std::vector<std::string>& words) {
    AutoCli::OptionParser parser;
    parser.ParseVector(words);
    parser.SetInputSpec(command.GetInputSpec());
    const auto input = AutoCli::CommandInput::New();
    input->SetCommandPath(parser.GetCommandPath());
    for (const auto& [name, value] : parser.GetCommandParameters()) {
        input->AddParameter(name, value);
    }
    if (!dispatcher.ExecuteCommand(input, AutoCli::CommandOutput::New())) {
        throw std::runtime_error("the command failed");
    }
}

void MeasureCall(const char* curve, long parameters, ParameterType type,
                 const std::vector<std::string>& words) {
    AutoCli::Dispatcher dispatcher;
    const auto command = std::make_shared<Declared>(parameters, type);
    Report(curve, "declare", LeastMilliseconds([&] { command->GetInputSpecInternal(); }));
    dispatcher.GetRootNamespace()->RegisterNamespaceNode(command, "run");
    Report(curve, "call", LeastMilliseconds([&] { RunOnce(dispatcher, *command, words); }));
}

} // namespace

void MeasureParameters(long size) {
    MeasureCall("parameters", size, ParameterType::String, WordsOf(size, size));
}

void MeasureOption(long size) {
    MeasureCall("option", 1, ParameterType::StringList, WordsOf(size, 1));
}

void MeasurePath(long size) {
    AutoCli::Dispatcher dispatcher;
    std::vector<std::string> words;
    std::shared_ptr<AutoCli::NamespaceNode> node = dispatcher.GetRootNamespace();
    for (long i = 1; i < size; ++i) {
        words.emplace_back("level");
        node = node->SubNamespace(words.back());
    }
    words.emplace_back("run");
    const auto command = std::make_shared<Declared>(0, ParameterType::String);
    node->RegisterNamespaceNode(command, words.back());
    Report("path", "call", LeastMilliseconds([&] { RunOnce(dispatcher, *command, words); }));
    Report("path", "text", LeastMilliseconds([&] { command->GetPathString('.'); }));
}

void MeasureTemplate(long size) {
    const std::string piece = "$val{name} $if{force,--force} $if{absent,x} ";
    std::string text;
    while (static_cast<long>(text.size()) < size) {
        text += piece;
    }
    auto spec = InputSpec::New();
    spec->AddParameter(ParameterSpec::New("name", ParameterType::String));
    spec->AddParameter(ParameterSpec::New("force", ParameterType::Flag));
    AutoCli::ExtensionCommand command;
    command.SetInputSpec(spec);
    command.SetExecuteCommand(text.substr(0, static_cast<std::size_t>(size)));
    const auto input = CallSpec::Input::New();
    input->SetInputSpec(spec);
    input->AddParameter("name", "web01");
    input->AddParameter("force", "");
    Report("template", "fill", LeastMilliseconds([&] { command.SubstituteInput(input, false); }));
}

} // namespace Bench
