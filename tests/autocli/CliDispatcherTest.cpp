#include "CliDispatcherFixture.h"

#include <CppTools/autocli/CommandInput.h>
#include <CppTools/autocli/Namespace.h>
#include <CppTools/metaobj/CppToolException.h>
#include <tests/support/SpecOnlyCommand.h>
#include <tests/support/Thrown.h>
#include <tests/support/VirtualTableSize.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <list>
#include <memory>
#include <string>
#include <vector>

using CppTools::AutoCli::CommandInput;
using CppTools::AutoCli::CommandOutput;
using CppTools::AutoCli::OptionParser;
using CppTools::CallSpec::Output;
using CppTools::CallSpec::ParameterType;
using CppTools::MetaObj::MetaInt;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using TestSupport::OptionalParameter;
using TestSupport::PrintedBy;
using TestSupport::ThrownBy;

namespace {

class CliDispatcherTest : public TestSupport::CliDispatcherFixture {};

TEST_F(CliDispatcherTest, New_IsADispatcherWithTheBuiltInPlugIn) {
    CppTools::AutoCli::CliDispatcher fresh;
    EXPECT_THAT(fresh.GetPluginNames(), ElementsAre("Internal"));
    EXPECT_EQ(fresh.GetRootNamespace()->GetDispatcher(), &fresh);
}

TEST_F(CliDispatcherTest, Destructor_IsTheOnlyVirtualOperation) {
    EXPECT_EQ(TestSupport::VirtualTableSizeOf<CppTools::AutoCli::CliDispatcher>(), 2);
}

TEST_F(CliDispatcherTest, Command_ResultIsPrintedInItsDefaultFormat) {
    EXPECT_TRUE(Handle({"system", "count"}));
    EXPECT_EQ(printed.out, "7\n");
    EXPECT_EQ(printed.err, "");
    EXPECT_EQ(count->runs, 1);
}

TEST_F(CliDispatcherTest, Command_GetsItsParametersInOrder) {
    std::vector<std::string> zones;
    echo->parameters.push_back(OptionalParameter("zone", ParameterType::StringList, "z"));
    echo->work = [&](const auto& input, const auto& result) {
        input->GetParameterList("zone", zones);
        result->SetRootObject(CppTools::MetaObj::MetaString::New(input->GetParameter("text")));
    };
    EXPECT_TRUE(Handle({"system", "echo", "--zone=b", "--text", "a b", "--zone", "a"}));
    EXPECT_THAT(zones, ElementsAre("b", "a"));
    EXPECT_EQ(printed.out, "a b\n");
}

TEST_F(CliDispatcherTest, Command_KnowsDispatcherAndPath) {
    std::string seen;
    count->work = [&](const auto& input, const auto& result) {
        const auto call = std::dynamic_pointer_cast<CommandInput>(input);
        seen = call->GetDispatcher() + "|" + call->GetCommandPathString();
        result->SetRootObject(MetaInt::New(7));
    };
    OptionParser parser("/bin/mytool");
    parser.ParseVector({"system", "count"});
    PrintedBy([&] { dispatcher.HandleOptions(parser, false); });
    EXPECT_EQ(seen, "/bin/mytool|system count");
}

TEST_F(CliDispatcherTest, Command_ThatFails_PrintsItsErrorsOnly) {
    EXPECT_FALSE(Handle({"--formatter=simple", "system", "fail"}));
    EXPECT_EQ(printed.out, "");
    EXPECT_EQ(printed.err, "Errors: \nfirst\nsecond\n");
}

TEST_F(CliDispatcherTest, Command_InvalidInput_PrintsEveryProblem) {
    EXPECT_FALSE(Handle({"system", "count", "--limit=many", "--speed=1"}));
    EXPECT_EQ(printed.out, "");
    EXPECT_EQ(printed.err, "Errors: \nInvalid data 'many' for parameter limit expected type "
                           "Integer\nUnknown parameter : speed\n");
    EXPECT_EQ(count->runs, 0);
}

TEST_F(CliDispatcherTest, Command_MissingValue_IsNotRun) {
    EXPECT_FALSE(Handle({"system", "count", "--limit", "--all"}));
    EXPECT_EQ(printed.out, "");
    EXPECT_EQ(printed.err, "Errors: \n--limit must have value\n");
    EXPECT_EQ(count->runs, 0);
}

TEST_F(CliDispatcherTest, Command_ExtraWords_IsNotRun) {
    EXPECT_FALSE(Handle({"system", "count", "--limit=1", "more", "words"}));
    EXPECT_EQ(printed.err, "Errors: \nFound Extra non-parameter arguments at the end of input: "
                           "'more' 'words' \n");
    EXPECT_EQ(count->runs, 0);
}

TEST_F(CliDispatcherTest, UnknownDispatcherOption_IsReportedAndNothingRun) {
    EXPECT_FALSE(Handle({"--foo=1", "system", "count"}));
    EXPECT_EQ(printed.out, "");
    EXPECT_EQ(printed.err, "Errors: \nUnknown dispatcher parameter: foo\n");
    EXPECT_EQ(count->runs, 0);
}

TEST_F(CliDispatcherTest, DispatcherErrors_StandBeforeThoseOfTheCommandOptions) {
    EXPECT_FALSE(Handle({"--foo=1", "system", "count", "--limit"}));
    EXPECT_EQ(printed.err,
              "Errors: \nUnknown dispatcher parameter: foo\n--limit must have value\n");
}

TEST_F(CliDispatcherTest, EarlierParseErrors_AreAllThatIsHandled) {
    OptionParser parser;
    parser.ParseVector({"--help", "--screen-width=70", "system", "count", "--limit=1", "more"});
    parser.GetCommandParameters();
    bool result = true;
    printed = PrintedBy([&] { result = dispatcher.HandleOptions(parser, true); });
    EXPECT_FALSE(result);
    EXPECT_EQ(printed.out, "");
    EXPECT_EQ(printed.err,
              "Errors: \nFound Extra non-parameter arguments at the end of input: 'more' \n");
    CppTools::AutoCli::DisplayContext display;
    PrintedBy([&] { dispatcher.GetDisplayContext(display); });
    EXPECT_EQ(display.width, 0);
}

TEST_F(CliDispatcherTest, UnknownName_IsThrownToTheCaller) {
    EXPECT_EQ(ThrownBy([&] {
                  Handle({"system", "nothing"});
              }),
              "Unable to find a command or namespace with the name 'nothing' in namespace system");
    EXPECT_EQ(ThrownBy([&] { Handle({"nothing"}); }),
              "Unable to find a command or namespace with the name 'nothing' in namespace ");
}

TEST_F(CliDispatcherTest, NamesBelowACommand_AreThrownToTheCaller) {
    EXPECT_EQ(ThrownBy([&] {
                  Handle({"system", "count", "more"});
              }),
              "Unable to find a namespace or command with the name 'more' on the command 'system "
              "count'. Commands cannot have sub-commands or sub-namespaces.");
}

TEST_F(CliDispatcherTest, CommandThatDeclaresHelp_IsThrownToTheCaller) {
    count->parameters = {OptionalParameter("help", ParameterType::Flag)};
    EXPECT_EQ(ThrownBy([&] {
                  Handle({"system", "count"});
              }),
              "Found a duplicate paramater specification for parameter named 'help'");
}

TEST_F(CliDispatcherTest, NodeThatOnlyDeclares_FailsWithoutAWord) {
    dispatcher.GetRootNamespace()->RegisterNamespaceNode(
        std::make_shared<TestSupport::SpecOnlyCommand>(), "declared");
    EXPECT_FALSE(Handle({"declared"}));
    EXPECT_EQ(printed.out + printed.err, "");
}

/// Answers the first questions for its children and fails at all that follow.
class ForgetfulNamespace : public CppTools::AutoCli::Namespace {
  public:
    std::shared_ptr<CppTools::AutoCli::NamespaceNode>
    ResolveNode(std::list<std::string>& names) override {
        if (answers == 0) {
            throw CppTools::CppToolException("forgotten");
        }
        --answers;
        return names.front() == "nobody" ? nullptr : Namespace::ResolveNode(names);
    }

