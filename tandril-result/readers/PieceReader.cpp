#include "PieceReader.h"

#include "../Errors.h"

namespace TandrilResult {

bool PieceReader::Next(std::string& piece) {
    if (!std::getline(input_, piece, terminator_)) {
        return false;
    }
    ++count_;
    if (input_.eof()) {
        throw InputError(Place() + " has no end, so the input was cut short");
    }
    return true;
}

std::string PieceReader::Place() const {
    return (terminator_ == '\n' ? "line " : "piece ") + std::to_string(count_);
}

} // namespace TandrilResult
