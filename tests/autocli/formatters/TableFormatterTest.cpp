#include <CppTools/autocli/formatters/TableFormatter.h>

#include <tests/support/ImpostorValue.h>
#include <tests/support/NamedRow.h>
#include <tests/support/Rendering.h>
#include <tests/support/Thrown.h>
#include <tests/support/Values.h>

#include <gtest/gtest.h>

#include <ios>
#include <sstream>
#include <string>

namespace {

using CppTools::AutoCli::DisplayContext;
using CppTools::AutoCli::FormatParameters;
using CppTools::AutoCli::TableFormatter;
using CppTools::MetaObj::MetaStruct;
using CppTools::MetaObj::MetaType;
using TestSupport::Bool;
using TestSupport::DocumentedParams;
using TestSupport::DocumentedParamsOf;
using TestSupport::ImpostorValue;
using TestSupport::Int;
using TestSupport::Ints;
using TestSupport::kRowName;
using TestSupport::NamedRow;
using TestSupport::ParameterEntries;
using TestSupport::ParametersOf;
using TestSupport::Rendering;
using TestSupport::RenderWith;
using TestSupport::Rows;
using TestSupport::Struct;
using TestSupport::Text;
using TestSupport::Texts;
using TestSupport::ThrownBy;
using TestSupport::Value;
using TestSupport::WrongRoot;

/// The text of a table that is expected to be complete.
std::string Table(const Value& root, const ParameterEntries& entries = {}) {
    const auto [result, text] = RenderWith<TableFormatter>(root, entries);
    EXPECT_TRUE(result);
    return text;
}

Value MakeDisks() {
    return Rows({Struct("Disk", {{"Name", Text("sda")}, {"Size", Int(512)}, {"On", Bool(true)}}),
                 Struct("Disk", {{"Name", Text("nvme0")}, {"Size", Int(9)}, {"On", Bool(false)}})});
}

TEST(TableFormatterTest, Name_IsTable) {
    EXPECT_EQ(TableFormatter().GetName(), "table");
}

TEST(TableFormatterTest, Description_IsTheSentenceForUsers) {
    EXPECT_EQ(TableFormatter().GetDescription(),
              "Print a list of structs as a table, with each row being one entry in the list and "
              "each column being a field of the structure.");
}

TEST(TableFormatterTest, Params_AreDocumentedInThisOrder) {
    EXPECT_EQ(
        DocumentedParamsOf(TableFormatter()),
        (DocumentedParams{
            {"fields:<TypeName>",
             "The list of fields and the order in which to print them for the type named in "
             "<TypeName>",
             true},
            {"show-header",
             "Optionally disable showing column headers by passing the 'false' value", false},
            {"wrap-last", "If 'true' wrap the last column to the width of the terminal.", false},
            {"units:<TypeName>.<FieldName>",
             "Use the given 'units' value as a suffix for a given field.  For example specifying "
             "\"units:ScsiDeviceList.Size\" = \"Mb\" would append the string 'Mb' to the end of a "
             "field",
             false},
            {"printf:<TypeName>.<FieldName>",
             "Use the given 'printf' formatting string for printing a value.  This uses standard "
             "printf syntax to format and print a Value.  For example specifying "
             "\"units:ScsiDeviceList.Size\" = \"Mb\" would append the string 'Mb' to the end of a "
             "field",
             false},
            {"header-line",
             "Optionally remove the line of '-' characters after the header.  By default this "
             "paramter is assumed to be true.  Setting it to 'false' will remove the line.  This "
             "parameter only has meaning if 'show-header' is also true",
             false},
        }));
}

// --- Roots

class TableFormatterRootTest : public testing::TestWithParam<WrongRoot> {};

TEST_P(TableFormatterRootTest, AnythingButAListOfStructuresIsRefused) {
    EXPECT_EQ(ThrownBy([] { RenderWith<TableFormatter>(GetParam().root); }),
              "Error: Unexpected type for output, formatter, table, expected a List of structs");
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, TableFormatterRootTest,
    testing::Values(WrongRoot{{"Nothing"}, nullptr}, WrongRoot{{"Integer"}, Int(1)},
                    WrongRoot{{"Bool"}, Bool(true)}, WrongRoot{{"String"}, Text("x")},
                    WrongRoot{{"Structure"}, Struct("T", {{"a", Int(1)}})},
                    WrongRoot{{"ListOfIntegers"}, Ints({1})},
                    WrongRoot{{"ListOfStrings"}, Texts({})},
                    WrongRoot{{"ImpostorList"}, ImpostorValue::New(MetaType::List)}),
    kRowName);

TEST(TableFormatterTest, Format_EmptyListWithTemplate_PrintsTheHeaderAndItsLine) {
    const auto none = Rows(Struct("T", {{"Name", Text("")}, {"Size", Int(0)}}), {});
    EXPECT_EQ(Table(none), "Name  Size\n"
                           "----  ----\n");
}

TEST(TableFormatterTest, Format_EmptyListWithoutHeader_PrintsNothing) {
    const auto none = Rows(Struct("T", {{"Name", Text("")}}), {});
    EXPECT_EQ(Table(none, {{"show-header", "false"}}), "");
}

TEST(TableFormatterTest, Format_EmptyListWithoutTemplate_PrintsNothing) {
    EXPECT_EQ(Table(Rows(nullptr, {})), "");
    EXPECT_EQ(Table(Rows(nullptr, {}), {{"fields", "a,b"}}), "");
}

TEST(TableFormatterTest, Format_TemplateWithoutFields_PrintsALineEndForEachElement) {
    EXPECT_EQ(Table(Rows({Struct("T", {}), Struct("T", {})})), "\n\n");
}

// --- Layout

TEST(TableFormatterTest, Format_ColumnsAreAsWideAsTheirWidestCellAndTwoBlanks) {
    const auto list = Rows({Struct("T", {{"Description", Text("xyz")}, {"Name", Text("a")}})});
    EXPECT_EQ(Table(list, {{"fields:T", "Name,Description"}}), "Name  Description\n"
                                                               "----  -----------\n"
                                                               "a     xyz\n");
}

TEST(TableFormatterTest, Format_LastLineOfTheHeaderFollowsTheNameNotTheData) {
    const auto list = Rows({Struct("T", {{"A", Text("wide cell")}, {"B", Text("wider cell")}})});
    EXPECT_EQ(Table(list), "A          B\n"
                           "---------  -\n"
                           "wide cell  wider cell\n");
}

TEST(TableFormatterTest, Format_WidestCellCanBeInAnyRow) {
    const auto list = Rows({Struct("T", {{"a", Text("1")}, {"b", Text("")}}),
                            Struct("T", {{"a", Text("12345")}, {"b", Text("x")}}),
                            Struct("T", {{"a", Text("")}, {"b", Text("")}})});
    EXPECT_EQ(Table(list), "a      b\n"
                           "-----  -\n"
                           "1      \n"
                           "12345  x\n"
                           "       \n");
}

TEST(TableFormatterTest, Format_WithoutFieldsParameterAllFieldsOfTheTemplateAscendByName) {
    EXPECT_EQ(Table(MakeDisks()), "Name   On     Size\n"
                                  "-----  -----  ----\n"
                                  "sda    true    512  \n"
                                  "nvme0  false     9  \n");
}

TEST(TableFormatterTest, Format_IntegersAreRightAlignedBeforeTwoBlanks) {
    const auto list = Rows({Struct("T", {{"Count", Int(42)}, {"b", Text("x")}})});
    EXPECT_EQ(Table(list), "Count  b\n"
                           "-----  -\n"
                           "   42  x\n");
}

TEST(TableFormatterTest, Format_IntegersAreRightAlignedInTheLastColumnToo) {
    const auto list = Rows({Struct("T", {{"Count", Int(42)}}), Struct("T", {{"Count", Int(-7)}}),
                            Struct("T", {{"Count", Int(1234567)}})});
    EXPECT_EQ(Table(list), "Count\n"
                           "-----\n"
                           "     42  \n"
                           "     -7  \n"
                           "1234567  \n");
}

TEST(TableFormatterTest, Format_OtherKindsAreLeftAlignedAndUnpaddedInTheLastColumn) {
    const auto list = Rows({Struct("T", {{"Enabled", Bool(true)}, {"Last", Bool(false)}})});
    EXPECT_EQ(Table(list), "Enabled  Last\n"
                           "-------  ----\n"
                           "true     false\n");
}

TEST(TableFormatterTest, Format_CompoundCellsShowTheirPlainText) {
    const auto inner = Struct("I", {{"x", Int(1)}});
    const auto list = Rows({Struct("T", {{"in", inner}, {"tags", Texts({"a", "b"})}})});
    EXPECT_EQ(Table(list), "in              tags\n"
                           "--------------  ----\n"
                           "{'x' => '1', }  a, b\n");
}

TEST(TableFormatterTest, Format_LengthsAreBytes) {
    const auto list =
        Rows({Struct("T", {{"\xC3\xA9", Text("\xC3\xA9\xC3\xA9")}, {"\xFF", Int(1)}})});
    EXPECT_EQ(Table(list), "\xC3\xA9    \xFF\n"
                           "----  -\n"
                           "\xC3\xA9\xC3\xA9  1  \n");
}

TEST(TableFormatterTest, Format_LineEndsInCellsStayWithoutWrapping) {
    const auto list = Rows({Struct("T", {{"a", Text("1\n2")}, {"b", Text("3\n4")}})});
    EXPECT_EQ(Table(list), "a    b\n"
                           "---  -\n"
                           "1\n2  3\n4\n");
}

TEST(TableFormatterTest, Format_SingleColumnIsUnpadded) {
    EXPECT_EQ(Table(MakeDisks(), {{"fields", "Name"}}), "Name\n"
                                                        "----\n"
                                                        "sda\n"
                                                        "nvme0\n");
}

TEST(TableFormatterTest, Format_AdjustmentOfTheStreamDoesNotMatter) {
    DisplayContext display;
    FormatParameters params = ParametersOf({{"fields", "Name,Size,On"}});
    const auto output = CppTools::CallSpec::Output::New();
    output->SetRootObject(MakeDisks());
    for (const auto adjustment :
         {std::ios_base::left, std::ios_base::right, std::ios_base::internal}) {
        std::ostringstream out;
        out.setf(adjustment, std::ios_base::adjustfield);
        EXPECT_TRUE(TableFormatter().Format(output, params, display, out));
        EXPECT_EQ(out.str(), "Name   Size  On\n"
                             "-----  ----  --\n"
                             "sda     512  true\n"
                             "nvme0     9  false\n");
    }
}

TEST(TableFormatterTest, Format_LeavesTheStreamInLeftAdjustment) {
    DisplayContext display;
    FormatParameters params;
    const auto output = CppTools::CallSpec::Output::New();
    output->SetRootObject(Rows({Struct("T", {{"Size", Int(1)}})}));
    std::ostringstream out;
    out.setf(std::ios_base::right, std::ios_base::adjustfield);
    TableFormatter().Format(output, params, display, out);
    EXPECT_EQ(out.flags() & std::ios_base::adjustfield, std::ios_base::left);
}

TEST(TableFormatterTest, Format_KeepsNothingBetweenCalls) {
    TableFormatter formatter;
    const ParameterEntries entries{{"fields", "Name"}, {"show-header", "false"}};
    EXPECT_EQ(TestSupport::Render(formatter, MakeDisks(), entries),
              Rendering(true, "sda\nnvme0\n"));
    EXPECT_EQ(TestSupport::Render(formatter, MakeDisks(), {{"fields", "On"}}),
              Rendering(true, "On\n--\ntrue\nfalse\n"));
    EXPECT_EQ(TestSupport::Render(formatter, MakeDisks(), entries),
              Rendering(true, "sda\nnvme0\n"));
}

// --- Header

struct HeaderCase : NamedRow {
    ParameterEntries entries;
    bool header;
    bool line;
};

class TableFormatterHeaderTest : public testing::TestWithParam<HeaderCase> {};

TEST_P(TableFormatterHeaderTest, HeaderAndLineFollowTheParameters) {
    const auto list = Rows({Struct("T", {{"a", Text("x")}, {"b", Text("y")}})});
    EXPECT_EQ(Table(list, GetParam().entries), std::string(GetParam().header ? "a  b\n" : "") +
                                                   (GetParam().line ? "-  -\n" : "") + "x  y\n");
}

INSTANTIATE_TEST_SUITE_P(
    Parameters, TableFormatterHeaderTest,
    testing::Values(
        HeaderCase{{"NoParameters"}, {}, true, true},
        HeaderCase{{"ShowHeaderFalse"}, {{"show-header", "false"}}, false, false},
        HeaderCase{{"ShowHeaderTrue"}, {{"show-header", "true"}}, true, true},
        HeaderCase{{"ShowHeaderFalseInOtherWords"}, {{"show-header", "False"}}, true, true},
        HeaderCase{{"ShowHeaderNo"}, {{"show-header", "no"}}, true, true},
        HeaderCase{{"ShowHeaderUntrimmed"}, {{"show-header", " false"}}, true, true},
        HeaderCase{{"TableHeaderFalse"}, {{"table-header", "false"}}, false, false},
        HeaderCase{{"TableHeaderTrue"}, {{"table-header", "true"}}, true, true},
        HeaderCase{{"TableHeaderNo"}, {{"table-header", "no"}}, true, true},
        HeaderCase{{"EmptyShowHeaderAsksTableHeader"},
                   {{"show-header", ""}, {"table-header", "false"}},
                   false,
                   false},
        HeaderCase{{"ShowHeaderOverrulesTableHeader"},
                   {{"show-header", "true"}, {"table-header", "false"}},
                   true,
                   true},
        HeaderCase{{"ShowHeaderFalseOverrulesTableHeader"},
                   {{"show-header", "false"}, {"table-header", "true"}},
                   false,
                   false},
        HeaderCase{{"HeaderLineFalse"}, {{"header-line", "false"}}, true, false},
        HeaderCase{{"HeaderLineTrue"}, {{"header-line", "true"}}, true, true},
        HeaderCase{{"HeaderLineEmpty"}, {{"header-line", ""}}, true, true},
        HeaderCase{{"HeaderLineFalseInOtherWords"}, {{"header-line", "FALSE"}}, true, true},
        HeaderCase{{"HeaderLineMeansNothingWithoutHeader"},
                   {{"show-header", "false"}, {"header-line", "true"}},
                   false,
                   false}),
    kRowName);

TEST(TableFormatterTest, Format_HeaderLineOfThreeColumns) {
    const auto list =
        Rows({Struct("T", {{"One", Text("")}, {"Th", Text("")}, {"Two", Int(1000)}})});
    EXPECT_EQ(Table(list, {{"fields", "One,Two,Th"}}), "One  Two   Th\n"
                                                       "---  ----  --\n"
                                                       "     1000  \n");
}

} // namespace
