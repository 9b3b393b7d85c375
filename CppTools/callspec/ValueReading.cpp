#include <CppTools/callspec/ValueReading.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdlib>
#include <string_view>

namespace CppTools::CallSpec {

namespace {

constexpr std::array<std::string_view, 7> kTrueWords = {"1", "yes", "y", "true", "True", "t", "T"};
constexpr std::array<std::string_view, 7> kFalseWords = {"0",     "no", "n", "false",
                                                         "False", "f",  "F"};

template <typename Words>
bool IsAmong(const Words& words, std::string_view text) {
    return std::find(words.begin(), words.end(), text) != words.end();
}

} // namespace

bool ReadWholeInteger(const std::string& text, long& result) {
    const char* const begin = text.c_str();
    char* stop = nullptr;
    const long long number = std::strtoll(begin, &stop, 10);
    if (stop == begin || stop != begin + text.size()) {
        return false;
    }
    result = static_cast<long>(number);
    return true;
}

bool ReadLeadingInteger(const std::string& text, long& result) {
    static constexpr std::string_view whiteSpace = " \t\n\v\f\r";
    std::string_view rest = text;
    rest.remove_prefix(std::min(rest.find_first_not_of(whiteSpace), rest.size()));
    if (rest.starts_with('+') && !rest.starts_with("+-")) {
        rest.remove_prefix(1);
    }
    return std::from_chars(rest.data(), rest.data() + rest.size(), result).ec == std::errc();
}

bool ReadBoolean(const std::string& text, bool& result) {
    if (IsAmong(kTrueWords, text)) {
        result = true;
        return true;
    }
    if (IsAmong(kFalseWords, text)) {
        result = false;
        return true;
    }
    return false;
}

bool IsTrueWord(const std::string& text) {
    return IsAmong(kTrueWords, text);
}

} // namespace CppTools::CallSpec
