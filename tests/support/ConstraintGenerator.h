#pragma once

#include <tests/support/TextGenerator.h>

#include <CppTools/callspec/ParameterConstraint.h>

#include <algorithm>
#include <functional>
#include <limits>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

/// Constraints together with the knowledge of what they accept, which is not the engine's.
namespace TestSupport {

/// The number that a text stands for: any white space, a sign, digits and nothing behind them.
/// What no 64 bits can hold is the number at that end.
inline std::optional<long> NumberIn(const std::string& text) {
    const std::size_t start = text.find_first_not_of(" \t\n\v\f\r");
    if (start == std::string::npos) {
        return std::nullopt;
    }
    const bool isSigned = text[start] == '-' || text[start] == '+';
    const std::string digits = text.substr(isSigned ? start + 1 : start);
    if (digits.empty() || digits.find_first_not_of("0123456789") != std::string::npos) {
        return std::nullopt;
    }
    const bool isNegative = text[start] == '-';
    long number = 0;
    for (const char digit : digits) {
        const long step = isNegative ? '0' - digit : digit - '0';
        if (__builtin_mul_overflow(number, 10L, &number) ||
            __builtin_add_overflow(number, step, &number)) {
            return isNegative ? std::numeric_limits<long>::min() : std::numeric_limits<long>::max();
        }
    }
    return number;
}

/// An integer as a user might write it, or nearly one.
inline std::string NumeralNear(RandomSource& random, long number) {
    static const std::vector<std::string> odd = {
        "",   " ",   "+",  "-",    "0x10", "12 ",  "4x",
        "--", "1 2", "x",  "1e3",  "1.0",  "\t-7", "99999999999999999999",
        "00", "+-1", "-0", "\n+3", "१",    "- 1",  "-99999999999999999999"};
    if (random.Chance(25)) {
        return random.Pick(odd);
    }
    static const std::vector<std::string> leads = {"", "", "", " ", "\t ", "0x", "+"};
    return random.Pick(leads) + std::to_string(number) + (random.Chance(10) ? "x" : "");
}

/// A regular expression of alternatives, each a sequence of repeated sets of letters, simple
/// enough to be matched without the library that the engine uses.
class Pattern {
  public:
    explicit Pattern(RandomSource& random) {
        for (std::size_t count = random.Between(1, 3); count > 0; --count) {
            Sequence sequence;
            for (std::size_t pieces = random.Between(1, 4); pieces > 0; --pieces) {
                sequence.push_back(NewPiece(random));
            }
            alternatives_.push_back(std::move(sequence));
        }
    }

    std::string Expression() const {
        std::string expression;
        for (const Sequence& sequence : alternatives_) {
            expression += expression.empty() ? "" : "|";
            for (const Piece& piece : sequence) {
                expression += piece.expression;
            }
        }
        return expression;
    }

    bool Matches(const std::string& text) const {
        return std::ranges::any_of(alternatives_, [&](const Sequence& sequence) {
            return EndsAfter(sequence, text).contains(text.size());
        });
    }

    /// A text that one alternative matches.
    std::string Sample(RandomSource& random) const {
        std::string text;
        for (const Piece& piece : random.Pick(alternatives_)) {
            const std::size_t most = std::min(piece.most, piece.least + 3);
            for (std::size_t count = random.Between(piece.least, most); count > 0; --count) {
                text.push_back(random.Pick(piece.letters));
            }
        }
        return text;
    }

  private:
    struct Piece {
        std::string expression;
        std::string letters;
        std::size_t least = 1;
        std::size_t most = 1;
    };

    using Sequence = std::vector<Piece>;

    static constexpr std::size_t kNoEnd = std::numeric_limits<std::size_t>::max();

    static Piece NewPiece(RandomSource& random) {
        static const std::vector<std::pair<std::string, std::string>> sets = {
            {"a", "a"},
            {"B", "B"},
            {"\\.", "."},
            {"-", "-"},
            {"[a-c]", "abc"},
            {"[^b]", ""},
            {"\\d", "0123456789"},
            {"[0-3x]", "0123x"},
            {"[A-Z]", AsciiBetween('A', 'Z')},
            {"[-+]", "-+"},
            {" ", " "},
            {"\\$", "$"},
            {".", AsciiBetween(0x00, 0x7F)}};
        static const std::vector<Piece> repeats = {{"", "", 1, 1},       {"?", "", 0, 1},
                                                   {"*", "", 0, kNoEnd}, {"+", "", 1, kNoEnd},
                                                   {"{2}", "", 2, 2},    {"{1,3}", "", 1, 3}};
        const auto& [expression, letters] = random.Pick(sets);
        Piece piece = random.Pick(repeats);
        piece.expression = expression + piece.expression;
        piece.letters = letters.empty() ? Without(AnyAscii(), "b").ascii : letters;
        return piece;
    }

