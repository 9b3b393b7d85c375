#pragma once

#include <CppTools/Export.h>

#include <memory>

namespace CppTools::Host {

/// Switches of the host: which plug-in descriptors are loaded, and how templates are filled.
enum class Feature {
    BuiltInSyslog,     ///< On: the descriptor "tandril-syslog.xml" is not needed and skipped.
    PelorquenCommands, ///< Off: the descriptor "pelorquencmd.xml" is skipped.
    StrictTemplates    ///< On: `ExtensionCommand` refuses values that change its templates.
};

/// Where the switches come from. A host program derives its own and installs it with
/// `SetFeatureStateSource` before it builds a dispatcher.
class CPPTOOLS_EXPORT FeatureStateSource {
  public:
    virtual ~FeatureStateSource();
    FeatureStateSource(const FeatureStateSource&) = delete;
    FeatureStateSource& operator=(const FeatureStateSource&) = delete;

    /// Called once by every dispatcher before anything is loaded.
    virtual void Initialize() = 0;

    /// The state of a switch, asked for each time that it matters.
    virtual bool IsOn(Feature feature) const = 0;

  protected:
    FeatureStateSource() = default;
};

/// Installs a source for the whole process; empty restores the library's own, with
/// `PelorquenCommands` on and the others off, so that both descriptors are loaded.
CPPTOOLS_EXPORT void SetFeatureStateSource(std::shared_ptr<FeatureStateSource> source);

/// The installed source; never empty.
CPPTOOLS_EXPORT std::shared_ptr<FeatureStateSource> GetFeatureStateSource();

} // namespace CppTools::Host
