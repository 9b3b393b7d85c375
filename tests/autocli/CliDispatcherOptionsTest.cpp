#include "CliDispatcherFixture.h"

#include <tests/support/DescriptorText.h>
#include <tests/support/EveryWord.h>
#include <tests/support/LongText.h>
#include <tests/support/NamedRow.h>
#include <tests/support/PseudoTerminal.h>
#include <tests/support/TempDirectory.h>

#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iostream>
#include <regex>
#include <stdexcept>
#include <string>

using CppTools::AutoCli::CliDispatcher;
using CppTools::AutoCli::DisplayContext;
using CppTools::AutoCli::FormatParameters;
using CppTools::AutoCli::OptionParser;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using TestSupport::kRowName;
using TestSupport::LongText;
using TestSupport::NamespaceDescriptor;
using TestSupport::OutdatedDescriptor;
using TestSupport::OutdatedMessage;
using TestSupport::PrintedBy;
using TestSupport::PseudoTerminal;
using TestSupport::TempDirectory;

namespace {

class CliDispatcherOptionsTest : public TestSupport::CliDispatcherFixture {
  protected:
    /// The width after a display was filled that was 7 by 3 before.
    static unsigned WidthOf(CliDispatcher& asked) {
        DisplayContext display;
        display.width = 7;
        display.height = 3;
        PrintedBy([&] { asked.GetDisplayContext(display); });
        EXPECT_EQ(display.height, 3);
        return display.width;
    }

