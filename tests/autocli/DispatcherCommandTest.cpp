#include <CppTools/autocli/Dispatcher.h>

#include <CppTools/autocli/CommandInput.h>
#include <CppTools/autocli/CommandOutput.h>
#include <CppTools/autocli/RootNamespace.h>
#include <CppTools/autocli/formatters/DisplayContext.h>
#include <CppTools/metaobj/CppToolException.h>
#include <CppTools/metaobj/MetaInt.h>
#include <CppTools/metaobj/MetaStruct.h>
#include <tests/support/ScriptedCommand.h>
#include <tests/support/ScriptedPlugin.h>
#include <tests/support/SpecOnlyCommand.h>
#include <tests/support/Thrown.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <list>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>

using CppTools::AutoCli::CommandInput;
using CppTools::AutoCli::CommandOutput;
using CppTools::AutoCli::Dispatcher;
using CppTools::AutoCli::DisplayContext;
using CppTools::AutoCli::FormatParameters;
using CppTools::AutoCli::Namespace;
using CppTools::AutoCli::NamespaceNode;
using CppTools::CallSpec::ParameterType;
using CppTools::MetaObj::MetaInt;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using TestSupport::OptionalParameter;
using TestSupport::ScriptedCommand;
using TestSupport::ScriptedFormatter;
using TestSupport::ScriptedPlugin;
using TestSupport::ThrownBy;

namespace {

/// A dispatcher with the command "system count", which gives 7, and one call of it.
class DispatcherCommandTest : public testing::Test {
  protected:
    DispatcherCommandTest() {
        dispatcher.GetRootNamespace()->SubNamespace("system")->RegisterNamespaceNode(command,
                                                                                     "count");
        Call({"system", "count"});
    }

    void Call(std::list<std::string> path) { input->SetCommandPath(path); }

