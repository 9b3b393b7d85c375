#include <CppTools/autocli/formatters/CommandHelpFormatter.h>

#include <CppTools/autocli/CommandInput.h>
#include <CppTools/autocli/CommandOutput.h>
#include <CppTools/callspec/ParameterSpec.h>

#include <tests/support/CommandHelpRecord.h>
#include <tests/support/ImpostorValue.h>
#include <tests/support/NamedRow.h>
#include <tests/support/Rendering.h>
#include <tests/support/ScriptedCommand.h>
#include <tests/support/Thrown.h>
#include <tests/support/Values.h>
#include <tests/support/Wrapping.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <ios>
#include <list>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace {

using CppTools::AutoCli::CommandHelpFormatter;
using CppTools::AutoCli::CommandInput;
using CppTools::AutoCli::CommandOutput;
using CppTools::AutoCli::DisplayContext;
using CppTools::AutoCli::FormatParameters;
using CppTools::CallSpec::Output;
using CppTools::CallSpec::ParameterType;
using CppTools::MetaObj::MetaType;
using TestSupport::Bool;
using TestSupport::DocumentedParams;
using TestSupport::DocumentedParamsOf;
using TestSupport::ExampleList;
using TestSupport::Help;
using TestSupport::HelpOfOptions;
using TestSupport::HelpOption;
using TestSupport::HelpRecord;
using TestSupport::ImpostorValue;
using TestSupport::Int;
using TestSupport::Ints;
using TestSupport::kHelpHeading;
using TestSupport::kRowName;
using TestSupport::NamedRow;
using TestSupport::OptionList;
using TestSupport::RenderWith;
using TestSupport::Rows;
using TestSupport::ScriptedCommand;
using TestSupport::Struct;
using TestSupport::Text;
using TestSupport::Texts;
using TestSupport::ThrownBy;
using TestSupport::Value;
using TestSupport::WrongRoot;

TEST(CommandHelpFormatterTest, Name_IsCommandhelp) {
    EXPECT_EQ(CommandHelpFormatter().GetName(), "commandhelp");
}

TEST(CommandHelpFormatterTest, Description_IsTheSentenceForUsers) {
    EXPECT_EQ(CommandHelpFormatter().GetDescription(), "Handle --help output for commands");
}

TEST(CommandHelpFormatterTest, Params_NoneAreDocumented) {
    EXPECT_EQ(DocumentedParamsOf(CommandHelpFormatter()), DocumentedParams());
}

// --- Roots

class CommandHelpRootTest : public testing::TestWithParam<WrongRoot> {};

TEST_P(CommandHelpRootTest, AnythingButAHelpRecordIsRefusedBeforeAnythingIsWritten) {
    const auto output = Output::New();
    output->SetRootObject(GetParam().root);
    FormatParameters params;
    DisplayContext display;
    std::ostringstream out;
    EXPECT_EQ(
        ThrownBy([&] { CommandHelpFormatter().Format(output, params, display, out); }),
        "Error: Unexpected type for output, formatter expected a struct with help information");
    EXPECT_EQ(out.str(), "");
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, CommandHelpRootTest,
    testing::Values(WrongRoot{{"Nothing"}, nullptr}, WrongRoot{{"Integer"}, Int(1)},
                    WrongRoot{{"String"}, Text("TandrilCommandHelp")},
                    WrongRoot{{"List"}, Texts({})},
                    WrongRoot{{"OtherType"}, Struct("TandrilCommandPrint", {})},
                    WrongRoot{{"OtherCase"}, Struct("tandrilCommandHelp", {})},
                    WrongRoot{{"LongerType"}, Struct("TandrilCommandHelp2", {})},
                    WrongRoot{{"Impostor"}, ImpostorValue::New(MetaType::Struct)}),
    kRowName);

// --- Heading

TEST(CommandHelpFormatterTest, Format_HeadingIsUsageAndDescription) {
    EXPECT_EQ(HelpOfOptions({}), kHelpHeading);
}

TEST(CommandHelpFormatterTest, Format_DescriptionIsNotWrapped) {
    const std::string text = "A description of many words\nand two lines that nobody wraps.";
    const auto record = HelpRecord(OptionList({}), ExampleList({}));
    record->SetField("Description", text);
    EXPECT_EQ(Help(record, 20),
              "Usage: tandril disk list <options>\n\nDescription: " + text + "\n\n");
}

TEST(CommandHelpFormatterTest, Format_EmptyRecord_MissingTextsAreEmpty) {
    EXPECT_EQ(Help(Struct("TandrilCommandHelp", {})), "Usage:   <options>\n"
                                                      "\n"
                                                      "Description: \n"
                                                      "\n");
}

TEST(CommandHelpFormatterTest, Format_TextsOfAnotherKind_AreEmpty) {
    EXPECT_EQ(Help(Struct("TandrilCommandHelp", {{"Dispatcher", Int(1)},
                                                 {"Path", Texts({"disk"})},
                                                 {"Description", Bool(true)}})),
              "Usage:   <options>\n"
              "\n"
              "Description: \n"
              "\n");
}

TEST(CommandHelpFormatterTest, Format_ListsThatAreNoLists_AreLeftOut) {
    EXPECT_EQ(Help(HelpRecord(Text("x"), Struct("T", {}))), kHelpHeading);
}

// --- Examples

TEST(CommandHelpExamplesTest, WithoutExamplesNothingFollowsTheOptions) {
    EXPECT_EQ(HelpOfOptions({{"a", "", "One."}}), kHelpHeading + std::string("     --a   One.\n"));
}

