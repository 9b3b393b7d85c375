// Command lines, as text and as words. The input is one text line; its words are also those that
// end at a line end, which argv may hold and a line may not.

#include <fuzz/Laws.h>
#include <fuzz/Sections.h>

#include <CppTools/autocli/OptionParser.h>
#include <CppTools/callspec/InputSpec.h>

#include <algorithm>
#include <boost/regex.hpp>
#include <list>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace {

using CppTools::AutoCli::OptionParser;
using CppTools::CallSpec::InputSpec;
using CppTools::CallSpec::ParameterSpec;
using CppTools::CallSpec::ParameterType;
using Fuzz::Require;
using Words = std::vector<std::string>;

std::shared_ptr<InputSpec> NewSpec() {
    auto spec = InputSpec::New();
    const std::vector<std::pair<const char*, ParameterType>> parameters = {
        {"count", ParameterType::Int},
        {"force", ParameterType::Flag},
        {"help", ParameterType::Bool},
        {"name", ParameterType::String},
        {"on", ParameterType::BoolList}};
    for (const auto& [name, type] : parameters) {
        auto parameter = ParameterSpec::New(name, type);
        parameter->SetShortName(std::string(name, 1));
        spec->AddParameter(parameter);
    }
    return spec;
}

/// The words of a line. What precedes a word loses as many characters as there are blanks in it,
/// and quotes lose themselves.
Words WordsOf(const std::string& line) {
    Words words;
    for (std::size_t begin = 0;;) {
        const std::size_t first = std::min(line.find_first_not_of(" \t\"", begin), line.size());
        if (first < line.size() && line[first] == '#') {
            return words;
        }
        const auto at = [&](std::size_t offset) {
            return line.begin() + static_cast<long>(offset);
        };
        const auto isBlank = [](char c) { return c == ' ' || c == '\t'; };
        std::size_t end = first;
        while (end < line.size() &&
               !(isBlank(line[end]) && std::count(line.begin(), at(end), '"') % 2 == 0)) {
            ++end;
        }
        const auto blanks = std::count_if(at(begin), at(first), isBlank);
        std::string word(at(begin) + blanks, at(end));
        std::erase(word, '"');
        if (!word.empty()) {
            words.push_back(word);
        }
        if (end == line.size()) {
            return words;
        }
        begin = end + 1;
    }
}

/// Everything that a parser found.
struct Parsed {
    OptionParser::Parameters dispatcherParameters;
    std::list<std::string> path;
    OptionParser::Parameters commandParameters;
    Words errors;

    explicit Parsed(OptionParser& parser)
        : dispatcherParameters(parser.GetDispatcherParameters()), path(parser.GetCommandPath()),
          commandParameters(parser.GetCommandParameters()), errors(parser.GetParseErrors()) {}

    bool operator==(const Parsed&) const = default;
};

/// Takes words off the front of a command line as a parser accounts for them.
class Remainder {
  public:
    explicit Remainder(const Words& words) : words_(words) {}

    void TakeOption(const std::string& name, const std::string& value) {
        const std::string word = (name.size() == 1 ? "-" : "--") + name;
        if (!value.empty() && Stands(word + "=" + value)) {
            ++next_;
            return;
        }
        Take(word);
        if (!value.empty() || Stands("")) {
            Take(value);
        }
    }

    void Take(const std::string& word) {
        Require(Stands(word), "every word is accounted for in its place", word);
        ++next_;
    }

    /// The message about what is left; empty when nothing is.
    std::string Message() const {
        std::string message;
        for (std::size_t i = next_; i < words_.size(); ++i) {
            message += "'" + words_[i] + "' ";
        }
        return message.empty()
                   ? ""
                   : "Found Extra non-parameter arguments at the end of input: " + message;
    }

  private:
    bool Stands(const std::string& word) const {
        return next_ < words_.size() && words_[next_] == word;
    }

    const Words& words_;
    std::size_t next_ = 0;
};

void RequireNoWordLost(const Words& words, const Parsed& parsed) {
    Remainder remainder(words);
    for (const auto& [name, value] : parsed.dispatcherParameters) {
        remainder.TakeOption(name, value);
    }
    for (const std::string& name : parsed.path) {
        Require(!OptionParser::IsParameter(name), "no name of the path is an option", name);
        remainder.Take(name);
    }
    for (const auto& [name, value] : parsed.commandParameters) {
        remainder.TakeOption(name, value);
    }
    const std::string message = remainder.Message();
    Require(message.empty() == (std::find(parsed.errors.begin(), parsed.errors.end(), message) ==
                                parsed.errors.end()),
            "what is left is reported", message);
}

void CheckShapes(const Words& words) {
    static const boost::regex option("-[a-zA-Z]|--[a-zA-Z][a-zA-Z0-9-]+(=.+)?");
    for (const std::string& word : words) {
        Require(OptionParser::IsParameter(word) == boost::regex_match(word, option),
                "an option is what its pattern matches", word);
    }
}

Parsed ParseWords(const Words& words, const std::shared_ptr<InputSpec>& spec) {
    OptionParser parser;
    parser.ParseVector(words);
    parser.SetInputSpec(spec);
    const Parsed parsed(parser);
    const std::string text = parser.ToString();
    Require(text.starts_with("Parsed: 0\nDispatcher: tandril\n") && text.ends_with('\n') &&
                text == parser.ToString(),
            "the text of a parser stays", text);
    return parsed;
}

Parsed ParseArguments(const Words& words, const std::shared_ptr<InputSpec>& spec) {
    std::vector<const char*> arguments = {"tandril"};
    for (const std::string& word : words) {
        arguments.push_back(word.c_str());
    }
    OptionParser parser;
    parser.ParseArgv(static_cast<int>(arguments.size()), arguments.data());
    parser.SetInputSpec(spec);
    return Parsed(parser);
}

void CheckWords(const Words& words) {
    static const std::shared_ptr<InputSpec> spec = NewSpec();
    CheckShapes(words);
    RequireNoWordLost(words, ParseWords(words, nullptr));
    const Parsed withSpec = ParseWords(words, spec);
    RequireNoWordLost(words, withSpec);
    const bool hasNul = std::any_of(words.begin(), words.end(), [](const std::string& word) {
        return word.find('\0') != std::string::npos;
    });
    Require(hasNul || ParseArguments(words, spec) == withSpec,
            "arguments are parsed as their words are");
}

void CheckLine(const std::string& line) {
    const Words words = WordsOf(line);
    OptionParser parser;
    Require(parser.ParseString(line) == words.empty(), "a line says whether it holds a word");
    OptionParser ofWords;
    ofWords.ParseVector(words);
    Require(Parsed(parser) == Parsed(ofWords), "a line is parsed as its words are");
}

/// A word that a line can carry.
bool CanBeQuoted(const std::string& word) {
    return !word.empty() && word.find('"') == word.npos && word[0] != '#' && word[0] != ' ' &&
           word[0] != '\t';
}

void CheckRejoined(const Words& words) {
    if (!std::all_of(words.begin(), words.end(), CanBeQuoted)) {
        return;
    }
    std::string line;
    for (const std::string& word : words) {
        line += "\"" + word + "\" ";
    }
    OptionParser parser;
    parser.ParseString(line);
    OptionParser ofWords;
    ofWords.ParseVector(words);
    Require(Parsed(parser) == Parsed(ofWords), "words survive a line that quotes them", line);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string line(Fuzz::TextOf(data, size));
    CheckLine(line);
    const Words words = Fuzz::Split(line, '\n');
    CheckWords(words);
    CheckRejoined(words);
    return 0;
}
