#include "PrintableText.h"

#include <CppTools/metaobj/MetaString.h>

#include <array>
#include <cstdio>
#include <string_view>

namespace TandrilResult {

namespace {

/// How many bytes of well-formed text, from its front, make up a character that must not be
/// written as it is; 0 when the text begins with any other character.
std::size_t UnprintableSize(std::string_view text) {
    const auto byte = static_cast<unsigned char>(text[0]);
    if (byte < 0x20 || byte == 0x7F) {
        return byte == '\t' || byte == '\n' || byte == '\r' ? 0 : 1;
    }
    if (byte == 0xC2 && static_cast<unsigned char>(text[1]) < 0xA0) {
        return 2; // U+0080 to U+009F: a terminal takes them for escape sequences
    }
    if (text.starts_with("\xEF\xBF\xBE") || text.starts_with("\xEF\xBF\xBF")) {
        return 3; // U+FFFE and U+FFFF: no characters at all
    }
    return 0;
}

void AppendEscaped(std::string& text, std::string_view bytes) {
    for (const char byte : bytes) {
        std::array<char, 5> escape{};
        std::snprintf(escape.data(), escape.size(), "\\x%02x", static_cast<unsigned char>(byte));
        text += escape.data();
    }
}

} // namespace

std::string PrintableText(std::string text) {
    const auto valid = CppTools::MetaObj::MetaString::NewUtf8WithEscapes(std::move(text));
    std::string_view rest = valid->GetValue();
    std::string printable;
    printable.reserve(rest.size());
    while (!rest.empty()) {
        const std::size_t size = UnprintableSize(rest);
        if (size > 0) {
            AppendEscaped(printable, rest.substr(0, size));
        } else {
            printable += rest.front();
        }
        rest.remove_prefix(size > 0 ? size : 1);
    }
    return printable;
}

std::string PrintableLine(std::string text) {
    std::string line;
    for (const char c : PrintableText(std::move(text))) {
        if (c == '\n') {
            line += "\\n";
        } else if (c == '\r') {
            line += "\\r";
        } else {
            line += c;
        }
    }
    return line;
}

} // namespace TandrilResult
