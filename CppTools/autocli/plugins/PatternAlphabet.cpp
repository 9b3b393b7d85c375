#include <CppTools/autocli/plugins/Alphabet.h>

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

namespace CppTools::AutoCli {

namespace {

constexpr std::string_view kDigits = "0123456789";
constexpr std::string_view kLower = "abcdefghijklmnopqrstuvwxyz";
constexpr std::string_view kUpper = "ABCDEFGHIJKLMNOPQRSTUVWXYZ";
constexpr std::string_view kHexadecimal = "0123456789abcdefABCDEF";

/// The classes of sets, such as [:alpha:], that are understood.
std::optional<ByteSet> NamedClass(std::string_view name) {
    static const std::array<std::pair<std::string_view, ByteSet>, 6> kClasses = {
        {{"alnum", BytesOf(kDigits) | BytesOf(kLower) | BytesOf(kUpper)},
         {"alpha", BytesOf(kLower) | BytesOf(kUpper)},
         {"digit", BytesOf(kDigits)},
         {"lower", BytesOf(kLower)},
         {"upper", BytesOf(kUpper)},
         {"xdigit", BytesOf(kHexadecimal)}}};
    const auto* const found = std::find_if(kClasses.begin(), kClasses.end(),
                                           [&](const auto& entry) { return entry.first == name; });
    return found == kClasses.end() ? std::nullopt : std::optional(found->second);
}

/// Reads an expression from left to right, one function for each rule of the syntax. What it does
/// not understand ends the reading with `failed_`.
class PatternReader {
  public:
    explicit PatternReader(std::string_view expression) : rest_(expression) {}

    Alphabet Read() {
        const Alphabet alphabet = Alternatives();
        return failed_ || !rest_.empty() ? Alphabet::Anything() : alphabet;
    }

  private:
    Alphabet Alternatives() {
        Alphabet alphabet = Sequence();
        while (Take("|")) {
            alphabet = alphabet.Or(Sequence());
        }
        return alphabet;
    }

    Alphabet Sequence() {
        Alphabet alphabet;
        while (!failed_ && !rest_.empty() && rest_.front() != '|' && rest_.front() != ')') {
            alphabet = alphabet.Then(Repetition());
        }
        return alphabet;
    }

    Alphabet Repetition() {
        Alphabet alphabet = Atom();
        if (Take("*") || Take("?")) {
            alphabet.mayBeEmpty = true;
        } else if (Take("{")) {
            alphabet.mayBeEmpty = alphabet.mayBeEmpty || rest_.starts_with('0');
            Bounds();
        } else if (!Take("+")) {
            return alphabet;
        }
        // Whether few or many are preferred is no matter here.
        Take("?") || Take("+");
        return alphabet;
    }

    /// Matches [0-9]+(,[0-9]*)?\}
    void Bounds() {
        Require(Skip(kDigits) > 0);
        if (Take(",")) {
            Skip(kDigits);
        }
        Require(Take("}"));
    }

    Alphabet Atom() {
        static constexpr std::string_view kNotUnderstood = "*+?{}]";
        const char byte = Next();
        switch (byte) {
        case '(':
            return Group();
        case '[':
            return Alphabet::OneOf(Set());
        case '\\':
            return Alphabet::OneOf(Escape());
        case '.':
            return Alphabet::OneOf(ByteSet().set());
        case '^':
        case '$':
            return {};
        default:
            Require(kNotUnderstood.find(byte) == std::string_view::npos);
            return Alphabet::OneOf(BytesOf({&byte, 1}));
        }
    }

    Alphabet Group() {
        static constexpr int kDeepest = 100;
        Require(++depth_ < kDeepest);
        Require(Take("?:") || !(rest_.starts_with('?') || rest_.starts_with('*')));
        const Alphabet alphabet = Alternatives();
        Require(Take(")"));
        --depth_;
        return alphabet;
    }

    /// Behind a backslash. Many characters mean something else there than themselves.
    ByteSet Escape() {
        static constexpr std::string_view kThemselves = "\\.-+*?/|()[]{}^$@:,%=&;#!~\" ";
        const char byte = Next();
        if (byte == 'd') {
            return BytesOf(kDigits);
        }
        if (byte == 'w') {
            return BytesOf(kDigits) | BytesOf(kLower) | BytesOf(kUpper) | BytesOf("_");
        }
        Require(kThemselves.find(byte) != std::string_view::npos);
        return BytesOf({&byte, 1});
    }

    /// Behind an opening bracket.
    ByteSet Set() {
        Require(!rest_.starts_with('^') && !rest_.starts_with(']'));
        ByteSet set;
        while (!failed_ && !Take("]")) {
            set |= SetItem();
        }
        return set;
    }

    ByteSet SetItem() {
        if (Take("[:")) {
            return ClassItem();
        }
        const char byte = Next();
        Require(byte != '[');
        const bool isRange = rest_.starts_with('-') && !rest_.starts_with("-]");
        if (byte == '\\') {
            const ByteSet escaped = Escape();
            Require(!rest_.starts_with('-') || rest_.starts_with("-]"));
            return escaped;
        }
        return isRange ? Range(byte) : BytesOf({&byte, 1});
    }

    ByteSet ClassItem() {
        const std::size_t length = std::min(rest_.find(":]"), rest_.size());
        const auto named = NamedClass(rest_.substr(0, length));
        Require(named.has_value());
        rest_.remove_prefix(length);
        Require(Take(":]"));
        return named.value_or(ByteSet());
    }

    ByteSet Range(char from) {
        Take("-");
        const char to = Next();
        Require(to != '\\' && to != '[' && '\0' < from && from <= to);
        ByteSet set;
        for (int byte = from; !failed_ && byte <= to; ++byte) {
            set.set(static_cast<std::size_t>(byte));
        }
        return set;
    }

    /// The next character; at the end, where there is none, reading fails.
    char Next() {
        Require(!rest_.empty());
        const char byte = rest_.empty() ? '\0' : rest_.front();
        rest_.remove_prefix(std::min(rest_.size(), std::size_t{1}));
        return byte;
    }

    bool Take(std::string_view piece) {
        const bool isThere = rest_.starts_with(piece);
        rest_.remove_prefix(isThere ? piece.size() : 0);
        return isThere;
    }

    std::size_t Skip(std::string_view bytes) {
        const std::size_t length = std::min(rest_.find_first_not_of(bytes), rest_.size());
        rest_.remove_prefix(length);
        return length;
    }

    void Require(bool condition) { failed_ = failed_ || !condition; }

    std::string_view rest_;
    int depth_ = 0;
    bool failed_ = false;
};

} // namespace

Alphabet AlphabetOfPattern(std::string_view expression) {
    return PatternReader(expression).Read();
}

} // namespace CppTools::AutoCli
