#include <tests/support/NamedRow.h>
#include <tests/support/ProgramRun.h>
#include <tests/support/SeededTest.h>
#include <tests/support/TempDirectory.h>
#include <tests/support/TemplateFilling.h>
#include <tests/support/TextGenerator.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

// What a template promises about quoting is only worth what a shell makes of the line.

namespace {

using TestSupport::Alphabet;
using TestSupport::AsciiBetween;
using TestSupport::FilledLine;
using TestSupport::GivenParameters;
using TestSupport::kRowName;
using TestSupport::NamedRow;
using TestSupport::RunProgram;
using TestSupport::TempDirectory;
using TestSupport::TextGenerator;
using TestSupport::Without;
using Words = std::vector<std::string>;

/// Lines of shell in which the command "show" stands for a program whose arguments are of
/// interest, all run by one shell.
class ShellRun {
  public:
    explicit ShellRun(const std::vector<std::string>& lines) {
        files_.Write("some1", "");
        files_.Write("some2", "");
        std::string script = "show() { printf '%s\\0' $# \"$@\"; }\nHOME=/home/nobody\n";
        for (const std::string& line : lines) {
            script += line + "\n";
        }
        const std::string file = script_.Write("script", script);
        const auto run = RunProgram({"/bin/sh", file}, files_.Path());
        status_ = run.status;
        error_ = run.err;
        Collect(run.out);
    }

    /// The arguments of every "show", one list each.
    const std::vector<Words>& Shown() const { return shown_; }

    int Status() const { return status_; }

    /// What the shell complained about, and the files that nobody should have made.
    std::string Trouble() const {
        std::string trouble = error_;
        for (const auto& entry : std::filesystem::directory_iterator(files_.Path())) {
            const std::string name = entry.path().filename();
            trouble += name == "some1" || name == "some2" ? "" : "file " + name + "\n";
        }
        return trouble;
    }

  private:
    void Collect(const std::string& out) {
        std::istringstream stream(out);
        for (std::string word; std::getline(stream, word, '\0');) {
            Words words(std::stoul(word));
            for (std::string& each : words) {
                std::getline(stream, each, '\0');
            }
            shown_.push_back(words);
        }
    }

