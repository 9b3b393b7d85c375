#pragma once

namespace TandrilResult {

extern const char kHelpText[];

} // namespace TandrilResult
