#include <CppTools/autocli/CommandInput.h>
#include <CppTools/autocli/plugins/ExtensionCommand.h>
#include <CppTools/callspec/Input.h>
#include <CppTools/callspec/InputSpec.h>
#include <CppTools/callspec/Output.h>
#include <CppTools/callspec/OutputSpec.h>
#include <CppTools/metaobj/MetaObject.h>
#include <CppTools/metaobj/MetaString.h>

#include <gtest/gtest.h>
#include <tests/support/EnvironmentVariable.h>
#include <tests/support/NamedRow.h>
#include <tests/support/OpenDescriptors.h>
#include <tests/support/ShellRunning.h>
#include <tests/support/StreamCapture.h>
#include <tests/support/TemplateFilling.h>
#include <tests/support/Thrown.h>

#include <memory>
#include <optional>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

using CppTools::AutoCli::CommandInput;
using CppTools::AutoCli::ExtensionCommand;
using CppTools::CallSpec::Input;
using CppTools::CallSpec::InputSpec;
using CppTools::CallSpec::Output;
using CppTools::CallSpec::OutputSpec;
using CppTools::MetaObj::MetaString;
using TestSupport::CountOpenDescriptors;
using TestSupport::EnvironmentVariable;
using TestSupport::GivenParameters;
using TestSupport::HasNoChild;
using TestSupport::kRowName;
using TestSupport::ListenerLog;
using TestSupport::NamedRow;
using TestSupport::NewInput;
using TestSupport::NewTemplateCommand;
using TestSupport::ThrownBy;

using Texts = std::vector<std::string>;

const std::string kNoInputSpec =
    "Request for NULL InputSpec.  Extension command is incomplete and will not work";
const std::string kNoOutputSpec =
    "Request for NULL OutputSpec.  Extension command is incomplete and will not work";

/// What the command says when its child printed nothing. The first letter of the third line is
/// the Cyrillic one.
std::string NoDataMessage(const std::string& line, const std::string& ended) {
    return "Got no data from process.\nCommand \"" + line +
           "\"\n\xD0\xB5xited with error code: " + ended;
}

TEST(ExtensionCommandSpecTest, New_HasNoSpecificationsAndEmptyTemplates) {
    const auto command = ExtensionCommand::New();
    EXPECT_EQ(ThrownBy([&] { command->GetInputSpecInternal(); }), kNoInputSpec);
    EXPECT_EQ(ThrownBy([&] { command->GetOutputSpecInternal(); }), kNoOutputSpec);
    EXPECT_EQ(command->SubstituteInput(Input::New(), false), "");
    EXPECT_EQ(command->SubstituteInput(Input::New(), true), "");
}

TEST(ExtensionCommandSpecTest, GetInputSpec_RefusedOnceIsAskedForAgain) {
    const auto command = ExtensionCommand::New();
    EXPECT_EQ(ThrownBy([&] { command->GetInputSpec(); }), kNoInputSpec);
    EXPECT_EQ(ThrownBy([&] { command->GetInputSpec(); }), kNoInputSpec);
    command->SetInputSpec(InputSpec::New());
    EXPECT_NE(command->GetInputSpec()->FindParameter("help"), nullptr);
}

TEST(ExtensionCommandSpecTest, GetOutputSpec_RefusedOnceIsAskedForAgain) {
    const auto command = ExtensionCommand::New();
    EXPECT_EQ(ThrownBy([&] { command->GetOutputSpec(); }), kNoOutputSpec);
    const auto spec = OutputSpec::New();
    command->SetOutputSpec(spec);
    EXPECT_EQ(command->GetOutputSpec(), spec);
}

TEST(ExtensionCommandSpecTest, Setters_GiveBackWhatWasSet) {
    const auto command = ExtensionCommand::New();
    const auto inputSpec = InputSpec::New();
    const auto outputSpec = OutputSpec::New();
    command->SetInputSpec(inputSpec);
    command->SetOutputSpec(outputSpec);
    EXPECT_EQ(command->GetInputSpecInternal(), inputSpec);
    EXPECT_EQ(command->GetOutputSpecInternal(), outputSpec);
}