    TempDirectory files_;
    TempDirectory script_;
    std::vector<Words> shown_;
    int status_ = 0;
    std::string error_;
};

/// The arguments that arrive when one template is filled and run.
struct ShellRow : NamedRow {
    std::string text;
    GivenParameters given;
    Words words;
};

class ShellRoundTripTest : public testing::TestWithParam<ShellRow> {};

TEST_P(ShellRoundTripTest, ArgumentsArrive) {
    const ShellRun run({FilledLine(GetParam().text, GetParam().given)});
    EXPECT_EQ(run.Shown(), std::vector<Words>{GetParam().words});
    EXPECT_EQ(run.Trouble(), "");
    EXPECT_EQ(run.Status(), 0);
}

/// Everything that means something to a shell, but no single quote.
const std::string kHostile =
    "a; b & c | d > e < f $HOME ${HOME} $(echo x) `echo x` \"y\" \\ \\n # * ? "
    "[a-z] ~ ! ^ {1,2} =\t%s\nnext";

INSTANTIATE_TEST_SUITE_P(
    Val, ShellRoundTripTest,
    testing::Values(
        ShellRow{{"InSingleQuotes"}, "show '$val{name}'", {{"name", kHostile}}, {kHostile}},
        ShellRow{{"InSingleQuotesTheSingleQuotesAreLost"},
                 "show '$val{name}'",
                 {{"name", "it's 'so'"}},
                 {"its so"}},
        ShellRow{{"InSingleQuotesAnEmptyValueIsAnArgument"},
                 "show '$val{name}' end",
                 {{"name", ""}},
                 {"", "end"}},
        ShellRow{{"EveryOccurrenceInSingleQuotes"},
                 "show '$val{name}' '$val{name}'",
                 {{"name", "a b"}},
                 {"a b", "a b"}},
        ShellRow{{"UnquotedSpecialCharacters"},
                 "show $val{name}",
                 {{"name", "a;b&c|d>e<f$HOME$(x)`x`\"y\"\\'z'*!^"}},
                 {"a;b&c|d>e<f$HOME$(x)`x`\"y\"\\'z'*!^"}},
        ShellRow{{"UnquotedInsideAWord"},
                 "show --name=$val{name}.txt",
                 {{"name", "a;b"}},
                 {"--name=a;b.txt"}},
        ShellRow{{"UnquotedTwoParameters"},
                 "show $val{early} $val{zone}",
                 {{"early", "$a"}, {"zone", "b'"}},
                 {"$a", "b'"}},
        ShellRow{{"InDoubleQuotesWhatIsSpecialThere"},
                 "show \"$val{name}\"",
                 {{"name", "$HOME `x` \"y\" \\z"}},
                 {"$HOME `x` \"y\" \\z"}}),
    kRowName);

INSTANTIATE_TEST_SUITE_P(
    Lists, ShellRoundTripTest,
    testing::Values(
        ShellRow{{"ListInQuotesIsOneArgument"},
                 "show $list{ip,',',true}",
                 {{"ip", "a b"}, {"ip", "c"}},
                 {"a b,c"}},
        ShellRow{{"ListInQuotesKeepsWhatIsSpecialThere"},
                 "show $list{ip,',',true}",
                 {{"ip", "$HOME"}, {"ip", "\"`x`\\"}},
                 {"$HOME,\"`x`\\"}},
        ShellRow{
            {"ListInQuotesOfNothing"}, "show $list{ip,',',true} end", {{"ip", ""}}, {"", "end"}},
        ShellRow{{"ListWithoutQuotes"},
                 "show $list{ip,';',false}",
                 {{"ip", "$a"}, {"ip", "b'c"}},
                 {"$a;b'c"}},
        ShellRow{{"ListSeparatedByBlanksIsSeveralArguments"},
                 "show $list{ip,' ',false}",
                 {{"ip", "a;"}, {"ip", "b"}},
                 {"a;", "b"}},
        ShellRow{{"MultiListInQuotes"},
                 "show$multilist{ip,--ip,true}",
                 {{"ip", "a b; c"}, {"ip", "*'#"}},
                 {"--ip", "a b; c", "--ip", "*'#"}},
        ShellRow{{"MultiListInQuotesTheDoubleQuotesAreLost"},
                 "show$multilist{ip,--ip,true}",
                 {{"ip", "say\" \"x\""}},
                 {"--ip", "say x"}},
        ShellRow{{"MultiListInQuotesAnEmptyValueIsAnArgument"},
                 "show$multilist{ip,-i,true}",
                 {{"ip", ""}},
                 {"-i", ""}},
        ShellRow{{"MultiListWithoutQuotes"},
                 "show$multilist{ip,-i,false}",
                 {{"ip", "$a;'b'"}, {"ip", "\"c\"\\"}},
                 {"-i", "$a;'b'", "-i", "\"c\"\\"}},
        ShellRow{{"PresentIf"}, "show $if{force,--force} x", {{"force", ""}}, {"--force", "x"}},
        ShellRow{{"AbsentIf"}, "show $if{force,--force} x", {}, {"x"}}),
    kRowName);

// What the escapes do not reach. Authors of templates have to know it.
INSTANTIATE_TEST_SUITE_P(
    Limits, ShellRoundTripTest,
    testing::Values(
        ShellRow{
            {"UnquotedBlanksSeparate"}, "show $val{name}", {{"name", " a\tb c "}}, {"a", "b", "c"}},
        ShellRow{
            {"UnquotedEmptyValueIsNoArgument"}, "show $val{name} end", {{"name", ""}}, {"end"}},
        ShellRow{{"UnquotedLineEndIsLost"}, "show $val{name}", {{"name", "a\nb"}}, {"ab"}},
        ShellRow{{"UnquotedHashHidesTheRest"}, "show $val{name} end", {{"name", "#a"}}, {}},
        ShellRow{{"UnquotedTildeIsTheHome"}, "show $val{name}", {{"name", "~"}}, {"/home/nobody"}},
        ShellRow{{"UnquotedQuestionMarkFindsFiles"},
                 "show $val{name}",
                 {{"name", "some?"}},
                 {"some1", "some2"}},
        ShellRow{
            {"UnquotedBracketsFindFiles"}, "show $val{name}", {{"name", "some[2-9]"}}, {"some2"}},
        ShellRow{{"DoubleQuotesKeepTheBackslashOfOtherCharacters"},
                 "show \"$val{name}\"",
                 {{"name", "a;b'c*"}},
                 {"a\\;b\\'c\\*"}},
        ShellRow{{"DoubleQuotesLoseLineEnds"}, "show \"$val{name}\"", {{"name", "a\nb"}}, {"ab"}},
        ShellRow{{"ListInQuotesKeepsTheBackslashOfOtherCharacters"},
                 "show $list{ip,';',true}",
                 {{"ip", "a"}, {"ip", "b"}},
                 {"a\\;b"}},
        ShellRow{{"MultiListInQuotesExpandsVariables"},
                 "show$multilist{ip,-i,true}",
                 {{"ip", "$HOME"}},
                 {"-i", "/home/nobody"}},
        ShellRow{{"MultiListInQuotesRunsCommands"},
                 "show$multilist{ip,-i,true}",
                 {{"ip", "$(printf x)`printf y`"}},
                 {"-i", "xy"}},
        ShellRow{{"MultiListInQuotesReadsBackslashes"},
                 "show$multilist{ip,-i,true}",
                 {{"ip", "a\\\\b\\$c"}},
                 {"-i", "a\\b$c"}}),
    kRowName);

TEST(ShellLimitsTest, MultiListInQuotes_BackslashAtTheEnd_LeavesTheQuoteOpen) {
    const ShellRun run({FilledLine("show$multilist{ip,-i,true}", {{"ip", "a\\"}})});
    EXPECT_EQ(run.Shown(), std::vector<Words>());
    EXPECT_NE(run.Status(), 0);
}

TEST(ShellLimitsTest, UnquotedHashAndLineEnd_RunsWhatFollows) {
    const ShellRun run({FilledLine("show $val{name}", {{"name", "#a\nshow b"}})});
    EXPECT_EQ(run.Shown(), (std::vector<Words>{{}, {"b"}}));
    EXPECT_EQ(run.Trouble(), "");
    EXPECT_EQ(run.Status(), 0);
}

/// One way to place a value, and what becomes of the value there.
struct Placement {
    std::string text;
    std::string parameter;
    std::string (*arriving)(const std::string& value);
};

std::string WithoutSingleQuotes(const std::string& value) {
    std::string rest = value;
    std::erase(rest, '\'');
    return rest;
}

std::string WithoutLineEnds(const std::string& value) {
    std::string rest = value;
    std::erase(rest, '\n');
    return rest;
}

/// Between double quotes a shell takes the backslash away from four characters and a line end.
std::string EscapedForNothing(const std::string& value) {
    std::string text;
    for (const char c : WithoutLineEnds(value)) {
        const bool keepsBackslash = std::string("!&'()*;<>^|").find(c) != std::string::npos;
        text += (keepsBackslash ? "\\" : "") + std::string{c};
    }
    return text;
}

const std::vector<Placement>& Quoted() {
    static const std::vector<Placement> placements = {
        {"show '$val{name}'", "name", WithoutSingleQuotes},
        {"show x'$val{name}'", "name",
         [](const std::string& value) { return "x" + WithoutSingleQuotes(value); }},
        {"show \"$val{name}\"", "name", EscapedForNothing},
        {"show $list{ip,',',true}", "ip", EscapedForNothing},
        {"show $list{name,'',true}", "name", EscapedForNothing}};
    return placements;
}

const std::vector<Placement>& Unquoted() {
    static const std::vector<Placement> placements = {
        {"show $val{name}", "name", WithoutLineEnds},
        {"show $list{ip,',',false}", "ip", WithoutLineEnds}};
    return placements;
}

/// Values in their places, to be run together.
class Batch {
  public:
    void Add(const Placement& placement, const std::string& value) {
        lines_.push_back(FilledLine(placement.text, {{placement.parameter, value}}));
        expected_.push_back({placement.arriving(value)});
    }

