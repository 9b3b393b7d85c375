#include <CppTools/autocli/formatters/JsonFormatter.h>
#include <CppTools/autocli/formatters/TableFormatter.h>

#include <tests/support/Rendering.h>
#include <tests/support/Values.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <vector>

namespace {

using CppTools::AutoCli::JsonFormatter;
using CppTools::AutoCli::TableFormatter;
using TestSupport::Ints;
using TestSupport::RenderAt;
using TestSupport::Rows;
using TestSupport::Struct;
using TestSupport::Text;

// Formatters hand their text to the stream in blocks of this size.
constexpr std::size_t kBlock = 32768;

TEST(LargeResultTest, Format_MoreNumbersThanABlockHolds_EachIsWholeAndInItsPlace) {
    const std::size_t count = kBlock;
    const std::vector<long> numbers(count, -9223372036854775807L);
    std::string text = "\n[";
    for (std::size_t i = 0; i < count; ++i) {
        text += i == 0 ? "\n-9223372036854775807" : ", \n-9223372036854775807";
    }
    EXPECT_EQ(RenderAt<JsonFormatter>(0, Ints(numbers)), text + "\n]");
}

TEST(LargeResultTest, Format_TextThatEndsNearTheEndOfABlock_IsClosedByItsQuote) {
    for (std::size_t length = kBlock - 3; length < kBlock + 3; ++length) {
        const std::string text(length, 'x');
        EXPECT_EQ(RenderAt<JsonFormatter>(0, Text(text)), '"' + text + '"') << length;
    }
}

TEST(LargeResultTest, Format_CellWiderThanABlock_ColumnsArePaddedToIt) {
    const std::string wide(100000, 'w');
    const auto rows = Rows({Struct("T", {{"a", Text(wide)}, {"b", Text("y")}}),
                            Struct("T", {{"a", Text("x")}, {"b", Text("z")}})});
    EXPECT_EQ(TestSupport::RenderWith<TableFormatter>(rows, {{"show-header", "false"}}),
              TestSupport::Rendering(true, wide + "  y\nx" + std::string(100001, ' ') + "z\n"));
}

} // namespace
