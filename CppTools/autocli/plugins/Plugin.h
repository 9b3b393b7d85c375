#pragma once

#include <CppTools/Export.h>

#include <memory>
#include <string>
#include <vector>

namespace CppTools::AutoCli {

class Formatter;
class Namespace;

/// A source of commands and formatters. A dispatcher asks it to initialise itself, to register
/// its namespaces and commands, and for its formatters, in this order.
class CPPTOOLS_EXPORT Plugin {
  public:
    virtual ~Plugin();
    Plugin(const Plugin&) = delete;
    Plugin& operator=(const Plugin&) = delete;

    /// Acquires what the plug-in needs; throws `CppToolException`.
    virtual void Initialize() = 0;

    /// The name under which messages and listings speak of the plug-in.
    virtual const std::string& GetName() const = 0;

    /// Adds the plug-in's namespaces and commands under `root`.
    virtual void RegisterNamespaces(std::shared_ptr<Namespace> root) = 0;

    /// Whether the plug-in offers a formatter of that name.
    virtual bool HasFormatter(const std::string& name) = 0;

    /// Empty when the plug-in has no formatter of that name.
    virtual std::shared_ptr<Formatter> GetFormatter(const std::string& name) = 0;

    /// In the order in which they are offered to users.
    virtual std::vector<std::shared_ptr<Formatter>>& GetFormatters() = 0;

  protected:
    Plugin() = default;
};

} // namespace CppTools::AutoCli
