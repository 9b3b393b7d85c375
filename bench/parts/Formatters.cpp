#include "../support/EngineCommands.h"
#include "../support/EngineRows.h"

#include <benchmark/benchmark.h>

#include <fstream>

namespace {

using namespace CppTools;

constexpr std::int64_t kRows = 1000;

void Render(benchmark::State& state, const std::shared_ptr<AutoCli::Formatter>& formatter,
            const std::shared_ptr<CallSpec::Output>& output,
            AutoCli::FormatParameters parameters = {}) {
    AutoCli::DisplayContext display;
    display.width = 80;
    std::ofstream out("/dev/null");
    for (auto _ : state) {
        formatter->Format(output, parameters, display, out);
    }
}

void FormatRows(benchmark::State& state, const char* formatter) {
    AutoCli::Dispatcher dispatcher;
    const auto output = CallSpec::Output::New();
    output->SetRootObject(Bench::NewRows(kRows));
    Render(state, dispatcher.GetFormatter(formatter), output);
    state.SetItemsProcessed(state.iterations() * kRows);
}

void FormatRowsOfChosenFields(benchmark::State& state, const char* formatter) {
    AutoCli::Dispatcher dispatcher;
    const auto output = CallSpec::Output::New();
    output->SetRootObject(Bench::NewRows(kRows));
    AutoCli::FormatParameters parameters;
    parameters.SetParameter("fields:Row", "Id,Name,Size,Description");
    parameters.SetParameter("units:Row.Size", "MB");
    parameters.SetParameter("printf:Row.Id", "%06d");
    parameters.SetParameter("wrap-last", "true");
    Render(state, dispatcher.GetFormatter(formatter), output, parameters);
    state.SetItemsProcessed(state.iterations() * kRows);
}

void FormatHelp(benchmark::State& state) {
    AutoCli::Dispatcher dispatcher;
    const auto command = std::make_shared<Bench::FourParameters>();
    dispatcher.GetRootNamespace()->RegisterNamespaceNode(command, "run");
    const auto output = AutoCli::CommandOutput::New();
    command->GenerateHelpOutput(AutoCli::CommandInput::New(), output);
    Render(state, dispatcher.GetFormatter("commandhelp"), output);
}

} // namespace

BENCHMARK_CAPTURE(FormatRows, json, "json");
BENCHMARK_CAPTURE(FormatRows, xml, "xml");
BENCHMARK_CAPTURE(FormatRows, table, "table");
BENCHMARK_CAPTURE(FormatRows, python, "python");
BENCHMARK_CAPTURE(FormatRows, simple, "simple");
BENCHMARK_CAPTURE(FormatRowsOfChosenFields, table, "table");
BENCHMARK_CAPTURE(FormatRowsOfChosenFields, simple, "simple");
BENCHMARK(FormatHelp);