TEST(CommandHelpExamplesTest, EachExampleIsFollowedByAnEmptyLine) {
    const auto examples = ExampleList({{"List all", "--all"}, {"List one", "--name sda"}});
    EXPECT_EQ(Help(HelpRecord(OptionList({{"a", "", "One."}}), examples)),
              kHelpHeading + std::string("     --a   One.\n"
                                         "\n"
                                         "Examples: \n"
                                         "\n"
                                         "    List all :\n"
                                         "# tandril disk list --all        \n"
                                         "\n"
                                         "    List one :\n"
                                         "# tandril disk list --name sda        \n"
                                         "\n"));
}

TEST(CommandHelpExamplesTest, DescriptionIsWrappedBehindFourBlanks) {
    const auto examples = ExampleList({{"aaaa bbbb cccc dddd eeee", "--all"}});
    EXPECT_EQ(Help(HelpRecord(OptionList({}), examples), 24),
              kHelpHeading + std::string("\n"
                                         "Examples: \n"
                                         "\n"
                                         "    aaaa bbbb cccc dddd \n"
                                         "    eeee :\n"
                                         "# tandril disk list --all        \n"
                                         "\n"));
}

TEST(CommandHelpExamplesTest, LineEndsInADescriptionAreNotIndented) {
    const auto examples = ExampleList({{"One\nTwo", "--all"}});
    EXPECT_EQ(Help(HelpRecord(OptionList({}), examples), 80),
              kHelpHeading + std::string("\n"
                                         "Examples: \n"
                                         "\n"
                                         "    One\n"
                                         "Two :\n"
                                         "# tandril disk list --all        \n"
                                         "\n"));
}

TEST(CommandHelpExamplesTest, SyntaxIsNotWrapped) {
    const auto examples = ExampleList({{"x", "--aaaa 1 --bbbb 2 --cccc 3 --dddd 4"}});
    EXPECT_EQ(Help(HelpRecord(OptionList({}), examples), 20),
              kHelpHeading +
                  std::string("\n"
                              "Examples: \n"
                              "\n"
                              "    x :\n"
                              "# tandril disk list --aaaa 1 --bbbb 2 --cccc 3 --dddd 4        \n"
                              "\n"));
}

TEST(CommandHelpExamplesTest, ElementsThatAreNoStructures_HaveEmptyTexts) {
    EXPECT_EQ(Help(HelpRecord(OptionList({}), Texts({"x"}))),
              kHelpHeading + std::string("\n"
                                         "Examples: \n"
                                         "\n"
                                         "     :\n"
                                         "# tandril disk list         \n"
                                         "\n"));
}

TEST(CommandHelpExamplesTest, EveryWidthAgreesWithWrappingLineByLine) {
    const std::string text = "List all of the disks of this machine with their sizes and states";
    const auto record = HelpRecord(OptionList({}), ExampleList({{text, "--all"}}));
    for (int width = 0; width <= 120; ++width) {
        ASSERT_EQ(Help(record, width), kHelpHeading + std::string("\nExamples: \n\n    ") +
                                           TestSupport::WrapByLines(text + " :", 4, width) +
                                           "\n# tandril disk list --all        \n\n")
            << "width " << width;
    }
}

// --- Whole helps

TEST(CommandHelpFormatterTest, Format_RecordOfACommand) {
    const auto command = ScriptedCommand::New();
    command->SetDescription("Lists disks.");
    command->AddExample("--all", "List all");
    auto name = CppTools::CallSpec::ParameterSpec::New("name", ParameterType::String);
    name->SetShortName("n");
    name->SetDescription("The disk.");
    name->SetRequired(true);
    command->parameters = {name};
    const auto input = CommandInput::New();
    std::list<std::string> path{"disk", "list"};
    input->SetDispatcher("tandril");
    input->SetCommandPath(path);
    input->AddParameter("help", "");
    const auto output = CommandOutput::New();
    command->Execute(input, output);
    EXPECT_EQ(Help(output->GetRootObject(), 80),
              kHelpHeading + std::string("  -n|--name   The disk. (required)\n"
                                         "  -h|--help   Show the help message.\n"
                                         "\n"
                                         "Examples: \n"
                                         "\n"
                                         "    List all : :\n"
                                         "# tandril disk list # tandril disk list --all        \n"
                                         "\n"));
}

TEST(CommandHelpFormatterTest, Format_ParametersDoNotMatter) {
    const auto record = HelpRecord(OptionList({{"a", "", "One."}}), ExampleList({{"x", "y"}}));
    EXPECT_EQ(RenderWith<CommandHelpFormatter>(record,
                                               {{"fields:TandrilCommandHelp", "Path"},
                                                {"fields", "Name"},
                                                {"units:TandrilCommandParameter.Name", "MB"},
                                                {"wrap-last", "true"}},
                                               40),
              RenderWith<CommandHelpFormatter>(record, {}, 40));
}

TEST(CommandHelpFormatterTest, Format_KeepsNothingBetweenCalls) {
    CommandHelpFormatter formatter;
    const auto wide = HelpRecord(OptionList({{"a-long-name", "", "One."}}), ExampleList({}));
    const auto narrow = HelpRecord(OptionList({{"a", "", "One."}}), ExampleList({}));
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(TestSupport::Render(formatter, wide).second,
                  kHelpHeading + std::string("     --a-long-name   One.\n"));
        EXPECT_EQ(TestSupport::Render(formatter, narrow).second,
                  kHelpHeading + std::string("     --a   One.\n"));
    }
}

} // namespace
