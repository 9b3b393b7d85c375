#include "Support.h"

#include <tandril-result/FieldSpec.h>

#include <gtest/gtest.h>

using ResultTests::ErrorOf;
using TandrilResult::CheckFieldName;
using TandrilResult::FieldSpec;
using TandrilResult::ParseFieldSpec;
using TandrilResult::ScalarType;
using TandrilResult::ValueType;

namespace {

std::string SourceText(const FieldSpec& field) {
    return std::to_string(field.source.levelsUp) + " " + field.source.path;
}

TEST(FieldSpecTest, NameAlone_IsTheSourceToo) {
    const FieldSpec field = ParseFieldSpec("Mount Point");
    EXPECT_EQ(field.name, "Mount Point");
    EXPECT_EQ(field.type, std::nullopt);
    EXPECT_EQ(SourceText(field), "0 Mount Point");
}

TEST(FieldSpecTest, NameTypeAndSource_AreTakenApart) {
    const FieldSpec field = ParseFieldSpec("Size:int=stat.size=b:x");
    EXPECT_EQ(field.name, "Size");
    EXPECT_EQ(field.type, (ValueType{ScalarType::Int, false}));
    EXPECT_EQ(SourceText(field), "0 stat.size=b:x");
}

TEST(FieldSpecTest, NameWithColon_TypeIsBehindTheLastOne) {
    const FieldSpec field = ParseFieldSpec("maj:min:string");
    EXPECT_EQ(field.name, "maj:min");
    EXPECT_EQ(SourceText(field), "0 maj:min");
}

TEST(FieldSpecTest, Carets_AreLevelsUp) {
    EXPECT_EQ(SourceText(ParseFieldSpec("A=^^b.c")), "2 b.c");
}

TEST(FieldSpecTest, UnknownType_IsRefused) {
    EXPECT_EQ(ErrorOf([] { ParseFieldSpec("maj:min"); }),
              "result: Unknown type 'min' in --field 'maj:min': must be int, bool, string, "
              "int-list, bool-list or string-list");
}

TEST(FieldSpecTest, NoSource_IsRefused) {
    EXPECT_EQ(ErrorOf([] { ParseFieldSpec("A="); }),
              "result: No source behind the '=' of --field 'A='");
    EXPECT_EQ(ErrorOf([] { ParseFieldSpec("A=^"); }),
              "result: No source behind the '=' of --field 'A=^'");
}

TEST(FieldSpecTest, NamesThatNoDocumentCanHold_AreRefused) {
    for (const std::string name : {"", "a\nb", "a\rb", "a\tb", "a\x1B", "a\xFF", "\xC2\x80"}) {
        EXPECT_EQ(ErrorOf([&] { CheckFieldName(name); }),
                  "result: Invalid name for a field: '" + name +
                      "'; it must be one line of UTF-8 without control characters");
    }
    EXPECT_EQ(ErrorOf([] { ParseFieldSpec("=a"); }),
              "result: Invalid name for a field: ''; it must be one line of UTF-8 without control "
              "characters");
}

TEST(FieldSpecTest, NamesOfAnyOtherCharacters_AreAccepted) {
    for (const char* name : {"a", "Grün & <b> \"c\" 'd'", "%", " "}) {
        EXPECT_EQ(ErrorOf([&] { CheckFieldName(name); }), "<nothing was thrown>");
    }
}

} // namespace
