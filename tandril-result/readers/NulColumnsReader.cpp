#include "../Errors.h"
#include "PieceReader.h"
#include "Readers.h"

namespace TandrilResult {

void ReadNulColumns(std::istream& input, const std::vector<std::string>& columns,
                    const RecordSink& take) {
    PieceReader pieces(input, '\0');
    Record record = Record::object();
    std::string piece;
    while (pieces.Next(piece)) {
        record[columns[record.size()]] = std::move(piece);
        if (record.size() == columns.size()) {
            take(std::move(record));
            record = Record::object();
        }
    }
    if (!record.empty()) {
        throw InputError(pieces.Place() + " is the last, but the record lacks '" +
                         columns[record.size()] + "'");
    }
}

} // namespace TandrilResult
