#include <CppTools/autocli/plugins/TemplateCheck.h>

#include <gtest/gtest.h>
#include <tests/support/TemplateChecking.h>

#include <set>
#include <string>

namespace {

using CppTools::AutoCli::AutoCli_CheckTemplate;
using CppTools::AutoCli::AutoCli_GetTemplateRules;
using CppTools::AutoCli::HazardSeverity;
using TestSupport::NewCheckSpec;

TEST(TemplateRulesTest, GetTemplateRules_EachHasANameOfItsOwnAndTexts) {
    std::set<std::string> names;
    for (const auto& rule : AutoCli_GetTemplateRules()) {
        EXPECT_TRUE(names.insert(rule.name).second) << rule.name;
        EXPECT_FALSE(rule.message.empty()) << rule.name;
        EXPECT_FALSE(rule.advice.empty()) << rule.name;
    }
    EXPECT_EQ(names.size(), 32u);
}

TEST(TemplateRulesTest, Check_HazardHasTheTextsOfItsRule) {
    const auto hazards = AutoCli_CheckTemplate("/bin/x $val{number}", NewCheckSpec(), "");
    ASSERT_EQ(hazards.size(), 1u);
    EXPECT_EQ(hazards[0].rule, "option-injection");
    EXPECT_EQ(hazards[0].severity, HazardSeverity::Warning);
    EXPECT_FALSE(hazards[0].inStdin);
    EXPECT_EQ(hazards[0].position, 7u);
    EXPECT_EQ(hazards[0].placeholder, "$val{number}");
    EXPECT_EQ(hazards[0].message, "The value may begin with - and be taken for an option.");
    EXPECT_EQ(hazards[0].advice,
              "Write it behind -- or an option's name, or constrain how it begins.");
}

} // namespace
