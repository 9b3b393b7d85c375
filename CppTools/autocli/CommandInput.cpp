#include <CppTools/autocli/CommandInput.h>

#include <boost/algorithm/string/join.hpp>

namespace CppTools::AutoCli {

CommandInput::CommandInput() = default;
CommandInput::~CommandInput() = default;

std::shared_ptr<CommandInput> CommandInput::New() {
    return std::make_shared<CommandInput>();
}

void CommandInput::SetDispatcher(const std::string& dispatcher) {
    dispatcher_ = dispatcher;
}

void CommandInput::SetCommandPath(const std::list<std::string>& path) {
    commandPath_ = path;
}

std::string CommandInput::GetCommandPathString() const {
    return boost::algorithm::join(commandPath_, " ");
}

} // namespace CppTools::AutoCli
