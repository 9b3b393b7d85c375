#pragma once

#include "HeldOutput.h"
#include "Options.h"

namespace TandrilResult {

/// Reads standard input, or runs the program that the options name and reads what that prints,
/// and writes the result document. Throws ResultError when there is no result, and OutputError
/// when the document cannot be written.
void Convert(const Options& options, HeldOutput& output);

} // namespace TandrilResult
