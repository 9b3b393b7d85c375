#include <CppTools/autocli/formatters/SimpleFormatter.h>

#include <tests/support/NamedRow.h>
#include <tests/support/Rendering.h>
#include <tests/support/Values.h>

#include <gtest/gtest.h>

#include <cerrno>
#include <iomanip>
#include <ios>
#include <sstream>
#include <string>
#include <system_error>

namespace {

using CppTools::AutoCli::FormatParameters;
using CppTools::AutoCli::SimpleFormatter;
using TestSupport::Bool;
using TestSupport::Int;
using TestSupport::kRowName;
using TestSupport::ParameterEntries;
using TestSupport::ParametersOf;
using TestSupport::RenderWith;
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

struct FieldsCase : TestSupport::NamedRow {
    ParameterEntries entries;
    std::string text;
};

class SimpleFormatterFieldsTest : public testing::TestWithParam<FieldsCase> {};

TEST_P(SimpleFormatterFieldsTest, FieldsAreChosenAndOrderedByTheParameter) {
    const auto st = Struct("T", {{"a", Int(1)}, {"b", Text("x")}, {"in", Struct("I", {})}});
    EXPECT_EQ(Simple(st, GetParam().entries), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Parameters, SimpleFormatterFieldsTest,
    testing::Values(
        FieldsCase{{"Ordered"}, {{"fields:T", "b,a"}}, "T:\n   b: x\n   a: 1\n"},
        FieldsCase{{"Filtered"}, {{"fields:T", "b"}}, "T:\n   b: x\n"},
        FieldsCase{{"EmptyListPrintsNoFields"}, {{"fields:T", ""}}, "T:\n"},
        FieldsCase{{"Repeated"}, {{"fields:T", "a,a"}}, "T:\n   a: 1\n   a: 1\n"},
        FieldsCase{{"TrailingCommaIsNoItem"}, {{"fields:T", "a,"}}, "T:\n   a: 1\n"},
        FieldsCase{{"AbsentFieldStops"},
                   {{"fields:T", "a,zz,b"}},
                   "T:\n   a: 1\nError getting field zz\n"},
        FieldsCase{
            {"EmptyItemIsAnAbsentField"}, {{"fields:T", ",a"}}, "T:\nError getting field \n"},
        FieldsCase{
            {"NothingIsTrimmed"}, {{"fields:T", "a, b"}}, "T:\n   a: 1\nError getting field  b\n"},
        FieldsCase{{"NamesAreNoPaths"}, {{"fields:T", "in.x,a"}}, "T:\nError getting field in.x\n"},
        FieldsCase{{"CaseMatters"}, {{"fields:T", "A"}}, "T:\nError getting field A\n"},
        FieldsCase{{"WithoutType"}, {{"fields", "b"}}, "T:\n   b: x\n"},
        FieldsCase{{"WithTypeGoesFirst"}, {{"fields", "b"}, {"fields:T", "a"}}, "T:\n   a: 1\n"},
        FieldsCase{{"EmptyWithTypeGoesFirst"}, {{"fields", "b"}, {"fields:T", ""}}, "T:\n"},
        FieldsCase{{"OtherTypesDoNotApply"},
                   {{"fields:U", "b"}, {"fields:t", "b"}, {"fields:", "b"}},
                   "T:\n   a: 1\n   b: x\n   in: \n      I:\n"},
        FieldsCase{{"TableColumnsAreNotRead"},
                   {{"table-columns", "b"}},
                   "T:\n   a: 1\n   b: x\n   in: \n      I:\n"}),
    kRowName);

TEST(SimpleFormatterFieldsTest, WithoutType_AppliesToEveryTypeWithoutAnEntryOfItsOwn) {
    const auto one = Struct("One", {{"a", Int(1)}, {"b", Int(2)}});
    const auto two = Struct("Two", {{"a", Int(3)}, {"b", Int(4)}});
    EXPECT_EQ(Simple(Struct("T", {{"a", one}, {"b", two}}), {{"fields", "a"}, {"fields:T", "a,b"}}),
              "T:\n"
              "   a: \n"
              "      One:\n"
              "         a: 1\n"
              "   b: \n"
              "      Two:\n"
              "         a: 3\n");
}

TEST(SimpleFormatterFieldsTest, AbsentField_StopsItsOwnStructureOnly) {
    const auto inner = Struct("Inner", {{"x", Int(1)}, {"y", Int(2)}});
    EXPECT_EQ(
        Simple(Struct("T", {{"inner", inner}, {"tail", Int(3)}}), {{"fields:Inner", "x,zz,y"}}),
        "T:\n"
        "   inner: \n"
        "      Inner:\n"
        "         x: 1\n"
        "Error getting field zz\n"
        "   tail: 3\n");
}

TEST(SimpleFormatterFieldsTest, AbsentField_StopsNoOtherElement) {
    const auto list = Rows({Struct("T", {{"a", Int(1)}}), Struct("T", {{"a", Int(2)}})});
    EXPECT_EQ(Simple(list, {{"fields:T", "zz"}}), "\n"
                                                  "T:\n"
                                                  "Error getting field zz\n"
                                                  "\n"
                                                  "T:\n"
                                                  "Error getting field zz\n"
                                                  "\n");
}

// --- Alignment

TEST(SimpleFormatterAlignTest, True_ValuesStartAtTheSameColumn) {
    EXPECT_EQ(Simple(Struct("Device", {{"Name", Text("sda")}, {"Capacity", Int(512)}}),
                     {{"align-fields", "true"}, {"fields:Device", "Name,Capacity"}}),
              "Device:\n"
              "   Name    : sda\n"
              "   Capacity: 512\n");
}

TEST(SimpleFormatterAlignTest, OnlyExactlyTrueAligns) {
    for (const char* value : {"false", "True", "TRUE", "1", "yes", "", " true", "true "}) {
        EXPECT_EQ(Simple(Struct("T", {{"a", Int(1)}, {"long", Int(2)}}), {{"align-fields", value}}),
                  "T:\n   a: 1\n   long: 2\n")
            << "'" << value << "'";
    }
}

TEST(SimpleFormatterAlignTest, OnlyListedNamesCount) {
    const auto st = Struct("T", {{"a", Int(1)}, {"bb", Int(2)}, {"very long", Int(3)}});
    EXPECT_EQ(Simple(st, {{"align-fields", "true"}, {"fields:T", "a,bb"}}), "T:\n"
                                                                            "   a : 1\n"
                                                                            "   bb: 2\n");
}

TEST(SimpleFormatterAlignTest, ListedNamesThatAreAbsentCount) {
    EXPECT_EQ(
        Simple(Struct("T", {{"a", Int(1)}}), {{"align-fields", "true"}, {"fields", "a,long"}}),
        "T:\n"
        "   a   : 1\n"
        "Error getting field long\n");
}

TEST(SimpleFormatterAlignTest, NamesOfCompoundFieldsAreAlignedToo) {
    const auto inner = Struct("Inner", {{"x", Int(1)}, {"yyy", Int(2)}});
    EXPECT_EQ(Simple(Struct("T", {{"in", inner}, {"li", Texts({"a"})}, {"long", Int(3)}}),
                     {{"align-fields", "true"}}),
              "T:\n"
              "   in  : \n"
              "      Inner:\n"
              "         x  : 1\n"
              "         yyy: 2\n"
              "   li  : a\n"
              "   long: 3\n");
}

TEST(SimpleFormatterAlignTest, LengthsAreBytes) {
    EXPECT_EQ(
        Simple(Struct("T", {{"abc", Int(1)}, {"\xC3\xA9", Int(2)}}), {{"align-fields", "true"}}),
        "T:\n"
        "   abc: 1\n"
        "   \xC3\xA9 : 2\n");
}

TEST(SimpleFormatterAlignTest, StreamIsLeftWithoutLeftAdjustment) {
    CppTools::AutoCli::DisplayContext display;
    const auto output = CppTools::CallSpec::Output::New();
    output->SetRootObject(Struct("T", {{"a", Int(1)}}));
    for (const char* align : {"true", "false"}) {
        FormatParameters params = ParametersOf({{"align-fields", align}});
        std::ostringstream out;
        SimpleFormatter().Format(output, params, display, out);
        EXPECT_EQ(out.flags() & std::ios_base::left, std::ios_base::fmtflags{});
        out << std::setw(3) << 7 << 8;
        EXPECT_EQ(out.str(), "T:\n   a: 1\n  78");
    }
}

// --- Units and printf

TEST(SimpleFormatterUnitsTest, ApplyToScalarFieldsOfTheirTypeOnly) {
    const auto inner = Struct("Inner", {{"size", Int(2)}});
    EXPECT_EQ(Simple(Struct("T", {{"inner", inner}, {"name", Text("x")}, {"size", Int(1)}}),
                     {{"units:T.size", "MB"}, {"units:T.inner", "no"}, {"units:T.name", "disk"}}),
              "T:\n"
              "   inner: \n"
              "      Inner:\n"
              "         size: 2\n"
              "   name: x disk\n"
              "   size: 1 MB\n");
}

TEST(SimpleFormatterUnitsTest, DoNotApplyToLists) {
    const auto rows = Rows({Struct("Row", {{"x", Int(1)}})});
    EXPECT_EQ(Simple(Struct("T", {{"names", Texts({"a", "b"})}, {"rows", rows}}),
                     {{"units:T.names", "MB"},
                      {"printf:T.names", "%s"},
                      {"units:T.rows", "MB"},
                      {"printf:T.rows", "%s"}}),
              "T:\n"
              "   names: a, b\n"
              "   rows: \n"
              "         Row:\n"
              "            x: 1\n"
              "\n");
}

TEST(SimpleFormatterUnitsTest, FormatThatFailsIsReportedInItsFieldAlone) {
    EXPECT_EQ(Simple(Struct("T", {{"a", Int(1)}, {"b", Int(2)}, {"c", Int(3)}}),
                     {{"printf:T.b", "%2147483648ld"}, {"units:T.b", "MB"}, {"units:T.c", "MB"}}),
              "T:\n"
              "   a: 1\n"
              "   b: Error while handling formatting parameter printf:T.b.  Unable to format "
              "field: " +
                  std::generic_category().message(EOVERFLOW) +
                  "\n"
                  "   c: 3 MB\n");
}

TEST(SimpleFormatterUnitsTest, PrintfGoesBeforeUnits) {
    EXPECT_EQ(Simple(Struct("T", {{"on", Bool(true)}, {"size", Int(42)}, {"name", Text("sda")}}),
                     {{"printf:T.size", "%05ld"},
                      {"units:T.size", "MB"},
                      {"printf:T.on", "%02d"},
                      {"printf:T.name", "/dev/%s"}}),
              "T:\n"
              "   name: /dev/sda\n"
              "   on: 01\n"
              "   size: 00042 MB\n");
}

} // namespace
