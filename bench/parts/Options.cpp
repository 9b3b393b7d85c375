#include "../support/EngineCommands.h"

#include <benchmark/benchmark.h>

namespace {

using namespace CppTools;

constexpr const char* kLine =
    "--formatter json ns0000 cmd003 --name web01 --size=64 -m fast --force";

void ParseLine(benchmark::State& state) {
    Bench::FourParameters command;
    const auto spec = command.GetInputSpec();
    const std::string line = kLine;
    for (auto _ : state) {
        AutoCli::OptionParser parser;
        parser.ParseString(line);
        parser.SetInputSpec(spec);
        benchmark::DoNotOptimize(parser.GetCommandParameters());
    }
}

void ParseWords(benchmark::State& state) {
    Bench::FourParameters command;
    const auto spec = command.GetInputSpec();
    const std::vector<std::string> words = {"--formatter", "json",   "ns0000",    "cmd003",
                                            "--name",      "web01",  "--size=64", "-m",
                                            "fast",        "--force"};
    for (auto _ : state) {
        AutoCli::OptionParser parser;
        parser.ParseVector(words);
        parser.SetInputSpec(spec);
        benchmark::DoNotOptimize(parser.GetCommandParameters());
    }
}

void CheckInput(benchmark::State& state) {
    Bench::FourParameters command;
    const auto spec = command.GetInputSpec();
    const auto input = CallSpec::Input::New();
    input->AddParameter("name", "web01");
    input->AddParameter("size", "64");
    input->AddParameter("mode", "fast");
    input->AddParameter("force", "");
    for (auto _ : state) {
        const auto output = CallSpec::Output::New();
        benchmark::DoNotOptimize(spec->Validate(input, output));
    }
}

void CheckPattern(benchmark::State& state) {
    const auto constraint =
        CallSpec::ParameterConstraint::New(CallSpec::ParameterConstraintType::StringRegex);
    constraint->SetStringRegex("[a-z][a-z0-9-]*");
    const auto output = CallSpec::Output::New();
    for (auto _ : state) {
        benchmark::DoNotOptimize(constraint->Validate("web-server-01", "name", output));
    }
}

void RunCommand(benchmark::State& state) {
    AutoCli::Dispatcher dispatcher;
    Bench::RegisterCommands(dispatcher.GetRootNamespace(), 1000, [](AutoCli::Command&) {});
    const std::list<std::string> path = {"ns0042", "cmd003"};
    for (auto _ : state) {
        const auto input = AutoCli::CommandInput::New();
        input->SetCommandPath(path);
        input->AddParameter("name", "web01");
        const auto output = AutoCli::CommandOutput::New();
        benchmark::DoNotOptimize(dispatcher.ExecuteCommand(input, output));
    }
}

} // namespace

BENCHMARK(ParseLine);
BENCHMARK(ParseWords);
BENCHMARK(CheckInput);
BENCHMARK(CheckPattern);
BENCHMARK(RunCommand);