    Dispatcher dispatcher;
    const std::shared_ptr<ScriptedCommand> command = ScriptedCommand::Giving(MetaInt::New(7));
    const std::shared_ptr<CommandInput> input = CommandInput::New();
    const std::shared_ptr<CommandOutput> output = CommandOutput::New();
};

TEST_F(DispatcherCommandTest, GetCommand_KnownPath_IsTheCommand) {
    EXPECT_EQ(dispatcher.GetCommand(input, output), command);
    EXPECT_THAT(output->GetErrors(), IsEmpty());
    EXPECT_THAT(input->GetCommandPath(), ElementsAre("system", "count"));
}

TEST_F(DispatcherCommandTest, GetCommand_EmptyPath_IsNotFound) {
    Call({});
    EXPECT_EQ(dispatcher.GetCommand(input, output), nullptr);
    EXPECT_THAT(output->GetErrors(), ElementsAre("Unable to find command"));
}

TEST_F(DispatcherCommandTest, GetCommand_Namespace_IsNoCommand) {
    Call({"system"});
    EXPECT_EQ(dispatcher.GetCommand(input, output), nullptr);
    EXPECT_THAT(output->GetErrors(), ElementsAre("Path refers to a namespace, not a command."));
}

TEST_F(DispatcherCommandTest, GetCommand_UnknownName_GivesTheReasonFirstAndKeepsThePath) {
    Call({"system", "nothing", "more"});
    EXPECT_EQ(dispatcher.GetCommand(input, output), nullptr);
    EXPECT_THAT(output->GetErrors(),
                ElementsAre("Unable to find a command or namespace with the name 'nothing' in "
                            "namespace system",
                            "Unable to find command"));
    EXPECT_THAT(input->GetCommandPath(), ElementsAre("system", "nothing", "more"));
}

TEST_F(DispatcherCommandTest, GetCommand_NamesBelowACommand_GivesTheReasonFirst) {
    Call({"system", "count", "more"});
    EXPECT_EQ(dispatcher.GetCommand(input, output), nullptr);
    EXPECT_THAT(output->GetErrors(),
                ElementsAre("Unable to find a namespace or command with the name 'more' on the "
                            "command 'system count'. Commands cannot have sub-commands or "
                            "sub-namespaces.",
                            "Unable to find command"));
}

TEST_F(DispatcherCommandTest, GetCommand_NodeThatOnlyDeclares_IsEmptyWithoutAReason) {
    dispatcher.GetRootNamespace()->RegisterNamespaceNode(
        std::make_shared<TestSupport::SpecOnlyCommand>(), "declared");
    Call({"declared"});
    EXPECT_EQ(dispatcher.GetCommand(input, output), nullptr);
    EXPECT_THAT(output->GetErrors(), IsEmpty());
}

/// Is neither a namespace nor a command.
class OddNode : public Namespace {
  public:
    int GetType() override { return 3; }
};

TEST_F(DispatcherCommandTest, GetCommand_NodeOfAnotherType_IsTakenForANamespace) {
    dispatcher.GetRootNamespace()->RegisterNamespaceNode(std::make_shared<OddNode>(), "odd");
    Call({"odd"});
    EXPECT_EQ(dispatcher.GetCommand(input, output), nullptr);
    EXPECT_THAT(output->GetErrors(), ElementsAre("Path refers to a namespace, not a command."));
}

/// Fails to resolve anything.
class BrokenNamespace : public Namespace {
  public:
    std::shared_ptr<NamespaceNode> ResolveNode(std::list<std::string>&) override {
        throw std::runtime_error("broken");
    }
};

TEST_F(DispatcherCommandTest, GetCommand_OtherException_Passes) {
    dispatcher.GetRootNamespace()->RegisterNamespaceNode(std::make_shared<BrokenNamespace>(),
                                                         "broken");
    Call({"broken", "command"});
    EXPECT_THROW(dispatcher.GetCommand(input, output), std::runtime_error);
}

TEST_F(DispatcherCommandTest, ExecuteCommand_RunsTheCommand) {
    EXPECT_TRUE(dispatcher.ExecuteCommand(input, output));
    EXPECT_EQ(command->runs, 1);
    EXPECT_EQ(output->GetRootObject(), MetaInt::New(7));
    EXPECT_THAT(output->GetErrors(), IsEmpty());
}

TEST_F(DispatcherCommandTest, ExecuteCommand_NoCommand_FailsWithTheReason) {
    Call({"system"});
    EXPECT_FALSE(dispatcher.ExecuteCommand(input, output));
    EXPECT_THAT(output->GetErrors(), ElementsAre("Path refers to a namespace, not a command."));
}

TEST_F(DispatcherCommandTest, ExecuteCommand_GivesTheInputItsSpecification) {
    command->parameters = {OptionalParameter("limit", ParameterType::Int, "l")};
    long seen = 0;
    command->work = [&](const auto& given, const auto& result) {
        seen = given->GetParameterInt("limit");
        result->SetRootObject(MetaInt::New(7));
    };
    input->AddParameter("l", "42");
    EXPECT_TRUE(dispatcher.ExecuteCommand(input, output));
    EXPECT_EQ(seen, 42);
}

TEST_F(DispatcherCommandTest, ExecuteCommand_InvalidInput_RunsNothingAndReportsEveryProblem) {
    command->parameters = {OptionalParameter("limit", ParameterType::Int),
                           CppTools::CallSpec::ParameterSpec::New("zone", ParameterType::String)};
    input->AddParameter("limit", "many");
    input->AddParameter("speed", "high");
    EXPECT_FALSE(dispatcher.ExecuteCommand(input, output));
    EXPECT_EQ(command->runs, 0);
    EXPECT_THAT(output->GetErrors(),
                ElementsAre("Invalid data 'many' for parameter limit expected type Integer",
                            "Unknown parameter : speed", "Missing required parameter --zone"));
}

TEST_F(DispatcherCommandTest, ExecuteCommand_MessagesWithoutARefusal_RunsAndFails) {
    command->parameters = {OptionalParameter("limit", ParameterType::Int)};
    input->AddParameter("limit", "1");
    input->AddParameter("limit", "2");
    EXPECT_FALSE(dispatcher.ExecuteCommand(input, output));
    EXPECT_EQ(command->runs, 1);
    EXPECT_THAT(output->GetErrors(),
                ElementsAre("Found multiple values for limit this parameter can only accept a "
                            "single value."));
}

TEST_F(DispatcherCommandTest, ExecuteCommand_EarlierError_RunsAndFails) {
    output->AddErrorMessage("earlier");
    EXPECT_FALSE(dispatcher.ExecuteCommand(input, output));
    EXPECT_EQ(command->runs, 1);
    EXPECT_THAT(output->GetErrors(), ElementsAre("earlier"));
}

TEST_F(DispatcherCommandTest, ExecuteCommand_CommandFails_Fails) {
    command->work = [](const auto&, const auto&) { throw std::runtime_error("boom"); };
    EXPECT_FALSE(dispatcher.ExecuteCommand(input, output));
    EXPECT_THAT(output->GetErrors(), ElementsAre("Error on command system count : boom"));
}

TEST_F(DispatcherCommandTest, ExecuteCommand_NoResult_HasTheMessagesOfTheCommandAlone) {
    command->work = nullptr;
    EXPECT_FALSE(dispatcher.ExecuteCommand(input, output));
    EXPECT_THAT(output->GetErrors(),
                ElementsAre("No root object set for output. The command did not provide proper "
                            "output.",
                            "Implementation error! The output of this command does not match the "
                            "declared output type, see errors above."));
}

TEST_F(DispatcherCommandTest, ExecuteCommand_HelpByItsShortName_IsTheHelpRecord) {
    command->parameters = {CppTools::CallSpec::ParameterSpec::New("zone", ParameterType::String)};
    input->AddParameter("h", "");
    EXPECT_TRUE(dispatcher.ExecuteCommand(input, output));
    EXPECT_EQ(command->runs, 0);
    EXPECT_EQ(output->GetOutputType(), CppTools::CallSpec::Output::OutputType::Help);
}

TEST_F(DispatcherCommandTest, GetDefaultOutputFormatParameters_AreThoseOfTheCommand) {
    command->SetDefaultOutputFormatter("table");
    command->SetDefaultOutputParameter("fields", "Name");
    const auto format = dispatcher.GetDefaultOutputFormatParameters(input, output);
    EXPECT_EQ(format.GetFormatter(), "table");
    EXPECT_THAT(format.GetParameters(), ElementsAre(Pair("fields", "Name")));
    EXPECT_THAT(output->GetErrors(), IsEmpty());
}

TEST_F(DispatcherCommandTest, GetDefaultOutputFormatParameters_NoCommand_AreEmptyWithTheReason) {
    Call({});
    const auto format = dispatcher.GetDefaultOutputFormatParameters(input, output);
    EXPECT_EQ(format.GetFormatter(), "");
    EXPECT_THAT(format.GetParameters(), IsEmpty());
    EXPECT_THAT(output->GetErrors(), ElementsAre("Unable to find command"));
}

/// Renders into a text of the test's own.
class DispatcherFormatTest : public DispatcherCommandTest {
  protected:
    bool Format(const std::string& formatter) {
        params.SetFormatter(formatter);
        return dispatcher.FormatOutput(output, params, display, text);
    }

