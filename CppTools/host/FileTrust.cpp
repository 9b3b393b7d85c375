#include <CppTools/host/FileTrust.h>

#include <filesystem>
#include <sys/xattr.h>
#include <system_error>

namespace CppTools::Host {

namespace {

/// As many as the system follows for one path.
constexpr int kMostLinks = 40;

bool HasAccessList(const std::string& path) {
    return lgetxattr(path.c_str(), "system.posix_acl_access", nullptr, 0) > 0;
}

std::optional<std::string> WeaknessOf(const std::string& path, const struct stat& status) {
    if (status.st_uid != 0) {
        return "is owned by user " + std::to_string(status.st_uid);
    }
    // Anybody may write to a link, by its mode. In a sticky directory the others can add names but
    // not touch root's, and theirs are judged by their owner.
    if (S_ISLNK(status.st_mode) || (S_ISDIR(status.st_mode) && (status.st_mode & S_ISVTX) != 0)) {
        return std::nullopt;
    }
    if ((status.st_mode & S_IWOTH) != 0) {
        return "can be written by everybody";
    }
    if ((status.st_mode & S_IWGRP) == 0) {
        return std::nullopt; // not by an access list either: the group's bits are its mask
    }
    if (status.st_gid != 0) {
        return "can be written by group " + std::to_string(status.st_gid);
    }
    return HasAccessList(path) ? std::optional<std::string>("can be written by whom its access "
                                                            "list names")
                               : std::nullopt;
}

} // namespace

std::optional<Weakness> FileTrust::FindNewWeakness(const std::string& path) {
    if (!isRoot_ || !asked_.insert(path).second) {
        return std::nullopt;
    }
    Walk walk;
    walk.Follow(path);
    if (!path.starts_with('/')) {
        // There is none where the present directory was removed, but then no files either.
        std::error_code ignored;
        walk.Follow(std::filesystem::current_path(ignored).string());
    }
    return WeaknessOnTheWay(std::move(walk));
}

/// What is behind a weakness is not looked at: whoever can use that has the rest in hand.
std::optional<Weakness> FileTrust::WeaknessOnTheWay(Walk walk) {
    std::string path = "/";
    do {
        const Entry& entry = Look(path);
        if (entry.weakness) {
            return Weakness{path, *entry.weakness};
        }
        if (!walk.Enter(path, entry)) {
            break;
        }
    } while (walk.Next(path));
    return std::nullopt;
}

void FileTrust::Walk::Follow(std::string_view path) {
    if (path.starts_with('/')) {
        directory.clear();
    }
    while (!path.empty()) {
        const std::size_t begin = path.rfind('/') + 1; // the last name's, or the only one's
        ahead.emplace_back(path.substr(begin));
        path.remove_suffix(path.size() - (begin > 0 ? begin - 1 : 0));
    }
}

bool FileTrust::Walk::Enter(const std::string& path, const Entry& entry) {
    if (S_ISLNK(entry.mode)) {
        Follow(entry.target);
        return ++links <= kMostLinks;
    }
    directory = path == "/" ? "" : path;
    return entry.mode != 0;
}

bool FileTrust::Walk::Next(std::string& path) {
    while (!ahead.empty()) {
        const std::string name = std::move(ahead.back());
        ahead.pop_back();
        if (name == "..") {
            directory.resize(directory.empty() ? 0 : directory.rfind('/'));
        } else if (!name.empty() && name != ".") {
            path = directory + "/" + name;
            return true;
        }
    }
    return false;
}

const FileTrust::Entry& FileTrust::Look(const std::string& path) {
    auto found = entries_.find(path);
    if (found == entries_.end()) {
        found = entries_.emplace(path, Read(path)).first;
    }
    return found->second;
}

FileTrust::Entry FileTrust::Read(const std::string& path) {
    Entry entry;

    struct stat status {};

    if (lstat(path.c_str(), &status) == 0) {
        std::error_code ignored; // a link that cannot be read cannot be followed by anybody
        entry.mode = status.st_mode;
        entry.weakness = WeaknessOf(path, status);
        entry.target = S_ISLNK(status.st_mode)
                           ? std::filesystem::read_symlink(path, ignored).string()
                           : std::string();
    }
    return entry;
}

} // namespace CppTools::Host
