#include <devkit/FormatKeys.h>
#include <devkit/lints/Lints.h>

#include <CppTools/CppTools.h>

#include <algorithm>
#include <set>

namespace Devkit::Lints {

namespace {

using CppTools::MetaObj::MetaStruct;

/// Those that the formatters document, up to the names of types in them, and those that two of
/// them take without saying so.
std::set<std::string> KnownKeys() {
    std::set<std::string> keys = {"fields", "table-columns", "table-header"};
    CppTools::AutoCli::Dispatcher dispatcher;
    for (const auto& formatter : dispatcher.GetFormatters()) {
        for (const auto& parameter : formatter->GetParams()) {
            keys.insert(parameter.name.substr(0, parameter.name.find('<')));
        }
    }
    return keys;
}

bool IsKnown(const FormatKey& key) {
    static const std::set<std::string> kKnown = KnownKeys();
    return kKnown.contains(key.type.empty() ? key.key : key.word + ":");
}

void CheckFields(const FormatKey& key, const std::shared_ptr<MetaStruct>& structure,
                 const ShownOutput& output, Findings& findings) {
    CppTools::AutoCli::FormatParameters list;
    list.SetParameter(key.key, key.value);
    for (const std::string& name : list.GetParameterAsList(key.key)) {
        if (!output.FindField(structure, name)) {
            findings.Add(Rule::UnknownField, key.line,
                         "The format parameter '" + key.key + "' names the field '" + name +
                             "', which " + structure->GetTypeName() + " has not");
        }
    }
}

void CheckOneType(const FormatKey& key, const ShownOutput& output, Findings& findings) {
    const auto found = output.Types().find(key.type);
    if (found == output.Types().end()) {
        findings.Add(Rule::UnknownType, key.line,
                     "The format parameter '" + key.key + "' names the type '" + key.type +
                         "', which the result has not");
    } else if (key.word == "fields") {
        CheckFields(key, found->second, output, findings);
    } else if (!key.field.empty() && !output.FindField(found->second, key.field)) {
        findings.Add(Rule::UnknownField, key.line,
                     "The format parameter '" + key.key + "' names the field '" + key.field +
                         "', which " + key.type + " has not");
    }
}

/// Fields for all types that have no list of their own; a table has rows of one type.
void CheckAllTypes(const FormatKey& key, const std::vector<FormatKey>& keys,
                   const ShownOutput& output, Findings& findings) {
    for (const auto& [type, structure] : output.Types()) {
        const bool isListed = std::any_of(keys.begin(), keys.end(), [&](const FormatKey& other) {
            return other.key == "fields:" + type;
        });
        const bool isShown = !output.IsTable() || structure == output.RowType();
        if (!isListed && isShown) {
            CheckFields(key, structure, output, findings);
        }
    }
}

} // namespace

void CheckFormatNames(const CommandElement& command, Findings& findings) {
    if (!command.command) {
        return;
    }
    const ShownOutput output(*command.command);
    const auto keys = FormatKeysOf(command);
    for (const FormatKey& key : keys) {
        if (!IsKnown(key)) {
            findings.Add(Rule::UnknownFormatParameter, key.line,
                         "No formatter knows the format parameter '" + key.key + "'");
        } else if (!key.type.empty()) {
            CheckOneType(key, output, findings);
        } else if (key.key == "fields" || (key.key == "table-columns" && output.IsTable())) {
            CheckAllTypes(key, keys, output, findings);
        }
    }
}

} // namespace Devkit::Lints
