#include <CppTools/autocli/plugins/ExtensionCommand.h>
#include <CppTools/callspec/Input.h>
#include <CppTools/callspec/InputSpec.h>

#include <boost/regex.hpp>
#include <gtest/gtest.h>
#include <tests/support/TemplateFilling.h>
#include <tests/support/Thrown.h>

#include <algorithm>
#include <cstddef>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

// The placeholders are defined by regular expressions, which no implementation can afford to run
// over long templates. Here they are run, over short ones, and the results compared.

namespace {

using CppTools::AutoCli::ExtensionCommand;
using CppTools::CallSpec::Input;
using TestSupport::GivenParameters;
using TestSupport::NewInput;
using TestSupport::NewTemplateCommand;
using TestSupport::ThrownBy;

/// A compiled expression, kept because the same few are needed again and again.
const boost::regex& Compiled(const std::string& expression) {
    static std::map<std::string, boost::regex> compiled;
    return compiled.try_emplace(expression, expression).first->second;
}

void ReplaceLiterally(std::string& text, const std::string& expression, const std::string& value) {
    text = boost::regex_replace(text, Compiled(expression), value,
                                boost::regex_constants::format_literal);
}

std::string InDoubleQuotes(const std::string& text) {
    return '"' + text + '"';
}

/// The definition of substitution, step by step.
class Definition {
  public:
    Definition(ExtensionCommand& command, const Input& input, bool forStdin)
        : command_(command), input_(input), forStdin_(forStdin) {}

    std::string Substitute(std::string text) {
        if (text.empty() || text.find('$') == std::string::npos) {
            return text;
        }
        for (const auto& parameter : command_.GetInputSpec()->GetParameters()) {
            const std::string& name = parameter->GetName();
            if (input_.HasParameter(name)) {
                ReplaceVal(text, name);
                ReplaceIf(text, name);
                ReplaceList(text, name);
                ReplaceMultiList(text, name);
            }
        }
        RemoveIfs(text);
        return text;
    }

  private:
    void ReplaceVal(std::string& text, const std::string& name) {
        const std::string placeholder = "\\$val\\{" + name + "\\}";
        boost::smatch match;
        if (!boost::regex_match(text, match, Compiled("(.*)" + placeholder + "(.*)"))) {
            return;
        }
        const std::string before = match[1];
        const std::string after = match[2];
        std::string value = input_.GetParameter(name);
        if (!forStdin_) {
            const bool quoted =
                !before.empty() && before.back() == '\'' && !after.empty() && after.front() == '\'';
            value = quoted ? command_.SanitizeChar(value, '\'') : command_.SanitizeInput(value);
        }
        ReplaceLiterally(text, placeholder, value);
    }

    static void ReplaceIf(std::string& text, const std::string& name) {
        const std::string placeholder = "\\$if\\{" + name + ",(.+?)\\}";
        if (boost::regex_match(text, Compiled(".*" + placeholder + ".*"))) {
            text = boost::regex_replace(text, Compiled(placeholder), "$1", boost::format_perl);
        }
    }

    void ReplaceList(std::string& text, const std::string& name) {
        const std::string placeholder = "\\$list\\{" + name + ",'(.?)',(true|false)\\}";
        boost::smatch match;
        if (!boost::regex_match(text, match, Compiled(".*" + placeholder + ".*"))) {
            return;
        }
        const std::string separator = match[1];
        const bool wrap = match[2] == "true";
        std::string value = input_.GetParameterListAsString(
            name, separator.empty() ? '\0' : separator.front(), false);
        value = forStdin_ ? value : command_.SanitizeInput(value);
        ReplaceLiterally(text, placeholder, wrap ? InDoubleQuotes(value) : value);
    }

