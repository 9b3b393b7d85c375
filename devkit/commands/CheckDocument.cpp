#include <devkit/CommandLookup.h>
#include <devkit/Declarations.h>
#include <devkit/DocumentCheck.h>
#include <devkit/Schema.h>
#include <devkit/XmlFile.h>
#include <devkit/commands/Commands.h>

#include <CppTools/CppTools.h>

namespace Devkit::Commands {

namespace {

using CppTools::AutoCli::Command;
using CppTools::CallSpec::Input;
using CppTools::CallSpec::InputSpec;
using CppTools::CallSpec::Output;
using CppTools::CallSpec::OutputSpec;
using CppTools::CallSpec::ParameterType;

/// What the call says that the document should be; empty when it says nothing.
std::shared_ptr<OutputSpec> DeclaredOutput(const Input& input) {
    if (input.HasParameter("descriptor") != input.HasParameter("command")) {
        throw CppTools::CppToolException("--descriptor and --command need one another");
    }
    if (!input.HasParameter("command")) {
        return nullptr;
    }
    std::vector<std::string> descriptors;
    input.GetParameterList("descriptor", descriptors);
    return LoadCommand(descriptors, input.GetParameter("command"))->GetOutputSpecInternal();
}

class CheckDocument : public Command {
  public:
    CheckDocument() {
        SetDescription("Find everything that is wrong with what a command printed.");
        AddExample("--file result.xml", "Check a document; fails when the tool would refuse it");
        AddExample("--file result.xml --descriptor pack.xml --command text.line.find",
                   "Compare it with the output that a command declares, too");
        SetDefaultOutputFormatter("table");
        SetDefaultOutputParameter("fields:Finding", "File,Line,Severity,Rule,Message");
    }

    std::shared_ptr<InputSpec> GetInputSpecInternal() override {
        auto spec = InputSpec::New();
        auto file = Optional("file", ParameterType::String,
                             "The document; standard input is read without one.");
        file->SetShortName("f");
        spec->AddParameter(file);
        spec->AddParameter(Optional("descriptor", ParameterType::StringList,
                                    "The descriptor of the command that printed it; in front of "
                                    "it those that it builds on."));
        spec->AddParameter(
            Optional("command", ParameterType::String, "The path of that command, with dots."));
        AddReportParameters(*spec);
        return spec;
    }

    std::shared_ptr<OutputSpec> GetOutputSpecInternal() override {
        auto spec = OutputSpec::New();
        spec->SetDescription("One row for each finding in the order of the lines.");
        spec->SetRootObject(RowsOf({}));
        return spec;
    }

    void ExecuteInternal(const std::shared_ptr<Input>& input,
                         const std::shared_ptr<Output>& output) override {
        const bool isNamed = input->HasParameter("file");
        const std::string name = isNamed ? input->GetParameter("file") : "STDIN";
        const auto declared = DeclaredOutput(*input);
        const std::string text = ReadFile(isNamed ? name : "/dev/stdin");
        Report(Devkit::CheckDocument(text, name, FindSchemaFolder(), declared.get()),
               {input->IsFlagSet("strict"), input->IsFlagSet("report")}, *output);
    }
};

} // namespace

std::shared_ptr<Command> NewCheckDocument() {
    return std::make_shared<CheckDocument>();
}

} // namespace Devkit::Commands
