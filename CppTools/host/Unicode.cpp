#include <CppTools/host/Unicode.h>

#include <utf8.h>

namespace CppTools::Host {

namespace {

void AppendEscaped(std::string& text, char byte) {
    static constexpr char digits[] = "0123456789abcdef";
    const auto value = static_cast<unsigned char>(byte);
    text += {'\\', 'x', digits[value >> 4U], digits[value & 0xFU]};
}

} // namespace

bool IsValidUtf8(const std::string& text) {
    return utf8::is_valid(text.begin(), text.end());
}

std::string EscapeInvalidUtf8(const std::string& text) {
    std::string escaped;
    escaped.reserve(text.size());
    auto rest = text.begin();
    while (rest != text.end()) {
        const auto invalid = utf8::find_invalid(rest, text.end());
        escaped.append(rest, invalid);
        rest = invalid;
        if (rest != text.end()) {
            AppendEscaped(escaped, *rest);
            ++rest;
        }
    }
    return escaped;
}

} // namespace CppTools::Host