TEST(ExtensionCommandSpecTest, Execute_WithoutInputSpecBecomesAnError) {
    const auto command = ExtensionCommand::New();
    command->SetExecuteCommand("echo $HOME");
    command->SetOutputSpec(OutputSpec::New());
    const auto output = Output::New();
    command->Execute(Input::New(), output);
    EXPECT_EQ(output->GetErrors(), Texts{"Error on command  : " + kNoInputSpec});
}

/// Commands that really run, with the locale of the environment fixed.
class ExtensionCommandTest : public testing::Test {
  protected:
    /// Runs the command's own work, without the checks around it.
    std::shared_ptr<Output> Run(const std::string& line, const GivenParameters& given = {}) {
        command_->SetExecuteCommand(line);
        auto output = Output::New();
        command_->ExecuteInternal(NewInput(*command_, given), output);
        return output;
    }

    std::string ResultOf(const std::string& line, const GivenParameters& given = {}) {
        const auto output = Run(line, given);
        EXPECT_EQ(output->GetErrors(), Texts{});
        const auto root = output->GetRootObject();
        return root ? root->ToString() : "<none>";
    }

    const EnvironmentVariable lang_{"LANG", "C"};
    const std::shared_ptr<ExtensionCommand> command_ = NewTemplateCommand();
};

TEST_F(ExtensionCommandTest, Result_IsTheDocumentThatTheChildPrints) {
    EXPECT_EQ(ResultOf("echo '<out><string>hello</string></out>'"), "hello");
    EXPECT_EQ(ResultOf("echo '<out><list type=\"int\"><int>1</int><int>2</int></list></out>'"),
              "1, 2");
}

TEST_F(ExtensionCommandTest, Result_TheTemplateIsFilledFromTheInput) {
    EXPECT_EQ(ResultOf("echo '<out><string>'$val{name}$if{force,!}'</string></out>'",
                       {{"name", "a;b"}, {"force", ""}}),
              "a;b!");
}

TEST_F(ExtensionCommandTest, Result_TheStandardInputIsFilledToo) {
    command_->SetStdin("<out><string>$val{name}</string></out>");
    EXPECT_EQ(ResultOf("cat", {{"name", "it's; $x"}}), "it's; $x");
}

TEST_F(ExtensionCommandTest, Result_WithoutStandardInputTheChildReadsEndOfFile) {
    EXPECT_EQ(ResultOf("cat; echo '<out><int>1</int></out>'"), "1");
}

TEST_F(ExtensionCommandTest, Result_AFailureStatusPlaysNoPart) {
    EXPECT_EQ(ResultOf("echo '<out><int>5</int></out>'; exit 3"), "5");
    EXPECT_EQ(ResultOf("echo '<out><int>6</int></out>'; kill -KILL $$"), "6");
}

TEST_F(ExtensionCommandTest, Result_OfAnEmptyRootIsNone) {
    EXPECT_EQ(ResultOf("echo '<out/>'"), "<none>");
}

TEST_F(ExtensionCommandTest, Result_OfTextThatIsNoXmlIsNone) {
    EXPECT_EQ(ResultOf("echo plain words"), "<none>");
}

TEST_F(ExtensionCommandTest, Result_LeavesWhatTheOutputHeldWhenThereIsNone) {
    command_->SetExecuteCommand("echo '<out/>'");
    const auto output = Output::New();
    const auto earlier = MetaString::New("earlier");
    output->SetRootObject(earlier);
    command_->ExecuteInternal(NewInput(*command_, {}), output);
    EXPECT_EQ(output->GetRootObject(), earlier);
}

TEST_F(ExtensionCommandTest, Result_ThatCannotBeReadIsAnError) {
    const auto output = Run("echo '<out><float>1</float></out>'");
    EXPECT_EQ(output->GetErrors(),
              Texts{"Unable to parse output of Extension Command: Error parsing command output.  "
                    "Unable to build a proper metaobject from output tag.  output must contain "
                    "properly formatted tags of type bool, int, string, structure and list. Error "
                    "was : Unable to make a MetaObject from a node with tag 'float'"});
    EXPECT_EQ(output->GetRootObject(), nullptr);
}

