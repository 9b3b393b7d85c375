#include <devkit/lints/RunawaySearch.h>

#include <gtest/gtest.h>

namespace {

using Devkit::Lints::FindRunawayPiece;

TEST(FindRunawayPiece, NestedRepetition_IsNamedWithWhatRepeatsIt) {
    EXPECT_EQ(FindRunawayPiece("id-(a+)+"), "(a+)+");
    EXPECT_EQ(FindRunawayPiece("(x(\\w*){2,})"), "(\\w*){2,}");
    EXPECT_EQ(FindRunawayPiece("(a|a)*"), "(a|a)*");
    EXPECT_EQ(FindRunawayPiece("(a|ab|b)*"), "(a|ab|b)*");
}

TEST(FindRunawayPiece, RepetitionThatMatchesInOneWay_IsNone) {
    for (const char* expression : {"", "a+b*", "(ab)+", "(a|b)*", "([a-z]+\\.)*[a-z]+", "(a+){3}",
                                   "(\\d+ )*", "\\(a+\\)+", "[(]a+[)]+", "[^(](a)+", "[](a+)]+"}) {
        EXPECT_EQ(FindRunawayPiece(expression), std::nullopt) << expression;
    }
}

TEST(FindRunawayPiece, GroupThatNamesAnother_IsPassedOver) {
    EXPECT_EQ(FindRunawayPiece("(a)(b)(\\2+)+"), std::nullopt);
}

} // namespace
