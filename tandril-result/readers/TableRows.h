#pragma once

#include "../Record.h"

#include <string>
#include <vector>

namespace TandrilResult {

/// Makes records of rows of cells: the first row names the columns, unless they are named already.
class TableRows {
  public:
    TableRows(std::vector<std::string> columns, const RecordSink& take);

    /// `place` is where the row stands. Throws InputError, naming the place, when the row has
    /// fewer or more cells than there are columns, or names one twice.
    void Add(std::vector<std::string> cells, const std::string& place);

    /// Throws InputError when there was no row to name the columns.
    void Finish() const;

  private:
    void NameColumns(std::vector<std::string> names, const std::string& place);

    std::vector<std::string> columns_;
    const RecordSink& take_;
};

} // namespace TandrilResult