    FormatParameters params;
    DisplayContext display;
    std::ostringstream text;
};

TEST_F(DispatcherFormatTest, FormatOutput_NoFormatter_PrintsNothingAndSucceeds) {
    output->SetRootObject(MetaInt::New(7));
    EXPECT_TRUE(Format(""));
    EXPECT_EQ(text.str(), "");
    EXPECT_THAT(output->GetErrors(), IsEmpty());
}

TEST_F(DispatcherFormatTest, FormatOutput_KnownFormatter_RendersToTheStream) {
    output->SetRootObject(MetaInt::New(7));
    EXPECT_TRUE(Format("json"));
    EXPECT_EQ(text.str(), "7\n");
}

TEST_F(DispatcherFormatTest, FormatOutput_UnknownFormatter_Fails) {
    EXPECT_FALSE(Format("nope"));
    EXPECT_EQ(text.str(), "");
    EXPECT_THAT(output->GetErrors(), ElementsAre("Unable to find requested formatter: nope"));
}

TEST_F(DispatcherFormatTest, FormatOutput_HandsEverythingToTheFormatter) {
    const auto formatter = std::make_shared<ScriptedFormatter>("csv", "a;b\n");
    dispatcher.RegisterPlugin(ScriptedPlugin::New("one", {}, {formatter}));
    params.SetParameter("key", "value");
    display.width = 132;
    display.height = 43;
    EXPECT_TRUE(Format("csv"));
    EXPECT_EQ(text.str(), "a;b\n");
    EXPECT_EQ(formatter->seenOutput, output);
    EXPECT_THAT(formatter->seenParams.GetParameters(), ElementsAre(Pair("key", "value")));
    EXPECT_EQ(formatter->seenWidth, 132);
    EXPECT_EQ(formatter->seenHeight, 43);
}

TEST_F(DispatcherFormatTest, FormatOutput_FormatterAnswersFalse_SucceedsAllTheSame) {
    dispatcher.RegisterPlugin(
        ScriptedPlugin::New("one", {}, {std::make_shared<ScriptedFormatter>("csv", "bad", false)}));
    EXPECT_TRUE(Format("csv"));
    EXPECT_EQ(text.str(), "bad");
    EXPECT_THAT(output->GetErrors(), IsEmpty());
}

TEST_F(DispatcherFormatTest, FormatOutput_FormatterThrows_LetsItPass) {
    output->SetRootObject(MetaInt::New(7));
    EXPECT_EQ(ThrownBy([&] { Format("table"); }),
              "Error: Unexpected type for output, formatter, table, expected a List of structs");
}

} // namespace
