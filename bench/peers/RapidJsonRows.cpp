// rapidjson-rows ROWS: the rows as a document of RapidJSON, its texts copied into the document's
// pool, written with line breaks.

#include "../support/Measure.h"
#include "../support/Rows.h"

#include <array>
#include <iostream>
#include <memory>
#include <rapidjson/document.h>
#include <rapidjson/filewritestream.h>
#include <rapidjson/prettywriter.h>

namespace {

using Pool = rapidjson::Document::AllocatorType;

rapidjson::Value NewRow(const Bench::PlainRow& row, Pool& pool) {
    rapidjson::Value object(rapidjson::kObjectType);
    object.AddMember("Description", rapidjson::Value(row.description, pool), pool);
    object.AddMember("Enabled", row.enabled, pool);
    object.AddMember("Id", row.id, pool);
    object.AddMember("Name", rapidjson::Value(row.name, pool), pool);
    object.AddMember("Size", row.size, pool);
    object.AddMember("State", rapidjson::Value(row.state, pool), pool);
    return object;
}

void Render(const rapidjson::Document& rows) {
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen("/dev/null", "w"),
                                                               std::fclose);
    static std::array<char, 1U << 16U> block;
    rapidjson::FileWriteStream stream(file.get(), block.data(), block.size());
    rapidjson::PrettyWriter<rapidjson::FileWriteStream> writer(stream);
    writer.SetIndent(' ', 3);
    rows.Accept(writer);
    stream.Flush();
}

} // namespace

int main(int argc, char** argv) {
    using namespace Bench;
    const long count = argc > 1 ? std::atol(argv[1]) : 0;
    if (count < 1) {
        std::cerr << "usage: rapidjson-rows ROWS\n";
        return 2;
    }
    const double perRow = 1.0 / static_cast<double>(count);
    const double before = HeldBytes();
    const Stopwatch building;
    rapidjson::Document rows(rapidjson::kArrayType);
    PlainRow row{};
    for (long i = 0; i < count; ++i) {
        FillRow(row, i);
        rows.PushBack(NewRow(row, rows.GetAllocator()), rows.GetAllocator());
    }
    Report("RapidJSON", "build_us_per_row", building.Microseconds() * perRow);
    Report("RapidJSON", "held_bytes_per_row", (HeldBytes() - before) * perRow);
    const Stopwatch rendering;
    Render(rows);
    Report("RapidJSON", "render_us_per_row", rendering.Microseconds() * perRow);
}
