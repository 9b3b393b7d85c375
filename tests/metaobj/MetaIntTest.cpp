#include <CppTools/metaobj/MetaInt.h>

#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>

namespace {

using CppTools::MetaObj::MetaInt;
using CppTools::MetaObj::MetaType;

constexpr long kSmallest = std::numeric_limits<long>::min();
constexpr long kLargest = std::numeric_limits<long>::max();

TEST(MetaIntTest, New_WithoutValue_IsTheCachedZero) {
    EXPECT_EQ(MetaInt::New()->GetValue(), 0);
    EXPECT_EQ(MetaInt::New(), MetaInt::New(0));
}

TEST(MetaIntTest, GetType_IsInt) {
    EXPECT_EQ(MetaInt::New(3)->GetType(), MetaType::Int);
    EXPECT_EQ(MetaInt::New(3000)->GetType(), MetaType::Int);
}

TEST(MetaIntTest, GetValue_HoldsSixtyFourBits) {
    EXPECT_EQ(sizeof(MetaInt::New()->GetValue()), 8U);
    EXPECT_EQ(MetaInt::New(kSmallest)->GetValue(), kSmallest);
    EXPECT_EQ(MetaInt::New(kLargest)->GetValue(), kLargest);
}

TEST(MetaIntTest, New_UncachedValue_IsOwnedByItsHoldersAlone) {
    const auto value = MetaInt::New(21);
    EXPECT_EQ(value.use_count(), 1);
}

TEST(MetaIntTest, Init_RunAgain_IsTrueAndKeepsTheInstances) {
    const auto first = MetaInt::New(-1);
    const auto last = MetaInt::New(20);
    EXPECT_TRUE(MetaInt::Init());
    EXPECT_EQ(MetaInt::New(-1), first);
    EXPECT_EQ(MetaInt::New(20), last);
}

TEST(MetaIntTest, Construction_OutsideTheFactories_IsImpossible) {
    EXPECT_FALSE((std::is_constructible_v<MetaInt, long>));
    EXPECT_FALSE(std::is_default_constructible_v<MetaInt>);
    EXPECT_FALSE(std::is_copy_constructible_v<MetaInt>);
    EXPECT_FALSE(std::is_copy_assignable_v<MetaInt>);
}

class MetaIntCachedTest : public testing::TestWithParam<long> {};

TEST_P(MetaIntCachedTest, New_Twice_YieldsOneInstanceOfThatValue) {
    EXPECT_EQ(MetaInt::New(GetParam()), MetaInt::New(GetParam()));
    EXPECT_EQ(MetaInt::New(GetParam())->GetValue(), GetParam());
    EXPECT_EQ(MetaInt::New(GetParam())->ToString(), std::to_string(GetParam()));
}

INSTANTIATE_TEST_SUITE_P(Values, MetaIntCachedTest, testing::Range(-1L, 21L));

class MetaIntUncachedTest : public testing::TestWithParam<long> {};

TEST_P(MetaIntUncachedTest, New_Twice_YieldsTwoInstancesOfThatValue) {
    const auto first = MetaInt::New(GetParam());
    const auto second = MetaInt::New(GetParam());
    EXPECT_NE(first, second);
    EXPECT_EQ(first->GetValue(), GetParam());
    EXPECT_EQ(second->GetValue(), GetParam());
}

INSTANTIATE_TEST_SUITE_P(Values, MetaIntUncachedTest,
                         testing::Values(-2L, 21L, 22L, -100L, 4294967296L, 4294967301L, kSmallest,
                                         kLargest));

using Printed = std::pair<long, std::string>;

class MetaIntPrintTest : public testing::TestWithParam<Printed> {};

TEST_P(MetaIntPrintTest, ToString_IsDecimalWithLeadingMinusForNegatives) {
    EXPECT_EQ(MetaInt::New(GetParam().first)->ToString(), GetParam().second);
}

INSTANTIATE_TEST_SUITE_P(Values, MetaIntPrintTest,
                         testing::Values(Printed{-5, "-5"}, Printed{0, "0"}, Printed{-1, "-1"},
                                         Printed{7, "7"}, Printed{1234567, "1234567"},
                                         Printed{kSmallest, "-9223372036854775808"},
                                         Printed{kLargest, "9223372036854775807"}));

} // namespace
