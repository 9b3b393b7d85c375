#pragma once

#include <CppTools/autocli/plugins/Plugin.h>

namespace CppTools::AutoCli {

/// The plug-in that every dispatcher has: the standard formatters, and the command
/// `tandril command list`.
class CPPTOOLS_EXPORT InternalPlugin : public Plugin {
  public:
    InternalPlugin();
    ~InternalPlugin() override;

    /// Makes one that offers nothing before it is initialised.
    static std::shared_ptr<InternalPlugin> New();

    /// Makes the formatters table, simple, xml, python, json and commandhelp, in this order; a
    /// second call adds a second set.
    void Initialize() override;

    /// "Internal".
    const std::string& GetName() const override;

    void RegisterNamespaces(std::shared_ptr<Namespace> root) override;
    bool HasFormatter(const std::string& name) override;

    /// The first of that name, or empty.
    std::shared_ptr<Formatter> GetFormatter(const std::string& name) override;
    std::vector<std::shared_ptr<Formatter>>& GetFormatters() override;

  private:
    std::vector<std::shared_ptr<Formatter>> formatters_;
};

} // namespace CppTools::AutoCli
