// rendering FORMATTER ROWS [FILE]: builds the rows, holds them, renders them to /dev/null (or to
// FILE) through a formatter, and releases them.

#include "../support/EngineRows.h"
#include "../support/Measure.h"

#include <CppTools/CppTools.h>

#include <cstdlib>
#include <iostream>

namespace {

using namespace Bench;
using namespace CppTools;

/// A function of its own, so that a profiler can be told to look at nothing else.
[[gnu::noinline]] void Render(AutoCli::Formatter& formatter,
                              const std::shared_ptr<CallSpec::Output>& output, const char* file) {
    AutoCli::FormatParameters parameters;
    AutoCli::DisplayContext display;
    std::ofstream out(file);
    formatter.Format(output, parameters, display, out);
}

void Measure(AutoCli::Formatter& formatter, std::int64_t count, const char* file) {
    const std::string what = "rendering " + formatter.GetName();
    const auto perRow = [count](double figure) { return figure / static_cast<double>(count); };

    const double residentBefore = HeldBytes();
    const double allocatedBefore = AllocatedBytes();
    const Stopwatch building;
    auto rows = NewRows(count);
    Report(what, "build_us_per_row", perRow(building.Microseconds()));
    const double held = HeldBytes() - residentBefore;
    Report(what, "held_bytes_per_row", perRow(held));
    Report(what, "allocated_bytes_per_row", perRow(AllocatedBytes() - allocatedBefore));

    auto output = CallSpec::Output::New();
    output->SetRootObject(rows);
    ForgetPeak();
    const Stopwatch rendering;
    Render(formatter, output, file);
    Report(what, "render_us_per_row", perRow(rendering.Microseconds()));
    Report(what, "render_peak_of_held", (PeakBytes() - residentBefore) / held);

    const Stopwatch releasing;
    output.reset();
    rows.reset();
    Report(what, "release_us_per_row", perRow(releasing.Microseconds()));
}

} // namespace

int main(int argc, char** argv) {
    AutoCli::Dispatcher dispatcher;
    const auto formatter = dispatcher.GetFormatter(argc > 1 ? argv[1] : "");
    const long count = argc > 2 ? std::atol(argv[2]) : 0;
    if (!formatter || count < 1) {
        std::cerr << "usage: rendering FORMATTER ROWS [FILE]\n";
        return 2;
    }
    Measure(*formatter, count, argc > 3 ? argv[3] : "/dev/null");
}
