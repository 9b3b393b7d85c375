#include "PackageReader.h"

#include "TextTools.h"

#include <algorithm>
#include <tuple>

namespace HostFacts {

namespace {

/// A continued line begins with a blank; one that would be empty holds a lone full stop.
std::string_view ContinuedLine(std::string_view line) {
    line.remove_prefix(1);
    return line == "." ? std::string_view() : line;
}

std::vector<std::string_view> Paragraphs(std::string_view text) {
    std::vector<std::string_view> paragraphs;
    while (!text.empty()) {
        const auto end = std::min(text.find("\n\n"), text.size());
        if (const auto paragraph = text.substr(0, end); !Trim(paragraph).empty()) {
            paragraphs.push_back(paragraph);
        }
        text.remove_prefix(std::min(end + 2, text.size()));
    }
    return paragraphs;
}

void AppendRelations(std::vector<std::string>& relations, const std::string& field) {
    for (const std::string_view relation : Split(field, ',')) {
        if (const auto trimmed = Trim(relation); !trimmed.empty()) {
            relations.emplace_back(trimmed);
        }
    }
}

} // namespace

Package::Package(std::string_view paragraph) {
    auto current = fields_.end();
    for (const std::string_view line : Lines(paragraph)) {
        const bool isContinued = line.starts_with(' ') || line.starts_with('\t');
        const auto colon = line.find(':');
        if (isContinued && current != fields_.end()) {
            current->second.append("\n").append(ContinuedLine(line));
        } else if (!isContinued && colon != std::string_view::npos) {
            current = fields_
                          .insert_or_assign(std::string(line.substr(0, colon)),
                                            std::string(Trim(line.substr(colon + 1))))
                          .first;
        }
    }
}

const std::string& Package::Field(std::string_view name) const {
    static const std::string none;
    const auto field = fields_.find(name);
    return field == fields_.end() ? none : field->second;
}

std::string Package::State() const {
    const auto words = Words(Field("Status"));
    return words.empty() ? "" : std::string(words.back());
}

long Package::InstalledSize() const {
    return LeadingNumber(Field("Installed-Size")).value_or(0);
}

std::string Package::Summary() const {
    const std::string& description = Field("Description");
    return description.substr(0, description.find('\n'));
}

std::string Package::Description() const {
    const std::string& description = Field("Description");
    const auto lineEnd = description.find('\n');
    return lineEnd == std::string::npos ? "" : description.substr(lineEnd + 1);
}

std::vector<std::string> Package::Dependencies() const {
    std::vector<std::string> relations;
    AppendRelations(relations, Field("Pre-Depends"));
    AppendRelations(relations, Field("Depends"));
    return relations;
}

std::vector<Package> ReadPackages(const HostFiles& files) {
    const std::string text = files.Read(kPackageFile);
    std::vector<Package> packages;
    for (const std::string_view paragraph : Paragraphs(text)) {
        packages.emplace_back(paragraph);
    }
    std::sort(packages.begin(), packages.end(), [](const Package& a, const Package& b) {
        return std::tie(a.Name(), a.Field("Architecture")) <
               std::tie(b.Name(), b.Field("Architecture"));
    });
    return packages;
}

} // namespace HostFacts
