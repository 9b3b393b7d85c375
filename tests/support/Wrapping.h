#pragma once

#include <algorithm>
#include <cstddef>
#include <sstream>
#include <string>
#include <vector>

/// What wrapping comes to, found line by line where the engine counts word by word.
namespace TestSupport {

/// How many of `words`, from `first` on, go on one line: those whose lengths, plus one each,
/// stay within the room, but at least `atLeast`.
inline std::size_t WordsOnLine(const std::vector<std::string>& words, std::size_t first,
                               std::size_t room, std::size_t atLeast) {
    std::size_t count = 0;
    std::size_t cost = 0;
    while (first + count < words.size()) {
        cost += words[first + count].size() + 1;
        if (cost > room && count >= atLeast) {
            break;
        }
        ++count;
    }
    return count;
}

/// `text` without line ends of its own, continued at column `indent` of a line.
inline std::string WrapByLines(const std::string& text, int indent, int width,
                               char breakMark = ' ') {
    const std::size_t room = width > indent ? static_cast<std::size_t>(width - indent) : 0;
    if (room == 0 || text.size() <= room) {
        return text;
    }
    std::vector<std::string> words;
    std::istringstream stream(text);
    for (std::string word; std::getline(stream, word, ' ');) {
        words.push_back(word);
    }
    const std::string lineBreak = std::string(1, breakMark) + "\n" +
                                  std::string(static_cast<std::size_t>(std::max(indent, 1)), ' ');
    std::string wrapped;
    std::size_t next = 0;
    for (std::size_t line = 0; next < words.size(); ++line) {
        wrapped += line == 0 ? "" : lineBreak;
        const std::size_t end = next + WordsOnLine(words, next, room, line == 0 ? 0 : 1);
        for (std::size_t i = next; i < end; ++i) {
            wrapped += (i == next ? "" : " ") + words[i];
        }
        next = end;
    }
    return wrapped;
}

/// `text` split at its line ends, each line wrapped, continued at column `indent` of a line.
inline std::string WrapEachLine(const std::string& text, int indent, int width,
                                char breakMark = ' ') {
    const std::string margin(static_cast<std::size_t>(std::max(indent, 1)), ' ');
    std::string wrapped;
    std::istringstream stream(text);
    bool first = true;
    for (std::string line; std::getline(stream, line); first = false) {
        wrapped += (first ? "" : "\n" + margin) + WrapByLines(line, indent, width, breakMark);
    }
    return wrapped;
}

} // namespace TestSupport
