#include "Commands.h"
#include "HostError.h"
#include "TextTools.h"

#include <algorithm>
#include <cctype>

namespace HostFacts {

namespace {

struct Module {
    std::string name;
    long size = 0; // bytes
    long uses = 0;
    std::vector<std::string> users;
    std::string state;
    bool isTainting = false;
};

std::string LowerCase(std::string_view text) {
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return lower;
}

/// The modules that use this one, each followed by a comma; a lone dash when there are none.
std::vector<std::string> ParseUsers(std::string_view text) {
    std::vector<std::string> users;
    for (const std::string_view user : Split(text, ',')) {
        if (!user.empty() && user != "-") {
            users.emplace_back(user);
        }
    }
    return users;
}

Module ParseModule(std::string_view line) {
    const auto words = Words(line);
    if (words.size() < 5) {
        throw HostError("Unable to read /proc/modules: unexpected contents");
    }
    Module module;
    module.name = words[0];
    module.size = LeadingNumber(words[1]).value_or(0);
    module.uses = LeadingNumber(words[2]).value_or(0);
    module.users = ParseUsers(words[3]);
    module.state = LowerCase(words[4]);
    module.isTainting = words.back().starts_with('(');
    return module;
}

} // namespace

void ListModules(const Request& request, ResultDocument& document) {
    const auto pattern = request.arguments.Text("match", "*");
    const auto states = request.arguments.List("state");
    const bool onlyUnused = request.arguments.HasFlag("unused");
    const std::string text = request.files.Read("/proc/modules");
    const auto list = document.OpenList();
    for (const std::string_view line : Lines(text)) {
        const Module module = ParseModule(line);
        if (!FitsPattern(module.name, pattern) || !IsWanted(states, module.state) ||
            (onlyUnused && module.uses > 0)) {
            continue;
        }
        const auto structure = document.OpenStructure("Module");
        document.AddText("Name", module.name);
        document.AddNumber("Size", module.size);
        document.AddNumber("Uses", module.uses);
        document.AddText("State", module.state);
        document.AddSwitch("Tainting", module.isTainting);
        document.AddTexts("Used By", module.users);
    }
}

} // namespace HostFacts
