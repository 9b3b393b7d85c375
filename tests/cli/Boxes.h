#pragma once

#include "Tool.h"

#include <tests/support/CommandDescriptor.h>
#include <tests/support/TempDirectory.h>

#include <string>

namespace Cli {

/// Descriptors of the namespace "box", one command each, in a directory of their own.
class Boxes {
  public:
    /// Adds the command "box NAME". What `pieces` says about the path is replaced.
    void Add(const std::string& name, TestSupport::CommandPieces pieces) const;

    /// Adds a command that declares a string and runs `shellLine`. The line is no XML: its
    /// special characters are escaped.
    void AddShell(const std::string& name, const std::string& shellLine) const;

    /// Adds "box disk", a structure that is shown by "simple", with a header and units.
    void AddDisk() const;

    /// Adds "box disks", a list of two structures that is shown by "table", with the last
    /// column wrapped.
    void AddDisks() const;

    const std::string& Directory() const { return directory_.Path(); }

    /// Writes a file that is no descriptor; returns its path.
    std::string Write(const std::string& name, const std::string& content) const {
        return files_.Write(name, content);
    }

    /// Runs the tool with these commands.
    TestSupport::ChildRun Run(const Words& words, const std::string& input = "") const {
        return RunTool(WithPlugins(words), input);
    }

    /// The words that load these commands, and `words`.
    Words WithPlugins(const Words& words) const {
        return Join({"--plugin-dir", Directory()}, words);
    }

  private:
    TestSupport::TempDirectory directory_;
    TestSupport::TempDirectory files_;
};

/// The text with the characters escaped that mean something in XML.
std::string EscapeXml(const std::string& text);

/// A shell line that prints a document whose result is `element`, which holds no single quote.
std::string PrintDocument(const std::string& element);

/// What "box disks" shows when nothing is wrapped.
std::string UnwrappedDisks();

/// What "box disks" shows on 40 columns.
std::string DisksOn40Columns();

} // namespace Cli
