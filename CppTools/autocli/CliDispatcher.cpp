#include <CppTools/autocli/CliDispatcher.h>
#include <CppTools/autocli/Command.h>
#include <CppTools/autocli/CommandInput.h>
#include <CppTools/autocli/CommandOutput.h>
#include <CppTools/autocli/HelpRecords.h>
#include <CppTools/autocli/OptionParser.h>
#include <CppTools/autocli/RootNamespace.h>
#include <CppTools/autocli/formatters/CliDispatcherHelpFormatter.h>
#include <CppTools/autocli/formatters/DisplayContext.h>
#include <CppTools/host/InputFile.h>
#include <CppTools/host/ProcessSpawn.h>
#include <CppTools/host/Terminal.h>
#include <CppTools/metaobj/CppToolException.h>
#include <CppTools/metaobj/MetaList.h>
#include <CppTools/metaobj/MetaStruct.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <string_view>

namespace CppTools::AutoCli {

using MetaObj::MetaList;
using MetaObj::MetaStruct;
using MetaObj::MetaType;

namespace {

constexpr long kWidestScreen = 9999;

/// The width set by option for the whole process; 0 when none was set.
long screenWidthOverride = 0;

/// Ends the process. What standard output did not take was not delivered, so the line failed. On a
/// terminal only the file itself knows: there what fails is lost at once and not tried again.
[[noreturn]] void EndProcess(bool success) {
    errno = 0;
    std::cout.flush();
    const bool flushed = std::fflush(stdout) == 0;
    const int error = errno;
    if (!flushed || !std::cout || std::ferror(stdout) != 0) {
        std::cerr << "Unable to write to standard output: "
                  << (error != 0 ? Host::StatusText(error) : "some of the output was lost") << '\n';
        success = false;
    }
    std::exit(success ? EXIT_SUCCESS : EXIT_FAILURE);
}

/// Why the last read from standard input failed: an errno number; 0 at its end. A process that was
/// started without standard input has one without lines.
int StandardInputError() {
    return std::ferror(stdin) == 0 || errno == EBADF ? 0 : errno;
}

/// Whether a stream of lines came to its end; says so when it broke off, since the lines behind
/// that were not run. A stream without an error of its own breaks off when memory is exhausted.
bool IsWholeInput(const std::istream& stream, int error, const std::string& name) {
    if (error == 0 && !stream.bad()) {
        return true;
    }
    std::cerr << "Unable to read all of " << name << ": "
              << Host::StatusText(error != 0 ? error : ENOMEM) << '\n';
    return false;
}

void CopyParseErrors(const OptionParser& parser, CommandOutput& output) {
    for (const auto& error : parser.GetParseErrors()) {
        output.AddErrorMessage(error);
    }
}

void SetScreenWidth(const std::vector<std::string>& values) {
    if (!values.empty()) {
        screenWidthOverride = std::strtol(values.back().c_str(), nullptr, 0);
    }
}

void SetFormatter(const std::vector<std::string>& values, FormatParameters& format,
                  CallSpec::Output& output) {
    if (values.size() > 1) {
        output.AddErrorMessage("Only one --formatter option can be passed to a command");
    } else if (values.size() == 1 && values.front().empty()) {
        output.AddErrorMessage(
            "--formatter requires the name of the formatter to use for this command");
    } else if (values.size() == 1) {
        format.SetFormatter(values.front());
    }
}

/// Letters, digits, blanks, full stops, dashes and colons, at least one of them.
bool IsFormatKey(std::string_view key) {
    static constexpr std::string_view kCharacters =
        "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789 .-:";
    return !key.empty() && key.find_first_not_of(kCharacters) == std::string_view::npos;
}

void SetFormatParameters(const std::vector<std::string>& values, FormatParameters& format,
                         CallSpec::Output& output) {
    for (const auto& value : values) {
        const std::size_t keySize = std::min(value.find('='), value.size());
        if (IsFormatKey(value.substr(0, keySize)) && keySize + 1 < value.size()) {
            format.SetParameter(value.substr(0, keySize), value.substr(keySize + 1));
        } else {
            output.AddErrorMessage("Unable to read format parameter " + value);
        }
    }
}

std::shared_ptr<MetaStruct> NewNodeRecord(const std::string& name, const std::string& description,
                                          const char* kind) {
    auto record = MetaStruct::New(HelpRecords::kNode);
    record->SetField(HelpRecords::kName, name);
    record->SetField(HelpRecords::kDescription, description);
    record->SetField(HelpRecords::kType, kind);
    return record;
}

const char* KindOf(NamespaceNode& node) {
    switch (node.GetType()) {
    case NamespaceNode::kNamespaceType:
        return HelpRecords::kNamespaceKind;
    case NamespaceNode::kCommandType:
        return HelpRecords::kCommandKind;
    default:
        return HelpRecords::kUnknownKind;
    }
}

std::shared_ptr<MetaList> DescribeChildren(NamespaceNode& node) {
    const auto children = node.GetNamespaceNodes();
    auto list = MetaList::New(MetaType::Struct, NewNodeRecord("", "", ""));
    list->Reserve(children.size());
    for (const auto& child : children) {
        list->Add(NewNodeRecord(child->GetName(), child->GetDescription(), KindOf(*child)));
    }
    return list;
}

} // namespace

CliDispatcher::CliDispatcher() = default;
CliDispatcher::~CliDispatcher() = default;

void CliDispatcher::HandleArgvInput(int argc, const char* const* argv) {
    OptionParser parser;
    parser.ParseArgv(argc, argv);
    EndProcess(HandleOptions(parser, true));
}

bool CliDispatcher::ParseStreamInput(std::istream& stream) {
    bool result = true;
    std::string line;
    while (std::getline(stream, line)) {
        OptionParser parser;
        if (!parser.ParseString(line)) {
            result = HandleOptions(parser, false);
        }
    }
    return result;
}

bool CliDispatcher::HandleOptions(OptionParser& parser, bool allowInput) {
    const auto output = CommandOutput::New();
    CopyParseErrors(parser, *output);
    if (output->HasError()) {
        PrintError(output);
        return false;
    }
    dispatcherName_ = parser.GetDispatcher();
    FormatParameters userFormat;
    if (!HandleDispatcherOptions(parser, userFormat, output)) {
        EndProcess(false);
    }
    DisplayContext display;
    GetDisplayContext(display);
    if (allowInput && parser.HasDispatcherParameter("input")) {
        return HandleInputOption(parser.GetDispatcherParameter("input"));
    }

    bool success = false;
    auto path = parser.GetCommandPath();
    const std::shared_ptr<NamespaceNode> node =
        path.empty() ? GetRootNamespace() : GetRootNamespace()->ResolveNode(path);
    if (const auto command = std::dynamic_pointer_cast<Command>(node)) {
        success = RunCommand(parser, command, userFormat, display, output);
    } else if (node && node->GetType() != NamespaceNode::kCommandType) {
        PrintChildren(node, output);
    }
    PrintError(output);
    return success;
}

bool CliDispatcher::HandleInputOption(const std::vector<std::string>& values) {
    if (values.size() != 1) {
        std::cerr << "Only one --input dispatch parameter is allowed\n";
        return false;
    }
    const std::string& name = values.front();
    if (name == "STDIN") {
        const bool result = ParseStreamInput(std::cin);
        return IsWholeInput(std::cin, StandardInputError(), "standard input") && result;
    }
    Host::InputFile file(name);
    if (file.Error() != 0) {
        std::cerr << "Unable to open file " << name << '\n';
        return false;
    }
    const bool result = ParseStreamInput(file.Stream());
    return IsWholeInput(file.Stream(), file.Error(), "file " + name) && result;
}

bool CliDispatcher::RunCommand(OptionParser& parser, const std::shared_ptr<Command>& command,
                               FormatParameters& userFormat, DisplayContext& display,
                               const std::shared_ptr<CommandOutput>& output) {
    const auto input = CommandInput::New();
    input->SetDispatcher(dispatcherName_);
    input->SetCommandPath(parser.GetCommandPath());
    parser.SetInputSpec(command->GetInputSpec());
    const auto& parameters = parser.GetCommandParameters();
    CopyParseErrors(parser, *output);
    if (output->HasError()) {
        return false;
    }
    for (const auto& [name, value] : parameters) {
        input->AddParameter(name, value);
    }
    return ExecuteCommand(input, output) && FormatResult(input, output, userFormat, display);
}

bool CliDispatcher::FormatResult(const std::shared_ptr<CommandInput>& input,
                                 const std::shared_ptr<CommandOutput>& output,
                                 FormatParameters& userFormat, DisplayContext& display) {
    FormatParameters format;
    switch (output->GetOutputType()) {
    case CallSpec::Output::OutputType::Help:
        format = GetHelpFormatParams();
        break;
    case CallSpec::Output::OutputType::Result:
        format = GetDefaultOutputFormatParameters(input, output);
        break;
    }
    format.OverrideValues(userFormat);
    return !output->HasError() && FormatOutput(output, format, display, std::cout);
}

bool CliDispatcher::HandleDispatcherOptions(OptionParser& parser, FormatParameters& format,
                                            const std::shared_ptr<CallSpec::Output>& output) {
    ValidateDispatcherParameters(parser, output);
    if (parser.HasDispatcherParameter("h") || parser.HasDispatcherParameter("help")) {
        PrintUsage();
        return false;
    }
    SetScreenWidth(parser.GetDispatcherParameter("screen-width"));
    SetFormatter(parser.GetDispatcherParameter("formatter"), format, *output);
    LoadPlugins(parser);
    SetFormatParameters(parser.GetDispatcherParameter("format-param"), format, *output);
    return true;
}

void CliDispatcher::LoadPlugins(const OptionParser& parser) {
    for (const auto& directory : parser.GetDispatcherParameter("plugin-dir")) {
        if (!directory.empty()) {
            AddExternalDirectory(directory);
        }
    }
    for (const auto& path : parser.GetDispatcherParameter("plugin")) {
        if (path.empty()) {
            continue;
        }
        try {
            AddPlugin(path);
        } catch (const CppToolException& failure) {
            std::cerr << "Unable to load plugin " << path << ": " << failure.what() << '\n';
        }
    }
}

void CliDispatcher::ValidateDispatcherParameters(OptionParser& parser,
                                                 const std::shared_ptr<CallSpec::Output>& output) {
    static const std::array<std::string, 7> known = {
        "h", "help", "formatter", "plugin-dir", "plugin", "format-param", "screen-width"};
    for (const auto& [name, value] : parser.GetDispatcherParameters()) {
        if (std::find(known.begin(), known.end(), name) == known.end()) {
            output->AddErrorMessage("Unknown dispatcher parameter: " + name);
        }
    }
}

void CliDispatcher::PrintUsage() const {
    const std::string& name = dispatcherName_;
    std::cout
        << name << " [dispatcher options] <namespaces> <command> [options]\n"
        << "      For a list of available namespaces run " << name << " with no arguments.  \n"
        << "      Objects can be listed by specifying just the namespace.\n"
        << "      Commands can be listed by specifying the namespace and object.\n"
        << "\n"
        << " Dispatcher Options: \n"
        << "       --plugin-dir                    Add all the plug-ins from this directory\n"
        << "       --plugin                        Add a specific file plugin.  (Multiple "
           "--plugin options can be passed.)\n"
        << "       --formatter <formatter>         Override the formatter to use for a given "
           "command\n"
        << "       --format-param <key>=<value>    Set a formatter parameter to give the "
           "formatter information about how to format the command\n"
        << "       --screen-width <width>          Use the specified screen width when formatting "
           "text\n"
        << "    -h|--help                          Show this message.\n"
        << "\n";
}

void CliDispatcher::GetDisplayContext(DisplayContext& display) {
    if (const auto size = Host::GetTerminalSize()) {
        display.width = size->columns;
        display.height = size->rows;
    }
    if (screenWidthOverride >= 1 && screenWidthOverride <= kWidestScreen) {
        display.width = static_cast<std::uint16_t>(screenWidthOverride);
    }
}

FormatParameters CliDispatcher::GetHelpFormatParams() {
    FormatParameters format;
    format.SetFormatter("commandhelp");
    return format;
}

void CliDispatcher::PrintChildren(std::shared_ptr<NamespaceNode> node,
                                  std::shared_ptr<CommandOutput> output) {
    const auto path = node->GetPath();
    auto record = MetaStruct::New(HelpRecords::kNamespaceListing);
    record->SetField(HelpRecords::kDispatcher, dispatcherName_);
    record->SetField(HelpRecords::kPath, std::vector<std::string>(path.begin(), path.end()));
    record->SetField(HelpRecords::kNodeList, DescribeChildren(*node));
    output->SetRootObject(record);

    DisplayContext display;
    GetDisplayContext(display);
    auto format = GetHelpFormatParams();
    CliDispatcherHelpFormatter().Format(output, format, display, std::cout);
}

void CliDispatcher::PrintError(const std::shared_ptr<CallSpec::Output>& output) {
    if (!output->HasError()) {
        return;
    }
    std::cerr << "Errors: \n";
    for (const auto& error : output->GetErrors()) {
        std::cerr << error << '\n';
    }
}

} // namespace CppTools::AutoCli
