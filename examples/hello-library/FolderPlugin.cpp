// A plug-in library with two commands, "folder content list" and "folder content count". It shows
// what a plug-in consists of: the declaration of parameters and of the result, the work, and the
// entry point at the end.

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

std::shared_ptr<ParameterSpec> PathParameter() {
    // Parameters are required until they say otherwise.
    auto path = ParameterSpec::New("path", ParameterType::String);
    path->SetShortName("p");
    path->SetDescription("The folder.");
    return path;
}

/// What is wrong with one call is a message in its output, as many as there are reasons.
Entries ReadFolder(const std::string& path, Output& output) {
    Entries entries;
    std::error_code failure;
    std::filesystem::directory_iterator folder(path, failure);
    for (; !failure && folder != std::filesystem::directory_iterator(); folder.increment(failure)) {
        entries.emplace(folder->path().filename().string(), *folder);
    }
    if (failure) {
        output.AddErrorMessage("Unable to read folder " + path + ": " + failure.message());
    }
    return entries;
}

/// One command is one class. This one gives a list of structures.
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
        spec->AddParameter(PathParameter());

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

    /// A result beside a message is not shown: a call with messages has failed. What is thrown
    /// becomes a message, too.
    void ExecuteInternal(const std::shared_ptr<Input>& input,
                         const std::shared_ptr<Output>& output) override {
        const Entries entries = ReadFolder(input->GetParameter("path"), *output);
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

/// And this one gives one structure, which the formatter "simple" shows as a block.
class CountContent : public Command {
  public:
    CountContent() {
        SetDescription("Count what a folder holds.");
        SetDefaultOutputFormatter("simple");
        SetDefaultOutputParameter("fields:FolderCount", "Files,Bytes,Folders,Links,Others");
        SetDefaultOutputParameter("align-fields", "true");
    }

    std::shared_ptr<InputSpec> GetInputSpecInternal() override {
        auto spec = InputSpec::New();
        spec->AddParameter(PathParameter());
        return spec;
    }

    std::shared_ptr<OutputSpec> GetOutputSpecInternal() override {
        auto spec = OutputSpec::New();
        spec->SetRootObject(NewCount({}));
        return spec;
    }

    void ExecuteInternal(const std::shared_ptr<Input>& input,
                         const std::shared_ptr<Output>& output) override {
        output->SetRootObject(NewCount(ReadFolder(input->GetParameter("path"), *output)));
    }

  private:
    static std::shared_ptr<MetaStruct> NewCount(const Entries& entries) {
        std::map<std::string, long> count;
        long bytes = 0;
        for (const auto& [name, entry] : entries) {
            ++count[KindOf(entry)];
            bytes += SizeOf(entry);
        }
        auto result = MetaStruct::New("FolderCount");
        result->SetField("Files", count["file"]);
        result->SetField("Bytes", bytes);
        result->SetField("Folders", count["folder"]);
        result->SetField("Links", count["link"]);
        result->SetField("Others", count["other"]);
        return result;
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
    content->RegisterNamespaceNode(std::make_shared<CountContent>(), "count");
}
