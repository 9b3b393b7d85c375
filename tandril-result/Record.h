#pragma once

#include <nlohmann/json.hpp>

#include <functional>

namespace TandrilResult {

/// One record of the input, or one value for a list: an object, array or scalar whose integers
/// are numbers, and whose other numbers are the text that stood in the input.
using Record = nlohmann::json;

/// Takes the records one by one, as they are read. What it throws ends the reading.
using RecordSink = std::function<void(Record)>;

} // namespace TandrilResult
