#pragma once

#include <string>
#include <vector>

namespace CppTools::Host {

enum class DirectoryListing {
    Complete,
    NotOpened,
    CutShort, ///< A read failed; the names read before it are there.
};

/// Appends the names of all entries but "." and "..", in no particular order.
DirectoryListing ListDirectory(const std::string& path, std::vector<std::string>& names);

} // namespace CppTools::Host
