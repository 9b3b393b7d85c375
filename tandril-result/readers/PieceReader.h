#pragma once

#include <istream>
#include <string>

namespace TandrilResult {

/// The pieces of a text of which each has a line end or a NUL behind it, the last one too: what
/// lacks it was cut short.
class PieceReader {
  public:
    PieceReader(std::istream& input, char terminator) : input_(input), terminator_(terminator) {}

    /// The next piece, without what ends it. False at the end of the input. Throws InputError when
    /// the input stops within a piece.
    bool Next(std::string& piece);

    /// "line 3", or "piece 3" where no line ends separate: the one that `Next` gave last.
    std::string Place() const;

  private:
    std::istream& input_;
    char terminator_;
    long count_ = 0;
};

} // namespace TandrilResult
