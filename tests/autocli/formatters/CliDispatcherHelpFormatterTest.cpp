#include <CppTools/autocli/formatters/CliDispatcherHelpFormatter.h>

#include <tests/support/ImpostorValue.h>
#include <tests/support/NamedRow.h>
#include <tests/support/Rendering.h>
#include <tests/support/Thrown.h>
#include <tests/support/Values.h>
#include <tests/support/Wrapping.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

namespace {

using CppTools::AutoCli::CliDispatcherHelpFormatter;
using CppTools::AutoCli::DisplayContext;
using CppTools::AutoCli::FormatParameters;
using CppTools::CallSpec::Output;
using CppTools::MetaObj::MetaList;
using CppTools::MetaObj::MetaType;
using TestSupport::Bool;
using TestSupport::DocumentedParams;
using TestSupport::DocumentedParamsOf;
using TestSupport::ImpostorValue;
using TestSupport::Int;
using TestSupport::kRowName;
using TestSupport::NamedRow;
using TestSupport::Record;
using TestSupport::RenderWith;
using TestSupport::Rows;
using TestSupport::Struct;
using TestSupport::Text;
using TestSupport::Texts;
using TestSupport::ThrownBy;
using TestSupport::Value;
using TestSupport::WrongRoot;

struct Node {
    std::string type;
    std::string name;
    std::string description;
};

Record NodeRecord(const Node& node) {
    return Struct("NamespaceNode", {{"Type", Text(node.type)},
                                    {"Name", Text(node.name)},
                                    {"Description", Text(node.description)}});
}

std::shared_ptr<MetaList> NodeList(const std::vector<Node>& nodes) {
    std::vector<Record> rows;
    for (const auto& node : nodes) {
        rows.push_back(NodeRecord(node));
    }
    return Rows(NodeRecord({}), rows);
}

Record ListingRecord(const std::vector<std::string>& path, const Value& nodes) {
    return Struct(
        "TandrilCommandPrint",
        {{"Dispatcher", Text("tandril")}, {"Path", Texts(path)}, {"NamespaceNodes", nodes}});
}

std::string Listing(const Value& record, int width = 0) {
    const auto [result, text] =
        RenderWith<CliDispatcherHelpFormatter>(record, {}, static_cast<std::uint16_t>(width));
    EXPECT_TRUE(result);
    return text;
}

/// The text of one kind's table.
std::string TableOf(const std::string& kind, const std::shared_ptr<MetaList>& nodes,
                    int width = 0) {
    DisplayContext display;
    display.width = static_cast<std::uint16_t>(width);
    std::ostringstream out;
    EXPECT_TRUE(CliDispatcherHelpFormatter().HandleList(kind, nodes, display, out));
    return out.str();
}

constexpr const char* kHeading = "Usage: tandril [disp options] <namespaces> <command>\n"
                                 "\n"
                                 "For help please run tandril --help\n"
                                 "\n";

constexpr const char* kEmptyTables = "Available Namespaces: \n"
                                     "\n"
                                     "\n"
                                     "Available Commands: \n"
                                     "\n"
                                     "\n";

TEST(CliDispatcherHelpFormatterTest, Name_IsClihelp) {
    EXPECT_EQ(CliDispatcherHelpFormatter().GetName(), "clihelp");
}

TEST(CliDispatcherHelpFormatterTest, Description_IsTheSentenceForUsers) {
    EXPECT_EQ(CliDispatcherHelpFormatter().GetDescription(),
              "Format the --help output for all commands.");
}

TEST(CliDispatcherHelpFormatterTest, Params_NoneAreDocumented) {
    EXPECT_EQ(DocumentedParamsOf(CliDispatcherHelpFormatter()), DocumentedParams());
}

// --- Roots

class CliDispatcherHelpRootTest : public testing::TestWithParam<WrongRoot> {};

TEST_P(CliDispatcherHelpRootTest, AnythingButAListingIsRefusedBeforeAnythingIsWritten) {
    const auto output = Output::New();
    output->SetRootObject(GetParam().root);
    FormatParameters params;
    DisplayContext display;
    std::ostringstream out;
    EXPECT_EQ(ThrownBy([&] { CliDispatcherHelpFormatter().Format(output, params, display, out); }),
              "Error: Unexpected type for help output, formatter expected a struct with help data");
    EXPECT_EQ(out.str(), "");
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, CliDispatcherHelpRootTest,
    testing::Values(WrongRoot{{"Nothing"}, nullptr}, WrongRoot{{"Integer"}, Int(1)},
                    WrongRoot{{"String"}, Text("TandrilCommandPrint")},
                    WrongRoot{{"List"}, Texts({})},
                    WrongRoot{{"OtherType"}, Struct("TandrilCommandHelp", {})},
                    WrongRoot{{"OtherCase"}, Struct("tandrilCommandPrint", {})},
                    WrongRoot{{"LongerType"}, Struct("TandrilCommandPrint2", {})},
                    WrongRoot{{"Impostor"}, ImpostorValue::New(MetaType::Struct)}),
    kRowName);

// --- ExtractString

TEST(ExtractStringTest, StringField_IsItsValue) {
    std::string value = "before";
    EXPECT_TRUE(CliDispatcherHelpFormatter().ExtractString(
        "Name", Struct("T", {{"Name", Text("some text")}}), value));
    EXPECT_EQ(value, "some text");
}

TEST(ExtractStringTest, EmptyStringField_IsEmpty) {
    std::string value = "before";
    EXPECT_TRUE(CliDispatcherHelpFormatter().ExtractString(
        "Name", Struct("T", {{"Name", Text("")}}), value));
    EXPECT_EQ(value, "");
}

TEST(ExtractStringTest, AbsentField_IsItsNameInAngleBrackets) {
    std::string value = "before";
    EXPECT_FALSE(CliDispatcherHelpFormatter().ExtractString("Some Name", Struct("T", {}), value));
    EXPECT_EQ(value, "<Some Name>");
}

TEST(ExtractStringTest, FieldOfAnotherKind_IsItsNameInAngleBrackets) {
    for (const auto& other : {Int(1), Bool(true), Texts({"x"}), Value(Struct("I", {}))}) {
        std::string value = "before";
        EXPECT_FALSE(CliDispatcherHelpFormatter().ExtractString(
            "Name", Struct("T", {{"Name", other}}), value));
        EXPECT_EQ(value, "<Name>");
    }
}

// --- The listing

TEST(CliDispatcherHelpFormatterTest, Format_WholeListing) {
    const auto nodes = NodeList({{"Namespace", "disk", "Disks of the machine"},
                                 {"Command", "version", "Version of the machine"},
                                 {"Namespace", "network", "Networks"},
                                 {"Command", "uptime", "Time since the start"}});
    EXPECT_EQ(Listing(ListingRecord({}, nodes), 80),
              "Usage: tandril [disp options] <namespaces> <command>\n"
              "\n"
              "For help please run tandril --help\n"
              "\n"
              "Available Namespaces: \n"
              "\n"
              "disk     Disks of the machine\n"
              "network  Networks\n"
              "\n"
              "Available Commands: \n"
              "\n"
              "version  Version of the machine\n"
              "uptime   Time since the start\n"
              "\n");
}

TEST(CliDispatcherHelpFormatterTest, Format_PathStandsInTheUsage) {
    EXPECT_EQ(Listing(ListingRecord({"system", "disk"}, NodeList({}))),
              std::string("Usage: tandril [disp options] system disk <namespaces> <command>\n"
                          "\n"
                          "For help please run tandril --help\n"
                          "\n") +
                  kEmptyTables);
}

TEST(CliDispatcherHelpFormatterTest, Format_PathOfIntegersIsPrintedToo) {
    const auto record = ListingRecord({}, NodeList({}));
    record->SetField("Path", TestSupport::Ints({1, 2}));
    EXPECT_EQ(Listing(record),
              std::string("Usage: tandril [disp options] 1 2 <namespaces> <command>\n"
                          "\n"
                          "For help please run tandril --help\n"
                          "\n") +
                  kEmptyTables);
}

TEST(CliDispatcherHelpFormatterTest, Format_NoNodes_TablesAreEmpty) {
    EXPECT_EQ(Listing(ListingRecord({}, NodeList({}))), std::string(kHeading) + kEmptyTables);
}

TEST(CliDispatcherHelpFormatterTest, Format_NoTemplate_TablesAreEmpty) {
    EXPECT_EQ(Listing(ListingRecord({}, Rows(nullptr, {}))), std::string(kHeading) + kEmptyTables);
}

TEST(CliDispatcherHelpFormatterTest, Format_NoDispatcher_APlaceholderStandsForIt) {
    const auto record = Struct("TandrilCommandPrint",
                               {{"Path", Texts({"disk"})}, {"NamespaceNodes", NodeList({})}});
    EXPECT_EQ(Listing(record),
              std::string("Usage: <Dispatcher> [disp options] disk <namespaces> <command>\n"
                          "\n"
                          "For help please run <Dispatcher> --help\n"
                          "\n") +
                  kEmptyTables);
}

TEST(CliDispatcherHelpFormatterTest, Format_ListsThatAreNoLists_AreReportedOrLeftOut) {
    const std::string reported = std::string(kHeading) + "Available Namespaces: \n"
                                                         "\n"
                                                         "ERROR, list is bad\n"
                                                         "Available Commands: \n"
                                                         "\n"
                                                         "ERROR, list is bad\n";
    EXPECT_EQ(Listing(Struct("TandrilCommandPrint", {{"Dispatcher", Text("tandril")}})), reported);
    EXPECT_EQ(Listing(Struct("TandrilCommandPrint", {{"Dispatcher", Text("tandril")},
                                                     {"Path", Text("disk")},
                                                     {"NamespaceNodes", Text("disk")}})),
              reported);
}

TEST(CliDispatcherHelpFormatterTest, Format_ParametersDoNotMatter) {
    const auto record = ListingRecord({}, NodeList({{"Command", "a", "aaaa bbbb cccc dddd"}}));
    EXPECT_EQ(RenderWith<CliDispatcherHelpFormatter>(record,
                                                     {{"fields", "Type"},
                                                      {"fields:NamespaceNode", "Type"},
                                                      {"show-header", "true"},
                                                      {"wrap-last", "false"},
                                                      {"units:NamespaceNode.Name", "MB"}},
                                                     20),
              RenderWith<CliDispatcherHelpFormatter>(record, {}, 20));
}

TEST(CliDispatcherHelpFormatterTest, Format_KeepsNothingBetweenCalls) {
    CliDispatcherHelpFormatter formatter;
    const auto some = ListingRecord({}, NodeList({{"Command", "a", "One."}}));
    const auto first = TestSupport::Render(formatter, some);
    EXPECT_EQ(TestSupport::Render(formatter, ListingRecord({}, NodeList({}))).second,
              std::string(kHeading) + kEmptyTables);
    EXPECT_EQ(TestSupport::Render(formatter, some), first);
}

// --- HandleList

TEST(HandleListTest, OnlyNodesOfTheKindAreListed) {
    const auto nodes = NodeList({{"Namespace", "a", "One."},
                                 {"namespace", "b", "Two."},
                                 {"Unknown", "c", "Three."},
                                 {"Namespaces", "d", "Four."},
                                 {"", "e", "Five."},
                                 {"Command", "f", "Six."},
                                 {"Namespace", "g", "Seven."}});
    EXPECT_EQ(TableOf("Namespace", nodes), "Available Namespaces: \n"
                                           "\n"
                                           "a     One.\n"
                                           "g     Seven.\n"
                                           "\n");
    EXPECT_EQ(TableOf("Command", nodes), "Available Commands: \n"
                                         "\n"
                                         "f     Six.\n"
                                         "\n");
}

TEST(HandleListTest, TypeIsComparedByItsPlainText) {
    const auto nodes =
        Rows({Struct("N", {{"Type", Int(7)}, {"Name", Text("a")}, {"Description", Text("b")}})});
    EXPECT_EQ(TableOf("7", nodes), "Available 7s: \n\na     b\n\n");
}

TEST(HandleListTest, NodesKeepTheirOrder) {
    const auto nodes =
        NodeList({{"Command", "z", "1"}, {"Command", "a", "2"}, {"Command", "m", "3"}});
    EXPECT_EQ(TableOf("Command", nodes), "Available Commands: \n"
                                         "\n"
                                         "z     1\n"
                                         "a     2\n"
                                         "m     3\n"
                                         "\n");
}

TEST(HandleListTest, NamesArePaddedToTheLongestOfTheKind) {
    const auto nodes = NodeList({{"Command", "a", "1"},
                                 {"Command", "long", "2"},
                                 {"Command", "longest", "3"},
                                 {"Namespace", "much-longer", "4"}});
    EXPECT_EQ(TableOf("Command", nodes), "Available Commands: \n"
                                         "\n"
                                         "a        1\n"
                                         "long     2\n"
                                         "longest  3\n"
                                         "\n");
}

TEST(HandleListTest, ShortNamesArePaddedToTheNameOfTheColumn) {
    EXPECT_EQ(TableOf("Command", NodeList({{"Command", "a", "1"}})), "Available Commands: \n"
                                                                     "\n"
                                                                     "a     1\n"
                                                                     "\n");
}

TEST(HandleListTest, DescriptionsAreWrappedAtTheirColumn) {
    const auto nodes = NodeList({{"Command", "version", "aaaa bbbb cccc\ndddd"}});
    EXPECT_EQ(TableOf("Command", nodes, 22), "Available Commands: \n"
                                             "\n"
                                             "version  aaaa bbbb \n"
                                             "         cccc\n"
                                             "         dddd\n"
                                             "\n");
}

TEST(HandleListTest, UnknownWidthWrapsNothing) {
    const auto nodes = NodeList({{"Command", "version", "aaaa bbbb cccc\ndddd"}});
    EXPECT_EQ(TableOf("Command", nodes), "Available Commands: \n"
                                         "\n"
                                         "version  aaaa bbbb cccc\n"
                                         "dddd\n"
                                         "\n");
}

TEST(HandleListTest, EveryWidthAgreesWithWrappingLineByLine) {
    const std::string text = "Lists every thing that there is, with  two blanks\nand a line end";
    for (int width = 1; width <= 120; ++width) {
        // The table wraps only where the name column and the heading "Description" have room.
        const std::string shown = width < 9 + 11 ? text : TestSupport::WrapEachLine(text, 9, width);
        ASSERT_EQ(TableOf("Command", NodeList({{"Command", "version", text}}), width),
                  "Available Commands: \n\nversion  " + shown + "\n\n")
            << "width " << width;
    }
}

TEST(HandleListTest, NoList_IsReportedInTheText) {
    EXPECT_EQ(TableOf("Namespace", nullptr), "Available Namespaces: \n"
                                             "\n"
                                             "ERROR, list is bad\n");
}

TEST(HandleListTest, ElementsThatAreNoStructures_AreSkipped) {
    const auto texts = MetaList::New(MetaType::String);
    texts->Add("Command");
    EXPECT_EQ(TableOf("Command", texts), "Available Commands: \n\n\n");
    const auto nodes = NodeList({{"Command", "a", "One."}, {"Command", "b", "Two."}});
    auto& elements = TestSupport::ElementsOf(nodes);
    elements.insert(elements.begin() + 1, Text("Command"));
    EXPECT_EQ(TableOf("Command", nodes), "Available Commands: \n\na     One.\nb     Two.\n\n");
}

TEST(HandleListTest, NodesWithoutType_AreSkipped) {
    const auto nodes = Rows({Struct("N", {{"Name", Text("a")}, {"Description", Text("b")}})});
    EXPECT_EQ(TableOf("Command", nodes), "Available Commands: \n\n\n");
    EXPECT_EQ(TableOf("", nodes), "Available s: \n\n\n");
}

TEST(HandleListTest, NodesWithoutDescription_AreReportedByTheTable) {
    const auto nodes = Rows({Struct("N", {{"Type", Text("Command")}, {"Name", Text("a")}})});
    EXPECT_EQ(TableOf("Command", nodes), "Available Commands: \n"
                                         "\n"
                                         "Error: Unknown field in field list: Description\n"
                                         "\n");
}

TEST(HandleListTest, NodeThatLostAField_IsReportedInTheText) {
    const auto node = NodeRecord({"Command", "b", "Two."});
    const auto nodes = Rows({NodeRecord({"Namespace", "a", "One."}), node});
    node->RemoveField("Description");
    EXPECT_EQ(TableOf("Command", nodes),
              "Available Commands: \n"
              "\n"
              "Unable to get Descriptions for this command.  Implementation error.\n");
    EXPECT_EQ(TableOf("Namespace", nodes), "Available Namespaces: \n"
                                           "\n"
                                           "a     One.\n"
                                           "\n");
}

TEST(HandleListTest, NodesStayAsTheyWere) {
    const auto nodes = NodeList({{"Namespace", "a", "One."}, {"Command", "b", "Two."}});
    TableOf("Command", nodes);
    EXPECT_EQ(nodes->GetCount(), 2U);
    EXPECT_EQ(nodes->GetItem(0)->ToString(),
              "{'Description' => 'One.', 'Name' => 'a', 'Type' => 'Namespace', }");
}

} // namespace
