#include <CppTools/autocli/Command.h>

#include <CppTools/autocli/CommandInput.h>
#include <CppTools/autocli/CommandOutput.h>
#include <CppTools/metaobj/CppToolException.h>
#include <CppTools/metaobj/MetaInt.h>
#include <CppTools/metaobj/MetaString.h>
#include <CppTools/metaobj/MetaStruct.h>
#include <tests/support/ScriptedCommand.h>
#include <tests/support/Thrown.h>
#include <tests/support/VirtualSlot.h>
#include <tests/support/VirtualTableSize.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <list>
#include <memory>
#include <stdexcept>
#include <string>

using CppTools::CppToolException;
using CppTools::AutoCli::Command;
using CppTools::AutoCli::CommandInput;
using CppTools::AutoCli::CommandOutput;
using CppTools::CallSpec::Input;
using CppTools::CallSpec::Output;
using CppTools::MetaObj::MetaInt;
using CppTools::MetaObj::MetaString;
using CppTools::MetaObj::MetaStruct;
using testing::ElementsAre;
using testing::IsEmpty;
using TestSupport::ScriptedCommand;

namespace {

constexpr const char* kImplementationError =
    "Implementation error! The output of this command does not match the declared output type, "
    "see errors above.";

class CommandTest : public testing::Test {
  protected:
    CommandTest() {
        std::list<std::string> path{"system", "list"};
        input->SetCommandPath(path);
        command->SetName("list");
        command->prototype = MetaInt::New(0);
    }

    const std::shared_ptr<ScriptedCommand> command = ScriptedCommand::New();
    const std::shared_ptr<CommandInput> input = CommandInput::New();
    const std::shared_ptr<CommandOutput> output = CommandOutput::New();
};

TEST_F(CommandTest, VirtualOperations_FollowThoseOfTheSpecification) {
    using TestSupport::VirtualSlotOf;
    EXPECT_EQ(VirtualSlotOf(&Command::Execute), 16);
    EXPECT_EQ(VirtualSlotOf(&Command::GetInputSpec), 2);
    EXPECT_EQ(VirtualSlotOf(&Command::GetOutputSpec), 3);
    EXPECT_EQ(VirtualSlotOf(&Command::GetThis), 4);
    EXPECT_EQ(VirtualSlotOf(&Command::GetType), 13);
    EXPECT_EQ(VirtualSlotOf(&Command::GetOutputSpecInternal), 15);
    EXPECT_EQ(VirtualSlotOf(&Command::ExecuteInternal), 17);
    EXPECT_EQ(TestSupport::VirtualTableSizeOf<Command>(), 18);
}

TEST_F(CommandTest, Execute_ResultOfTheDeclaredShape_IsTheOutput) {
    command->work = [](const auto&, const auto& result) { result->SetRootObject(MetaInt::New(7)); };
    command->Execute(input, output);
    EXPECT_EQ(command->runs, 1);
    EXPECT_THAT(output->GetErrors(), IsEmpty());
    EXPECT_EQ(output->GetRootObject(), MetaInt::New(7));
    EXPECT_EQ(output->GetOutputType(), Output::OutputType::Result);
}

TEST_F(CommandTest, Execute_HandsOverInputAndOutput) {
    std::shared_ptr<Input> seenInput;
    std::shared_ptr<Output> seenOutput;
    command->work = [&](const auto& given, const auto& result) {
        seenInput = given;
        seenOutput = result;
    };
    command->Execute(input, output);
    EXPECT_EQ(seenInput, input);
    EXPECT_EQ(seenOutput, output);
}

TEST_F(CommandTest, Execute_ThroughTheCallTarget_IsTheSameOperation) {
    command->work = [](const auto&, const auto& result) { result->SetRootObject(MetaInt::New(7)); };
    const std::shared_ptr<CppTools::CallSpec::CallTarget> target = command;
    target->Execute(input, output);
    EXPECT_EQ(output->GetRootObject(), MetaInt::New(7));
}

TEST_F(CommandTest, Execute_WithHelp_GivesTheHelpRecordAndRunsNothing) {
    input->AddParameter("help", "");
    command->Execute(input, output);
    EXPECT_EQ(command->runs, 0);
    EXPECT_EQ(output->GetOutputType(), Output::OutputType::Help);
    const auto record = std::dynamic_pointer_cast<MetaStruct>(output->GetRootObject());
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->GetTypeName(), "TandrilCommandHelp");
    EXPECT_THAT(output->GetErrors(), IsEmpty());
}

TEST_F(CommandTest, Execute_WithHelpOfAnyValue_GivesTheHelpRecord) {
    input->AddParameter("help", "false");
    command->Execute(input, output);
    EXPECT_EQ(command->runs, 0);
    EXPECT_EQ(output->GetOutputType(), Output::OutputType::Help);
}

TEST_F(CommandTest, Execute_WithTheBareShortNameOfHelp_RunsTheCommand) {
    input->AddParameter("h", "");
    command->Execute(input, output);
    EXPECT_EQ(command->runs, 1);
}

TEST_F(CommandTest, Execute_WorkThrows_IsOneErrorWithTheCommandPath) {
    command->work = [](const auto&, const auto&) { throw std::runtime_error("boom"); };
    command->Execute(input, output);
    EXPECT_THAT(output->GetErrors(), ElementsAre("Error on command system list : boom"));
    EXPECT_EQ(command->outputSpecRequests, 0);
}

