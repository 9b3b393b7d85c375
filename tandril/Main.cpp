#include <CppTools/autocli/CliDispatcher.h>
#include <CppTools/host/FeatureStates.h>

#include <algorithm>
#include <exception>
#include <filesystem>
#include <iostream>
#include <memory>

namespace {

bool IsDirectory(const std::string& path) {
    std::error_code ignored;
    return std::filesystem::is_directory(path, ignored);
}

/// The switches as the library has them, but with templates filled as strictly as the tool was
/// built to fill them.
class ToolFeatures final : public CppTools::Host::FeatureStateSource {
  public:
    using Feature = CppTools::Host::Feature;

    void Initialize() override { library_->Initialize(); }

    bool IsOn(Feature feature) const override {
        return feature == Feature::StrictTemplates ? TANDRIL_STRICT_TEMPLATES
                                                   : library_->IsOn(feature);
    }

  private:
    std::shared_ptr<FeatureStateSource> library_ = CppTools::Host::GetFeatureStateSource();
};

} // namespace

int main(int argc, char** argv) {
    using CppTools::AutoCli::CliDispatcher;
    try {
        CppTools::Host::SetFeatureStateSource(std::make_shared<ToolFeatures>());
        CliDispatcher dispatcher;
        const auto& directories = CliDispatcher::GetDefaultDirectories();
        if (std::any_of(directories.begin(), directories.end(), IsDirectory)) {
            dispatcher.AddDefaultDirectories();
        }
        dispatcher.HandleArgvInput(argc, argv);
    } catch (const std::exception& failure) {
        std::cerr << failure.what() << '\n';
        return 1;
    }
}
