#include "Support.h"

#include <gtest/gtest.h>

using ResultTests::ReadingOf;
using TandrilResult::ReadJson;
using TandrilResult::ReadJsonLines;

namespace {

using Path = std::vector<std::string>;

std::string Json(const std::string& text, const Path& path = {}) {
    return ReadingOf(text, [&](auto& input, const auto& sink) { ReadJson(input, path, sink); });
}

std::string JsonLines(const std::string& text, const Path& path = {}) {
    return ReadingOf(text,
                     [&](auto& input, const auto& sink) { ReadJsonLines(input, path, sink); });
}

TEST(JsonReaderTest, Array_ElementsAreTheRecords) {
    EXPECT_EQ(Json(R"([{"a": 1}, "b", -3, true, null, [1, [2]], []])"),
              R"([{"a":1},"b",-3,true,null,[1,[2]],[]])");
    EXPECT_EQ(Json(" [ ] "), "[]");
}

TEST(JsonReaderTest, AnythingElse_IsTheOneRecord) {
    EXPECT_EQ(Json(R"({"a": {"b": [{"c": 1}, {}]}, "d": []})"),
              R"([{"a":{"b":[{"c":1},{}]},"d":[]}])");
    EXPECT_EQ(Json("7"), "[7]");
    EXPECT_EQ(Json(R"("x")"), R"(["x"])");
}

TEST(JsonReaderTest, Path_LeadsToTheRecords) {
    const std::string text = R"({"x": {"a": [1]}, "y": [{"a": {"b": 2}}], "a": {"c": {"b": [3]},
        "b": [{"a": {"b": 4}}, 5], "d": [6]}, "b": 7})";
    EXPECT_EQ(Json(text, {"a", "b"}), R"([{"a":{"b":4}},5])");
    EXPECT_EQ(Json(text, {"x"}), R"([{"a":[1]}])");
    EXPECT_EQ(Json(text, {"b"}), "[7]");
    EXPECT_EQ(Json(R"({"a": {"b": []}})", {"a", "b"}), "[]");
}

TEST(JsonReaderTest, PathToNothing_IsAnError) {
    for (const char* text : {"{}", R"({"b": 1})", R"({"a": 1})", R"({"a": [{"b": 1}]})", "[]", "7",
                             R"({"a": {"c": {"b": 1}}})"}) {
        EXPECT_EQ(Json(text, {"a", "b"}), "[] there is nothing at 'a.b'") << text;
    }
}

TEST(JsonReaderTest, Numbers_IntegersStayAndOthersAreTheirText) {
    EXPECT_EQ(Json("[-9223372036854775808, 18446744073709551615, 1.50, 1e3, "
                   "18446744073709551616]"),
              R"([-9223372036854775808,18446744073709551615,"1.50","1e3","18446744073709551616"])");
}

TEST(JsonReaderTest, Texts_EscapesAreCharacters) {
    EXPECT_EQ(Json(R"("\u00e9\ud83d\udc27\n\u0000x")"),
              "[\"\xC3\xA9\xF0\x9F\x90\xA7\\n\\u0000x\"]");
}

TEST(JsonReaderTest, CutShort_RecordsBeforeItAndAnError) {
    EXPECT_EQ(Json("[1, 2"),
              "[1,2] parse error at line 1, column 6: syntax error while parsing array - "
              "unexpected end of input; expected ']'");
    EXPECT_EQ(Json(""), "[] parse error at line 1, column 1: syntax error while parsing value - "
                        "unexpected end of input; expected '[', '{', or a literal");
}

TEST(JsonReaderTest, TextBehindTheValue_IsAnError) {
    EXPECT_EQ(Json("[1]\n[2]"),
              "[1] parse error at line 2, column 1: syntax error while parsing value - "
              "unexpected '['; expected end of input");
}

TEST(JsonReaderTest, BytesOutsideOfUtf8_AreAnError) {
    EXPECT_EQ(Json("[\"\xFF\"]"),
              "[] parse error at line 1, column 3: syntax error while parsing value - invalid "
              "string: ill-formed UTF-8 byte; last read: '\"\xFF'");
}

TEST(JsonReaderTest, KeyThatStandsTwice_IsAnError) {
    EXPECT_EQ(Json(R"([{"a": 1, "b": {"a": 2}, "a": 3}])"), "[] an object has the key 'a' twice");
    EXPECT_EQ(Json(R"({"x": [1], "x": [2]})", {"x"}), "[1] an object has the key 'x' twice");
    EXPECT_EQ(Json(R"({"x": {"y": 1}, "x": {"y": [2]}})", {"x", "y"}),
              "[1] an object has the key 'y' twice");
}

TEST(JsonReaderTest, Depth_IsLimited) {
    const auto nested = [](std::size_t depth) {
        return std::string(depth, '[') + std::string(depth, ']');
    };
    EXPECT_EQ(Json(nested(1000)), nested(1000));
    EXPECT_EQ(Json(nested(1001)), "[] objects and arrays are nested deeper than 1000 levels");
    EXPECT_EQ(Json(nested(1001), {"a"}),
              "[] objects and arrays are nested deeper than 1000 levels");
}

TEST(JsonLinesReaderTest, EachLine_IsReadAlone) {
    EXPECT_EQ(JsonLines("{\"a\": 1}\n\n7\r\n \n[8, 9]\n"), R"([{"a":1},7,8,9])");
    EXPECT_EQ(JsonLines(""), "[]");
}

TEST(JsonLinesReaderTest, Path_HoldsForEachLine) {
    EXPECT_EQ(JsonLines("{\"a\": [1, 2]}\n{\"a\": 3}\n", {"a"}), "[1,2,3]");
    EXPECT_EQ(JsonLines("{\"a\": 1}\n{\"b\": 2}\n", {"a"}),
              "[1] in line 2 of the input: there is nothing at 'a'");
}

TEST(JsonLinesReaderTest, BadLine_ErrorNamesIt) {
    EXPECT_EQ(JsonLines("1\n\n{]\n"),
              "[1] in line 3 of the input: parse error at line 1, column 2: syntax error while "
              "parsing object key - unexpected ']'; expected string literal");
}

TEST(JsonLinesReaderTest, LastLineWithoutEnd_WasCutShort) {
    EXPECT_EQ(JsonLines("1\n23"), "[1] line 2 has no end, so the input was cut short");
}

} // namespace
