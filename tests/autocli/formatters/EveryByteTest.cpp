#include <CppTools/autocli/formatters/CliDispatcherHelpFormatter.h>
#include <CppTools/autocli/formatters/CommandHelpFormatter.h>
#include <CppTools/autocli/formatters/JsonFormatter.h>
#include <CppTools/autocli/formatters/PythonFormatter.h>
#include <CppTools/autocli/formatters/SimpleFormatter.h>
#include <CppTools/autocli/formatters/TableFormatter.h>
#include <CppTools/autocli/formatters/XmlFormatter.h>

#include <tests/support/CommandHelpRecord.h>
#include <tests/support/NamedRow.h>
#include <tests/support/Rendering.h>
#include <tests/support/Values.h>

#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <string>
#include <utility>
#include <vector>

// Where a text of the result or of the parameters arrives in the output, and as what.

namespace {

using CppTools::AutoCli::CliDispatcherHelpFormatter;
using CppTools::AutoCli::CommandHelpFormatter;
using CppTools::AutoCli::JsonFormatter;
using CppTools::AutoCli::PythonFormatter;
using CppTools::AutoCli::SantizeString;
using CppTools::AutoCli::SimpleFormatter;
using CppTools::AutoCli::TableFormatter;
using CppTools::AutoCli::XmlFormatter;
using TestSupport::ExampleList;
using TestSupport::HelpRecord;
using TestSupport::Int;
using TestSupport::kHelpHeading;
using TestSupport::OptionList;
using TestSupport::ParameterEntries;
using TestSupport::RenderAt;
using TestSupport::RenderWith;
using TestSupport::Rows;
using TestSupport::Struct;
using TestSupport::Text;
using TestSupport::Texts;
using TestSupport::Value;

/// What each of the 256 bytes is written as.
using Escapes = std::array<std::string, 256>;

Escapes AsTheyAreBut(const std::vector<std::pair<char, std::string>>& exceptions) {
    Escapes escapes;
    for (std::size_t code = 0; code < escapes.size(); ++code) {
        escapes[code] = static_cast<char>(code);
    }
    for (const auto& [byte, escape] : exceptions) {
        escapes[static_cast<unsigned char>(byte)] = escape;
    }
    return escapes;
}

const Escapes kAsTheyAre = AsTheyAreBut({});

const Escapes kEntities = AsTheyAreBut({{'&', "&amp;"},
                                        {'<', "&lt;"},
                                        {'>', "&gt;"},
                                        {'%', "&#37;"},
                                        {'"', "&quot;"},
                                        {'\'', "&apos;"}});

const Escapes kIndentedInCells = AsTheyAreBut({{'\n', "\n       "}});

const Escapes kIndentedBehindOptions = AsTheyAreBut({{'\n', "\n           "}});

const Escapes kPythonEscapes = AsTheyAreBut({{'"', "\\\""}, {'\n', "\\n"}});

const Escapes kJsonEscapes = {
    "\\u0000", "\\u0001", "\\u0002", "\\u0003", "\\u0004", "\\u0005", "\\u0006", "\\u0007",
    "\\b",     "\\t",     "\\n",     "\\u000b", "\\f",     "\\r",     "\\u000e", "\\u000f",
    "\\u0010", "\\u0011", "\\u0012", "\\u0013", "\\u0014", "\\u0015", "\\u0016", "\\u0017",
    "\\u0018", "\\u0019", "\\u001a", "\\u001b", "\\u001c", "\\u001d", "\\u001e", "\\u001f",
    " ",       "!",       "\\\"",    "#",       "$",       "%",       "&",       "'",
    "(",       ")",       "*",       "+",       ",",       "-",       ".",       "\\/",
    "0",       "1",       "2",       "3",       "4",       "5",       "6",       "7",
    "8",       "9",       ":",       ";",       "<",       "=",       ">",       "?",
    "@",       "A",       "B",       "C",       "D",       "E",       "F",       "G",
    "H",       "I",       "J",       "K",       "L",       "M",       "N",       "O",
    "P",       "Q",       "R",       "S",       "T",       "U",       "V",       "W",
    "X",       "Y",       "Z",       "[",       "\\\\",    "]",       "^",       "_",
    "`",       "a",       "b",       "c",       "d",       "e",       "f",       "g",
    "h",       "i",       "j",       "k",       "l",       "m",       "n",       "o",
    "p",       "q",       "r",       "s",       "t",       "u",       "v",       "w",
    "x",       "y",       "z",       "{",       "|",       "}",       "~",       "\\u007f",
    "\\u0080", "\\u0081", "\\u0082", "\\u0083", "\\u0084", "\\u0085", "\\u0086", "\\u0087",
    "\\u0088", "\\u0089", "\\u008a", "\\u008b", "\\u008c", "\\u008d", "\\u008e", "\\u008f",
    "\\u0090", "\\u0091", "\\u0092", "\\u0093", "\\u0094", "\\u0095", "\\u0096", "\\u0097",
    "\\u0098", "\\u0099", "\\u009a", "\\u009b", "\\u009c", "\\u009d", "\\u009e", "\\u009f",
    "\\u00a0", "\\u00a1", "\\u00a2", "\\u00a3", "\\u00a4", "\\u00a5", "\\u00a6", "\\u00a7",
    "\\u00a8", "\\u00a9", "\\u00aa", "\\u00ab", "\\u00ac", "\\u00ad", "\\u00ae", "\\u00af",
    "\\u00b0", "\\u00b1", "\\u00b2", "\\u00b3", "\\u00b4", "\\u00b5", "\\u00b6", "\\u00b7",
    "\\u00b8", "\\u00b9", "\\u00ba", "\\u00bb", "\\u00bc", "\\u00bd", "\\u00be", "\\u00bf",
    "\\u00c0", "\\u00c1", "\\u00c2", "\\u00c3", "\\u00c4", "\\u00c5", "\\u00c6", "\\u00c7",
    "\\u00c8", "\\u00c9", "\\u00ca", "\\u00cb", "\\u00cc", "\\u00cd", "\\u00ce", "\\u00cf",
    "\\u00d0", "\\u00d1", "\\u00d2", "\\u00d3", "\\u00d4", "\\u00d5", "\\u00d6", "\\u00d7",
    "\\u00d8", "\\u00d9", "\\u00da", "\\u00db", "\\u00dc", "\\u00dd", "\\u00de", "\\u00df",
    "\\u00e0", "\\u00e1", "\\u00e2", "\\u00e3", "\\u00e4", "\\u00e5", "\\u00e6", "\\u00e7",
    "\\u00e8", "\\u00e9", "\\u00ea", "\\u00eb", "\\u00ec", "\\u00ed", "\\u00ee", "\\u00ef",
    "\\u00f0", "\\u00f1", "\\u00f2", "\\u00f3", "\\u00f4", "\\u00f5", "\\u00f6", "\\u00f7",
    "\\u00f8", "\\u00f9", "\\u00fa", "\\u00fb", "\\u00fc", "\\u00fd", "\\u00fe", "\\u00ff"};

struct Place : TestSupport::NamedRow {
    std::reference_wrapper<const Escapes> escapes; // Rows are copied, and at every start.
    std::string before;
    std::string after;
    std::function<std::string(const std::string& text)> render;
};

class EveryByteTest : public testing::TestWithParam<Place> {};

TEST_P(EveryByteTest, ArrivesAsTheTableSays) {
    for (std::size_t code = 0; code < 256; ++code) {
        const std::string text{'a', static_cast<char>(code), static_cast<char>(code), 'b'};
        const std::string& escape = GetParam().escapes.get()[code];
        EXPECT_EQ(GetParam().render(text),
                  GetParam().before + "a" + escape + escape + "b" + GetParam().after)
            << "byte " << code;
    }
}

TEST_P(EveryByteTest, ArrivesAmongAllTheOthers) {
    std::string text;
    std::string written;
    for (std::size_t code = 256; code-- > 0;) {
        text += static_cast<char>(code);
        written += GetParam().escapes.get()[code];
    }
    EXPECT_EQ(GetParam().render(text), GetParam().before + written + GetParam().after);
}

const auto kPlaceName = [](const testing::TestParamInfo<Place>& row) { return row.param.name; };

/// Renders what `make` makes of a text.
template <typename ConcreteFormatter>
auto Showing(std::function<Value(const std::string&)> make, ParameterEntries entries = {},
             std::uint16_t width = 0) {
    return [make = std::move(make), entries = std::move(entries), width](const std::string& text) {
        return RenderWith<ConcreteFormatter>(make(text), entries, width).second;
    };
}

/// Renders `root` with the text as the value of a parameter.
template <typename ConcreteFormatter>
auto ShowingParameter(const Value& root, const std::string& key) {
    return [root, key](const std::string& text) {
        return RenderWith<ConcreteFormatter>(root, {{key, text}}).second;
    };
}

Value FieldOf(const std::string& text) {
    return Struct("T", {{"a", Text(text)}});
}

Value FieldNamed(const std::string& name) {
    return Struct("T", {{name, Int(1)}});
}

INSTANTIATE_TEST_SUITE_P(
    Simple, EveryByteTest,
    testing::Values(
        Place{{"Root"}, kAsTheyAre, "", "\n", Showing<SimpleFormatter>(Text)},
        Place{{"Field"}, kAsTheyAre, "T:\n   a: ", "\n", Showing<SimpleFormatter>(FieldOf)},
        Place{{"FieldName"}, kAsTheyAre, "T:\n   ", ": 1\n", Showing<SimpleFormatter>(FieldNamed)},
        Place{{"ListElement"},
              kAsTheyAre,
              "first, ",
              "\n",
              Showing<SimpleFormatter>([](const std::string& text) {
                  return Texts({"first", text});
              })},
        Place{{"Units"},
              kAsTheyAre,
              "T:\n   a: 1 ",
              "\n",
              ShowingParameter<SimpleFormatter>(Struct("T", {{"a", Int(1)}}), "units:T.a")},
        Place{{"Header"},
              kAsTheyAre,
              "",
              ":\n",
              ShowingParameter<SimpleFormatter>(Struct("T", {}), "header:T")}),
    kPlaceName);

Value RowOf(const std::string& first, const std::string& last) {
    return Rows({Struct("T", {{"a", Text(first)}, {"b", Text(last)}})});
}

INSTANTIATE_TEST_SUITE_P(
    Table, EveryByteTest,
    testing::Values(
        Place{{"Cell"},
              kAsTheyAre,
              "",
              "  last\n",
              Showing<TableFormatter>([](const std::string& text) { return RowOf(text, "last"); },
                                      {{"show-header", "false"}})},
        Place{{"LastCell"},
              kAsTheyAre,
              "first  ",
              "\n",
              Showing<TableFormatter>([](const std::string& text) { return RowOf("first", text); },
                                      {{"show-header", "false"}})},
        Place{{"WrappedCell"},
              kIndentedInCells,
              "first  ",
              "\n",
              Showing<TableFormatter>([](const std::string& text) { return RowOf("first", text); },
                                      {{"show-header", "false"}, {"wrap-last", "true"}}, 500)}),
    kPlaceName);

const std::string kXmlHead = "<?xml version=\"1.0\"?>\n"
                             "<output xmlns:tandril=\"urn:corvane:tandril:output:1\">\n"
                             "   <meta-data>\n";
const std::string kXmlTail = "   </meta-data>\n"
                             "   <root>\n"
                             "      <integer>1</integer>\n"
                             "   </root>\n"
                             "</output>\n";

INSTANTIATE_TEST_SUITE_P(
    Xml, EveryByteTest,
    testing::Values(
        Place{{"SantizeString"}, kEntities, "", "", SantizeString},
        Place{{"String"},
              kEntities,
              "<string>",
              "</string>\n",
              [](const std::string& text) { return RenderAt<XmlFormatter>(0, Text(text)); }},
        Place{{"FieldName"},
              kEntities,
              "<structure typeName=\"T\">\n   <field name=\"",
              "\">\n      <integer>1</integer>\n   </field>\n</structure>\n",
              [](const std::string& text) { return RenderAt<XmlFormatter>(0, FieldNamed(text)); }},
        Place{{"ParameterKey"},
              kEntities,
              kXmlHead + "      <meta-data-field name=\"",
              "\" value=\"v\"/>\n" + kXmlTail,
              [](const std::string& text) {
                  return RenderWith<XmlFormatter>(Int(1), {{text, "v"}}).second;
              }},
        Place{{"ParameterValue"},
              kEntities,
              kXmlHead + "      <meta-data-field name=\"k\" value=\"",
              "\"/>\n" + kXmlTail,
              ShowingParameter<XmlFormatter>(Int(1), "k")}),
    kPlaceName);

INSTANTIATE_TEST_SUITE_P(
    Json, EveryByteTest,
    testing::Values(Place{{"String"}, kJsonEscapes, "\"", "\"\n", Showing<JsonFormatter>(Text)},
                    Place{{"FieldName"},
                          kAsTheyAre,
                          "\n{\n   \"",
                          "\": 1\n}\n",
                          Showing<JsonFormatter>(FieldNamed)}),
    kPlaceName);

INSTANTIATE_TEST_SUITE_P(
    Python, EveryByteTest,
    testing::Values(
        Place{{"String"}, kPythonEscapes, "\"\"\"", "\"\"\"\n", Showing<PythonFormatter>(Text)},
        Place{
            {"FieldName"}, kAsTheyAre, "{\"", "\": 1, }\n", Showing<PythonFormatter>(FieldNamed)}),
    kPlaceName);

INSTANTIATE_TEST_SUITE_P(
    CommandHelp, EveryByteTest,
    testing::Values(Place{{"Description"},
                          kAsTheyAre,
                          "Usage: tandril disk list <options>\n\nDescription: ",
                          "\n\n",
                          Showing<CommandHelpFormatter>([](const std::string& text) {
                              const auto record = HelpRecord(OptionList({}), ExampleList({}));
                              record->SetField("Description", text);
                              return record;
                          })},
                    Place{{"OptionName"},
                          kAsTheyAre,
                          kHelpHeading + std::string("     --"),
                          "   One.\n",
                          Showing<CommandHelpFormatter>([](const std::string& text) {
                              return HelpRecord(OptionList({{text, "", "One."}}), ExampleList({}));
                          })},
                    Place{{"OptionDescription"},
                          kIndentedBehindOptions,
                          kHelpHeading + std::string("     --a   "),
                          "\n",
                          Showing<CommandHelpFormatter>([](const std::string& text) {
                              return HelpRecord(OptionList({{"a", "", text}}), ExampleList({}));
                          })},
                    Place{{"ExampleSyntax"},
                          kAsTheyAre,
                          kHelpHeading + std::string("\nExamples: \n\n    x :\n"
                                                     "# tandril disk list "),
                          "        \n\n",
                          Showing<CommandHelpFormatter>([](const std::string& text) {
                              return HelpRecord(OptionList({}), ExampleList({{"x", text}}));
                          })}),
    kPlaceName);

Value ListingOf(const std::string& name, const std::string& description) {
    const auto node = Struct(
        "N", {{"Type", Text("Command")}, {"Name", Text(name)}, {"Description", Text(description)}});
    return Struct(
        "TandrilCommandPrint",
        {{"Dispatcher", Text("tandril")}, {"Path", Texts({})}, {"NamespaceNodes", Rows({node})}});
}

const std::string kListingHeading = "Usage: tandril [disp options] <namespaces> <command>\n\n"
                                    "For help please run tandril --help\n\n"
                                    "Available Namespaces: \n\n\n"
                                    "Available Commands: \n\n";

INSTANTIATE_TEST_SUITE_P(
    CliHelp, EveryByteTest,
    testing::Values(Place{{"Name"},
                          kAsTheyAre,
                          kListingHeading,
                          "  What it does\n\n",
                          Showing<CliDispatcherHelpFormatter>([](const std::string& text) {
                              return ListingOf(text, "What it does");
                          })},
                    Place{{"Description"},
                          kAsTheyAre,
                          kListingHeading + "name  ",
                          "\n\n",
                          Showing<CliDispatcherHelpFormatter>([](const std::string& text) {
                              return ListingOf("name", text);
                          })}),
    kPlaceName);

} // namespace
