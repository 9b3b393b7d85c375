// Templates of command lines, and what a shell makes of the lines. The input is the template, the
// parameters (a name and the letter of a kind on each line), and values (NAME=VALUE).

#include <fuzz/Laws.h>
#include <fuzz/Sections.h>
#include <fuzz/ShellWords.h>

#include <CppTools/autocli/plugins/ExtensionCommand.h>
#include <CppTools/callspec/Input.h>
#include <CppTools/callspec/InputSpec.h>
#include <CppTools/metaobj/CppToolException.h>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace {

using CppTools::CppToolException;
using CppTools::AutoCli::ExtensionCommand;
using CppTools::CallSpec::Input;
using CppTools::CallSpec::InputSpec;
using CppTools::CallSpec::ParameterSpec;
using CppTools::CallSpec::ParameterType;
using Fuzz::Require;
using Fuzz::ShellWords;
using Words = std::vector<std::string>;
using Values = std::vector<std::pair<std::string, std::string>>;

struct Parameter {
    std::string name;
    ParameterType type;
};

/// Each line is a name and, behind a blank, the letter of a kind.
std::vector<Parameter> ParametersOf(const std::string& text) {
    static const std::string letters = "sibfSIB"; // in the order of ParameterType
    std::vector<Parameter> parameters;
    for (const std::string& line : Fuzz::Split(text, '\n')) {
        const std::size_t blank = std::min(line.find(' '), line.size());
        const std::size_t kind = letters.find(blank + 1 < line.size() ? line[blank + 1] : 's');
        parameters.push_back(
            {line.substr(0, blank), static_cast<ParameterType>(kind == letters.npos ? 0 : kind)});
    }
    return parameters;
}

Values ValuesOf(Fuzz::Sections& sections) {
    Values values;
    while (sections.HasNext()) {
        const std::string text = sections.Next();
        const std::size_t equals = std::min(text.find('='), text.size());
        values.emplace_back(text.substr(0, equals),
                            equals < text.size() ? text.substr(equals + 1) : "");
    }
    return values;
}

std::shared_ptr<ExtensionCommand> NewCommand(const std::vector<Parameter>& parameters) {
    auto spec = InputSpec::New();
    for (const auto& [name, type] : parameters) {
        spec->AddParameter(ParameterSpec::New(name, type));
    }
    auto command = ExtensionCommand::New();
    command->SetInputSpec(spec);
    return command;
}

std::shared_ptr<Input> NewInput(ExtensionCommand& command, const Values& values) {
    auto input = Input::New();
    for (const auto& [name, value] : values) {
        input->AddParameter(name, value);
    }
    input->SetInputSpec(command.GetInputSpec());
    return input;
}

std::string Fill(ExtensionCommand& command, const std::string& text, const Values& values,
                 bool forStdin) {
    command.SetExecuteCommand(text);
    command.SetStdin(text);
    const std::string line = command.SubstituteInput(NewInput(command, values), forStdin);
    Require(text.find('$') != text.npos || line == text, "without a dollar sign a template stays");
    return line;
}

/// What arrives when a shell runs a line of words.
Words WordsByTheShell(const std::string& line) {
    const auto close = [](std::FILE* pipe) {
        Require(pclose(pipe) == 0, "a shell runs a plain line");
    };
    const std::unique_ptr<std::FILE, decltype(close)> pipe(
        popen(("printf '%s\\0' first " + line).c_str(), "r"), close);
    std::string output;
    for (int c = std::fgetc(pipe.get()); c != EOF; c = std::fgetc(pipe.get())) {
        output.push_back(static_cast<char>(c));
    }
    Words words = Fuzz::Split(output, '\0');
    words.erase(words.begin());
    words.pop_back();
    return words;
}

/// One line of so many is run.
void CompareWithTheShell(const std::string& line) {
    if (std::hash<std::string>()(line) % SHELL_SAMPLE != 0 || line.find('\0') != line.npos) {
        return;
    }
    if (const ShellWords model(line); model.IsPlain()) {
        Require(WordsByTheShell(line) == model.Words(), "the model reads a line as a shell does",
                line);
    }
}

void CheckTemplate(const std::string& text, const std::vector<Parameter>& parameters,
                   const Values& values) {
    try {
        const auto command = NewCommand(parameters);
        const std::string line = Fill(*command, text, values, false);
        Require(line == Fill(*command, text, values, false), "the same call has the same line");
        CompareWithTheShell(line);
        Fill(*command, text, values, true);
        Require(text.find("$if{") != text.npos || Fill(*command, text, {}, false) == text,
                "without values only conditions vanish", text);
    } catch (const CppToolException&) {
        // Names that no parameter may have, and flags whose values are asked for.
    }
}

std::string Without(std::string text, const std::string& characters) {
    std::erase_if(text, [&](char c) { return characters.find(c) != characters.npos; });
    return text;
}

/// Between double quotes a shell takes a backslash away from four characters and a line end only.
std::string EscapedInVain(const std::string& value) {
    std::string text;
    for (const char c : Without(value, "\n")) {
        const bool keeps = std::string("!&'()*;<>^|").find(c) != std::string::npos;
        text += (keeps ? "\\" : "") + std::string{c};
    }
    return text;
}

std::string Place(const std::string& text, const std::string& value) {
    static const auto command =
        NewCommand({{"ip", ParameterType::StringList}, {"name", ParameterType::String}});
    const std::string line = Fill(*command, text, {{"name", value}, {"ip", value}}, false);
    CompareWithTheShell(line);
    return line;
}

void RequireWord(const std::string& text, const std::string& value, const std::string& word) {
    const std::string line = Place(text, value);
    const ShellWords words(line);
    Require(words.IsPlain() && words.Words() == Words{"show", word},
            "a quoted value is one word, and nothing else", line);
}

/// Bare values may become several words, a comment or names of files, but neither commands nor what
/// they print.
void RequireHarmless(const std::string& text, const std::string& value) {
    const std::string line = Place(text, value);
    const ShellWords words(line);
    Require(!words.Has(ShellWords::Meaning::Operator) &&
                !words.Has(ShellWords::Meaning::Expansion) &&
                !words.Has(ShellWords::Meaning::OpenEnd),
            "a bare value runs nothing", line);
}

/// What is promised of a value that spells no placeholder.
void CheckPlaces(const std::string& value) {
    RequireWord("show '$val{name}'", value, Without(value, "'"));
    RequireWord("show x'$val{name}'", value, "x" + Without(value, "'"));
    RequireWord("show \"$val{name}\"", value, EscapedInVain(value));
    RequireWord("show $list{ip,',',true}", value, EscapedInVain(value));
    RequireHarmless("show $val{name}", value);
    RequireHarmless("show $list{ip,' ',false}", value);
    RequireHarmless("show$multilist{ip,-i,false}", value);
    const bool isExpanded = value.find_first_of("$`\\") != value.npos;
    Require(isExpanded || ShellWords(Place("show$multilist{ip,-i,true}", value)).Words() ==
                              Words{"show", "-i", Without(value, "\"")},
            "a value of a list between quotes is one word", value);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Fuzz::Sections sections(data, size);
    const std::string text = sections.Next();
    const auto parameters = ParametersOf(sections.Next());
    const Values values = ValuesOf(sections);
    CheckTemplate(text, parameters, values);
    for (const auto& [name, value] : values) {
        if (value.find("$val{") == value.npos && value.find("$if{") == value.npos &&
            value.find("$list{") == value.npos && value.find("$multilist{") == value.npos) {
            CheckPlaces(value);
        }
    }
    return 0;
}
