#include <CppTools/autocli/formatters/TableFormatter.h>

#include <tests/support/ImpostorValue.h>
#include <tests/support/NamedRow.h>
#include <tests/support/Rendering.h>
#include <tests/support/Thrown.h>
#include <tests/support/Values.h>

#include <gtest/gtest.h>

#include <cerrno>
#include <functional>
#include <ostream>
#include <sstream>
#include <string>
#include <system_error>
#include <utility>

namespace {

using CppTools::AutoCli::DisplayContext;
using CppTools::AutoCli::FormatParameters;
using CppTools::AutoCli::TableFormatter;
using CppTools::MetaObj::MetaType;
using TestSupport::Bool;
using TestSupport::ElementsOf;
using TestSupport::ImpostorValue;
using TestSupport::Int;
using TestSupport::kRowName;
using TestSupport::NamedRow;
using TestSupport::ParameterEntries;
using TestSupport::Rendering;
using TestSupport::RenderWith;
using TestSupport::Rows;
using TestSupport::Struct;
using TestSupport::Text;
using TestSupport::ThrownBy;
using TestSupport::Value;

struct ColumnsCase : NamedRow {
    ParameterEntries entries;
    Rendering rendering;
};

class TableColumnsTest : public testing::TestWithParam<ColumnsCase> {};

TEST_P(TableColumnsTest, ColumnsAreChosenByTheParameters) {
    const auto inner = Struct("I", {{"x", Int(5)}, {"Own", Text("inner")}});
    const auto list = Rows({Struct("T", {{"Full Name", Text("f")},
                                         {"In", inner},
                                         {"Name", Text("n")},
                                         {"Own", Text("outer")},
                                         {"Size", Text("s")}})});
    EXPECT_EQ(RenderWith<TableFormatter>(list, GetParam().entries), GetParam().rendering);
}

INSTANTIATE_TEST_SUITE_P(
    Precedence, TableColumnsTest,
    testing::Values(
        ColumnsCase{{"FieldsOfTheType"},
                    {{"fields:T", "Size,Name"}},
                    {true, "Size  Name\n----  ----\ns     n\n"}},
        ColumnsCase{{"Fields"}, {{"fields", "Name"}}, {true, "Name\n----\nn\n"}},
        ColumnsCase{{"TableColumns"}, {{"table-columns", "Name"}}, {true, "Name\n----\nn\n"}},
        ColumnsCase{{"FieldsOfTheTypeOverFields"},
                    {{"fields:T", "Size"}, {"fields", "Name"}, {"table-columns", "Own"}},
                    {true, "Size\n----\ns\n"}},
        ColumnsCase{{"FieldsOverTableColumns"},
                    {{"fields", "Name"}, {"table-columns", "Own"}},
                    {true, "Name\n----\nn\n"}},
        ColumnsCase{{"FieldsOfAnotherTypeDoNotApply"},
                    {{"fields:U", "Size"}, {"fields:t", "Size"}, {"fields", "Name"}},
                    {true, "Name\n----\nn\n"}},
        ColumnsCase{{"EmptyFieldsOfTheTypeAreNoColumns"},
                    {{"fields:T", ""}, {"fields", "Name"}},
                    {true, "\n"}},
        ColumnsCase{
            {"EmptyFieldsAreNoColumns"}, {{"fields", ""}, {"table-columns", "Name"}}, {true, "\n"}},
        ColumnsCase{{"EmptyTableColumnsAreNoColumns"}, {{"table-columns", ""}}, {true, "\n"}}),
    kRowName);

INSTANTIATE_TEST_SUITE_P(
    Trimming, TableColumnsTest,
    testing::Values(
        ColumnsCase{{"BlanksAround"},
                    {{"fields:T", " Name , Size"}},
                    {true, "Name  Size\n----  ----\nn     s\n"}},
        ColumnsCase{{"EveryKindOfBlankAround"},
                    {{"fields:T", " \t\f\v\n\rName \t\f\v\n\r,\r\n\v\f\t Size\r\n\v\f\t "}},
                    {true, "Name  Size\n----  ----\nn     s\n"}},
        ColumnsCase{
            {"InnerBlanksStay"}, {{"fields", "Full Name"}}, {true, "Full Name\n---------\nf\n"}},
        ColumnsCase{{"TrailingCommaIsNoColumn"}, {{"fields", "Name,"}}, {true, "Name\n----\nn\n"}},
        ColumnsCase{{"InnerEmptyItemIsAnUnknownColumn"},
                    {{"fields", "Name,,Size"}},
                    {false, "Error: Unknown field in field list: \n"}},
        ColumnsCase{{"BlankItemIsAnUnknownColumn"},
                    {{"fields", "Name, \t ,Size"}},
                    {false, "Error: Unknown field in field list: \n"}},
        ColumnsCase{{"OtherBytesAreNotTrimmed"},
                    {{"fields", "Name\x01"}},
                    {false, "Error: Unknown field in field list: Name\x01\n"}}),
    kRowName);

INSTANTIATE_TEST_SUITE_P(
    Unknown, TableColumnsTest,
    testing::Values(ColumnsCase{{"Name"},
                                {{"fields", "Name,Nope,Neither"}},
                                {false, "Error: Unknown field in field list: Nope\n"}},
                    ColumnsCase{{"Case"},
                                {{"fields", "name"}},
                                {false, "Error: Unknown field in field list: name\n"}},
                    ColumnsCase{{"Path"},
                                {{"fields", "In.Nope"}},
                                {false, "Error: Unknown field in field list: In.Nope\n"}},
                    ColumnsCase{{"PathThroughNoStructure"},
                                {{"fields", "Name.x"}},
                                {false, "Error: Unknown field in field list: Name.x\n"}},
                    ColumnsCase{{"IsToldTrimmed"},
                                {{"fields", " Nope "}},
                                {false, "Error: Unknown field in field list: Nope\n"}}),
    kRowName);

INSTANTIATE_TEST_SUITE_P(
    Dotted, TableColumnsTest,
    testing::Values(ColumnsCase{{"ReachIntoStructures"},
                                {{"fields", "In.x,In.Own,Own"}},
                                {true, "In.x  In.Own  Own\n"
                                       "----  ------  ---\n"
                                       "   5  inner   outer\n"}},
                    ColumnsCase{{"SkipAbsentParts"},
                                {{"fields", "Nope.Own"}},
                                {true, "Nope.Own\n--------\nouter\n"}},
                    ColumnsCase{{"TakeUnitsUnderTheirWholePath"},
                                {{"fields", "In.x"}, {"units:T.In.x", "MB"}, {"units:I.x", "no"}},
                                {true, "In.x\n----\n5 MB  \n"}}),
    kRowName);

INSTANTIATE_TEST_SUITE_P(Repeated, TableColumnsTest,
                         testing::Values(ColumnsCase{{"AllOfTheLastNameAreUnpadded"},
                                                     {{"fields", "Own,Name,Own"}},
                                                     {true, "Own    Name  Own\n"
                                                            "-----  ----  ---\n"
                                                            "outern     outer\n"}},
                                         ColumnsCase{{"OthersArePaddedEachTime"},
                                                     {{"fields", "Own,Own,Name"}},
                                                     {true, "Own    Own    Name\n"
                                                            "-----  -----  ----\n"
                                                            "outer  outer  n\n"}},
                                         ColumnsCase{{"IntegersArePaddedEverywhere"},
                                                     {{"fields", "In.x,In.x"}},
                                                     {true, "In.x  In.x\n"
                                                            "----  ----\n"
                                                            "   5     5  \n"}}),
                         kRowName);

TEST(TableFormatterTemplateTest, NamesOfTheTemplateAreTrimmedLikeAllOthers) {
    const auto list = Rows({Struct("T", {{" Name ", Text("n")}})});
    EXPECT_EQ(RenderWith<TableFormatter>(list),
              Rendering(false, "Error: Unknown field in field list: Name\n"));
}

TEST(TableFormatterTemplateTest, NamesOfTheTemplateArePathsLikeAllOthers) {
    const auto list = Rows({Struct("T", {{"a.b", Text("n")}})});
    EXPECT_EQ(RenderWith<TableFormatter>(list),
              Rendering(false, "Error: Unknown field in field list: a.b\n"));
}

TEST(TableFormatterTemplateTest, WithoutElementsUnknownColumnsHaveAHeader) {
    const auto none = Rows(Struct("T", {{"Name", Text("")}}), {});
    EXPECT_EQ(RenderWith<TableFormatter>(none, {{"fields", "Nope,Name,,Neither"}}),
              Rendering(true, "Nope  Name    Neither\n"
                              "----  ----    -------\n"));
    EXPECT_EQ(RenderWith<TableFormatter>(none, {{"fields", ","}}), Rendering(true, "\n\n"));
}

// --- Units and printf

TEST(TableFormatterUnitsTest, UnitsAndPrintfWidenTheirColumn) {
    const auto list = Rows({Struct("T", {{"Name", Text("sda")}, {"Size", Int(42)}}),
                            Struct("T", {{"Name", Text("sdb")}, {"Size", Int(7)}})});
    EXPECT_EQ(RenderWith<TableFormatter>(list, {{"fields", "Size,Name"},
                                                {"printf:T.Size", "%05ld"},
                                                {"units:T.Size", "MB"},
                                                {"printf:T.Name", "/dev/%s"}}),
              Rendering(true, "Size      Name\n"
                              "--------  ----\n"
                              "00042 MB  /dev/sda\n"
                              "00007 MB  /dev/sdb\n"));
}

TEST(TableFormatterUnitsTest, FormatThatFailsIsReportedInItsCells) {
    const auto list = Rows({Struct("T", {{"a", Text("x")}, {"b", Text("y")}})});
    const std::string message =
        "Error while handling formatting parameter printf:T.a.  Unable to format field: " +
        std::generic_category().message(EOVERFLOW);
    EXPECT_EQ(
        RenderWith<TableFormatter>(
            list, {{"printf:T.a", "%2147483648s"}, {"units:T.a", "MB"}, {"header-line", "false"}}),
        Rendering(true, "a" + std::string(message.size() + 1, ' ') + "b\n" + message + "  y\n"));
}

TEST(TableFormatterUnitsTest, FormattedIntegersAreStillRightAligned) {
    const auto list = Rows({Struct("T", {{"Size", Int(1)}}), Struct("T", {{"Size", Int(1000)}})});
    EXPECT_EQ(RenderWith<TableFormatter>(list, {{"units:T.Size", "MB"}}),
              Rendering(true, "Size\n"
                              "----\n"
                              "   1 MB  \n"
                              "1000 MB  \n"));
}

TEST(TableFormatterUnitsTest, FormattedBoolsAndStringsAreLeftAligned) {
    const auto list =
        Rows({Struct("T", {{"Flag", Bool(true)}, {"Word", Text("7")}, {"z", Int(1)}})});
    EXPECT_EQ(RenderWith<TableFormatter>(list, {{"printf:T.Flag", "%d"}, {"units:T.Word", "%"}}),
              Rendering(true, "Flag  Word  z\n"
                              "----  ----  -\n"
                              "1     7 %   1  \n"));
}

TEST(TableFormatterUnitsTest, ElementsOwnTypeNameSelectsThem_TheTemplatesTheColumns) {
    const auto list = Rows(
        Struct("T", {{"a", Int(0)}, {"b", Int(0)}}),
        {Struct("T", {{"a", Int(1)}, {"b", Int(0)}}), Struct("U", {{"a", Int(2)}, {"b", Int(0)}})});
    EXPECT_EQ(RenderWith<TableFormatter>(list, {{"fields:T", "a"},
                                                {"fields:U", "b"},
                                                {"units:T.a", "of T"},
                                                {"units:U.a", "of type U"}}),
              Rendering(true, "a\n"
                              "-\n"
                              "     1 of T  \n"
                              "2 of type U  \n"));
}

// --- Rows that stop the table

TEST(TableFormatterRowsTest, ElementsWithoutTemplateAreRefused) {
    const auto list = Rows(nullptr, {});
    ElementsOf(list).push_back(Struct("T", {{"a", Int(1)}}));
    EXPECT_EQ(ThrownBy([&] { RenderWith<TableFormatter>(list); }),
              "Error: Unable to get structure type from list output.");
}

TEST(TableFormatterRowsTest, ElementThatIsNoStructureLeavesNothingButTheMessage) {
    for (const auto& intruder : {Int(1), ImpostorValue::New(MetaType::Struct)}) {
        const auto list = Rows({Struct("T", {{"a", Int(1)}})});
        ElementsOf(list).push_back(intruder);
        EXPECT_EQ(RenderWith<TableFormatter>(list),
                  Rendering(false, "Error: Unexpected type, unable to get struct from list\n"));
    }
}

TEST(TableFormatterRowsTest, ElementThatLostAFieldLeavesNothingButTheMessage) {
    const auto second = Struct("T", {{"a", Int(1)}, {"b", Int(2)}});
    const auto list = Rows({Struct("T", {{"a", Int(1)}, {"b", Int(2)}}), second});
    second->RemoveField("b");
    EXPECT_EQ(RenderWith<TableFormatter>(list),
              Rendering(false, "Error: Unknown field in field list: b\n"));
}

TEST(TableFormatterRowsTest, TheFirstProblemInOrderOfElementsIsTold) {
    const auto first = Struct("T", {{"a", Int(1)}, {"b", Int(2)}});
    const auto list = Rows({first, Struct("T", {{"a", Int(1)}, {"b", Int(2)}})});
    ElementsOf(list).push_back(Int(1));
    first->RemoveField("b");
    EXPECT_EQ(RenderWith<TableFormatter>(list),
              Rendering(false, "Error: Unknown field in field list: b\n"));
}

/// A stream that runs `change` as soon as it has received a text, in the way of a reader who
/// changes the values while they are being written.
class ChangingBuffer : public std::stringbuf {
  public:
    ChangingBuffer(std::string trigger, std::function<void()> change)
        : trigger_(std::move(trigger)), change_(std::move(change)) {}