    const TempDirectory directory;
};

TEST_F(CliDispatcherOptionsTest, NoOptions_ChangeNothing) {
    EXPECT_TRUE(ApplyOptions({}));
    EXPECT_EQ(format.GetFormatter(), "");
    EXPECT_THAT(format.GetParameters(), IsEmpty());
    EXPECT_THAT(output->GetErrors(), IsEmpty());
    EXPECT_EQ(printed.out + printed.err, "");
}

TEST_F(CliDispatcherOptionsTest, Validate_KnownOptions_AreAccepted) {
    OptionParser parser;
    parser.ParseVector({"-h", "--help", "--formatter=a", "--plugin-dir=b", "--plugin=c",
                        "--format-param=d", "--screen-width=e"});
    dispatcher.ValidateDispatcherParameters(parser, output);
    EXPECT_THAT(output->GetErrors(), IsEmpty());
}

TEST_F(CliDispatcherOptionsTest, Validate_UnknownOptions_AreReportedOncePerOccurrence) {
    OptionParser parser;
    parser.ParseVector({"--foo=1", "--Help", "--foo", "--input=x", "-f", "--formatter=a"});
    dispatcher.ValidateDispatcherParameters(parser, output);
    EXPECT_THAT(output->GetErrors(), ElementsAre("Unknown dispatcher parameter: foo",
                                                 "Unknown dispatcher parameter: Help",
                                                 "Unknown dispatcher parameter: foo",
                                                 "Unknown dispatcher parameter: input",
                                                 "Unknown dispatcher parameter: f"));
}

TEST_F(CliDispatcherOptionsTest, Help_PrintsTheUsageAndAppliesNothingElse) {
    for (const char* help : {"--help", "-h"}) {
        EXPECT_FALSE(ApplyOptions({help, "--formatter=xml", "--plugin=/nowhere.xml",
                                   "--format-param=a=1", "--screen-width=70"}));
        EXPECT_EQ(printed.out, TestSupport::UsageText(""));
        EXPECT_EQ(printed.err, "");
        EXPECT_EQ(format.GetFormatter(), "");
        EXPECT_THAT(format.GetParameters(), IsEmpty());
        EXPECT_EQ(WidthOf(dispatcher), 7U);
    }
}

TEST_F(CliDispatcherOptionsTest, Help_ComesBehindTheValidation) {
    EXPECT_FALSE(ApplyOptions({"--foo", "--help"}));
    EXPECT_THAT(output->GetErrors(), ElementsAre("Unknown dispatcher parameter: foo"));
}

TEST_F(CliDispatcherOptionsTest, Formatter_OneValue_IsSet) {
    EXPECT_TRUE(ApplyOptions({"--formatter", "xml"}));
    EXPECT_EQ(format.GetFormatter(), "xml");
    EXPECT_THAT(output->GetErrors(), IsEmpty());
}

TEST_F(CliDispatcherOptionsTest, Formatter_WithoutAValue_IsAnError) {
    EXPECT_TRUE(ApplyOptions({"--formatter"}));
    EXPECT_EQ(format.GetFormatter(), "");
    EXPECT_THAT(
        output->GetErrors(),
        ElementsAre("--formatter requires the name of the formatter to use for this command"));
}

TEST_F(CliDispatcherOptionsTest, Formatter_Twice_IsAnError) {
    EXPECT_TRUE(ApplyOptions({"--formatter=xml", "--formatter=json"}));
    EXPECT_EQ(format.GetFormatter(), "");
    EXPECT_THAT(output->GetErrors(),
                ElementsAre("Only one --formatter option can be passed to a command"));
}

TEST_F(CliDispatcherOptionsTest, Formatter_TwiceWithoutAValue_IsTheSameError) {
    EXPECT_TRUE(ApplyOptions({"--formatter", "--formatter"}));
    EXPECT_THAT(output->GetErrors(),
                ElementsAre("Only one --formatter option can be passed to a command"));
}

TEST_F(CliDispatcherOptionsTest, Formatter_UnknownName_IsNotLookedUpHere) {
    EXPECT_TRUE(ApplyOptions({"--formatter=nope"}));
    EXPECT_EQ(format.GetFormatter(), "nope");
    EXPECT_THAT(output->GetErrors(), IsEmpty());
}

TEST_F(CliDispatcherOptionsTest, Errors_AreInTheOrderOfTheSteps) {
    EXPECT_TRUE(ApplyOptions({"--format-param=bad", "--formatter", "--foo"}));
    EXPECT_THAT(
        output->GetErrors(),
        ElementsAre("Unknown dispatcher parameter: foo",
                    "--formatter requires the name of the formatter to use for this command",
                    "Unable to read format parameter bad"));
}

TEST_F(CliDispatcherOptionsTest, FormatParam_EveryValueIsReadAndTheLastOfAKeyWins) {
    EXPECT_TRUE(ApplyOptions({"--format-param=b=1", "--format-param", "a=2", "--format-param=x",
                              "--format-param", "--format-param=b=3"}));
    EXPECT_THAT(format.GetParameters(), ElementsAre(Pair("a", "2"), Pair("b", "3")));
    EXPECT_THAT(output->GetErrors(), ElementsAre("Unable to read format parameter x",
                                                 "Unable to read format parameter "));
}

TEST_F(CliDispatcherOptionsTest, PluginDir_EveryValueIsLoadedInOrder) {
    directory.Write("two/b.xml", NamespaceDescriptor("storage"));
    directory.Write("one/a.xml", NamespaceDescriptor("network"));
    directory.Write("one/lib64/z.xml", NamespaceDescriptor("network"));
    dispatcher.ResetRegistrations();
    EXPECT_TRUE(ApplyOptions(
        {"--plugin-dir", directory / "two", "--plugin-dir", "--plugin-dir=" + directory / "one"}));
    EXPECT_EQ(printed.out + printed.err, "");
    EXPECT_THAT(dispatcher.GetPluginNames(),
                ElementsAre(directory / "two/b.xml", directory / "one/lib64/z.xml",
                            directory / "one/a.xml"));
}

TEST_F(CliDispatcherOptionsTest, PluginDir_Missing_IsReportedAndNoError) {
    EXPECT_TRUE(ApplyOptions({"--plugin-dir=" + directory / "missing"}));
    EXPECT_EQ(printed.err,
              "Unable to open directory " + directory / "missing" + " for plugin registration\n");
    EXPECT_THAT(output->GetErrors(), IsEmpty());
}

TEST_F(CliDispatcherOptionsTest, Plugin_EveryValueIsLoadedInOrder) {
    const std::string b = directory.Write("b.xml", NamespaceDescriptor("storage"));
    const std::string a = directory.Write("a.xml", NamespaceDescriptor("network"));
    const std::string library = directory / "library.so";
    std::filesystem::copy_file(REGISTERING_PLUGIN, library);
    dispatcher.ResetRegistrations();
    EXPECT_TRUE(ApplyOptions({"--plugin", b, "--plugin", "--plugin=" + a, "--plugin=" + library,
                              "--plugin=" + directory / "nothing.txt"}));
    EXPECT_EQ(printed.out + printed.err, "");
    EXPECT_THAT(dispatcher.GetPluginNames(), ElementsAre(b, a, library));
}

TEST_F(CliDispatcherOptionsTest, Plugin_ThatFails_IsReportedAndTheNextIsTried) {
    const std::string old = directory.Write("old.xml", OutdatedDescriptor());
    const std::string good = directory.Write("good.xml", NamespaceDescriptor("storage"));
    dispatcher.ResetRegistrations();
    EXPECT_TRUE(ApplyOptions({"--plugin=" + old, "--plugin=" + good}));
    EXPECT_EQ(printed.err, "Unable to load plugin " + old + ": " + OutdatedMessage(old) + "\n");
    EXPECT_THAT(output->GetErrors(), IsEmpty());
    EXPECT_THAT(dispatcher.GetPluginNames(), ElementsAre(good));
}

TEST_F(CliDispatcherOptionsTest, Plugin_ThatFails_DoesNotFailTheLine) {
    const std::string old = directory.Write("old.xml", OutdatedDescriptor());
    EXPECT_TRUE(Handle({"--plugin=" + old, "system", "count"}));
    EXPECT_EQ(printed.out, "7\n");
    EXPECT_EQ(printed.err, "Unable to load plugin " + old + ": " + OutdatedMessage(old) + "\n");
}

TEST_F(CliDispatcherOptionsTest, Plugin_OtherException_Passes) {
    OptionParser parser;
    parser.ParseVector({"--format-param=a=1", "--plugin", FAILING_PLUGIN, "--formatter=xml",
                        "--screen-width=70", "--foo"});
    EXPECT_THROW(dispatcher.HandleDispatcherOptions(parser, format, output), std::runtime_error);
    // The steps before the plug-ins were taken, the one behind them was not.
    EXPECT_THAT(output->GetErrors(), ElementsAre("Unknown dispatcher parameter: foo"));
    EXPECT_EQ(WidthOf(dispatcher), 70U);
    EXPECT_EQ(format.GetFormatter(), "xml");
    EXPECT_THAT(format.GetParameters(), IsEmpty());
}

TEST_F(CliDispatcherOptionsTest, PluginDirs_ComeBeforePlugins) {
    directory.Write("dir/b.xml", NamespaceDescriptor("storage"));
    const std::string a = directory.Write("a.xml", NamespaceDescriptor("network"));
    dispatcher.ResetRegistrations();
    EXPECT_TRUE(ApplyOptions({"--plugin=" + a, "--plugin-dir=" + directory / "dir"}));
    EXPECT_THAT(dispatcher.GetPluginNames(), ElementsAre(directory / "dir/b.xml", a));
}

TEST_F(CliDispatcherOptionsTest, ScreenWidth_TheLastValueCounts) {
    EXPECT_TRUE(ApplyOptions({"--screen-width=80", "--screen-width=90"}));
    EXPECT_EQ(WidthOf(dispatcher), 90U);
    EXPECT_TRUE(ApplyOptions({"--screen-width=80", "--screen-width"}));
    EXPECT_EQ(WidthOf(dispatcher), 7U);
}

TEST_F(CliDispatcherOptionsTest, ScreenWidth_IsSharedAndLasts) {
    EXPECT_TRUE(ApplyOptions({"--screen-width=80"}));
    EXPECT_TRUE(ApplyOptions({}));
    CliDispatcher other;
    EXPECT_EQ(WidthOf(other), 80U);
    EXPECT_EQ(WidthOf(dispatcher), 80U);
}

TEST_F(CliDispatcherOptionsTest, ScreenWidth_Ignored_LeavesNoOverride) {
    EXPECT_TRUE(ApplyOptions({"--screen-width=80"}));
    EXPECT_TRUE(ApplyOptions({"--screen-width=10000"}));
    EXPECT_EQ(WidthOf(dispatcher), 7U);
}

struct WidthRow : TestSupport::NamedRow {
    std::string text;
    unsigned width; ///< 7 when the text sets none.
};

class ScreenWidthTest : public CliDispatcherOptionsTest,
                        public testing::WithParamInterface<WidthRow> {};

TEST_P(ScreenWidthTest, GetDisplayContext_NoTerminal_ShowsTheWidth) {
    EXPECT_TRUE(ApplyOptions({"--screen-width=" + GetParam().text}));
    EXPECT_EQ(WidthOf(dispatcher), GetParam().width);
    EXPECT_THAT(output->GetErrors(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    Widths, ScreenWidthTest,
    testing::Values(WidthRow{{"Decimal"}, "80", 80}, WidthRow{{"Hexadecimal"}, "0x50", 80},
                    WidthRow{{"Octal"}, "0120", 80}, WidthRow{{"Least"}, "1", 1},
                    WidthRow{{"Greatest"}, "9999", 9999}, WidthRow{{"TooGreat"}, "10000", 7},
                    WidthRow{{"Zero"}, "0", 7}, WidthRow{{"Negative"}, "-5", 7},
                    WidthRow{{"NoNumber"}, "wide", 7}, WidthRow{{"NumberAndMore"}, "80em", 80},
                    WidthRow{{"BlankBefore"}, " 80", 80}, WidthRow{{"Plus"}, "+80", 80},
                    WidthRow{{"SixteenBitsAndMore"}, "65616", 7},
                    WidthRow{{"ThirtyTwoBitsAndMore"}, "4294967376", 7},
                    WidthRow{{"OutOfRange"}, "99999999999999999999", 7}),
    kRowName);

/// Fills a display that was 7 by 3 before, in a child on the terminal, and shows it there.
std::string DisplayOn(PseudoTerminal& terminal, CliDispatcher& dispatcher) {
    const pid_t child = terminal.Start([&] {
        DisplayContext display;
        display.width = 7;
        display.height = 3;
        dispatcher.GetDisplayContext(display);
        std::cout << display.width << " by " << display.height;
    });
    EXPECT_EQ(TestSupport::StatusOf(child), 0);
    return terminal.ReadRest();
}

TEST_F(CliDispatcherOptionsTest, GetDisplayContext_Terminal_IsItsSize) {
    PseudoTerminal terminal(132, 43);
    EXPECT_EQ(DisplayOn(terminal, dispatcher), "132 by 43");
}

TEST_F(CliDispatcherOptionsTest, GetDisplayContext_TerminalWithoutASize_IsUnknown) {
    PseudoTerminal terminal(0, 0);
    EXPECT_EQ(DisplayOn(terminal, dispatcher), "0 by 0");
}

TEST_F(CliDispatcherOptionsTest, GetDisplayContext_Terminal_TheOverrideReplacesTheWidth) {
    ApplyOptions({"--screen-width=50"});
    PseudoTerminal terminal(132, 43);
    EXPECT_EQ(DisplayOn(terminal, dispatcher), "50 by 43");
}

struct FormatParamRow : TestSupport::NamedRow {
    LongText text;
    LongText key; ///< Empty when the text cannot be read.
    LongText value;
};

class FormatParamTest : public CliDispatcherOptionsTest,
                        public testing::WithParamInterface<FormatParamRow> {};

TEST_P(FormatParamTest, HandleDispatcherOptions_ReadsKeyAndValue) {
    const std::string text = GetParam().text.Build();
    const std::string key = GetParam().key.Build();
    EXPECT_TRUE(ApplyOptions({"--format-param", text}));
    if (key.empty()) {
        EXPECT_THAT(format.GetParameters(), IsEmpty());
        EXPECT_THAT(output->GetErrors(), ElementsAre("Unable to read format parameter " + text));
    } else {
        EXPECT_THAT(format.GetParameters(), ElementsAre(Pair(key, GetParam().value.Build())));
        EXPECT_THAT(output->GetErrors(), IsEmpty());
    }
}

// The alphabet has each kind of byte that the pattern tells apart.
TEST_F(CliDispatcherOptionsTest, HandleDispatcherOptions_EveryShortFormatParam_IsReadAsThePattern) {
    const std::regex pattern("([a-zA-Z0-9 .\\-:]+)=([^]+)");
    std::size_t read = 0;
    for (const std::string& text : TestSupport::EveryWord(5, "a:=_\n")) {
        if (text.empty()) {
            continue;
        }
        format = FormatParameters();
        ApplyOptions({"--format-param=" + text});
        std::smatch match;
        if (std::regex_match(text, match, pattern)) {
            ++read;
            ASSERT_THAT(format.GetParameters(), ElementsAre(Pair(match.str(1), match.str(2))));
        } else {
            ASSERT_THAT(format.GetParameters(), IsEmpty()) << "'" << text << "'";
        }
    }
    EXPECT_GT(read, 0U);
}

TEST_F(CliDispatcherOptionsTest, HandleDispatcherOptions_EveryByteInAFormatKey_IsReadAsThePattern) {
    const std::string accepted =
        "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789 .-:";
    for (int byte = 0; byte < 256; ++byte) {
        const char c = static_cast<char>(byte);
        format = FormatParameters();
        ApplyOptions({"--format-param=" + std::string{c} + "x=1"});
        EXPECT_EQ(format.GetParameters().size(), accepted.find(c) != std::string::npos ? 1U : 0U)
            << byte;
    }
}

const LongText kMillion("a", 1000000);

INSTANTIATE_TEST_SUITE_P(
    Values, FormatParamTest,
    testing::Values(FormatParamRow{{"Plain"}, "a=b", "a", "b"},
                    FormatParamRow{{"EveryKeyCharacter"}, "aZ09 .-:=b", "aZ09 .-:", "b"},
                    FormatParamRow{{"TypeAndField"}, "units:T.F=MB", "units:T.F", "MB"},
                    FormatParamRow{{"EqualsInValue"}, "a=b=c", "a", "b=c"},
                    FormatParamRow{{"EqualsOnlyValue"}, "a==", "a", "="},
                    FormatParamRow{{"BlankKeyAndValue"}, " = ", " ", " "},
                    FormatParamRow{{"AnyValue"}, "a=\xc3\xa4,%\"\t_", "a", "\xc3\xa4,%\"\t_"},
                    FormatParamRow{{"LineEndInValue"}, "a=b\nc\n", "a", "b\nc\n"},
                    FormatParamRow{{"LongKey"}, kMillion + "=b", kMillion, "b"},
                    FormatParamRow{{"LongValue"}, "a=" + kMillion, "a", kMillion},
                    FormatParamRow{{"NoEquals"}, "ab", "", ""},
                    FormatParamRow{{"NoKey"}, "=b", "", ""},
                    FormatParamRow{{"NoValue"}, "a=", "", ""},
                    FormatParamRow{{"UnderscoreInKey"}, "a_b=c", "", ""},
                    FormatParamRow{{"TabInKey"}, "a\tb=c", "", ""},
                    FormatParamRow{{"LineEndInKey"}, "a\nb=c", "", ""},
                    FormatParamRow{{"UmlautInKey"}, "\xc3\xa4=c", "", ""},
                    FormatParamRow{{"LongKeyWithoutEquals"}, kMillion, "", ""}),
    kRowName);

} // namespace
