#include <CppTools/autocli/OptionParser.h>

#include <CppTools/callspec/InputSpec.h>
#include <tests/support/ScriptedCommand.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

using CppTools::AutoCli::OptionParser;
using CppTools::CallSpec::InputSpec;
using CppTools::CallSpec::ParameterSpec;
using CppTools::CallSpec::ParameterType;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using TestSupport::OptionalParameter;

namespace {

/// Parses the options of a command that declares one parameter of each sort.
class OptionParserCommandTest : public testing::Test {
  protected:
    OptionParserCommandTest() {
        inputSpec->AddParameter(OptionalParameter("count", ParameterType::Int, "c"));
        inputSpec->AddParameter(OptionalParameter("help", ParameterType::Bool, "h"));
        inputSpec->AddParameter(OptionalParameter("sure", ParameterType::Bool));
        inputSpec->AddParameter(OptionalParameter("verbose", ParameterType::Flag, "v"));
        inputSpec->AddParameter(OptionalParameter("zones", ParameterType::StringList));
    }

    void Parse(std::vector<std::string> options) {
        options.insert(options.begin(), "list");
        parser.ParseVector(options);
        parser.SetInputSpec(inputSpec);
    }

    const std::shared_ptr<InputSpec> inputSpec = InputSpec::New();
    OptionParser parser;
};

TEST_F(OptionParserCommandTest, Values_AreTakenLikeThoseOfTheDispatcher) {
    Parse({"--count", "5", "--zones=a", "--zones", "b", "-v"});
    EXPECT_THAT(parser.GetCommandParameters(), ElementsAre(Pair("count", "5"), Pair("zones", "a"),
                                                           Pair("zones", "b"), Pair("v", "")));
    EXPECT_THAT(parser.GetParseErrors(), IsEmpty());
}

TEST_F(OptionParserCommandTest, Questions_GoByTheExactNameAsGiven) {
    Parse({"--zones=a", "-c", "5", "--zones=b"});
    EXPECT_THAT(parser.GetCommandParameter("zones"), ElementsAre("a", "b"));
    EXPECT_THAT(parser.GetCommandParameter("c"), ElementsAre("5"));
    EXPECT_THAT(parser.GetCommandParameter("count"), IsEmpty());
    EXPECT_TRUE(parser.HasCommandParameter("c"));
    EXPECT_FALSE(parser.HasCommandParameter("count"));
}

TEST_F(OptionParserCommandTest, HasCommandParameter_AskedFirst_ParsesTheOptions) {
    Parse({"--count=5"});
    EXPECT_TRUE(parser.HasCommandParameter("count"));
}

TEST_F(OptionParserCommandTest, GetCommandParameter_AskedFirst_ParsesTheOptions) {
    Parse({"--count=5"});
    EXPECT_THAT(parser.GetCommandParameter("count"), ElementsAre("5"));
}

TEST_F(OptionParserCommandTest, MissingValue_IsAnErrorWithTheWordAsTyped) {
    Parse({"--count", "-c", "--sure", "--zones"});
    EXPECT_THAT(parser.GetCommandParameters(),
                ElementsAre(Pair("count", ""), Pair("c", ""), Pair("sure", ""), Pair("zones", "")));
    EXPECT_THAT(parser.GetParseErrors(),
                ElementsAre("--count must have value", "-c must have value",
                            "--sure must have value", "--zones must have value"));
}

TEST_F(OptionParserCommandTest, FlagAndHelp_NeedNoValue) {
    Parse({"--verbose", "-v", "--help", "-h"});
    EXPECT_THAT(parser.GetCommandParameters(),
                ElementsAre(Pair("verbose", ""), Pair("v", ""), Pair("help", ""), Pair("h", "")));
    EXPECT_THAT(parser.GetParseErrors(), IsEmpty());
}

TEST_F(OptionParserCommandTest, Flag_TakesAPlainWordBehindIt) {
    Parse({"--verbose", "yes"});
    EXPECT_THAT(parser.GetCommandParameters(), ElementsAre(Pair("verbose", "yes")));
    EXPECT_THAT(parser.GetParseErrors(), IsEmpty());
}

TEST_F(OptionParserCommandTest, UndeclaredOption_KeepsItsEmptyValueSilently) {
    Parse({"--speed", "-x"});
    EXPECT_THAT(parser.GetCommandParameters(), ElementsAre(Pair("speed", ""), Pair("x", "")));
    EXPECT_THAT(parser.GetParseErrors(), IsEmpty());
}

TEST_F(OptionParserCommandTest, WithoutASpecification_MissingValuesAreKeptSilently) {
    parser.ParseVector({"list", "--count", "--zones"});
    EXPECT_THAT(parser.GetCommandParameters(), ElementsAre(Pair("count", ""), Pair("zones", "")));
    EXPECT_THAT(parser.GetParseErrors(), IsEmpty());
}

TEST_F(OptionParserCommandTest, SpecificationAfterTheFirstQuestion_ComesTooLate) {
    parser.ParseVector({"list", "--count"});
    EXPECT_TRUE(parser.HasCommandParameter("count"));
    parser.SetInputSpec(inputSpec);
    EXPECT_THAT(parser.GetCommandParameters(), ElementsAre(Pair("count", "")));
    EXPECT_THAT(parser.GetParseErrors(), IsEmpty());
}

TEST_F(OptionParserCommandTest, EmptySpecification_IsNone) {
    Parse({"--count"});
    parser.SetInputSpec(nullptr);
    EXPECT_THAT(parser.GetCommandParameters(), ElementsAre(Pair("count", "")));
    EXPECT_THAT(parser.GetParseErrors(), IsEmpty());
}

TEST_F(OptionParserCommandTest, SpecificationBeforeTheLine_HoldsForTheDispatcherOptionsToo) {
    parser.SetInputSpec(inputSpec);
    parser.ParseVector({"--count", "--verbose", "--speed", "-c=1", "list", "--zones"});
    EXPECT_THAT(parser.GetDispatcherParameters(),
                ElementsAre(Pair("count", ""), Pair("verbose", ""), Pair("speed", "-c=1")));
    EXPECT_THAT(parser.GetParseErrors(), ElementsAre("--count must have value"));
    EXPECT_THAT(parser.GetCommandParameters(), ElementsAre(Pair("zones", "")));
    EXPECT_THAT(parser.GetParseErrors(),
                ElementsAre("--count must have value", "--zones must have value"));
}

TEST_F(OptionParserCommandTest, DispatcherOptions_NeedNoValue) {
    parser.ParseVector({"--count", "-v"});
    parser.SetInputSpec(inputSpec);
    EXPECT_THAT(parser.GetCommandParameters(), IsEmpty());
    EXPECT_THAT(parser.GetParseErrors(), IsEmpty());
}

TEST_F(OptionParserCommandTest, ErrorsAreFoundOnlyWhenTheOptionsAreAskedFor) {
    Parse({"--count"});
    EXPECT_THAT(parser.GetParseErrors(), IsEmpty());
    parser.GetCommandParameters();
    EXPECT_THAT(parser.GetParseErrors(), ElementsAre("--count must have value"));
}

TEST_F(OptionParserCommandTest, ExtraWord_IsAnErrorAndTheOptionsBeforeItStay) {
    Parse({"--a1", "x", "y"});
    EXPECT_THAT(parser.GetCommandParameters(), ElementsAre(Pair("a1", "x")));
    EXPECT_THAT(parser.GetParseErrors(),
                ElementsAre("Found Extra non-parameter arguments at the end of input: 'y' "));
}

TEST_F(OptionParserCommandTest, ExtraWords_AreNamedInOrderWithTheOptionsBetweenThem) {
    Parse({"--a1=x", "y", "--b2=z", "-v", "w"});
    EXPECT_THAT(parser.GetCommandParameters(), ElementsAre(Pair("a1", "x")));
    EXPECT_THAT(parser.GetParseErrors(),
                ElementsAre("Found Extra non-parameter arguments at the end of input: 'y' "
                            "'--b2=z' '-v' 'w' "));
}

TEST_F(OptionParserCommandTest, ExtraWords_AreReportedOnce) {
    Parse({"--a1", "x", "y"});
    parser.GetCommandParameters();
    parser.GetCommandParameters();
    parser.HasCommandParameter("a1");
    EXPECT_EQ(parser.GetParseErrors().size(), 1U);
}

TEST_F(OptionParserCommandTest, ToString_EmptyParser) {
    EXPECT_EQ(parser.ToString(), "Parsed: 0\nDispatcher: tandril\nErrors: \nPath: \nDispatch "
                                 "Params: \nCommand Params: \n");
}

TEST_F(OptionParserCommandTest, ToString_ShowsTheWholeState) {
    parser.ParseVector({"--formatter=xml", "-x", "network", "list", "--count", "-v"});
    parser.SetInputSpec(inputSpec);
    parser.GetCommandParameters();
    EXPECT_EQ(parser.ToString(), "Parsed: 0\n"
                                 "Dispatcher: tandril\n"
                                 "Errors: \n"
                                 "   --count must have value\n"
                                 "Path: 'list'\n"
                                 "Dispatch Params: \n"
                                 "   --formatter = 'xml'\n"
                                 "   --x = 'network'\n"
                                 "Command Params: \n"
                                 "   --count = ''\n"
                                 "   --v = ''\n");
}

TEST_F(OptionParserCommandTest, ToString_PathNamesFollowEachOtherDirectly) {
    parser.ParseVector({"network", "storage", "list"});
    EXPECT_EQ(parser.ToString(), "Parsed: 0\nDispatcher: tandril\nErrors: \nPath: "
                                 "'network''storage''list'\nDispatch Params: \nCommand Params: \n");
}

TEST_F(OptionParserCommandTest, ToString_ErrorsItFindsItself_AppearTheNextTime) {
    Parse({"--count", "--zones"});
    EXPECT_EQ(parser.ToString(), "Parsed: 0\n"
                                 "Dispatcher: tandril\n"
                                 "Errors: \n"
                                 "Path: 'list'\n"
                                 "Dispatch Params: \n"
                                 "Command Params: \n"
                                 "   --count = ''\n"
                                 "   --zones = ''\n");
    EXPECT_EQ(parser.ToString(), "Parsed: 0\n"
                                 "Dispatcher: tandril\n"
                                 "Errors: \n"
                                 "   --count must have value\n"
                                 "   --zones must have value\n"
                                 "Path: 'list'\n"
                                 "Dispatch Params: \n"
                                 "Command Params: \n"
                                 "   --count = ''\n"
                                 "   --zones = ''\n");
}

} // namespace