struct ErrorLinesRow : NamedRow {
    std::string printed; ///< In the language of printf(1).
    Texts errors;
    std::string result;
};

class ErrorLinesTest : public ExtensionCommandTest,
                       public testing::WithParamInterface<ErrorLinesRow> {};

TEST_P(ErrorLinesTest, Output_LeadingErrorLinesBecomeMessages) {
    const auto output = Run("printf '" + GetParam().printed + "'");
    EXPECT_EQ(output->GetErrors(), GetParam().errors);
    const auto root = output->GetRootObject();
    EXPECT_EQ(root ? root->ToString() : "<none>", GetParam().result);
}

INSTANTIATE_TEST_SUITE_P(
    Outputs, ErrorLinesTest,
    testing::Values(
        ErrorLinesRow{{"One"}, "ERROR:disk full\\n", {"disk full"}, "<none>"},
        ErrorLinesRow{{"TwoBeforeADocument"},
                      "ERROR:disk full\\nERROR:retry\\n<o><int>1</int></o>\\n",
                      {"disk full", "retry"},
                      "<none>"},
        ErrorLinesRow{
            {"NotTrimmed"}, "ERROR:  a \\t\\nERROR: b\\r\\n", {"  a \t", " b\r"}, "<none>"},
        ErrorLinesRow{{"LastLineWithoutLineEnd"}, "ERROR:a\\nERROR:b", {"a", "b"}, "<none>"},
        ErrorLinesRow{{"EmptyMessage"}, "ERROR:\\n", {""}, "<none>"},
        ErrorLinesRow{{"EmptyMessageWithoutLineEnd"}, "ERROR:", {""}, "<none>"},
        ErrorLinesRow{{"MarkTwice"}, "ERROR:ERROR:a\\n", {"ERROR:a"}, "<none>"},
        ErrorLinesRow{{"ScanStopsAtAnEmptyLine"}, "ERROR:a\\n\\nERROR:b\\n", {"a"}, "<none>"},
        ErrorLinesRow{{"ScanStopsAtAnyOtherLine"}, "ERROR:a\\nnote\\nERROR:b\\n", {"a"}, "<none>"},
        ErrorLinesRow{
            {"LaterLineOfADocument"}, "<o><string>x\\nERROR:y</string></o>", {}, "x\nERROR:y"},
        ErrorLinesRow{{"BlankBefore"}, " ERROR:a\\n", {}, "<none>"},
        ErrorLinesRow{{"OtherCase"}, "Error:a\\n", {}, "<none>"},
        ErrorLinesRow{{"NoColon"}, "ERROR a\\n", {}, "<none>"},
        ErrorLinesRow{{"OnlyPartOfTheMark"}, "ERRO", {}, "<none>"},
        ErrorLinesRow{
            {"UnreadableDocumentBehind"}, "ERROR:a\\n<o><float/></o>\\n", {"a"}, "<none>"}),
    kRowName);

TEST_F(ExtensionCommandTest, Output_WithEarlierErrorsIsNotRead) {
    command_->SetExecuteCommand("echo '<out><float/></out>'");
    const auto output = Output::New();
    output->AddErrorMessage("earlier");
    command_->ExecuteInternal(NewInput(*command_, {}), output);
    EXPECT_EQ(output->GetErrors(), Texts{"earlier"});
    EXPECT_EQ(output->GetRootObject(), nullptr);
}

struct NoDataRow : NamedRow {
    std::string line;
    std::string ended;
};

class NoDataTest : public ExtensionCommandTest, public testing::WithParamInterface<NoDataRow> {};

