#include <CppTools/autocli/formatters/FormatParameters.h>

#include <tests/support/NamedRow.h>

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

using CppTools::AutoCli::FormatParameters;
using TestSupport::kRowName;

using Items = std::vector<std::string>;
using Entries = std::map<std::string, std::string>;

static_assert(sizeof(FormatParameters) == sizeof(std::string) + sizeof(Entries));
static_assert(std::is_copy_assignable_v<FormatParameters>);
static_assert(std::is_nothrow_move_constructible_v<FormatParameters>);

TEST(FormatParametersTest, New_FormatterIsEmpty) {
    EXPECT_EQ(FormatParameters().GetFormatter(), "");
}

TEST(FormatParametersTest, New_ThereAreNoParameters) {
    EXPECT_EQ(FormatParameters().GetParameters(), Entries());
}

TEST(FormatParametersTest, SetFormatter_String_ReplacesTheName) {
    FormatParameters params;
    params.SetFormatter(std::string("table"));
    EXPECT_EQ(params.GetFormatter(), "table");
    params.SetFormatter(std::string("xml"));
    EXPECT_EQ(params.GetFormatter(), "xml");
}

TEST(FormatParametersTest, SetFormatter_Characters_ReplacesTheName) {
    FormatParameters params;
    params.SetFormatter("table");
    EXPECT_EQ(params.GetFormatter(), "table");
    params.SetFormatter("");
    EXPECT_EQ(params.GetFormatter(), "");
}

TEST(FormatParametersTest, SetParameter_NewKey_IsInserted) {
    FormatParameters params;
    params.SetParameter(std::string("fields"), std::string("a,b"));
    params.SetParameter("align-fields", "true");
    EXPECT_EQ(params.GetParameters(), (Entries{{"align-fields", "true"}, {"fields", "a,b"}}));
}

TEST(FormatParametersTest, SetParameter_KnownKey_IsOverwrittenByEitherForm) {
    FormatParameters params;
    params.SetParameter("fields", "a");
    params.SetParameter(std::string("fields"), std::string("b"));
    EXPECT_EQ(params.GetParameters(), (Entries{{"fields", "b"}}));
    params.SetParameter("fields", "c");
    EXPECT_EQ(params.GetParameters(), (Entries{{"fields", "c"}}));
}

TEST(FormatParametersTest, SetParameter_LeavesTheFormatterAlone) {
    FormatParameters params;
    params.SetFormatter("table");
    params.SetParameter("formatter", "xml");
    EXPECT_EQ(params.GetFormatter(), "table");
}

TEST(FormatParametersTest, GetParameters_KeysAscendByteWise) {
    FormatParameters params;
    for (const char* key : {"b", "a:T", "\xC3\xA9", "B", "a", "a.", ""}) {
        params.SetParameter(key, "");
    }
    Items keys;
    for (const auto& [key, value] : params.GetParameters()) {
        keys.push_back(key);
    }
    EXPECT_EQ(keys, (Items{"", "B", "a", "a.", "a:T", "b", "\xC3\xA9"}));
}

TEST(FormatParametersTest, HasParameter_AbsentKey_IsFalse) {
    FormatParameters params;
    params.SetParameter("fields:T", "a");
    EXPECT_FALSE(params.HasParameter("fields"));
}

TEST(FormatParametersTest, HasParameter_KeysAreCaseSensitive) {
    FormatParameters params;
    params.SetParameter("fields", "a");
    EXPECT_FALSE(params.HasParameter("Fields"));
}

TEST(FormatParametersTest, HasParameter_EmptyValue_CountsAsPresent) {
    FormatParameters params;
    params.SetParameter("fields", "");
    EXPECT_TRUE(params.HasParameter("fields"));
}

TEST(FormatParametersTest, GetParameter_PresentKey_IsItsValue) {
    FormatParameters params;
    params.SetParameter("fields", " a , b ");
    EXPECT_EQ(params.GetParameter("fields"), " a , b ");
}

TEST(FormatParametersTest, GetParameter_AbsentKey_IsOneSharedEmptyString) {
    const FormatParameters one;
    const FormatParameters other;
    EXPECT_EQ(one.GetParameter("a"), "");
    EXPECT_EQ(&one.GetParameter("a"), &other.GetParameter("b"));
}

TEST(FormatParametersTest, GetParameter_AbsentKey_IsNotInserted) {
    FormatParameters params;
    params.GetParameter("fields");
    EXPECT_FALSE(params.HasParameter("fields"));
    EXPECT_EQ(params.GetParameters(), Entries());
}

TEST(FormatParametersTest, Copy_IsIndependentOfTheOriginal) {
    FormatParameters original;
    original.SetFormatter("table");
    original.SetParameter("fields", "a");
    FormatParameters copy = original;
    copy.SetFormatter("xml");
    copy.SetParameter("fields", "b");
    EXPECT_EQ(original.GetFormatter(), "table");
    EXPECT_EQ(original.GetParameter("fields"), "a");
    EXPECT_EQ(copy.GetFormatter(), "xml");
    EXPECT_EQ(copy.GetParameter("fields"), "b");
}

