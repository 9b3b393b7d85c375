#include "Row.h"

#include "Errors.h"
#include "ScalarText.h"

namespace TandrilResult {

namespace {

using RowSink = std::function<void(const Row&)>;

const Record* Member(const Record& record, const std::string& key) {
    const auto member = record.find(key);
    return member == record.end() ? nullptr : &*member;
}

const Record* FollowPath(const Record& record, const std::string& path) {
    const Record* place = &record;
    std::size_t start = 0;
    while (place != nullptr && start <= path.size()) {
        const auto dot = std::min(path.find('.', start), path.size());
        place = Member(*place, path.substr(start, dot - start));
        start = dot + 1;
    }
    return place;
}

void CheckIsObject(const Record& record) {
    if (!record.is_object()) {
        throw InputError(NameForMessage(record) + " is not an object with fields");
    }
}

/// The elements below a key; none when the key is missing or null.
const Record& ElementsOf(const Record& record, const std::string& key) {
    static const Record none = Record::array();
    CheckIsObject(record);
    const Record* const elements = Member(record, key);
    if (elements == nullptr || elements->is_null()) {
        return none;
    }
    if (!elements->is_array()) {
        throw InputError("'" + key + "' is not a list");
    }
    return *elements;
}

void UnfoldElements(const Row& row, const Nesting& nesting, const RowSink& take) {
    if (nesting.each.empty()) {
        take(row);
        return;
    }
    for (const Record& element : ElementsOf(row.record, nesting.each)) {
        take(Row{element, &row});
    }
}

void UnfoldTree(const Row& row, const Nesting& nesting, const RowSink& take) {
    UnfoldElements(row, nesting, take);
    if (nesting.children.empty()) {
        return;
    }
    for (const Record& child : ElementsOf(row.record, nesting.children)) {
        UnfoldTree(Row{child, &row}, nesting, take);
    }
}

} // namespace

const Record* Find(const Row& row, const Source& source) {
    const Row* level = &row;
    for (int i = 0; i < source.levelsUp && level != nullptr; ++i) {
        level = level->outer;
    }
    if (level == nullptr) {
        return nullptr;
    }
    CheckIsObject(level->record);
    const Record* const exact = Member(level->record, source.path);
    return exact != nullptr ? exact : FollowPath(level->record, source.path);
}

void UnfoldRows(const Record& record, const Nesting& nesting, const RowSink& take) {
    UnfoldTree(Row{record}, nesting, take);
}

} // namespace TandrilResult
