#include <CppTools/autocli/formatters/PrintfFormat.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <cstdint>
#include <cstdio>
#include <cwchar>
#include <type_traits>
#include <vector>

namespace CppTools::AutoCli {

/// One of the conversions that fit some value.
struct PrintfConversion {
    enum class Argument { Signed, Unsigned, Character, WideCharacter, Text };

    std::string_view word; ///< As it is handed on, with the length that goes with the argument.
    Argument argument;
    std::string_view flags; ///< Those that mean something with it.
};

/// What a length modifier makes of a number.
struct PrintfLength {
    std::string_view word;
    long long (*asSigned)(long number);
    unsigned long long (*asUnsigned)(long number);
};

namespace {

using Argument = PrintfConversion::Argument;

template <typename Integer>
constexpr PrintfLength Length(std::string_view word) {
    using Signed = std::make_signed_t<Integer>;
    using Unsigned = std::make_unsigned_t<Integer>;
    return {word, [](long number) -> long long { return static_cast<Signed>(number); },
            [](long number) -> unsigned long long { return static_cast<Unsigned>(number); }};
}

/// Those that begin like others come before them.
constexpr std::array kLengths = {
    Length<char>("hh"),       Length<short>("h"),          Length<long long>("ll"),
    Length<long>("l"),        Length<long long>("L"),      Length<std::intmax_t>("j"),
    Length<std::size_t>("z"), Length<std::ptrdiff_t>("t"), Length<int>("")};

constexpr std::array<PrintfConversion, 9> kConversions = {{
    {"lld", Argument::Signed, "-+ 0'"},
    {"lli", Argument::Signed, "-+ 0'"},
    {"llu", Argument::Unsigned, "-0'"},
    {"llo", Argument::Unsigned, "-0#"},
    {"llx", Argument::Unsigned, "-0#"},
    {"llX", Argument::Unsigned, "-0#"},
    {"c", Argument::Character, "-"},
    {"lc", Argument::WideCharacter, "-"},
    {"s", Argument::Text, "-"},
}};

bool IsNumber(const PrintfConversion& conversion) {
    return conversion.argument == Argument::Signed || conversion.argument == Argument::Unsigned;
}

/// Takes the characters at the front that are among `wanted`.
std::string TakeAll(std::string_view& text, std::string_view wanted) {
    const std::size_t end = std::min(text.find_first_not_of(wanted), text.size());
    const std::string taken(text.substr(0, end));
    text.remove_prefix(end);
    return taken;
}

const PrintfLength& TakeLength(std::string_view& text) {
    const auto length = std::find_if(kLengths.begin(), kLengths.end(),
                                     [&](const auto& each) { return text.starts_with(each.word); });
    text.remove_prefix(length->word.size());
    return *length;
}

/// Null when no value can be meant.
const PrintfConversion* TakeConversion(std::string_view& text, std::string_view length) {
    const std::string letter(text.substr(0, 1));
    text.remove_prefix(letter.size());
    const auto fits = [&](const PrintfConversion& each) {
        return IsNumber(each) ? each.word.substr(2) == letter
                              : each.word == std::string(length) + letter;
    };
    const auto found = std::find_if(kConversions.begin(), kConversions.end(), fits);
    return found != kConversions.end() ? &*found : nullptr;
}

template <typename Value>
PrintfFormat::Result Print(const std::string& format, Value value, std::size_t room) {
    std::vector<char> buffer(room);
    if (std::snprintf(buffer.data(), room, format.c_str(), value) < 0) {
        return {"", errno};
    }
    return {buffer.data(), 0};
}

} // namespace

PrintfFormat::PrintfFormat(std::string_view format) {
    std::string_view rest = format.substr(0, format.find('\0'));
    while (!rest.empty() && error_ != EINVAL) {
        const std::size_t percent = std::min(rest.find('%'), rest.size());
        format_ += rest.substr(0, percent);
        rest.remove_prefix(percent);
        if (rest.starts_with("%%")) {
            format_ += "%%";
            rest.remove_prefix(2);
        } else if (!rest.empty()) {
            rest.remove_prefix(1);
            AddConversion(rest);
        }
    }
}

void PrintfFormat::AddConversion(std::string_view& rest) {
    std::string flags = TakeAll(rest, "-+ #0'");
    const std::string width = TakeWidth(rest);
    std::string precision;
    if (rest.starts_with('.')) {
        rest.remove_prefix(1);
        precision = "." + TakeWidth(rest);
    }
    const PrintfLength& length = TakeLength(rest);
    const PrintfConversion* const conversion = TakeConversion(rest, length.word);
    if (conversion == nullptr || conversion_ != nullptr) {
        error_ = EINVAL;
        return;
    }
    std::erase_if(flags, [&](char flag) { return conversion->flags.find(flag) == flags.npos; });
    const bool hasPrecision = IsNumber(*conversion) || conversion->argument == Argument::Text;
    format_ += "%" + flags + width + (hasPrecision ? precision : "");
    format_ += conversion->word;
    conversion_ = conversion;
    length_ = &length;
}

std::string PrintfFormat::TakeWidth(std::string_view& rest) {
    const std::string digits = TakeAll(rest, "0123456789");
    int width = 0;
    const auto end = digits.data() + digits.size();
    const bool isUnreadable =
        std::from_chars(digits.data(), end, width).ec == std::errc::result_out_of_range;
    if (isUnreadable || width > kLargestWidth) {
        error_ = EOVERFLOW;
    }
    return digits;
}

/// That the format does not fit comes before its being too large.
int PrintfFormat::ErrorFor(bool isText) const {
    const bool fits = conversion_ == nullptr || (conversion_->argument == Argument::Text) == isText;
    return fits ? error_ : EINVAL;
}

PrintfFormat::Result PrintfFormat::Apply(long number, std::size_t room) const {
    if (const int error = ErrorFor(false); error != 0) {
        return {"", error};
    }
    if (conversion_ == nullptr) {
        return Print(format_, 0, room);
    }
    switch (conversion_->argument) {
    case Argument::Signed:
        return Print(format_, length_->asSigned(number), room);
    case Argument::Unsigned:
        return Print(format_, length_->asUnsigned(number), room);
    case Argument::Character:
        return Print(format_, static_cast<int>(number), room);
    default:
        return Print(format_, static_cast<std::wint_t>(number), room);
    }
}

PrintfFormat::Result PrintfFormat::Apply(std::string_view text, std::size_t room) const {
    if (const int error = ErrorFor(true); error != 0) {
        return {"", error};
    }
    return Print(format_, std::string(text).c_str(), room);
}

} // namespace CppTools::AutoCli
