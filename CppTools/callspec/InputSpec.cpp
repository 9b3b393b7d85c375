#include <CppTools/callspec/Input.h>
#include <CppTools/callspec/InputSpec.h>
#include <CppTools/callspec/Output.h>
#include <CppTools/metaobj/CppToolException.h>

#include <algorithm>

namespace CppTools::CallSpec {

namespace {

bool NameIsLess(const std::shared_ptr<ParameterSpec>& parameter, const std::string& name) {
    return parameter->GetName() < name;
}

void RequireNoClash(const ParameterSpec& added, const ParameterSpec& present) {
    if (added.GetName() == present.GetName()) {
        throw CppToolException("Found a duplicate paramater specification for parameter named '" +
                               added.GetName() + "'");
    }
    if (!added.GetShortName().empty() && added.GetShortName() == present.GetShortName()) {
        throw CppToolException("Invalid short name specified for --" + added.GetName() +
                               ". The short name -" + added.GetShortName() +
                               " is already used for --" + present.GetName());
    }
}

} // namespace

std::shared_ptr<InputSpec> InputSpec::New() {
    return std::make_shared<InputSpec>();
}

void InputSpec::AddParameter(const std::shared_ptr<ParameterSpec>& parameter) {
    if (parameter->GetName().size() < 2) {
        throw CppToolException("Parameter name must be at least 2 characters");
    }
    // Few parameters have a short name; the names of all others are looked up.
    const auto place =
        std::lower_bound(parameters_.begin(), parameters_.end(), parameter->GetName(), NameIsLess);
    const bool isDuplicate =
        place != parameters_.end() && (*place)->GetName() == parameter->GetName();
    if (isDuplicate || !parameter->GetShortName().empty()) {
        for (const auto& present : parameters_) {
            RequireNoClash(*parameter, *present);
        }
    }
    parameters_.insert(place, parameter);
}

std::shared_ptr<ParameterSpec> InputSpec::FindParameter(const std::string& name) const {
    const auto found = std::lower_bound(parameters_.begin(), parameters_.end(), name, NameIsLess);
    const bool isFound = found != parameters_.end() && (*found)->GetName() == name;
    return isFound ? *found : nullptr;
}

void InputSpec::SetContextSupported(const std::string& key) {
    supportedContexts_.insert(key);
}

bool InputSpec::IsContextSupported(const std::string& key) const {
    return supportedContexts_.contains(key);
}

bool InputSpec::Validate(const std::shared_ptr<Input>& input,
                         const std::shared_ptr<Output>& output) const {
    if (input->HasParameter("help")) {
        return true;
    }
    bool valid = true;
    for (const auto& [name, values] : input->GetParameters()) {
        const auto parameter = FindParameter(name);
        if (!parameter) {
            output->AddErrorMessage("Unknown parameter : " + name);
            valid = false;
        } else {
            valid = parameter->Validate(values, output) && valid;
        }
    }
    for (const auto& parameter : parameters_) {
        if (parameter->IsRequired() && !input->HasParameter(parameter->GetName())) {
            output->AddErrorMessage("Missing required parameter --" + parameter->GetName());
            valid = false;
        }
    }
    return valid;
}

} // namespace CppTools::CallSpec
