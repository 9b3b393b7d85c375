// Templates of command lines, and what a shell makes of the lines. The input is the template, the
// parameters (a name and the letter of a kind on each line), and values (NAME=VALUE). The last
// value is tried in every place too.

#include <devkit/ShellWords.h>
#include <fuzz/Laws.h>
#include <fuzz/Sections.h>

#include <CppTools/autocli/plugins/ExtensionCommand.h>
#include <CppTools/callspec/Input.h>
#include <CppTools/callspec/InputSpec.h>
#include <CppTools/metaobj/CppToolException.h>

#include <algorithm>
#include <cerrno>
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
using Devkit::ShellWords;
using Fuzz::Require;
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

/// The fuzzer's timer interrupts calls of the system.
int ReadByte(std::FILE& file) {
    int byte = std::fgetc(&file);
    while (byte == EOF && std::ferror(&file) != 0 && errno == EINTR) {
        std::clearerr(&file);
        byte = std::fgetc(&file);
    }
    return byte;
}

/// What arrives when a shell runs a line of words.
Words WordsByTheShell(const std::string& line) {
    const auto close = [](std::FILE* pipe) {
        Require(pclose(pipe) == 0, "a shell runs a plain line");
    };
    const std::unique_ptr<std::FILE, decltype(close)> pipe(
        popen(("printf '%s\\0' first " + line).c_str(), "r"), close);
    Require(pipe != nullptr, "a shell can be started");
    std::string output;
    for (int c = ReadByte(*pipe); c != EOF; c = ReadByte(*pipe)) {
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

/// A value in the places where templates put values.
class Places {
  public:
    explicit Places(const std::string& value)
        : value_(value), input_(NewInput(Command(), {{"name", value}, {"ip", value}})) {}

    /// What is promised of a value that spells no placeholder.
    void Check() const {
        RequireWord("show '$val{name}'", Without(value_, "'"));
        RequireWord("show x'$val{name}'", "x" + Without(value_, "'"));
        RequireWord("show \"$val{name}\"", EscapedInVain(value_));
        RequireWord("show $list{ip,',',true}", EscapedInVain(value_));
        RequireHarmless("show $val{name}");
        RequireHarmless("show $list{ip,' ',false}");
        RequireHarmless("show$multilist{ip,-i,false}");
        if (value_.find_first_of("$`\\") == value_.npos) {
            const ShellWords words(Line("show$multilist{ip,-i,true}"));
            Require(words.Words() == Words{"show", "-i", Without(value_, "\"")},
                    "a value of a list between quotes is one word", value_);
        }
    }

  private:
    static ExtensionCommand& Command() {
        static const auto command =
            NewCommand({{"ip", ParameterType::StringList}, {"name", ParameterType::String}});
        return *command;
    }

    std::string Line(const std::string& text) const {
        Command().SetExecuteCommand(text);
        const std::string line = Command().SubstituteInput(input_, false);
        CompareWithTheShell(line);
        return line;
    }

    void RequireWord(const std::string& text, const std::string& word) const {
        const std::string line = Line(text);
        const ShellWords words(line);
        Require(words.IsPlain() && words.Words() == Words{"show", word},
                "a quoted value is one word, and nothing else", line);
    }

    /// Bare values may become several words, a comment or names of files, but neither commands nor
    /// what they print. That is, unless a line end ends a comment, which no backslash prevents.
    void RequireHarmless(const std::string& text) const {
        if (value_.find('#') != value_.npos && value_.find('\n') != value_.npos) {
            return;
        }
        const std::string line = Line(text);
        const ShellWords words(line);
        Require(!words.Has(ShellWords::Meaning::Operator) &&
                    !words.Has(ShellWords::Meaning::Expansion) &&
                    !words.Has(ShellWords::Meaning::OpenEnd),
                "a bare value runs nothing", line);
    }

    const std::string& value_;
    std::shared_ptr<Input> input_;
};

bool HoldsOpening(const std::string& text) {
    const auto holds = [&](const char* opening) { return text.find(opening) != text.npos; };
    return holds("$val{") || holds("$if{") || holds("$list{") || holds("$multilist{");
}

/// As it is, or once filling has taken quotes out of it.
bool SpellsPlaceholder(const std::string& value) {
    return HoldsOpening(value) || HoldsOpening(Without(value, "'")) ||
           HoldsOpening(Without(value, "\""));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Fuzz::Sections sections(data, size);
    const std::string text = sections.Next();
    const auto parameters = ParametersOf(sections.Next());
    const Values values = ValuesOf(sections);
    CheckTemplate(text, parameters, values);
    if (!values.empty() && !SpellsPlaceholder(values.back().second)) {
        Places(values.back().second).Check();
    }
    return 0;
}
