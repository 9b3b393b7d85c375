// A plug-in library with one command, "folder content list". It shows what a plug-in consists of:
// the declaration of parameters and of the result, the work, and the entry point at the end.

#include <CppTools/CppTools.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <string>

namespace {

using CppTools::AutoCli::Command;
using CppTools::AutoCli::Namespace;
using CppTools::CallSpec::Input;
using CppTools::CallSpec::InputSpec;
using CppTools::CallSpec::Output;
using CppTools::CallSpec::OutputSpec;
using CppTools::CallSpec::ParameterConstraint;
using CppTools::CallSpec::ParameterConstraintType;
using CppTools::CallSpec::ParameterSpec;
using CppTools::CallSpec::ParameterType;
using CppTools::MetaObj::MetaList;
using CppTools::MetaObj::MetaString;
using CppTools::MetaObj::MetaStruct;
using CppTools::MetaObj::MetaType;

/// Names in an order that does not depend on the file system.
using Entries = std::map<std::string, std::filesystem::directory_entry>;

/// One row of the result. The same shape is declared and returned, so that formatters and scripts
/// can rely on it; a result of another shape never reaches the user.
std::shared_ptr<MetaStruct> NewRow(std::string name, const char* kind, long size) {
    auto row = MetaStruct::New("FolderEntry");
    // A file name may hold any bytes; texts are UTF-8.
    row->SetField("Name", MetaString::NewUtf8WithEscapes(std::move(name)));
    row->SetField("Kind", kind);
    row->SetField("Size", size);
    return row;
}

std::shared_ptr<MetaList> NewRows() {
    return MetaList::New(MetaType::Struct, NewRow("", "", 0));
}

const char* KindOf(const std::filesystem::directory_entry& entry) {
    std::error_code unknown;
    if (entry.is_symlink(unknown)) {
        return "link";
    }
    if (entry.is_directory(unknown)) {
        return "folder";
    }
    return entry.is_regular_file(unknown) ? "file" : "other";
}

/// In bytes; 0 for what has no size of its own.
long SizeOf(const std::filesystem::directory_entry& entry) {
    std::error_code unknown;
    return entry.is_regular_file(unknown) && !entry.is_symlink(unknown)
               ? static_cast<long>(entry.file_size(unknown))
               : 0;
}

class ListContent : public Command {
  public:
    ListContent() {
        SetDescription("List what a folder holds.");
        AddExample("--path /etc --kind file", "Show the files of a folder");
        // How the result is shown when the user asks for nothing else.
        SetDefaultOutputFormatter("table");
        SetDefaultOutputParameter("fields:FolderEntry", "Size,Kind,Name");
        SetDefaultOutputParameter("units:FolderEntry.Size", "B");
    }

    /// Every call is checked against this before the command runs. "--help" is added to it.
    std::shared_ptr<InputSpec> GetInputSpecInternal() override {
        auto spec = InputSpec::New();

        // Parameters are required until they say otherwise.
        auto path = ParameterSpec::New("path", ParameterType::String);
        path->SetShortName("p");
        path->SetDescription("The folder.");
        spec->AddParameter(path);

        auto kinds = ParameterConstraint::New(ParameterConstraintType::StringEnum);
        kinds->AddStringEnum("file", "files that hold bytes");
        kinds->AddStringEnum("folder", "folders");
        kinds->AddStringEnum("link", "symbolic links, not what they point to");
        kinds->AddStringEnum("other", "devices, sockets and the like");
        auto kind = ParameterSpec::New("kind", ParameterType::StringList);
        kind->SetShortName("k");
        kind->SetDescription("Only entries of this kind, one of %ENUM%. Can be given repeatedly.");
        kind->SetConstraint(kinds);
        kind->SetRequired(false);
        spec->AddParameter(kind);

        auto hidden = ParameterSpec::New("hidden", ParameterType::Flag);
        hidden->SetDescription("Show entries whose name begins with a dot, too.");
        hidden->SetRequired(false);
        spec->AddParameter(hidden);
        return spec;
    }

    std::shared_ptr<OutputSpec> GetOutputSpecInternal() override {
        auto spec = OutputSpec::New();
        spec->SetDescription("One row for each entry, in the order of their names.");
        spec->SetRootObject(NewRows());
        return spec;
    }

    /// What is wrong with one call is a message in its output. What is thrown becomes one, too.
    void ExecuteInternal(const std::shared_ptr<Input>& input,
                         const std::shared_ptr<Output>& output) override {
        const std::string& path = input->GetParameter("path");
        std::error_code failure;
        std::filesystem::directory_iterator folder(path, failure);
        if (failure) {
            output->AddErrorMessage("Unable to read folder " + path + ": " + failure.message());
            return;
        }
        Entries entries;
        for (const auto& entry : folder) {
            entries.emplace(entry.path().filename().string(), entry);
        }
        output->SetRootObject(RowsFor(entries, *input));
    }

  private:
    static std::shared_ptr<MetaList> RowsFor(const Entries& entries, const Input& input) {
        std::vector<std::string> kinds;
        input.GetParameterList("kind", kinds);
        const auto isWanted = [&](const std::string& kind) {
            return kinds.empty() || std::find(kinds.begin(), kinds.end(), kind) != kinds.end();
        };
        auto rows = NewRows();
        for (const auto& [name, entry] : entries) {
            const bool isShown = name.front() != '.' || input.IsFlagSet("hidden");
            if (isShown && isWanted(KindOf(entry))) {
                rows->Add(NewRow(name, KindOf(entry), SizeOf(entry)));
            }
        }
        return rows;
    }
};

} // namespace

/// The one symbol that the tool looks up. It receives the root of the command tree. A name that
/// another plug-in took throws; the tool reports that and goes on without this library.
extern "C" __attribute__((visibility("default"))) void
AutoCli_RegisterNamespaces(std::shared_ptr<Namespace> root) {
    const auto folder = root->SubNamespace("folder");
    folder->SetDescription("Folders of the file system.");
    const auto content = folder->SubNamespace("content");
    content->SetDescription("What a folder holds.");
    content->RegisterNamespaceNode(std::make_shared<ListContent>(), "list");
}
