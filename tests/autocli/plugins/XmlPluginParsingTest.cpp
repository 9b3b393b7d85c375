#include <CppTools/autocli/plugins/ExtensionCommand.h>
#include <CppTools/autocli/plugins/XmlPlugin.h>
#include <CppTools/callspec/Input.h>
#include <CppTools/callspec/InputSpec.h>
#include <CppTools/callspec/OutputSpec.h>
#include <CppTools/metaobj/MetaObject.h>

#include <gtest/gtest.h>
#include <tests/support/CommandDescriptor.h>
#include <tests/support/NamedRow.h>
#include <tests/support/TempDirectory.h>
#include <tests/support/Thrown.h>
#include <tests/support/TreeLookup.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace {

using CppTools::AutoCli::ExtensionCommand;
using CppTools::AutoCli::RootNamespace;
using CppTools::AutoCli::XmlPlugin;
using CppTools::CallSpec::Input;
using CppTools::CallSpec::InputSpec;
using CppTools::CallSpec::ParameterType;
using CppTools::MetaObj::MetaObject;
using CppTools::MetaObj::MetaType;
using TestSupport::CommandDescriptor;
using TestSupport::CommandElementAt;
using TestSupport::CommandPieces;
using TestSupport::CommandsElement;
using TestSupport::Descriptor;
using TestSupport::kRowName;
using TestSupport::NamedRow;
using TestSupport::NamespaceElement;
using TestSupport::NamespacesElement;
using TestSupport::NewRoot;
using TestSupport::NodeAt;
using TestSupport::ParameterDescriptor;
using TestSupport::ParameterElement;
using TestSupport::TempDirectory;
using TestSupport::ThrownBy;

using Texts = std::vector<std::string>;
using TextMap = std::map<std::string, std::string>;

/// The tree that a descriptor alone makes.
std::shared_ptr<RootNamespace> TreeOf(const std::string& descriptor) {
    const TempDirectory directory;
    const auto plugin = XmlPlugin::New(directory.Write("demo.xml", descriptor));
    plugin->Initialize();
    auto root = NewRoot();
    plugin->RegisterNamespaces(root);
    return root;
}

/// The command "demo.run" of a descriptor.
std::shared_ptr<ExtensionCommand> CommandOf(const std::string& descriptor) {
    return NodeAt<ExtensionCommand>(TreeOf(descriptor), {"demo", "run"});
}

std::shared_ptr<ExtensionCommand> CommandOf(const CommandPieces& pieces) {
    return CommandOf(CommandDescriptor(pieces));
}

/// The specification of a command with these parameters, without the built-in one.
std::shared_ptr<InputSpec> SpecOf(const std::string& parameters) {
    return CommandOf(ParameterDescriptor(parameters))->GetInputSpecInternal();
}

std::string FilledLine(ExtensionCommand& command, bool forStdin = false) {
    return command.SubstituteInput(Input::New(), forStdin);
}

TEST(XmlPluginParsingTest, Root_ItsNameIsNotTested) {
    const auto root = TreeOf("<whatever><version>1.0.0</version><namespaces>" +
                             NamespaceElement("demo", "D.") + "</namespaces></whatever>");
    EXPECT_EQ(root->GetNamespaceNodeNames(), Texts{"demo"});
}

TEST(XmlPluginParsingTest, Root_UnknownElementsAndTextsAreIgnored) {
    const auto root =
        TreeOf("<p>text<author>x</author><version>1.0.0</version><!-- c -->"
               "<Commands>y</Commands><namespaces>text<other/><!-- c -->" +
               NamespaceElement("demo", "D.") + "<Namespace path=\"big\"/></namespaces></p>");
    EXPECT_EQ(root->GetNamespaceNodeNames(), Texts{"demo"});
}

TEST(XmlPluginParsingTest, Commands_OtherElementsAndTextsAreIgnored) {
    const auto root = TreeOf(Descriptor(
        CommandsElement("text<!-- c --><Command path=\"big\"/><namespace/><other>" +
                        CommandElementAt("lost") + "</other>" + CommandElementAt("run"))));
    EXPECT_EQ(root->GetNamespaceNodeNames(), Texts{"run"});
}

