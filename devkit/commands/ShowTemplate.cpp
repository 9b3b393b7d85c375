#include <devkit/CommandLookup.h>
#include <devkit/Declarations.h>
#include <devkit/ShellWords.h>
#include <devkit/commands/Commands.h>

#include <CppTools/CppTools.h>

#include <array>

namespace Devkit::Commands {

namespace {

using CppTools::AutoCli::Command;
using CppTools::AutoCli::CommandInput;
using CppTools::CallSpec::Input;
using CppTools::CallSpec::InputSpec;
using CppTools::CallSpec::Output;
using CppTools::CallSpec::OutputSpec;
using CppTools::CallSpec::ParameterType;
using CppTools::MetaObj::MetaList;
using CppTools::MetaObj::MetaString;
using CppTools::MetaObj::MetaStruct;
using CppTools::MetaObj::MetaType;

/// Line ends around a command do not belong to it.
std::string_view WithoutLineEnds(std::string_view line) {
    const std::size_t begin = line.find_first_not_of('\n');
    return begin == line.npos ? "" : line.substr(begin, line.find_last_not_of('\n') + 1 - begin);
}

/// What makes the line more than its words; empty when nothing does.
std::string NamesOfMeanings(const ShellWords& words) {
    using Meaning = ShellWords::Meaning;
    static constexpr std::array<std::pair<Meaning, const char*>, 6> kNames = {{
        {Meaning::Operator, "operators"},
        {Meaning::Expansion, "expansions"},
        {Meaning::Pattern, "patterns of file names"},
        {Meaning::Tilde, "a home directory"},
        {Meaning::Comment, "a comment"},
        {Meaning::OpenEnd, "an open quote"},
    }};
    std::string names;
    for (const auto& [meaning, name] : kNames) {
        if (words.Has(meaning)) {
            names += (names.empty() ? "" : ", ") + std::string(name);
        }
    }
    return names;
}

std::shared_ptr<MetaList> ListOf(const std::vector<std::string>& texts) {
    auto list = MetaList::New(MetaType::String);
    for (std::string text : texts) {
        list->Add(MetaString::NewUtf8WithEscapes(std::move(text)));
    }
    return list;
}

std::shared_ptr<MetaStruct> Describe(std::string line, std::string input) {
    const ShellWords words(WithoutLineEnds(line));
    const std::string meanings = NamesOfMeanings(words);
    auto record = MetaStruct::New("FilledTemplate");
    record->SetField("Form",
                     meanings.empty() ? "a simple command" : "not a simple command: " + meanings);
    record->SetField("Words", ListOf(words.IsPlain() ? words.Words() : std::vector<std::string>()));
    record->SetField("Line", MetaString::NewUtf8WithEscapes(std::move(line)));
    record->SetField("Stdin", MetaString::NewUtf8WithEscapes(std::move(input)));
    return record;
}

/// The input that a call with these settings has; a flag is set by its name alone.
std::shared_ptr<CommandInput> InputOf(const std::vector<std::string>& settings) {
    auto input = CommandInput::New();
    for (const std::string& setting : settings) {
        const std::size_t equals = setting.find('=');
        input->AddParameter(setting.substr(0, equals),
                            equals == setting.npos ? "" : setting.substr(equals + 1));
    }
    return input;
}

class ShowTemplate : public Command {
  public:
    ShowTemplate() {
        SetDescription("Show what a command of a descriptor would run, without running it.");
        AddExample("--file pack.xml --command text.line.find --set file=a.txt --set ignore-case",
                   "Show the line, its words and the standard input of a call");
        SetDefaultOutputFormatter("simple");
        SetDefaultOutputParameter("fields:FilledTemplate", "Line,Stdin,Form,Words");
    }

    std::shared_ptr<InputSpec> GetInputSpecInternal() override {
        auto spec = InputSpec::New();
        spec->AddParameter(Required("file", ParameterType::StringList,
                                    "The descriptor; in front of it those that it builds on."));
        spec->AddParameter(
            Required("command", ParameterType::String, "The path of the command, with dots."));
        spec->AddParameter(Optional("set", ParameterType::StringList,
                                    "A parameter of the command as name=value, or the name of a "
                                    "flag. Can be given repeatedly."));
        return spec;
    }

    std::shared_ptr<OutputSpec> GetOutputSpecInternal() override {
        auto spec = OutputSpec::New();
        spec->SetDescription("The line for /bin/sh, what it reads, and the words in which the "
                             "shell takes it, if it is a simple command.");
        spec->SetRootObject(Describe("", ""));
        return spec;
    }

    void ExecuteInternal(const std::shared_ptr<Input>& input,
                         const std::shared_ptr<Output>& output) override {
        std::vector<std::string> files;
        std::vector<std::string> settings;
        input->GetParameterList("file", files);
        input->GetParameterList("set", settings);
        const auto command = LoadCommand(files, input->GetParameter("command"));
        const auto call = InputOf(settings);
        call->SetInputSpec(command->GetInputSpec());
        if (call->HasParameter("help")) {
            output->AddErrorMessage("A call with --help runs nothing");
        } else if (command->GetInputSpec()->Validate(call, output)) {
            output->SetRootObject(Describe(command->SubstituteInput(call, false),
                                           command->SubstituteInput(call, true)));
        }
    }
};

} // namespace

std::shared_ptr<Command> NewShowTemplate() {
    return std::make_shared<ShowTemplate>();
}

} // namespace Devkit::Commands
