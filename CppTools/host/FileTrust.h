#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace CppTools::Host {

/// Something on the way to a file that users other than root may change.
struct Weakness {
    std::string path;   ///< A file, directory or link, by its own name.
    std::string reason; ///< What a sentence about it goes on with, such as "is owned by user 7".
};

/// Judges for root who else may decide what a file holds: its owner, its group, everybody, and the
/// same of every directory above it and of every link that leads to it.
///
/// Each directory and link is looked at once in the life of this object, so that many files of one
/// directory cost a look each. For other users there is nothing to judge: what they load runs
/// as nobody but themselves, and nothing is looked at.
class FileTrust {
  public:
    /// `user` is the one in whose name files are to be loaded.
    explicit FileTrust(uid_t user) : isRoot_(user == 0) {}

    /// The first weakness on the way from the root directory to the file, when this was not asked
    /// about the same path before. What is not there, or behind too many links, has none.
    std::optional<Weakness> FindNewWeakness(const std::string& path);

  private:
    /// What there is to know of one name, by which all links before it have been followed.
    struct Entry {
        mode_t mode = 0;    ///< Zero when it is not there.
        std::string target; ///< Of a link.
        std::optional<std::string> weakness;
    };

    /// A path that is being followed, name by name.
    struct Walk {
        /// Puts the names of a path in front of those that are ahead.
        void Follow(std::string_view path);

        /// Takes the step to what was found at `path`; false when there is no way on.
        bool Enter(const std::string& path, const Entry& entry);

        /// Sets `path` to what is to be looked at next; false at the end.
        bool Next(std::string& path);

        std::string directory;          ///< Where the walk is; empty in the root directory.
        std::vector<std::string> ahead; ///< The next one last.
        int links = 0;
    };

    std::optional<Weakness> WeaknessOnTheWay(Walk walk);
    const Entry& Look(const std::string& path);
    static Entry Read(const std::string& path);

    bool isRoot_;
    std::unordered_set<std::string> asked_;
    std::unordered_map<std::string, Entry> entries_;
};

} // namespace CppTools::Host
