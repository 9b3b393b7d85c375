#include "Boxes.h"

#include <tests/support/EnvironmentVariable.h>

#include <gtest/gtest.h>
#include <string>

using Cli::Boxes;
using Cli::EscapeXml;
using Cli::Words;
using TestSupport::ChildRun;
using TestSupport::CommandPieces;
using TestSupport::EnvironmentVariable;
using TestSupport::ParameterElement;

namespace {

/// The command "box say" prints its parameter "text" as its result.
class ToolStrictTemplatesTest : public testing::Test {
  protected:
    ToolStrictTemplatesTest() {
        CommandPieces pieces;
        pieces.inputSpec =
            "<input-spec>" +
            ParameterElement(R"(name="text" type="string")", "<description>D.</description>") +
            "</input-spec>";
        pieces.formatParameters =
            "<format-parameters><formatter>simple</formatter></format-parameters>";
        pieces.execute = "<execute>" +
                         EscapeXml("printf '<output><string>%s</string></output>' '$val{text}'") +
                         "</execute>";
        boxes_.Add("say", pieces);
    }

    ChildRun Say(const Words& words) const { return boxes_.Run(Cli::Join({"box", "say"}, words)); }

    EnvironmentVariable locale_{"LANG", "C.UTF-8"};
    Boxes boxes_;
};

TEST_F(ToolStrictTemplatesTest, OrdinaryValue_IsFilledIn) {
    const ChildRun run = Say({"--text", "${a}; b"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, "${a}; b\n");
    EXPECT_EQ(run.err, "");
}

TEST_F(ToolStrictTemplatesTest, ValueThatSpellsAPlaceholder_RunsNothing) {
    const ChildRun run = Say({"--text", "$multilist{text,x,true}';echo injected #"});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err,
              "Errors: \n"
              "Refused value for parameter text.  It spells a placeholder of command templates, "
              "one of $val{, $if{, $list{ and $multilist{.\n");
}

TEST_F(ToolStrictTemplatesTest, SeveralValuesForOne_RunNothing) {
    const ChildRun run = Say({"--text", "a", "--text", "b"});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, "Errors: \n"
                       "Found multiple values for text this parameter can only accept a "
                       "single value.\n");
}

} // namespace
