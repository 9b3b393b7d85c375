#include <CppTools/autocli/CommandInput.h>
#include <CppTools/autocli/CommandOutput.h>
#include <CppTools/autocli/Dispatcher.h>
#include <CppTools/autocli/RootNamespace.h>
#include <CppTools/callspec/Output.h>

#include <tests/support/ScriptedCommand.h>
#include <tests/support/SeededTest.h>
#include <tests/support/SpecGenerator.h>
#include <tests/support/Values.h>

#include <gtest/gtest.h>

#include <list>
#include <memory>
#include <string>
#include <vector>

namespace {

using CppTools::AutoCli::CommandInput;
using CppTools::AutoCli::CommandOutput;
using CppTools::AutoCli::Dispatcher;
using CppTools::CallSpec::Output;
using CppTools::MetaObj::MetaStruct;
using TestSupport::BothSeeds;
using TestSupport::CheckedSpec;
using TestSupport::GivenPairs;
using TestSupport::InputGiven;
using TestSupport::ScriptedCommand;
using TestSupport::SeedName;
using TestSupport::SpecGenerator;
using Messages = std::vector<std::string>;

class HelpRequestPropertyTest : public TestSupport::SeededTest {
  protected:
    /// A call with a wish for help somewhere in it.
    GivenPairs GivenWithHelp(const CheckedSpec& spec, const std::string& name) {
        GivenPairs given = specs_.Given(spec);
        const std::string value = Random().Chance(50) ? "" : "not a boolean";
        given.insert(given.begin() + static_cast<long>(Random().Below(given.size() + 1)),
                     {name, value});
        return given;
    }

    SpecGenerator specs_{Random()};
};

TEST_P(HelpRequestPropertyTest, Validate_AcceptsWhateverElseTheInputHolds) {
    for (int round = 0; round < 300; ++round) {
        const CheckedSpec checked = specs_.Spec();
        const GivenPairs given = GivenWithHelp(checked, "help");
        const auto inputSpec = checked.NewInputSpec();
        const auto output = Output::New();
        ASSERT_TRUE(inputSpec->Validate(InputGiven(given, inputSpec), output))
            << testing::PrintToString(given);
        ASSERT_EQ(output->GetErrors(), Messages()) << testing::PrintToString(given);
    }
}

TEST_P(HelpRequestPropertyTest, ExecuteCommand_AnswersWithTheHelpRecordAndRunsNothing) {
    for (int round = 0; round < 100; ++round) {
        const CheckedSpec checked = specs_.Spec();
        const auto command = ScriptedCommand::Giving(TestSupport::Int(1));
        for (const auto& parameter : checked.Parameters()) {
            command->parameters.push_back(parameter.spec);
        }
        Dispatcher dispatcher;
        dispatcher.GetRootNamespace()->RegisterNamespaceNode(command, "run");

        const GivenPairs given = GivenWithHelp(checked, Random().Chance(50) ? "help" : "h");
        SCOPED_TRACE(testing::PrintToString(given));
        const auto input = InputGiven<CommandInput>(given);
        std::list<std::string> path = {"run"};
        input->SetCommandPath(path);
        const auto output = CommandOutput::New();

        ASSERT_TRUE(dispatcher.ExecuteCommand(input, output));
        ASSERT_EQ(output->GetErrors(), Messages());
        ASSERT_EQ(command->runs, 0);
        ASSERT_EQ(output->GetOutputType(), Output::OutputType::Help);
        const auto record = std::dynamic_pointer_cast<MetaStruct>(output->GetRootObject());
        ASSERT_EQ(record ? record->GetTypeName() : "", "TandrilCommandHelp");
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, HelpRequestPropertyTest, BothSeeds(), SeedName);

} // namespace
