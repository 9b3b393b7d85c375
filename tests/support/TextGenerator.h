#pragma once

#include <tests/support/RandomSource.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

/// Odd texts.
namespace TestSupport {

/// What texts are made of.
struct Alphabet {
    enum class Beyond {
        Nothing,
        Characters, ///< Well-formed UTF-8, without the characters that no document may hold.
        Bytes,      ///< Any bytes from 0x80 on, seldom well-formed.
    };

    std::string ascii; ///< The characters below 0x80.
    Beyond beyond = Beyond::Nothing;
};

inline std::string AsciiBetween(int first, int last) {
    std::string characters;
    for (int code = first; code <= last; ++code) {
        characters.push_back(static_cast<char>(code));
    }
    return characters;
}

inline Alphabet AnyAscii() {
    return {AsciiBetween(0x00, 0x7F)};
}

inline Alphabet AnyBytes() {
    return {AsciiBetween(0x00, 0x7F), Alphabet::Beyond::Bytes};
}

/// Characters of any script, but none that controls.
inline Alphabet PlainCharacters() {
    return {AsciiBetween(0x20, 0x7E), Alphabet::Beyond::Characters};
}

inline Alphabet Without(Alphabet alphabet, const std::string& characters) {
    std::erase_if(alphabet.ascii, [&](char c) { return characters.find(c) != std::string::npos; });
    return alphabet;
}

inline Alphabet With(Alphabet alphabet, const std::string& characters) {
    alphabet.ascii += characters;
    return alphabet;
}

/// One character in UTF-8.
inline std::string Utf8Of(std::uint32_t code) {
    const auto trail = [code](unsigned shift) {
        return static_cast<char>(0x80 | ((code >> shift) & 0x3F));
    };
    if (code < 0x80) {
        return {static_cast<char>(code)};
    }
    if (code < 0x800) {
        return {static_cast<char>(0xC0 | (code >> 6)), trail(0)};
    }
    if (code < 0x10000) {
        return {static_cast<char>(0xE0 | (code >> 12)), trail(6), trail(0)};
    }
    return {static_cast<char>(0xF0 | (code >> 18)), trail(12), trail(6), trail(0)};
}

/// Makes texts over one alphabet: often short, sometimes empty, seldom long, and full of what one
/// output format or another gives a meaning to.
class TextGenerator {
  public:
    TextGenerator(RandomSource& random, Alphabet alphabet)
        : random_(&random), alphabet_(std::move(alphabet)) {
        for (const std::string& piece : OddPieces()) {
            if (piece.find_first_not_of(alphabet_.ascii) == std::string::npos) {
                pieces_.push_back(piece);
            }
        }
    }

    std::string Text() {
        if (random_->Chance(8)) {
            return "";
        }
        return TextOf(random_->Between(1, random_->Chance(10) ? 60 : 8));
    }

    /// A text of this many pieces, each at least one byte.
    std::string TextOf(std::size_t count) {
        std::string text;
        for (; count > 0; --count) {
            text += Piece();
        }
        return text;
    }

  private:
    static const std::vector<std::string>& OddPieces() {
        static const std::vector<std::string> pieces = {
            "&amp;", "&#0;", "]]>",  "<![CDATA[", "<!--", "-->",     "</string>", "<?x?>",
            "%s",    "%n",   "%n%",  "\\n",       "\\",   "\\u00e9", "\\x",       "\"\"\"",
            "'''",   "\"",   "'",    "${x}",      "$(x)", "`x`",     "$val{x}",   "  ",
            "\t",    "\n",   "\n\n", "\r\n",      ", ",   "=> ",     "True",      "null",
            "-1",    "{}",   "[",    "]",         "//",   "..",      "a.b",       "/",
        };
        return pieces;
    }

    std::string Piece() {
        const bool plain = alphabet_.beyond == Alphabet::Beyond::Nothing || random_->Chance(80);
        if (!plain) {
            return alphabet_.beyond == Alphabet::Beyond::Bytes
                       ? std::string(1, static_cast<char>(random_->Between(0x80, 0xFF)))
                       : Character();
        }
        if (!pieces_.empty() && random_->Chance(25)) {
            return random_->Pick(pieces_);
        }
        return {random_->Pick(alphabet_.ascii)};
    }

    std::string Character() {
        static const std::vector<std::pair<std::size_t, std::size_t>> planes = {
            {0x80, 0x7FF}, {0x800, 0xD7FF}, {0xE000, 0xFFFD}, {0x10000, 0x10FFFF}};
        const auto& [first, last] = random_->Pick(planes);
        return Utf8Of(static_cast<std::uint32_t>(random_->Between(first, last)));
    }

    RandomSource* random_;
    Alphabet alphabet_;
    std::vector<std::string> pieces_; ///< The odd ones that the alphabet can spell.
};

} // namespace TestSupport
