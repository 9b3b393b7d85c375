#include "Commands.h"
#include "HostError.h"
#include "TextTools.h"

#include <algorithm>
#include <sys/stat.h>

namespace HostFacts {

namespace {

const std::string kParameterDirectory = "/proc/sys/";

/// A file below /proc/sys. When it cannot be read, `value` is empty and `problem` says why.
struct KernelParameter {
    std::string name;
    std::string value;
    bool isReadable = true;
    bool isWritable = false;
    std::string problem;
};

/// Names are paths with dots for slashes, and slashes for the dots that a part of it may hold,
/// such as the name of an interface. Doing it twice gives the text back.
std::string SwapDotsAndSlashes(std::string text) {
    for (char& c : text) {
        c = c == '.' ? '/' : c == '/' ? '.' : c;
    }
    return text;
}

bool IsWritable(const HostFiles& files, const std::string& path) {
    struct stat facts {};

    const bool isKnown = stat(files.RealPath(path).c_str(), &facts) == 0;
    return isKnown && (facts.st_mode & (S_IWUSR | S_IWGRP | S_IWOTH)) != 0;
}

std::string ReadValue(const HostFiles& files, const std::string& path) {
    std::string value = files.Read(path);
    if (value.ends_with('\n')) {
        value.pop_back();
    }
    return value;
}

KernelParameter ReadParameter(const HostFiles& files, const std::string& relativePath) {
    const std::string path = kParameterDirectory + relativePath;
    KernelParameter parameter;
    parameter.name = SwapDotsAndSlashes(relativePath);
    parameter.isWritable = IsWritable(files, path);
    try {
        parameter.value = ReadValue(files, path);
    } catch (const HostError& error) {
        if (error.IsGone()) {
            throw;
        }
        parameter.isReadable = false;
        parameter.problem = error.what();
    }
    return parameter;
}

bool IsDirectory(const HostFiles& files, const std::string& path) {
    struct stat facts {};

    return lstat(files.RealPath(path).c_str(), &facts) == 0 && S_ISDIR(facts.st_mode);
}

/// All paths below a directory, relative to /proc/sys. What is taken away meanwhile is left out,
/// as is what lies in a directory that the caller may not open.
void AppendPaths(std::vector<std::string>& paths, const HostFiles& files,
                 const std::string& relativeDirectory) {
    for (const std::string& name : files.Names(kParameterDirectory + relativeDirectory)) {
        const std::string relativePath = relativeDirectory + name;
        if (!IsDirectory(files, kParameterDirectory + relativePath)) {
            paths.push_back(relativePath);
            continue;
        }
        try {
            AppendPaths(paths, files, relativePath + "/");
        } catch (const HostError& error) {
            if (!error.IsGone() && !error.IsHidden()) {
                throw;
            }
        }
    }
}

std::vector<KernelParameter> ReadFitting(const HostFiles& files, const std::string& pattern) {
    std::vector<std::string> paths;
    AppendPaths(paths, files, "");
    std::vector<KernelParameter> parameters;
    for (const std::string& path : paths) {
        if (!FitsPattern(SwapDotsAndSlashes(path), pattern)) {
            continue;
        }
        try {
            parameters.push_back(ReadParameter(files, path));
        } catch (const HostError& error) {
            if (!error.IsGone()) {
                throw;
            }
        }
    }
    std::sort(parameters.begin(), parameters.end(),
              [](const auto& a, const auto& b) { return a.name < b.name; });
    return parameters;
}

void Write(const KernelParameter& parameter, ResultDocument& document) {
    const auto structure = document.OpenStructure("KernelParameter");
    document.AddText("Name", parameter.name);
    document.AddSwitch("Readable", parameter.isReadable);
    document.AddSwitch("Writable", parameter.isWritable);
    document.AddText("Problem", parameter.problem);
    document.AddText("Value", parameter.value);
}

/// Guards against names that lead out of the directory: ".." is written "//".
KernelParameter ReadNamed(const HostFiles& files, const std::string& name) {
    const std::string relativePath = SwapDotsAndSlashes(name);
    for (const std::string_view part : Split(relativePath, '/')) {
        if (part.empty() || part == "." || part == "..") {
            throw HostError("'" + name + "' is not the name of a kernel parameter");
        }
    }
    const KernelParameter parameter = ReadParameter(files, relativePath);
    if (!parameter.isReadable) {
        throw HostError(parameter.problem);
    }
    return parameter;
}

} // namespace

void ListKernelParameters(const Request& request, ResultDocument& document) {
    const Arguments& arguments = request.arguments;
    const auto parameters = ReadFitting(request.files, arguments.Text("match", "*"));
    const auto list = document.OpenList();
    for (const KernelParameter& parameter : parameters) {
        const bool isReadable = parameter.isReadable;
        const bool isWritable = parameter.isWritable;
        if (arguments.Switch("readable").value_or(isReadable) == isReadable &&
            arguments.Switch("writable").value_or(isWritable) == isWritable) {
            Write(parameter, document);
        }
    }
}

void GetKernelParameters(const Request& request, ResultDocument& document) {
    const auto list = document.OpenList();
    for (const std::string& name : request.arguments.List("name")) {
        try {
            Write(ReadNamed(request.files, name), document);
        } catch (const HostError& error) {
            document.AddError(error.what());
        }
    }
}

} // namespace HostFacts
