#include "Support.h"

#include <gtest/gtest.h>

using ResultTests::ReadingOf;
using TandrilResult::ReadCsv;

namespace {

using CsvColumns = std::vector<std::string>;

std::string Csv(const std::string& text, const CsvColumns& columns = {}) {
    return ReadingOf(text, [&](auto& input, const auto& sink) { ReadCsv(input, columns, sink); });
}

TEST(CsvReaderTest, FirstLine_NamesTheColumns) {
    EXPECT_EQ(Csv("a,b c\n1,x\ty\n,\n"), R"([{"a":"1","b c":"x\ty"},{"a":"","b c":""}])");
}

TEST(CsvReaderTest, GivenColumns_EveryLineIsARecord) {
    EXPECT_EQ(Csv("a,b\n", {"x", "y"}), R"([{"x":"a","y":"b"}])");
}

TEST(CsvReaderTest, Quotes_KeepCommasQuotesAndLineEnds) {
    EXPECT_EQ(Csv("a,b\n\"1,2\",\"say \"\"x\"\"\"\n\"\",\"one\r\ntwo\nthree\"\n"),
              R"([{"a":"1,2","b":"say \"x\""},{"a":"","b":"one\r\ntwo\nthree"}])");
    EXPECT_EQ(Csv("\"a,b\"\n1\n"), R"([{"a,b":"1"}])");
}

TEST(CsvReaderTest, LineEnds_OfBothKindsAndNoneAtTheEnd) {
    EXPECT_EQ(Csv("a,b\r\n1,\"2\"\r\n3,4\n5,\"6\""),
              R"([{"a":"1","b":"2"},{"a":"3","b":"4"},{"a":"5","b":"6"}])");
}

TEST(CsvReaderTest, CarriageReturnWithinALine_IsText) {
    EXPECT_EQ(Csv("a,b\n1\r,2\n"), R"([{"a":"1\r","b":"2"}])");
}

TEST(CsvReaderTest, ByteOrderMark_IsPassedOver) {
    EXPECT_EQ(Csv("\xEF\xBB\xBF"
                  "a,b\n1,2\n"),
              R"([{"a":"1","b":"2"}])");
}

TEST(CsvReaderTest, FewerOrMoreCells_ErrorNamesTheLineWhereTheRowBegins) {
    EXPECT_EQ(Csv("a,b\n\"1\n\",2\n\"3\n\n\"\n"),
              R"([{"a":"1\n","b":"2"}] line 4 has 1 cells for 2 columns)");
}

TEST(CsvReaderTest, QuotesThatDoNotFit_AreErrorsThatNameTheLine) {
    EXPECT_EQ(Csv("a\nx\"y\n"), "[] line 2 has a quote within a cell that does not begin with one");
    EXPECT_EQ(Csv("a\n\"x\"y\n"), "[] line 2 has text behind the quote that ends a cell");
    EXPECT_EQ(Csv("a\n\"x\"\ry\n"), "[] line 2 has text behind the quote that ends a cell");
    EXPECT_EQ(Csv("a\n\n\"x\n\n"), R"([{"a":""}] line 3 begins a quoted cell that has no end)");
}

TEST(CsvReaderTest, NoHeader_IsAnError) {
    EXPECT_EQ(Csv(""), "[] there is no header line");
}

} // namespace
