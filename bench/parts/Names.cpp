#include <CppTools/CppTools.h>

#include <benchmark/benchmark.h>

namespace {

using namespace CppTools;

void CheckNodeName(benchmark::State& state, const std::string& name) {
    for (auto _ : state) {
        benchmark::DoNotOptimize(AutoCli::AutoCli_IsValidName(name));
    }
}

void CheckFieldName(benchmark::State& state) {
    const std::string name = "Free Space";
    for (auto _ : state) {
        benchmark::DoNotOptimize(MetaObj::IsValidFieldName(name));
    }
}

void CheckStructName(benchmark::State& state) {
    const std::string name = "FilesystemUsage";
    for (auto _ : state) {
        benchmark::DoNotOptimize(MetaObj::IsValidStructName(name));
    }
}

void CheckOptionShape(benchmark::State& state) {
    const std::string word = "--screen-width=80";
    for (auto _ : state) {
        benchmark::DoNotOptimize(AutoCli::OptionParser::IsParameter(word));
    }
}

void MakeParameter(benchmark::State& state) {
    for (auto _ : state) {
        benchmark::DoNotOptimize(
            CallSpec::ParameterSpec::New("screen-width", CallSpec::ParameterType::Int));
    }
}

} // namespace

BENCHMARK_CAPTURE(CheckNodeName, short, "list");
BENCHMARK_CAPTURE(CheckNodeName, long, "listOfAllTheFileSystemsThatAreMounted");
BENCHMARK_CAPTURE(CheckNodeName, refused, "listOfAllTheFileSystemsThatAreMounted-");
BENCHMARK(CheckFieldName);
BENCHMARK(CheckStructName);
BENCHMARK(CheckOptionShape);
BENCHMARK(MakeParameter);