TEST(XmlPluginParsingTest, Root_CommandsAloneAreEnough) {
    CommandPieces pieces;
    pieces.attributes = "path=\"run\"";
    const auto root = TreeOf(Descriptor(CommandsElement(pieces.ToElement())));
    EXPECT_NE(NodeAt<ExtensionCommand>(root, {"run"}), nullptr);
}

TEST(XmlPluginParsingTest, Root_AnEmptyCommandsElementIsEnough) {
    EXPECT_EQ(TreeOf(Descriptor("<commands/>"))->GetNamespaceNodeNames(), Texts{});
}

TEST(XmlPluginParsingTest, Root_NamespacesComeBeforeCommandsWhateverTheOrderOfTheFile) {
    const auto root =
        TreeOf(Descriptor(CommandsElement(CommandPieces{}.ToElement()) +
                          NamespacesElement(NamespaceElement("demo", "Demonstrations."))));
    EXPECT_EQ(NodeAt(root, {"demo"})->GetDescription(), "Demonstrations.");
    EXPECT_NE(NodeAt<ExtensionCommand>(root, {"demo", "run"}), nullptr);
}

TEST(XmlPluginParsingTest, Namespaces_AreReadInTheOrderOfTheFile) {
    const auto root = TreeOf(Descriptor(NamespacesElement(
        NamespaceElement("system", "The system.") + NamespaceElement("system.disk", "Its disks.") +
        NamespaceElement("system.disk.smart", "Their health."))));
    EXPECT_EQ(NodeAt(root, {"system"})->GetDescription(), "The system.");
    EXPECT_EQ(NodeAt(root, {"system", "disk"})->GetDescription(), "Its disks.");
    EXPECT_EQ(NodeAt(root, {"system", "disk", "smart"})->GetDescription(), "Their health.");
    EXPECT_EQ(NodeAt(root, {"system", "disk"})->GetType(), 1);
}

TEST(XmlPluginParsingTest, Namespaces_DescriptionsAreKeptAsTheyStand) {
    const auto root =
        TreeOf(Descriptor(NamespacesElement(NamespaceElement("demo", " Two\n lines &amp; more "))));
    EXPECT_EQ(NodeAt(root, {"demo"})->GetDescription(), " Two\n lines & more ");
}

TEST(XmlPluginParsingTest, Namespaces_ElementsBesideTheDescriptionAreIgnored) {
    const auto root =
        TreeOf(Descriptor("<namespaces><namespace path=\"demo\" Path=\"big\">text<other>x</other>"
                          "<Description>y</Description><description>D.</description><!-- c -->"
                          "</namespace></namespaces>"));
    EXPECT_EQ(NodeAt(root, {"demo"})->GetDescription(), "D.");
}

TEST(XmlPluginParsingTest, Command_IsAnExtensionCommandWithItsDescription) {
    const auto command = CommandOf(CommandPieces{});
    ASSERT_NE(command, nullptr);
    EXPECT_EQ(command->GetDescription(), "Runs.");
    EXPECT_EQ(command->GetName(), "run");
    EXPECT_TRUE(command->GetExamples().empty());
}

TEST(XmlPluginParsingTest, Command_WithoutDescriptionHasAnEmptyOne) {
    CommandPieces pieces;
    pieces.description = "";
    EXPECT_EQ(CommandOf(pieces)->GetDescription(), "");
}

TEST(XmlPluginParsingTest, Command_UnknownElementsAreIgnored) {
    CommandPieces pieces;
    pieces.standardInput = "text<!-- c --><Execute>false</Execute><example>x</example>";
    EXPECT_EQ(FilledLine(*CommandOf(pieces)), "true");
}

