#include "Commands.h"
#include "HostError.h"
#include "TextTools.h"

#include <algorithm>

namespace HostFacts {

namespace {

struct Variable {
    std::string name;
    std::string value;
};

std::vector<Variable> ReadVariables(const HostFiles& files, const std::string& path) {
    std::string text = files.Read(path);
    text.erase(text.find_last_not_of('\0') + 1);
    std::vector<Variable> variables;
    for (const std::string_view entry : Split(text, '\0')) {
        const auto equals = std::min(entry.find('='), entry.size());
        if (!entry.empty()) {
            variables.push_back({std::string(entry.substr(0, equals)),
                                 std::string(entry.substr(std::min(equals + 1, entry.size())))});
        }
    }
    std::stable_sort(variables.begin(), variables.end(),
                     [](const Variable& a, const Variable& b) { return a.name < b.name; });
    return variables;
}

void ReportMissing(const std::vector<Variable>& variables, const std::vector<std::string>& wanted,
                   ResultDocument& document) {
    for (const std::string& name : wanted) {
        const auto isIt = [&](const Variable& variable) { return variable.name == name; };
        if (std::none_of(variables.begin(), variables.end(), isIt)) {
            document.AddError("Unable to find the variable '" + name +
                              "': the environment does not hold it");
        }
    }
}

} // namespace

void GetEnvironment(const Request& request, ResultDocument& document) {
    const Arguments& arguments = request.arguments;
    const auto pid = arguments.Number("pid");
    const std::string owner = pid ? std::to_string(*pid) : "self";
    const auto variables = ReadVariables(request.files, "/proc/" + owner + "/environ");
    const auto wanted = arguments.List("name");
    ReportMissing(variables, wanted, document);

    const bool isCompared = arguments.HasFlag("compare");
    const bool showsValues = !isCompared && !arguments.HasFlag("hide-values");
    const auto list = document.OpenList();
    for (const Variable& variable : variables) {
        if (!IsWanted(wanted, variable.name)) {
            continue;
        }
        const auto structure = document.OpenStructure("EnvironmentVariable");
        document.AddText("Name", variable.name);
        document.AddNumber("Size", static_cast<long>(variable.value.size()));
        document.AddSwitch("Matches", isCompared && variable.value == request.input);
        document.AddText("Value", showsValues ? variable.value : "");
    }
}

} // namespace HostFacts
