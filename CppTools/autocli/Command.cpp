#include <CppTools/autocli/Command.h>
#include <CppTools/autocli/CommandInput.h>
#include <CppTools/callspec/Output.h>
#include <CppTools/callspec/OutputSpec.h>

#include <exception>

namespace CppTools::AutoCli {

Command::Command() = default;
Command::~Command() = default;

void Command::Execute(const std::shared_ptr<CallSpec::Input>& input,
                      const std::shared_ptr<CallSpec::Output>& output) {
    if (input->HasParameter("help")) {
        GenerateHelpOutput(input, output);
        return;
    }
    try {
        ExecuteInternal(input, output);
    } catch (const std::exception& failure) {
        const auto* commandInput = dynamic_cast<const CommandInput*>(input.get());
        const std::string id =
            commandInput != nullptr ? commandInput->GetCommandPathString() : GetName();
        output->AddErrorMessage("Error on command " + id + " : " + failure.what());
    }
    if (!output->HasError()) {
        RequireDeclaredShape(output);
    }
}

void Command::RequireDeclaredShape(const std::shared_ptr<CallSpec::Output>& output) {
    std::vector<std::string> errors;
    if (GetOutputSpec()->Validate(output, &errors)) {
        return;
    }
    for (auto& error : errors) {
        output->AddErrorMessage(std::move(error));
    }
    output->AddErrorMessage("Implementation error! The output of this command does not match the "
                            "declared output type, see errors above.");
}

} // namespace CppTools::AutoCli
