#include "Support.h"

#include <gtest/gtest.h>

using ResultTests::ReadingOf;
using TandrilResult::ReadTsv;

namespace {

using TsvColumns = std::vector<std::string>;

std::string Tsv(const std::string& text, const TsvColumns& columns = {}) {
    return ReadingOf(text, [&](auto& input, const auto& sink) { ReadTsv(input, columns, sink); });
}

TEST(TsvReaderTest, FirstLine_NamesTheColumns) {
    EXPECT_EQ(Tsv("a\tb c\n1\tx \"y\", z\n\t\n"),
              R"([{"a":"1","b c":"x \"y\", z"},{"a":"","b c":""}])");
    EXPECT_EQ(Tsv("a\tb\n"), "[]");
}

TEST(TsvReaderTest, GivenColumns_EveryLineIsARecord) {
    EXPECT_EQ(Tsv("a\tb\n1\t2\n", {"x", "y"}), R"([{"x":"a","y":"b"},{"x":"1","y":"2"}])");
    EXPECT_EQ(Tsv("", {"x"}), "[]");
}

TEST(TsvReaderTest, CarriageReturns_BelongToTheLineEnd) {
    EXPECT_EQ(Tsv("a\tb\r\n1\r\t2\r\n"), R"([{"a":"1\r","b":"2"}])");
}

TEST(TsvReaderTest, OneColumn_EmptyLineIsAnEmptyCell) {
    EXPECT_EQ(Tsv("a\n\n"), R"([{"a":""}])");
}

TEST(TsvReaderTest, FewerOrMoreCells_AreAnErrorThatNamesTheLine) {
    EXPECT_EQ(Tsv("a\tb\n1\t2\n3\n"), R"([{"a":"1","b":"2"}] line 3 has 1 cells for 2 columns)");
    EXPECT_EQ(Tsv("1\t2\n", {"a"}), "[] line 1 has 2 cells for 1 columns");
}

TEST(TsvReaderTest, NoHeader_IsAnError) {
    EXPECT_EQ(Tsv(""), "[] there is no header line");
}

TEST(TsvReaderTest, ColumnNamedTwice_IsAnError) {
    EXPECT_EQ(Tsv("a\tb\ta\n"), "[] line 1 names the column 'a' twice");
}

TEST(TsvReaderTest, LastLineWithoutEnd_WasCutShort) {
    EXPECT_EQ(Tsv("a\tb\n1\t2"), "[] line 2 has no end, so the input was cut short");
}

} // namespace
