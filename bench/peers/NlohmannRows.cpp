// nlohmann-rows ROWS: the rows as an ordered document of nlohmann-json, written with line breaks.

#include "../support/Measure.h"
#include "../support/Rows.h"

#include <iomanip>
#include <iostream>
#include <nlohmann/json.hpp>

namespace {

nlohmann::ordered_json NewRow(const Bench::PlainRow& row) {
    nlohmann::ordered_json object;
    object["Description"] = row.description;
    object["Enabled"] = row.enabled;
    object["Id"] = row.id;
    object["Name"] = row.name;
    object["Size"] = row.size;
    object["State"] = row.state;
    return object;
}

} // namespace

int main(int argc, char** argv) {
    using namespace Bench;
    const long count = argc > 1 ? std::atol(argv[1]) : 0;
    if (count < 1) {
        std::cerr << "usage: nlohmann-rows ROWS\n";
        return 2;
    }
    const double perRow = 1.0 / static_cast<double>(count);
    const double before = HeldBytes();
    const Stopwatch building;
    auto rows = nlohmann::ordered_json::array();
    PlainRow row{};
    for (long i = 0; i < count; ++i) {
        FillRow(row, i);
        rows.push_back(NewRow(row));
    }
    Report("nlohmann-json", "build_us_per_row", building.Microseconds() * perRow);
    Report("nlohmann-json", "held_bytes_per_row", (HeldBytes() - before) * perRow);
    std::ofstream out("/dev/null");
    const Stopwatch rendering;
    out << std::setw(3) << rows << std::flush;
    Report("nlohmann-json", "render_us_per_row", rendering.Microseconds() * perRow);
}
