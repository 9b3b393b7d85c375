#include <CppTools/autocli/OptionParser.h>

#include <tests/support/CommandLineGenerator.h>
#include <tests/support/SeededTest.h>
#include <tests/support/SpecGenerator.h>

#include <gtest/gtest.h>

#include <list>
#include <memory>
#include <regex>
#include <string>
#include <utility>
#include <vector>

namespace {

using CppTools::AutoCli::OptionParser;
using TestSupport::BothSeeds;
using TestSupport::CommandLine;
using TestSupport::CommandLineGenerator;
using TestSupport::SeedName;
using TestSupport::SpecGenerator;
using Names = std::list<std::string>;

constexpr int kLines = 500;
const std::string kExtra = "Found Extra non-parameter arguments at the end of input: ";

/// Takes words off the front of a command line as the parser accounts for them.
class Remainder {
  public:
    explicit Remainder(CommandLine words) : words_(std::move(words)) {}

    /// Whether the option stood here, in one word or in two.
    bool Take(const std::pair<std::string, std::string>& option) {
        const auto& [name, value] = option;
        const std::string word = (name.size() == 1 ? "-" : "--") + name;
        if (!value.empty() && TakeWord(word + "=" + value)) {
            return true;
        }
        return TakeWord(word) && (TakeWord(value) || value.empty());
    }

    bool TakeWord(const std::string& word) {
        const bool stoodHere = next_ < words_.size() && words_[next_] == word;
        next_ += stoodHere ? 1 : 0;
        return stoodHere;
    }

    /// The message that accounts for what is left.
    std::string ExtraMessage() const {
        std::string message;
        for (std::size_t i = next_; i < words_.size(); ++i) {
            message += (message.empty() ? kExtra : "") + "'" + words_[i] + "' ";
        }
        return message;
    }

  private:
    CommandLine words_;
    std::size_t next_ = 0;
};

/// The message about words too many; empty when there is none.
std::string ExtraMessageOf(const OptionParser& parser) {
    for (const std::string& error : parser.GetParseErrors()) {
        if (error.starts_with(kExtra)) {
            return error;
        }
    }
    return "";
}

void ExpectNoWordLost(OptionParser& parser, const CommandLine& words) {
    SCOPED_TRACE(testing::Message() << "words: " << testing::PrintToString(words));
    Remainder remainder(words);
    for (const auto& option : parser.GetDispatcherParameters()) {
        ASSERT_TRUE(remainder.Take(option)) << option.first << " = " << option.second;
    }
    for (const std::string& name : parser.GetCommandPath()) {
        ASSERT_TRUE(remainder.TakeWord(name)) << name;
    }
    for (const auto& option : parser.GetCommandParameters()) {
        ASSERT_TRUE(remainder.Take(option)) << option.first << " = " << option.second;
    }
    ASSERT_EQ(ExtraMessageOf(parser), remainder.ExtraMessage());
}

/// Everything that a parser found.
struct Parsed {
    OptionParser::Parameters dispatcherParameters;
    Names path;
    OptionParser::Parameters commandParameters;
    std::vector<std::string> errors;

    explicit Parsed(OptionParser& parser)
        : dispatcherParameters(parser.GetDispatcherParameters()), path(parser.GetCommandPath()),
          commandParameters(parser.GetCommandParameters()), errors(parser.GetParseErrors()) {}

    bool operator==(const Parsed&) const = default;
};

class OptionParserPropertyTest : public TestSupport::SeededTest {
  protected:
    /// A parameter set without secrets, which would be asked for.
    std::shared_ptr<CppTools::CallSpec::InputSpec> OpenSpec() {
        auto spec = SpecGenerator(Random()).Spec().NewInputSpec();
        for (const auto& parameter : spec->GetParameters()) {
            if (parameter->IsSecret()) {
                parameter->SetSecret(false);
            }
        }
        return spec;
    }

    CommandLineGenerator lines_{Random()};
};

TEST_P(OptionParserPropertyTest, ParseVector_LosesNoWord) {
    for (int round = 0; round < kLines && !HasFatalFailure(); ++round) {
        const CommandLine words = lines_.Words();
        OptionParser parser;
        parser.ParseVector(words);
        ExpectNoWordLost(parser, words);
    }
}

TEST_P(OptionParserPropertyTest, ParseVector_WithASpecification_LosesNoWord) {
    for (int round = 0; round < kLines && !HasFatalFailure(); ++round) {
        const CommandLine words = lines_.Words();
        OptionParser parser;
        parser.ParseVector(words);
        parser.SetInputSpec(OpenSpec());
        ExpectNoWordLost(parser, words);
    }
}

TEST_P(OptionParserPropertyTest, ParseArgv_LosesNoWordThatArgvCanCarry) {
    for (int round = 0; round < kLines && !HasFatalFailure(); ++round) {
        CommandLine words = lines_.Words();
        std::vector<const char*> argv = {"tandril"};
        for (std::string& word : words) {
            word.resize(std::char_traits<char>::length(word.c_str()));
            argv.push_back(word.c_str());
        }
        OptionParser parser;
        parser.ParseArgv(static_cast<int>(argv.size()), argv.data());
        ExpectNoWordLost(parser, words);
    }
}

TEST_P(OptionParserPropertyTest, ParseString_FindsTheWordsHoweverTheyAreQuoted) {
    for (int round = 0; round < kLines; ++round) {
        const CommandLine words = lines_.LineWords();
        const std::string line = lines_.LineOf(words);
        OptionParser ofLine;
        OptionParser ofWords;
        ASSERT_EQ(ofLine.ParseString(line), words.empty()) << line;
        ofWords.ParseVector(words);
        ASSERT_EQ(Parsed(ofLine), Parsed(ofWords)) << "line: " << line;
    }
}

TEST_P(OptionParserPropertyTest, IsParameter_AgreesWithTheShapeOfOptions) {
    const std::regex shape("-[a-zA-Z]|--[a-zA-Z][a-zA-Z0-9-]+(=[^]+)?");
    for (int round = 0; round < kLines; ++round) {
        for (const std::string& word : lines_.Words()) {
            ASSERT_EQ(OptionParser::IsParameter(word), std::regex_match(word, shape)) << word;
        }
    }
}

TEST_P(OptionParserPropertyTest, NoPathNameIsAnOption) {
    for (int round = 0; round < kLines; ++round) {
        OptionParser parser;
        parser.ParseVector(lines_.Words());
        for (const std::string& name : parser.GetCommandPath()) {
            ASSERT_FALSE(OptionParser::IsParameter(name)) << name;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, OptionParserPropertyTest, BothSeeds(), SeedName);

} // namespace
