#pragma once

#include <devkit/DescriptorCheck.h>
#include <tests/support/CommandDescriptor.h>
#include <tests/support/NamedRow.h>
#include <tests/support/TempDirectory.h>

#include <algorithm>
#include <string>
#include <vector>

/// Checking of descriptors in files that vanish.
namespace DevkitTest {

using Texts = std::vector<std::string>;

/// A command in which there is nothing to find.
inline TestSupport::CommandPieces FaultlessCommand() {
    TestSupport::CommandPieces pieces;
    pieces.formatParameters =
        "<format-parameters><formatter>simple</formatter></format-parameters>";
    return pieces;
}

/// The findings on descriptors that are loaded one after the other as "0.xml" and so on, as lines
/// without the folder.
inline Texts Check(const Texts& descriptors) {
    const TestSupport::TempDirectory folder;
    Texts files;
    for (const std::string& descriptor : descriptors) {
        files.push_back(folder.Write(std::to_string(files.size()) + ".xml", descriptor));
    }
    Texts lines;
    for (Devkit::Finding finding : Devkit::CheckDescriptors(files, SCHEMAS)) {
        finding.file.erase(0, folder.Path().size() + 1);
        lines.push_back(Devkit::ToLine(finding));
    }
    return lines;
}

/// Those of one rule, as "PLACE: SEVERITY: MESSAGE".
inline Texts OfRule(const Texts& lines, const std::string& rule) {
    Texts found;
    for (const std::string& line : lines) {
        const std::size_t mark = line.find(" [" + rule + "]. ");
        if (mark != line.npos) {
            found.push_back(line.substr(0, mark));
        }
    }
    return found;
}

/// A descriptor that breaks a rule, and its like that does not.
struct RuleRow : TestSupport::NamedRow {
    std::string rule;
    std::string broken;
    std::string finding; ///< "SEVERITY: MESSAGE"
    std::string kept;
};

} // namespace DevkitTest