    int answers = 0;
};

TEST_F(CliDispatcherTest, PathThatLeadsToNothing_FailsWithoutAWord) {
    const auto forgetful = std::make_shared<ForgetfulNamespace>();
    dispatcher.GetRootNamespace()->RegisterNamespaceNode(forgetful, "forgetful");
    forgetful->answers = 1;
    EXPECT_FALSE(Handle({"forgetful", "nobody"}));
    EXPECT_EQ(printed.out + printed.err, "");
}

TEST_F(CliDispatcherTest, CommandThatIsGoneWhenItIsToBeRun_Fails) {
    const auto forgetful = std::make_shared<ForgetfulNamespace>();
    dispatcher.GetRootNamespace()->RegisterNamespaceNode(forgetful, "forgetful");
    const auto command = TestSupport::ScriptedCommand::Giving(MetaInt::New(7));
    forgetful->RegisterNamespaceNode(command, "count");
    forgetful->answers = 1;
    EXPECT_FALSE(Handle({"--formatter=probe", "forgetful", "count"}));
    EXPECT_EQ(command->runs, 0);
    EXPECT_EQ(printed.out, "");
    EXPECT_EQ(printed.err, "Errors: \nforgotten\nUnable to find command\n");
}

TEST_F(CliDispatcherTest, CommandThatIsGoneWhenItIsToBeShown_Fails) {
    const auto forgetful = std::make_shared<ForgetfulNamespace>();
    dispatcher.GetRootNamespace()->RegisterNamespaceNode(forgetful, "forgetful");
    const auto command = TestSupport::ScriptedCommand::Giving(MetaInt::New(7));
    forgetful->RegisterNamespaceNode(command, "count");
    forgetful->answers = 2;
    EXPECT_FALSE(Handle({"--formatter=probe", "forgetful", "count"}));
    EXPECT_EQ(command->runs, 1);
    EXPECT_EQ(printed.out, "");
    EXPECT_EQ(printed.err, "Errors: \nforgotten\nUnable to find command\n");
}

TEST_F(CliDispatcherTest, CommandHelp_IsFormattedAsHelpAndSucceeds) {
    EXPECT_TRUE(Handle({"system", "count", "--help"}));
    EXPECT_EQ(printed.out, "Usage: tandril system count <options>\n\n"
                           "Description: Counts things.\n\n"
                           "     --all     Count all.\n"
                           "  -l|--limit   The limit.\n"
                           "  -h|--help    Show the help message.\n");
    EXPECT_EQ(printed.err, "");
    EXPECT_EQ(count->runs, 0);
}

TEST_F(CliDispatcherTest, CommandHelp_ByItsShortName_IsTheSame) {
    EXPECT_TRUE(Handle({"system", "count", "--help"}));
    const std::string longForm = printed.out;
    EXPECT_TRUE(Handle({"system", "count", "-h"}));
    EXPECT_EQ(printed.out, longForm);
}

TEST_F(CliDispatcherTest, CommandHelp_ExcusesEveryOtherProblemOfTheInput) {
    EXPECT_TRUE(Handle({"system", "count", "--limit=many", "--speed=1", "--help"}));
    EXPECT_EQ(printed.err, "");
}

TEST_F(CliDispatcherTest, CommandHelp_UserFormatWins) {
    count->SetDefaultOutputParameter("default", "unused");
    EXPECT_TRUE(Handle({"--formatter=probe", "--format-param=a=1", "system", "count", "--help"}));
    EXPECT_EQ(printed.out, "probe\n");
    EXPECT_THAT(probe->seenParams.GetParameters(), ElementsAre(Pair("a", "1")));
}

TEST_F(CliDispatcherTest, Format_UserChoicesAreLaidOverTheDefaults) {
    count->SetDefaultOutputParameter("a", "1");
    count->SetDefaultOutputParameter("b", "2");
    EXPECT_TRUE(Handle(
        {"--formatter=probe", "--format-param=b=3", "--format-param=c=4", "system", "count"}));
    EXPECT_EQ(printed.out, "probe\n");
    EXPECT_EQ(probe->seenParams.GetFormatter(), "probe");
    EXPECT_THAT(probe->seenParams.GetParameters(),
                ElementsAre(Pair("a", "1"), Pair("b", "3"), Pair("c", "4")));
    EXPECT_EQ(probe->seenOutput->GetRootObject(), MetaInt::New(7));
}

TEST_F(CliDispatcherTest, Format_ParametersAlone_KeepTheDefaultFormatter) {
    count->SetDefaultOutputFormatter("probe");
    EXPECT_TRUE(Handle({"--format-param=b=3", "system", "count"}));
    EXPECT_EQ(printed.out, "probe\n");
    EXPECT_THAT(probe->seenParams.GetParameters(), ElementsAre(Pair("b", "3")));
}

TEST_F(CliDispatcherTest, Format_CommandWithoutADefault_PrintsNothingAndSucceeds) {
    count->SetDefaultOutputFormatter("");
    EXPECT_TRUE(Handle({"system", "count"}));
    EXPECT_EQ(printed.out + printed.err, "");
    EXPECT_EQ(count->runs, 1);
}

TEST_F(CliDispatcherTest, Format_ResultOfAnotherType_TakesNoDefaults) {
    count->work = [](const auto&, const auto& result) {
        result->SetRootObject(MetaInt::New(7));
        result->SetOutputType(static_cast<Output::OutputType>(1));
    };
    count->SetDefaultOutputParameter("a", "1");
    EXPECT_TRUE(Handle({"system", "count"}));
    EXPECT_EQ(printed.out + printed.err, "");
    EXPECT_TRUE(Handle({"--formatter=probe", "system", "count"}));
    EXPECT_EQ(printed.out, "probe\n");
    EXPECT_THAT(probe->seenParams.GetParameters(), IsEmpty());
}

TEST_F(CliDispatcherTest, Format_UnknownFormatter_Fails) {
    EXPECT_FALSE(Handle({"--formatter=nope", "system", "count"}));
    EXPECT_EQ(printed.out, "");
    EXPECT_EQ(printed.err, "Errors: \nUnable to find requested formatter: nope\n");
    EXPECT_EQ(count->runs, 1);
}

TEST_F(CliDispatcherTest, Format_FormatterThrows_LeavesTheDispatcher) {
    EXPECT_EQ(ThrownBy([&] {
                  Handle({"--formatter=table", "system", "count"});
              }),
              "Error: Unexpected type for output, formatter, table, expected a List of structs");
}

TEST_F(CliDispatcherTest, Format_FormatterAnswersFalse_SucceedsAllTheSame) {
    probe->result = false;
    EXPECT_TRUE(Handle({"--formatter=probe", "system", "count"}));
}

TEST_F(CliDispatcherTest, Format_DisplayComesFromTheScreenWidth) {
    EXPECT_TRUE(Handle({"--screen-width=61", "--formatter=probe", "system", "count"}));
    EXPECT_EQ(probe->seenWidth, 61);
    EXPECT_EQ(probe->seenHeight, 0);
}

TEST_F(CliDispatcherTest, GetHelpFormatParams_IsCommandHelpWithoutParameters) {
    const auto params = dispatcher.GetHelpFormatParams();
    EXPECT_EQ(params.GetFormatter(), "commandhelp");
    EXPECT_THAT(params.GetParameters(), IsEmpty());
}

TEST_F(CliDispatcherTest, PrintError_NoErrors_PrintsNothing) {
    printed = PrintedBy([&] { dispatcher.PrintError(output); });
    EXPECT_EQ(printed.out + printed.err, "");
}

TEST_F(CliDispatcherTest, PrintError_Errors_AreLinesOnStandardError) {
    output->AddErrorMessage("one");
    output->AddErrorMessage("");
    output->AddErrorMessage("two\nlines");
    printed = PrintedBy([&] { dispatcher.PrintError(output); });
    EXPECT_EQ(printed.out, "");
    EXPECT_EQ(printed.err, "Errors: \none\n\ntwo\nlines\n");
}

} // namespace
