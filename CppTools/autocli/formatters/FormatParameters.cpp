#include <CppTools/autocli/formatters/FormatParameters.h>
#include <CppTools/autocli/formatters/Tokens.h>

#include <utility>

namespace CppTools::AutoCli {

namespace {

const std::string kEmpty;

} // namespace

void FormatParameters::SetFormatter(std::string name) {
    formatter_ = std::move(name);
}

void FormatParameters::SetFormatter(const char* name) {
    formatter_ = name;
}

bool FormatParameters::HasParameter(const std::string& key) const {
    return parameters_.contains(key);
}

const std::string& FormatParameters::GetParameter(const std::string& key) const {
    const auto found = parameters_.find(key);
    return found == parameters_.end() ? kEmpty : found->second;
}

void FormatParameters::SetParameter(std::string key, std::string value) {
    parameters_.insert_or_assign(std::move(key), std::move(value));
}

void FormatParameters::SetParameter(const char* key, const char* value) {
    SetParameter(std::string(key), std::string(value));
}

void FormatParameters::OverrideValues(FormatParameters& other) {
    if (!other.formatter_.empty()) {
        formatter_ = other.formatter_;
    }
    for (const auto& [key, value] : other.parameters_) {
        parameters_.insert_or_assign(key, value);
    }
}

std::vector<std::string> FormatParameters::GetParameterAsList(const std::string& key) const {
    return SplitTokens(GetParameter(key), ',');
}

} // namespace CppTools::AutoCli
