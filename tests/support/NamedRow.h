#pragma once

#include <ostream>
#include <string>

namespace TestSupport {

/// One row of a table of cases. Its name stands for it in the list of tests, where the bytes of
/// the row would tell nobody anything.
struct NamedRow {
    std::string name;
};

inline std::ostream& operator<<(std::ostream& out, const NamedRow& row) {
    return out << row.name;
}

/// Names the cases of a table after its rows.
inline constexpr auto kRowName = [](const auto& row) { return row.param.name; };

} // namespace TestSupport
