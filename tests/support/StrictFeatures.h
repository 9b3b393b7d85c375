#pragma once

#include <CppTools/host/FeatureStates.h>

#include <memory>

namespace TestSupport {

/// Switches `StrictTemplates` on until the end of the scope, and all others off.
class StrictFeatures {
  public:
    StrictFeatures() { CppTools::Host::SetFeatureStateSource(std::make_shared<Source>()); }

    StrictFeatures(const StrictFeatures&) = delete;
    StrictFeatures& operator=(const StrictFeatures&) = delete;

    ~StrictFeatures() { CppTools::Host::SetFeatureStateSource(nullptr); }

  private:
    struct Source final : CppTools::Host::FeatureStateSource {
        void Initialize() override {}

        bool IsOn(CppTools::Host::Feature feature) const override {
            return feature == CppTools::Host::Feature::StrictTemplates;
        }
    };
};

} // namespace TestSupport
