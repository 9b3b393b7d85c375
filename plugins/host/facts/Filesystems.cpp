#include "Commands.h"
#include "HostError.h"
#include "TextTools.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <memory>
#include <sys/statvfs.h>
#include <system_error>

namespace HostFacts {

namespace {

const char kMountsFile[] = "/proc/self/mountinfo";

/// One mounted file system. Sizes are in kB; they are 0 when it could not be measured, and
/// `problem` says why.
struct Filesystem {
    std::string mountPoint;
    std::string type;
    std::string source;
    bool isReadOnly = false;
    long size = 0;
    long used = 0;
    long available = 0;
    long inodes = 0;
    long freeInodes = 0;
    std::string problem;
};

bool HasOption(std::string_view options, std::string_view option) {
    const auto all = Split(options, ',');
    return std::find(all.begin(), all.end(), option) != all.end();
}

/// A line has the mount and, behind a lone dash, what is mounted. A source may be empty, which
/// leaves two blanks side by side.
Filesystem ParseMount(std::string_view line) {
    const auto middle = std::min(line.find(" - "), line.size());
    const auto mount = Split(line.substr(0, middle), ' ');
    const auto mounted = Split(line.substr(std::min(middle + 3, line.size())), ' ');
    if (mount.size() < 6 || mounted.size() < 3) {
        throw HostError(std::string("Unable to read ") + kMountsFile + ": unexpected contents");
    }
    Filesystem filesystem;
    filesystem.mountPoint = DecodeOctal(mount[4]);
    filesystem.type = DecodeOctal(mounted[0]);
    filesystem.source = DecodeOctal(mounted[1]);
    filesystem.isReadOnly = HasOption(mount[5], "ro") || HasOption(mounted[2], "ro");
    return filesystem;
}

void Measure(Filesystem& filesystem, const HostFiles& files) {
    struct statvfs numbers {};

    if (statvfs(files.RealPath(filesystem.mountPoint).c_str(), &numbers) != 0) {
        filesystem.problem = std::generic_category().message(errno);
        return;
    }
    const auto kiloBytes = [&](fsblkcnt_t blocks) {
        return static_cast<long>(blocks * (numbers.f_frsize / 512) / 2);
    };
    filesystem.size = kiloBytes(numbers.f_blocks);
    filesystem.used = kiloBytes(numbers.f_blocks - numbers.f_bfree);
    filesystem.available = kiloBytes(numbers.f_bavail);
    filesystem.inodes = static_cast<long>(numbers.f_files);
    filesystem.freeInodes = static_cast<long>(numbers.f_ffree);
}

/// Of several mounts in one place only the last can be reached, so the others are left out: what
/// could be measured there would not be theirs.
std::vector<Filesystem> ReadMounts(const HostFiles& files) {
    const std::string text = files.Read(kMountsFile);
    std::vector<Filesystem> mounts;
    for (const std::string_view line : Lines(text)) {
        Filesystem mount = ParseMount(line);
        std::erase_if(mounts, [&](const Filesystem& earlier) {
            return earlier.mountPoint == mount.mountPoint;
        });
        mounts.push_back(std::move(mount));
    }
    return mounts;
}

/// As "df" counts: of the space that ordinary users may have, rounded up.
long UsedPercent(const Filesystem& filesystem) {
    const long reachable = filesystem.used + filesystem.available;
    return reachable == 0 ? 0 : (filesystem.used * 100 + reachable - 1) / reachable;
}

std::string CanonicalPath(const HostFiles& files, const std::string& path) {
    const std::unique_ptr<char, void (*)(void*)> canonical(
        realpath(files.RealPath(path).c_str(), nullptr), std::free);
    if (!canonical) {
        const int reason = errno;
        throw HostError("Unable to find '" + path + "'", reason);
    }
    return canonical.get();
}

bool IsInside(const std::string& path, const std::string& directory) {
    return path.starts_with(directory) &&
           (directory.ends_with('/') || path.size() == directory.size() ||
            path[directory.size()] == '/');
}

void KeepTheOneAround(std::vector<Filesystem>& filesystems, const HostFiles& files,
                      const std::string& path) {
    const std::string place = CanonicalPath(files, path);
    std::string innermost;
    for (const Filesystem& filesystem : filesystems) {
        const std::string& mountPoint = filesystem.mountPoint;
        if (IsInside(place, files.RealPath(mountPoint)) && mountPoint.size() > innermost.size()) {
            innermost = mountPoint;
        }
    }
    std::erase_if(filesystems,
                  [&](const Filesystem& filesystem) { return filesystem.mountPoint != innermost; });
}

void KeepTypes(std::vector<Filesystem>& filesystems, const std::vector<std::string>& types) {
    std::erase_if(filesystems,
                  [&](const Filesystem& filesystem) { return !IsWanted(types, filesystem.type); });
}

/// Without a type or a place, what has no space of its own is of interest to few.
void KeepMeasured(std::vector<Filesystem>& filesystems, const Arguments& arguments) {
    const long minimumUse = arguments.Number("minimum-use").value_or(0);
    const bool isAll =
        arguments.HasFlag("all") || arguments.HasFlag("within") || !arguments.List("type").empty();
    std::erase_if(filesystems, [&](const Filesystem& filesystem) {
        const bool isVirtual = filesystem.size == 0 && filesystem.problem.empty();
        return (isVirtual && !isAll) || UsedPercent(filesystem) < minimumUse;
    });
}

void Write(const Filesystem& filesystem, ResultDocument& document) {
    const auto structure = document.OpenStructure("Filesystem");
    document.AddText("Source", filesystem.source);
    document.AddText("Type", filesystem.type);
    document.AddNumber("Size", filesystem.size);
    document.AddNumber("Used", filesystem.used);
    document.AddNumber("Available", filesystem.available);
    document.AddNumber("Used Percent", UsedPercent(filesystem));
    document.AddNumber("Inodes", filesystem.inodes);
    document.AddNumber("Free Inodes", filesystem.freeInodes);
    document.AddSwitch("Read Only", filesystem.isReadOnly);
    document.AddSwitch("Measured", filesystem.problem.empty());
    document.AddText("Problem", filesystem.problem);
    document.AddText("Mount Point", filesystem.mountPoint);
}

} // namespace

void ListFilesystems(const Request& request, ResultDocument& document) {
    std::vector<Filesystem> filesystems = ReadMounts(request.files);
    if (request.arguments.HasFlag("within")) {
        KeepTheOneAround(filesystems, request.files, request.input);
    }
    // Before measuring: a server that does not answer holds up only those who ask for it.
    KeepTypes(filesystems, request.arguments.List("type"));
    for (Filesystem& filesystem : filesystems) {
        Measure(filesystem, request.files);
    }
    KeepMeasured(filesystems, request.arguments);
    const auto list = document.OpenList();
    for (const Filesystem& filesystem : filesystems) {
        Write(filesystem, document);
    }
}

} // namespace HostFacts
