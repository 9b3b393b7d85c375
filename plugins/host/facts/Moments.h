#pragma once

#include "HostFiles.h"

#include <string>

namespace HostFacts {

/// When the machine was started, in seconds since 1970. Throws HostError.
long BootTime(const HostFiles& files);

/// Seconds since 1970 as a date and time in UTC, such as "2024-05-01T10:00:00Z".
std::string MomentText(long seconds);

/// A length of time such as "3 days 04:05:06", without the days when there are none.
std::string DurationText(long seconds);

} // namespace HostFacts
