#include <CppTools/autocli/plugins/CommandTemplate.h>
#include <CppTools/autocli/plugins/ExtensionCommand.h>
#include <CppTools/autocli/plugins/ShellCmd.h>
#include <CppTools/autocli/plugins/StrictFilling.h>
#include <CppTools/autocli/plugins/XmlUtil.h>
#include <CppTools/callspec/Input.h>
#include <CppTools/callspec/InputSpec.h>
#include <CppTools/callspec/Output.h>
#include <CppTools/host/FeatureStates.h>
#include <CppTools/metaobj/CppToolException.h>
#include <CppTools/metaobj/MetaObject.h>

#include <cstdlib>
#include <string_view>
#include <sys/wait.h>
#include <syslog.h>

namespace CppTools::AutoCli {

namespace {

constexpr const char* kUserContext = "user";

/// Adds the messages of the "ERROR:" lines at the head of a child's output.
void AddErrorLines(std::string_view text, CallSpec::Output& output) {
    static constexpr std::string_view kMark = "ERROR:";
    while (text.starts_with(kMark)) {
        const std::size_t length = std::min(text.find('\n'), text.size());
        output.AddErrorMessage(std::string(text.substr(kMark.size(), length - kMark.size())));
        text.remove_prefix(std::min(length + 1, text.size()));
    }
}

/// The number is not the exit code: it tells whether the child ended normally. The first letter
/// of "exited" is a Cyrillic one; both are what scripts have come to expect.
void ReportNoData(const std::string& line, int status, CallSpec::Output& output) {
    const std::string message = "Got no data from process.\nCommand \"" + line +
                                "\"\n\xD0\xB5"
                                "xited with error code: " +
                                std::to_string(WIFEXITED(status) ? 1 : 0);
    syslog(LOG_ERR, "%s", message.c_str());
    output.AddErrorMessage(message);
}

void ParseResult(const std::string& document, CallSpec::Output& output) {
    try {
        if (const auto root = XmlUtil_ParseXmlOutput(document)) {
            output.SetRootObject(root);
        }
    } catch (const CppToolException& failure) {
        output.AddErrorMessage(std::string("Unable to parse output of Extension Command: ") +
                               failure.what());
    }
}

} // namespace

bool isBadChar(char character) {
    return CommandTemplate::IsBadCharacter(character);
}

std::pair<std::size_t, std::size_t> FindPairedTokenSize(const char* text, std::size_t start,
                                                        std::size_t end, char open, char close) {
    std::size_t depth = 0;
    for (std::size_t i = start; i < end; ++i) {
        if (text[i] == open) {
            depth += i == start ? 0 : 1;
        } else if (text[i] == close) {
            if (depth == 0) {
                return {start, i - start + 1};
            }
            --depth;
        }
    }
    return {0, 0};
}

ExtensionCommand::ExtensionCommand() = default;
ExtensionCommand::~ExtensionCommand() = default;

std::shared_ptr<ExtensionCommand> ExtensionCommand::New() {
    return std::make_shared<ExtensionCommand>();
}

void ExtensionCommand::SetExecuteCommand(const std::string& executeTemplate) {
    executeCommand_ = executeTemplate;
}

void ExtensionCommand::SetStdin(const std::string& stdinTemplate) {
    stdinTemplate_ = stdinTemplate;
}

void ExtensionCommand::SetInputSpec(std::shared_ptr<CallSpec::InputSpec> inputSpec) {
    inputSpec_ = std::move(inputSpec);
}

void ExtensionCommand::SetOutputSpec(std::shared_ptr<CallSpec::OutputSpec> outputSpec) {
    outputSpec_ = std::move(outputSpec);
}

std::shared_ptr<CallSpec::InputSpec> ExtensionCommand::GetInputSpecInternal() {
    if (!inputSpec_) {
        throw CppToolException(
            "Request for NULL InputSpec.  Extension command is incomplete and will not work");
    }
    return inputSpec_;
}

std::shared_ptr<CallSpec::OutputSpec> ExtensionCommand::GetOutputSpecInternal() {
    if (!outputSpec_) {
        throw CppToolException(
            "Request for NULL OutputSpec.  Extension command is incomplete and will not work");
    }
    return outputSpec_;
}

void ExtensionCommand::ExecuteInternal(const std::shared_ptr<CallSpec::Input>& input,
                                       const std::shared_ptr<CallSpec::Output>& output) {
    if (!AcceptsValues(*input, *output)) {
        return;
    }
    std::string line = SubstituteInput(input, false);
    if (std::getenv("LANG") == nullptr) {
        line = "LANG=en_US.UTF-8 " + line;
    }
    const std::string stdinText = SubstituteInput(input, true);
    std::string printed;
    const bool passesUser = GetInputSpec()->IsContextSupported(kUserContext);
    const int status = passesUser ? AutoCli_ShellCmdWithNelUsername(
                                        line, input->GetContext(kUserContext), printed, stdinText)
                                  : AutoCli_ShellCmd(line, printed, stdinText);
    if (printed.empty()) {
        ReportNoData(line, status, *output);
    }
    AddErrorLines(printed, *output);
    if (!output->HasError()) {
        ParseResult(printed, *output);
    }
}

bool ExtensionCommand::AcceptsValues(const CallSpec::Input& input, CallSpec::Output& output) {
    if (!Host::GetFeatureStateSource()->IsOn(Host::Feature::StrictTemplates)) {
        return true;
    }
    return AreHarmless({{{executeCommand_, TemplatePurpose::CommandLine},
                         {stdinTemplate_, TemplatePurpose::StandardInput}}},
                       *GetInputSpec(), input, output);
}

std::string ExtensionCommand::SubstituteInput(const std::shared_ptr<CallSpec::Input>& input,
                                              bool forStdin) {
    const std::string& source = forStdin ? stdinTemplate_ : executeCommand_;
    if (source.find('$') == std::string::npos) {
        return source;
    }
    return FillTemplate(source,
                        forStdin ? TemplatePurpose::StandardInput : TemplatePurpose::CommandLine,
                        *GetInputSpec(), *input);
}

std::string ExtensionCommand::SanitizeInput(const std::string& text) {
    return CommandTemplate::Sanitize(text);
}

std::string ExtensionCommand::SanitizeChar(const std::string& text, char character) {
    return CommandTemplate::Remove(text, character);
}

} // namespace CppTools::AutoCli
