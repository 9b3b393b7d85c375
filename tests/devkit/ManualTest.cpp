#include <devkit/Rules.h>
#include <devkit/XmlFile.h>

#include <CppTools/autocli/plugins/TemplateCheck.h>

#include <boost/algorithm/string/replace.hpp>
#include <gtest/gtest.h>

namespace {

using CppTools::AutoCli::AutoCli_GetTemplateRules;
using CppTools::AutoCli::HazardSeverity;
using CppTools::AutoCli::TemplateRule;

/// A row of the manual's tables. In them a bar separates columns wherever it stands bare.
std::string Row(const std::string& id, const std::string& severity, const std::string& meaning,
                const std::string& advice) {
    return "| `" + id + "` | " + severity + " | " + boost::replace_all_copy(meaning, "|", "\\|") +
           " | " + boost::replace_all_copy(advice, "|", "\\|") + " |\n";
}

void ExpectTable(const std::string& rows) {
    const std::string manual = Devkit::ReadFile(DEVKIT_MANUAL);
    EXPECT_NE(manual.find("|---|---|---|---|\n" + rows + "\n"), manual.npos)
        << "The manual should have the rows\n"
        << rows;
}

TEST(DevkitManual, HasARowForEachRule) {
    std::string rows;
    for (const auto& [id, severity, meaning, advice] : Devkit::GetRules()) {
        rows += Row(id, NameOf(severity), meaning, advice);
    }
    ExpectTable(rows);
}

TEST(DevkitManual, HasARowForEachRuleOfTemplates) {
    std::string rows;
    for (const TemplateRule& rule : AutoCli_GetTemplateRules()) {
        rows += Row(rule.name, rule.severity == HazardSeverity::Error ? "error" : "warning",
                    rule.message, rule.advice);
    }
    ExpectTable(rows);
}

} // namespace
