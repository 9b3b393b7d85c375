#include <CppTools/autocli/plugins/ShellPrograms.h>
#include <CppTools/autocli/plugins/TemplateCheck.h>
#include <CppTools/autocli/plugins/TemplateJudge.h>
#include <CppTools/callspec/InputSpec.h>

#include <algorithm>
#include <string_view>

namespace CppTools::AutoCli {

namespace {

using CallSpec::InputSpec;

bool IsError(const Finding& finding) {
    return TextsOf(finding.rule).severity == HazardSeverity::Error;
}

/// Where a script names something that might run what comes on its standard input.
std::optional<std::size_t> FindRunner(std::string_view script) {
    static constexpr std::string_view kBetweenWords = " \t\n;&|<>()'\"`{}$=\\";
    std::size_t begin = script.find_first_not_of(kBetweenWords);
    while (begin != script.npos) {
        const std::size_t end = std::min(script.find_first_of(kBetweenWords, begin), script.size());
        if (MayRunItsInput(script.substr(begin, end - begin))) {
            return begin;
        }
        begin = script.find_first_not_of(kBetweenWords, end);
    }
    return std::nullopt;
}

/// A command line without placeholders may be any script that begins with a simple command. Values
/// can reach it through its standard input alone.
Findings CheckScript(std::string_view script, Findings findings, bool readsValues) {
    const bool isSimple = std::none_of(findings.begin(), findings.end(), IsError);
    const std::size_t begin = script.find_first_not_of(" \t\n");
    std::erase_if(findings, [begin](const Finding& finding) {
        return finding.rule != Rule::NoSimpleCommand || finding.position > begin;
    });
    if (!readsValues) {
        return findings;
    }
    if (const auto runner = FindRunner(script)) {
        findings.push_back({Rule::NestedShell, *runner, ""});
    } else if (!isSimple) {
        findings.push_back({Rule::UncheckedScript, 0, ""});
    }
    return findings;
}

Findings CheckCommandLine(std::string_view text, const InputSpec& inputSpec, bool readsValues) {
    Findings findings;
    JudgeCommands(ScanTemplate(text, findings), inputSpec, findings);
    if (!HoldsPlaceholderOpening(text)) {
        return CheckScript(text, std::move(findings), readsValues);
    }
    JudgeNames(text, inputSpec, findings);
    return findings;
}

void AddHazards(Findings findings, bool inStdin, std::vector<TemplateHazard>& hazards) {
    std::stable_sort(findings.begin(), findings.end(),
                     [](const Finding& a, const Finding& b) { return a.position < b.position; });
    for (const auto& [rule, position, placeholder] : findings) {
        const TemplateRule& texts = TextsOf(rule);
        hazards.push_back({texts.name, texts.severity, inStdin, position, placeholder,
                           texts.message, texts.advice});
    }
}

} // namespace

std::vector<TemplateHazard>
AutoCli_CheckTemplate(const std::string& commandTemplate,
                      const std::shared_ptr<CallSpec::InputSpec>& inputSpec,
                      const std::string& stdinTemplate) {
    std::vector<TemplateHazard> hazards;
    const bool readsValues = HoldsPlaceholderOpening(stdinTemplate);
    AddHazards(CheckCommandLine(commandTemplate, *inputSpec, readsValues), false, hazards);
    Findings inStdin;
    JudgeNames(stdinTemplate, *inputSpec, inStdin);
    AddHazards(std::move(inStdin), true, hazards);
    return hazards;
}

} // namespace CppTools::AutoCli
