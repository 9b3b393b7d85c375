#pragma once

#include "FieldSpec.h"
#include "Record.h"

#include <functional>
#include <string>

namespace TandrilResult {

/// A record together with those that it stands in, which fields may draw on.
struct Row {
    const Record& record;
    const Row* outer = nullptr; ///< Empty for a record that stands in no other.
};

/// The value that the source names: of the key that reads exactly so or, when there is none, of
/// the keys between the dots, one inside the other. Null pointer when there is no such value.
/// Throws InputError when the record has no keys at all.
const Record* Find(const Row& row, const Source& source);

/// What becomes of a record that holds others. Empty names stand for keys that nothing has.
struct Nesting {
    /// Key of the list of records below a record; each follows it as a row of its own.
    std::string children;
    /// Key of the list whose elements are the rows, in place of the record that holds them.
    std::string each;
};

/// Hands over every row that the record makes. Throws InputError when a list is something else.
void UnfoldRows(const Record& record, const Nesting& nesting,
                const std::function<void(const Row&)>& take);

} // namespace TandrilResult
