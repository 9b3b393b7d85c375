#include "DevkitTool.h"

#include <CppTools/callspec/OutputSpec.h>
#include <CppTools/metaobj/MetaStruct.h>
#include <devkit/DocumentCheck.h>
#include <tests/support/CommandDescriptor.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using CppTools::CallSpec::OutputSpec;
using CppTools::MetaObj::MetaStruct;
using DevkitTest::RunDevkit;
using testing::ElementsAre;
using testing::IsEmpty;

/// The findings on a document that is to hold a structure with one number.
std::vector<std::string> CheckText(const std::string& text) {
    auto prototype = MetaStruct::New("Disk");
    prototype->SetField("Size", 0L);
    const auto declared = OutputSpec::New();
    declared->SetRootObject(prototype);
    std::vector<std::string> lines;
    for (const auto& finding : Devkit::CheckDocument(text, "a", SCHEMAS, declared.get())) {
        lines.push_back(Devkit::ToLine(finding));
    }
    return lines;
}

std::string DiskOf(const std::string& field) {
    return "<o>\n<structure typeName='Disk'>" + field + "</structure></o>";
}

TEST(CheckDocument, DeclaredResult_HasNothingToFind) {
    EXPECT_THAT(CheckText(DiskOf("<field name='Size'><int>7</int></field>")), IsEmpty());
}

TEST(CheckDocument, EmptyDocument_IsReported) {
    constexpr const char* kAdvice =
        " [empty-document]. Print a value, or a line that begins with ERROR: when there is none.";
    EXPECT_THAT(CheckText(""),
                ElementsAre(std::string("a:0: error: Nothing was printed") + kAdvice));
    EXPECT_THAT(CheckText("\n<o/>"),
                ElementsAre(std::string("a:2: error: The document holds no value") + kAdvice));
}

TEST(CheckDocument, ErrorLines_AreReportedAsTheyStand) {
    EXPECT_THAT(CheckText("ERROR:disk full\nERROR:retry\n"),
                ElementsAre("a:1: note: ERROR:disk full [error-lines]. Check a document of a call "
                            "that succeeds, too."));
}

TEST(CheckDocument, TextThatIsNoXml_IsReportedWithItsPlace) {
    EXPECT_THAT(
        CheckText("<o>\n<int>1</o>"),
        ElementsAre("a:2: error: column 11: Opening and ending tag mismatch: int line 2 and "
                    "o [syntax]. Mend this first; the rest is checked afterwards.",
                    "a:2: error: column 11: Premature end of data in tag o line 1 [syntax]. "
                    "Mend this first; the rest is checked afterwards."));
}

TEST(CheckDocument, OtherShape_IsReportedInTheWordsOfTheLibrary) {
    EXPECT_THAT(
        CheckText("<o>\n\n<int>1</int></o>"),
        ElementsAre(
            "a:3: error: Type Mismatch in MetaStruct Validation: Expected type Struct got type Int "
            "[other-shape]. Change the document, or output-spec."));
}

TEST(CheckDocument, ElementThatIsNoValue_IsRefusedInTheWordsOfTheLibrary) {
    const auto lines = CheckText("<o><float>1</float></o>");
    EXPECT_EQ(lines.back(),
              "a:1: error: Error parsing command output.  Unable to build a proper metaobject from "
              "output tag.  output must contain properly formatted tags of type bool, int, string, "
              "structure and list. Error was : Unable to make a MetaObject from a node with tag "
              "'float' [refused]. Mend it; the tool takes nothing of a file that it refuses.");
}

class ToolCheckDocument : public testing::Test {
  protected:
    TestSupport::ChildRun Run(const std::vector<std::string>& words) {
        std::vector<std::string> all = {"plugin", "document", "check"};
        all.insert(all.end(), words.begin(), words.end());
        return RunDevkit(all, folder_);
    }

    TestSupport::TempDirectory folder_;
};

TEST_F(ToolCheckDocument, DocumentOfACommand_IsComparedWithItsDeclaration) {
    folder_.Write("a.xml", TestSupport::CommandDescriptor({}));
    folder_.Write("good.xml", "<o><string>text</string></o>");
    folder_.Write("bad.xml", "<o><int>1</int></o>");
    const auto good =
        Run({"-f", "good.xml", "--descriptor", "a.xml", "--command", "demo.run", "--strict"});
    EXPECT_EQ(good.err, "");
    EXPECT_EQ(good.out, "File  Line  Severity  Rule  Message\n"
                        "----  ----  --------  ----  -------\n");
    EXPECT_EQ(good.status, 0);
    const auto bad = Run({"-f", "bad.xml", "--descriptor", "a.xml", "--command", "demo.run"});
    EXPECT_EQ(bad.status, 1);
    EXPECT_EQ(bad.err,
              "Errors: \nbad.xml:1: error: Type mismatch in structure.  Expecting String got Int "
              "[other-shape]. Change the document, or output-spec.\n");
}

TEST_F(ToolCheckDocument, StandardInput_IsReadWithoutAFile) {
    const auto run = TestSupport::RunInChild(
        [] {
            TestSupport::Become(TANDRIL_PROGRAM, {TANDRIL_PROGRAM, "--plugin", DEVKIT_PLUGIN,
                                                  "plugin", "document", "check"});
        },
        "<o/>");
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.err, "Errors: \nSTDIN:1: error: The document holds no value [empty-document]. "
                       "Print a value, or a line that begins with ERROR: when there is none.\n");
}

TEST_F(ToolCheckDocument, HalfADeclaration_IsRefused) {
    folder_.Write("good.xml", "<o><string>text</string></o>");
    EXPECT_EQ(Run({"-f", "good.xml", "--command", "demo.run"}).err,
              "Errors: \nError on command plugin document check : --descriptor and --command need "
              "one another\n");
}

TEST_F(ToolCheckDocument, MissingFile_IsRefused) {
    EXPECT_EQ(Run({"-f", "none.xml"}).err,
              "Errors: \nError on command plugin document check : Unable to read none.xml: No "
              "such file or directory\n");
}

} // namespace
