// document-reading FILE: turns the text of a result document into values.

#include "../support/Measure.h"

#include <CppTools/CppTools.h>

#include <iostream>

int main(int argc, char** argv) {
    using namespace Bench;
    const std::string text = argc > 1 ? ReadFile(argv[1]) : "";
    if (text.empty()) {
        std::cerr << "usage: document-reading FILE\n";
        return 2;
    }
    const double size = static_cast<double>(text.size());
    ForgetPeak();
    const double before = HeldBytes();
    const Stopwatch reading;
    auto value = CppTools::AutoCli::XmlUtil_ParseXmlOutput(text);
    Report("document reading", "ms", reading.Milliseconds());
    Report("document reading", "peak_bytes_per_byte", (PeakBytes() - before) / size);
    Report("document reading", "input_bytes", size);
    const Stopwatch releasing;
    value.reset();
    Report("document reading", "release_ms", releasing.Milliseconds());
}
