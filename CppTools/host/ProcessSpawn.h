#pragma once

#include <string>
#include <sys/types.h>
#include <vector>

namespace CppTools::Host {

/// The descriptors that become the child's standard ones. They may be close-on-exec.
struct StandardDescriptors {
    int input;
    int output;
    int error;
};

/// Starts a program with an argument vector (its own name included) and the inherited
/// environment. Returns 0 and the child's id, or an errno number. Failures of exec are reported
/// here too, and an argument with an embedded NUL is refused rather than cut.
int SpawnProcess(const std::string& program, const std::vector<std::string>& arguments,
                 const StandardDescriptors& descriptors, pid_t& child);

/// The system's text for an errno number.
std::string StatusText(int error);

} // namespace CppTools::Host
