#include "Boxes.h"

#include <tests/support/EnvironmentVariable.h>

#include <gtest/gtest.h>
#include <optional>
#include <string>

using Cli::Boxes;
using Cli::EscapeXml;
using Cli::PrintDocument;
using TestSupport::ChildRun;
using TestSupport::CommandPieces;
using TestSupport::EnvironmentVariable;
using TestSupport::ParameterElement;

namespace {

const std::string kImplementationError =
    "Implementation error! The output of this command does not match the declared output type, "
    "see errors above.\n";

/// Commands that declare a string, in a locale that is set.
class ToolExtensionTest : public testing::Test {
  protected:
    /// Runs a shell line as the command "box run".
    ChildRun RunShell(const std::string& shellLine) const {
        boxes_.AddShell("run", shellLine);
        return boxes_.Run({"box", "run"});
    }

    /// The same for a command that declares this output.
    ChildRun RunDeclaring(const std::string& declared, const std::string& shellLine) const {
        CommandPieces pieces;
        pieces.outputSpec = "<output-spec>" + declared + "</output-spec>";
        pieces.formatParameters =
            "<format-parameters><formatter>simple</formatter></format-parameters>";
        pieces.execute = "<execute>" + EscapeXml(shellLine) + "</execute>";
        boxes_.Add("run", pieces);
        return boxes_.Run({"box", "run"});
    }

    /// The same for a command with an optional parameter "text" and a template of its input.
    ChildRun RunFed(const std::string& shellLine, const std::string& stdinTemplate,
                    const std::string& text) const {
        CommandPieces pieces;
        pieces.inputSpec =
            "<input-spec>" +
            ParameterElement(R"(name="text" type="string")", "<description>D.</description>") +
            "</input-spec>";
        pieces.formatParameters =
            "<format-parameters><formatter>python</formatter></format-parameters>";
        pieces.execute = "<execute>" + EscapeXml(shellLine) + "</execute>";
        pieces.standardInput = "<stdin>" + stdinTemplate + "</stdin>";
        boxes_.Add("feed", pieces);
        return boxes_.Run({"box", "feed", "--text", text});
    }

    EnvironmentVariable locale_{"LANG", "C.UTF-8"};
    Boxes boxes_;
};

void ExpectErrors(const ChildRun& run, const std::string& errors) {
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, "Errors: \n" + errors);
    EXPECT_EQ(run.status, 1);
}

TEST_F(ToolExtensionTest, ErrorLines_BecomeMessagesAndNothingIsParsed) {
    ExpectErrors(RunShell("printf 'ERROR:disk full\\nERROR: retry \\n'; " +
                          PrintDocument("<string>x</string>")),
                 "disk full\n retry \n");
}

TEST_F(ToolExtensionTest, ErrorLines_LastOneNeedsNoLineEnd) {
    ExpectErrors(RunShell("printf 'ERROR:\\nERROR:cut off'; exit 3"), "\ncut off\n");
}

TEST_F(ToolExtensionTest, ErrorLineBehindTheHead_BelongsToTheDocument) {
    const ChildRun run =
        RunShell("printf '<output><string>\\nERROR:no error\\n</string></output>\\n'");
    EXPECT_EQ(run.out, "\nERROR:no error\n\n");
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.status, 0);
}

TEST_F(ToolExtensionTest, ChildsExitStatus_DoesNotMatter) {
    const ChildRun run = RunShell(PrintDocument("<string>x</string>") + "; exit 3");
    EXPECT_EQ(run.out, "x\n");
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.status, 0);
}

TEST_F(ToolExtensionTest, ChildsStandardError_IsTheTools) {
    const ChildRun run = RunShell("echo careful >&2; " + PrintDocument("<string>x</string>"));
    EXPECT_EQ(run.out, "x\n");
    EXPECT_EQ(run.err, "careful\n");
    EXPECT_EQ(run.status, 0);
}

TEST_F(ToolExtensionTest, NoOutput_IsReportedWithTheLine) {
    ExpectErrors(RunShell("test -z \"a\" && exit 3"), "Got no data from process.\n"
                                                      "Command \"test -z \"a\" && exit 3\"\n"
                                                      "\xD0\xB5xited with error code: 1\n");
}

