#include <CppTools/autocli/CliDispatcher.h>
#include <CppTools/host/FeatureStates.h>

#include <algorithm>
#include <csignal>
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

void HearNothing(int /*signal*/) {}

/// Signals as this program wants them, whatever it was started by. A reader of its output who goes
/// away is a failure to write, which is reported; that takes a handler, since commands would
/// inherit it if the signal were ignored. Commands cannot be waited for while their signal is
/// ignored.
void ArrangeSignals() {
    if (std::signal(SIGPIPE, HearNothing) == SIG_IGN) {
        std::signal(SIGPIPE, SIG_IGN);
    }
    std::signal(SIGCHLD, SIG_DFL);
}

} // namespace

int main(int argc, char** argv) {
    using CppTools::AutoCli::CliDispatcher;
    ArrangeSignals();
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