    void ReplaceMultiList(std::string& text, const std::string& name) {
        const std::string placeholder = "\\$multilist\\{" + name + ",(.+?),(true|false)\\}";
        boost::smatch match;
        if (!boost::regex_match(text, match, Compiled(".*" + placeholder + ".*"))) {
            return;
        }
        const std::string option = match[1];
        const bool wrap = match[2] == "true";
        std::vector<std::string> values;
        input_.GetParameterList(name, values);
        std::string joined;
        for (std::string value : values) {
            if (!forStdin_) {
                value = wrap ? command_.SanitizeChar(value, '"') : command_.SanitizeInput(value);
            }
            joined += " " + option + " " + (wrap ? InDoubleQuotes(value) : value);
        }
        ReplaceLiterally(text, placeholder, joined);
    }

    static void RemoveIfs(std::string& text) {
        const boost::regex& expression = Compiled(".*\\$if\\{[a-z0-9-]+,.+?\\}.*");
        if (!boost::regex_match(text, expression)) {
            return;
        }
        std::size_t position = text.find('{');
        while (position != std::string::npos) {
            const auto [start, size] = CppTools::AutoCli::FindPairedTokenSize(
                text.data(), position, text.size(), '{', '}');
            const std::size_t dollar = text.rfind('$', start);
            if (dollar != std::string::npos &&
                boost::regex_match(text.substr(dollar, start + size - dollar), expression)) {
                text.erase(dollar, start + size - dollar);
            } else {
                position += size == 0 ? 1 : size;
            }
            position = text.find('{', position);
        }
    }

    ExtensionCommand& command_;
    const Input& input_;
    bool forStdin_;
};

/// One template filled by the library and by the definition, with what they refuse.
class Comparison {
  public:
    explicit Comparison(const GivenParameters& given) : input_(NewInput(*command_, given)) {}

    void Expect(const std::string& text, bool forStdin) {
        command_->SetExecuteCommand(text);
        command_->SetStdin(text);
        const std::string expected =
            Outcome([&] { return Definition(*command_, *input_, forStdin).Substitute(text); });
        ASSERT_EQ(Outcome([&] { return command_->SubstituteInput(input_, forStdin); }), expected)
            << "template: " << text << "\nparameters: " << Given();
    }

  private:
    template <typename Call>
    static std::string Outcome(Call&& call) {
        std::string result;
        const std::string refusal = ThrownBy([&] { result = call(); });
        return refusal == "<nothing was thrown>" ? "gives " + result : "throws " + refusal;
    }

    std::string Given() const {
        std::string text;
        for (const auto& [name, values] : input_->GetParameters()) {
            for (const auto& value : values) {
                text.append(name).append("=<").append(value).append("> ");
            }
        }
        return text;
    }

    std::shared_ptr<ExtensionCommand> command_ = NewTemplateCommand();
    std::shared_ptr<Input> input_;
};

/// Texts made of the pieces that placeholders are made of, so that many come out whole, many
/// nearly so, and many within each other.
class TextMaker {
  public:
    explicit TextMaker(unsigned seed) : random_(seed) {}

    std::string Text(std::size_t most) {
        std::string text;
        for (std::size_t count = Below(most + 1); count > 0; --count) {
            text += Piece();
        }
        return text;
    }

    GivenParameters Given() {
        GivenParameters given;
        for (const std::string name : {"early", "force", "ip", "ip", "name", "zone"}) {
            if (Below(2) == 0) {
                given.emplace_back(name, name == "force" ? "" : Text(3));
            }
        }
        return given;
    }

    std::size_t Below(std::size_t bound) {
        return std::uniform_int_distribution<std::size_t>(0, bound - 1)(random_);
    }

