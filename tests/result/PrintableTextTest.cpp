#include <tandril-result/PrintableText.h>

#include <gtest/gtest.h>

using TandrilResult::PrintableLine;
using TandrilResult::PrintableText;

namespace {

TEST(PrintableTextTest, WellFormedText_Stays) {
    const std::string text = "a\t\n\r<&> \xC3\xA9\xE2\x82\xAC\xF0\x9F\x90\xA7\xC2\xA0";
    EXPECT_EQ(PrintableText(text), text);
}

TEST(PrintableTextTest, BytesOutsideOfUtf8_AreEscaped) {
    EXPECT_EQ(PrintableText("a\xFF\xC3(\xED\xA0\x80"), "a\\xff\\xc3(\\xed\\xa0\\x80");
}

TEST(PrintableTextTest, ControlCharacters_AreEscaped) {
    EXPECT_EQ(PrintableText("\x01\x1B\x7F\xC2\x9B"), "\\x01\\x1b\\x7f\\xc2\\x9b");
    EXPECT_EQ(PrintableText("\xEF\xBF\xBE\xEF\xBF\xBF"), "\\xef\\xbf\\xbe\\xef\\xbf\\xbf");
}

TEST(PrintableTextTest, NulAndWhatFollowsIt_AreEscapedLikeTheRest) {
    EXPECT_EQ(PrintableText(std::string("a\0\xFF\0b", 5)), "a\\x00\\xff\\x00b");
}

TEST(PrintableLineTest, LineEnds_AreEscapedToo) {
    EXPECT_EQ(PrintableLine("a\nb\r\tc\xFF"), "a\\nb\\r\tc\\xff");
}

} // namespace