    /// Where in the text a sequence that begins at its beginning can be over.
    static std::set<std::size_t> EndsAfter(const Sequence& sequence, const std::string& text) {
        std::set<std::size_t> ends = {0};
        for (const Piece& piece : sequence) {
            std::set<std::size_t> next;
            for (const std::size_t start : ends) {
                std::size_t place = start;
                for (std::size_t count = 0; count <= piece.most; ++count, ++place) {
                    if (count >= piece.least) {
                        next.insert(place);
                    }
                    if (place == text.size() ||
                        piece.letters.find(text[place]) == std::string::npos) {
                        break;
                    }
                }
            }
            ends = std::move(next);
        }
        return ends;
    }

    std::vector<Sequence> alternatives_;
};

/// A constraint, what it accepts, and values that it may.
struct CheckedConstraint {
    std::shared_ptr<CppTools::CallSpec::ParameterConstraint> constraint;
    std::function<bool(const std::string&)> accepts;
    std::function<std::string(RandomSource&)> candidate;
};

class ConstraintGenerator {
  public:
    explicit ConstraintGenerator(RandomSource& random) : random_(&random) {}

    CheckedConstraint OfIntegers() { return random_->Chance(50) ? IntRange() : IntEnum(); }

    CheckedConstraint OfStrings() { return random_->Chance(50) ? StringEnum() : StringRegex(); }

    CheckedConstraint Any() { return random_->Chance(50) ? OfIntegers() : OfStrings(); }

  private:
    using Constraint = CppTools::CallSpec::ParameterConstraint;
    using Type = CppTools::CallSpec::ParameterConstraintType;

    CheckedConstraint IntRange() {
        const auto [min, max] = std::minmax({Integer(), Integer()});
        auto constraint = Constraint::New(Type::IntRange);
        constraint->SetIntRange(min, max);
        return {constraint,
                [min = min, max = max](const std::string& text) {
                    const auto number = NumberIn(text);
                    return number && min <= *number && *number <= max;
                },
                [min = min, max = max](RandomSource& random) {
                    return NumeralNear(random, Beside(random, random.Chance(50) ? min : max));
                }};
    }

    CheckedConstraint IntEnum() {
        auto constraint = Constraint::New(Type::IntEnum);
        std::set<long> members;
        for (std::size_t count = random_->Below(5); count > 0; --count) {
            if (const long member = Integer(); members.insert(member).second) {
                constraint->AddIntEnum(member);
            }
        }
        const std::vector<long> choices(members.begin(), members.end());
        return {constraint,
                [members](const std::string& text) {
                    const auto number = NumberIn(text);
                    return number && members.contains(*number);
                },
                [choices](RandomSource& random) {
                    const long member = choices.empty() ? 0 : random.Pick(choices);
                    return NumeralNear(random, random.Chance(60) ? member : Beside(random, member));
                }};
    }

    CheckedConstraint StringEnum() {
        auto constraint = Constraint::New(Type::StringEnum);
        TextGenerator texts(*random_, AnyBytes());
        std::set<std::string> members;
        for (std::size_t count = random_->Below(5); count > 0; --count) {
            if (const std::string member = texts.Text(); members.insert(member).second) {
                constraint->AddStringEnum(member, random_->Chance(50) ? texts.Text() : "");
            }
        }
        const std::vector<std::string> choices(members.begin(), members.end());
        return {constraint, [members](const std::string& text) { return members.contains(text); },
                [choices](RandomSource& random) {
                    return Nearly(random, choices.empty() ? "" : random.Pick(choices));
                }};
    }

    CheckedConstraint StringRegex() {
        const Pattern pattern(*random_);
        auto constraint = Constraint::New(Type::StringRegex);
        constraint->SetStringRegex(pattern.Expression());
        return {constraint, [pattern](const std::string& text) { return pattern.Matches(text); },
                [pattern](RandomSource& random) { return Nearly(random, pattern.Sample(random)); }};
    }

    long Integer() {
        static const std::vector<long> edges = {std::numeric_limits<long>::min(),
                                                std::numeric_limits<long>::max(), 0};
        return random_->Chance(15) ? random_->Pick(edges)
                                   : static_cast<long>(random_->Below(200)) - 100;
    }

    /// A number that is at most 2 away.
    static long Beside(RandomSource& random, long number) {
        const long step = static_cast<long>(random.Below(5)) - 2;
        long beside = 0;
        return __builtin_add_overflow(number, step, &beside) ? number : beside;
    }

    /// The text, as often as not with one byte too many, too few or too different.
    static std::string Nearly(RandomSource& random, std::string text) {
        if (random.Chance(50)) {
            return text;
        }
        const std::size_t place = random.Below(text.size() + 1);
        const auto byte = static_cast<char>(random.Below(0x80));
        if (place == text.size() || random.Chance(30)) {
            return text.insert(place, 1, byte);
        }
        if (random.Chance(50)) {
            return text.erase(place, 1);
        }
        text[place] = byte;
        return text;
    }

    RandomSource* random_;
};

} // namespace TestSupport