TEST(XmlPluginParsingTest, Command_ExecuteIsTheTemplateAsItStands) {
    CommandPieces pieces;
    pieces.execute = "<execute> echo  'a' &amp;&amp; echo b\n</execute>";
    EXPECT_EQ(FilledLine(*CommandOf(pieces)), " echo  'a' && echo b\n");
}

TEST(XmlPluginParsingTest, Command_ExecuteMayBeCdata) {
    CommandPieces pieces;
    pieces.execute = "<execute><![CDATA[echo a && cat <b]]></execute>";
    EXPECT_EQ(FilledLine(*CommandOf(pieces)), "echo a && cat <b");
}

TEST(XmlPluginParsingTest, Command_StdinIsTheOtherTemplate) {
    CommandPieces pieces;
    pieces.standardInput = "<stdin>some\ninput</stdin>";
    EXPECT_EQ(FilledLine(*CommandOf(pieces), true), "some\ninput");
}

TEST(XmlPluginParsingTest, Command_WithoutStdinHasAnEmptyTemplate) {
    CommandPieces pieces;
    EXPECT_EQ(FilledLine(*CommandOf(pieces), true), "");
    pieces.standardInput = "<stdin/>";
    EXPECT_EQ(FilledLine(*CommandOf(pieces), true), "");
}

TEST(XmlPluginParsingTest, Command_TheTemplateNamesItsParameters) {
    CommandPieces pieces;
    pieces.inputSpec =
        "<input-spec>" +
        ParameterElement(R"(name="user" type="string")", "<description>U.</description>") +
        "</input-spec>";
    pieces.execute = "<execute>id $val{user}</execute>";
    const auto command = CommandOf(pieces);
    const auto input = Input::New();
    input->AddParameter("user", "a;b");
    input->SetInputSpec(command->GetInputSpec());
    EXPECT_EQ(command->SubstituteInput(input, false), "id a\\;b");
}

struct MetaDataRow : NamedRow {
    std::string content;
};

class MetaDataTest : public testing::TestWithParam<MetaDataRow> {};

TEST_P(MetaDataTest, Command_MetaDataIsCheckedAndDropped) {
    CommandPieces pieces;
    pieces.metaData = "<meta-data>" + GetParam().content + "</meta-data>";
    const auto command = CommandOf(pieces);
    EXPECT_EQ(command->GetDescription(), "Runs.");
    EXPECT_EQ(FilledLine(*command), "true");
}

INSTANTIATE_TEST_SUITE_P(
    Contents, MetaDataTest,
    testing::Values(MetaDataRow{{"Empty"}, ""},
                    MetaDataRow{{"Entries"},
                                R"(<meta-data-entry name="a">1</meta-data-entry> text <!-- c -->
                       <meta-data-entry name="a">2</meta-data-entry>)"},
                    MetaDataRow{{"ElementsNamedTextAndComment"},
                                "<text>x</text><comment>y</comment>"},
                    MetaDataRow{{"EntryWithoutNameAndText"}, "<meta-data-entry/>"},
                    MetaDataRow{{"ElementInAnEntryCarriesNoText"},
                                "<meta-data-entry><a>1</a></meta-data-entry>"},
                    MetaDataRow{{"SeveralTextsInAnEntry"},
                                R"(<meta-data-entry name="a">1<b/>2</meta-data-entry>)"},
                    MetaDataRow{{"EntryWithoutText"}, R"(<meta-data-entry name="a"/>)"}),
    kRowName);

struct TypeRow : NamedRow {
    std::string word;
    ParameterType type;
};

class ParameterTypeTest : public testing::TestWithParam<TypeRow> {};

TEST_P(ParameterTypeTest, Parameter_TypeWordSelectsTheKind) {
    const auto spec = SpecOf(ParameterElement("name=\"size\" type=\"" + GetParam().word + "\"",
                                              "<description>S.</description>"));
    EXPECT_EQ(spec->FindParameter("size")->GetType(), GetParam().type);
}

