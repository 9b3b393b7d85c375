#include <CppTools/autocli/formatters/SimpleFormatter.h>

#include <tests/support/ImpostorValue.h>
#include <tests/support/NamedRow.h>
#include <tests/support/Rendering.h>
#include <tests/support/Values.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <sstream>
#include <string>

namespace {

using CppTools::AutoCli::FormatParameters;
using CppTools::AutoCli::SimpleFormatter;
using CppTools::MetaObj::MetaList;
using CppTools::MetaObj::MetaType;
using TestSupport::Bool;
using TestSupport::Bools;
using TestSupport::DocumentedParams;
using TestSupport::DocumentedParamsOf;
using TestSupport::ImpostorValue;
using TestSupport::Int;
using TestSupport::Ints;
using TestSupport::kRowName;
using TestSupport::ParameterEntries;
using TestSupport::ParametersOf;
using TestSupport::Rendering;
using TestSupport::RenderWith;
using TestSupport::RootCase;
using TestSupport::Rows;
using TestSupport::Struct;
using TestSupport::Text;
using TestSupport::Texts;
using TestSupport::Value;

/// The text of a root value; every rendering of this formatter answers true.
std::string Simple(const Value& root, const ParameterEntries& entries = {}) {
    const auto [result, text] = RenderWith<SimpleFormatter>(root, entries);
    EXPECT_TRUE(result);
    return text;
}

/// The text of one value at a nesting level.
std::string SimpleAt(int level, const Value& value, const ParameterEntries& entries = {}) {
    FormatParameters params = ParametersOf(entries);
    std::ostringstream out;
    SimpleFormatter().Format(value, params, out, level);
    return out.str();
}

TEST(SimpleFormatterTest, Name_IsSimple) {
    EXPECT_EQ(SimpleFormatter().GetName(), "simple");
}

TEST(SimpleFormatterTest, Description_IsTheSentenceForUsers) {
    EXPECT_EQ(SimpleFormatter().GetDescription(),
              "Print a representation of any item to the screen. This can be any type, but this "
              "formatter excels at printing structs and lists of structs.");
}

TEST(SimpleFormatterTest, Params_AreDocumentedInThisOrder) {
    EXPECT_EQ(
        DocumentedParamsOf(SimpleFormatter()),
        (DocumentedParams{
            {"header:<TypeName>",
             "When printing a struct type, prefix the output of the struct with the given text "
             "string and then indent all the struct fields below this text.  The TypeName value "
             "can be determined from the raw or xml output for a command.  For this field a "
             "special variable substitution is available in the value of this format paramter.  "
             "If the value contains a string %<Field>% then this formatter will do token "
             "substitution and replace the value of %<Field>% with the given value of the field "
             "in <TypeName>.  Note this can only be a scalar type (int, bool, string) and must "
             "exactly match one of the fields in the struct <TypeName>.  Example: "
             "'header:ScsiDeviceList' = 'SCSI Device %Device Name%' will result in a header of "
             "'SCSI Device naa.XXXX'.  Note only one %<Field>% tag is supported.  To disable the "
             "display of the header the special value <NONE> can be used",
             false},
            {"fields:<TypeName>",
             "When printing a struct use the set of fields given in this parameter.  This allows "
             "the ordering and filtering of the fields printed for a given struct. If no "
             "':<TypeName>' is given then then all structs encounted in the output will attempt "
             "to use these fields.  This provides a reasonable default and compatible output with "
             "other formatters",
             false},
            {"units:<TypeName>.<FieldName>",
             "When printing a struct use the given 'units' value as a suffix for a given field.  "
             "For example specifying \"units:ScsiDeviceList:Size\" = \"Mb\" would append the "
             "string 'Mb' to the end of a field",
             false},
            {"printf:<TypeName>.<FieldName>",
             "When printing a struct use the given 'printf' formatting string for printing the "
             "value.  This uses standard printf syntax to print a given field.  For example "
             "specifying \"units:ScsiDeviceList.Size\" = \"Mb\" would append the string 'Mb' to "
             "the end of a field",
             false},
            {"align-fields",
             "When printing a struct left align all of the fields values so they all start at the "
             "same column",
             false},
        }));
}

// --- Values other than structures and lists of them

class SimpleFormatterRootTest : public testing::TestWithParam<RootCase> {};

TEST_P(SimpleFormatterRootTest, StandsOnALineOfItsOwn) {
    EXPECT_EQ(Simple(GetParam().root), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Scalars, SimpleFormatterRootTest,
    testing::Values(
        RootCase{{"Integer"}, Int(5), "5\n"},
        RootCase{
            {"LowestInteger"}, Int(std::numeric_limits<long>::min()), "-9223372036854775808\n"},
        RootCase{
            {"HighestInteger"}, Int(std::numeric_limits<long>::max()), "9223372036854775807\n"},
        RootCase{{"True"}, Bool(true), "true\n"}, RootCase{{"False"}, Bool(false), "false\n"},
        RootCase{{"String"}, Text("two words"), "two words\n"},
        RootCase{{"EmptyString"}, Text(""), "\n"},
        RootCase{{"StringIsUnchanged"}, Text(" %s <\n\t\x01\xFF> "), " %s <\n\t\x01\xFF> \n"},
        RootCase{{"StringWithNul"}, Text(std::string("a\0b", 3)), std::string("a\0b\n", 4)}),
    kRowName);

INSTANTIATE_TEST_SUITE_P(ScalarLists, SimpleFormatterRootTest,
                         testing::Values(RootCase{{"Strings"}, Texts({"a", "b", "c"}), "a, b, c\n"},
                                         RootCase{{"Integers"}, Ints({1, -2, 300}), "1, -2, 300\n"},
                                         RootCase{{"Bools"}, Bools({true, false}), "true, false\n"},
                                         RootCase{{"OneItem"}, Texts({"a"}), "a\n"},
                                         RootCase{{"NoItems"}, Texts({}), "\n"}),
                         kRowName);

INSTANTIATE_TEST_SUITE_P(
    Impostors, SimpleFormatterRootTest,
    testing::Values(
        RootCase{{"Bool"}, ImpostorValue::New(MetaType::Bool), "Error reading a bool\n"},
        RootCase{{"Integer"}, ImpostorValue::New(MetaType::Int), "Error reading a int\n"},
        RootCase{{"String"}, ImpostorValue::New(MetaType::String), "Error reading a string\n"},
        RootCase{{"Struct"},
                 ImpostorValue::New(MetaType::Struct),
                 "Error reading a struct from output.\n"},
        RootCase{{"List"}, ImpostorValue::New(MetaType::List), "Error reading a List\n"},
        RootCase{{"UnknownKind"}, ImpostorValue::New(TestSupport::kUnknownKind), ""}),
    kRowName);

TEST(SimpleFormatterTest, Format_NoRoot_PrintsNothing) {
    EXPECT_EQ(RenderWith<SimpleFormatter>(nullptr), Rendering(true, ""));
}

TEST(SimpleFormatterTest, Format_Scalars_AreNeverIndented) {
    EXPECT_EQ(SimpleAt(4, Int(5)), "5\n");
    EXPECT_EQ(SimpleAt(4, Bool(true)), "true\n");
    EXPECT_EQ(SimpleAt(4, Text("x")), "x\n");
    EXPECT_EQ(SimpleAt(4, Texts({"a", "b"})), "a, b\n");
}

TEST(SimpleFormatterTest, Format_ScalarRoot_TakesNoUnitsOrPrintf) {
    EXPECT_EQ(Simple(Int(5), {{"units:.", "MB"}, {"printf:.", "%05ld"}, {"units:", "MB"}}), "5\n");
}

TEST(SimpleFormatterTest, FormatStruct_Nothing_IsReportedInTheText) {
    FormatParameters params;
    std::ostringstream out;
    SimpleFormatter().FormatStruct(nullptr, params, out, 2);
    EXPECT_EQ(out.str(), "Error reading a struct from output.\n");
}

TEST(SimpleFormatterTest, FormatList_Nothing_IsReportedInTheText) {
    FormatParameters params;
    std::ostringstream out;
    SimpleFormatter().FormatList(nullptr, params, out, 2);
    EXPECT_EQ(out.str(), "Error reading a List\n");
}

// --- Structures

TEST(SimpleFormatterStructTest, TypeNameHeadsTheIndentedFields) {
    EXPECT_EQ(Simple(Struct("T", {{"a", Int(1)}, {"b", Text("x")}})), "T:\n"
                                                                      "   a: 1\n"
                                                                      "   b: x\n");
}

TEST(SimpleFormatterStructTest, FieldsAscendByName) {
    EXPECT_EQ(Simple(Struct("T", {{"b", Int(1)}, {"a", Int(2)}, {"B", Int(3)}})), "T:\n"
                                                                                  "   B: 3\n"
                                                                                  "   a: 2\n"
                                                                                  "   b: 1\n");
}

TEST(SimpleFormatterStructTest, WithoutFieldsOnlyTheHeaderIsPrinted) {
    EXPECT_EQ(Simple(Struct("T", {})), "T:\n");
}

TEST(SimpleFormatterStructTest, ScalarFieldsOfEveryKind) {
    EXPECT_EQ(Simple(Struct("T", {{"bool", Bool(false)},
                                  {"bools", Bools({true, false})},
                                  {"empty", Text("")},
                                  {"int", Int(-7)},
                                  {"ints", Ints({1, 2})},
                                  {"none", Texts({})},
                                  {"string", Text("x y")},
                                  {"strings", Texts({"a", "b", "c"})}})),
              "T:\n"
              "   bool: false\n"
              "   bools: true, false\n"
              "   empty: \n"
              "   int: -7\n"
              "   ints: 1, 2\n"
              "   none: \n"
              "   string: x y\n"
              "   strings: a, b, c\n");
}

TEST(SimpleFormatterStructTest, InnerStructureIsHeadedSixColumnsFurtherRight) {
    const auto inmost = Struct("Inmost", {{"x", Int(1)}});
    const auto inner = Struct("Inner", {{"below", inmost}, {"z", Int(2)}});
    EXPECT_EQ(Simple(Struct("T", {{"inner", inner}, {"tail", Int(3)}})), "T:\n"
                                                                         "   inner: \n"
                                                                         "      Inner:\n"
                                                                         "         below: \n"
                                                                         "            Inmost:\n"
                                                                         "               x: 1\n"
                                                                         "         z: 2\n"
                                                                         "   tail: 3\n");
}

TEST(SimpleFormatterStructTest, InnerListOfStructuresIsSetOffByEmptyLines) {
    const auto rows = Rows({Struct("Row", {{"x", Int(1)}}), Struct("Row", {{"x", Int(2)}})});
    EXPECT_EQ(Simple(Struct("T", {{"rows", rows}, {"tail", Int(3)}})), "T:\n"
                                                                       "   rows: \n"
                                                                       "         Row:\n"
                                                                       "            x: 1\n"
                                                                       "\n"
                                                                       "         Row:\n"
                                                                       "            x: 2\n"
                                                                       "\n"
                                                                       "   tail: 3\n");
}

TEST(SimpleFormatterStructTest, InnerEmptyListOfStructuresIsOneLineEnd) {
    const auto none = Rows(Struct("Row", {{"x", Int(1)}}), {});
    EXPECT_EQ(Simple(Struct("T", {{"rows", none}, {"tail", Int(3)}})), "T:\n"
                                                                       "   rows: \n"
                                                                       "   tail: 3\n");
}

TEST(SimpleFormatterStructTest, LevelIndentsHeaderAndFields) {
    const auto st = Struct("T", {{"a", Int(1)}});
    EXPECT_EQ(SimpleAt(-1, st), "T:\n   a: 1\n");
    EXPECT_EQ(SimpleAt(0, st), "T:\n   a: 1\n");
    EXPECT_EQ(SimpleAt(1, st), "   T:\n      a: 1\n");
    EXPECT_EQ(SimpleAt(3, st), "         T:\n            a: 1\n");
}

TEST(SimpleFormatterStructTest, FormatStruct_IsTheSameAsFormat) {
    FormatParameters params;
    std::ostringstream out;
    SimpleFormatter().FormatStruct(Struct("T", {{"a", Int(1)}}), params, out, 2);
    EXPECT_EQ(out.str(), "      T:\n         a: 1\n");
}

TEST(SimpleFormatterStructTest, FieldsThatAreNotWhatTheyClaimAreReportedInPlace) {
    EXPECT_EQ(Simple(Struct("T", {{"list", ImpostorValue::New(MetaType::List)},
                                  {"struct", ImpostorValue::New(MetaType::Struct)},
                                  {"tail", Int(1)}})),
              "T:\n"
              "   list: Error reading a List\n"
              "   struct: \n"
              "Error reading a struct from output.\n"
              "   tail: 1\n");
}

TEST(SimpleFormatterStructTest, ScalarFieldsThatAreNotWhatTheyClaimShowTheirPlainText) {
    EXPECT_EQ(Simple(Struct("T", {{"bool", ImpostorValue::New(MetaType::Bool)},
                                  {"int", ImpostorValue::New(MetaType::Int)},
                                  {"odd", ImpostorValue::New(TestSupport::kUnknownKind)},
                                  {"text", ImpostorValue::New(MetaType::String)}}),
                     {{"units:T.odd", "MB"}}),
              "T:\n"
              "   bool: impostor\n"
              "   int: impostor\n"
              "   odd: impostor MB\n"
              "   text: impostor\n");
}

// --- Lists of structures

TEST(SimpleFormatterListTest, TopLevelStructuresAreSeparatedByEmptyLines) {
    EXPECT_EQ(Simple(Rows({Struct("T", {{"a", Int(1)}}), Struct("T", {{"a", Int(2)}})})),
              "\n"
              "T:\n"
              "   a: 1\n"
              "\n"
              "T:\n"
              "   a: 2\n"
              "\n");
}

TEST(SimpleFormatterListTest, EmptyTopLevelListIsOneEmptyLine) {
    EXPECT_EQ(Simple(Rows(Struct("T", {{"a", Int(1)}}), {})), "\n");
}

TEST(SimpleFormatterListTest, EmptyListWithoutTemplateIsOneEmptyLine) {
    EXPECT_EQ(Simple(Rows(nullptr, {})), "\n");
}

TEST(SimpleFormatterListTest, ElementsStandOneLevelBelowTheList) {
    const auto list = Rows({Struct("T", {{"a", Int(1)}})});
    EXPECT_EQ(SimpleAt(-1, list), "\nT:\n   a: 1\n\n");
    EXPECT_EQ(SimpleAt(0, list), "\n   T:\n      a: 1\n\n");
    EXPECT_EQ(SimpleAt(1, list), "\n      T:\n         a: 1\n\n");
}

TEST(SimpleFormatterListTest, FormatList_IsTheSameAsFormat) {
    FormatParameters params;
    std::ostringstream out;
    SimpleFormatter().FormatList(Rows({Struct("T", {{"a", Int(1)}})}), params, out, 1);
    EXPECT_EQ(out.str(), "\n      T:\n         a: 1\n\n");
}

TEST(SimpleFormatterListTest, EachElementIsHeadedByItsOwnTypeName) {
    const auto list = Rows(Struct("T", {{"a", Int(0)}}),
                           {Struct("T", {{"a", Int(1)}}), Struct("U", {{"a", Int(2)}})});
    EXPECT_EQ(Simple(list, {{"header:U", "other"}, {"units:U.a", "MB"}}), "\n"
                                                                          "T:\n"
                                                                          "   a: 1\n"
                                                                          "\n"
                                                                          "other:\n"
                                                                          "   a: 2 MB\n"
                                                                          "\n");
}

TEST(SimpleFormatterTest, Format_DisplayDoesNotMatter) {
    const auto root = Struct("T", {{"a", Text("a text that is wider than any of the displays")}});
    const auto unknown = RenderWith<SimpleFormatter>(root);
    for (const std::uint16_t width : {std::uint16_t{1}, std::uint16_t{10}, std::uint16_t{65535}}) {
        EXPECT_EQ(RenderWith<SimpleFormatter>(root, {}, width), unknown) << width;
    }
}

TEST(SimpleFormatterTest, Format_KeepsNothingBetweenCalls) {
    SimpleFormatter formatter;
    const auto root = Struct("T", {{"a", Int(1)}});
    const Rendering styled(true, "Head:\n   a: 1 MB\n");
    const ParameterEntries style{{"header:T", "Head"}, {"units:T.a", "MB"}};
    EXPECT_EQ(TestSupport::Render(formatter, root, style), styled);
    EXPECT_EQ(TestSupport::Render(formatter, root), Rendering(true, "T:\n   a: 1\n"));
    EXPECT_EQ(TestSupport::Render(formatter, root, style), styled);
}

} // namespace
