#pragma once

#include <string>
#include <vector>

namespace Devkit {

/// A file that a new plug-in begins with.
struct SkeletonFile {
    std::string name;
    std::string purpose;
    std::string content;
};

/// The files of a descriptor with one command, "NAME show", which works as it stands.
std::vector<SkeletonFile> NewDescriptorFiles(const std::string& name);

/// The files of a library with the same command, and what builds it.
std::vector<SkeletonFile> NewLibraryFiles(const std::string& name);

/// Writes them all, or none when one of them exists. Throws "F exists already; nothing was
/// written" or "Unable to write F: " and the reason.
void WriteFiles(const std::vector<SkeletonFile>& files, const std::string& directory);

} // namespace Devkit
