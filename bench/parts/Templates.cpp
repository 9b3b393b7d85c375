// Templates are filled inside extension commands, which is how they are reached from outside.

#include "../support/EngineCommands.h"

#include <benchmark/benchmark.h>

namespace {

using namespace CppTools;
using CallSpec::ParameterSpec;
using CallSpec::ParameterType;

std::shared_ptr<AutoCli::ExtensionCommand> NewCommand(const std::string& text) {
    auto spec = CallSpec::InputSpec::New();
    spec->AddParameter(ParameterSpec::New("name", ParameterType::String));
    spec->AddParameter(ParameterSpec::New("force", ParameterType::Flag));
    spec->AddParameter(ParameterSpec::New("label", ParameterType::StringList));
    auto command = AutoCli::ExtensionCommand::New();
    command->SetInputSpec(spec);
    command->SetExecuteCommand(text);
    command->SetStdin(text);
    return command;
}

void Fill(benchmark::State& state, const char* text, bool forStdin) {
    const auto command = NewCommand(text);
    const auto input = CallSpec::Input::New();
    input->SetInputSpec(command->GetInputSpecInternal());
    input->AddParameter("name", "a name; with $signs");
    input->AddParameter("force", "");
    for (const char* label : {"red", "green", "blue"}) {
        input->AddParameter("label", label);
    }
    for (auto _ : state) {
        benchmark::DoNotOptimize(command->SubstituteInput(input, forStdin));
    }
}

constexpr const char* kAllKinds =
    "/usr/bin/tool --name \"$val{name}\" $if{force,--force} $if{absent,--size $val{absent}} "
    "$list{label,',',true} $multilist{label,--label,true} > /dev/null";

void Sanitize(benchmark::State& state) {
    AutoCli::ExtensionCommand command;
    const std::string text(static_cast<std::size_t>(state.range(0)), '$');
    for (auto _ : state) {
        benchmark::DoNotOptimize(command.SanitizeInput(text));
    }
}

} // namespace

BENCHMARK_CAPTURE(Fill, nothing, "/usr/bin/tool --version", false);
BENCHMARK_CAPTURE(Fill, value, "/usr/bin/tool --name $val{name}", false);
BENCHMARK_CAPTURE(Fill, all_kinds, kAllKinds, false);
BENCHMARK_CAPTURE(Fill, standard_input, kAllKinds, true);
BENCHMARK(Sanitize)->Arg(64)->Arg(65536);
