#include <CppTools/autocli/plugins/HeldValues.h>
#include <CppTools/autocli/plugins/PlaceholderText.h>
#include <CppTools/autocli/plugins/StrictFilling.h>
#include <CppTools/autocli/plugins/TemplateScanner.h>
#include <CppTools/callspec/Input.h>
#include <CppTools/callspec/InputSpec.h>
#include <CppTools/callspec/Output.h>

#include <algorithm>
#include <cctype>
#include <optional>
#include <vector>

namespace CppTools::AutoCli {

namespace {

using CallSpec::Input;
using CallSpec::InputSpec;
using CallSpec::ParameterSpec;
using CallSpec::ParameterType;

std::string Refused(const std::string& name) {
    return "Refused value for parameter " + name + ".  ";
}

bool IsInteger(const ParameterSpec& parameter) {
    return parameter.GetType() == ParameterType::Int ||
           parameter.GetType() == ParameterType::IntList;
}

/// Whether all placeholders of a name in a command line certainly stand in single quotes of their
/// own, where nothing is escaped and nothing ends a word.
bool IsAlwaysQuotedAlone(const std::string& commandLine, const std::string& name) {
    Findings findings;
    bool isAlone = true;
    for (const auto& command : ScanTemplate(commandLine, findings)) {
        for (const auto& word : command.words) {
            for (const auto& piece : word.pieces) {
                isAlone = isAlone && (piece.place == Place::SingleAlone || !piece.placeholder ||
                                      piece.placeholder->name != name);
            }
        }
    }
    return isAlone && findings.empty();
}

/// What is wrong with one value as such.
std::optional<std::string> Complaint(const ParameterSpec& parameter, const std::string& value,
                                     const std::string& commandLine) {
    const std::string& name = parameter.GetName();
    if (IsInteger(parameter) && !value.empty() &&
        std::isspace(static_cast<unsigned char>(value.front())) &&
        !IsAlwaysQuotedAlone(commandLine, name)) {
        return "Invalid data '" + value + "' for parameter " + name + " expected type Integer";
    }
    if (value.find('\0') != std::string::npos) {
        return Refused(name) + "It holds a NUL character, which ends command lines.";
    }
    if (HoldsPlaceholderOpening(value)) {
        return Refused(name) + "It spells a placeholder of command templates, one of $val{, $if{, "
                               "$list{ and $multilist{.";
    }
    return std::nullopt;
}

std::vector<std::string> Complaints(const ParameterSpec& parameter,
                                    const std::vector<std::string>& values,
                                    const std::string& commandLine) {
    std::vector<std::string> complaints;
    if (values.size() > 1 && !parameter.AllowMultiple()) {
        complaints.push_back("Found multiple values for " + parameter.GetName() +
                             " this parameter can only accept a single value.");
    }
    for (const auto& value : values) {
        if (auto complaint = Complaint(parameter, value, commandLine)) {
            complaints.push_back(std::move(*complaint));
        }
    }
    return complaints;
}

/// The validation of the call may have said it before.
void AddOnce(const std::string& message, CallSpec::Output& output) {
    const auto& errors = output.GetErrors();
    if (std::find(errors.begin(), errors.end(), message) == errors.end()) {
        output.AddErrorMessage(message);
    }
}

/// The parameters of a call, in the order in which they are filled in.
std::vector<std::string> GivenNames(const InputSpec& inputSpec, const Input& input) {
    std::vector<std::string> names;
    for (const auto& parameter : inputSpec.GetParameters()) {
        if (input.HasParameter(parameter->GetName())) {
            names.push_back(parameter->GetName());
        }
    }
    return names;
}

/// The filled template. The values of all parameters but the first few are held until the end.
std::string FillHolding(const std::string& text, TemplatePurpose purpose,
                        const std::vector<std::string>& names, std::size_t notHeld,
                        const Input& input) {
    HeldValues held;
    CommandTemplate filled(text, purpose);
    for (std::size_t i = 0; i < names.size(); ++i) {
        filled.Fill(names[i], input, i < notHeld ? nullptr : &held);
    }
    filled.RemoveUnfilled();
    return held.Release(filled.GetText());
}

/// The first parameter whose value changes more of the text than its own place.
std::optional<std::string> Meddler(const std::string& text, TemplatePurpose purpose,
                                   const std::vector<std::string>& names, const Input& input) {
    const auto fill = [&](std::size_t notHeld) {
        return FillHolding(text, purpose, names, notHeld, input);
    };
    const std::string meant = fill(0);
    if (fill(names.size()) == meant) {
        return std::nullopt;
    }
    std::size_t count = 1;
    while (fill(count) == meant) {
        ++count;
    }
    return names[count - 1];
}

} // namespace

std::string FillTemplate(const std::string& text, TemplatePurpose purpose,
                         const InputSpec& inputSpec, const Input& input) {
    const auto names = GivenNames(inputSpec, input);
    return FillHolding(text, purpose, names, names.size(), input);
}

bool AreHarmless(const CommandTemplates& templates, const InputSpec& inputSpec, const Input& input,
                 CallSpec::Output& output) {
    std::vector<std::string> messages;
    for (const auto& [name, values] : input.GetParameters()) {
        if (const auto parameter = inputSpec.FindParameter(name)) {
            const auto complaints = Complaints(*parameter, values, templates.front().first);
            messages.insert(messages.end(), complaints.begin(), complaints.end());
        }
    }
    const auto names = GivenNames(inputSpec, input);
    for (const auto& [text, purpose] : templates) {
        if (messages.empty() && text.find('$') != std::string::npos) {
            if (const auto name = Meddler(text, purpose, names, input)) {
                messages.push_back(Refused(*name) +
                                   "With the template or another value it spells a placeholder.");
            }
        }
    }
    for (const auto& message : messages) {
        AddOnce(message, output);
    }
    return messages.empty();
}

} // namespace CppTools::AutoCli
