#include <CppTools/autocli/OptionParser.h>
#include <CppTools/callspec/InputSpec.h>
#include <CppTools/host/ProcessSpawn.h>
#include <CppTools/host/Terminal.h>

#include <boost/algorithm/string/erase.hpp>

#include <algorithm>
#include <cctype>
#include <iostream>
#include <optional>
#include <string_view>

namespace CppTools::AutoCli {

using CallSpec::ParameterSpec;
using CallSpec::ParameterType;

namespace {

constexpr const char* kDefaultDispatcher = "tandril";

bool HasParameter(const OptionParser::Parameters& parameters, const std::string& name) {
    return std::any_of(parameters.begin(), parameters.end(),
                       [&](const auto& parameter) { return parameter.first == name; });
}

std::vector<std::string> GetValues(const OptionParser::Parameters& parameters,
                                   const std::string& name) {
    std::vector<std::string> values;
    for (const auto& [key, value] : parameters) {
        if (key == name) {
            values.push_back(value);
        }
    }
    return values;
}

std::string Describe(const OptionParser::Parameters& parameters) {
    std::string text;
    for (const auto& [name, value] : parameters) {
        text += "\n   --" + name + " = '" + value + "'";
    }
    return text;
}

bool IsLetter(char character) {
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
}

bool IsNameCharacter(char character) {
    return IsLetter(character) || (character >= '0' && character <= '9') || character == '-';
}

/// The pieces of an option word; the value is empty when the word has none.
struct OptionWord {
    std::string_view name;
    std::string_view value;
};

/// Reads a word of the pattern -[a-zA-Z]|--([a-zA-Z][a-zA-Z0-9-]+)(=.+)?, in which "." is any
/// byte. Scanned because each word of a stream of lines is tried several times.
std::optional<OptionWord> ReadOption(std::string_view word) {
    if (!word.starts_with("--")) {
        const bool isShort = word.size() == 2 && word[0] == '-' && IsLetter(word[1]);
        return isShort ? std::optional<OptionWord>({word.substr(1), {}}) : std::nullopt;
    }
    word.remove_prefix(2);
    const auto nameEnd = std::find_if_not(word.begin(), word.end(), IsNameCharacter);
    const auto size = static_cast<std::size_t>(nameEnd - word.begin());
    if (size < 2 || !IsLetter(word[0])) {
        return std::nullopt;
    }
    const std::string_view name = word.substr(0, size);
    word.remove_prefix(size);
    if (word.empty()) {
        return OptionWord{name, {}};
    }
    const bool hasValue = word.size() > 1 && word[0] == '=';
    return hasValue ? std::optional<OptionWord>({name, word.substr(1)}) : std::nullopt;
}

bool IsBlank(char character) {
    return std::isblank(static_cast<unsigned char>(character)) != 0;
}

std::string WithoutQuotes(const std::string& text) {
    return boost::algorithm::erase_all_copy(text, "\"");
}

std::vector<std::string> SplitLine(const std::string& line) {
    std::vector<std::string> words;
    std::size_t start = 0;
    bool inWord = false;
    bool inQuotes = false;
    for (std::size_t i = 0; i < line.size(); ++i) {
        if (line[i] == '"') {
            inQuotes = !inQuotes;
        } else if (!IsBlank(line[i])) {
            if (!inWord && line[i] == '#') {
                return words;
            }
            inWord = true;
        } else if (!inWord) {
            ++start;
        } else if (!inQuotes) {
            words.push_back(WithoutQuotes(line.substr(start, i - start)));
            start = i + 1;
            inWord = false;
        }
    }
    if (std::string last = WithoutQuotes(line.substr(start)); !last.empty()) {
        words.push_back(std::move(last));
    }
    return words;
}

} // namespace

OptionParser::OptionParser() : OptionParser(kDefaultDispatcher) {}

OptionParser::OptionParser(const std::string& dispatcher) : dispatcher_(dispatcher) {}

OptionParser::~OptionParser() = default;

void OptionParser::ParseArgv(int argc, const char* const* argv) {
    if (argc < 1) {
        return;
    }
    dispatcher_ = argv[0];
    WordStack stack;
    std::for_each(argv + 1, argv + argc, [&](const char* word) { stack.emplace_front(word); });
    ParseStack(stack);
}

void OptionParser::ParseVector(const std::vector<std::string>& words) {
    WordStack stack(words.rbegin(), words.rend());
    ParseStack(stack);
}

bool OptionParser::ParseString(const std::string& line) {
    const auto words = SplitLine(line);
    if (words.empty()) {
        return true;
    }
    ParseVector(words);
    return false;
}

void OptionParser::SetInputSpec(std::shared_ptr<CallSpec::InputSpec> inputSpec) {
    inputSpec_ = std::move(inputSpec);
}

bool OptionParser::HasDispatcherParameter(const std::string& name) const {
    return HasParameter(dispatcherParameters_, name);
}

std::vector<std::string> OptionParser::GetDispatcherParameter(const std::string& name) const {
    return GetValues(dispatcherParameters_, name);
}

const OptionParser::Parameters& OptionParser::GetCommandParameters() {
    ProcessCommandArguments();
    return commandParameters_;
}

bool OptionParser::HasCommandParameter(const std::string& name) {
    return HasParameter(GetCommandParameters(), name);
}

std::vector<std::string> OptionParser::GetCommandParameter(const std::string& name) {
    return GetValues(GetCommandParameters(), name);
}

std::string OptionParser::ToString() {
    std::string text = "Parsed: " + std::to_string(static_cast<int>(parsed_));
    text += "\nDispatcher: " + dispatcher_ + "\nErrors: ";
    for (const auto& error : parseErrors_) {
        text += "\n   " + error;
    }
    text += "\nPath: ";
    for (const auto& name : commandPath_) {
        text += "'" + name + "'";
    }
    text += "\nDispatch Params: " + Describe(dispatcherParameters_);
    text += "\nCommand Params: " + Describe(GetCommandParameters());
    return text + "\n";
}

std::string OptionParser::GetSilentString() {
    std::string line;
    Host::ReadLineWithoutEcho(line);
    return line;
}

bool OptionParser::IsParameter(const std::string& word) {
    return ReadOption(word).has_value();
}

void OptionParser::ParseStack(WordStack& stack) {
    if (stack.empty()) {
        return;
    }
    commandParameters_.clear();
    dispatcherParameters_ = ParseParameters(stack);
    commandPath_.clear();
    while (!stack.empty() && !IsParameter(stack.back())) {
        commandPath_.push_back(std::move(stack.back()));
        stack.pop_back();
    }
    pendingWords_ = std::move(stack);
}

OptionParser::Parameters OptionParser::ParseParameters(WordStack& stack) {
    Parameters parameters;
    while (!stack.empty() && IsParameter(stack.back())) {
        const std::string word = std::move(stack.back());
        stack.pop_back();
        std::string name;
        std::string value;
        if (!ParseParameter(word, name, value)) {
            if (!stack.empty() && !IsParameter(stack.back())) {
                value = std::move(stack.back());
                stack.pop_back();
            } else {
                value = ValueOfBareOption(word, name);
            }
        }
        parameters.emplace_back(std::move(name), std::move(value));
    }
    return parameters;
}

bool OptionParser::ParseParameter(const std::string& word, std::string& name, std::string& value) {
    if (const auto option = ReadOption(word)) {
        name = option->name;
        value = option->value;
        return !value.empty();
    }
    parseErrors_.push_back("Attempt to parse option failed.  Input was : " + word);
    return false;
}

std::string OptionParser::ValueOfBareOption(const std::string& word, const std::string& name) {
    const auto parameter = FindDeclared(name);
    if (!parameter) {
        return {};
    }
    if (parameter->IsSecret()) {
        std::cout << "Enter value for '" << parameter->GetName() << "': " << std::flush;
        std::string secret;
        const int error = Host::ReadLineWithoutEcho(secret);
        std::cout << std::endl;
        if (error != 0) {
            parseErrors_.push_back("Unable to read the value of '" + parameter->GetName() +
                                   "': " + Host::StatusText(error));
        }
        return secret;
    }
    if (parameter->GetParameterType() != ParameterType::Flag && parameter->GetName() != "help") {
        parseErrors_.push_back(word + " must have value");
    }
    return {};
}

std::shared_ptr<ParameterSpec> OptionParser::FindDeclared(const std::string& name) const {
    if (!inputSpec_) {
        return nullptr;
    }
    const auto& parameters = inputSpec_->GetParameters();
    const auto found =
        std::find_if(parameters.begin(), parameters.end(), [&](const auto& parameter) {
            return parameter->GetName() == name || parameter->GetShortName() == name;
        });
    return found == parameters.end() ? nullptr : *found;
}

void OptionParser::ProcessCommandArguments() {
    if (pendingWords_.empty()) {
        return;
    }
    WordStack words;
    words.swap(pendingWords_);
    commandParameters_ = ParseParameters(words);
    if (words.empty()) {
        return;
    }
    std::string error = "Found Extra non-parameter arguments at the end of input: ";
    std::for_each(words.rbegin(), words.rend(),
                  [&](const std::string& word) { error += "'" + word + "' "; });
    parseErrors_.push_back(std::move(error));
}

} // namespace CppTools::AutoCli
