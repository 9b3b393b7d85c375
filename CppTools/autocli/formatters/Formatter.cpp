#include <CppTools/autocli/formatters/Formatter.h>

#include <utility>

namespace CppTools::AutoCli {

Formatter::Formatter(const std::string& name) : name_(name) {}

Formatter::~Formatter() = default;

void Formatter::SetDescription(std::string description) {
    description_ = std::move(description);
}

void Formatter::AddParam(std::string name, std::string description, bool flag) {
    params_.push_back({std::move(name), std::move(description), flag});
}

} // namespace CppTools::AutoCli
