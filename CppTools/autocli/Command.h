#pragma once

#include <CppTools/autocli/CommandSpec.h>

namespace CppTools::AutoCli {

/// A command that can be run. A concrete command implements `GetInputSpecInternal`,
/// `GetOutputSpecInternal` and `ExecuteInternal`.
class CPPTOOLS_EXPORT Command : public CommandSpec, public CallSpec::CallTarget {
  public:
    ~Command() override;

    /// Runs one call whose input was validated. With the parameter "help" the help record is
    /// the result and nothing is run. Otherwise the command does its work; a `std::exception`
    /// becomes "Error on command C : " and its text, and a result that is not of the declared
    /// shape becomes the reasons and a closing "Implementation error! ..." message.
    void Execute(const std::shared_ptr<CallSpec::Input>& input,
                 const std::shared_ptr<CallSpec::Output>& output) override;

    /// The command's own work: sets the root object of `output` or adds error messages.
    virtual void ExecuteInternal(const std::shared_ptr<CallSpec::Input>& input,
                                 const std::shared_ptr<CallSpec::Output>& output) = 0;

  protected:
    Command();

  private:
    void RequireDeclaredShape(const std::shared_ptr<CallSpec::Output>& output);
};

} // namespace CppTools::AutoCli
