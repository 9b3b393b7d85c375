#pragma once

/// The rows that all programs of this folder build, print and read. Row i is the same as `row(i)`
/// in data/rows.py.

#include <array>
#include <cstdint>
#include <cstdio>

namespace Bench {

struct PlainRow {
    std::int64_t id;
    std::int64_t size;
    bool enabled;
    char name[24];
    const char* state;
    char description[112];
};

inline void FillRow(PlainRow& row, std::int64_t i) {
    static constexpr std::array<const char*, 4> kStates = {"online", "offline", "degraded",
                                                           "rebuilding"};
    row.id = i;
    row.size = static_cast<std::int64_t>(static_cast<std::uint64_t>(i) * 2654435761U % 1000000007U);
    row.enabled = i % 3 == 0;
    std::snprintf(row.name, sizeof row.name, "disk-%06d", static_cast<int>(i));
    row.state = kStates[static_cast<std::size_t>(i % 4)];
    std::snprintf(row.description, sizeof row.description,
                  "Row number %d of the table, as printed by a tool%s", static_cast<int>(i),
                  i % 10 == 0 ? R"( with "quotes", a/b & <tags>)" : "");
}

} // namespace Bench