TEST_F(ToolExtensionTest, NoOutputOfAKilledChild_IsReportedWith0) {
    ExpectErrors(RunShell("kill -9 $$"), "Got no data from process.\n"
                                         "Command \"kill -9 $$\"\n"
                                         "\xD0\xB5xited with error code: 0\n");
}

TEST_F(ToolExtensionTest, MissingProgram_IsNoOutput) {
    ExpectErrors(RunShell("exec 2>/dev/null; /nowhere/program"),
                 "Got no data from process.\n"
                 "Command \"exec 2>/dev/null; /nowhere/program\"\n"
                 "\xD0\xB5xited with error code: 1\n");
}

TEST_F(ToolExtensionTest, OutputThatIsNoXml_LeavesNoResult) {
    const ChildRun run = RunShell("echo not xml");
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, "STDOUT:1: parser error : Start tag expected, '<' not found\n"
                       "not xml\n"
                       "^\n"
                       "Errors: \n"
                       "No root object set for output. The command did not provide proper "
                       "output.\n" +
                           kImplementationError);
    EXPECT_EQ(run.status, 1);
}

TEST_F(ToolExtensionTest, EmptyDocument_LeavesNoResult) {
    ExpectErrors(RunShell("echo '<output/>'"),
                 "No root object set for output. The command did not provide proper output.\n" +
                     kImplementationError);
}

TEST_F(ToolExtensionTest, UnknownElement_IsReported) {
    ExpectErrors(RunShell(PrintDocument("<float>1.5</float>")),
                 "Unable to parse output of Extension Command: Error parsing command output.  "
                 "Unable to build a proper metaobject from output tag.  output must contain "
                 "properly formatted tags of type bool, int, string, structure and list. Error was "
                 ": Unable to make a MetaObject from a node with tag 'float'\n");
}

TEST_F(ToolExtensionTest, OtherKindThanDeclared_IsAnImplementationError) {
    ExpectErrors(RunShell(PrintDocument("<int>1</int>")),
                 "Type mismatch in structure.  Expecting String got Int\n" + kImplementationError);
}

TEST_F(ToolExtensionTest, OtherListThanDeclared_IsAnImplementationError) {
    ExpectErrors(RunDeclaring(R"(<list type="int"/>)", PrintDocument(R"(<list type="bool"/>)")),
                 "Mismatch on list type\n" + kImplementationError);
}

TEST_F(ToolExtensionTest, OtherStructureThanDeclared_IsAnImplementationError) {
    ExpectErrors(
        RunDeclaring(R"(<structure typeName="Disk"><field name="Name"><string/></field>)"
                     R"(<field name="Size"><int/></field></structure>)",
                     PrintDocument(R"(<structure typeName="Box"><field name="Name"><string/>)"
                                   "</field></structure>")),
        "Type names do not match.\n"
        "Mismatch on number of fields set in struct. Expected 2 found 1\n"
        "Missing field in input: Size\n" +
            kImplementationError);
}

TEST_F(ToolExtensionTest, NoDeclaredOutput_IsAnImplementationError) {
    ExpectErrors(RunDeclaring("", PrintDocument("<int>1</int>")),
                 "No root object set for output spec. Root object for output spec must be set for "
                 "proper validation of output.\n" +
                     kImplementationError);
}

TEST_F(ToolExtensionTest, Scalars_OfEveryKindAreShown) {
    EXPECT_EQ(RunDeclaring("<int/>", PrintDocument("<int> 42abc</int>")).out, "42\n");
    EXPECT_EQ(RunDeclaring("<bool/>", PrintDocument("<bool>F</bool>")).out, "true\n");
    EXPECT_EQ(RunDeclaring("<bool/>", PrintDocument("<bool>f</bool>")).out, "false\n");
    EXPECT_EQ(RunDeclaring(R"(<list type="int"/>)",
                           PrintDocument(R"(<list type="int"><int>1</int><int/></list>)"))
                  .out,
              "1, 0\n");
}

TEST_F(ToolExtensionTest, StandardInputTemplate_CarriesTheValueAsItStands) {
    const ChildRun run =
        RunFed("printf '<output><string>%s</string></output>' \"$(cat)\"",
               "[$val{text}]$if{other,no}$if{text,yes}", "it's $HOME `x` \"q\" \\ ;|");
    EXPECT_EQ(run.out, "\"\"\"[it's $HOME `x` \\\"q\\\" \\ ;|]yes\"\"\"\n");
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.status, 0);
}

