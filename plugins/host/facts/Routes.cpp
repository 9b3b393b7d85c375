#include "Commands.h"
#include "HostError.h"
#include "NetAddress.h"
#include "TextTools.h"

namespace HostFacts {

namespace {

struct Route {
    long family = 4;
    std::string destination;
    std::string gateway;
    std::string interface;
    long metric = 0;
    long flags = 0;
    bool isDefault = false;
};

// The flags of the kernel's routes, from <linux/route.h> and <linux/ipv6_route.h>, which cannot
// be included side by side.
constexpr long kUp = 0x1;
constexpr long kGateway = 0x2;
constexpr long kHost = 0x4;
constexpr long kReject = 0x200;
constexpr long kAnycast = 0x00100000;
constexpr long kCached = 0x01000000;
constexpr long kLocal = 0x80000000;

/// Routes that the kernel keeps for itself: its own addresses, refusals, what it has learned.
bool IsInternal(const Route& route) {
    return (route.flags & (kReject | kAnycast | kCached | kLocal)) != 0;
}

/// The letters that "route" prints.
std::string FlagLetters(const Route& route) {
    std::string letters;
    const auto add = [&](long flag, char letter) {
        if ((route.flags & flag) != 0) {
            letters += letter;
        }
    };
    add(kReject, '!');
    add(kUp, 'U');
    add(kGateway, 'G');
    add(kHost, 'H');
    add(kCached, 'C');
    add(kLocal, 'L');
    add(kAnycast, 'A');
    return letters;
}

[[noreturn]] void FailToParse(const std::string& path) {
    throw HostError("Unable to read " + path + ": unexpected contents");
}

Route ParseRoute4(std::string_view line, const std::string& path) {
    const auto words = Words(line);
    if (words.size() < 8) {
        FailToParse(path);
    }
    const long prefixLength = PrefixLength(words[7]);
    Route route;
    route.family = 4;
    route.interface = words[0];
    route.destination = AddressOfWords(words[1]) + "/" + std::to_string(prefixLength);
    route.flags = HexValue(words[3]);
    route.gateway = (route.flags & kGateway) != 0 ? AddressOfWords(words[2]) : "";
    route.metric = LeadingNumber(words[6]).value_or(0);
    route.isDefault = prefixLength == 0;
    return route;
}

Route ParseRoute6(std::string_view line, const std::string& path) {
    const auto words = Words(line);
    if (words.size() < 10) {
        FailToParse(path);
    }
    const long prefixLength = HexValue(words[1]);
    Route route;
    route.family = 6;
    route.destination = AddressOfBytes(words[0]) + "/" + std::to_string(prefixLength);
    route.flags = HexValue(words[8]);
    route.gateway = (route.flags & kGateway) != 0 ? AddressOfBytes(words[4]) : "";
    route.metric = HexValue(words[5]);
    route.interface = words[9];
    route.isDefault = prefixLength == 0;
    return route;
}

void AppendRoutes4(std::vector<Route>& routes, const HostFiles& files) {
    const std::string path = "/proc/net/route";
    const std::string text = files.Read(path);
    auto lines = Lines(text);
    for (std::size_t i = 1; i < lines.size(); ++i) { // the first line names the columns
        routes.push_back(ParseRoute4(lines[i], path));
    }
}

/// A kernel without IPv6 has no such table; that is an error only for those who asked for it.
void AppendRoutes6(std::vector<Route>& routes, const HostFiles& files, bool isAskedFor) {
    const std::string path = "/proc/net/ipv6_route";
    const std::string text = isAskedFor ? files.Read(path) : files.ReadIfThere(path).value_or("");
    for (const std::string_view line : Lines(text)) {
        routes.push_back(ParseRoute6(line, path));
    }
}

std::vector<Route> ReadRoutes(const HostFiles& files, std::optional<long> family) {
    std::vector<Route> routes;
    if (family != 6) {
        AppendRoutes4(routes, files);
    }
    if (family != 4) {
        AppendRoutes6(routes, files, family.has_value());
    }
    return routes;
}

} // namespace

void ListRoutes(const Request& request, ResultDocument& document) {
    const Arguments& arguments = request.arguments;
    const auto interfaces = arguments.List("interface");
    const auto list = document.OpenList();
    for (const Route& route : ReadRoutes(request.files, arguments.Number("family"))) {
        if (!IsWanted(interfaces, route.interface) ||
            (IsInternal(route) && !arguments.HasFlag("all"))) {
            continue;
        }
        const auto structure = document.OpenStructure("Route");
        document.AddNumber("Family", route.family);
        document.AddText("Destination", route.destination);
        document.AddText("Gateway", route.gateway);
        document.AddText("Interface", route.interface);
        document.AddNumber("Metric", route.metric);
        document.AddSwitch("Default", route.isDefault);
        document.AddText("Flags", FlagLetters(route));
    }
}

} // namespace HostFacts
