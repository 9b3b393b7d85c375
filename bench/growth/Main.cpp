// growth CURVE SIZE: what one call costs at that size.

#include "Curves.h"

#include <cstdlib>
#include <iostream>
#include <map>

int main(int argc, char** argv) {
    static const std::map<std::string, void (*)(long)> curves = {
        {"columns", Bench::MeasureColumns}, {"nesting", Bench::MeasureNesting},
        {"option", Bench::MeasureOption},   {"parameters", Bench::MeasureParameters},
        {"path", Bench::MeasurePath},       {"template", Bench::MeasureTemplate},
        {"value", Bench::MeasureValue},
    };
    const auto curve = curves.find(argc > 1 ? argv[1] : "");
    const long size = argc > 2 ? std::atol(argv[2]) : 0;
    if (curve == curves.end() || size < 1) {
        std::cerr << "usage: growth CURVE SIZE\n";
        return 2;
    }
    curve->second(size);
}
