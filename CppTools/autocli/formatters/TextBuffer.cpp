#include <CppTools/autocli/formatters/TextBuffer.h>

#include <algorithm>
#include <ostream>
#include <utility>

namespace CppTools::AutoCli {

TextBuffer::~TextBuffer() {
    try {
        Flush();
    } catch (...) {
        // Another exception is on its way.
    }
}

void TextBuffer::Flush() {
    if (const std::size_t count = std::exchange(used_, 0); count > 0) {
        out_.write(block_.data(), static_cast<std::streamsize>(count));
    }
}

TextBuffer& TextBuffer::Fill(std::size_t count, char character) {
    while (count > kSize - used_) {
        const std::size_t piece = kSize - used_;
        std::fill_n(block_.data() + used_, piece, character);
        used_ = kSize;
        count -= piece;
        Flush();
    }
    std::fill_n(block_.data() + used_, count, character);
    used_ += count;
    return *this;
}

TextBuffer& TextBuffer::Escaped(std::string_view text, const Escapes& escapes) {
    std::size_t begin = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const std::string_view escape = escapes.For(text[i]);
        if (!escape.empty()) {
            *this << text.substr(begin, i - begin) << escape;
            begin = i + 1;
        }
    }
    return *this << text.substr(begin);
}

void TextBuffer::AppendInPieces(std::string_view text) {
    Flush();
    if (text.size() > kSize) {
        out_.write(text.data(), static_cast<std::streamsize>(text.size()));
    } else {
        *this << text;
    }
}

} // namespace CppTools::AutoCli
