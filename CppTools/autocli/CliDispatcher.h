#pragma once

#include <CppTools/autocli/Dispatcher.h>

namespace CppTools::AutoCli {

class NamespaceNode;
class OptionParser;

/// The dispatcher of a command-line program: it takes argv or a stream of text lines, applies the
/// dispatcher options, lists namespaces or runs commands, prints results on standard output and
/// errors on standard error.
///
/// The width set by "--screen-width" belongs to the process: all dispatchers share it, and it
/// lasts from one line to the next.
class CPPTOOLS_EXPORT CliDispatcher : public Dispatcher {
  public:
    CliDispatcher();
    ~CliDispatcher() override;

    /// Handles one command line and ends the process: with status 0 when it succeeded, else 1.
    /// A result that standard output did not take is no success; the reason goes to standard
    /// error. Throws what `HandleOptions` throws.
    [[noreturn]] void HandleArgvInput(int argc, const char* const* argv);

    /// Handles each line of the stream on its own; blank lines and comments are passed over.
    /// The result of the last line handled, true when there was none.
    bool ParseStreamInput(std::istream& stream);

    /// Handles one parsed line and returns its success. `allowInput` says whether the option
    /// "input" may name a stream of lines. Listing a namespace does not count as success.
    /// Throws `CppToolException` for a path that the tree does not hold, and what a formatter
    /// throws; ends the process with status 1 after the usage text.
    bool HandleOptions(OptionParser& parser, bool allowInput);

    /// Applies the dispatcher options: loads plug-ins, and sets the formatter and its parameters
    /// in `format`. Problems go to `output`, those of loading to standard error. False only when
    /// the usage text was printed instead.
    bool HandleDispatcherOptions(OptionParser& parser, FormatParameters& format,
                                 const std::shared_ptr<CallSpec::Output>& output);

    /// Adds "Unknown dispatcher parameter: " and the name for each option that is not known.
    void ValidateDispatcherParameters(OptionParser& parser,
                                      const std::shared_ptr<CallSpec::Output>& output);

    /// The size of the terminal on standard output, if it is one, with the width replaced by
    /// one between 1 and 9999 that was set by option.
    void GetDisplayContext(DisplayContext& display);

    /// The formatter "commandhelp" without parameters.
    FormatParameters GetHelpFormatParams();

    /// Prints the listing of a node's children and makes it the root object of `output`.
    void PrintChildren(std::shared_ptr<NamespaceNode> node, std::shared_ptr<CommandOutput> output);

    /// Prints the error messages, if there are any, under "Errors: " on standard error.
    void PrintError(const std::shared_ptr<CallSpec::Output>& output);

  private:
    bool HandleInputOption(const std::vector<std::string>& values);
    bool RunCommand(OptionParser& parser, const std::shared_ptr<Command>& command,
                    FormatParameters& userFormat, DisplayContext& display,
                    const std::shared_ptr<CommandOutput>& output);
    bool FormatResult(const std::shared_ptr<CommandInput>& input,
                      const std::shared_ptr<CommandOutput>& output, FormatParameters& userFormat,
                      DisplayContext& display);
    void PrintUsage() const;
    void LoadPlugins(const OptionParser& parser);

    std::string dispatcherName_;
};

} // namespace CppTools::AutoCli
