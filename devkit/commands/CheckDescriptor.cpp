#include <devkit/Declarations.h>
#include <devkit/DescriptorCheck.h>
#include <devkit/Schema.h>
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

class CheckDescriptor : public Command {
  public:
    CheckDescriptor() {
        SetDescription("Find everything that is wrong with descriptors.");
        AddExample("--file pack.xml", "Check a descriptor; fails when the tool would refuse it or "
                                      "a value could become more than a value");
        AddExample("--file base.xml --file more.xml --strict",
                   "Check two that are loaded one after the other; fails on warnings too");
        SetDefaultOutputFormatter("table");
        SetDefaultOutputParameter("fields:Finding", "File,Line,Severity,Rule,Message");
    }

    std::shared_ptr<InputSpec> GetInputSpecInternal() override {
        auto spec = InputSpec::New();
        auto file = Required("file", ParameterType::StringList,
                             "A descriptor. Can be given repeatedly, in the order of loading.");
        file->SetShortName("f");
        spec->AddParameter(file);
        AddReportParameters(*spec);
        return spec;
    }

    std::shared_ptr<OutputSpec> GetOutputSpecInternal() override {
        auto spec = OutputSpec::New();
        spec->SetDescription("One row for each finding, file by file in the order of the lines.");
        spec->SetRootObject(RowsOf({}));
        return spec;
    }

    void ExecuteInternal(const std::shared_ptr<Input>& input,
                         const std::shared_ptr<Output>& output) override {
        std::vector<std::string> files;
        input->GetParameterList("file", files);
        Report(CheckDescriptors(files, FindSchemaFolder()),
               {input->IsFlagSet("strict"), input->IsFlagSet("report")}, *output);
    }
};

} // namespace

std::shared_ptr<Command> NewCheckDescriptor() {
    return std::make_shared<CheckDescriptor>();
}

} // namespace Devkit::Commands
