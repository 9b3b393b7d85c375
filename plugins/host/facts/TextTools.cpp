#include "TextTools.h"

#include <algorithm>
#include <charconv>
#include <fnmatch.h>

namespace HostFacts {

namespace {

constexpr std::string_view kBlanks = " \t\n\v\f\r";

template <typename Number>
std::optional<Number> ReadNumber(std::string_view text, int base, bool wholeText) {
    Number value = 0;
    const char* const end = text.data() + text.size();
    const auto [rest, problem] = std::from_chars(text.data(), end, value, base);
    if (problem != std::errc() || (wholeText && rest != end)) {
        return std::nullopt;
    }
    return value;
}

bool IsOctalEscape(std::string_view text) {
    const auto isOctalDigit = [](char c) { return c >= '0' && c <= '7'; };
    return text.size() >= 4 && text[0] == '\\' && text[1] <= '3' &&
           std::all_of(text.begin() + 1, text.begin() + 4, isOctalDigit);
}

} // namespace

std::string_view Trim(std::string_view text) {
    const auto first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

std::vector<std::string_view> Lines(std::string_view text) {
    std::vector<std::string_view> lines = Split(text, '\n');
    if (lines.back().empty()) {
        lines.pop_back();
    }
    return lines;
}

std::vector<std::string_view> Split(std::string_view text, char separator) {
    std::vector<std::string_view> pieces;
    while (true) {
        const auto end = text.find(separator);
        pieces.push_back(text.substr(0, end));
        if (end == std::string_view::npos) {
            return pieces;
        }
        text.remove_prefix(end + 1);
    }
}

std::vector<std::string_view> Words(std::string_view text) {
    std::vector<std::string_view> words;
    auto start = text.find_first_not_of(" \t");
    while (start != std::string_view::npos) {
        const auto end = std::min(text.find_first_of(" \t", start), text.size());
        words.push_back(text.substr(start, end - start));
        start = text.find_first_not_of(" \t", end);
    }
    return words;
}

std::optional<long> LeadingNumber(std::string_view text) {
    return ReadNumber<long>(Trim(text), 10, false);
}

std::optional<unsigned long> HexNumber(std::string_view text) {
    return ReadNumber<unsigned long>(text, 16, true);
}

std::map<std::string, std::string, std::less<>> ColonFields(std::string_view text) {
    std::map<std::string, std::string, std::less<>> fields;
    for (const std::string_view line : Lines(text)) {
        const auto colon = line.find(':');
        if (colon != std::string_view::npos) {
            fields.emplace(Trim(line.substr(0, colon)), Trim(line.substr(colon + 1)));
        }
    }
    return fields;
}

long NumberOf(const std::map<std::string, std::string, std::less<>>& fields, std::string_view key) {
    const auto field = fields.find(key);
    return field == fields.end() ? 0 : LeadingNumber(field->second).value_or(0);
}

std::string DecodeOctal(std::string_view text) {
    std::string decoded;
    decoded.reserve(text.size());
    while (!text.empty()) {
        if (IsOctalEscape(text)) {
            decoded += static_cast<char>(*ReadNumber<unsigned>(text.substr(1, 3), 8, true));
            text.remove_prefix(4);
        } else {
            decoded += text.front();
            text.remove_prefix(1);
        }
    }
    return decoded;
}

bool FitsPattern(const std::string& name, const std::string& pattern) {
    return fnmatch(pattern.c_str(), name.c_str(), 0) == 0;
}

bool IsWanted(const std::vector<std::string>& wanted, std::string_view item) {
    return wanted.empty() || std::find(wanted.begin(), wanted.end(), item) != wanted.end();
}

} // namespace HostFacts
