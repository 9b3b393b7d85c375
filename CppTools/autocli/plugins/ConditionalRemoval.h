#pragma once

#include <string>

namespace CppTools::AutoCli {

/// A copy of a template without the $if{NAME,TEXT} pieces that are still in it, whose parameters
/// are absent; nested braces in TEXT go with their piece.
///
/// For each opening brace that has a partner, the piece from the last "$" before it up to that
/// partner is removed when it matches .*\$if\{[a-z0-9-]+,.+?\}.* as a whole. The search then goes
/// on at the same offset of the shortened text. Linear.
std::string RemoveConditionals(const std::string& text);

} // namespace CppTools::AutoCli
