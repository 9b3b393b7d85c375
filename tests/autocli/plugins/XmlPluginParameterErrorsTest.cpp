#include <CppTools/autocli/plugins/XmlPlugin.h>

#include <gtest/gtest.h>
#include <tests/support/CommandDescriptor.h>
#include <tests/support/NamedRow.h>
#include <tests/support/TempDirectory.h>
#include <tests/support/Thrown.h>

#include <string>

namespace {

using CppTools::AutoCli::XmlPlugin;
using TestSupport::CommandMessage;
using TestSupport::DescriptorMessage;
using TestSupport::kRowName;
using TestSupport::NamedRow;
using TestSupport::ParameterDescriptor;
using TestSupport::ParameterElement;
using TestSupport::TempDirectory;
using TestSupport::ThrownBy;

/// The message that the parameters are refused with, without what stands in front of all of them.
std::string RefusalOf(const std::string& parameters) {
    const TempDirectory directory;
    const std::string path = directory.Write("demo.xml", ParameterDescriptor(parameters));
    const std::string message = ThrownBy([&] { XmlPlugin::New(path)->Initialize(); });
    const std::string prefix = DescriptorMessage(path, CommandMessage(""));
    return message.rfind(prefix, 0) == 0 ? message.substr(prefix.size()) : message;
}

struct ParameterRow : NamedRow {
    std::string parameters;
    std::string reason;
};

class XmlPluginParameterErrorsTest : public testing::TestWithParam<ParameterRow> {};

TEST_P(XmlPluginParameterErrorsTest, Initialize_RefusesTheParameter) {
    EXPECT_EQ(RefusalOf(GetParam().parameters), GetParam().reason);
}

std::string WithAttributes(const std::string& attributes) {
    return ParameterElement(attributes, "<description>S.</description>");
}

const std::string kName = "Unable to parse Input Parameter.  Missing required attribute: 'name'";
const std::string kType =
    "Unable to parse Input Parameter size. Missing or invalid required attribute: 'type'.  Must be "
    "one of [string, string-list, bool, bool-list, int, int-list]";
const std::string kRequired = "Unable to parse Input Paramter size. Missing or invalid 'required', "
                              "must be one of ['true', 'false']";
const std::string kSecret = "Unable to parse Input Paramter size. Invalid 'secret', must be one of "
                            "['true', 'false']";
const std::string kDescription = "Unable to parse Input Paramter size. Missing command description";
const std::string kShortName =
    "Invalid value for shortName, must be a single character a-z, A-Z or 0-9";

INSTANTIATE_TEST_SUITE_P(
    Names, XmlPluginParameterErrorsTest,
    testing::Values(
        ParameterRow{{"Missing"}, WithAttributes(R"(type="int")"), kName},
        ParameterRow{{"Empty"}, WithAttributes(R"(name="" type="int")"), kName},
        ParameterRow{{"Invalid"},
                     WithAttributes(R"(name="My_Size" type="int")"),
                     "Invalid Parameter name 'My_Size' parameter names can only contain "
                     "lower-case alphanumeric characters, numbers and '-'"},
        ParameterRow{{"TooShort"},
                     WithAttributes(R"(name="s" type="int")"),
                     "Parameter name must be at least 2 characters"},
        ParameterRow{{"Repeated"},
                     WithAttributes(R"(name="size" type="int")") +
                         WithAttributes(R"(name="size" type="bool")"),
                     "Found a duplicate paramater specification for parameter named 'size'"}),
    kRowName);

INSTANTIATE_TEST_SUITE_P(
    Types, XmlPluginParameterErrorsTest,
    testing::Values(ParameterRow{{"Missing"}, WithAttributes(R"(name="size")"), kType},
                    ParameterRow{{"Empty"}, WithAttributes(R"(name="size" type="")"), kType},
                    ParameterRow{{"Unknown"}, WithAttributes(R"(name="size" type="float")"), kType},
                    ParameterRow{{"OtherCase"}, WithAttributes(R"(name="size" type="Int")"), kType},
                    ParameterRow{{"Blanks"}, WithAttributes(R"(name="size" type=" int")"), kType},
                    ParameterRow{
                        {"FlagList"}, WithAttributes(R"(name="size" type="flag-list")"), kType}),
    kRowName);

INSTANTIATE_TEST_SUITE_P(
    Switches, XmlPluginParameterErrorsTest,
    testing::Values(ParameterRow{{"RequiredYes"},
                                 WithAttributes(R"(name="size" type="int" required="yes")"),
                                 kRequired},
                    ParameterRow{{"RequiredOtherCase"},
                                 WithAttributes(R"(name="size" type="int" required="True")"),
                                 kRequired},
                    ParameterRow{{"SecretYes"},
                                 WithAttributes(R"(name="size" type="string" secret="yes")"),
                                 kSecret},
                    ParameterRow{{"SecretOtherCase"},
                                 WithAttributes(R"(name="size" type="string" secret="FALSE")"),
                                 kSecret}),
    kRowName);

class SecretTypeTest : public testing::TestWithParam<const char*> {};

TEST_P(SecretTypeTest, Initialize_RefusesASecretThatIsNoString) {
    const std::string type = GetParam();
    EXPECT_EQ(RefusalOf(WithAttributes("name=\"size\" type=\"" + type + "\" secret=\"true\"")),
              "Unable to parse Input Paramter size. Invalid type " + type +
                  " for secret, must be 'string'");
}

INSTANTIATE_TEST_SUITE_P(Types, SecretTypeTest,
                         testing::Values("int", "bool", "flag", "string-list", "int-list",
                                         "bool-list"));

INSTANTIATE_TEST_SUITE_P(
    ShortNames, XmlPluginParameterErrorsTest,
    testing::Values(
        ParameterRow{{"TwoCharacters"},
                     WithAttributes(R"(name="size" type="int" shortname="si")"),
                     kShortName},
        ParameterRow{
            {"NoLetter"}, WithAttributes(R"(name="size" type="int" shortname="-")"), kShortName},
        ParameterRow{{"Taken"},
                     WithAttributes(R"(name="old" type="int" shortname="n")") +
                         WithAttributes(R"(name="new" type="int" shortname="n")"),
                     "Invalid short name specified for --new. The short name -n is already used "
                     "for --old"}),
    kRowName);

INSTANTIATE_TEST_SUITE_P(
    Descriptions, XmlPluginParameterErrorsTest,
    testing::Values(
        ParameterRow{{"Missing"}, ParameterElement(R"(name="size" type="int")", ""), kDescription},
        ParameterRow{{"Empty"},
                     ParameterElement(R"(name="size" type="int")", "<description/>"),
                     kDescription},
        ParameterRow{{"OtherCase"},
                     ParameterElement(R"(name="size" type="int")", "<Description>S.</Description>"),
                     kDescription},
        ParameterRow{{"Repeated"},
                     ParameterElement(R"(name="size" type="int")", "<description>S.</description>"
                                                                   "<description>T.</description>"),
                     "Illegal Duplicate tags found.  The tag description was expected "
                     "only once, but was found multiple times."}),
    kRowName);

/// A parameter of a type with one constraint.
struct ConstraintErrorRow : NamedRow {
    std::string type;
    std::string constraint;
    std::string reason;
};

class XmlConstraintErrorsTest : public testing::TestWithParam<ConstraintErrorRow> {};

TEST_P(XmlConstraintErrorsTest, Initialize_RefusesTheConstraintAndNamesTheParameter) {
    EXPECT_EQ(RefusalOf(ParameterElement("name=\"size\" type=\"" + GetParam().type + "\"",
                                         "<description>S.</description><constraint " +
                                             GetParam().constraint + "</constraint>")),
              "Unable to build parameter constraint for parameter size.  Error was: " +
                  GetParam().reason);
}

std::string UnknownConstraint(const std::string& type) {
    return "Missing or invalid constraint 'type', must be one of [stringenum, intenum, regex, "
           "range] got '" +
           type + "'";
}

const std::string kNoData =
    "Error parsing parameter constraint.  There was no data included inside "
    "the <constraint> tag for the given constraint type";
const std::string kRange = "Error parsing 'range' parameter constraint.  Range requires both 'min' "
                           "and 'max' attributes and that both are integers.";
const std::string kRegex =
    "Error parsing regex from parameter constraint.Missing or empty 'regex' tag";
const std::string kNoFit =
    "Invalid constraint specified for parameter size.  The parameter constraint specified is not "
    "allowed for a parameter of this type.";

INSTANTIATE_TEST_SUITE_P(
    Types, XmlConstraintErrorsTest,
    testing::Values(
        ConstraintErrorRow{
            {"Missing"}, "int", "><range min=\"1\" max=\"2\"/>", UnknownConstraint("")},
        ConstraintErrorRow{{"Empty"}, "int", "type=\"\">", UnknownConstraint("")},
        ConstraintErrorRow{{"Unknown"}, "int", "type=\"enum\">", UnknownConstraint("enum")},
        ConstraintErrorRow{{"OtherCase"}, "int", "type=\"Range\">", UnknownConstraint("Range")}),
    kRowName);

INSTANTIATE_TEST_SUITE_P(
    NoData, XmlConstraintErrorsTest,
    testing::Values(
        ConstraintErrorRow{{"StringEnum"}, "string", "type=\"stringenum\">", kNoData},
        ConstraintErrorRow{{"IntEnum"}, "int", "type=\"intenum\"> text <!-- c -->", kNoData},
        ConstraintErrorRow{{"Regex"}, "string", "type=\"regex\">", kNoData},
        ConstraintErrorRow{{"Range"}, "int", "type=\"range\">", kNoData},
        ConstraintErrorRow{{"ChildrenOfOtherKinds"},
                           "int",
                           "type=\"range\"><enum/><regex>a</regex><Range min=\"1\" max=\"2\"/>",
                           kNoData},
        ConstraintErrorRow{{"EmptyStringEnum"}, "string", "type=\"stringenum\"><enum/>", kNoData},
        ConstraintErrorRow{{"EmptyIntEnum"}, "int", "type=\"intenum\"><enum> </enum>", kNoData},
        ConstraintErrorRow{{"ValuesWithoutText"},
                           "string",
                           "type=\"stringenum\"><enum><enum-value value=\"a\"/></enum>",
                           kNoData},
        ConstraintErrorRow{{"LastEnumIsEmpty"},
                           "string",
                           "type=\"stringenum\"><enum><enum-value value=\"a\">A</enum-value></enum>"
                           "<enum/>",
                           kNoData}),
    kRowName);

INSTANTIATE_TEST_SUITE_P(
    Enums, XmlConstraintErrorsTest,
    testing::Values(
        ConstraintErrorRow{
            {"UnexpectedElement"},
            "string",
            "type=\"stringenum\"><enum> <!-- c --><value>a</value></enum>",
            "Found unexpected tag while building an enum.  Unexpected tag was: value"},
        ConstraintErrorRow{
            {"UnexpectedElementAmongIntegers"},
            "int",
            "type=\"intenum\"><enum><enum-value value=\"1\">a</enum-value><enum/></enum>",
            "Found unexpected tag while building an enum.  Unexpected tag was: enum"},
        ConstraintErrorRow{{"NoValue"},
                           "string",
                           "type=\"stringenum\"><enum><enum-value>a</enum-value></enum>",
                           "Error parsing 'enum-value', missing required attribute 'value'"},
        ConstraintErrorRow{{"EmptyValue"},
                           "int",
                           "type=\"intenum\"><enum><enum-value value=\"\">a</enum-value></enum>",
                           "Error parsing 'enum-value', missing required attribute 'value'"},
        ConstraintErrorRow{{"NoInteger"},
                           "int",
                           "type=\"intenum\"><enum><enum-value value=\"one\">a</enum-value></enum>",
                           "Error parsing integer enumeration. Expected integer, but got one"},
        ConstraintErrorRow{{"IntegerOutOfRange"},
                           "int",
                           "type=\"intenum\"><enum><enum-value value=\"9223372036854775808\">a"
                           "</enum-value></enum>",
                           "Error parsing integer enumeration. Expected integer, but got "
                           "9223372036854775808"},
        ConstraintErrorRow{
            {"RepeatedInteger"},
            "int",
            "type=\"intenum\"><enum><enum-value value=\"1\">a</enum-value><enum-value "
            "value=\"+1\">b</enum-value></enum>",
            "Duplicate Value found in ParameterConstraint::AddIntEnum"},
        ConstraintErrorRow{
            {"EveryTextOfAValueIsAnEntry"},
            "string",
            "type=\"stringenum\"><enum><enum-value value=\"a\">A<b/>B</enum-value></enum>",
            "Duplicate Value found in ParameterConstraint::AddStringEnum: a"},
        ConstraintErrorRow{
            {"EveryTextOfAnIntegerIsAnEntry"},
            "int",
            "type=\"intenum\"><enum><enum-value value=\"1\">A<b/>B</enum-value></enum>",
            "Duplicate Value found in ParameterConstraint::AddIntEnum"},
        ConstraintErrorRow{
            {"RepeatedString"},
            "string",
            "type=\"stringenum\"><enum><enum-value value=\"a\">A</enum-value><enum-value "
            "value=\"a\">B</enum-value></enum>",
            "Duplicate Value found in ParameterConstraint::AddStringEnum: a"}),
    kRowName);

INSTANTIATE_TEST_SUITE_P(
    Others, XmlConstraintErrorsTest,
    testing::Values(
        ConstraintErrorRow{{"EmptyRegex"}, "string", "type=\"regex\"><regex/>", kRegex},
        ConstraintErrorRow{{"RangeWithoutBounds"}, "int", "type=\"range\"><range/>", kRange},
        ConstraintErrorRow{{"RangeWithoutMax"}, "int", "type=\"range\"><range min=\"1\"/>", kRange},
        ConstraintErrorRow{{"RangeWithoutMin"}, "int", "type=\"range\"><range max=\"1\"/>", kRange},
        ConstraintErrorRow{
            {"RangeWithEmptyMin"}, "int", "type=\"range\"><range min=\"\" max=\"1\"/>", kRange},
        ConstraintErrorRow{
            {"MinNoInteger"}, "int", "type=\"range\"><range min=\"a\" max=\"1\"/>", kRange},
        ConstraintErrorRow{
            {"MaxNoInteger"}, "int", "type=\"range\"><range min=\"1\" max=\"-\"/>", kRange},
        ConstraintErrorRow{{"MaxOutOfRange"},
                           "int",
                           "type=\"range\"><range min=\"1\" max=\"9223372036854775808\"/>",
                           kRange},
        ConstraintErrorRow{{"MinOutOfRange"},
                           "int",
                           "type=\"range\"><range min=\"-9223372036854775809\" max=\"1\"/>",
                           kRange},
        ConstraintErrorRow{
            {"MinAboveMax"},
            "int",
            "type=\"range\"><range min=\"2\" max=\"1\"/>",
            "Invalid values for SetIntRange, constraints must have a min value <= max "
            "value"}),
    kRowName);

INSTANTIATE_TEST_SUITE_P(
    NoFit, XmlConstraintErrorsTest,
    testing::Values(
        ConstraintErrorRow{
            {"RangeOnString"}, "string", "type=\"range\"><range min=\"1\" max=\"2\"/>", kNoFit},
        ConstraintErrorRow{{"RegexOnInt"}, "int", "type=\"regex\"><regex>a</regex>", kNoFit},
        ConstraintErrorRow{
            {"EnumOnFlag"},
            "flag",
            "type=\"stringenum\"><enum><enum-value value=\"a\">A</enum-value></enum>",
            kNoFit},
        ConstraintErrorRow{{"IntEnumOnBool"},
                           "bool",
                           "type=\"intenum\"><enum><enum-value value=\"1\">A</enum-value></enum>",
                           kNoFit}),
    kRowName);

/// Each call puts right what the call before was refused for.
TEST(XmlParameterErrorOrderTest, Initialize_FaultsAreFoundInTheOrderOfTheSteps) {
    const std::string description = "<description>S.</description>";
    const std::string misfit =
        "<constraint type=\"range\"><range min=\"1\" max=\"2\"/></constraint>";
    const std::string both = description + misfit;
    const auto refusalOf = [&](const std::string& attributes, const std::string& content) {
        return RefusalOf(ParameterElement(R"(name="old" type="int" shortname="o")", description) +
                         ParameterElement(attributes, content));
    };
    EXPECT_EQ(refusalOf(R"(type="x" required="x" secret="x" shortname="-")", misfit), kName);
    EXPECT_EQ(refusalOf(R"(name="size" type="x" required="x" secret="x" shortname="-")", misfit),
              kType);
    EXPECT_EQ(refusalOf(R"(name="size" type="flag" required="x" secret="x" shortname="-")", misfit),
              kRequired);
    EXPECT_EQ(refusalOf(R"(name="size" type="flag" secret="x" shortname="-")", misfit),
              kDescription);
    EXPECT_EQ(refusalOf(R"(name="size" type="flag" secret="x" shortname="-")", both), kSecret);
    EXPECT_EQ(refusalOf(R"(name="S" type="flag" secret="true" shortname="-")", both),
              "Unable to parse Input Paramter S. Invalid type flag for secret, must be 'string'");
    EXPECT_EQ(refusalOf(R"(name="S" type="flag" shortname="-")", both),
              "Invalid Parameter name 'S' parameter names can only contain lower-case alphanumeric "
              "characters, numbers and '-'");
    EXPECT_EQ(refusalOf(R"(name="old" type="flag" shortname="-")", both), kShortName);
    EXPECT_EQ(refusalOf(R"(name="old" type="flag" shortname="o")", both),
              "Unable to build parameter constraint for parameter old.  Error was: Invalid "
              "constraint specified for parameter old.  The parameter constraint specified is not "
              "allowed for a parameter of this type.");
    EXPECT_EQ(refusalOf(R"(name="old" type="flag" shortname="o")", description),
              "Found a duplicate paramater specification for parameter named 'old'");
}

TEST(XmlConstraintErrorOrderTest, Initialize_ALaterConstraintDoesNotHideABadEarlierOne) {
    EXPECT_EQ(RefusalOf(ParameterElement(
                  R"(name="size" type="int")",
                  "<description>S.</description><constraint type=\"range\"/>"
                  "<constraint type=\"range\"><range min=\"1\" max=\"2\"/></constraint>")),
              "Unable to build parameter constraint for parameter size.  Error was: " + kNoData);
}

} // namespace
