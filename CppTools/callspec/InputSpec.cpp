#include <CppTools/callspec/Input.h>
#include <CppTools/callspec/InputSpec.h>
#include <CppTools/callspec/Output.h>
#include <CppTools/metaobj/CppToolException.h>

#include <algorithm>

namespace CppTools::CallSpec {

namespace {

/// Up to so many parameters are kept in order one by one, which takes no other memory.
constexpr std::size_t kFew = 64;

struct NameIsLess {
    using Parameter = std::shared_ptr<ParameterSpec>;

    bool operator()(const Parameter& parameter, const std::string& name) const {
        return parameter->GetName() < name;
    }

    bool operator()(const Parameter& one, const Parameter& other) const {
        return one->GetName() < other->GetName();
    }
};

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
    if (HasName(parameter->GetName()) || !parameter->GetShortName().empty()) {
        for (const auto& present : GetParameters()) {
            RequireNoClash(*parameter, *present);
        }
    }
    if (parameters_.size() < kFew) {
        const auto place = std::lower_bound(parameters_.begin(), parameters_.end(),
                                            parameter->GetName(), NameIsLess());
        parameters_.insert(place, parameter);
    } else {
        AddToMany(parameter);
    }
}

void InputSpec::AddToMany(const std::shared_ptr<ParameterSpec>& parameter) {
    if (namesOfMany_.empty()) {
        for (const auto& present : parameters_) {
            namesOfMany_.insert(present->GetName());
        }
    }
    parameters_.push_back(parameter);
    namesOfMany_.insert(parameter->GetName());
    isInOrder_ = false;
}

const std::vector<std::shared_ptr<ParameterSpec>>& InputSpec::GetParameters() const {
    if (!isInOrder_) {
        std::sort(parameters_.begin(), parameters_.end(), NameIsLess());
        isInOrder_ = true;
    }
    return parameters_;
}

bool InputSpec::HasName(const std::string& name) const {
    return namesOfMany_.empty() ? FindParameter(name) != nullptr : namesOfMany_.contains(name);
}

std::shared_ptr<ParameterSpec> InputSpec::FindParameter(const std::string& name) const {
    const auto& parameters = GetParameters();
    const auto found = std::lower_bound(parameters.begin(), parameters.end(), name, NameIsLess());
    const bool isFound = found != parameters.end() && (*found)->GetName() == name;
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
    for (const auto& parameter : GetParameters()) {
        if (parameter->IsRequired() && !input->HasParameter(parameter->GetName())) {
            output->AddErrorMessage("Missing required parameter --" + parameter->GetName());
            valid = false;
        }
    }
    return valid;
}

} // namespace CppTools::CallSpec