INSTANTIATE_TEST_SUITE_P(
    Words, ParameterTypeTest,
    testing::Values(TypeRow{{"String"}, "string", ParameterType::String},
                    TypeRow{{"Int"}, "int", ParameterType::Int},
                    TypeRow{{"Bool"}, "bool", ParameterType::Bool},
                    TypeRow{{"Flag"}, "flag", ParameterType::Flag},
                    TypeRow{{"StringList"}, "string-list", ParameterType::StringList},
                    TypeRow{{"IntList"}, "int-list", ParameterType::IntList},
                    TypeRow{{"BoolList"}, "bool-list", ParameterType::BoolList}),
    kRowName);

TEST(XmlPluginParsingTest, Parameter_WithNothingOptionalIsOptionalAndOpen) {
    const auto size =
        SpecOf(ParameterElement(R"(name="size" type="string")", "<description>S.</description>"))
            ->FindParameter("size");
    EXPECT_EQ(size->GetDescription(false), "S.");
    EXPECT_EQ(size->GetShortName(), "");
    EXPECT_FALSE(size->IsRequired());
    EXPECT_FALSE(size->IsSecret());
    EXPECT_EQ(size->GetConstraint(), nullptr);
}

TEST(XmlPluginParsingTest, Parameter_WithEverythingOptional) {
    const auto size =
        SpecOf(ParameterElement(
                   R"(name="size" type="string" required="true" secret="true" shortname="s")",
                   "<description>S.</description>"))
            ->FindParameter("size");
    EXPECT_EQ(size->GetShortName(), "s");
    EXPECT_TRUE(size->IsRequired());
    EXPECT_TRUE(size->IsSecret());
}

TEST(XmlPluginParsingTest, Parameter_EmptyAndFalseAttributesAreAsGoodAsNone) {
    for (const std::string value : {"", "false"}) {
        SCOPED_TRACE(value);
        const auto size =
            SpecOf(ParameterElement("name=\"size\" type=\"string\" required=\"" + value +
                                        "\" secret=\"" + value + "\" shortname=\"\"",
                                    "<description>S.</description>"))
                ->FindParameter("size");
        EXPECT_FALSE(size->IsRequired());
        EXPECT_FALSE(size->IsSecret());
        EXPECT_EQ(size->GetShortName(), "");
    }
}

TEST(XmlPluginParsingTest, Parameter_SecretFalseIsAllowedForEveryType) {
    EXPECT_FALSE(SpecOf(ParameterElement(R"(name="size" type="int" secret="false")",
                                         "<description>S.</description>"))
                     ->FindParameter("size")
                     ->IsSecret());
}

TEST(XmlPluginParsingTest, InputSpec_HoldsItsParametersAndIgnoresTheRest) {
    const std::string description = "<description>D.</description>";
    const auto spec =
        SpecOf("text<!-- c --><Parameter/>" +
               ParameterElement(R"(name="zeta" type="int")", description + "<other/>") +
               "<unknown/>" + ParameterElement(R"(name="alpha" type="bool")", description));
    ASSERT_EQ(spec->GetParameters().size(), 2U);
    EXPECT_EQ(spec->GetParameters()[0]->GetName(), "alpha");
    EXPECT_EQ(spec->GetParameters()[1]->GetName(), "zeta");
}

TEST(XmlPluginParsingTest, InputSpec_EveryContextSupportedNamesAKey) {
    const auto spec = SpecOf("<context-supported>user</context-supported>"
                             "<context-supported>host</context-supported>");
    EXPECT_TRUE(spec->IsContextSupported("user"));
    EXPECT_TRUE(spec->IsContextSupported("host"));
    EXPECT_FALSE(spec->IsContextSupported("User"));
}

TEST(XmlPluginParsingTest, InputSpec_WithoutContextSupportsNone) {
    EXPECT_FALSE(SpecOf("")->IsContextSupported("user"));
}

TEST(XmlPluginParsingTest, InputSpec_AParameterNamedHelpIsRefusedAtItsFirstUse) {
    const auto command = CommandOf(ParameterDescriptor(
        ParameterElement(R"(name="help" type="string")", "<description>D.</description>")));
    EXPECT_EQ(ThrownBy([&] { command->GetInputSpec(); }),
              "Found a duplicate paramater specification for parameter named 'help'");
}

