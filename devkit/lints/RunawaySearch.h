#pragma once

#include <optional>
#include <string>

namespace Devkit::Lints {

/// A repeated group of the expression on which the matcher gives up, with its repetition. Found by
/// trying: a group is matched alone against a character, or two in turn, over and over, and then
/// something that does not fit. The expression must compile.
std::optional<std::string> FindRunawayPiece(const std::string& expression);

} // namespace Devkit::Lints
