#pragma once

#include "Machine.h"

#include <nlohmann/json.hpp>

#include <functional>
#include <string>

namespace HostPack {

/// The built descriptors, each with a change, in a directory of this user's own: the build tree may
/// belong to somebody whom the tool warns of.
class PackCopy {
  public:
    explicit PackCopy(const std::function<std::string(const std::string&)>& change);

    const std::string& Path() const { return directory_.Path(); }

  private:
    TestSupport::TempDirectory directory_;
};

/// A copy of the built descriptors as they are.
const std::string& PackDirectory();

/// Runs the built tool with the built descriptors on the machine that it runs on. `path` is the
/// command's, such as "system process list".
TestSupport::ChildRun RunTool(const std::string& path, Words options = {},
                              const std::string& input = "", const Environment& environment = {},
                              const std::string& formatter = "json");

/// The result as JSON, of a run that went well. Throws for any other.
nlohmann::json JsonOf(const TestSupport::ChildRun& run);

/// The formatter writes text byte by byte, each byte as a character of its own; this is the text.
std::string BytesOf(const nlohmann::json& text);

/// The one row of a list whose field holds this. Throws when there is none.
nlohmann::json RowWith(const nlohmann::json& list, const std::string& field,
                       const nlohmann::json& value);

/// One field of every row.
std::vector<nlohmann::json> JsonColumn(const nlohmann::json& list, const std::string& field);

/// The whole file of the machine that the tests run on. Throws when it cannot be read.
std::string FileOf(const std::string& path);

/// The built descriptors, but over a made-up machine.
class ToolOn {
  public:
    explicit ToolOn(const Machine& machine);

    /// Runs the tool with what precedes the path and what follows it.
    TestSupport::ChildRun Run(const std::string& path, const Words& options,
                              const Words& dispatcherOptions = {}) const;

  private:
    PackCopy pack_;
};

} // namespace HostPack
