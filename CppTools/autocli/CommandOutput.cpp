#include <CppTools/autocli/CommandOutput.h>

namespace CppTools::AutoCli {

CommandOutput::CommandOutput() = default;
CommandOutput::~CommandOutput() = default;

std::shared_ptr<CommandOutput> CommandOutput::New() {
    return std::make_shared<CommandOutput>();
}

void CommandOutput::SetFormattedString(const std::string& text) {
    formattedString_ = text;
}

} // namespace CppTools::AutoCli
