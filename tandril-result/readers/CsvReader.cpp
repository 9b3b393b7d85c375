#include "../Errors.h"
#include "Readers.h"
#include "TableRows.h"

namespace TandrilResult {

namespace {

/// Rows of a text as RFC 4180 describes it.
class CsvRows {
  public:
    explicit CsvRows(std::istream& input) : input_(input) {}

    /// False at the end of the input.
    bool Next(std::vector<std::string>& cells);

    /// Where the row that was read last begins.
    std::string Place() const { return "line " + std::to_string(firstLine_); }

  private:
    /// Reads one cell; returns what ended it: a comma, a line feed or the end of the input.
    int ReadCell(std::string& cell);
    int ReadPlainCell(std::string& cell, int first);
    int ReadQuotedCell(std::string& cell);
    int EndQuotedCell();
    int Take();

    std::istream& input_;
    long line_ = 1;
    long firstLine_ = 1;
};

constexpr int kEnd = std::istream::traits_type::eof();

bool EndsCell(int c) {
    return c == ',' || c == '\n' || c == kEnd;
}

bool CsvRows::Next(std::vector<std::string>& cells) {
    cells.clear();
    firstLine_ = line_;
    if (input_.peek() == kEnd) {
        return false;
    }
    int end = ',';
    while (end == ',') {
        end = ReadCell(cells.emplace_back());
    }
    return true;
}

int CsvRows::ReadCell(std::string& cell) {
    const int first = Take();
    return first == '"' ? ReadQuotedCell(cell) : ReadPlainCell(cell, first);
}

int CsvRows::ReadPlainCell(std::string& cell, int first) {
    int c = first;
    for (; !EndsCell(c); c = Take()) {
        if (c == '"') {
            throw InputError("line " + std::to_string(line_) +
                             " has a quote within a cell that does not begin with one");
        }
        cell += static_cast<char>(c);
    }
    if (c != ',' && cell.ends_with('\r')) {
        cell.pop_back();
    }
    return c;
}

int CsvRows::ReadQuotedCell(std::string& cell) {
    const long begin = line_;
    while (true) {
        const int c = Take();
        if (c == kEnd) {
            throw InputError("line " + std::to_string(begin) +
                             " begins a quoted cell that has no end");
        }
        if (c == '"' && input_.peek() != '"') {
            return EndQuotedCell();
        }
        cell += static_cast<char>(c == '"' ? Take() : c); // two quotes stand for one
    }
}

int CsvRows::EndQuotedCell() {
    int c = Take();
    if (c == '\r' && input_.peek() == '\n') {
        c = Take();
    }
    if (!EndsCell(c)) {
        throw InputError("line " + std::to_string(line_) +
                         " has text behind the quote that ends a cell");
    }
    return c;
}

int CsvRows::Take() {
    const int c = input_.get();
    line_ += c == '\n' ? 1 : 0;
    return c;
}

void SkipByteOrderMark(std::string& name) {
    if (name.starts_with("\xEF\xBB\xBF")) {
        name.erase(0, 3);
    }
}

} // namespace

void ReadCsv(std::istream& input, const std::vector<std::string>& columns, const RecordSink& take) {
    CsvRows rows(input);
    TableRows table(columns, take);
    std::vector<std::string> cells;
    for (bool isFirst = true; rows.Next(cells); isFirst = false) {
        if (isFirst) {
            SkipByteOrderMark(cells.front());
        }
        table.Add(cells, rows.Place());
    }
    table.Finish();
}

} // namespace TandrilResult
