#include <CppTools/autocli/formatters/PythonFormatter.h>

#include <tests/support/ImpostorValue.h>
#include <tests/support/NamedRow.h>
#include <tests/support/Rendering.h>
#include <tests/support/Thrown.h>
#include <tests/support/Values.h>

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace {

using CppTools::AutoCli::PythonFormatter;
using CppTools::MetaObj::MetaType;
using TestSupport::Bool;
using TestSupport::Bools;
using TestSupport::DocumentedParams;
using TestSupport::DocumentedParamsOf;
using TestSupport::ImpostorValue;
using TestSupport::Int;
using TestSupport::Ints;
using TestSupport::kRowName;
using TestSupport::NamedRow;
using TestSupport::RenderAt;
using TestSupport::Rendering;
using TestSupport::RenderWith;
using TestSupport::RootCase;
using TestSupport::Rows;
using TestSupport::Struct;
using TestSupport::Text;
using TestSupport::Texts;
using TestSupport::ThrownBy;
using TestSupport::Value;

TEST(PythonFormatterTest, Name_IsPython) {
    EXPECT_EQ(PythonFormatter().GetName(), "python");
}

TEST(PythonFormatterTest, Description_IsTheSentenceForUsers) {
    EXPECT_EQ(PythonFormatter().GetDescription(),
              "Print the output as Python syntax suitable for eval().");
}

TEST(PythonFormatterTest, Params_NoneAreDocumented) {
    EXPECT_EQ(DocumentedParamsOf(PythonFormatter()), DocumentedParams());
}

class PythonFormatterRootTest : public testing::TestWithParam<RootCase> {};

TEST_P(PythonFormatterRootTest, RootIsFollowedByALineEnd) {
    EXPECT_EQ(RenderWith<PythonFormatter>(GetParam().root),
              Rendering(true, GetParam().text + "\n"));
}

INSTANTIATE_TEST_SUITE_P(
    Scalars, PythonFormatterRootTest,
    testing::Values(
        RootCase{{"Integer"}, Int(7), "7"},
        RootCase{{"LowestInteger"}, Int(std::numeric_limits<long>::min()), "-9223372036854775808"},
        RootCase{{"True"}, Bool(true), "True"}, RootCase{{"False"}, Bool(false), "False"},
        RootCase{{"String"}, Text("two words"), "\"\"\"two words\"\"\""},
        RootCase{{"EmptyString"}, Text(""), "\"\"\"\"\"\""},
        RootCase{{"QuotesAndLineEnds"}, Text("\"x\n"), "\"\"\"\\\"x\\n\"\"\""},
        RootCase{{"RunOfQuotes"}, Text("\"\"\""), "\"\"\"\\\"\\\"\\\"\"\"\""},
        RootCase{{"BackslashesStay"}, Text("a\\n\\"), "\"\"\"a\\n\\\"\"\""},
        RootCase{{"ApostrophesStay"}, Text("'x'"), "\"\"\"'x'\"\"\""},
        RootCase{{"CarriageReturnsAndTabsStay"}, Text("\r\t"), "\"\"\"\r\t\"\"\""},
        RootCase{{"MultiByteCharactersStay"}, Text("\xC3\xA9"), "\"\"\"\xC3\xA9\"\"\""}),
    kRowName);

INSTANTIATE_TEST_SUITE_P(
    Compounds, PythonFormatterRootTest,
    testing::Values(
        RootCase{{"EmptyList"}, Ints({}), "[]"}, RootCase{{"NoTemplate"}, Rows(nullptr, {}), "[]"},
        RootCase{{"Integers"}, Ints({1, 2}), "[1, 2, ]"},
        RootCase{{"Bools"}, Bools({true, false}), "[True, False, ]"},
        RootCase{{"Strings"}, Texts({"a", "\n"}), "[\"\"\"a\"\"\", \"\"\"\\n\"\"\", ]"},
        RootCase{{"EmptyStructure"}, Struct("T", {}), "{}"},
        RootCase{{"Structure"},
                 Struct("T", {{"b", Text("x")}, {"a", Int(1)}}),
                 "{\"a\": 1, \"b\": \"\"\"x\"\"\", }"},
        RootCase{
            {"FieldNamesAreNotEscaped"}, Struct("T", {{"a\"b\n", Int(1)}}), "{\"a\"b\n\": 1, }"},
        RootCase{{"Structures"},
                 Rows({Struct("T", {{"a", Int(1)}}), Struct("T", {{"a", Int(2)}})}),
                 "[{\"a\": 1, }, {\"a\": 2, }, ]"},
        RootCase{{"Nested"},
                 Struct("T", {{"in", Struct("I", {{"l", Ints({1})}})}, {"tail", Bool(false)}}),
                 "{\"in\": {\"l\": [1, ], }, \"tail\": False, }"}),
    kRowName);

INSTANTIATE_TEST_SUITE_P(
    Impostors, PythonFormatterRootTest,
    testing::Values(
        RootCase{{"Bool"}, ImpostorValue::New(MetaType::Bool), "Error reading a bool\n"},
        RootCase{{"Integer"}, ImpostorValue::New(MetaType::Int), "Error reading a int\n"},
        RootCase{{"String"}, ImpostorValue::New(MetaType::String), "Error reading a string\n"},
        RootCase{{"Struct"},
                 ImpostorValue::New(MetaType::Struct),
                 "Error reading a struct from output.\n"},
        RootCase{{"List"}, ImpostorValue::New(MetaType::List), "Error reading a List\n"},
        RootCase{
            {"UnknownKind"}, ImpostorValue::New(TestSupport::kUnknownKind), "Unknown data type\n"}),
    kRowName);

TEST(PythonFormatterTest, Format_ImpostorField_MessageStandsInPlaceOfTheValue) {
    EXPECT_EQ(RenderAt<PythonFormatter>(
                  0, Struct("T", {{"a", ImpostorValue::New(MetaType::Int)}, {"b", Int(1)}})),
              "{\"a\": Error reading a int\n, \"b\": 1, }");
}

TEST(PythonFormatterTest, Format_NoRoot_Throws) {
    EXPECT_EQ(ThrownBy([] { RenderWith<PythonFormatter>(nullptr); }),
              "Invalid MetaObject passed to Format in PythonFormatter");
}

TEST(PythonFormatterTest, Format_EmptyValue_Throws) {
    EXPECT_EQ(ThrownBy([] { RenderAt<PythonFormatter>(0, nullptr); }),
              "Invalid MetaObject passed to Format in PythonFormatter");
}

TEST(PythonFormatterTest, Format_LevelChangesNothing) {
    const auto root = Struct("T", {{"a", Ints({1})}, {"b", Text("x")}});
    for (const int level : {-1, 0, 2, 9}) {
        EXPECT_EQ(RenderAt<PythonFormatter>(level, root), "{\"a\": [1, ], \"b\": \"\"\"x\"\"\", }")
            << level;
    }
}

TEST(PythonFormatterTest, Format_ParametersAndDisplayDoNotMatter) {
    const auto root = Struct("T", {{"a", Int(1)}, {"b", Text("x")}});
    EXPECT_EQ(
        RenderWith<PythonFormatter>(
            root,
            {{"fields:T", "a"}, {"fields", "b"}, {"units:T.a", "MB"}, {"printf:T.a", "%05ld"}}, 5),
        Rendering(true, "{\"a\": 1, \"b\": \"\"\"x\"\"\", }\n"));
}

TEST(PythonFormatterTest, Format_KeepsNothingBetweenCalls) {
    PythonFormatter formatter;
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(TestSupport::Render(formatter, Ints({1, 2})), Rendering(true, "[1, 2, ]\n"));
        EXPECT_EQ(TestSupport::Render(formatter, Int(7)), Rendering(true, "7\n"));
    }
}

TEST(PythonFormatterTest, IsAllAscii_EveryByte_IsJudgedByItsHighestBit) {
    for (int code = 0; code < 256; ++code) {
        const char byte = static_cast<char>(code);
        EXPECT_EQ(PythonFormatter::IsAllAscii(std::string(1, byte)), code < 0x80) << code;
        EXPECT_EQ(PythonFormatter::IsAllAscii(std::string("ab") + byte + "cd"), code < 0x80)
            << code;
    }
}

TEST(PythonFormatterTest, IsAllAscii_EmptyText_IsTrue) {
    EXPECT_TRUE(PythonFormatter::IsAllAscii(""));
}

TEST(PythonFormatterTest, IsAllAscii_MultiByteCharacterAnywhere_IsFalse) {
    EXPECT_FALSE(PythonFormatter::IsAllAscii("\xC3\xA9"));
    EXPECT_FALSE(PythonFormatter::IsAllAscii("plain text up to here \xC3\xA9"));
    EXPECT_FALSE(PythonFormatter::IsAllAscii(std::string("\0\xC3", 2)));
}

} // namespace
