#include <CppTools/autocli/CommandInput.h>
#include <CppTools/autocli/CommandOutput.h>
#include <CppTools/autocli/CommandSpec.h>
#include <CppTools/metaobj/MetaList.h>
#include <CppTools/metaobj/MetaString.h>
#include <CppTools/metaobj/MetaStruct.h>
#include <tests/support/ScriptedCommand.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <list>
#include <memory>
#include <string>

using CppTools::AutoCli::CommandInput;
using CppTools::AutoCli::CommandOutput;
using CppTools::CallSpec::Input;
using CppTools::CallSpec::Output;
using CppTools::CallSpec::ParameterConstraint;
using CppTools::CallSpec::ParameterConstraintType;
using CppTools::CallSpec::ParameterSpec;
using CppTools::CallSpec::ParameterType;
using CppTools::MetaObj::MetaList;
using CppTools::MetaObj::MetaStruct;
using CppTools::MetaObj::MetaType;
using testing::ElementsAre;
using TestSupport::OptionalParameter;
using TestSupport::ScriptedCommand;

namespace {

constexpr const char* kHelpEntry =
    "{'Description' => 'Show the help message.', 'Name' => 'help', 'Required' => 'false', "
    "'Secret' => 'false', 'Short Name' => 'h', }";

class CommandHelpRecordTest : public testing::Test {
  protected:
    CommandHelpRecordTest() {
        command->SetDescription("List the zones.");
        input->SetDispatcher("/bin/tandril");
        std::list<std::string> path{"system", "list"};
        input->SetCommandPath(path);
    }

    std::shared_ptr<MetaStruct> Record(const std::shared_ptr<Input>& call) {
        command->GenerateHelpOutput(call, output);
        return std::dynamic_pointer_cast<MetaStruct>(output->GetRootObject());
    }

    std::shared_ptr<MetaList> ListOf(const std::string& field) {
        return std::dynamic_pointer_cast<MetaList>(Record(input)->GetField(field));
    }