TEST_P(NoDataTest, Output_NoneIsAnErrorThatTellsWhetherTheChildEndedNormally) {
    const auto output = Run(GetParam().line);
    EXPECT_EQ(output->GetErrors(), Texts{NoDataMessage(GetParam().line, GetParam().ended)});
    EXPECT_EQ(output->GetRootObject(), nullptr);
}

INSTANTIATE_TEST_SUITE_P(Ends, NoDataTest,
                         testing::Values(NoDataRow{{"Success"}, "true", "1"},
                                         NoDataRow{{"Failure"}, "exit 3", "1"},
                                         NoDataRow{{"Killed"}, "kill -KILL $$", "0"},
                                         NoDataRow{{"Terminated"}, "kill -TERM $$", "0"}),
                         kRowName);

TEST_F(ExtensionCommandTest, Output_NoneIsToldWithTheFilledLine) {
    EXPECT_EQ(Run(": $val{name} $val{zone}", {{"name", "a;b"}})->GetErrors(),
              Texts{NoDataMessage(": a\\;b $val{zone}", "1")});
}

TEST_F(ExtensionCommandTest, Output_TheMessageHoldsTheCyrillicLetterByteForByte) {
    const std::string message = Run("true")->GetErrors().at(0);
    EXPECT_EQ(message.substr(message.find("xited") - 3, 3), "\n\xD0\xB5");
}

TEST_F(ExtensionCommandTest, Output_StandardErrorOfTheChildIsTheCallers) {
    TestSupport::StreamCapture standardError(STDERR_FILENO);
    EXPECT_EQ(ResultOf("echo warning >&2; echo '<out><int>1</int></out>'"), "1");
    EXPECT_EQ(standardError.Take(), "warning\n");
}

TEST_F(ExtensionCommandTest, Run_LeavesNoChildAndNoDescriptor) {
    const auto before = CountOpenDescriptors();
    Run("echo '<out><int>1</int></out>'");
    Run("exit 1");
    EXPECT_TRUE(HasNoChild());
    EXPECT_EQ(CountOpenDescriptors(), before);
}

TEST_F(ExtensionCommandTest, Run_WhatTheShellCannotStartIsThrown) {
    const std::string line = "true #" + std::string(4UL * 1024 * 1024, 'x');
    const std::string message = ThrownBy([&] { Run(line); });
    EXPECT_TRUE(message == "Failed to call process '" + line + "': Argument list too long")
        << message.substr(0, 60);
}

TEST_F(ExtensionCommandTest, Run_AChildThatDoesNotReadItsInputIsThrown) {
    command_->SetStdin(std::string(4UL * 1024 * 1024, 'x'));
    EXPECT_EQ(ThrownBy([&] { Run("exit 0"); }), "Unable to write to sub-process: Broken pipe");
}

TEST_F(ExtensionCommandTest, Execute_WhatIsThrownBecomesAnErrorOfTheCommand) {
    command_->SetStdin(std::string(4UL * 1024 * 1024, 'x'));
    command_->SetExecuteCommand("exit 0");
    const auto input = CommandInput::New();
    std::list<std::string> path = {"demo", "run"};
    input->SetCommandPath(path);
    input->SetInputSpec(command_->GetInputSpec());
    const auto output = Output::New();
    command_->Execute(input, output);
    EXPECT_EQ(output->GetErrors(),
              Texts{"Error on command demo run : Unable to write to sub-process: Broken pipe"});
}

TEST_F(ExtensionCommandTest, Execute_AResultOfAnotherShapeIsAnError) {
    command_->SetExecuteCommand("echo '<out><int>1</int></out>'");
    const auto output = Output::New();
    command_->Execute(NewInput(*command_, {}), output);
    EXPECT_EQ(output->GetErrors(),
              (Texts{"Type mismatch in structure.  Expecting String got Int",
                     "Implementation error! The output of this command does not match the declared "
                     "output type, see errors above."}));
}

TEST_F(ExtensionCommandTest, Execute_TextThatIsNoXmlIsAMissingResult) {
    command_->SetExecuteCommand("echo words");
    const auto output = Output::New();
    command_->Execute(NewInput(*command_, {}), output);
    EXPECT_EQ(output->GetErrors(),
              (Texts{"No root object set for output. The command did not provide proper output.",
                     "Implementation error! The output of this command does not match the declared "
                     "output type, see errors above."}));
}

