#pragma once

#include <CppTools/Export.h>

#include <array>
#include <iosfwd>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace CppTools::CallSpec {
class Output;
} // namespace CppTools::CallSpec

namespace CppTools::Host {
class FileTrust;
} // namespace CppTools::Host

namespace CppTools::AutoCli {

class Command;
class CommandInput;
class CommandOutput;
class DisplayContext;
class Formatter;
class FormatParameters;
class Plugin;
class RootNamespace;

/// The hub of the library: it owns the command tree, the plug-ins and the registry of their
/// formatters, finds and runs commands, and renders their results.
///
/// A plug-in that was asked to register stays loaded until the dispatcher and its tree are gone,
/// whether or not its registration succeeded: what it hung into the tree may be its code.
/// Nothing is ever unregistered. One thread at a time.
class CPPTOOLS_EXPORT Dispatcher {
  public:
    /// The directories of `AddDefaultDirectories`, in the order in which they are loaded.
    static const std::array<std::string, 2>& GetDefaultDirectories();

    /// Asks the host's feature states to initialise themselves and registers the built-in
    /// plug-in.
    Dispatcher();
    virtual ~Dispatcher();
    Dispatcher(const Dispatcher&) = delete;
    Dispatcher& operator=(const Dispatcher&) = delete;

    /// The root of the tree that all plug-ins register in; never empty.
    std::shared_ptr<RootNamespace> GetRootNamespace() const { return root_; }

    /// Empties the list that `GetPluginNames` reads. Commands and formatters stay.
    void ResetRegistrations();

    /// Registers the namespaces, commands and formatters of an initialised plug-in. Throws
    /// - "Error while trying to register the plugin P M The functionality in P will not be
    ///   available until this issue is resolved.", when its registration threw the message M;
    ///   what it had registered by then stays in the tree;
    /// - "Error while trying to register the plugin P  this plugin has a formatter F that was
    ///   already registered from the plugin Q  The functionality in P will not be available
    ///   until this issue is resolved."; its commands stay, none of its formatters is entered.
    void RegisterPlugin(std::shared_ptr<Plugin> plugin);

    /// Loads a plug-in file: a shared library when its name ends in ".so", a descriptor when it
    /// ends in ".xml"; any other name is ignored. Throws what loading and registration throw.
    /// For root, a file that others may change is reported on standard error once, before it is
    /// loaded: "Warning: plugin P can be changed by others than root: Q is owned by user N", where
    /// Q is the file, or a directory or link on the way to it.
    void AddPlugin(const std::string& path);

    /// Loads every plug-in file of a directory in ascending order of their names. A file that
    /// fails is reported on standard error and skipped; so is, when `reportMissing` is true, a
    /// directory that cannot be opened.
    void AddExternalDirectoryInt(const std::string& directory, bool reportMissing);

    /// Loads the subdirectory "/lib64", if there is one, and then the directory itself.
    void AddExternalDirectory(const std::string& directory);

    /// Loads both directories of `GetDefaultDirectories` and reports those that are missing.
    void AddDefaultDirectories();

    /// The command that the path of `input` names. Otherwise empty, with the reason in `output`
    /// ("Unable to find command", "Path refers to a namespace, not a command."); a node that
    /// calls itself a command without being a `Command` gives no reason.
    std::shared_ptr<Command> GetCommand(std::shared_ptr<CommandInput> input,
                                        std::shared_ptr<CommandOutput> output);

    /// Finds the command, checks the input and runs it. True when `output` has no error then.
    bool ExecuteCommand(std::shared_ptr<CommandInput> input, std::shared_ptr<CommandOutput> output);

    /// Whether a registered plug-in offers a formatter of that name. Logarithmic.
    bool HasFormatter(const std::string& name);

    /// Empty when no plug-in offers a formatter of that name.
    std::shared_ptr<Formatter> GetFormatter(const std::string& name);

    /// Renders `output` with the formatter that `parameters` names; an empty name prints
    /// nothing and succeeds. False, with "Unable to find requested formatter: " and the name
    /// added to `output`, when there is none of that name. What a formatter throws, leaves.
    bool FormatOutput(const std::shared_ptr<CallSpec::Output>& output, FormatParameters& parameters,
                      DisplayContext& display, std::ostream& out);

    /// The defaults of the command that `input` names; empty parameters when there is none, with
    /// the reason in `output`.
    FormatParameters GetDefaultOutputFormatParameters(std::shared_ptr<CommandInput> input,
                                                      std::shared_ptr<CommandOutput> output);

    /// Every registered formatter, in ascending order of their names.
    std::vector<std::shared_ptr<Formatter>> GetFormatters();

    /// In the order of registration, the built-in plug-in first.
    std::vector<std::string> GetPluginNames() const;

  private:
    void RegisterFormatters(const std::shared_ptr<Plugin>& plugin);
    void WarnOfWeakness(const std::string& path);

    std::unique_ptr<Host::FileTrust> trust_;

    // Members are released from the last to the first: the tree goes before the plug-ins.
    std::vector<std::shared_ptr<Plugin>> loadedPlugins_;
    std::map<std::string, std::shared_ptr<Plugin>> formatterRegistry_;
    std::vector<std::shared_ptr<Plugin>> plugins_;
    std::shared_ptr<RootNamespace> root_;
};

} // namespace CppTools::AutoCli
