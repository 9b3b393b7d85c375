#include <CppTools/autocli/formatters/CommandHelpFormatter.h>

#include <tests/support/CommandHelpRecord.h>
#include <tests/support/ImpostorValue.h>
#include <tests/support/Rendering.h>
#include <tests/support/Values.h>
#include <tests/support/Wrapping.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <ios>
#include <sstream>
#include <string>
#include <vector>

namespace {

using CppTools::AutoCli::CommandHelpFormatter;
using CppTools::AutoCli::DisplayContext;
using CppTools::AutoCli::FormatParameters;
using CppTools::CallSpec::Output;
using TestSupport::Bool;
using TestSupport::ElementsOf;
using TestSupport::ExampleList;
using TestSupport::Help;
using TestSupport::HelpOfOptions;
using TestSupport::HelpOption;
using TestSupport::HelpRecord;
using TestSupport::Ints;
using TestSupport::kHelpHeading;
using TestSupport::kSecretWarning;
using TestSupport::OptionList;
using TestSupport::OptionRecord;
using TestSupport::RenderWith;
using TestSupport::Rows;
using TestSupport::Struct;
using TestSupport::Texts;
using TestSupport::Value;

TEST(CommandHelpOptionsTest, DescriptionsStartAtOneColumn) {
    EXPECT_EQ(HelpOfOptions({{"file", "f", "The file to read.", true, false},
                             {"all", "", "Everything."},
                             {"help", "h", "Show the help message."}}),
              kHelpHeading + std::string("  -f|--file   The file to read. (required)\n"
                                         "     --all    Everything.\n"
                                         "  -h|--help   Show the help message.\n"));
}

TEST(CommandHelpOptionsTest, LongestNameSetsTheColumn) {
    EXPECT_EQ(HelpOfOptions({{"a", "", "One."}, {"a-very-long-name", "v", "Two."}}),
              kHelpHeading + std::string("     --a                  One.\n"
                                         "  -v|--a-very-long-name   Two.\n"));
}

TEST(CommandHelpOptionsTest, OrderIsTheListsOwn) {
    EXPECT_EQ(HelpOfOptions({{"z", "", "1"}, {"a", "", "2"}, {"m", "", "3"}}),
              kHelpHeading + std::string("     --z   1\n"
                                         "     --a   2\n"
                                         "     --m   3\n"));
}

TEST(CommandHelpOptionsTest, Flags_FollowTheDescriptionInBrackets) {
    EXPECT_EQ(HelpOfOptions({{"a", "", "Text.", false, false}, {"b", "", "Text.", true, false}}),
              kHelpHeading + std::string("     --a   Text.\n"
                                         "     --b   Text. (required)\n"));
}

TEST(CommandHelpOptionsTest, SecretOption_IsFollowedByTheWarning) {
    EXPECT_EQ(HelpOfOptions({{"pin", "p", "The number.", false, true}}),
              kHelpHeading + std::string("  -p|--pin   The number. (secret)\n") +
                  std::string(13, ' ') + kSecretWarning + "\n");
}

TEST(CommandHelpOptionsTest, RequiredSecretOption_HasBothFlags) {
    EXPECT_EQ(HelpOfOptions({{"pin", "", "The number.", true, true}}),
              kHelpHeading + std::string("     --pin   The number. (required secret)\n") +
                  std::string(13, ' ') + kSecretWarning + "\n");
}

TEST(CommandHelpOptionsTest, Warning_IsWrappedAtTheDescriptionColumn) {
    EXPECT_EQ(HelpOfOptions({{"pin", "p", "The number.", true, true}}, 60),
              kHelpHeading +
                  std::string("  -p|--pin   The number. (required secret)\n"
                              "             WARNING: Providing secret values on the \n"
                              "             command line is insecure because it may be \n"
                              "             logged or preserved in history files. Instead, \n"
                              "             specify this option with no value on the \n"
                              "             command line, and enter the value on the \n"
                              "             supplied prompt.\n"));
}

TEST(CommandHelpOptionsTest, LongDescription_IsWrappedAtItsColumnWithItsFlags) {
    EXPECT_EQ(HelpOfOptions({{"file", "f", "aaaa bbbb cccc dddd", true, false}}, 30),
              kHelpHeading + std::string("  -f|--file   aaaa bbbb cccc \n"
                                         "              dddd (required)\n"));
}

TEST(CommandHelpOptionsTest, LineEndsInADescription_BeginLinesAtItsColumn) {
    EXPECT_EQ(HelpOfOptions({{"file", "", "One.\n\nTwo.", true, false}}, 80),
              kHelpHeading + std::string("     --file   One.\n"
                                         "              \n"
                                         "              Two. (required)\n"));
}

TEST(CommandHelpOptionsTest, EmptyDescription_LeavesTheLineOpen) {
    EXPECT_EQ(HelpOfOptions({{"a", "", ""}, {"b", "", "", true, false}}),
              kHelpHeading + std::string("     --a        --b    (required)\n"));
}

TEST(CommandHelpOptionsTest, EmptyName_IsPaddedToo) {
    EXPECT_EQ(HelpOfOptions({{"", "x", "Text."}}), kHelpHeading + std::string("  -x|--   Text.\n"));
}

TEST(CommandHelpOptionsTest, LongShortName_MovesItsOwnFirstLineOnly) {
    EXPECT_EQ(HelpOfOptions({{"a", "abc", "One.\nTwo."}}),
              kHelpHeading + std::string("  -abc|--a   One.\n"
                                         "           Two.\n"));
}

TEST(CommandHelpOptionsTest, MissingTexts_AreEmpty) {
    const auto option = Struct("P", {{"Required", Bool(true)}, {"Secret", Bool(false)}});
    EXPECT_EQ(Help(HelpRecord(Rows({option}), ExampleList({}))),
              kHelpHeading + std::string("     --    (required)\n"));
}

TEST(CommandHelpOptionsTest, FlagsThatAreNoBooleans_CountAsFalse) {
    const auto option = Struct("P", {{"Name", TestSupport::Text("a")},
                                     {"Description", TestSupport::Text("One.")},
                                     {"Required", TestSupport::Text("true")}});
    EXPECT_EQ(Help(HelpRecord(Rows({option}), ExampleList({}))),
              kHelpHeading + std::string("     --a   One.\n"));
}

TEST(CommandHelpOptionsTest, ElementsThatAreNoStructures_AreSkipped) {
    EXPECT_EQ(Help(HelpRecord(Texts({"a-very-long-text"}), ExampleList({}))), kHelpHeading);
    EXPECT_EQ(Help(HelpRecord(Ints({1, 2}), ExampleList({}))), kHelpHeading);
}

TEST(CommandHelpOptionsTest, ElementsThatAreNoStructures_AreSkippedAmongOthers) {
    const auto options = Rows({OptionRecord({"a", "", "One."}), OptionRecord({"b", "", "Two."})});
    auto& elements = ElementsOf(options);
    elements.insert(elements.begin() + 1, TestSupport::Text("a-very-long-text"));
    EXPECT_EQ(Help(HelpRecord(options, ExampleList({}))),
              kHelpHeading + std::string("     --a   One.\n"
                                         "     --b   Two.\n"));
}

TEST(CommandHelpOptionsTest, EveryWidthAgreesWithWrappingLineByLine) {
    const std::string text = "The file to read, or a single dash for standard input.  The default "
                             "is nothing at all.\nCan be given only once.";
    for (int width = 0; width <= 120; ++width) {
        const std::string shown =
            TestSupport::WrapEachLine(text + " (required secret)\n" + kSecretWarning, 14, width);
        ASSERT_EQ(HelpOfOptions({{"file", "f", text, true, true}}, width),
                  std::string(kHelpHeading) + "  -f|--file   " + shown + "\n")
            << "width " << width;
    }
}

TEST(CommandHelpOptionsTest, StreamIsLeftWithoutLeftAdjustment) {
    const auto output = Output::New();
    output->SetRootObject(HelpRecord(OptionList({{"a", "", "One."}}), ExampleList({})));
    FormatParameters params;
    DisplayContext display;
    std::ostringstream out;
    CommandHelpFormatter().Format(output, params, display, out);
    EXPECT_EQ(out.flags() & std::ios_base::left, std::ios_base::fmtflags{});
}

} // namespace
