#include <CppTools/autocli/HelpRecords.h>
#include <CppTools/autocli/formatters/CommandHelpFormatter.h>
#include <CppTools/autocli/formatters/DisplayContext.h>
#include <CppTools/autocli/formatters/FieldText.h>
#include <CppTools/callspec/Output.h>
#include <CppTools/metaobj/CppToolException.h>
#include <CppTools/metaobj/MetaBool.h>
#include <CppTools/metaobj/MetaList.h>
#include <CppTools/metaobj/MetaStruct.h>

#include <algorithm>
#include <iomanip>
#include <ostream>

namespace CppTools::AutoCli {

using MetaObj::MetaList;
using MetaObj::MetaStruct;

namespace {

/// The columns before an option's name, with or without a short name, and after it.
constexpr int kColumnsAroundName = 9;
constexpr int kExampleIndent = 4;
constexpr int kSyntaxIndent = 8;

constexpr const char* kSecretWarning =
    "\nWARNING: Providing secret values on the command line is insecure because it may be logged "
    "or preserved in history files. Instead, specify this option with no value on the command "
    "line, and enter the value on the supplied prompt.";

std::shared_ptr<MetaList> GetListField(const MetaStruct& record, const char* name) {
    return std::dynamic_pointer_cast<MetaList>(record.GetField(name));
}

bool IsTrue(const MetaStruct& option, const char* name) {
    const auto value = std::dynamic_pointer_cast<MetaObj::MetaBool>(option.GetField(name));
    return value && value->GetValue();
}

std::string OptionText(const std::shared_ptr<MetaStruct>& option) {
    const bool isSecret = IsTrue(*option, HelpRecords::kSecret);
    std::string flags = IsTrue(*option, HelpRecords::kRequired) ? "required" : "";
    if (isSecret) {
        flags += flags.empty() ? "secret" : " secret";
    }
    std::string text = GetStringField(option, HelpRecords::kDescription);
    if (!flags.empty()) {
        text += " (" + flags + ")";
    }
    return isSecret ? text + kSecretWarning : text;
}

int NameColumns(const MetaList& options) {
    std::size_t columns = 0;
    for (const auto& element : options.GetObjects()) {
        if (const auto option = std::dynamic_pointer_cast<MetaStruct>(element)) {
            columns = std::max(columns, GetStringField(option, HelpRecords::kName).size() + 1);
        }
    }
    return static_cast<int>(columns);
}

void WriteOptions(const MetaList& options, const DisplayContext& display, std::ostream& out) {
    const int nameColumns = NameColumns(options);
    for (const auto& element : options.GetObjects()) {
        const auto option = std::dynamic_pointer_cast<MetaStruct>(element);
        if (!option) {
            continue;
        }
        const std::string shortName = GetStringField(option, HelpRecords::kShortName);
        out << std::left << (shortName.empty() ? "     --" : "  -" + shortName + "|--")
            << std::setw(nameColumns + 2) << GetStringField(option, HelpRecords::kName);
        AutoCli_FitString(nameColumns + kColumnsAroundName, display.width, OptionText(option), true,
                          out, true, '\0', true);
        out.unsetf(std::ios_base::adjustfield);
    }
}

void WriteExamples(const MetaList& examples, const std::string& usage,
                   const DisplayContext& display, std::ostream& out) {
    if (examples.GetCount() == 0) {
        return;
    }
    out << "\nExamples: \n\n";
    for (const auto& element : examples.GetObjects()) {
        const auto example = std::dynamic_pointer_cast<MetaStruct>(element);
        AutoCli_FitString(kExampleIndent, display.width,
                          GetStringField(example, HelpRecords::kDescription) + " :", false, out,
                          true, '\0', false);
        out << "# " << usage << ' ' << GetStringField(example, HelpRecords::kSyntax);
        AutoCli_FitString(kSyntaxIndent, display.width, "", false, out, true, '\0', false);
        out << '\n';
    }
}

} // namespace

CommandHelpFormatter::CommandHelpFormatter() : Formatter("commandhelp") {
    SetDescription("Handle --help output for commands");
}

CommandHelpFormatter::~CommandHelpFormatter() = default;

bool CommandHelpFormatter::Format(const std::shared_ptr<CallSpec::Output>& output,
                                  FormatParameters& /*params*/, DisplayContext& display,
                                  std::ostream& out) {
    const auto record = std::dynamic_pointer_cast<MetaStruct>(output->GetRootObject());
    if (!record || record->GetTypeName() != HelpRecords::kCommandHelp) {
        throw CppToolException(
            "Error: Unexpected type for output, formatter expected a struct with help information");
    }
    const std::string usage = GetStringField(record, HelpRecords::kDispatcher) + " " +
                              GetStringField(record, HelpRecords::kPath);
    out << "Usage: " << usage << " <options>\n\n";
    out << "Description: " << GetStringField(record, HelpRecords::kDescription) << "\n\n";
    if (const auto options = GetListField(*record, HelpRecords::kParameterList)) {
        WriteOptions(*options, display, out);
    }
    if (const auto examples = GetListField(*record, HelpRecords::kExampleList)) {
        WriteExamples(*examples, usage, display, out);
    }
    return true;
}

} // namespace CppTools::AutoCli
