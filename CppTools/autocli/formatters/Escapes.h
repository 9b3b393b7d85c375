#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace CppTools::AutoCli {

/// What a format writes in the place of bytes that it cannot write as they are.
class Escapes {
  public:
    /// The text that stands for `byte`; empty when the byte stands for itself.
    constexpr std::string_view For(char byte) const {
        const Escape& escape = escapes_[static_cast<unsigned char>(byte)];
        return {escape.text.data(), escape.size};
    }

    /// `text` has at most seven bytes.
    constexpr void Set(unsigned char byte, std::string_view text) {
        Escape& escape = escapes_[byte];
        escape.size = static_cast<std::uint8_t>(text.size());
        for (std::size_t i = 0; i < text.size(); ++i) {
            escape.text[i] = text[i];
        }
    }

  private:
    struct Escape {
        std::uint8_t size = 0;
        std::array<char, 7> text{};
    };

    std::array<Escape, 256> escapes_{};
};

} // namespace CppTools::AutoCli