  protected:
    std::streamsize xsputn(const char* text, std::streamsize count) override {
        const auto written = std::stringbuf::xsputn(text, count);
        Look();
        return written;
    }

    int_type overflow(int_type c) override {
        const auto written = std::stringbuf::overflow(c);
        Look();
        return written;
    }

  private:
    void Look() {
        if (str().find(trigger_) != std::string::npos) {
            std::exchange(change_, [] {})();
        }
    }

    std::string trigger_;
    std::function<void()> change_;
};

Rendering RenderWhileChanging(const Value& root, std::string trigger,
                              std::function<void()> change) {
    ChangingBuffer buffer(std::move(trigger), std::move(change));
    std::ostream out(&buffer);
    const auto output = CppTools::CallSpec::Output::New();
    output->SetRootObject(root);
    FormatParameters params;
    DisplayContext display;
    const bool result = TableFormatter().Format(output, params, display, out);
    return {result, buffer.str()};
}

TEST(TableFormatterRowsTest, FieldThatIsGoneWhenItsRowIsWrittenStopsThere) {
    const auto second = Struct("T", {{"a", Text("x2")}, {"b", Text("y2")}});
    const auto list = Rows({Struct("T", {{"a", Text("x1")}, {"b", Text("y1")}}), second,
                            Struct("T", {{"a", Text("x3")}, {"b", Text("y3")}})});
    EXPECT_EQ(RenderWhileChanging(list, "y1", [&] { second->RemoveField("b"); }),
              Rendering(false, "a   b\n"
                               "--  -\n"
                               "x1  y1\n"
                               "x2  Unknown column b"));
}

TEST(TableFormatterRowsTest, ElementThatIsGoneWhenItsRowIsWrittenIsSkipped) {
    const auto list = Rows({Struct("T", {{"a", Text("x1")}}), Struct("T", {{"a", Text("x2")}}),
                            Struct("T", {{"a", Text("x3")}})});
    EXPECT_EQ(RenderWhileChanging(list, "x1", [&] { ElementsOf(list)[1] = Int(1); }),
              Rendering(true, "a\n"
                              "-\n"
                              "x1\n"
                              "x3\n"));
}

} // namespace
