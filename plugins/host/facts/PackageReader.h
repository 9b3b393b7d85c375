#pragma once

#include "HostFiles.h"

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace HostFacts {

/// Where the package manager keeps what it knows about each package.
inline const std::string kPackageFile = "/var/lib/dpkg/status";

/// One package as the package manager describes it: the fields of its paragraph by name. The
/// lines of a field that has several are joined by line feeds, without their leading blank.
class Package {
  public:
    explicit Package(std::string_view paragraph);

    /// The empty text when there is no such field.
    const std::string& Field(std::string_view name) const;

    const std::string& Name() const { return Field("Package"); }

    /// The last word of the state, such as "installed" or "config-files".
    std::string State() const;

    bool IsInstalled() const { return State() == "installed"; }

    long InstalledSize() const; // kB

    /// The first line of the description, and what follows it.
    std::string Summary() const;
    std::string Description() const;

    /// What it needs to run, before its configuration included; one text for each relation.
    std::vector<std::string> Dependencies() const;

  private:
    std::map<std::string, std::string, std::less<>> fields_;
};

/// By name, then by architecture. Throws HostError.
std::vector<Package> ReadPackages(const HostFiles& files);

} // namespace HostFacts
