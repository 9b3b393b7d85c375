#include "../support/EngineRows.h"

#include <CppTools/CppTools.h>

#include <benchmark/benchmark.h>

namespace {

using namespace CppTools::MetaObj;

constexpr std::int64_t kRows = 1000;

void BuildScalars(benchmark::State& state) {
    const std::string text = "a text that fits into no small buffer";
    for (auto _ : state) {
        benchmark::DoNotOptimize(MetaInt::New(4711));
        benchmark::DoNotOptimize(MetaBool::New(true));
        benchmark::DoNotOptimize(MetaString::New(text));
    }
}

void BuildRow(benchmark::State& state) {
    Bench::PlainRow row{};
    Bench::FillRow(row, 7);
    for (auto _ : state) {
        benchmark::DoNotOptimize(Bench::NewRow(row));
    }
}

void BuildRowFromDefinition(benchmark::State& state) {
    Bench::PlainRow row{};
    Bench::FillRow(row, 7);
    const auto definition = Bench::NewRow(row);
    for (auto _ : state) {
        benchmark::DoNotOptimize(MetaStruct::New(definition));
    }
}

void BuildRows(benchmark::State& state) {
    for (auto _ : state) {
        auto rows = Bench::NewRows(kRows);
        state.PauseTiming();
        rows.reset();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * kRows);
}

void ReleaseRows(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        auto rows = Bench::NewRows(kRows);
        state.ResumeTiming();
        rows.reset();
    }
    state.SetItemsProcessed(state.iterations() * kRows);
}

void ReadFields(benchmark::State& state) {
    Bench::PlainRow row{};
    Bench::FillRow(row, 7);
    const auto structure = Bench::NewRow(row);
    for (auto _ : state) {
        for (const auto& name : structure->GetFieldNames()) {
            benchmark::DoNotOptimize(structure->GetField(name));
        }
    }
}

void ShowAsPlainText(benchmark::State& state) {
    const auto rows = Bench::NewRows(kRows);
    for (auto _ : state) {
        benchmark::DoNotOptimize(rows->ToString());
    }
    state.SetItemsProcessed(state.iterations() * kRows);
}

} // namespace

BENCHMARK(BuildScalars);
BENCHMARK(BuildRow);
BENCHMARK(BuildRowFromDefinition);
BENCHMARK(BuildRows);
BENCHMARK(ReleaseRows);
BENCHMARK(ReadFields);
BENCHMARK(ShowAsPlainText);
