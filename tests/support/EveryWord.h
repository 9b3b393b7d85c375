#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace TestSupport {

/// All words of up to `length` characters of the alphabet, the empty one included.
inline std::vector<std::string> EveryWord(std::size_t length, const std::string& alphabet) {
    std::vector<std::string> words{""};
    for (std::size_t begin = 0, round = 0; round < length; ++round) {
        const std::size_t end = words.size();
        for (; begin < end; ++begin) {
            for (const char c : alphabet) {
                words.push_back(words[begin] + c);
            }
        }
    }
    return words;
}

} // namespace TestSupport
