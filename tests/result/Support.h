#pragma once

#include <tandril-result/Errors.h>
#include <tandril-result/readers/Readers.h>

#include <sstream>
#include <string>
#include <vector>

/// What the tests of tandril-result's classes share.
namespace ResultTests {

using TandrilResult::Record;

/// The message of an InputError or ResultError that the call throws, with its kind in front, or a
/// text that no message equals.
template <typename Call>
std::string ErrorOf(Call&& call) {
    try {
        call();
    } catch (const TandrilResult::InputError& thrown) {
        return std::string("input: ") + thrown.what();
    } catch (const TandrilResult::ResultError& thrown) {
        return std::string("result: ") + thrown.what();
    }
    return "<nothing was thrown>";
}

/// What a reader made of a text: the records as one JSON array, and behind it the error that
/// ended the reading.
template <typename Reader>
std::string ReadingOf(const std::string& text, Reader&& read) {
    Record records = Record::array();
    std::istringstream input(text);
    std::string error;
    try {
        read(input, [&](Record record) { records.push_back(std::move(record)); });
    } catch (const TandrilResult::InputError& thrown) {
        error = std::string(" ") + thrown.what();
    }
    return records.dump() + error;
}

} // namespace ResultTests
