#pragma once

#include <CppTools/autocli/formatters/Escapes.h>

#include <array>
#include <charconv>
#include <cstring>
#include <iosfwd>
#include <string_view>

namespace CppTools::AutoCli {

/// Collects the many small pieces of a rendered result and hands them to a stream in blocks, each
/// with one call. Whoever writes to the stream in between calls `Flush` first.
class TextBuffer {
  public:
    static constexpr std::size_t kIndentPerLevel = 3;

    /// `out` must outlive this.
    explicit TextBuffer(std::ostream& out) : out_(out) {}

    TextBuffer(const TextBuffer&) = delete;
    TextBuffer& operator=(const TextBuffer&) = delete;

    /// Hands over the rest when an exception cuts the rendering short, so that what was rendered
    /// before it is seen. Whoever comes to the end calls `Flush`, which can throw.
    ~TextBuffer();

    /// Hands over what is collected.
    void Flush();

    TextBuffer& operator<<(char character) {
        MakeRoom(1);
        block_[used_++] = character;
        return *this;
    }

    TextBuffer& operator<<(std::string_view text) {
        if (text.size() > kSize - used_) {
            AppendInPieces(text);
        } else if (!text.empty()) {
            std::memcpy(block_.data() + used_, text.data(), text.size());
            used_ += text.size();
        }
        return *this;
    }

    TextBuffer& operator<<(const char* text) { return *this << std::string_view(text); }

    TextBuffer& operator<<(long number) {
        MakeRoom(kLongestNumber);
        const auto end = std::to_chars(block_.data() + used_, block_.data() + kSize, number).ptr;
        used_ = static_cast<std::size_t>(end - block_.data());
        return *this;
    }

    TextBuffer& operator<<(bool value) { return *this << (value ? "true" : "false"); }

    TextBuffer& Fill(std::size_t count, char character);

    /// Blanks for a nesting level; nothing below level 1.
    TextBuffer& Indent(int level) {
        return level < 1 ? *this : Fill(static_cast<std::size_t>(level) * kIndentPerLevel, ' ');
    }

    /// Writes `text` with what `escapes` puts in the place of some bytes.
    TextBuffer& Escaped(std::string_view text, const Escapes& escapes);

  private:
    static constexpr std::size_t kSize = 32768;
    static constexpr std::size_t kLongestNumber = 24;

    void MakeRoom(std::size_t count) {
        if (count > kSize - used_) {
            Flush();
        }
    }

    void AppendInPieces(std::string_view text);

    std::ostream& out_;
    std::size_t used_ = 0;
    std::array<char, kSize> block_;
};

} // namespace CppTools::AutoCli
