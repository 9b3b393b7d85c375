#include <CppTools/autocli/HelpRecords.h>
#include <CppTools/autocli/formatters/CliDispatcherHelpFormatter.h>
#include <CppTools/autocli/formatters/FormatParameters.h>
#include <CppTools/autocli/formatters/TableFormatter.h>
#include <CppTools/callspec/Output.h>
#include <CppTools/metaobj/CppToolException.h>
#include <CppTools/metaobj/MetaList.h>
#include <CppTools/metaobj/MetaString.h>
#include <CppTools/metaobj/MetaStruct.h>

#include <ostream>

namespace CppTools::AutoCli {

using MetaObj::MetaList;
using MetaObj::MetaObject;
using MetaObj::MetaStruct;
using MetaObj::MetaType;

namespace {

bool IsOfKind(const MetaObject& element, const std::string& kind) {
    const auto* node = dynamic_cast<const MetaStruct*>(&element);
    const auto type = node != nullptr ? node->GetField(HelpRecords::kType) : nullptr;
    return type && type->ToString() == kind;
}

std::shared_ptr<MetaList> SelectNodes(const MetaList& nodes, const std::string& kind) {
    auto selected = MetaList::New(MetaType::Struct, nodes.GetListStructure());
    for (const auto& element : nodes.GetObjects()) {
        if (IsOfKind(*element, kind)) {
            selected->Add(element);
        }
    }
    return selected;
}

FormatParameters TwoColumnTable() {
    FormatParameters params;
    params.SetFormatter("table");
    params.SetParameter("fields", "Name,Description");
    params.SetParameter("table-header", "false");
    params.SetParameter("wrap-last", "true");
    return params;
}

} // namespace

CliDispatcherHelpFormatter::CliDispatcherHelpFormatter() : Formatter("clihelp") {
    SetDescription("Format the --help output for all commands.");
}

CliDispatcherHelpFormatter::~CliDispatcherHelpFormatter() = default;

bool CliDispatcherHelpFormatter::Format(const std::shared_ptr<CallSpec::Output>& output,
                                        FormatParameters& /*params*/, DisplayContext& display,
                                        std::ostream& out) {
    const auto record = std::dynamic_pointer_cast<MetaStruct>(output->GetRootObject());
    if (!record || record->GetTypeName() != HelpRecords::kNamespaceListing) {
        throw CppToolException("Error: Unexpected type for help output, formatter expected a "
                               "struct with help data");
    }
    std::string dispatcher;
    ExtractString(HelpRecords::kDispatcher, record, dispatcher);
    out << "Usage: " << dispatcher << " [disp options]";
    if (const auto path =
            std::dynamic_pointer_cast<MetaList>(record->GetField(HelpRecords::kPath))) {
        for (const auto& name : path->GetObjects()) {
            out << ' ' << *name;
        }
    }
    out << " <namespaces> <command>\n\n";
    out << "For help please run " << dispatcher << " --help\n\n";
    const auto nodes =
        std::dynamic_pointer_cast<MetaList>(record->GetField(HelpRecords::kNodeList));
    HandleList(HelpRecords::kNamespaceKind, nodes, display, out);
    HandleList(HelpRecords::kCommandKind, nodes, display, out);
    return true;
}

bool CliDispatcherHelpFormatter::ExtractString(const std::string& name,
                                               std::shared_ptr<MetaStruct> st, std::string& value) {
    const auto field = std::dynamic_pointer_cast<MetaObj::MetaString>(st->GetField(name));
    value = field ? field->GetValue() : "<" + name + ">";
    return field != nullptr;
}

bool CliDispatcherHelpFormatter::HandleList(const std::string& kind,
                                            std::shared_ptr<MetaList> nodes,
                                            DisplayContext& display, std::ostream& out) {
    out << "Available " << kind << "s: \n\n";
    if (!nodes) {
        out << "ERROR, list is bad\n";
        return true;
    }
    std::shared_ptr<MetaList> selected;
    try {
        selected = SelectNodes(*nodes, kind);
    } catch (const CppToolException&) {
        out << "Unable to get Descriptions for this command.  Implementation error.\n";
        return true;
    }
    auto table = CallSpec::Output::New();
    table->SetRootObject(selected);
    auto params = TwoColumnTable();
    TableFormatter().Format(table, params, display, out);
    out << '\n';
    return true;
}

} // namespace CppTools::AutoCli
