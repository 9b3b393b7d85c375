// json-reading nlohmann|rapidjson FILE: the rows read from JSON text.

#include "../support/Measure.h"

#include <iostream>
#include <nlohmann/json.hpp>
#include <rapidjson/document.h>

int main(int argc, char** argv) {
    using namespace Bench;
    const std::string library = argc > 1 ? argv[1] : "";
    const std::string text = argc > 2 ? ReadFile(argv[2]) : "";
    if (text.empty()) {
        std::cerr << "usage: json-reading nlohmann|rapidjson FILE\n";
        return 2;
    }
    ForgetPeak();
    const double before = HeldBytes();
    nlohmann::ordered_json object;
    rapidjson::Document document;
    const Stopwatch reading;
    if (library == "nlohmann") {
        object = nlohmann::ordered_json::parse(text);
    } else {
        document.Parse(text.data(), text.size());
    }
    Report(library, "ms", reading.Milliseconds());
    Report(library, "peak_bytes_per_byte",
           (PeakBytes() - before) / static_cast<double>(text.size()));
}