    const std::shared_ptr<ScriptedCommand> command = ScriptedCommand::New();
    const std::shared_ptr<CommandInput> input = CommandInput::New();
    const std::shared_ptr<CommandOutput> output = CommandOutput::New();
};

TEST_F(CommandHelpRecordTest, BareCommand_HasAllFieldsAndTheHelpParameter) {
    const auto record = Record(input);
    EXPECT_EQ(record->GetTypeName(), "TandrilCommandHelp");
    EXPECT_EQ(record->ToString(), std::string("{'Description' => 'List the zones.', ") +
                                      "'Dispatcher' => '/bin/tandril', 'Example List' => '', " +
                                      "'Param List' => '" + kHelpEntry +
                                      "', 'Path' => 'system list', }");
}

TEST_F(CommandHelpRecordTest, Output_IsMarkedAsHelp) {
    Record(input);
    EXPECT_EQ(output->GetOutputType(), Output::OutputType::Help);
    EXPECT_EQ(static_cast<int>(output->GetOutputType()), 2);
    EXPECT_FALSE(output->HasError());
}

TEST_F(CommandHelpRecordTest, PlainInput_HasNeitherDispatcherNorPath) {
    command->AddExample("--all", "List all");
    EXPECT_EQ(Record(Input::New())->ToString(),
              std::string("{'Description' => 'List the zones.', 'Example List' => "
                          "'{'Description' => 'List all :', 'Syntax' => '#  --all', }', "
                          "'Param List' => '") +
                  kHelpEntry + "', }");
}

TEST_F(CommandHelpRecordTest, CommandInputOfNobodyAndNowhere_HasBothFieldsEmpty) {
    command->AddExample("--all", "List all");
    EXPECT_EQ(Record(CommandInput::New())->ToString(),
              std::string("{'Description' => 'List the zones.', 'Dispatcher' => '', 'Example "
                          "List' => '{'Description' => 'List all :', 'Syntax' => '#   --all', }', "
                          "'Param List' => '") +
                  kHelpEntry + "', 'Path' => '', }");
}

/// Has its own way of giving its parameters, without the built-in one.
class HelplessCommand : public ScriptedCommand {
  public:
    std::shared_ptr<CppTools::CallSpec::InputSpec> GetInputSpec() override {
        return GetInputSpecInternal();
    }
};

TEST_F(CommandHelpRecordTest, SpecificationWithoutHelp_ListsTheOthersOnly) {
    HelplessCommand helpless;
    helpless.parameters = {OptionalParameter("zone", ParameterType::String)};
    helpless.GenerateHelpOutput(Input::New(), output);
    EXPECT_EQ(output->GetRootObject()->ToString(),
              "{'Description' => '', 'Example List' => '', 'Param List' => '{'Description' => '', "
              "'Name' => 'zone', 'Required' => 'false', 'Secret' => 'false', 'Short Name' => '', "
              "}', }");
}

TEST_F(CommandHelpRecordTest, Output_KeepsItsErrorsAndLosesItsResult) {
    output->AddErrorMessage("earlier");
    output->SetRootObject(CppTools::MetaObj::MetaString::New("result"));
    EXPECT_EQ(Record(input)->GetTypeName(), "TandrilCommandHelp");
    EXPECT_THAT(output->GetErrors(), ElementsAre("earlier"));
}

TEST_F(CommandHelpRecordTest, Fields_HaveTheKindsOfTheContract) {
    const auto record = Record(input);
    for (const char* text : {"Dispatcher", "Path", "Description"}) {
        EXPECT_EQ(record->GetFieldType(text), MetaType::String) << text;
    }
    EXPECT_EQ(record->GetFieldType("Param List"), MetaType::List);
    EXPECT_EQ(record->GetFieldType("Example List"), MetaType::List);
}

TEST_F(CommandHelpRecordTest, Parameters_AreInNameOrderWithHelpLast) {
    command->parameters = {OptionalParameter("zone", ParameterType::String),
                           OptionalParameter("alpha", ParameterType::Int, "a"),
                           OptionalParameter("kind", ParameterType::Flag)};
    std::vector<std::string> names;
    for (const auto& entry : ListOf("Param List")->GetObjects()) {
        names.push_back(std::dynamic_pointer_cast<MetaStruct>(entry)->GetField("Name")->ToString());
    }
    EXPECT_THAT(names, ElementsAre("alpha", "kind", "zone", "help"));
}

TEST_F(CommandHelpRecordTest, Parameter_ShowsEverythingItDeclares) {
    const auto password = ParameterSpec::New("password", ParameterType::String);
    password->SetShortName("p");
    password->SetDescription("The password.");
    password->SetSecret(true);
    command->parameters = {password};
    const auto entry = ListOf("Param List")->GetItem(0);
    EXPECT_EQ(entry->ToString(),
              "{'Description' => 'The password.', 'Name' => 'password', 'Required' => 'true', "
              "'Secret' => 'true', 'Short Name' => 'p', }");
    const auto record = std::dynamic_pointer_cast<MetaStruct>(entry);
    EXPECT_EQ(record->GetTypeName(), "TandrilCommandParameter");
    EXPECT_EQ(record->GetFieldType("Required"), MetaType::Bool);
    EXPECT_EQ(record->GetFieldType("Secret"), MetaType::Bool);
}

TEST_F(CommandHelpRecordTest, ParameterDescription_IsExpanded) {
    const auto constraint = ParameterConstraint::New(ParameterConstraintType::StringEnum);
    constraint->AddStringEnum("on");
    constraint->AddStringEnum("off");
    const auto state = OptionalParameter("state", ParameterType::String);
    state->SetDescription("One of %ENUM%");
    state->SetConstraint(constraint);
    command->parameters = {state};
    EXPECT_EQ(ListOf("Param List")->GetItem(0)->ToString(),
              "{'Description' => 'One of [on, off]', 'Name' => 'state', 'Required' => 'false', "
              "'Secret' => 'false', 'Short Name' => '', }");
}

TEST_F(CommandHelpRecordTest, ParameterList_HasTheParameterTemplate) {
    const auto list = ListOf("Param List");
    EXPECT_EQ(list->GetListType(), MetaType::Struct);
    EXPECT_EQ(list->GetListStructure()->GetTypeName(), "TandrilCommandParameter");
    EXPECT_THAT(list->GetListStructure()->GetFieldNames(),
                ElementsAre("Description", "Name", "Required", "Secret", "Short Name"));
}

TEST_F(CommandHelpRecordTest, Examples_AreInTheOrderAddedWithTheirCommandLine) {
    command->AddExample("--zone=west", "List the west");
    command->AddExample("", "List all");
    const auto list = ListOf("Example List");
    EXPECT_EQ(list->ToString(),
              "{'Description' => 'List the west :', 'Syntax' => '# /bin/tandril system list "
              "--zone=west', }, {'Description' => 'List all :', 'Syntax' => '# /bin/tandril "
              "system list ', }");
}

TEST_F(CommandHelpRecordTest, ExampleList_WithoutExamples_IsEmptyWithItsTemplate) {
    const auto list = ListOf("Example List");
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(list->GetCount(), 0U);
    EXPECT_EQ(list->GetListType(), MetaType::Struct);
    EXPECT_EQ(list->GetListStructure()->GetTypeName(), "TandrilCommandExample");
    EXPECT_THAT(list->GetListStructure()->GetFieldNames(), ElementsAre("Description", "Syntax"));
}

} // namespace