TEST_F(ToolExtensionTest, ToolsStandardInput_IsNotTheChilds) {
    boxes_.AddShell("run", "printf '<output><string>%s</string></output>' \"$(wc -c)\"");
    EXPECT_EQ(boxes_.Run({"box", "run"}, "this is for nobody\n").out, "0\n");
}

TEST_F(ToolExtensionTest, ChildThatDoesNotRead_IsReported) {
    ExpectErrors(RunFed("exec <&-; " + PrintDocument("<string>x</string>"), "$val{text}",
                        std::string(100'000, 'x')),
                 "Error on command box feed : Unable to write to sub-process: Broken pipe\n");
}

TEST_F(ToolExtensionTest, LineThatIsTooLong_IsReported) {
    const std::string text(131'000, 'x');
    ExpectErrors(RunFed("printf '%s' '" + std::string(100, '-') + "$val{text}'", "", text),
                 "Error on command box feed : Failed to call process 'printf '%s' '" +
                     std::string(100, '-') + text + "'': Argument list too long\n");
}

TEST_F(ToolExtensionTest, LargeOutput_IsReadWhole) {
    constexpr int kItems = 330'000;
    const ChildRun run =
        RunDeclaring(R"(<list type="string"/>)",
                     "printf '<output><list type=\"string\">'; seq -f '<string>%043g</string>' 1 " +
                         std::to_string(kItems) + "; printf '</list></output>'");
    std::string expected;
    for (int i = 1; i <= kItems; ++i) {
        const std::string digits = std::to_string(i);
        expected += (i == 1 ? "" : ", ") + std::string(43 - digits.size(), '0') + digits;
    }
    EXPECT_TRUE(run.out == expected + "\n") << "got " << run.out.size() << " bytes";
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.status, 0);
}

TEST_F(ToolExtensionTest, LargeOutputOfErrors_IsReadWhole) {
    const ChildRun run = RunShell("seq -f 'ERROR:%02000g' 1 1000");
    std::string expected = "Errors: \n";
    for (int i = 1; i <= 1000; ++i) {
        const std::string digits = std::to_string(i);
        expected += std::string(2000 - digits.size(), '0') + digits + "\n";
    }
    EXPECT_EQ(run.out, "");
    EXPECT_TRUE(run.err == expected) << "got " << run.err.size() << " bytes";
    EXPECT_EQ(run.status, 1);
}

const std::string kShowLocale = "sh -c 'echo \"<output><string>$LANG</string></output>\"'";

TEST_F(ToolExtensionTest, Locale_IsHandedOnWhenSet) {
    EXPECT_EQ(RunShell(kShowLocale).out, "C.UTF-8\n");
}

TEST_F(ToolExtensionTest, EmptyLocale_IsSetToo) {
    const EnvironmentVariable empty("LANG", "");
    EXPECT_EQ(RunShell(kShowLocale).out, "\n");
}

TEST_F(ToolExtensionTest, MissingLocale_IsPutInFrontOfTheLine) {
    const EnvironmentVariable missing("LANG", std::nullopt);
    EXPECT_EQ(RunShell(kShowLocale).out, "en_US.UTF-8\n");
    ExpectErrors(RunShell("exit 3"), "Got no data from process.\n"
                                     "Command \"LANG=en_US.UTF-8 exit 3\"\n"
                                     "\xD0\xB5xited with error code: 1\n");
}

TEST_F(ToolExtensionTest, EmptyXmlElementsInTheResult_AreShownInEveryFormat) {
    RunDeclaring(R"(<list type="structure"><structure typeName="T"/></list>)",
                 PrintDocument(R"(<list type="structure"/>)"));
    EXPECT_EQ(boxes_.Run({"--formatter", "simple", "box", "run"}).out, "\n");
    EXPECT_EQ(boxes_.Run({"--formatter", "table", "box", "run"}).out, "");
    EXPECT_EQ(boxes_.Run({"--formatter", "json", "box", "run"}).out, "\n[\n]\n");
    EXPECT_EQ(boxes_.Run({"--formatter", "python", "box", "run"}).out, "[]\n");
}

} // namespace
