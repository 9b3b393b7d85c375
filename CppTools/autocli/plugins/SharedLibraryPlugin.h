#pragma once

#include <CppTools/autocli/plugins/Plugin.h>

namespace CppTools::AutoCli {

/// A shared library that registers namespaces through one entry point, which it exports as
///
///     extern "C" void AutoCli_RegisterNamespaces(std::shared_ptr<Namespace> root);
///
/// It offers no formatters. The library stays loaded as long as this object lives, which must be
/// at least as long as anything that it registered.
class CPPTOOLS_EXPORT SharedLibraryPlugin : public Plugin {
  public:
    /// Touches no file before `Initialize`.
    explicit SharedLibraryPlugin(const std::string& path);
    ~SharedLibraryPlugin() override;

    /// Touches no file.
    static std::shared_ptr<SharedLibraryPlugin> New(const std::string& path);

    /// Loads the library and looks up its entry point. Throws, with nothing left loaded,
    /// - "Unable to load plugin from P : " and the loader's reason;
    /// - "Unable to get plugin registration point from P : " and the loader's reason.
    void Initialize() override;

    /// The path.
    const std::string& GetName() const override;

    /// Calls the entry point; does nothing when the library is not loaded.
    void RegisterNamespaces(std::shared_ptr<Namespace> root) override;

    bool HasFormatter(const std::string& name) override;
    std::shared_ptr<Formatter> GetFormatter(const std::string& name) override;

    /// The same empty vector for every instance.
    std::vector<std::shared_ptr<Formatter>>& GetFormatters() override;

  private:
    using RegisterFunction = void (*)(std::shared_ptr<Namespace>);

    struct LibraryCloser {
        void operator()(void* handle) const noexcept;
    };

    std::string path_;
    std::unique_ptr<void, LibraryCloser> handle_;
    RegisterFunction registerFn_ = nullptr;
};

} // namespace CppTools::AutoCli