TEST_F(ExtensionCommandTest, Execute_HelpRunsNothing) {
    const ListenerLog log;
    command_->SetExecuteCommand("true");
    const auto output = Output::New();
    command_->Execute(NewInput(*command_, {{"help", "true"}}), output);
    EXPECT_EQ(output->GetErrors(), Texts{});
    EXPECT_EQ(output->GetOutputType(), Output::OutputType::Help);
    EXPECT_EQ(ListenerLog::Lines(), Texts{});
}

/// What stands in front of the line, depending on the locale and on the user of the call.
struct PrefixRow : NamedRow {
    std::optional<std::string> lang;
    bool userSupported;
    std::optional<std::string> user;
    std::string prefix;
};

class LinePrefixTest : public testing::TestWithParam<PrefixRow> {
  protected:
    LinePrefixTest() : lang_("LANG", GetParam().lang) {
        auto inputSpec = InputSpec::New();
        inputSpec->SetContextSupported(GetParam().userSupported ? "user" : "other");
        command_->SetInputSpec(inputSpec);
        command_->SetOutputSpec(OutputSpec::New());
    }

    std::shared_ptr<Output> Run(const std::string& line) {
        command_->SetExecuteCommand(line);
        const auto input = NewInput(*command_, {});
        if (GetParam().user) {
            input->SetContext("user", *GetParam().user);
        }
        auto output = Output::New();
        command_->ExecuteInternal(input, output);
        return output;
    }

    const EnvironmentVariable lang_;
    const std::shared_ptr<ExtensionCommand> command_ = ExtensionCommand::New();
};

TEST_P(LinePrefixTest, Line_RunsWithItsPrefixes) {
    const ListenerLog log;
    Run("echo '<out/>'");
    EXPECT_EQ(ListenerLog::Lines(), Texts{GetParam().prefix + "echo '<out/>'"});
}

TEST_P(LinePrefixTest, Line_IsShownWithoutTheUserWhenTheChildIsSilent) {
    const std::string prefix = GetParam().lang ? "" : "LANG=en_US.UTF-8 ";
    EXPECT_EQ(Run("true")->GetErrors(), Texts{NoDataMessage(prefix + "true", "1")});
}

INSTANTIATE_TEST_SUITE_P(
    Prefixes, LinePrefixTest,
    testing::Values(PrefixRow{{"Neither"}, "C", false, std::nullopt, ""},
                    PrefixRow{{"NoLang"}, std::nullopt, false, std::nullopt, "LANG=en_US.UTF-8 "},
                    PrefixRow{{"EmptyLangIsSet"}, "", false, std::nullopt, ""},
                    PrefixRow{{"User"}, "C", true, "O'Brien", "NEL_USERNAME='O'\\''Brien' "},
                    PrefixRow{{"UserBeforeLang"},
                              std::nullopt,
                              true,
                              "root",
                              "NEL_USERNAME='root' LANG=en_US.UTF-8 "},
                    PrefixRow{{"UserNotSupported"}, "C", false, "root", ""},
                    PrefixRow{{"UserNotGiven"}, "C", true, std::nullopt, ""},
                    PrefixRow{{"EmptyUser"}, "C", true, "", ""}),
    kRowName);

TEST(ExtensionCommandEnvironmentTest, Line_TheChildSeesTheLocale) {
    const EnvironmentVariable lang("LANG", std::nullopt);
    const auto command = NewTemplateCommand();
    command->SetExecuteCommand("sh -c 'echo \"<out><string>$LANG</string></out>\"'");
    const auto output = Output::New();
    command->ExecuteInternal(NewInput(*command, {}), output);
    ASSERT_EQ(output->GetErrors(), Texts{});
    EXPECT_EQ(output->GetRootObject()->ToString(), "en_US.UTF-8");
}

} // namespace
