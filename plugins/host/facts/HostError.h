#pragma once

#include <stdexcept>
#include <string>

namespace HostFacts {

/// What could not be found out, and why: the one exception of this program.
class HostError : public std::runtime_error {
  public:
    explicit HostError(const std::string& problem) : std::runtime_error(problem) {}

    /// `problem` names the subject; the system's text for `errorNumber` says why.
    HostError(const std::string& problem, int errorNumber);

    /// The subject does not exist, or no longer: a process that ended, a device that was taken
    /// away, a file that this kernel does not have.
    bool IsGone() const;

    /// The subject exists, but the caller may not see it.
    bool IsHidden() const;

  private:
    int errorNumber_ = 0;
};

} // namespace HostFacts
