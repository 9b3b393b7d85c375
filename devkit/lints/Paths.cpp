#include <devkit/lints/Lints.h>

#include <CppTools/autocli/NamespaceNode.h>

#include <boost/algorithm/string.hpp>

namespace Devkit::Lints {

namespace {

struct Entry {
    const xmlNode* element;
    std::string path;
    TakenPath content;
};

/// Without the one dot at its end that does not count.
std::string Normalize(std::string path) {
    if (path.ends_with('.')) {
        path.pop_back();
    }
    return path;
}

std::vector<Entry> EntriesOf(const DescriptorFile& file) {
    std::vector<Entry> entries;
    for (const NamespaceElement& element : file.namespaces) {
        entries.push_back({element.element, Normalize(element.path), {true, element.description}});
    }
    for (const CommandElement& command : file.commands) {
        entries.push_back({command.element, Normalize(command.path), {false, ""}});
    }
    return entries;
}

void CheckNames(const Entry& entry, Findings& findings) {
    std::vector<std::string> names;
    boost::split(names, entry.path, boost::is_any_of("."));
    for (const std::string& name : names) {
        if (!CppTools::AutoCli::AutoCli_IsValidName(name)) {
            findings.Add(Rule::BadName, LineOf(*entry.element),
                         "Invalid name '" + name + "' in the path '" + entry.path + "'");
        }
    }
}

void CheckParent(const Entry& entry, const Paths& paths, Findings& findings) {
    const std::size_t dot = entry.path.rfind('.');
    if (dot == entry.path.npos) {
        return;
    }
    const std::string parent = entry.path.substr(0, dot);
    const auto found = paths.find(parent);
    if (found == paths.end() || !found->second.isNamespace) {
        findings.Add(Rule::MissingNamespace, LineOf(*entry.element),
                     "There is no namespace '" + parent + "' for '" + entry.path + "'");
    }
}

void Claim(const Entry& entry, Paths& paths, Findings& findings) {
    const auto [found, isNew] = paths.emplace(entry.path, entry.content);
    const bool isShared = entry.path.find('.') == entry.path.npos && entry.content.isNamespace &&
                          found->second.isNamespace;
    if (isNew || (isShared && found->second.description == entry.content.description)) {
        return;
    }
    findings.Add(Rule::TakenPath, LineOf(*entry.element),
                 (isShared ? "Duplicate top-level namespaces must have the same description: "
                           : "Tandril path is already registered: ") +
                     entry.path);
}

} // namespace

void CheckPaths(const DescriptorFile& file, Paths& paths, Findings& findings) {
    for (const Entry& entry : EntriesOf(file)) {
        CheckNames(entry, findings);
        CheckParent(entry, paths, findings);
        Claim(entry, paths, findings);
    }
}

} // namespace Devkit::Lints
