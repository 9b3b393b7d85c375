#include <devkit/lints/Lints.h>

#include <CppTools/CppTools.h>

namespace Devkit::Lints {

namespace {

using CppTools::MetaObj::MetaList;
using CppTools::MetaObj::MetaObject;
using CppTools::MetaObj::MetaType;

bool IsListOfStructures(const std::shared_ptr<MetaObject>& value) {
    const auto list = std::dynamic_pointer_cast<MetaList>(value);
    return list && list->GetListType() == MetaType::Struct;
}

/// Of that child, or of the command when it has none.
long LineOfChild(const CommandElement& command, const std::string& name) {
    const auto* const child = ChildOf(*command.element, name);
    return LineOf(child == nullptr ? *command.element : *child);
}

void CheckFormatter(const CommandElement& command, const std::string& formatter,
                    Findings& findings) {
    const long line = LineOfChild(command, "format-parameters");
    if (formatter.empty()) {
        findings.Add(Rule::NoFormatter, line,
                     "The command '" + command.path + "' names no formatter");
    } else if (!CppTools::AutoCli::Dispatcher().HasFormatter(formatter)) {
        findings.Add(Rule::UnknownFormatter, line, "There is no formatter '" + formatter + "'");
    }
}

} // namespace

void CheckOutputShape(const CommandElement& command, Findings& findings) {
    if (!command.command) {
        return;
    }
    const std::string formatter =
        command.command->GetDefaultOutputFormatParameters().GetFormatter();
    CheckFormatter(command, formatter, findings);
    const auto prototype = command.command->GetOutputSpecInternal()->GetRootObject();
    const long line = LineOfChild(command, "output-spec");
    if (!prototype) {
        findings.Add(Rule::NoOutput, line, "The command '" + command.path + "' declares no result");
    } else if (formatter == "table" && !IsListOfStructures(prototype)) {
        findings.Add(Rule::TableOfOther, line,
                     "The formatter table is to show a result that is no list of structures");
    }
}

} // namespace Devkit::Lints
