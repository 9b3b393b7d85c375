#include <CppTools/autocli/formatters/JsonFormatter.h>

#include <tests/support/ImpostorValue.h>
#include <tests/support/NamedRow.h>
#include <tests/support/Rendering.h>
#include <tests/support/Values.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>

namespace {

using CppTools::AutoCli::JsonFormatter;
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
using TestSupport::Value;

TEST(JsonFormatterTest, Name_IsJson) {
    EXPECT_EQ(JsonFormatter().GetName(), "json");
}

TEST(JsonFormatterTest, Description_IsTheSentenceForUsers) {
    EXPECT_EQ(JsonFormatter().GetDescription(), "Print the output as JSON.");
}

TEST(JsonFormatterTest, Params_NoneAreDocumented) {
    EXPECT_EQ(DocumentedParamsOf(JsonFormatter()), DocumentedParams());
}

class JsonFormatterRootTest : public testing::TestWithParam<RootCase> {};

TEST_P(JsonFormatterRootTest, RootIsFollowedByALineEnd) {
    EXPECT_EQ(RenderWith<JsonFormatter>(GetParam().root), Rendering(true, GetParam().text + "\n"));
}

INSTANTIATE_TEST_SUITE_P(
    Scalars, JsonFormatterRootTest,
    testing::Values(
        RootCase{{"Integer"}, Int(7), "7"},
        RootCase{{"LowestInteger"}, Int(std::numeric_limits<long>::min()), "-9223372036854775808"},
        RootCase{{"HighestInteger"}, Int(std::numeric_limits<long>::max()), "9223372036854775807"},
        RootCase{{"True"}, Bool(true), "true"}, RootCase{{"False"}, Bool(false), "false"},
        RootCase{{"String"}, Text("two words"), "\"two words\""},
        RootCase{{"EmptyString"}, Text(""), "\"\""}, RootCase{{"Slash"}, Text("a/b"), "\"a\\/b\""},
        RootCase{{"MultiByteCharacters"},
                 Text("\xC3\xA9 \xE2\x82\xAC"),
                 "\"\\u00c3\\u00a9 \\u00e2\\u0082\\u00ac\""},
        RootCase{{"EscapesOfTheTextAreEscaped"},
                 Text("\\n \\\" \\u0041"),
                 "\"\\\\n \\\\\\\" \\\\u0041\""}),
    kRowName);

INSTANTIATE_TEST_SUITE_P(
    Lists, JsonFormatterRootTest,
    testing::Values(RootCase{{"NoElements"}, Ints({}), "\n[\n]"},
                    RootCase{{"NoTemplate"}, Rows(nullptr, {}), "\n[\n]"},
                    RootCase{{"OneElement"}, Ints({1}), "\n[\n1\n]"},
                    RootCase{{"Integers"}, Ints({1, -2, 3}), "\n[\n1, \n-2, \n3\n]"},
                    RootCase{{"Bools"}, Bools({true, false}), "\n[\ntrue, \nfalse\n]"},
                    RootCase{{"Strings"}, Texts({"a", "/"}), "\n[\n\"a\", \n\"\\/\"\n]"},
                    RootCase{{"Structures"},
                             Rows({Struct("T", {{"a", Int(1)}}), Struct("T", {{"a", Int(2)}})}),
                             "\n"
                             "[\n"
                             "\n"
                             "      {\n"
                             "         \"a\": 1\n"
                             "      }, \n"
                             "\n"
                             "      {\n"
                             "         \"a\": 2\n"
                             "      }\n"
                             "]"}),
    kRowName);

INSTANTIATE_TEST_SUITE_P(
    Structures, JsonFormatterRootTest,
    testing::Values(RootCase{{"NoFields"}, Struct("T", {}), "\n{\n}"},
                    RootCase{{"OneField"}, Struct("T", {{"a", Int(1)}}), "\n{\n   \"a\": 1\n}"},
                    RootCase{{"FieldsAscendByName"},
                             Struct("T", {{"b", Bool(true)}, {"a", Text("x")}, {"B", Int(1)}}),
                             "\n"
                             "{\n"
                             "   \"B\": 1,\n"
                             "   \"a\": \"x\",\n"
                             "   \"b\": true\n"
                             "}"},
                    RootCase{{"FieldNamesAreNotEscaped"},
                             Struct("T", {{"a\"b/\\\n\xC3\xA9", Int(1)}}),
                             "\n"
                             "{\n"
                             "   \"a\"b/\\\n\xC3\xA9\": 1\n"
                             "}"},
                    RootCase{{"NestedStructure"},
                             Struct("T", {{"in", Struct("I", {{"x", Int(1)}, {"y", Int(2)}})},
                                          {"tail", Int(3)}}),
                             "\n"
                             "{\n"
                             "   \"in\": \n"
                             "   {\n"
                             "      \"x\": 1,\n"
                             "      \"y\": 2\n"
                             "   },\n"
                             "   \"tail\": 3\n"
                             "}"},
                    RootCase{{"NestedLists"},
                             Struct("T", {{"l", Ints({1, 2})},
                                          {"none", Texts({})},
                                          {"rows", Rows({Struct("R", {{"x", Int(3)}})})}}),
                             "\n"
                             "{\n"
                             "   \"l\": \n"
                             "   [\n"
                             "   1, \n"
                             "   2\n"
                             "   ],\n"
                             "   \"none\": \n"
                             "   [\n"
                             "   ],\n"
                             "   \"rows\": \n"
                             "   [\n"
                             "   \n"
                             "            {\n"
                             "               \"x\": 3\n"
                             "            }\n"
                             "   ]\n"
                             "}"}),
    kRowName);

INSTANTIATE_TEST_SUITE_P(
    Impostors, JsonFormatterRootTest,
    testing::Values(
        RootCase{{"Bool"}, ImpostorValue::New(MetaType::Bool), "Error reading a bool\n"},
        RootCase{{"Integer"}, ImpostorValue::New(MetaType::Int), "Error reading a int\n"},
        RootCase{{"String"}, ImpostorValue::New(MetaType::String), "Error reading a string\n"},
        RootCase{{"Struct"},
                 ImpostorValue::New(MetaType::Struct),
                 "Error reading a struct from output.\n"},
        RootCase{{"List"}, ImpostorValue::New(MetaType::List), "Error reading a List\n"},
        RootCase{
            {"UnknownKind"}, ImpostorValue::New(TestSupport::kUnknownKind), "Unknown data type\n"},
        RootCase{{"Nothing"}, nullptr, ""}),
    kRowName);

TEST(JsonFormatterTest, Format_ImpostorField_MessageStandsInPlaceOfTheValue) {
    EXPECT_EQ(RenderAt<JsonFormatter>(
                  -1, Struct("T", {{"a", ImpostorValue::New(MetaType::Bool)}, {"b", Int(1)}})),
              "\n"
              "{\n"
              "   \"a\": Error reading a bool\n"
              ",\n"
              "   \"b\": 1\n"
              "}");
}

TEST(JsonFormatterTest, Format_Scalars_AreNeverIndented) {
    EXPECT_EQ(RenderAt<JsonFormatter>(4, Int(7)), "7");
    EXPECT_EQ(RenderAt<JsonFormatter>(4, Bool(true)), "true");
    EXPECT_EQ(RenderAt<JsonFormatter>(4, Text("x")), "\"x\"");
}

TEST(JsonFormatterTest, Format_LevelIndentsByThreeColumns) {
    const auto st = Struct("T", {{"a", Ints({1})}});
    EXPECT_EQ(RenderAt<JsonFormatter>(0, st), "\n{\n   \"a\": \n      [\n      1\n      ]\n}");
    EXPECT_EQ(RenderAt<JsonFormatter>(1, st), "\n"
                                              "   {\n"
                                              "      \"a\": \n"
                                              "         [\n"
                                              "         1\n"
                                              "         ]\n"
                                              "   }");
    EXPECT_EQ(RenderAt<JsonFormatter>(2, Ints({1, 2})), "\n      [\n      1, \n      2\n      ]");
}

TEST(JsonFormatterTest, Format_EmptyValue_WritesNothing) {
    EXPECT_EQ(RenderAt<JsonFormatter>(2, nullptr), "");
}

TEST(JsonFormatterTest, Format_ParametersAndDisplayDoNotMatter) {
    const auto root = Struct("T", {{"a", Int(1)}, {"b", Text("x")}});
    const auto plain = RenderWith<JsonFormatter>(root);
    EXPECT_EQ(RenderWith<JsonFormatter>(root,
                                        {{"fields:T", "a"},
                                         {"fields", "b"},
                                         {"units:T.a", "MB"},
                                         {"printf:T.a", "%05ld"},
                                         {"header:T", "x"}},
                                        5),
              plain);
}

TEST(JsonFormatterTest, Format_KeepsNothingBetweenCalls) {
    JsonFormatter formatter;
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(TestSupport::Render(formatter, Struct("T", {{"a", Int(1)}})),
                  Rendering(true, "\n{\n   \"a\": 1\n}\n"));
        EXPECT_EQ(TestSupport::Render(formatter, Int(7)), Rendering(true, "7\n"));
    }
}

} // namespace