  private:
    std::string Piece() {
        static const std::vector<std::string> pieces = {"$val{",
                                                        "$if{",
                                                        "$list{",
                                                        "$multilist{",
                                                        "name",
                                                        "zone",
                                                        "force",
                                                        "ip",
                                                        "early",
                                                        "}",
                                                        ",",
                                                        "',',",
                                                        "'',",
                                                        ",true",
                                                        "true",
                                                        "false",
                                                        "{",
                                                        "$",
                                                        "'",
                                                        "\"",
                                                        "a",
                                                        "\n",
                                                        " ",
                                                        "\\",
                                                        ",false}",
                                                        "$val{name}",
                                                        "$val{early}",
                                                        "$if{zone,",
                                                        "$if{force,",
                                                        "$list{ip,",
                                                        "$multilist{ip,",
                                                        "'$val{zone}'"};
        return pieces[Below(pieces.size())];
    }

    std::mt19937 random_;
};

class CommandTemplateOracleTest : public testing::TestWithParam<unsigned> {};

TEST_P(CommandTemplateOracleTest, SubstituteInput_RandomTemplatesAreFilledAsDefined) {
    SCOPED_TRACE("seed " + std::to_string(GetParam()));
    TextMaker maker(GetParam());
    for (int round = 0; round < 400; ++round) {
        Comparison comparison(maker.Given());
        for (int text = 0; text < 10; ++text) {
            ASSERT_NO_FATAL_FAILURE(comparison.Expect(maker.Text(14), maker.Below(3) == 0));
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, CommandTemplateOracleTest, testing::Range(1U, 9U));

/// Every sequence of a few pieces, up to a length.
class EverySequence {
  public:
    EverySequence(std::vector<std::string> pieces, std::size_t length)
        : pieces_(std::move(pieces)), length_(length) {}

    template <typename Visit>
    void Visited(Visit&& visit, const std::string& text = "") const {
        visit(text);
        if (length_ > 0 && !testing::Test::HasFatalFailure()) {
            const EverySequence shorter(pieces_, length_ - 1);
            for (const auto& piece : pieces_) {
                shorter.Visited(visit, text + piece);
            }
        }
    }

  private:
    std::vector<std::string> pieces_;
    std::size_t length_;
};

TEST(CommandTemplateSequenceTest, SubstituteInput_AbsentIfsAreRemovedAsDefined) {
    Comparison comparison(GivenParameters{});
    EverySequence({"$if{zone,", "{", "}", "$", "a"}, 6).Visited([&](const std::string& text) {
        comparison.Expect(text, false);
    });
}

TEST(CommandTemplateSequenceTest, SubstituteInput_PresentIfsAreFilledAsDefined) {
    Comparison comparison(GivenParameters{{"force", ""}});
    EverySequence({"$if{force,", "$if{zone,", "}", "x"}, 6).Visited([&](const std::string& text) {
        comparison.Expect(text, false);
    });
}

TEST(CommandTemplateSequenceTest, SubstituteInput_ValuesInQuotesAreFilledAsDefined) {
    Comparison comparison(GivenParameters{{"name", "a'b;"}, {"zone", "$val{name}'"}});
    EverySequence({"$val{name}", "$val{zone}", "'", "x", "$val{name"}, 5)
        .Visited([&](const std::string& text) { comparison.Expect(text, false); });
}

TEST(CommandTemplateSequenceTest, SubstituteInput_ListsAreFilledAsDefined) {
    Comparison comparison(GivenParameters{{"ip", "a\"$"}, {"ip", "b"}});
    EverySequence({"$list{ip,", "$multilist{ip,", "',',", "'',", "true}", "false}", ","}, 4)
        .Visited([&](const std::string& text) { comparison.Expect(text, false); });
}

TEST(CommandTemplateSequenceTest, SubstituteInput_SeveralListsAreFilledAsDefined) {
    Comparison comparison(GivenParameters{{"ip", "a;"}, {"ip", "$b"}});
    EverySequence({"$list{ip,',',true}", "$list{ip,';',false}", "$list{ip,'',true}",
                   "$multilist{ip,-i,true}", "$multilist{ip,-o;,false}", "}", "x"},
                  3)
        .Visited([&](const std::string& text) { comparison.Expect(text, false); });
}

} // namespace
