#include "Commands.h"
#include "HostError.h"
#include "Moments.h"
#include "TextTools.h"

#include <cctype>

namespace HostFacts {

namespace {

/// /proc/stat has one line "cpuN ..." for each processor that is in use.
long ProcessorCount(const HostFiles& files) {
    const std::string stat = files.Read("/proc/stat");
    long count = 0;
    for (const std::string_view line : Lines(stat)) {
        if (line.size() > 3 && line.starts_with("cpu") &&
            std::isdigit(static_cast<unsigned char>(line[3])) != 0) {
            ++count;
        }
    }
    return count;
}

/// "1.25" as 125. The kernel always prints two digits behind the point.
long Hundredths(std::string_view text) {
    const auto parts = Split(text, '.');
    const long whole = LeadingNumber(parts[0]).value_or(0);
    const long fraction = parts.size() < 2 ? 0 : LeadingNumber(parts[1]).value_or(0);
    return whole * 100 + fraction;
}

std::vector<std::string_view> NeededWords(std::string_view text, std::size_t count,
                                          const std::string& path) {
    const auto words = Words(Trim(text));
    if (words.size() < count) {
        throw HostError("Unable to read " + path + ": unexpected contents");
    }
    return words;
}

} // namespace

void GetUptime(const Request& request, ResultDocument& document) {
    const std::string path = "/proc/uptime";
    const std::string text = request.files.Read(path);
    const long uptime = LeadingNumber(NeededWords(text, 2, path)[0]).value_or(0);
    const std::string booted = MomentText(BootTime(request.files));
    const auto structure = document.OpenStructure("Uptime");
    document.AddNumber("Seconds", uptime);
    document.AddText("Duration", DurationText(uptime));
    document.AddText("Booted", booted);
}

void GetLoad(const Request& request, ResultDocument& document) {
    const std::string path = "/proc/loadavg";
    const std::string text = request.files.Read(path);
    const auto words = NeededWords(text, 5, path);
    const auto tasks = Split(words[3], '/');
    const long processors = ProcessorCount(request.files);
    const auto structure = document.OpenStructure("Load");
    document.AddNumber("One Minute", Hundredths(words[0]));
    document.AddNumber("Five Minutes", Hundredths(words[1]));
    document.AddNumber("Fifteen Minutes", Hundredths(words[2]));
    document.AddNumber("Running", LeadingNumber(tasks.front()).value_or(0));
    document.AddNumber("Tasks", LeadingNumber(tasks.back()).value_or(0));
    document.AddNumber("Processors", processors);
    document.AddSwitch("Overloaded", Hundredths(words[0]) > processors * 100);
}

} // namespace HostFacts
