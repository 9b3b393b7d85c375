#include "../Errors.h"
#include "PieceReader.h"
#include "Readers.h"
#include "TableRows.h"

namespace TandrilResult {

namespace {

std::vector<std::string> CellsOf(const std::string& line) {
    std::vector<std::string> cells;
    std::size_t start = 0;
    while (start <= line.size()) {
        const auto tab = std::min(line.find('\t', start), line.size());
        cells.push_back(line.substr(start, tab - start));
        start = tab + 1;
    }
    return cells;
}

} // namespace

void ReadTsv(std::istream& input, const std::vector<std::string>& columns, const RecordSink& take) {
    PieceReader lines(input, '\n');
    TableRows rows(columns, take);
    std::string line;
    while (lines.Next(line)) {
        if (line.ends_with('\r')) {
            line.pop_back();
        }
        rows.Add(CellsOf(line), lines.Place());
    }
    rows.Finish();
}

} // namespace TandrilResult
