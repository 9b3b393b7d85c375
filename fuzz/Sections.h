#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// How an input is read as several texts: a fuzzer that moves bytes about moves whole texts, and a
/// person can write a seed by hand.
namespace Fuzz {

/// The pieces between separators; one, though empty, of an empty text.
inline std::vector<std::string> Split(std::string_view text, char separator) {
    std::vector<std::string> pieces;
    std::size_t begin = 0;
    for (std::size_t end = text.find(separator); end != text.npos;
         end = text.find(separator, begin)) {
        pieces.emplace_back(text.substr(begin, end - begin));
        begin = end + 1;
    }
    pieces.emplace_back(text.substr(begin));
    return pieces;
}

inline std::string_view TextOf(const std::uint8_t* data, std::size_t size) {
    return {reinterpret_cast<const char*>(data), size};
}

/// The texts of an input, which end at a NUL.
class Sections {
  public:
    Sections(const std::uint8_t* data, std::size_t size)
        : texts_(Split(TextOf(data, size), '\0')) {}

    /// The next text; empty when there is no more.
    std::string Next() { return HasNext() ? texts_[next_++] : std::string(); }

    bool HasNext() const { return next_ < texts_.size(); }

  private:
    std::vector<std::string> texts_;
    std::size_t next_ = 0;
};

} // namespace Fuzz
