#include <devkit/DescriptorCheck.h>
#include <devkit/Schema.h>
#include <devkit/WellFormed.h>
#include <devkit/lints/Lints.h>

#include <CppTools/CppTools.h>

namespace Devkit {

namespace {

using CppTools::CppToolException;
using CppTools::AutoCli::Dispatcher;
using CppTools::AutoCli::NamespaceNode;
using CppTools::AutoCli::XmlPlugin;

constexpr auto kCommandLints = {
    Lints::CheckDescription,        Lints::CheckHelp,
    Lints::CheckShortNames,         Lints::CheckEnumerations,
    Lints::CheckRegularExpressions, Lints::CheckUnusedParameters,
    Lints::CheckListPlaceholders,   Lints::CheckTemplates,
    Lints::CheckOutputShape,        Lints::CheckFormatNames,
    Lints::CheckPrintfFormats,
};

void CollectPaths(NamespaceNode& node, Lints::Paths& paths) {
    for (const auto& child : node.GetNamespaceNodes()) {
        const bool isNamespace = child->GetType() == NamespaceNode::kNamespaceType;
        paths.emplace(child->GetPathString('.'),
                      Lints::TakenPath{isNamespace, child->GetDescription()});
        CollectPaths(*child, paths);
    }
}

/// A run over several descriptors, which are registered in one tree.
class Run {
  public:
    explicit Run(const std::string& schemaFolder) : grammar_(schemaFolder + "/descriptor.rng") {
        CollectPaths(*tree_.GetRootNamespace(), paths_);
    }

    Findings Check(const std::string& path) {
        Findings findings(path);
        if (auto document = ReadWellFormed(path, findings)) {
            for (const XmlProblem& problem : Validate(*document, grammar_)) {
                findings.Add(Rule::Grammar, problem.line, problem.text);
            }
            CheckParts(TakeApart(std::move(document), findings), findings);
            Register(path, findings);
        }
        return findings;
    }

  private:
    void CheckParts(const DescriptorFile& file, Findings& findings) {
        Lints::CheckPaths(file, paths_, findings);
        for (const CommandElement& command : file.commands) {
            for (const auto& lint : kCommandLints) {
                lint(command, findings);
            }
        }
    }

    /// What the engine says in the end. It names one mistake, so that is left out when others have
    /// been found that it may mean.
    void Register(const std::string& path, Findings& findings) {
        const auto plugin = XmlPlugin::New(path);
        try {
            plugin->Initialize();
            plugin->RegisterNamespaces(tree_.GetRootNamespace());
        } catch (const CppToolException& refusal) {
            if (!findings.HasErrors()) {
                findings.Add(Rule::Refused, 1, refusal.what());
            }
        }
    }

    std::string grammar_;
    Dispatcher tree_;
    Lints::Paths paths_;
};

} // namespace

std::vector<Finding> CheckDescriptors(const std::vector<std::string>& files,
                                      const std::string& schemaFolder) {
    std::vector<Finding> all;
    Run run(schemaFolder);
    for (const std::string& file : files) {
        const auto found = run.Check(file).InOrder();
        all.insert(all.end(), found.begin(), found.end());
    }
    return all;
}

} // namespace Devkit
