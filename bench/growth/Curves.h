#pragma once

/// How the cost of a call grows with one of its sizes. Every curve prints the milliseconds of one
/// call at that size.

#include "../support/Measure.h"

namespace Bench {

void MeasureColumns(long size);    ///< fields of each of 1,000 rows
void MeasureNesting(long size);    ///< structures inside one another
void MeasureValue(long size);      ///< bytes of one text
void MeasureParameters(long size); ///< parameters of a command, all given
void MeasurePath(long size);       ///< names in the path of a command
void MeasureTemplate(long size);   ///< bytes of a template of a command line
void MeasureOption(long size);     ///< values given to one option

/// Milliseconds of one call: the least of several, so that other work on the machine counts little.
template <typename Call>
double LeastMilliseconds(Call call) {
    const Stopwatch all;
    double least = 0;
    for (int calls = 0; calls < 3 || (all.Milliseconds() < 20 && calls < 1000); ++calls) {
        const Stopwatch one;
        call();
        const double took = one.Milliseconds();
        least = calls == 0 ? took : std::min(least, took);
    }
    return least;
}

} // namespace Bench
