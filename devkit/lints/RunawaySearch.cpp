#include <devkit/lints/RunawaySearch.h>

#include <boost/regex.hpp>
#include <set>
#include <vector>

namespace Devkit::Lints {

namespace {

/// Doubling with each character, this is more than the matcher tries.
constexpr std::size_t kRepetitions = 40;

/// Of these characters at most all pairs are tried.
constexpr std::size_t kMostCharacters = 16;

/// Behind an escape or a class, where no group begins.
std::size_t SkipAtom(const std::string& expression, std::size_t position) {
    if (expression[position] == '\\') {
        return position + 2;
    }
    if (expression[position] != '[') {
        return position + 1;
    }
    std::size_t end = position + 1;
    end += end < expression.size() && expression[end] == '^' ? 1 : 0;
    end += end < expression.size() && expression[end] == ']' ? 1 : 0;
    while (end < expression.size() && expression[end] != ']') {
        end += expression[end] == '\\' ? 2 : 1;
    }
    return end + 1;
}

/// How many characters repeat what stands in front of them without bound.
std::size_t RepetitionAt(const std::string& expression, std::size_t position) {
    static const boost::regex kUnbounded(R"((?:[*+]|\{\d*,\}).*)", boost::regex::mod_s);
    if (position >= expression.size() ||
        !boost::regex_match(expression.substr(position), kUnbounded)) {
        return 0;
    }
    return expression[position] == '{' ? expression.find('}', position) - position + 1 : 1;
}

/// The groups that are repeated without bound, with what repeats them.
std::vector<std::string> RepeatedGroups(const std::string& expression) {
    std::vector<std::string> groups;
    std::vector<std::size_t> open;
    for (std::size_t i = 0; i < expression.size(); i = SkipAtom(expression, i)) {
        if (expression[i] == '(') {
            open.push_back(i);
        } else if (expression[i] == ')' && !open.empty()) {
            const std::size_t begin = open.back();
            open.pop_back();
            if (const std::size_t size = RepetitionAt(expression, i + 1)) {
                groups.push_back(expression.substr(begin, i + 1 + size - begin));
            }
        }
    }
    return groups;
}

/// Characters that a group may match: those that it is written with, and some for its classes.
std::string AlphabetOf(const std::string& group) {
    std::set<char> characters(group.begin(), group.end());
    for (const char structural : std::string("()[]{}*+?|^$\\")) {
        characters.erase(structural);
    }
    std::string alphabet = "a0 ";
    for (const char character : characters) {
        if (alphabet.size() < kMostCharacters && alphabet.find(character) == alphabet.npos) {
            alphabet.push_back(character);
        }
    }
    return alphabet;
}

bool GivesUpOn(const boost::regex& group, const std::string& text) {
    try {
        boost::regex_match(text, group);
        return false;
    } catch (const std::runtime_error&) {
        return true;
    }
}

bool RunsAway(const std::string& text) {
    const boost::regex group(text, boost::regex::no_except);
    if (group.status() != 0) {
        return false; // Names a group outside of it.
    }
    const std::string alphabet = AlphabetOf(text);
    for (const char first : alphabet) {
        for (const char second : alphabet) {
            std::string tried;
            for (std::size_t i = 0; i < kRepetitions; ++i) {
                tried.push_back(i % 2 == 0 ? first : second);
            }
            if (GivesUpOn(group, tried + '\x01')) {
                return true;
            }
        }
    }
    return false;
}

} // namespace

std::optional<std::string> FindRunawayPiece(const std::string& expression) {
    for (const std::string& group : RepeatedGroups(expression)) {
        if (RunsAway(group)) {
            return group;
        }
    }
    return std::nullopt;
}

} // namespace Devkit::Lints
