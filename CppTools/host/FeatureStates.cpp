#include <CppTools/host/FeatureStates.h>

#include <utility>

namespace CppTools::Host {

namespace {

class BuiltInFeatureStates final : public FeatureStateSource {
  public:
    void Initialize() override {}

    bool IsOn(Feature feature) const override { return feature == Feature::PelorquenCommands; }
};

std::shared_ptr<FeatureStateSource>& InstalledSource() {
    static std::shared_ptr<FeatureStateSource> source = std::make_shared<BuiltInFeatureStates>();
    return source;
}

} // namespace

FeatureStateSource::~FeatureStateSource() = default;

void SetFeatureStateSource(std::shared_ptr<FeatureStateSource> source) {
    InstalledSource() = source ? std::move(source) : std::make_shared<BuiltInFeatureStates>();
}

std::shared_ptr<FeatureStateSource> GetFeatureStateSource() {
    return InstalledSource();
}

} // namespace CppTools::Host
