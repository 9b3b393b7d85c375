#pragma once

#include <CppTools/autocli/Command.h>

#include <cstddef>

namespace CppTools::AutoCli {

/// Whether a shell gives the character a meaning that `ExtensionCommand::SanitizeInput` takes
/// away: newline, one of ! " $ & ' ( ) * ; < > \ ^ ` |. All others are harmless to it.
CPPTOOLS_EXPORT bool isBadChar(char character);

/// Finds the `close` that pairs with the `open` at `start`, or the first unpaired one when there
/// is no `open` at `start`. The answer is `start` and the size up to and including `close`, or
/// (0, 0) when there is none before `end`. Linear.
CPPTOOLS_EXPORT std::pair<std::size_t, std::size_t>
FindPairedTokenSize(const char* text, std::size_t start, std::size_t end, char open, char close);

/// A command whose work is done by a shell command line. Its template is filled from the
/// parameters of the call, and the XML document that the child prints becomes the result; lines
/// "ERROR:..." at the head of what it prints become error messages instead.
///
/// Templates name parameters by $val{NAME}, $if{NAME,TEXT}, $list{NAME,'SEP',QUOTE} and
/// $multilist{NAME,OPTION,QUOTE}. What to write in them is told by `AutoCli_CheckTemplate`.
class CPPTOOLS_EXPORT ExtensionCommand : public Command {
  public:
    ExtensionCommand();
    ~ExtensionCommand() override;

    /// Makes one that cannot run before its template and both specifications are set.
    static std::shared_ptr<ExtensionCommand> New();

    /// The template of the command line.
    void SetExecuteCommand(const std::string& executeTemplate);

    /// The template of the standard input; empty means that the child reads end of file.
    void SetStdin(const std::string& stdinTemplate);

    /// The declarations that `GetInputSpecInternal` and `GetOutputSpecInternal` answer. Shared: the
    /// input specification must be of this command alone.
    void SetInputSpec(std::shared_ptr<CallSpec::InputSpec> inputSpec);
    void SetOutputSpec(std::shared_ptr<CallSpec::OutputSpec> outputSpec);

    /// Throws "Request for NULL InputSpec.  Extension command is incomplete and will not work".
    std::shared_ptr<CallSpec::InputSpec> GetInputSpecInternal() override;

    /// Throws "Request for NULL OutputSpec.  Extension command is incomplete and will not work".
    std::shared_ptr<CallSpec::OutputSpec> GetOutputSpecInternal() override;

    /// Runs the command. What goes wrong with the child's output becomes error messages; throws
    /// when the child cannot be started, fed or read.
    ///
    /// While the host's switch `StrictTemplates` is on, a call runs nothing and gets messages that
    /// name the parameter instead when one of its values spells a placeholder, alone, with others
    /// or with the template; when it holds a NUL; when an integer begins with white space and
    /// stands elsewhere than in single quotes of its own; and when there are several values where
    /// one was declared. That costs two more fillings.
    void ExecuteInternal(const std::shared_ptr<CallSpec::Input>& input,
                         const std::shared_ptr<CallSpec::Output>& output) override;

    /// Fills the template of the standard input or of the command line. Placeholders of absent
    /// parameters stay as they are, but for $if, which is removed. Values are sanitised for the
    /// command line only. Throws what `Input::GetParameter` throws for a $val of a flag or list.
    /// Linear in the template and the values for each parameter.
    std::string SubstituteInput(const std::shared_ptr<CallSpec::Input>& input, bool forStdin);

    /// A copy with a backslash before every character that `isBadChar` names.
    std::string SanitizeInput(const std::string& text);

    /// A copy without the character.
    std::string SanitizeChar(const std::string& text, char character);

  private:
    bool AcceptsValues(const CallSpec::Input& input, CallSpec::Output& output);

    std::shared_ptr<CallSpec::InputSpec> inputSpec_;
    std::shared_ptr<CallSpec::OutputSpec> outputSpec_;
    std::string executeCommand_;
    std::string stdinTemplate_;
};

} // namespace CppTools::AutoCli
