#include "TableRows.h"

#include "../Errors.h"

#include <set>

namespace TandrilResult {

TableRows::TableRows(std::vector<std::string> columns, const RecordSink& take)
    : columns_(std::move(columns)), take_(take) {}

void TableRows::Add(std::vector<std::string> cells, const std::string& place) {
    if (columns_.empty()) {
        NameColumns(std::move(cells), place);
        return;
    }
    if (cells.size() != columns_.size()) {
        throw InputError(place + " has " + std::to_string(cells.size()) + " cells for " +
                         std::to_string(columns_.size()) + " columns");
    }
    Record record = Record::object();
    for (std::size_t i = 0; i < cells.size(); ++i) {
        record.emplace(columns_[i], std::move(cells[i]));
    }
    take_(std::move(record));
}

void TableRows::Finish() const {
    if (columns_.empty()) {
        throw InputError("there is no header line");
    }
}

void TableRows::NameColumns(std::vector<std::string> names, const std::string& place) {
    std::set<std::string> known;
    for (const std::string& name : names) {
        if (!known.insert(name).second) {
            throw InputError(place + " names the column '" + name + "' twice");
        }
    }
    columns_ = std::move(names);
}

} // namespace TandrilResult
