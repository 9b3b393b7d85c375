#pragma once

#include <CppTools/Export.h>

#include <deque>
#include <list>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace CppTools::CallSpec {
class InputSpec;
class ParameterSpec;
} // namespace CppTools::CallSpec

namespace CppTools::AutoCli {

/// Splits one command line into the options of the dispatcher, the path of a command, and the
/// options of that command, by the shapes of the words alone.
///
/// The command's options are parsed when they are first asked for, after the front end has found
/// the command and handed over its specification: only then is it known which options are flags
/// and which are secrets to be prompted for. Nothing is thrown; problems are collected. One
/// parser serves one line; a second line that holds words replaces everything but the errors found
/// so far.
class CPPTOOLS_EXPORT OptionParser {
  public:
    /// Names and values in the order given; flags have the empty value.
    using Parameters = std::vector<std::pair<std::string, std::string>>;

    /// The dispatcher's name is "tandril" unless it is given.
    OptionParser();
    explicit OptionParser(const std::string& dispatcher);
    ~OptionParser();

    /// The first word becomes the dispatcher's name; with no words at all nothing changes.
    void ParseArgv(int argc, const char* const* argv);
    void ParseVector(const std::vector<std::string>& words);

    /// Splits a text line at blanks that are not inside double quotes, up to a "#" where a word
    /// would begin. There is no escape character. True when the line holds no word. Linear.
    bool ParseString(const std::string& line);

    /// Must precede the first question for command parameters to have any effect on them.
    void SetInputSpec(std::shared_ptr<CallSpec::InputSpec> inputSpec);

    /// Always false; kept for its place in the interface and in `ToString`.
    bool IsParsed() const { return parsed_; }

    /// What went wrong so far, in the order found.
    const std::vector<std::string>& GetParseErrors() const { return parseErrors_; }

    /// The name of the tool, as it was invoked.
    const std::string& GetDispatcher() const { return dispatcher_; }

    /// The words before the first option of the command: namespaces and the command, from the
    /// root downwards.
    const std::list<std::string>& GetCommandPath() const { return commandPath_; }

    /// The same as `GetCommandPath`.
    const std::list<std::string>& GetNamespaces() const { return commandPath_; }

    /// The options between the name of the tool and the path.
    const Parameters& GetDispatcherParameters() const { return dispatcherParameters_; }

    /// Whether that option was given, with or without a value.
    bool HasDispatcherParameter(const std::string& name) const;

    /// Every value given under that name, in order.
    std::vector<std::string> GetDispatcherParameter(const std::string& name) const;

    /// These parse the command's options first, which may prompt for a secret on the terminal.
    const Parameters& GetCommandParameters();
    bool HasCommandParameter(const std::string& name);
    std::vector<std::string> GetCommandParameter(const std::string& name);

    /// The parser's state as text for debugging; parses the command's options.
    std::string ToString();

    /// Reads a line of standard input without echo, if that is a terminal, and without its line
    /// end. The terminal is as before when this returns, throws or is ended by a signal. Empty when
    /// nothing can be read, also from a terminal whose echo cannot be switched off.
    static std::string GetSilentString();

    /// Whether the word is shaped like an option: "-x", "--name" or "--name=value".
    static bool IsParameter(const std::string& word);

  private:
    using WordStack = std::deque<std::string>;

    void ParseStack(WordStack& stack);
    Parameters ParseParameters(WordStack& stack);
    bool ParseParameter(const std::string& word, std::string& name, std::string& value);
    std::string ValueOfBareOption(const std::string& word, const std::string& name);
    std::shared_ptr<CallSpec::ParameterSpec> FindDeclared(const std::string& name) const;
    void ProcessCommandArguments();

    bool parsed_ = false;
    std::vector<std::string> parseErrors_;
    std::string dispatcher_;
    std::list<std::string> commandPath_;
    Parameters dispatcherParameters_;
    Parameters commandParameters_;
    WordStack pendingWords_;
    std::shared_ptr<CallSpec::InputSpec> inputSpec_;
};

} // namespace CppTools::AutoCli
