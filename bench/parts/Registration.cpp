#include "../support/EngineCommands.h"

#include <benchmark/benchmark.h>

namespace {

using namespace CppTools;

constexpr long kCommands = 1000;

void Register(benchmark::State& state) {
    for (auto _ : state) {
        AutoCli::Dispatcher dispatcher;
        Bench::RegisterCommands(dispatcher.GetRootNamespace(), kCommands, [](AutoCli::Command&) {});
    }
    state.SetItemsProcessed(state.iterations() * kCommands);
}

void MakeSpecification(benchmark::State& state) {
    Bench::FourParameters command;
    for (auto _ : state) {
        benchmark::DoNotOptimize(command.GetInputSpecInternal());
    }
}

void MakeDispatcher(benchmark::State& state) {
    for (auto _ : state) {
        AutoCli::Dispatcher dispatcher;
        benchmark::DoNotOptimize(dispatcher);
    }
}

void FindCommand(benchmark::State& state) {
    AutoCli::Dispatcher dispatcher;
    Bench::RegisterCommands(dispatcher.GetRootNamespace(), kCommands, [](AutoCli::Command&) {});
    for (auto _ : state) {
        std::list<std::string> path = {"ns0042", "cmd003"};
        benchmark::DoNotOptimize(dispatcher.GetRootNamespace()->ResolveNode(path));
    }
}

void ListCommands(benchmark::State& state) {
    AutoCli::Dispatcher dispatcher;
    Bench::RegisterCommands(dispatcher.GetRootNamespace(), kCommands, [](AutoCli::Command&) {});
    for (auto _ : state) {
        const auto input = AutoCli::CommandInput::New();
        input->SetCommandPath({"tandril", "command", "list"});
        const auto output = AutoCli::CommandOutput::New();
        benchmark::DoNotOptimize(dispatcher.ExecuteCommand(input, output));
    }
    state.SetItemsProcessed(state.iterations() * kCommands);
}

} // namespace

BENCHMARK(Register);
BENCHMARK(MakeSpecification);
BENCHMARK(MakeDispatcher);
BENCHMARK(FindCommand);
BENCHMARK(ListCommands);
