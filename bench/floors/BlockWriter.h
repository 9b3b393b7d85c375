#pragma once

/// Text written in blocks of 64 kB, and the bytes in it that a format escapes.

#include <array>
#include <charconv>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string_view>
#include <unistd.h>

namespace Bench {

class BlockWriter {
  public:
    explicit BlockWriter(int file) : file_(file) {}

    ~BlockWriter() { Flush(); }

    BlockWriter(const BlockWriter&) = delete;
    BlockWriter& operator=(const BlockWriter&) = delete;

    BlockWriter& operator<<(std::string_view text) {
        Reserve(text.size());
        std::memcpy(block_.data() + used_, text.data(), text.size());
        used_ += text.size();
        return *this;
    }

    BlockWriter& operator<<(std::int64_t number) {
        Reserve(24);
        char* const end = block_.data() + block_.size();
        used_ = static_cast<std::size_t>(std::to_chars(block_.data() + used_, end, number).ptr -
                                         block_.data());
        return *this;
    }

    void Blanks(std::size_t count) {
        Reserve(count);
        std::memset(block_.data() + used_, ' ', count);
        used_ += count;
    }

  private:
    void Reserve(std::size_t size) {
        if (used_ + size > block_.size()) {
            Flush();
        }
    }

    void Flush() {
        if (write(file_, block_.data(), used_) < 0) {
            std::abort();
        }
        used_ = 0;
    }

    int file_;
    std::size_t used_ = 0;
    std::array<char, 1U << 16U> block_;
};

/// Which bytes a format escapes.
class SpecialBytes {
  public:
    explicit SpecialBytes(std::string_view bytes) {
        for (const char byte : bytes) {
            isSpecial_[static_cast<unsigned char>(byte)] = true;
        }
    }

    bool Has(char byte) const { return isSpecial_[static_cast<unsigned char>(byte)]; }

  private:
    std::array<bool, 256> isSpecial_ = {};
};

template <typename Replacement>
void WriteEscaped(BlockWriter& out, std::string_view text, const SpecialBytes& special,
                  Replacement replacement) {
    std::size_t from = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (special.Has(text[i])) {
            out << text.substr(from, i - from) << replacement(text[i]);
            from = i + 1;
        }
    }
    out << text.substr(from);
}

} // namespace Bench