TEST(FormatParametersTest, Move_CarriesEverything) {
    FormatParameters original;
    original.SetFormatter("table");
    original.SetParameter("fields", "a");
    const FormatParameters moved = std::move(original);
    EXPECT_EQ(moved.GetFormatter(), "table");
    EXPECT_EQ(moved.GetParameters(), (Entries{{"fields", "a"}}));
}

TEST(FormatParametersTest, OverrideValues_NonEmptyFormatterOfTheOther_Wins) {
    FormatParameters params;
    params.SetFormatter("table");
    FormatParameters other;
    other.SetFormatter("xml");
    params.OverrideValues(other);
    EXPECT_EQ(params.GetFormatter(), "xml");
}

TEST(FormatParametersTest, OverrideValues_EmptyFormatterOfTheOther_LeavesTheNameAlone) {
    FormatParameters params;
    params.SetFormatter("table");
    FormatParameters other;
    other.SetParameter("fields", "a");
    params.OverrideValues(other);
    EXPECT_EQ(params.GetFormatter(), "table");
}

TEST(FormatParametersTest, OverrideValues_OverlappingKeys_TheOthersValuesWinAndTheRestStays) {
    FormatParameters params;
    params.SetParameter("fields", "mine");
    params.SetParameter("only-mine", "1");
    FormatParameters other;
    other.SetParameter("fields", "theirs");
    other.SetParameter("only-theirs", "2");
    params.OverrideValues(other);
    EXPECT_EQ(params.GetParameters(),
              (Entries{{"fields", "theirs"}, {"only-mine", "1"}, {"only-theirs", "2"}}));
}

TEST(FormatParametersTest, OverrideValues_EmptyValueOfTheOther_OverwritesToo) {
    FormatParameters params;
    params.SetParameter("fields", "mine");
    FormatParameters other;
    other.SetParameter("fields", "");
    params.OverrideValues(other);
    EXPECT_EQ(params.GetParameters(), (Entries{{"fields", ""}}));
}

TEST(FormatParametersTest, OverrideValues_TheOtherStaysAsItWas) {
    FormatParameters params;
    params.SetFormatter("table");
    params.SetParameter("only-mine", "1");
    FormatParameters other;
    other.SetParameter("only-theirs", "2");
    params.OverrideValues(other);
    EXPECT_EQ(other.GetFormatter(), "");
    EXPECT_EQ(other.GetParameters(), (Entries{{"only-theirs", "2"}}));
}

TEST(FormatParametersTest, GetParameterAsList_AbsentKey_IsEmpty) {
    EXPECT_EQ(FormatParameters().GetParameterAsList("fields"), Items());
}

TEST(FormatParametersTest, GetParameterAsList_AbsentKey_IsNotInserted) {
    FormatParameters params;
    params.GetParameterAsList("fields");
    EXPECT_EQ(params.GetParameters(), Entries());
}

TEST(FormatParametersTest, GetParameterAsList_ManyItems_AreAllFound) {
    constexpr std::size_t kCount = 200'000;
    std::string value = "first";
    for (std::size_t i = 1; i < kCount; ++i) {
        value += ",x";
    }
    FormatParameters params;
    params.SetParameter("fields", value);
    Items expected(kCount, "x");
    expected.front() = "first";
    EXPECT_EQ(params.GetParameterAsList("fields"), expected);
}

struct SplitCase : TestSupport::NamedRow {
    std::string value;
    Items items;
};

class FormatParametersSplitTest : public testing::TestWithParam<SplitCase> {};

TEST_P(FormatParametersSplitTest, GetParameterAsList_SplitsAtEveryComma) {
    FormatParameters params;
    params.SetParameter("list", GetParam().value);
    EXPECT_EQ(params.GetParameterAsList("list"), GetParam().items);
}

INSTANTIATE_TEST_SUITE_P(
    Values, FormatParametersSplitTest,
    testing::Values(
        SplitCase{{"Empty"}, "", {}}, SplitCase{{"OneItem"}, "Name", {"Name"}},
        SplitCase{{"TwoItems"}, "Name,Description", {"Name", "Description"}},
        SplitCase{{"InnerEmptyItem"}, "a,,b", {"a", "", "b"}},
        SplitCase{{"LeadingEmptyItem"}, ",a", {"", "a"}},
        SplitCase{{"NoTrailingEmptyItem"}, "a,b,", {"a", "b"}},
        SplitCase{{"OnlyOneTrailingCommaIsDropped"}, "a,b,,", {"a", "b", ""}},
        SplitCase{{"CommaAlone"}, ",", {""}}, SplitCase{{"TwoCommasAlone"}, ",,", {"", ""}},
        SplitCase{{"NothingIsTrimmed"}, " a , b ", {" a ", " b "}},
        SplitCase{{"BlankAlone"}, " ", {" "}}, SplitCase{{"NoQuoting"}, "\"a,b\"", {"\"a", "b\""}},
        SplitCase{{"NoEscaping"}, "a\\,b", {"a\\", "b"}},
        SplitCase{{"LineEndsStay"}, "a\n,\nb", {"a\n", "\nb"}},
        SplitCase{{"NulBytesStay"}, std::string("a\0b,c", 5), {std::string("a\0b", 3), "c"}},
        SplitCase{{"OtherSeparatorsStay"}, "a;b:c", {"a;b:c"}}),
    kRowName);

} // namespace
