#include <devkit/Declarations.h>
#include <devkit/Skeletons.h>
#include <devkit/commands/Commands.h>

#include <CppTools/CppTools.h>

namespace Devkit::Commands {

namespace {

using CppTools::AutoCli::Command;
using CppTools::CallSpec::Input;
using CppTools::CallSpec::InputSpec;
using CppTools::CallSpec::Output;
using CppTools::CallSpec::OutputSpec;
using CppTools::CallSpec::ParameterConstraint;
using CppTools::CallSpec::ParameterConstraintType;
using CppTools::CallSpec::ParameterType;
using CppTools::MetaObj::MetaList;
using CppTools::MetaObj::MetaString;
using CppTools::MetaObj::MetaStruct;
using CppTools::MetaObj::MetaType;

std::shared_ptr<MetaStruct> NewRow(std::string file, const std::string& purpose) {
    auto row = MetaStruct::New("WrittenFile");
    row->SetField("File", MetaString::NewUtf8WithEscapes(std::move(file)));
    row->SetField("Purpose", purpose);
    return row;
}

std::shared_ptr<MetaList> NewRows() {
    return MetaList::New(MetaType::Struct, NewRow("", ""));
}

class NewPlugin : public Command {
  public:
    NewPlugin() {
        SetDescription("Write the files that a plug-in begins with; they work as they stand.");
        AddExample("--kind descriptor --name disks", "Write disks.xml");
        AddExample("--kind library --name disks --directory disks",
                   "Write a library and what builds it into a folder");
        SetDefaultOutputFormatter("table");
    }

    std::shared_ptr<InputSpec> GetInputSpecInternal() override {
        auto spec = InputSpec::New();
        auto kinds = ParameterConstraint::New(ParameterConstraintType::StringEnum);
        kinds->AddStringEnum("descriptor",
                             "a plug-in without code, whose commands run shell lines");
        kinds->AddStringEnum("library", "a shared library in C++");
        auto kind = Required("kind", ParameterType::String, "One of %FULLENUM%");
        kind->SetConstraint(kinds);
        spec->AddParameter(kind);
        spec->AddParameter(Required("name", ParameterType::String,
                                    "The name of the plug-in's namespace, such as fooBar."));
        spec->AddParameter(Optional("directory", ParameterType::String,
                                    "Where to write; the current one otherwise."));
        return spec;
    }

    std::shared_ptr<OutputSpec> GetOutputSpecInternal() override {
        auto spec = OutputSpec::New();
        spec->SetDescription("One row for each file that was written.");
        spec->SetRootObject(NewRows());
        return spec;
    }

    void ExecuteInternal(const std::shared_ptr<Input>& input,
                         const std::shared_ptr<Output>& output) override {
        const std::string& name = input->GetParameter("name");
        if (!CppTools::AutoCli::AutoCli_IsValidName(name)) {
            output->AddErrorMessage("Invalid name '" + name +
                                    "': use letters and digits as in fooBar, beginning with a "
                                    "small one");
            return;
        }
        if (GetDispatcher()->GetRootNamespace()->HasNamespaceNode(name)) {
            output->AddErrorMessage("The tool has a namespace '" + name + "' already");
            return;
        }
        const auto files = input->GetParameter("kind") == "library" ? NewLibraryFiles(name)
                                                                    : NewDescriptorFiles(name);
        WriteFiles(files, input->GetParameter("directory"));
        auto rows = NewRows();
        for (const SkeletonFile& file : files) {
            rows->Add(NewRow(file.name, file.purpose));
        }
        output->SetRootObject(rows);
    }
};

} // namespace

std::shared_ptr<Command> NewNewPlugin() {
    return std::make_shared<NewPlugin>();
}

} // namespace Devkit::Commands
