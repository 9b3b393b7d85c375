#include "Commands.h"
#include "HostError.h"
#include "TextTools.h"

namespace HostFacts {

void GetMemory(const Request& request, ResultDocument& document) {
    const std::string path = "/proc/meminfo";
    const auto fields = ColonFields(request.files.Read(path));
    const auto number = [&](std::string_view key) { return NumberOf(fields, key); };
    const long total = number("MemTotal");
    if (total <= 0) {
        throw HostError("Unable to read " + path + ": it has no MemTotal");
    }
    const long used = total - number("MemAvailable");
    const auto structure = document.OpenStructure("Memory");
    document.AddNumber("Total", total);
    document.AddNumber("Used", used);
    document.AddNumber("Used Percent", used * 100 / total);
    document.AddNumber("Available", number("MemAvailable"));
    document.AddNumber("Free", number("MemFree"));
    document.AddNumber("Buffers", number("Buffers"));
    document.AddNumber("Cached", number("Cached"));
    document.AddNumber("Shared", number("Shmem"));
    document.AddNumber("Swap Total", number("SwapTotal"));
    document.AddNumber("Swap Free", number("SwapFree"));
}

} // namespace HostFacts
