#include "Commands.h"
#include "HostError.h"
#include "PackageReader.h"
#include "TextTools.h"

#include <algorithm>

namespace HostFacts {

namespace {

void WriteCommonFields(const Package& package, ResultDocument& document) {
    document.AddText("Name", package.Name());
    document.AddText("Version", package.Field("Version"));
    document.AddText("Architecture", package.Field("Architecture"));
    document.AddText("State", package.State());
    document.AddSwitch("Installed", package.IsInstalled());
    document.AddSwitch("Essential", package.Field("Essential") == "yes");
    document.AddText("Section", package.Field("Section"));
    document.AddText("Priority", package.Field("Priority"));
    document.AddNumber("Installed Size", package.InstalledSize());
    document.AddText("Summary", package.Summary());
}

void WriteDetails(const Package& package, ResultDocument& document) {
    const auto structure = document.OpenStructure("PackageDetail");
    WriteCommonFields(package, document);
    document.AddText("Source",
                     package.Field("Source").empty() ? package.Name() : package.Field("Source"));
    document.AddText("Maintainer", package.Field("Maintainer"));
    document.AddText("Homepage", package.Field("Homepage"));
    document.AddTexts("Dependencies", package.Dependencies());
    document.AddText("Description", package.Description());
}

bool IsPackageWanted(const Package& package, const Arguments& arguments) {
    return (package.IsInstalled() || arguments.HasFlag("all")) &&
           FitsPattern(package.Name(), arguments.Text("match", "*")) &&
           IsWanted(arguments.List("section"), package.Field("Section")) &&
           IsWanted(arguments.List("priority"), package.Field("Priority")) &&
           package.InstalledSize() >= arguments.Number("minimum-size").value_or(0);
}

void Sort(std::vector<Package>& packages, const std::string& order) {
    if (order == "size") {
        std::stable_sort(packages.begin(), packages.end(), [](const Package& a, const Package& b) {
            return a.InstalledSize() > b.InstalledSize();
        });
    } else if (order != "name") {
        throw HostError("Unknown sort order '" + order + "'");
    }
}

/// A name stands for the package of every architecture, "name:architecture" for one.
bool IsNamed(const Package& package, const std::string& name) {
    return package.Name() == name || package.Name() + ":" + package.Field("Architecture") == name;
}

} // namespace

void ListPackages(const Request& request, ResultDocument& document) {
    const Arguments& arguments = request.arguments;
    std::vector<Package> packages = ReadPackages(request.files);
    std::erase_if(packages,
                  [&](const Package& package) { return !IsPackageWanted(package, arguments); });
    Sort(packages, arguments.Text("sort", "name"));
    const auto list = document.OpenList();
    for (const Package& package : packages) {
        const auto structure = document.OpenStructure("Package");
        WriteCommonFields(package, document);
    }
}

void GetPackages(const Request& request, ResultDocument& document) {
    const std::vector<Package> packages = ReadPackages(request.files);
    const auto list = document.OpenList();
    for (const std::string& name : request.arguments.List("name")) {
        bool isFound = false;
        for (const Package& package : packages) {
            if (IsNamed(package, name)) {
                WriteDetails(package, document);
                isFound = true;
            }
        }
        if (!isFound) {
            document.AddError("Unable to find the package '" + name + "': " + kPackageFile +
                              " does not list it");
        }
    }
}

} // namespace HostFacts
