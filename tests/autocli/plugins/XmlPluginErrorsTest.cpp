#include <CppTools/autocli/plugins/XmlPlugin.h>

#include <gtest/gtest.h>
#include <tests/support/CommandDescriptor.h>
#include <tests/support/NamedRow.h>
#include <tests/support/StreamCapture.h>
#include <tests/support/TempDirectory.h>
#include <tests/support/Thrown.h>

#include <libxml/parser.h>
#include <string>
#include <unistd.h>

namespace {

using CppTools::AutoCli::XmlPlugin;
using TestSupport::CommandDescriptor;
using TestSupport::CommandMessage;
using TestSupport::CommandPieces;
using TestSupport::Descriptor;
using TestSupport::DescriptorMessage;
using TestSupport::kRowName;
using TestSupport::NamedRow;
using TestSupport::StreamCapture;
using TestSupport::TempDirectory;
using TestSupport::ThrownBy;

/// What a descriptor is refused for, and what the message says behind the name of the file.
struct DescriptorRow : NamedRow {
    std::string text;
    std::string reason;
};

class XmlPluginErrorsTest : public testing::TestWithParam<DescriptorRow> {
  protected:
    const TempDirectory directory_;
};

TEST_P(XmlPluginErrorsTest, Initialize_Refuses) {
    const std::string path = directory_.Write("demo.xml", GetParam().text);
    EXPECT_EQ(ThrownBy([&] { XmlPlugin::New(path)->Initialize(); }),
              DescriptorMessage(path, GetParam().reason));
}

std::string Version(const std::string& element) {
    return "<plugin>" + element + "<namespaces/></plugin>";
}

std::string Repeated(const std::string& tag) {
    return "Illegal Duplicate tags found.  The tag " + tag +
           " was expected only once, but was found multiple times.";
}

std::string Several(const std::string& name) {
    return "More than one instance of " + name + " found, expected only one.";
}

const std::string kVersion = "Unknown tandril extention version.  Valid versions are: '1.0.0'";

INSTANTIATE_TEST_SUITE_P(
    Versions, XmlPluginErrorsTest,
    testing::Values(
        DescriptorRow{{"Missing"}, Version(""), kVersion},
        DescriptorRow{{"Empty"}, Version("<version/>"), kVersion},
        DescriptorRow{{"Short"}, Version("<version>1.0</version>"), kVersion},
        DescriptorRow{{"Long"}, Version("<version>1.0.0.0</version>"), kVersion},
        DescriptorRow{{"Later"}, Version("<version>1.0.1</version>"), kVersion},
        DescriptorRow{{"Blanks"}, Version("<version> 1.0.0 </version>"), kVersion},
        DescriptorRow{{"OtherName"}, Version("<Version>1.0.0</Version>"), kVersion},
        DescriptorRow{{"Attribute"}, "<plugin version=\"1.0.0\"><namespaces/></plugin>", kVersion},
        DescriptorRow{{"Repeated"},
                      Version("<version>1.0.0</version><version>1.0.0</version>"),
                      Repeated("version")},
        DescriptorRow{{"BeforeEverythingElse"}, "<plugin/>", kVersion}),
    kRowName);

const std::string kNamespace = "Unable to register a namespace without valid 'path' attribute or "
                               "<description> being present.";

INSTANTIATE_TEST_SUITE_P(
    Namespaces, XmlPluginErrorsTest,
    testing::Values(
        DescriptorRow{{"NoPath"},
                      Descriptor("<namespaces><namespace><description>D.</description>"
                                 "</namespace></namespaces>"),
                      kNamespace},
        DescriptorRow{{"EmptyPath"},
                      Descriptor("<namespaces><namespace path=\"\"><description>D.</description>"
                                 "</namespace></namespaces>"),
                      kNamespace},
        DescriptorRow{{"NoDescription"},
                      Descriptor("<namespaces><namespace path=\"demo\"/></namespaces>"),
                      kNamespace},
        DescriptorRow{{"EmptyDescription"},
                      Descriptor("<namespaces><namespace path=\"demo\"><description/>"
                                 "</namespace></namespaces>"),
                      kNamespace},
        DescriptorRow{{"RepeatedDescription"},
                      Descriptor("<namespaces><namespace path=\"demo\"><description>D."
                                 "</description><description>E.</description></namespace>"
                                 "</namespaces>"),
                      Repeated("description")},
        DescriptorRow{{"BeforeCommandsWhateverTheOrderOfTheFile"},
                      Descriptor("<commands><command/></commands><namespaces><namespace/>"
                                 "</namespaces>"),
                      kNamespace},
        DescriptorRow{
            {"SeveralElements"}, Descriptor("<namespaces/><namespaces/>"), Several("namespaces")}),
    kRowName);

INSTANTIATE_TEST_SUITE_P(
    Commands, XmlPluginErrorsTest,
    testing::Values(DescriptorRow{{"SeveralElements"},
                                  Descriptor("<commands/><commands/>"),
                                  Several("commands")},
                    DescriptorRow{{"NoPath"},
                                  Descriptor("<commands><command/></commands>"),
                                  "Unable to register the command 'tandril '  Error was Invalid "
                                  "command specification found.  <command> tags must have a "
                                  "non-empty 'path' attribute"},
                    DescriptorRow{{"EmptyPath"},
                                  Descriptor("<commands><command path=\"\"/></commands>"),
                                  "Unable to register the command 'tandril '  Error was Invalid "
                                  "command specification found.  <command> tags must have a "
                                  "non-empty 'path' attribute"}),
    kRowName);

class XmlPluginNamedErrorsTest : public XmlPluginErrorsTest {};

TEST_P(XmlPluginNamedErrorsTest, Initialize_RefusesAndNamesTheFile) {
    const std::string path = directory_.Write("demo.xml", GetParam().text);
    EXPECT_EQ(ThrownBy([&] { XmlPlugin::New(path)->Initialize(); }),
              DescriptorMessage(path, GetParam().reason + path));
}

const std::string kNothing = "Unable to find any namespaces or commands to register for plugin ";

INSTANTIATE_TEST_SUITE_P(
    Nothing, XmlPluginNamedErrorsTest,
    testing::Values(DescriptorRow{{"VersionOnly"}, Descriptor(""), kNothing},
                    DescriptorRow{{"OtherElements"}, Descriptor("<others/>"), kNothing},
                    DescriptorRow{{"OtherCase"}, Descriptor("<Namespaces/><COMMANDS/>"), kNothing},
                    DescriptorRow{{"TooDeep"}, Descriptor("<in><namespaces/></in>"), kNothing}),
    kRowName);

const std::string kUnreadable = "Unable to parse XML descriptor: ";

INSTANTIATE_TEST_SUITE_P(
    Unreadable, XmlPluginNamedErrorsTest,
    testing::Values(DescriptorRow{{"EmptyFile"}, "", kUnreadable},
                    DescriptorRow{{"NoXml"}, "name = value\n", kUnreadable},
                    DescriptorRow{{"Truncated"}, "<plugin><version>1.0.0</version>", kUnreadable},
                    DescriptorRow{
                        {"TwoRoots"}, Descriptor("<commands/>") + "<more/>", kUnreadable}),
    kRowName);

/// A fault in one piece of a command, and what the message says behind the command's path.
struct CommandRow : NamedRow {
    std::string CommandPieces::*piece;
    std::string text;
    std::string reason;
};

class XmlCommandErrorsTest : public testing::TestWithParam<CommandRow> {};

TEST_P(XmlCommandErrorsTest, Initialize_RefusesAndNamesTheCommand) {
    const TempDirectory directory;
    CommandPieces pieces;
    pieces.*GetParam().piece = GetParam().text;
    const std::string path = directory.Write("demo.xml", CommandDescriptor(pieces));
    EXPECT_EQ(ThrownBy([&] { XmlPlugin::New(path)->Initialize(); }),
              DescriptorMessage(path, CommandMessage(GetParam().reason)));
}

INSTANTIATE_TEST_SUITE_P(
    Missing, XmlCommandErrorsTest,
    testing::Values(
        CommandRow{{"InputSpec"},
                   &CommandPieces::inputSpec,
                   "",
                   "Unable to find <input-spec> element, which is required for a command."},
        CommandRow{{"OutputSpec"},
                   &CommandPieces::outputSpec,
                   "",
                   "Unable to find <output-spec> element, which is required for a command."},
        CommandRow{{"FormatParameters"},
                   &CommandPieces::formatParameters,
                   "",
                   "Unable to find <format-parameters> element, which is required for a command."},
        CommandRow{{"Execute"},
                   &CommandPieces::execute,
                   "",
                   "Missing or empty <execute> tag.  This tag must specify a valid execution "
                   "string for this command."},
        CommandRow{{"ExecuteIsEmpty"},
                   &CommandPieces::execute,
                   "<execute></execute>",
                   "Missing or empty <execute> tag.  This tag must specify a valid execution "
                   "string for this command."}),
    kRowName);

INSTANTIATE_TEST_SUITE_P(
    Repeated, XmlCommandErrorsTest,
    testing::Values(CommandRow{{"Description"},
                               &CommandPieces::description,
                               "<description>a</description><description>b</description>",
                               Repeated("description")},
                    CommandRow{{"MetaData"},
                               &CommandPieces::metaData,
                               "<meta-data/><meta-data/>",
                               Several("meta-data")},
                    CommandRow{{"InputSpec"},
                               &CommandPieces::inputSpec,
                               "<input-spec/><input-spec/>",
                               Several("input-spec")},
                    CommandRow{{"OutputSpec"},
                               &CommandPieces::outputSpec,
                               "<output-spec/><output-spec/>",
                               Several("output-spec")},
                    CommandRow{{"FormatParameters"},
                               &CommandPieces::formatParameters,
                               "<format-parameters/><format-parameters/>",
                               Several("format-parameters")},
                    CommandRow{{"Execute"},
                               &CommandPieces::execute,
                               "<execute>a</execute><execute>b</execute>",
                               Repeated("execute")},
                    CommandRow{{"Stdin"},
                               &CommandPieces::standardInput,
                               "<stdin>a</stdin><stdin>b</stdin>",
                               Repeated("stdin")},
                    CommandRow{{"FormatterBehindAnEmptyOne"},
                               &CommandPieces::formatParameters,
                               "<format-parameters><formatter/><formatter>xml</formatter>"
                               "</format-parameters>",
                               "Invalid plugin format.  Duplicate <formatter> tags found"},
                    CommandRow{
                        {"Formatter"},
                        &CommandPieces::formatParameters,
                        "<format-parameters><formatter>table</formatter><formatter>xml</formatter>"
                        "</format-parameters>",
                        "Invalid plugin format.  Duplicate <formatter> tags found"}),
    kRowName);

INSTANTIATE_TEST_SUITE_P(
    MetaData, XmlCommandErrorsTest,
    testing::Values(
        CommandRow{{"UnexpectedElement"},
                   &CommandPieces::metaData,
                   "<meta-data> <!-- c --><entry name=\"a\">b</entry></meta-data>",
                   "Found unexpected tag while building meta-data set.  Unexpected tag was: "
                   "entry"},
        CommandRow{{"EntryWithoutName"},
                   &CommandPieces::metaData,
                   "<meta-data><meta-data-entry>b</meta-data-entry></meta-data>",
                   "Error parsing 'meta-data-entry', missing required attribute 'name'"},
        CommandRow{{"EntryWithEmptyName"},
                   &CommandPieces::metaData,
                   "<meta-data><meta-data-entry name=\"\">b</meta-data-entry></meta-data>",
                   "Error parsing 'meta-data-entry', missing required attribute 'name'"}),
    kRowName);

INSTANTIATE_TEST_SUITE_P(
    OutputSpec, XmlCommandErrorsTest,
    testing::Values(
        CommandRow{{"SecondElement"},
                   &CommandPieces::outputSpec,
                   "<output-spec><string/> <!-- c --><int/></output-spec>",
                   "Found more than one node under 'output-spec', where only one node is "
                   "supported.  The tag was int"},
        CommandRow{{"UnknownElement"},
                   &CommandPieces::outputSpec,
                   "<output-spec><float/></output-spec>",
                   "Unable to build output spec.  Error was Unable to make a MetaObject from a "
                   "node with tag 'float'"},
        CommandRow{{"BadPrototype"},
                   &CommandPieces::outputSpec,
                   "<output-spec><structure typeName=\"a b\"/></output-spec>",
                   "Unable to build output spec.  Error was Invalid name specified for "
                   "MetaStruct: a b"},
        CommandRow{{"ListOfLists"},
                   &CommandPieces::outputSpec,
                   "<output-spec><list type=\"list\"/></output-spec>",
                   "Unable to build output spec.  Error was Struct type expected for list."}),
    kRowName);

TEST(XmlPluginErrorOrderTest, Initialize_FaultsAreFoundInTheOrderOfTheSteps) {
    const TempDirectory directory;
    CommandPieces pieces;
    pieces.description = "<description>a</description><description>b</description>";
    pieces.metaData = "<meta-data><bad/></meta-data>";
    pieces.inputSpec = "";
    pieces.outputSpec = "";
    pieces.formatParameters = "";
    pieces.execute = "";
    pieces.standardInput = "<stdin>a</stdin><stdin>b</stdin>";
    const auto messageOf = [&] {
        const std::string path = directory.Write("demo.xml", CommandDescriptor(pieces));
        const std::string message = ThrownBy([&] { XmlPlugin::New(path)->Initialize(); });
        return message.substr(DescriptorMessage(path, CommandMessage("")).size());
    };
    EXPECT_EQ(messageOf(), Repeated("description"));
    pieces.description = "";
    EXPECT_EQ(messageOf(),
              "Found unexpected tag while building meta-data set.  Unexpected tag was: bad");
    pieces.metaData = "";
    EXPECT_EQ(messageOf(), "Unable to find <input-spec> element, which is required for a command.");
    pieces.inputSpec = "<input-spec/>";
    EXPECT_EQ(messageOf(),
              "Unable to find <output-spec> element, which is required for a command.");
    pieces.outputSpec = "<output-spec/>";
    EXPECT_EQ(messageOf(),
              "Unable to find <format-parameters> element, which is required for a command.");
    pieces.formatParameters = "<format-parameters/>";
    EXPECT_EQ(messageOf(), "Missing or empty <execute> tag.  This tag must specify a valid "
                           "execution string for this command.");
    pieces.execute = "<execute>true</execute>";
    EXPECT_EQ(messageOf(), Repeated("stdin"));
}

TEST(XmlPluginErrorOrderTest, Initialize_ACommandsPathIsReadFirst) {
    const TempDirectory directory;
    CommandPieces pieces;
    pieces.attributes = "";
    pieces.description = "<description>a</description><description>b</description>";
    const std::string path = directory.Write("demo.xml", CommandDescriptor(pieces));
    EXPECT_EQ(ThrownBy([&] { XmlPlugin::New(path)->Initialize(); }),
              DescriptorMessage(path,
                                "Unable to register the command 'tandril '  Error was Invalid "
                                "command specification found.  <command> tags must have a "
                                "non-empty 'path' attribute"));
}

TEST(XmlPluginErrorOrderTest, Initialize_WhatTheXmlReaderComplainsAboutIsShown) {
    const TempDirectory directory;
    const std::string path = directory.Write("demo.xml", "<plugin><version>1.0.0</plugin>");
    StreamCapture expected(STDERR_FILENO);
    EXPECT_EQ(xmlReadFile(path.c_str(), nullptr, 0), nullptr);
    const std::string complaint = expected.Take();
    StreamCapture standardError(STDERR_FILENO);
    ThrownBy([&] { XmlPlugin::New(path)->Initialize(); });
    EXPECT_EQ(standardError.Take(), complaint);
    EXPECT_NE(complaint, "");
}

} // namespace
