#include <CppTools/host/FeatureStates.h>

#include <gtest/gtest.h>
#include <memory>

using CppTools::Host::Feature;
using CppTools::Host::FeatureStateSource;
using CppTools::Host::GetFeatureStateSource;
using CppTools::Host::SetFeatureStateSource;

namespace {

/// The opposite of what the library does by itself.
class ContrarySource : public FeatureStateSource {
  public:
    void Initialize() override {}

    bool IsOn(Feature feature) const override { return feature == Feature::BuiltInSyslog; }
};

/// Leaves the library's own source behind.
class FeatureStatesTest : public testing::Test {
  protected:
    ~FeatureStatesTest() override { SetFeatureStateSource(nullptr); }
};

TEST_F(FeatureStatesTest, OwnSource_IsThereFromTheStart) {
    ASSERT_NE(GetFeatureStateSource(), nullptr);
    EXPECT_EQ(GetFeatureStateSource(), GetFeatureStateSource());
}

TEST_F(FeatureStatesTest, OwnSource_LetsBothDescriptorsLoad) {
    EXPECT_FALSE(GetFeatureStateSource()->IsOn(Feature::BuiltInSyslog));
    EXPECT_TRUE(GetFeatureStateSource()->IsOn(Feature::PelorquenCommands));
}

TEST_F(FeatureStatesTest, OwnSource_Initialize_ChangesNothing) {
    GetFeatureStateSource()->Initialize();
    EXPECT_FALSE(GetFeatureStateSource()->IsOn(Feature::BuiltInSyslog));
    EXPECT_TRUE(GetFeatureStateSource()->IsOn(Feature::PelorquenCommands));
}

TEST_F(FeatureStatesTest, SetFeatureStateSource_TakesEffectForTheProcess) {
    const auto source = std::make_shared<ContrarySource>();
    SetFeatureStateSource(source);
    EXPECT_EQ(GetFeatureStateSource(), source);
    EXPECT_TRUE(GetFeatureStateSource()->IsOn(Feature::BuiltInSyslog));
    EXPECT_FALSE(GetFeatureStateSource()->IsOn(Feature::PelorquenCommands));
}

TEST_F(FeatureStatesTest, SetFeatureStateSource_KeepsTheSourceAlive) {
    auto source = std::make_shared<ContrarySource>();
    const std::weak_ptr<FeatureStateSource> observer = source;
    SetFeatureStateSource(std::move(source));
    EXPECT_FALSE(observer.expired());
    SetFeatureStateSource(nullptr);
    EXPECT_TRUE(observer.expired());
}

TEST_F(FeatureStatesTest, SetFeatureStateSource_Empty_RestoresTheOwnSource) {
    SetFeatureStateSource(std::make_shared<ContrarySource>());
    SetFeatureStateSource(nullptr);
    ASSERT_NE(GetFeatureStateSource(), nullptr);
    EXPECT_FALSE(GetFeatureStateSource()->IsOn(Feature::BuiltInSyslog));
    EXPECT_TRUE(GetFeatureStateSource()->IsOn(Feature::PelorquenCommands));
}

} // namespace
