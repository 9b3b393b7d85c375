#include <CppTools/metaobj/MetaString.h>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <type_traits>
#include <utility>

#include "tests/support/NamedRow.h"

namespace {

using CppTools::MetaObj::MetaString;
using CppTools::MetaObj::MetaType;
using TestSupport::NamedRow;
using namespace std::string_literals;

TEST(MetaStringTest, New_WithoutText_IsTheSharedEmptyString) {
    EXPECT_EQ(MetaString::New()->GetValue(), "");
    EXPECT_EQ(MetaString::New()->ToString(), "");
    EXPECT_EQ(&MetaString::New(), &MetaString::New());
}

TEST(MetaStringTest, New_EmptyText_IsTheSharedEmptyStringInEveryForm) {
    const std::string empty;
    EXPECT_EQ(MetaString::New(""), MetaString::New());
    EXPECT_EQ(MetaString::New(empty), MetaString::New());
    EXPECT_EQ(MetaString::New(std::string()), MetaString::New());
}

TEST(MetaStringTest, New_SameTextTwice_YieldsTwoInstances) {
    EXPECT_NE(MetaString::New("eth0"), MetaString::New("eth0"));
    EXPECT_NE(MetaString::New("eth0"s), MetaString::New("eth0"s));
}

TEST(MetaStringTest, New_FromCharacters_CopiesThem) {
    char text[] = "eth0";
    const auto value = MetaString::New(text);
    text[0] = 'X';
    EXPECT_EQ(value->GetValue(), "eth0");
}

TEST(MetaStringTest, New_FromConstString_CopiesIt) {
    const std::string text = "a text too long for the string object itself";
    const auto value = MetaString::New(text);
    EXPECT_EQ(value->GetValue(), text);
    EXPECT_NE(value->GetValue().data(), text.data());
    EXPECT_EQ(text, "a text too long for the string object itself");
}

TEST(MetaStringTest, New_FromMovedString_TakesItsCharactersOver) {
    std::string text = "a text too long for the string object itself";
    const char* const characters = text.data();
    const auto value = MetaString::New(std::move(text));
    EXPECT_EQ(value->GetValue(), "a text too long for the string object itself");
    EXPECT_EQ(value->GetValue().data(), characters);
}

TEST(MetaStringTest, GetValue_ReturnsTheStoredTextItself) {
    const auto value = MetaString::New("eth0");
    EXPECT_EQ(&value->GetValue(), &value->GetValue());
    EXPECT_TRUE((std::is_same_v<decltype(value->GetValue()), const std::string&>));
}

TEST(MetaStringTest, GetType_IsString) {
    EXPECT_EQ(MetaString::New()->GetType(), MetaType::String);
    EXPECT_EQ(MetaString::New("x")->GetType(), MetaType::String);
}

TEST(MetaStringTest, ToString_NeitherQuotesNorEscapes) {
    const std::string text = "say \"it's\"\t\\n\n{a => 'b'}, \xC3\xA9\xFF";
    EXPECT_EQ(MetaString::New(text)->ToString(), text);
}

TEST(MetaStringTest, New_TextWithNul_KeepsAllOfIt) {
    EXPECT_EQ(MetaString::New("a\0b"s)->GetValue(), "a\0b"s);
    EXPECT_EQ(MetaString::New("\0"s)->ToString(), "\0"s);
}

TEST(MetaStringTest, Init_RunAgain_IsTrueAndKeepsTheInstance) {
    const std::shared_ptr<MetaString> empty = MetaString::New();
    EXPECT_TRUE(MetaString::Init());
    EXPECT_EQ(MetaString::New(), empty);
}

TEST(MetaStringTest, Construction_OutsideTheFactories_IsImpossible) {
    EXPECT_FALSE((std::is_constructible_v<MetaString, std::string>));
    EXPECT_FALSE((std::is_constructible_v<MetaString, const char*>));
    EXPECT_FALSE(std::is_default_constructible_v<MetaString>);
    EXPECT_FALSE(std::is_copy_constructible_v<MetaString>);
    EXPECT_FALSE(std::is_copy_assignable_v<MetaString>);
}

TEST(MetaStringTest, NewUtf8WithEscapes_EmptyText_IsTheSharedEmptyString) {
    EXPECT_EQ(MetaString::NewUtf8WithEscapes(std::string()), MetaString::New());
}

struct Text : NamedRow {
    std::string text;
};

class MetaStringValidUtf8Test : public testing::TestWithParam<Text> {};

TEST_P(MetaStringValidUtf8Test, NewUtf8WithEscapes_StoresTheTextUnchanged) {
    const std::string& text = GetParam().text;
    EXPECT_EQ(MetaString::NewUtf8WithEscapes(std::string(text))->GetValue(), text);
}

INSTANTIATE_TEST_SUITE_P(Texts, MetaStringValidUtf8Test,
                         testing::Values(Text{{"ASCII"}, "plain text"},
                                         Text{{"two bytes"}, "caf\xC3\xA9"},
                                         Text{{"three bytes"}, "\xE2\x82\xAC"},
                                         Text{{"four bytes"}, "\xF0\x9F\x90\x99"},
                                         Text{{"last before the surrogates"}, "\xED\x9F\xBF"},
                                         Text{{"first after the surrogates"}, "\xEE\x80\x80"},
                                         Text{{"largest code point"}, "\xF4\x8F\xBF\xBF"},
                                         Text{{"byte order mark"}, "\xEF\xBB\xBFx"},
                                         Text{{"control characters"}, "\x01\t\r\n\x1B\x7F"},
                                         Text{{"what looks like an escape"}, "\\xff \\ \\\\x00"},
                                         Text{{"embedded NUL"}, "a\0b"s}));

struct Escaped : NamedRow {
    std::string text;
    std::string stored;
};

class MetaStringInvalidUtf8Test : public testing::TestWithParam<Escaped> {};

TEST_P(MetaStringInvalidUtf8Test, NewUtf8WithEscapes_EscapesTheIllFormedBytesAlone) {
    EXPECT_EQ(MetaString::NewUtf8WithEscapes(std::string(GetParam().text))->GetValue(),
              GetParam().stored);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, MetaStringInvalidUtf8Test,
    testing::Values(
        Escaped{{"lone continuation"}, "\x80", "\\x80"},
        Escaped{{"eight-bit letter"}, "caf\xE9 au lait", "caf\\xe9 au lait"},
        Escaped{{"cut off at the end"}, "x\xE2\x82", "x\\xe2\\x82"},
        Escaped{{"cut off before a letter"}, "\xE2\x82z", "\\xe2\\x82z"},
        Escaped{{"cut off before a sequence"}, "\xE2\x82\xC3\xA9", "\\xe2\\x82\xC3\xA9"},
        Escaped{{"overlong, two bytes"}, "\xC0\xAF", "\\xc0\\xaf"},
        Escaped{{"overlong, three bytes"}, "\xE0\x80\xAF", "\\xe0\\x80\\xaf"},
        Escaped{{"overlong, four bytes"}, "\xF0\x80\x80\xAF", "\\xf0\\x80\\x80\\xaf"},
        Escaped{{"surrogate"}, "\xED\xA0\x80", "\\xed\\xa0\\x80"},
        Escaped{{"above the largest code point"}, "\xF4\x90\x80\x80", "\\xf4\\x90\\x80\\x80"},
        Escaped{{"five bytes"}, "\xF8\x88\x80\x80\x80", "\\xf8\\x88\\x80\\x80\\x80"},
        Escaped{{"never used bytes"}, "\xFE\xFF", "\\xfe\\xff"},
        Escaped{{"between well-formed sequences"}, "\xC3\xA9\xFF\xC3\xA9", "\xC3\xA9\\xff\xC3\xA9"},
        Escaped{{"beside a backslash"}, "\\\xFF\\n", "\\\\xff\\n"},
        Escaped{{"behind an embedded NUL"}, "a\0\xFF"s, "a\0\\xff"s}));

} // namespace
