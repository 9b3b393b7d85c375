#include "../support/EngineRows.h"

#include <CppTools/CppTools.h>

#include <benchmark/benchmark.h>

namespace {

void CompareRows(benchmark::State& state) {
    Bench::PlainRow row{};
    Bench::FillRow(row, 1);
    const auto one = Bench::NewRow(row);
    Bench::FillRow(row, 2);
    const std::shared_ptr<CppTools::MetaObj::MetaObject> other = Bench::NewRow(row);
    for (auto _ : state) {
        benchmark::DoNotOptimize(one->IsSameStructure(other, nullptr));
    }
}

void CompareRowsThatDiffer(benchmark::State& state) {
    Bench::PlainRow row{};
    Bench::FillRow(row, 1);
    const auto one = Bench::NewRow(row);
    const auto other = Bench::NewRow(row);
    other->RemoveField("State");
    for (auto _ : state) {
        std::vector<std::string> errors;
        benchmark::DoNotOptimize(one->IsSameStructure(other, &errors));
    }
}

void CompareResultWithDeclaration(benchmark::State& state) {
    CppTools::CallSpec::OutputSpec declared;
    declared.SetRootObject(Bench::NewRows(1));
    const auto output = CppTools::CallSpec::Output::New();
    output->SetRootObject(Bench::NewRows(1000));
    for (auto _ : state) {
        benchmark::DoNotOptimize(declared.Validate(output, nullptr));
    }
}

} // namespace

BENCHMARK(CompareRows);
BENCHMARK(CompareRowsThatDiffer);
BENCHMARK(CompareResultWithDeclaration);
