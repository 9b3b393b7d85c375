#include <CppTools/metaobj/MetaBool.h>

#include <gtest/gtest.h>

#include <memory>
#include <type_traits>

namespace {

using CppTools::MetaObj::MetaBool;
using CppTools::MetaObj::MetaType;

TEST(MetaBoolTest, New_WithoutValue_IsTheSharedFalse) {
    EXPECT_FALSE(MetaBool::New()->GetValue());
    EXPECT_EQ(MetaBool::New(), MetaBool::New(false));
}

TEST(MetaBoolTest, New_SameValueTwice_YieldsOneInstance) {
    EXPECT_EQ(MetaBool::New(true), MetaBool::New(true));
    EXPECT_EQ(MetaBool::New(false), MetaBool::New(false));
    EXPECT_NE(MetaBool::New(true), MetaBool::New(false));
}

TEST(MetaBoolTest, New_ReturnsTheModuleWidePointerItself) {
    EXPECT_EQ(&MetaBool::New(), &MetaBool::New(false));
    EXPECT_EQ(&MetaBool::New(true), &MetaBool::New(true));
}

TEST(MetaBoolTest, GetValue_ReturnsTheValueGiven) {
    EXPECT_TRUE(MetaBool::New(true)->GetValue());
    EXPECT_FALSE(MetaBool::New(false)->GetValue());
}

TEST(MetaBoolTest, GetType_IsBool) {
    EXPECT_EQ(MetaBool::New(true)->GetType(), MetaType::Bool);
    EXPECT_EQ(MetaBool::New(false)->GetType(), MetaType::Bool);
}

TEST(MetaBoolTest, ToString_PrintsTheLowerCaseWords) {
    EXPECT_EQ(MetaBool::New(true)->ToString(), "true");
    EXPECT_EQ(MetaBool::New(false)->ToString(), "false");
}

TEST(MetaBoolTest, Init_RunAgain_IsTrueAndKeepsTheInstances) {
    const std::shared_ptr<MetaBool> yes = MetaBool::New(true);
    const std::shared_ptr<MetaBool> no = MetaBool::New(false);
    EXPECT_TRUE(MetaBool::Init());
    EXPECT_EQ(MetaBool::New(true), yes);
    EXPECT_EQ(MetaBool::New(false), no);
}

TEST(MetaBoolTest, Construction_OutsideTheFactories_IsImpossible) {
    EXPECT_FALSE((std::is_constructible_v<MetaBool, bool>));
    EXPECT_FALSE(std::is_default_constructible_v<MetaBool>);
    EXPECT_FALSE(std::is_copy_constructible_v<MetaBool>);
    EXPECT_FALSE(std::is_copy_assignable_v<MetaBool>);
}

} // namespace
