#include "../Errors.h"
#include "PieceReader.h"
#include "Readers.h"

namespace TandrilResult {

namespace {

void AddPair(Record& record, const std::string& piece, const std::string& place) {
    const auto equals = piece.find('=');
    if (equals == std::string::npos) {
        throw InputError(place + " has no '='");
    }
    const std::string key = piece.substr(0, equals);
    if (record.contains(key)) {
        throw InputError(place + " gives '" + key + "' a second time within a record");
    }
    record[key] = piece.substr(equals + 1);
}

} // namespace

void ReadPairs(std::istream& input, char terminator, const RecordSink& take) {
    PieceReader pieces(input, terminator);
    Record record = Record::object();
    std::string piece;
    while (pieces.Next(piece)) {
        if (!piece.empty()) {
            AddPair(record, piece, pieces.Place());
        } else if (!record.empty()) {
            take(std::move(record));
            record = Record::object();
        }
    }
    if (!record.empty()) {
        take(std::move(record));
    }
}

} // namespace TandrilResult