TEST_F(CommandTest, Execute_WorkThrowsTheLibrarysException_IsOneErrorToo) {
    command->work = [](const auto&, const auto&) { throw CppToolException("refused"); };
    command->Execute(input, output);
    EXPECT_THAT(output->GetErrors(), ElementsAre("Error on command system list : refused"));
}

TEST_F(CommandTest, Execute_WorkThrowsForAPlainInput_NamesTheCommand) {
    command->work = [](const auto&, const auto&) { throw std::runtime_error("boom"); };
    command->Execute(Input::New(), output);
    EXPECT_THAT(output->GetErrors(), ElementsAre("Error on command list : boom"));
}

TEST_F(CommandTest, Execute_WorkThrowsForACommandInputWithoutAPath_NamesNothing) {
    command->work = [](const auto&, const auto&) { throw std::runtime_error("boom"); };
    command->Execute(CommandInput::New(), output);
    EXPECT_THAT(output->GetErrors(), ElementsAre("Error on command  : boom"));
}

TEST_F(CommandTest, Execute_WorkThrowsBehindErrorsOfItsOwn_KeepsThemInOrder) {
    command->work = [](const auto&, const auto& result) {
        result->AddErrorMessage("disk full");
        throw std::runtime_error("boom");
    };
    command->Execute(input, output);
    EXPECT_THAT(output->GetErrors(),
                ElementsAre("disk full", "Error on command system list : boom"));
}

TEST_F(CommandTest, Execute_WorkThrowsSomethingElse_LetsItPass) {
    command->work = [](const auto&, const auto&) { throw 42; };
    EXPECT_THROW(command->Execute(input, output), int);
    EXPECT_THAT(output->GetErrors(), IsEmpty());
}

TEST_F(CommandTest, Execute_WorkReportsAnError_ResultIsNotCompared) {
    command->work = [](const auto&, const auto& result) {
        result->AddErrorMessage("disk full");
        result->SetRootObject(MetaString::New("no integer"));
    };
    command->Execute(input, output);
    EXPECT_THAT(output->GetErrors(), ElementsAre("disk full"));
    EXPECT_EQ(command->outputSpecRequests, 0);
}

TEST_F(CommandTest, Execute_ResultOfAnotherKind_IsAnImplementationError) {
    command->work = [](const auto&, const auto& result) {
        result->SetRootObject(MetaString::New("no integer"));
    };
    command->Execute(input, output);
    EXPECT_THAT(
        output->GetErrors(),
        ElementsAre("Type mismatch in structure.  Expecting Int got String", kImplementationError));
}

TEST_F(CommandTest, Execute_SeveralReasons_StandInOrderBeforeTheClosingMessage) {
    const auto declared = MetaStruct::New("Disk");
    declared->SetField("Name", "sda");
    declared->SetField("Size", 1);
    command->prototype = declared;
    command->work = [](const auto&, const auto& result) {
        const auto value = MetaStruct::New("Disc");
        value->SetField("Name", "sda");
        result->SetRootObject(value);
    };
    command->Execute(input, output);
    EXPECT_THAT(output->GetErrors(),
                ElementsAre("Type names do not match.",
                            "Mismatch on number of fields set in struct. Expected 2 found 1",
                            "Missing field in input: Size", kImplementationError));
}

TEST_F(CommandTest, Execute_ResultThatPassesWithARemark_HasNoError) {
    command->prototype = MetaStruct::New("Disk");
    command->work = [](const auto&, const auto& result) {
        result->SetRootObject(MetaStruct::New("Disc"));
    };
    command->Execute(input, output);
    EXPECT_THAT(output->GetErrors(), IsEmpty());
}

TEST_F(CommandTest, Execute_HelpThatCannotBeBuilt_IsThrown) {
    command->parameters = {
        TestSupport::OptionalParameter("help", CppTools::CallSpec::ParameterType::Flag)};
    input->AddParameter("help", "");
    EXPECT_EQ(TestSupport::ThrownBy([&] { command->Execute(input, output); }),
              "Found a duplicate paramater specification for parameter named 'help'");
    EXPECT_THAT(output->GetErrors(), IsEmpty());
    EXPECT_EQ(output->GetRootObject(), nullptr);
    EXPECT_EQ(output->GetOutputType(), Output::OutputType::Result);
}

/// Cannot say what its result is.
class UndecidedCommand : public ScriptedCommand {
  public:
    std::shared_ptr<CppTools::CallSpec::OutputSpec> GetOutputSpecInternal() override {
        throw std::runtime_error("undecided");
    }
};

TEST_F(CommandTest, Execute_DeclarationOfTheResultThrows_IsThrown) {
    UndecidedCommand undecided;
    EXPECT_THROW(undecided.Execute(input, output), std::runtime_error);
    EXPECT_EQ(undecided.runs, 1);
    EXPECT_THAT(output->GetErrors(), IsEmpty());
}

TEST_F(CommandTest, Execute_NoResult_IsAnImplementationError) {
    command->Execute(input, output);
    EXPECT_THAT(output->GetErrors(),
                ElementsAre("No root object set for output. The command did not provide proper "
                            "output.",
                            kImplementationError));
}

TEST_F(CommandTest, Execute_NothingDeclared_IsAnImplementationError) {
    command->prototype = nullptr;
    command->work = [](const auto&, const auto& result) { result->SetRootObject(MetaInt::New(7)); };
    command->Execute(input, output);
    EXPECT_THAT(output->GetErrors(),
                ElementsAre("No root object set for output spec. Root object for output spec must "
                            "be set for proper validation of output.",
                            kImplementationError));
}

} // namespace
