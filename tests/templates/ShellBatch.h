#pragma once

#include <tests/support/TempDirectory.h>

#include <string>
#include <vector>

namespace Templates {

/// What filled templates hold in the place of the words of an attacker. Whatever runs it prints
/// `kRan`, which no template and no value spells.
inline const std::string kCanary = "canary";
inline const std::string kRan = "RAN";

/// Runs command lines in a real shell, many in one start of it, each in a subshell of its own that
/// has the canary as a command and nothing else in its folder.
class ShellBatch {
  public:
    ShellBatch();

    /// What each line wrote to its standard output and to descriptor 3. What a line leaves running
    /// is waited for. Throws when the shell did not get through them all.
    std::vector<std::string> Run(const std::vector<std::string>& lines) const;

  private:
    TestSupport::TempDirectory programs_;
    TestSupport::TempDirectory scripts_;
};

} // namespace Templates
