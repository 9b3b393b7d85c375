#include "Moments.h"

#include "HostError.h"
#include "TextTools.h"

#include <array>
#include <cstdio>
#include <ctime>

namespace HostFacts {

long BootTime(const HostFiles& files) {
    static constexpr std::string_view key = "btime ";
    const std::string stat = files.Read("/proc/stat");
    for (const std::string_view line : Lines(stat)) {
        const auto seconds =
            line.starts_with(key) ? LeadingNumber(line.substr(key.size())) : std::nullopt;
        if (seconds) {
            return *seconds;
        }
    }
    throw HostError("Unable to read /proc/stat: it does not say when the machine was started");
}

std::string MomentText(long seconds) {
    const std::time_t moment = seconds;
    std::tm parts{};
    std::array<char, 64> text{};
    gmtime_r(&moment, &parts);
    return std::string(text.data(),
                       std::strftime(text.data(), text.size(), "%Y-%m-%dT%H:%M:%SZ", &parts));
}

std::string DurationText(long seconds) {
    const long days = seconds / 86400;
    const std::string daysText =
        days == 0 ? "" : std::to_string(days) + (days == 1 ? " day " : " days ");
    std::array<char, 16> clock{};
    std::snprintf(clock.data(), clock.size(), "%02d:%02d:%02d",
                  static_cast<int>(seconds % 86400 / 3600), static_cast<int>(seconds % 3600 / 60),
                  static_cast<int>(seconds % 60));
    return daysText + clock.data();
}

} // namespace HostFacts
