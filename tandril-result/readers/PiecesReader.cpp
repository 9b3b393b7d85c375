#include "PieceReader.h"
#include "Readers.h"

namespace TandrilResult {

void ReadPieces(std::istream& input, char terminator, const RecordSink& take) {
    PieceReader pieces(input, terminator);
    std::string piece;
    while (pieces.Next(piece)) {
        take(std::move(piece));
    }
}

} // namespace TandrilResult