struct PrototypeRow : NamedRow {
    std::string content;
    MetaType kind;
    std::string text;
};

class PrototypeTest : public testing::TestWithParam<PrototypeRow> {};

TEST_P(PrototypeTest, OutputSpec_ItsOneElementIsThePrototype) {
    CommandPieces pieces;
    pieces.outputSpec = "<output-spec>" + GetParam().content + "</output-spec>";
    const auto prototype = CommandOf(pieces)->GetOutputSpec()->GetRootObject();
    ASSERT_NE(prototype, nullptr);
    EXPECT_EQ(prototype->GetType(), GetParam().kind);
    EXPECT_EQ(prototype->ToString(), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Elements, PrototypeTest,
    testing::Values(
        PrototypeRow{{"String"}, "<string/>", MetaType::String, ""},
        PrototypeRow{{"Int"}, "<int>7</int>", MetaType::Int, "7"},
        PrototypeRow{{"Bool"}, "<bool>f</bool>", MetaType::Bool, "false"},
        PrototypeRow{{"List"}, R"(<list type="string"/>)", MetaType::List, ""},
        PrototypeRow{{"Structure"},
                     R"(<structure typeName="A"><field name="a"><int/></field></structure>)",
                     MetaType::Struct,
                     "{'a' => '0', }"},
        PrototypeRow{{"TextsAndCommentsAround"},
                     " text <!-- c --><int/> text <!-- c --><text/><comment/>",
                     MetaType::Int,
                     "0"},
        PrototypeRow{{"OtherNodesAround"}, "<![CDATA[x]]><int/><![CDATA[y]]>", MetaType::Int, "0"}),
    kRowName);

TEST(XmlPluginParsingTest, OutputSpec_WithoutElementHasNoPrototype) {
    for (const std::string content : {"", " text ", "<!-- c -->"}) {
        SCOPED_TRACE(content);
        CommandPieces pieces;
        pieces.outputSpec = "<output-spec>" + content + "</output-spec>";
        EXPECT_EQ(CommandOf(pieces)->GetOutputSpec()->GetRootObject(), nullptr);
    }
}

TEST(XmlPluginParsingTest, FormatParameters_GiveTheDefaultFormat) {
    CommandPieces pieces;
    pieces.formatParameters = "<format-parameters>text<other/><!-- c -->"
                              "<format-parameter name=\"wrap-last\">true</format-parameter>"
                              "<formatter>table</formatter>"
                              "<format-parameter name=\"fields:A\">a,b</format-parameter>"
                              "<format-parameter name=\"empty\"/><format-parameter> nameless "
                              "</format-parameter></format-parameters>";
    const auto format = CommandOf(pieces)->GetDefaultOutputFormatParameters();
    EXPECT_EQ(format.GetFormatter(), "table");
    EXPECT_EQ(
        format.GetParameters(),
        (TextMap{{"", " nameless "}, {"empty", ""}, {"fields:A", "a,b"}, {"wrap-last", "true"}}));
}

TEST(XmlPluginParsingTest, FormatParameters_ALaterParameterOfANameWins) {
    CommandPieces pieces;
    pieces.formatParameters = "<format-parameters><format-parameter name=\"a\">1"
                              "</format-parameter><format-parameter name=\"a\">2"
                              "</format-parameter></format-parameters>";
    EXPECT_EQ(CommandOf(pieces)->GetDefaultOutputFormatParameters().GetParameters(),
              (TextMap{{"a", "2"}}));
}

TEST(XmlPluginParsingTest, FormatParameters_WithoutFormatterNameNone) {
    const auto format = CommandOf(CommandPieces{})->GetDefaultOutputFormatParameters();
    EXPECT_EQ(format.GetFormatter(), "");
    EXPECT_TRUE(format.GetParameters().empty());
}

} // namespace
