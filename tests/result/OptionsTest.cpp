#include "Support.h"
#include "tests/support/NamedRow.h"

#include <tandril-result/Options.h>

#include <gtest/gtest.h>

using ResultTests::ErrorOf;
using TandrilResult::Format;
using TandrilResult::Options;
using TandrilResult::ParseOptions;
using TandrilResult::ScalarType;

namespace {

using ResultWords = std::vector<std::string>;

Options Parse(ResultWords words) {
    words.insert(words.begin(), "tandril-result");
    std::vector<char*> arguments;
    for (std::string& word : words) {
        arguments.push_back(word.data());
    }
    arguments.push_back(nullptr);
    return ParseOptions(static_cast<int>(words.size()), arguments.data());
}

TEST(OptionsTest, Fields_AreKeptInTheirOrder) {
    const Options options =
        Parse({"--from=json", "--structure", "Disk", "--field", "B:int=b", "--field=A", "--default",
               "A=x=y", "--default=B=", "--fill", "--infer", "--one"});
    EXPECT_EQ(options.format, Format::Json);
    EXPECT_EQ(options.fields.structure, "Disk");
    ASSERT_EQ(options.fields.fields.size(), 2U);
    EXPECT_EQ(options.fields.fields[0].name, "B");
    EXPECT_EQ(options.fields.fields[1].name, "A");
    EXPECT_EQ(options.fields.defaults,
              (std::map<std::string, std::string>{{"A", "x=y"}, {"B", ""}}));
    EXPECT_TRUE(options.fields.fill);
    EXPECT_TRUE(options.fields.infer);
    EXPECT_TRUE(options.fields.isTyped);
    EXPECT_TRUE(options.one);
    EXPECT_EQ(options.listType, std::nullopt);
}

TEST(OptionsTest, Nesting_KeysThatHoldRecordsAreNoFields) {
    const Options options =
        Parse({"--from=jsonl", "--structure=T", "--rows=a.b", "--each=e", "--children=c"});
    EXPECT_EQ(options.format, Format::JsonLines);
    EXPECT_EQ(options.rowsPath, (ResultWords{"a", "b"}));
    EXPECT_EQ(options.nesting.each, "e");
    EXPECT_EQ(options.nesting.children, "c");
    EXPECT_EQ(options.fields.nested, (std::set<std::string>{"c", "e"}));
}

TEST(OptionsTest, TextFormats_AreNotTyped) {
    const Options options = Parse({"--from=tsv", "--structure=T", "--columns=a,,c d"});
    EXPECT_EQ(options.columns, (ResultWords{"a", "", "c d"}));
    EXPECT_FALSE(options.fields.isTyped);
    EXPECT_EQ(options.fields.nested, std::set<std::string>{});
}

TEST(OptionsTest, Program_EverythingBehindTheDashesIsIts) {
    const Options options = Parse(
        {"--from=lines", "--list=int", "--empty-status=1", "--", "tool", "--from", "--", "x"});
    EXPECT_EQ(options.program, (ResultWords{"tool", "--from", "--", "x"}));
    EXPECT_EQ(options.emptyStatus, 1);
    EXPECT_EQ(options.listType, ScalarType::Int);
}

TEST(OptionsTest, NothingBehindTheDashes_StandardInputIsRead) {
    EXPECT_EQ(Parse({"--from=lines", "--list=string", "--"}).program, ResultWords{});
}

TEST(OptionsTest, HelpAndVersion_NeedNothingElse) {
    EXPECT_TRUE(Parse({"--help"}).help);
    EXPECT_TRUE(Parse({"--version"}).version);
}

struct BadOptions : TestSupport::NamedRow {
    ResultWords words;
    std::string error;
};

class BadOptionsTest : public testing::TestWithParam<BadOptions> {};

TEST_P(BadOptionsTest, WordsThatMakeNoSense_AreRefused) {
    EXPECT_EQ(ErrorOf([] { Parse(GetParam().words); }),
              "result: " + GetParam().error + " (tandril-result --help explains)");
}

const std::string kFieldsOnly =
    "--list makes values without fields, so only --structure goes with --field, --default, "
    "--fill, --infer, --each, --children and --columns";
const std::string kJsonOnly = "--rows, --each and --children go with json and jsonl only";

const std::vector<BadOptions> kBadOptions = {
    {{"Nothing"}, {}, "--from is needed"},
    {{"NoShape"}, {"--from=json"}, "Either --structure or --list is needed"},
    {{"TwoShapes"},
     {"--from=json", "--structure=T", "--list=int"},
     "Either --structure or --list is needed"},
    {{"UnknownOption"}, {"--form=x"}, "Unknown option or value where none belongs: '--form=x'"},
    {{"ShortOption"}, {"-f"}, "Unknown option or value where none belongs: '-f'"},
    {{"ValueOfASwitch"}, {"--one=1"}, "Unknown option or value where none belongs: '--one=1'"},
    {{"NoValue"}, {"--from"}, "The option --from needs a value"},
    {{"Word"}, {"--from=json", "x"}, "Unexpected word 'x': a program stands behind --"},
    {{"Format"}, {"--from=xml"}, "Unknown format 'xml' for --from"},
    {{"ListType"}, {"--list=float"}, "Unknown type 'float' for --list"},
    {{"ListOfLists"}, {"--list=int-list"}, "Unknown type 'int-list' for --list"},
    {{"StructureName"},
     {"--structure=a_b"},
     "Invalid name for a structure: 'a_b'; it must consist of letters and digits"},
    {{"FieldTwice"}, {"--field=A", "--field=A:int=b"}, "--field 'A' is given twice"},
    {{"DefaultWithoutValue"}, {"--default=A"}, "--default 'A' has no '=' between field and value"},
    {{"ColumnTwice"}, {"--columns=a,b,a"}, "--columns names 'a' twice"},
    {{"StatusTooLarge"},
     {"--empty-status=256"},
     "--empty-status must be a number from 0 to 255, not '256'"},
    {{"StatusBelowZero"},
     {"--empty-status=-1"},
     "--empty-status must be a number from 0 to 255, not '-1'"},
    {{"StatusNoNumber"},
     {"--empty-status=x"},
     "--empty-status must be a number from 0 to 255, not 'x'"},
    {{"StatusWithoutProgram"},
     {"--from=json", "--list=int", "--empty-status=1"},
     "--empty-status needs a program behind --"},
    {{"ArgumentWithoutProgram"},
     {"--from=json", "--list=int", "--argument-from-input"},
     "--argument-from-input needs a program behind --"},
    {{"FieldOfAList"}, {"--from=json", "--list=int", "--field=A"}, kFieldsOnly},
    {{"DefaultOfAList"}, {"--from=json", "--list=int", "--default=A=1"}, kFieldsOnly},
    {{"FillOfAList"}, {"--from=json", "--list=int", "--fill"}, kFieldsOnly},
    {{"InferOfAList"}, {"--from=json", "--list=int", "--infer"}, kFieldsOnly},
    {{"EachOfAList"}, {"--from=json", "--list=int", "--each=a"}, kFieldsOnly},
    {{"ChildrenOfAList"}, {"--from=json", "--list=int", "--children=a"}, kFieldsOnly},
    {{"ColumnsOfAList"}, {"--from=nul", "--list=int", "--columns=a"}, kFieldsOnly},
    {{"ListOfTsv"}, {"--from=tsv", "--list=int"}, "--list does not go with --from tsv"},
    {{"ListOfCsv"}, {"--from=csv", "--list=int"}, "--list does not go with --from csv"},
    {{"ListOfPairs"}, {"--from=pairs", "--list=int"}, "--list does not go with --from pairs"},
    {{"StructureOfLines"}, {"--from=lines", "--structure=T"}, "--from lines goes with --list only"},
    {{"RowsOfTsv"}, {"--from=tsv", "--structure=T", "--rows=a"}, kJsonOnly},
    {{"EachOfTsv"}, {"--from=tsv", "--structure=T", "--each=a"}, kJsonOnly},
    {{"ChildrenOfPairs"}, {"--from=pairs", "--structure=T", "--children=a"}, kJsonOnly},
    {{"ColumnsOfJson"},
     {"--from=json", "--structure=T", "--columns=a"},
     "--columns goes with tsv, csv and nul only"},
};

INSTANTIATE_TEST_SUITE_P(All, BadOptionsTest, testing::ValuesIn(kBadOptions),
                         TestSupport::kRowName);

} // namespace
