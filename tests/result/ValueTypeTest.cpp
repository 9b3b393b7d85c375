#include <tandril-result/ValueType.h>

#include <gtest/gtest.h>

using TandrilResult::ScalarType;
using TandrilResult::ValueType;
using TandrilResult::ValueTypeOf;

namespace {

TEST(ValueTypeTest, Words_NameScalarsAndLists) {
    EXPECT_EQ(ValueTypeOf("string"), (ValueType{ScalarType::String, false}));
    EXPECT_EQ(ValueTypeOf("int"), (ValueType{ScalarType::Int, false}));
    EXPECT_EQ(ValueTypeOf("bool"), (ValueType{ScalarType::Bool, false}));
    EXPECT_EQ(ValueTypeOf("string-list"), (ValueType{ScalarType::String, true}));
    EXPECT_EQ(ValueTypeOf("int-list"), (ValueType{ScalarType::Int, true}));
    EXPECT_EQ(ValueTypeOf("bool-list"), (ValueType{ScalarType::Bool, true}));
}

TEST(ValueTypeTest, OtherWords_NameNoType) {
    for (const char* word : {"", "Int", "integer", "int-", "-list", "int-list-list"}) {
        EXPECT_EQ(ValueTypeOf(word), std::nullopt) << word;
    }
}

} // namespace
