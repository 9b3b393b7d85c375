#include "Support.h"

#include <gtest/gtest.h>

using ResultTests::ReadingOf;
using TandrilResult::ReadNulColumns;
using TandrilResult::ReadPairs;
using TandrilResult::ReadPieces;

namespace {

/// The pieces, each with a NUL behind it.
std::string Nul(const std::vector<std::string>& pieces) {
    std::string text;
    for (const std::string& piece : pieces) {
        text += piece + '\0';
    }
    return text;
}

std::string Pairs(const std::string& text, char terminator = '\n') {
    return ReadingOf(text,
                     [&](auto& input, const auto& sink) { ReadPairs(input, terminator, sink); });
}

std::string NulColumns(const std::string& text) {
    return ReadingOf(text, [&](auto& input, const auto& sink) {
        ReadNulColumns(input, {"b", "a"}, sink);
    });
}

std::string Pieces(const std::string& text, char terminator) {
    return ReadingOf(text,
                     [&](auto& input, const auto& sink) { ReadPieces(input, terminator, sink); });
}

TEST(PairsReaderTest, EmptyLines_SeparateRecords) {
    EXPECT_EQ(Pairs("\n\na=1\nb=x=\"y\" \n\n\na=\nb=\r\n"),
              R"([{"a":"1","b":"x=\"y\" "},{"a":"","b":"\r"}])");
    EXPECT_EQ(Pairs(""), "[]");
    EXPECT_EQ(Pairs("\n"), "[]");
}

TEST(PairsReaderTest, Nul_TakesThePlaceOfLineEnds) {
    EXPECT_EQ(Pairs(Nul({"a=1\n2", "b=", "", "a=3"}), '\0'), R"([{"a":"1\n2","b":""},{"a":"3"}])");
}

TEST(PairsReaderTest, NoEqualsSign_IsAnErrorThatNamesThePlace) {
    EXPECT_EQ(Pairs("a=1\n\nb\n"), R"([{"a":"1"}] line 3 has no '=')");
    EXPECT_EQ(Pairs(Nul({"a=1", "b"}), '\0'), "[] piece 2 has no '='");
}

TEST(PairsReaderTest, KeyASecondTime_IsAnError) {
    EXPECT_EQ(Pairs("a=1\na=2\n"), "[] line 2 gives 'a' a second time within a record");
}

TEST(PairsReaderTest, LastPieceWithoutEnd_WasCutShort) {
    EXPECT_EQ(Pairs("a=1\n\nb=2"), R"([{"a":"1"}] line 3 has no end, so the input was cut short)");
    EXPECT_EQ(Pairs("a=1", '\0'), "[] piece 1 has no end, so the input was cut short");
}

TEST(NulColumnsReaderTest, SoManyValues_AreARecord) {
    EXPECT_EQ(NulColumns(Nul({"1", "x\ny", "", "z"})),
              R"([{"a":"x\ny","b":"1"},{"a":"z","b":""}])");
    EXPECT_EQ(NulColumns(""), "[]");
}

TEST(NulColumnsReaderTest, RecordThatIsNotWhole_IsAnError) {
    EXPECT_EQ(NulColumns(Nul({"1", "2", "3"})),
              R"([{"a":"2","b":"1"}] piece 3 is the last, but the record lacks 'a')");
    EXPECT_EQ(NulColumns("1"), "[] piece 1 has no end, so the input was cut short");
}

TEST(PiecesReaderTest, EachPiece_IsAValue) {
    EXPECT_EQ(Pieces("a\n\nb c\n", '\n'), R"(["a","","b c"])");
    EXPECT_EQ(Pieces(Nul({"a\n", ""}), '\0'), R"(["a\n",""])");
    EXPECT_EQ(Pieces("a\nb", '\n'), R"(["a"] line 2 has no end, so the input was cut short)");
}

} // namespace
