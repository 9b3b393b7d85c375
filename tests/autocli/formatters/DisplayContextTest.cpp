#include <CppTools/autocli/formatters/DisplayContext.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <type_traits>

namespace {

using CppTools::AutoCli::DisplayContext;

static_assert(std::is_same_v<decltype(DisplayContext::width), std::uint16_t>);
static_assert(std::is_same_v<decltype(DisplayContext::height), std::uint16_t>);
static_assert(sizeof(DisplayContext) == 2 * sizeof(std::uint16_t));

TEST(DisplayContextTest, New_SizeIsUnknown) {
    const DisplayContext display;
    EXPECT_EQ(display.width, 0);
    EXPECT_EQ(display.height, 0);
}

TEST(DisplayContextTest, Fields_WidthStandsBeforeHeight) {
    const DisplayContext display{80, 24};
    EXPECT_EQ(display.width, 80);
    EXPECT_EQ(display.height, 24);
}

TEST(DisplayContextTest, Fields_HoldSixteenBits) {
    DisplayContext display;
    display.width = 65535;
    display.height = 65534;
    EXPECT_EQ(display.width, 65535);
    EXPECT_EQ(display.height, 65534);
}

TEST(DisplayContextTest, Copy_IsIndependentOfTheOriginal) {
    const DisplayContext original{80, 24};
    DisplayContext copy = original;
    copy.width = 120;
    EXPECT_EQ(original.width, 80);
    EXPECT_EQ(copy.width, 120);
    EXPECT_EQ(copy.height, 24);
}

} // namespace
