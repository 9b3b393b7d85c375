#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace TestSupport {

/// A text kept as words and how often each is repeated. Tables of cases are built at every start
/// of a test program, so a long text in them is built only by the case that uses it.
class LongText {
  public:
    LongText(const char* text) : LongText(std::string(text)) {}

    LongText(std::string text) : LongText(std::move(text), 1) {}

    LongText(std::string word, std::size_t times) : parts_{{std::move(word), times}} {}

    std::string Build() const {
        std::string text;
        for (const auto& [word, times] : parts_) {
            for (std::size_t i = 0; i < times; ++i) {
                text += word;
            }
        }
        return text;
    }

    friend LongText operator+(LongText head, const LongText& tail) {
        head.parts_.insert(head.parts_.end(), tail.parts_.begin(), tail.parts_.end());
        return head;
    }

  private:
    std::vector<std::pair<std::string, std::size_t>> parts_;
};

} // namespace TestSupport
