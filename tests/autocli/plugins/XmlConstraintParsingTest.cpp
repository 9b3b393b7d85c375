#include <CppTools/autocli/plugins/ExtensionCommand.h>
#include <CppTools/autocli/plugins/XmlPlugin.h>
#include <CppTools/callspec/InputSpec.h>

#include <gtest/gtest.h>
#include <tests/support/CommandDescriptor.h>
#include <tests/support/NamedRow.h>
#include <tests/support/TempDirectory.h>
#include <tests/support/TreeLookup.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace {

using CppTools::AutoCli::ExtensionCommand;
using CppTools::AutoCli::XmlPlugin;
using CppTools::CallSpec::ParameterConstraint;
using CppTools::CallSpec::ParameterConstraintType;
using TestSupport::kRowName;
using TestSupport::NamedRow;
using TestSupport::NewRoot;
using TestSupport::NodeAt;
using TestSupport::ParameterDescriptor;
using TestSupport::ParameterElement;
using TestSupport::TempDirectory;

using Texts = std::vector<std::string>;

/// The constraint of a parameter of that type whose constraint elements these are.
std::shared_ptr<ParameterConstraint> ConstraintOf(const std::string& type,
                                                  const std::string& constraints) {
    const TempDirectory directory;
    const auto plugin = XmlPlugin::New(directory.Write(
        "demo.xml",
        ParameterDescriptor(ParameterElement("name=\"size\" type=\"" + type + "\"",
                                             "<description>S.</description>" + constraints))));
    plugin->Initialize();
    const auto root = NewRoot();
    plugin->RegisterNamespaces(root);
    return NodeAt<ExtensionCommand>(root, {"demo", "run"})
        ->GetInputSpecInternal()
        ->FindParameter("size")
        ->GetConstraint();
}

struct ConstraintRow : NamedRow {
    std::string type;
    std::string constraints;
    ParameterConstraintType kind;
    std::string text;
};

class XmlConstraintParsingTest : public testing::TestWithParam<ConstraintRow> {};

TEST_P(XmlConstraintParsingTest, Constraint_IsBuiltFromItsChildren) {
    const auto constraint = ConstraintOf(GetParam().type, GetParam().constraints);
    ASSERT_NE(constraint, nullptr);
    EXPECT_EQ(constraint->GetType(), GetParam().kind);
    EXPECT_EQ(constraint->ToString(), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    StringEnums, XmlConstraintParsingTest,
    testing::Values(
        ConstraintRow{{"Values"},
                      "string",
                      R"(<constraint type="stringenum"><enum>
                           <enum-value value="on">switched on</enum-value> text <!-- c -->
                           <enum-value value="off">switched off</enum-value>
                         </enum></constraint>)",
                      ParameterConstraintType::StringEnum,
                      "[on, off]"},
        ConstraintRow{{"OnAList"},
                      "string-list",
                      "<constraint type=\"stringenum\"><enum><enum-value value=\"a\">A"
                      "</enum-value></enum></constraint>",
                      ParameterConstraintType::StringEnum,
                      "[a]"},
        ConstraintRow{{"ValueWithoutTextMakesNoEntry"},
                      "string",
                      "<constraint type=\"stringenum\"><enum><enum-value value=\"a\"/>"
                      "<enum-value value=\"b\">B</enum-value></enum></constraint>",
                      ParameterConstraintType::StringEnum,
                      "[b]"},
        ConstraintRow{{"ElementInAValueCarriesNoText"},
                      "string",
                      "<constraint type=\"stringenum\"><enum><enum-value value=\"a\"><b>B</b>"
                      "</enum-value><enum-value value=\"c\"><d/>C<e/></enum-value></enum>"
                      "</constraint>",
                      ParameterConstraintType::StringEnum,
                      "[c]"},
        ConstraintRow{{"LastEnumDecides"},
                      "string",
                      "<constraint type=\"stringenum\"><enum><enum-value value=\"a\">A"
                      "</enum-value></enum><enum><enum-value value=\"b\">B</enum-value></enum>"
                      "</constraint>",
                      ParameterConstraintType::StringEnum,
                      "[b]"},
        ConstraintRow{{"ChildrenOfOtherKindsAreIgnored"},
                      "string",
                      "<constraint type=\"stringenum\"><regex/><range/><enum><enum-value "
                      "value=\"a\">A</enum-value></enum><regex>x</regex><other/></constraint>",
                      ParameterConstraintType::StringEnum,
                      "[a]"},
        ConstraintRow{{"ElementsNamedTextAndCommentArePassedOver"},
                      "string",
                      "<constraint type=\"stringenum\"><enum><text/><comment/><enum-value "
                      "value=\"a\">A</enum-value></enum></constraint>",
                      ParameterConstraintType::StringEnum,
                      "[a]"}),
    kRowName);

