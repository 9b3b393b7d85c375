#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace HostFacts {

/// The files of a machine: those of the running one, or those below a directory that stands in
/// for its root. Paths are absolute and without the stand-in; error messages name them so.
class HostFiles {
  public:
    explicit HostFiles(std::string root) : root_(std::move(root)) {}

    /// Whether these are the files of the running machine, so that its services (accounts,
    /// interface addresses) speak of the same machine as the files do.
    bool IsLive() const { return root_.empty(); }

    /// Where the file really is.
    std::string RealPath(std::string_view path) const { return root_ + std::string(path); }

    /// The whole contents. Throws HostError.
    std::string Read(const std::string& path) const;

    /// The whole contents, or nothing when there is no such file. Throws HostError for a file
    /// that exists and cannot be read.
    std::optional<std::string> ReadIfThere(const std::string& path) const;

    /// The first line without its line end, or the empty text when the file cannot be read: for
    /// facts that not every kernel and not every device knows.
    std::string FirstLine(const std::string& path) const;

    /// The first number in the file, or `otherwise` when it cannot be read.
    long Number(const std::string& path, long otherwise) const;

    /// The names in a directory without "." and "..", in byte order. Throws HostError.
    std::vector<std::string> Names(const std::string& path) const;

    bool Exists(const std::string& path) const;

    /// What a symbolic link holds. Throws HostError.
    std::string LinkTarget(const std::string& path) const;

  private:
    std::string root_;
};

} // namespace HostFacts
