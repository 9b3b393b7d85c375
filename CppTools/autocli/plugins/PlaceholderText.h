#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

/// How the placeholders of templates are written.
namespace CppTools::AutoCli {

/// The end of a placeholder behind its name: a comma, "true" or "false", and the closing brace.
struct QuoteFlag {
    std::size_t begin;
    std::size_t end;
    bool quote;
};

std::optional<QuoteFlag> QuoteFlagAt(std::string_view text, std::size_t begin);

/// The first flag at or behind an offset.
std::optional<QuoteFlag> FirstQuoteFlag(std::string_view text, std::size_t from);

/// What follows $list{NAME,' up to the closing brace.
struct ListTail {
    char separator; ///< NUL when the template names none.
    QuoteFlag flag;
};

/// Matches (.?)',(true|false)\} at an offset.
std::optional<ListTail> ListTailAt(std::string_view text, std::size_t begin);

enum class PlaceholderKind { Val, If, List, MultiList };

/// One placeholder as a template has it.
struct Placeholder {
    PlaceholderKind kind;
    std::string name;
    std::string option; ///< The separator of a $list, the option of a $multilist.
    bool wraps = false; ///< Whether values come in double quotes.
    std::size_t end;    ///< Behind the closing brace; behind the comma of an $if.
};

/// Whether one of the four openings, such as "$val{", begins at the offset.
bool IsPlaceholderOpening(std::string_view text, std::size_t begin);

/// Whether the text holds one of the four openings.
bool HoldsPlaceholderOpening(std::string_view text);

/// The placeholder that begins at the offset, if one is complete there.
std::optional<Placeholder> ReadPlaceholder(std::string_view text, std::size_t begin);

} // namespace CppTools::AutoCli