    void Expect() const {
        const ShellRun run(lines_);
        EXPECT_EQ(run.Trouble(), "");
        ASSERT_EQ(run.Shown().size(), expected_.size());
        for (std::size_t i = 0; i < lines_.size(); ++i) {
            EXPECT_EQ(run.Shown()[i], expected_[i]) << lines_[i];
        }
    }

  private:
    std::vector<std::string> lines_;
    std::vector<Words> expected_;
};

TEST(ShellBytesTest, EveryByteArrivesWhereItIsQuoted) {
    Batch batch;
    for (int code = 1; code < 256; ++code) {
        const std::string value = "a" + std::string(1, static_cast<char>(code)) + "b";
        for (const Placement& placement : Quoted()) {
            batch.Add(placement, value);
        }
    }
    batch.Expect();
}

TEST(ShellBytesTest, EveryByteButBlanksArrivesWhereItIsEscaped) {
    Batch batch;
    for (int code = 1; code < 256; ++code) {
        const std::string value = "a" + std::string(1, static_cast<char>(code)) + "b";
        if (code != ' ' && code != '\t') {
            for (const Placement& placement : Unquoted()) {
                batch.Add(placement, value);
            }
        }
    }
    batch.Expect();
}

TEST(ShellCanaryTest, NoValueGetsOutOfItsPlace) {
    const std::string touch = "touch canary";
    std::vector<std::string> values = {
        "\n" + touch + "\n",         "$(" + touch + ")",        "`" + touch + "`",
        "'; " + touch + "; '",       "\"; " + touch + "; \"",   "\\'; " + touch + "; \\'",
        "\\\"; " + touch + "; \\\"", "'\"'\"; " + touch + " #", "$val{name}'; " + touch + "; '"};
    for (const std::string link : {";", "&", "|", "&&", "||", ">canary #", ")", "}", "\\\n;"}) {
        values.push_back("x" + link + touch);
        values.push_back(link + " " + touch + " " + link);
    }
    Batch quoted;
    std::vector<std::string> escaped;
    for (const std::string& value : values) {
        for (const Placement& placement : Quoted()) {
            quoted.Add(placement, value);
        }
        escaped.push_back(FilledLine("show $val{name}", {{"name", value}}));
        escaped.push_back(FilledLine("show $list{ip,' ',false}", {{"ip", value}, {"ip", value}}));
        escaped.push_back(FilledLine("show$multilist{ip,-i,false}", {{"ip", value}}));
    }
    escaped.push_back(FilledLine("show$multilist{ip,-i,true}", {{"ip", "\"; " + touch + "; \""}}));
    quoted.Expect();
    const ShellRun run(escaped);
    EXPECT_EQ(run.Trouble(), "");
    EXPECT_EQ(run.Shown().size(), escaped.size());
}

class ShellPropertyTest : public TestSupport::SeededTest {};

TEST_P(ShellPropertyTest, GeneratedValuesArriveInQuotes) {
    TextGenerator texts(Random(), {AsciiBetween(0x01, 0x7F), Alphabet::Beyond::Bytes});
    Batch batch;
    for (int round = 0; round < 150; ++round) {
        batch.Add(Random().Pick(Quoted()), texts.Text());
    }
    batch.Expect();
}

TEST_P(ShellPropertyTest, GeneratedWordsArriveEscaped) {
    // Without the characters that separate words, begin a comment or stand for files.
    TextGenerator texts(Random(),
                        Without({AsciiBetween(0x01, 0x7F), Alphabet::Beyond::Bytes}, " \t\n#~?[]"));
    Batch batch;
    for (int round = 0; round < 150; ++round) {
        batch.Add(Random().Pick(Unquoted()), "x" + texts.Text());
    }
    batch.Expect();
}

INSTANTIATE_TEST_SUITE_P(Seeds, ShellPropertyTest, TestSupport::BothSeeds(), TestSupport::SeedName);

} // namespace
