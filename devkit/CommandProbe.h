#pragma once

#include <devkit/XmlFile.h>

namespace CppTools::AutoCli {
class ExtensionCommand;
} // namespace CppTools::AutoCli

namespace Devkit {

/// What the engine answers to one command that stands alone.
struct Trial {
    std::shared_ptr<CppTools::AutoCli::ExtensionCommand> command; ///< Empty when it refuses.
    std::string refusal;                                          ///< In its own words.
};

/// Asks the engine about the command as it stands, at a path that is free.
Trial TryCommand(xmlNode& command);

/// A command in pieces, so that the engine can be asked about one after the other: it stops at the
/// first that it refuses.
class CommandProbe {
  public:
    /// `command` must outlive the probe.
    explicit CommandProbe(xmlNode& command) : command_(command) {}

    /// What the engine says to this piece, a child of the command or of its input-spec, beside
    /// those that it took before. Empty when it takes it.
    std::string Add(xmlNode& piece);

    /// What the engine says to a command that lacks the child of this name.
    std::string RefusalWithout(const std::string& name) const;

    /// The command that all pieces make that were taken.
    Trial Result() const { return Try({}); }

  private:
    Trial Try(const std::string& omitted) const;

    xmlNode& command_;
    std::vector<xmlNode*> pieces_;
};

} // namespace Devkit
