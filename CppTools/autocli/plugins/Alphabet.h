#pragma once

#include <bitset>
#include <string>
#include <string_view>

namespace CppTools::CallSpec {
class ParameterSpec;
} // namespace CppTools::CallSpec

namespace CppTools::AutoCli {

/// A set of bytes.
using ByteSet = std::bitset<256>;

ByteSet BytesOf(std::string_view bytes);

/// Which bytes texts of some kind can hold. It may name too many, never too few.
struct Alphabet {
    ByteSet all;
    ByteSet first; ///< At the head of a text.
    bool mayBeEmpty = true;

    static Alphabet Anything();

    /// The alphabet of one given text.
    static Alphabet OfText(std::string_view text);

    /// Texts of one byte out of a set.
    static Alphabet OneOf(const ByteSet& bytes);

    /// Texts of this kind or of the other.
    Alphabet Or(const Alphabet& other) const;

    /// Texts of this kind with those of the other behind them.
    Alphabet Then(const Alphabet& other) const;

    bool IsWithin(const ByteSet& bytes) const { return (all & ~bytes).none(); }
};

/// What the whole-text matches of a regular expression in Perl's syntax can hold. Understood are
/// literals, sets, groups, alternatives and quantifiers; with anything else it is `Anything`.
Alphabet AlphabetOfPattern(std::string_view expression);

/// What those values of a parameter can hold that its declaration lets through and that
/// `Feature::StrictTemplates` does not refuse.
Alphabet AlphabetOfValues(const CallSpec::ParameterSpec& parameter);

} // namespace CppTools::AutoCli
