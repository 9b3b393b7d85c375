#include <CppTools/autocli/plugins/ExtensionCommand.h>

#include <gtest/gtest.h>
#include <tests/support/NamedRow.h>

#include <cstddef>
#include <string>
#include <utility>

namespace {

using CppTools::AutoCli::FindPairedTokenSize;
using TestSupport::kRowName;
using TestSupport::NamedRow;

using Found = std::pair<std::size_t, std::size_t>;

Found Find(const std::string& text, std::size_t start = 0) {
    return FindPairedTokenSize(text.data(), start, text.size(), '{', '}');
}

struct PairRow : NamedRow {
    std::string text;
    std::size_t start;
    Found found;
};

class FindPairedTokenSizeTest : public testing::TestWithParam<PairRow> {};

TEST_P(FindPairedTokenSizeTest, FindPairedTokenSize_FindsThePartner) {
    EXPECT_EQ(Find(GetParam().text, GetParam().start), GetParam().found);
}

INSTANTIATE_TEST_SUITE_P(
    Pairs, FindPairedTokenSizeTest,
    testing::Values(PairRow{{"Empty"}, "{}", 0, {0, 2}}, PairRow{{"Simple"}, "{abc}d}", 0, {0, 5}},
                    PairRow{{"Nested"}, "{a{b}c}d", 0, {0, 7}},
                    PairRow{{"SeveralNested"}, "{{}{{}}}", 0, {0, 8}},
                    PairRow{{"FromTheMiddle"}, "a{b{c}d}e", 3, {3, 3}},
                    PairRow{{"Unclosed"}, "{abc", 0, {0, 0}},
                    PairRow{{"InnerUnclosed"}, "{a{b}c", 0, {0, 0}},
                    PairRow{{"InnerUnclosedOutsideThePair"}, "{a}{b", 0, {0, 3}},
                    PairRow{{"StartIsNoOpen"}, "ab}c}", 0, {0, 3}},
                    PairRow{{"StartIsNoOpenWithPairBehind"}, "a{b}c}", 0, {0, 6}},
                    PairRow{{"StartIsTheClose"}, "a}b", 1, {1, 1}},
                    PairRow{{"NeitherAtAll"}, "abc", 1, {0, 0}},
                    PairRow{{"UnclosedFromTheMiddle"}, "}a{b", 2, {0, 0}}),
    kRowName);

TEST(PairedTokenTest, FindPairedTokenSize_LooksNoFurtherThanTheEnd) {
    const std::string text = "{a{b}}";
    EXPECT_EQ(FindPairedTokenSize(text.data(), 0, 5, '{', '}'), (Found{0, 0}));
    EXPECT_EQ(FindPairedTokenSize(text.data(), 2, 5, '{', '}'), (Found{2, 3}));
    EXPECT_EQ(FindPairedTokenSize(text.data(), 2, 4, '{', '}'), (Found{0, 0}));
    EXPECT_EQ(FindPairedTokenSize(text.data(), 0, 1, '{', '}'), (Found{0, 0}));
}

TEST(PairedTokenTest, FindPairedTokenSize_TakesAnyTwoCharacters) {
    const std::string text = "(a{(}b))";
    EXPECT_EQ(FindPairedTokenSize(text.data(), 0, text.size(), '(', ')'), (Found{0, 8}));
    EXPECT_EQ(FindPairedTokenSize(text.data(), 3, text.size(), '(', ')'), (Found{3, 4}));
}

/// The definition, word by word; it takes exponential time over unpaired opening characters.
Found Defined(const std::string& text, std::size_t start, std::size_t end) {
    std::size_t i = start + (text[start] == '{' ? 1 : 0);
    while (i < end) {
        if (text[i] == '{') {
            const std::size_t size = Defined(text, i, end).second;
            i += size != 0 ? size : 1;
        } else if (text[i] == '}') {
            return {start, i - start + 1};
        } else {
            ++i;
        }
    }
    return {0, 0};
}

/// Compares every start and end within one text.
void ExpectAsDefined(const std::string& text) {
    for (std::size_t end = 1; end <= text.size(); ++end) {
        for (std::size_t start = 0; start < end; ++start) {
            ASSERT_EQ(FindPairedTokenSize(text.data(), start, end, '{', '}'),
                      Defined(text, start, end))
                << '"' << text << "\" from " << start << " to " << end;
        }
    }
}

class EveryShortTextTest : public testing::TestWithParam<std::size_t> {};

TEST_P(EveryShortTextTest, FindPairedTokenSize_AnswersAsDefined) {
    const std::string alphabet = "{}a";
    std::string text(GetParam(), alphabet.front());
    std::size_t place = 0;
    while (place < text.size()) {
        ASSERT_NO_FATAL_FAILURE(ExpectAsDefined(text));
        // Counts up in base three, the digits being the alphabet.
        for (place = 0; place < text.size(); ++place) {
            const std::size_t digit = alphabet.find(text[place]) + 1;
            text[place] = alphabet[digit % alphabet.size()];
            if (digit < alphabet.size()) {
                break;
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Lengths, EveryShortTextTest, testing::Range<std::size_t>(1, 10));

constexpr std::size_t kMany = 1'000'000;

TEST(PairedTokenTest, FindPairedTokenSize_ManyUnpairedOpeningsEndPromptly) {
    const std::string text(kMany, '{');
    EXPECT_EQ(Find(text), (Found{0, 0}));
    EXPECT_EQ(Find(text, kMany / 2), (Found{0, 0}));
}

TEST(PairedTokenTest, FindPairedTokenSize_ManyNestedPairsEndPromptly) {
    EXPECT_EQ(Find(std::string(kMany, '{') + std::string(kMany, '}')), (Found{0, 2 * kMany}));
}

TEST(PairedTokenTest, FindPairedTokenSize_OneMissingAmongManyNestedPairs) {
    const std::string text = std::string(kMany, '{') + std::string(kMany - 1, '}');
    EXPECT_EQ(Find(text), (Found{0, 0}));
    EXPECT_EQ(Find(text, 1), (Found{1, 2 * kMany - 2}));
}

} // namespace
