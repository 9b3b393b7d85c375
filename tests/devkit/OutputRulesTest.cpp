#include "Checking.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using DevkitTest::Check;
using DevkitTest::FaultlessCommand;
using DevkitTest::OfRule;
using DevkitTest::RuleRow;
using testing::ElementsAre;
using testing::IsEmpty;
using TestSupport::kRowName;

std::string Shown(const std::string& output, const std::string& format) {
    auto pieces = FaultlessCommand();
    pieces.outputSpec = "<output-spec>" + output + "</output-spec>";
    pieces.formatParameters = "<format-parameters>" + format + "</format-parameters>";
    return TestSupport::CommandDescriptor(pieces);
}

/// A list of disks with a name, a size, a switch and an owner, shown as a table or otherwise.
std::string Disks(const std::string& key, const std::string& value,
                  const std::string& formatter = "table") {
    return Shown("<list type='structure'><structure typeName='Disk'>"
                 "<field name='Name'><string/></field><field name='Size'><int/></field>"
                 "<field name='Full'><bool/></field><field name='Owner'><structure "
                 "typeName='Owner'><field name='Id'><int/></field></structure></field>"
                 "</structure></list>",
                 "<formatter>" + formatter + "</formatter><format-parameter name=\"" + key + "\">" +
                     value + "</format-parameter>");
}

class OutputRules : public testing::TestWithParam<RuleRow> {};

TEST_P(OutputRules, BrokenRule_IsFoundOnce) {
    const RuleRow& row = GetParam();
    EXPECT_THAT(OfRule(Check({row.broken}), row.rule), ElementsAre("0.xml:1: " + row.finding));
}

TEST_P(OutputRules, KeptRule_NothingIsFound) {
    EXPECT_THAT(Check({GetParam().kept}), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    Shapes, OutputRules,
    testing::Values(
        RuleRow{{"NoOutput"},
                "no-output",
                Shown("", "<formatter>simple</formatter>"),
                "error: The command 'demo.run' declares no result",
                Shown("<int/>", "<formatter>simple</formatter>")},
        RuleRow{{"NoFormatter"},
                "no-formatter",
                Shown("<int/>", ""),
                "warning: The command 'demo.run' names no formatter",
                Shown("<int/>", "<formatter>json</formatter>")},
        RuleRow{{"UnknownFormatter"},
                "unknown-formatter",
                Shown("<int/>", "<formatter>yaml</formatter>"),
                "error: There is no formatter 'yaml'",
                Shown("<int/>", "<formatter>python</formatter>")},
        RuleRow{{"TableOfStructure"},
                "table-of-other",
                Shown("<structure typeName='One'/>", "<formatter>table</formatter>"),
                "error: The formatter table is to show a result that is no list of structures",
                Shown("<list type='structure'><structure typeName='One'/></list>",
                      "<formatter>table</formatter>")},
        RuleRow{{"TableOfTexts"},
                "table-of-other",
                Shown("<list type='string'/>", "<formatter>table</formatter>"),
                "error: The formatter table is to show a result that is no list of structures",
                Shown("<list type='string'/>", "<formatter>simple</formatter>")}),
    kRowName);

INSTANTIATE_TEST_SUITE_P(
    Fields, OutputRules,
    testing::Values(
        RuleRow{{"UnknownFormatParameter"},
                "unknown-format-parameter",
                Disks("field:Disk", "Name"),
                "warning: No formatter knows the format parameter 'field:Disk'",
                Disks("fields:Disk", "Name")},
        RuleRow{{"UnknownType"},
                "unknown-type",
                Disks("fields:Disc", "Name"),
                "warning: The format parameter 'fields:Disc' names the type 'Disc', which the "
                "result has not",
                Disks("units:Owner.Id", "no.")},
        RuleRow{{"UnknownFieldOfList"},
                "unknown-field",
                Disks("fields:Disk", "Name, Sise"),
                "error: The format parameter 'fields:Disk' names the field ' Sise', which Disk has "
                "not",
                Disks("fields:Disk", "Name, Size,Owner.Id")},
        RuleRow{{"BlankInSimpleList"},
                "unknown-field",
                Disks("fields:Disk", "Name, Size", "simple"),
                "error: The format parameter 'fields:Disk' names the field ' Size', which Disk has "
                "not",
                Disks("fields:Disk", "Name,Size", "simple")},
        RuleRow{{"UnknownFieldOfKey"},
                "unknown-field",
                Disks("units:Disk.Sise", "MB"),
                "error: The format parameter 'units:Disk.Sise' names the field 'Sise', which Disk "
                "has not",
                Disks("units:Disk.Owner.Id", "no.")},
        RuleRow{{"FieldsOfEveryType"},
                "unknown-field",
                Disks("fields", "Name", "simple"),
                "error: The format parameter 'fields' names the field 'Name', which Owner has not",
                Disks("fields", "Name")},
        RuleRow{{"ColumnsOfTable"},
                "unknown-field",
                Disks("table-columns", "Id"),
                "error: The format parameter 'table-columns' names the field 'Id', which Disk has "
                "not",
                Disks("table-columns", "Id", "simple")}),
    kRowName);

INSTANTIATE_TEST_SUITE_P(
    Printf, OutputRules,
    testing::Values(
        RuleRow{{"Integer"},
                "printf-mismatch",
                Disks("printf:Disk.Size", "%d"),
                "error: The format '%d' of 'printf:Disk.Size' does not fit the kind of the field",
                Disks("printf:Disk.Size", "%'08ld %%")},
        RuleRow{{"Boolean"},
                "printf-mismatch",
                Disks("printf:Disk.Full", "%s"),
                "error: The format '%s' of 'printf:Disk.Full' does not fit the kind of the field",
                Disks("printf:Disk.Full", "%d")},
        RuleRow{{"String"},
                "printf-mismatch",
                Disks("printf:Disk.Name", "%s %s"),
                "error: The format '%s %s' of 'printf:Disk.Name' does not fit the kind of the "
                "field",
                Disks("printf:Disk.Name", "%-20.10s")},
        RuleRow{{"Structure"},
                "printf-mismatch",
                Disks("printf:Disk.Owner", "%s"),
                "error: The format '%s' of 'printf:Disk.Owner' does not fit the kind of the field",
                Disks("printf:Disk.Owner.Id", "%lld")},
        RuleRow{{"Star"},
                "printf-mismatch",
                Disks("printf:Disk.Name", "%*s"),
                "error: The format '%*s' of 'printf:Disk.Name' does not fit the kind of the field",
                Disks("printf:Owner.Id", "%lx")},
        RuleRow{{"NoConversion"},
                "printf-mismatch",
                Disks("printf:Disk.Name", "100 %"),
                "error: The format '100 %' of 'printf:Disk.Name' does not fit the kind of the "
                "field",
                Disks("show-header", "false")}),
    kRowName);

} // namespace