INSTANTIATE_TEST_SUITE_P(
    IntEnums, XmlConstraintParsingTest,
    testing::Values(
        ConstraintRow{{"Values"},
                      "int",
                      "<constraint type=\"intenum\"><enum><enum-value value=\"3\">three"
                      "</enum-value><enum-value value=\"1\">one</enum-value></enum></constraint>",
                      ParameterConstraintType::IntEnum,
                      "[3, 1]"},
        ConstraintRow{{"OnAList"},
                      "int-list",
                      "<constraint type=\"intenum\"><enum><enum-value value=\"3\">three"
                      "</enum-value></enum></constraint>",
                      ParameterConstraintType::IntEnum,
                      "[3]"},
        ConstraintRow{{"ReadLikeAStreamReads"},
                      "int",
                      "<constraint type=\"intenum\"><enum><enum-value value=\" 7\">a</enum-value>"
                      "<enum-value value=\"+8\">a</enum-value><enum-value value=\"-9\">a"
                      "</enum-value><enum-value value=\"12abc\">a</enum-value><enum-value "
                      "value=\"0x10\">a</enum-value><enum-value value=\"1 2\">a</enum-value>"
                      "</enum></constraint>",
                      ParameterConstraintType::IntEnum,
                      "[7, 8, -9, 12, 0, 1]"},
        ConstraintRow{{"Extremes"},
                      "int",
                      "<constraint type=\"intenum\"><enum><enum-value "
                      "value=\"9223372036854775807\">a</enum-value><enum-value "
                      "value=\"-9223372036854775808\">a</enum-value></enum></constraint>",
                      ParameterConstraintType::IntEnum,
                      "[9223372036854775807, -9223372036854775808]"},
        ConstraintRow{{"LastEnumDecides"},
                      "int",
                      "<constraint type=\"intenum\"><enum><enum-value value=\"1\">a</enum-value>"
                      "</enum><enum><enum-value value=\"1\">a</enum-value><enum-value value=\"2\">"
                      "b</enum-value></enum></constraint>",
                      ParameterConstraintType::IntEnum,
                      "[1, 2]"}),
    kRowName);

INSTANTIATE_TEST_SUITE_P(
    Regexes, XmlConstraintParsingTest,
    testing::Values(
        ConstraintRow{{"Expression"},
                      "string",
                      R"(<constraint type="regex"><regex>[a-z]+\d{2}</regex></constraint>)",
                      ParameterConstraintType::StringRegex,
                      R"(a string matching the regular expression [a-z]+\d{2})"},
        ConstraintRow{{"OnAList"},
                      "string-list",
                      R"(<constraint type="regex"><regex>a|b</regex></constraint>)",
                      ParameterConstraintType::StringRegex,
                      "a string matching the regular expression a|b"},
        ConstraintRow{{"LastOneWins"},
                      "string",
                      "<constraint type=\"regex\"><enum/><regex>a</regex><regex>b</regex>"
                      "</constraint>",
                      ParameterConstraintType::StringRegex,
                      "a string matching the regular expression b"},
        ConstraintRow{{"IsNotTriedBeforeItIsUsed"},
                      "string",
                      R"(<constraint type="regex"><regex>(</regex></constraint>)",
                      ParameterConstraintType::StringRegex,
                      "a string matching the regular expression ("},
        ConstraintRow{{"BlanksAreKept"},
                      "string",
                      R"(<constraint type="regex"><regex> a </regex></constraint>)",
                      ParameterConstraintType::StringRegex,
                      "a string matching the regular expression  a "}),
    kRowName);

INSTANTIATE_TEST_SUITE_P(
    Ranges, XmlConstraintParsingTest,
    testing::Values(
        ConstraintRow{{"Bounds"},
                      "int",
                      R"(<constraint type="range"><range min="-5" max="10"/></constraint>)",
                      ParameterConstraintType::IntRange,
                      "integer in the range -5-10"},
        ConstraintRow{{"OnAList"},
                      "int-list",
                      R"(<constraint type="range"><range min="1" max="1"/></constraint>)",
                      ParameterConstraintType::IntRange,
                      "integer in the range 1-1"},
        ConstraintRow{{"LastOneWins"},
                      "int",
                      "<constraint type=\"range\"><regex/><range min=\"1\" max=\"2\"/>"
                      "<range min=\"3\" max=\"4\"/></constraint>",
                      ParameterConstraintType::IntRange,
                      "integer in the range 3-4"},
        ConstraintRow{{"ReadLikeAStreamReads"},
                      "int",
                      R"(<constraint type="range"><range min=" +1x" max="0012 3"/></constraint>)",
                      ParameterConstraintType::IntRange,
                      "integer in the range 1-12"}),
    kRowName);

INSTANTIATE_TEST_SUITE_P(
    Several, XmlConstraintParsingTest,
    testing::Values(ConstraintRow{
        {"ALaterConstraintReplacesAnEarlierOne"},
        "int",
        "<constraint type=\"range\"><range min=\"1\" max=\"2\"/></constraint>"
        "<constraint type=\"intenum\"><enum><enum-value value=\"3\">c</enum-value>"
        "</enum></constraint>",
        ParameterConstraintType::IntEnum,
        "[3]"}),
    kRowName);

TEST(XmlConstraintTest, StringEnum_TheTextsDescribeTheValues) {
    const auto constraint = ConstraintOf(
        "string", "<constraint type=\"stringenum\"><enum><enum-value value=\"on\">switched on"
                  "</enum-value><enum-value value=\"off\"> </enum-value></enum></constraint>");
    EXPECT_EQ(constraint->GetStringEnum(), (Texts{"on", "off"}));
    EXPECT_EQ(constraint->GetStringEnumWithDesc(),
              (std::map<std::string, std::string>{{"off", " "}, {"on", "switched on"}}));
}

TEST(XmlConstraintTest, IntEnum_TheTextsAreIgnored) {
    const auto constraint =
        ConstraintOf("int", "<constraint type=\"intenum\"><enum><enum-value value=\"1\">one"
                            "</enum-value></enum></constraint>");
    EXPECT_EQ(constraint->GetIntEnum(), std::vector<long>{1});
    EXPECT_TRUE(constraint->GetStringEnumWithDesc().empty());
}

} // namespace
