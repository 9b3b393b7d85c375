#include "HostError.h"

#include <cerrno>
#include <system_error>

namespace HostFacts {

HostError::HostError(const std::string& problem, int errorNumber)
    : std::runtime_error(problem + ": " + std::generic_category().message(errorNumber)),
      errorNumber_(errorNumber) {}

bool HostError::IsGone() const {
    return errorNumber_ == ENOENT || errorNumber_ == ESRCH || errorNumber_ == ENODEV ||
           errorNumber_ == ENXIO || errorNumber_ == ENOTDIR;
}

bool HostError::IsHidden() const {
    return errorNumber_ == EACCES || errorNumber_ == EPERM;
}

} // namespace HostFacts
