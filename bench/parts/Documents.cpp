#include "../support/Rows.h"

#include <CppTools/CppTools.h>

#include <benchmark/benchmark.h>

#include <string>

namespace {

using namespace CppTools;

std::string Field(const std::string& name, const std::string& kind, const std::string& value) {
    return "  <field name=\"" + name + "\"><" + kind + ">" + value + "</" + kind + "></field>\n";
}

std::string Document(std::int64_t rows) {
    std::string text = "<?xml version=\"1.0\"?>\n<output>\n<list type=\"structure\">\n";
    Bench::PlainRow row{};
    for (std::int64_t i = 0; i < rows; ++i) {
        // The rows between have no byte that a document would have to escape.
        Bench::FillRow(row, 10 * i + 1);
        text += " <structure typeName=\"Row\">\n" +
                Field("Description", "string", row.description) +
                Field("Enabled", "bool", row.enabled ? "true" : "false") +
                Field("Id", "int", std::to_string(row.id)) + Field("Name", "string", row.name) +
                Field("Size", "int", std::to_string(row.size)) +
                Field("State", "string", row.state) + " </structure>\n";
    }
    return text + "</list>\n</output>\n";
}

void ReadDocument(benchmark::State& state) {
    const std::string text = Document(state.range(0));
    for (auto _ : state) {
        benchmark::DoNotOptimize(AutoCli::XmlUtil_ParseXmlOutput(text));
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}

void ReadScalar(benchmark::State& state) {
    const std::string text = "<output><string>done</string></output>";
    for (auto _ : state) {
        benchmark::DoNotOptimize(AutoCli::XmlUtil_ParseXmlOutput(text));
    }
}

} // namespace

BENCHMARK(ReadScalar);
BENCHMARK(ReadDocument)->Arg(1)->Arg(1000);
