#include <CppTools/autocli/formatters/TableFormatter.h>

#include <tests/support/Rendering.h>
#include <tests/support/Values.h>
#include <tests/support/Wrapping.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <sstream>
#include <string>

namespace {

using CppTools::AutoCli::DisplayContext;
using CppTools::AutoCli::TableFormatter;
using TestSupport::Int;
using TestSupport::ParameterEntries;
using TestSupport::ParametersOf;
using TestSupport::Rendering;
using TestSupport::RenderWith;
using TestSupport::Rows;
using TestSupport::Struct;
using TestSupport::Text;
using TestSupport::Texts;
using TestSupport::Value;

/// The rows of a table in a display of that width, without header.
std::string Wrapped(const Value& list, int width, ParameterEntries entries = {}) {
    entries.insert(entries.begin(), {{"show-header", "false"}, {"wrap-last", "true"}});
    const auto [result, text] =
        RenderWith<TableFormatter>(list, entries, static_cast<std::uint16_t>(width));
    EXPECT_TRUE(result);
    return text;
}

Value OneRow(const std::string& first, const Value& last) {
    return Rows({Struct("T", {{"First", Text(first)}, {"Last", last}})});
}

TEST(TableWrappingTest, LastColumnContinuesAtTheColumnWhereItBegan) {
    const auto list = Rows({Struct("T", {{"A", Text("12345678")},
                                         {"B", Text("123456789012345678")},
                                         {"C", Text("aaaaa bbbbb ccccc ddddd e")}})});
    EXPECT_EQ(RenderWith<TableFormatter>(list, {{"wrap-last", "true"}}, 40),
              Rendering(true, "A         B                   C\n"
                              "--------  ------------------  -\n"
                              "12345678  123456789012345678  aaaaa \n"
                              "                              bbbbb \n"
                              "                              ccccc \n"
                              "                              ddddd e\n"));
}

TEST(TableWrappingTest, FittingCellStaysOnItsLine) {
    EXPECT_EQ(Wrapped(OneRow("x", Text("aaaa bbbb")), 16), "x      aaaa bbbb\n");
    EXPECT_EQ(Wrapped(OneRow("x", Text("aaaa bbbb")), 15), "x      aaaa \n       bbbb\n");
}

TEST(TableWrappingTest, EmptyCellWritesNothing) {
    EXPECT_EQ(Wrapped(OneRow("x", Text("")), 40), "x      \n");
}

TEST(TableWrappingTest, EmbeddedLineEndsBeginIndentedLines) {
    EXPECT_EQ(Wrapped(OneRow("x", Text("a\n\nb\n")), 40), "x      a\n       \n       b\n");
}

TEST(TableWrappingTest, UnknownWidthWrapsNothing) {
    const std::string text = "a very long text\nwith a line end";
    EXPECT_EQ(Wrapped(OneRow("x", Text(text)), 0), "x      " + text + "\n");
}

TEST(TableWrappingTest, OnlyExactlyTrueWraps) {
    for (const char* value : {"", "false", "True", "1", "yes", "true "}) {
        EXPECT_EQ(RenderWith<TableFormatter>(OneRow("x", Text("aaaa bbbb")),
                                             {{"show-header", "false"}, {"wrap-last", value}}, 12),
                  Rendering(true, "x      aaaa bbbb\n"))
            << "'" << value << "'";
    }
}

TEST(TableWrappingTest, WithoutTheParameterNothingIsWrapped) {
    EXPECT_EQ(
        RenderWith<TableFormatter>(OneRow("x", Text("aaaa bbbb")), {{"show-header", "false"}}, 12),
        Rendering(true, "x      aaaa bbbb\n"));
}

TEST(TableWrappingTest, DisplayMustHoldTheFixedColumnsAndTheLastName) {
    const auto list = OneRow("x", Text("aaa bbb"));
    EXPECT_EQ(Wrapped(list, 11), "x      aaa \n       bbb\n");
    EXPECT_EQ(Wrapped(list, 10), "x      aaa bbb\n");
}

TEST(TableWrappingTest, SingleColumnIsNeverWrapped) {
    const auto list = Rows({Struct("T", {{"a", Text("aaaa bbbb cccc\ndddd")}})});
    EXPECT_EQ(Wrapped(list, 6), "aaaa bbbb cccc\ndddd\n");
}

TEST(TableWrappingTest, WrappedColumnTakesNoUnitsOrPrintf) {
    const ParameterEntries entries{{"units:T.Last", "MB"},
                                   {"printf:T.Last", "<%s>"},
                                   {"units:T.First", "MB"},
                                   {"printf:T.First", "<%s>"}};
    EXPECT_EQ(Wrapped(OneRow("x", Text("y")), 40, entries), "<x> MB  y\n");
    EXPECT_EQ(Wrapped(OneRow("x", Text("y")), 0, entries), "<x> MB  <y> MB\n");
    EXPECT_EQ(Wrapped(OneRow("x", Text("y")), 11, entries), "<x> MB  <y> MB\n");
}

TEST(TableWrappingTest, WrappedIntegerIsNotAligned) {
    const auto list = Rows({Struct("T", {{"First", Int(1)}, {"Last", Int(2)}})});
    EXPECT_EQ(Wrapped(list, 40), "    1  2\n");
    EXPECT_EQ(Wrapped(list, 0), "    1     2  \n");
}

TEST(TableWrappingTest, CompoundCellsAreWrappedInTheirPlainText) {
    EXPECT_EQ(Wrapped(OneRow("x", Texts({"a", "b", "c", "d"})), 14), "x      a, b, \n"
                                                                     "       c, d\n");
}

TEST(TableWrappingTest, RepeatedLastColumnIsWrappedEveryTime) {
    const ParameterEntries entries{{"fields", "Last,First,Last"}};
    EXPECT_EQ(Wrapped(OneRow("x", Text("aaaa bbbb")), 15, entries),
              "aaaa \n       bbbbx      aaaa \n       bbbb\n");
}

TEST(TableWrappingTest, RepeatedFixedColumnCountsEveryTime) {
    const auto list = OneRow("x", Text("aaaa bbbb"));
    EXPECT_EQ(Wrapped(list, 22, {{"fields", "First,First,Last"}}), "x      x      aaaa \n"
                                                                   "              bbbb\n");
    EXPECT_EQ(Wrapped(list, 17, {{"fields", "First,First,Last"}}), "x      x      aaaa bbbb\n");
}

TEST(TableWrappingTest, LastColumnCanBeAPath) {
    const auto inner = Struct("I", {{"Text", Text("aaaa bbbb")}, {"Size", Int(7)}});
    const auto list = Rows({Struct("T", {{"First", Text("x")}, {"In", inner}})});
    EXPECT_EQ(Wrapped(list, 15, {{"fields", "First,In.Text"}}), "x      aaaa \n"
                                                                "       bbbb\n");
    EXPECT_EQ(Wrapped(list, 15, {{"fields", "First,In.Size"}}), "x      7\n");
    EXPECT_EQ(Wrapped(list, 13, {{"fields", "First,In.Size"}}), "x            7  \n");
}

TEST(TableWrappingTest, RepeatedOnlyColumnHasNoFixedColumns) {
    EXPECT_EQ(Wrapped(OneRow("x", Text("aaaa bbbb")), 8, {{"fields", "Last,Last"}}),
              "aaaa bbbbaaaa bbbb\n");
}

TEST(TableWrappingTest, HeightOfTheDisplayDoesNotMatter) {
    const auto output = CppTools::CallSpec::Output::New();
    output->SetRootObject(OneRow("x", Text("aaaa bbbb")));
    auto params = ParametersOf({{"show-header", "false"}, {"wrap-last", "true"}});
    for (const int height : {0, 1, 65535}) {
        DisplayContext display{15, static_cast<std::uint16_t>(height)};
        std::ostringstream out;
        EXPECT_TRUE(TableFormatter().Format(output, params, display, out));
        EXPECT_EQ(out.str(), "x      aaaa \n       bbbb\n") << height;
    }
}

TEST(TableWrappingTest, EveryWidthAgreesWithWrappingLineByLine) {
    const std::string text = "Prints a table of everything that there is,\n"
                             "with  a line end and https://host.example/a/long/address inside.";
    for (int width = 1; width <= 120; ++width) {
        const int fixed = 7;
        const int lastName = 4;
        const std::string cell =
            width < fixed + lastName ? text : TestSupport::WrapEachLine(text, fixed, width);
        ASSERT_EQ(Wrapped(OneRow("x", Text(text)), width), "x      " + cell + "\n")
            << "width " << width;
    }
}

} // namespace
