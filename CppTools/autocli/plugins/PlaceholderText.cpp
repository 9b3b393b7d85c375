#include <CppTools/autocli/plugins/PlaceholderText.h>

#include <algorithm>
#include <array>
#include <utility>

namespace CppTools::AutoCli {

namespace {

constexpr std::size_t kNone = std::string_view::npos;

constexpr std::array<std::pair<std::string_view, PlaceholderKind>, 4> kOpenings = {
    {{"$val{", PlaceholderKind::Val},
     {"$if{", PlaceholderKind::If},
     {"$list{", PlaceholderKind::List},
     {"$multilist{", PlaceholderKind::MultiList}}};

constexpr std::string_view kNameCharacters = "abcdefghijklmnopqrstuvwxyz0123456789-";

bool StartsWithAt(std::string_view text, std::size_t begin, std::string_view piece) {
    return text.substr(std::min(begin, text.size())).starts_with(piece);
}

// The readers of what follows a name. Each completes the placeholder, whose end is still that of
// its name, and tells whether it could.

bool ReadValTail(std::string_view text, Placeholder& placeholder) {
    return StartsWithAt(text, placeholder.end++, "}");
}

bool ReadIfTail(std::string_view text, Placeholder& placeholder) {
    return StartsWithAt(text, placeholder.end++, ",") && text.size() > placeholder.end &&
           text[placeholder.end] != '}';
}

bool ReadListTail(std::string_view text, Placeholder& placeholder) {
    static constexpr std::string_view kBefore = ",'";
    const auto tail = StartsWithAt(text, placeholder.end, kBefore)
                          ? ListTailAt(text, placeholder.end + kBefore.size())
                          : std::nullopt;
    if (!tail) {
        return false;
    }
    placeholder.option = tail->separator == '\0' ? "" : std::string(1, tail->separator);
    placeholder.wraps = tail->flag.quote;
    placeholder.end = tail->flag.end;
    return true;
}

bool ReadMultiListTail(std::string_view text, Placeholder& placeholder) {
    const std::size_t option = placeholder.end + 1;
    const auto flag =
        StartsWithAt(text, placeholder.end, ",") ? FirstQuoteFlag(text, option + 1) : std::nullopt;
    if (!flag) {
        return false;
    }
    placeholder.option = text.substr(option, flag->begin - option);
    placeholder.wraps = flag->quote;
    placeholder.end = flag->end;
    return true;
}

bool ReadTail(std::string_view text, Placeholder& placeholder) {
    static constexpr std::array kReaders = {ReadValTail, ReadIfTail, ReadListTail,
                                            ReadMultiListTail};
    return kReaders[static_cast<std::size_t>(placeholder.kind)](text, placeholder);
}

} // namespace

std::optional<QuoteFlag> QuoteFlagAt(std::string_view text, std::size_t begin) {
    static constexpr std::array<std::pair<std::string_view, bool>, 2> kFlags = {
        {{",true}", true}, {",false}", false}}};
    for (const auto& [word, quote] : kFlags) {
        if (StartsWithAt(text, begin, word)) {
            return QuoteFlag{begin, begin + word.size(), quote};
        }
    }
    return std::nullopt;
}

std::optional<QuoteFlag> FirstQuoteFlag(std::string_view text, std::size_t from) {
    for (auto comma = text.find(',', from); comma != kNone; comma = text.find(',', comma + 1)) {
        if (const auto flag = QuoteFlagAt(text, comma)) {
            return flag;
        }
    }
    return std::nullopt;
}

std::optional<ListTail> ListTailAt(std::string_view text, std::size_t begin) {
    for (const std::size_t length : {std::size_t{1}, std::size_t{0}}) {
        const std::size_t quote = begin + length;
        if (quote < text.size() && text[quote] == '\'') {
            if (const auto flag = QuoteFlagAt(text, quote + 1)) {
                return ListTail{length == 0 ? '\0' : text[begin], *flag};
            }
        }
    }
    return std::nullopt;
}

bool IsPlaceholderOpening(std::string_view text, std::size_t begin) {
    return std::any_of(kOpenings.begin(), kOpenings.end(), [&](const auto& opening) {
        return StartsWithAt(text, begin, opening.first);
    });
}

bool HoldsPlaceholderOpening(std::string_view text) {
    return std::any_of(kOpenings.begin(), kOpenings.end(),
                       [&](const auto& opening) { return text.find(opening.first) != kNone; });
}

std::optional<Placeholder> ReadPlaceholder(std::string_view text, std::size_t begin) {
    for (const auto& [opening, kind] : kOpenings) {
        if (StartsWithAt(text, begin, opening)) {
            const std::size_t name = begin + opening.size();
            const std::size_t end =
                std::min(text.find_first_not_of(kNameCharacters, name), text.size());
            Placeholder placeholder{kind, std::string(text.substr(name, end - name)), "", false,
                                    end};
            if (end > name && ReadTail(text, placeholder)) {
                return placeholder;
            }
        }
    }
    return std::nullopt;
}

} // namespace CppTools::AutoCli
