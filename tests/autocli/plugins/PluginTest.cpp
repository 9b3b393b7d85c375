#include <CppTools/autocli/plugins/InternalPlugin.h>
#include <CppTools/autocli/plugins/Plugin.h>
#include <CppTools/autocli/plugins/SharedLibraryPlugin.h>
#include <CppTools/autocli/plugins/XmlPlugin.h>

#include <gtest/gtest.h>
#include <tests/support/VirtualSlot.h>
#include <tests/support/VirtualTableSize.h>

#include <type_traits>

namespace {

using CppTools::AutoCli::InternalPlugin;
using CppTools::AutoCli::Plugin;
using CppTools::AutoCli::SharedLibraryPlugin;
using CppTools::AutoCli::XmlPlugin;
using TestSupport::VirtualSlotOf;
using TestSupport::VirtualTableSizeOf;

TEST(PluginTest, Interface_IsAbstractAndDestroyedThroughItsBase) {
    EXPECT_TRUE(std::is_abstract_v<Plugin>);
    EXPECT_TRUE(std::has_virtual_destructor_v<Plugin>);
}

TEST(PluginTest, Interface_CarriesNoData) {
    EXPECT_EQ(sizeof(Plugin), sizeof(void*));
}

TEST(PluginTest, Interface_VirtualOperationsKeepTheirSlots) {
    EXPECT_EQ(VirtualSlotOf(&Plugin::Initialize), 2);
    EXPECT_EQ(VirtualSlotOf(&Plugin::GetName), 3);
    EXPECT_EQ(VirtualSlotOf(&Plugin::RegisterNamespaces), 4);
    EXPECT_EQ(VirtualSlotOf(&Plugin::HasFormatter), 5);
    EXPECT_EQ(VirtualSlotOf(&Plugin::GetFormatter), 6);
    EXPECT_EQ(VirtualSlotOf(&Plugin::GetFormatters), 7);
    EXPECT_EQ(VirtualTableSizeOf<Plugin>(), 8);
}

TEST(PluginTest, Kinds_DeriveDirectlyAndFillEverySlot) {
    EXPECT_TRUE((std::is_base_of_v<Plugin, InternalPlugin>));
    EXPECT_TRUE((std::is_base_of_v<Plugin, SharedLibraryPlugin>));
    EXPECT_TRUE((std::is_base_of_v<Plugin, XmlPlugin>));
    EXPECT_FALSE(std::is_abstract_v<InternalPlugin>);
    EXPECT_FALSE(std::is_abstract_v<SharedLibraryPlugin>);
    EXPECT_FALSE(std::is_abstract_v<XmlPlugin>);
}

template <typename Kind>
class PluginKindTest : public testing::Test {};

using Kinds = testing::Types<InternalPlugin, SharedLibraryPlugin, XmlPlugin>;
TYPED_TEST_SUITE(PluginKindTest, Kinds);

TYPED_TEST(PluginKindTest, Slots_AreThoseOfTheInterfaceAndNoMore) {
    EXPECT_EQ(VirtualSlotOf(&TypeParam::Initialize), 2);
    EXPECT_EQ(VirtualSlotOf(&TypeParam::GetName), 3);
    EXPECT_EQ(VirtualSlotOf(&TypeParam::RegisterNamespaces), 4);
    EXPECT_EQ(VirtualSlotOf(&TypeParam::HasFormatter), 5);
    EXPECT_EQ(VirtualSlotOf(&TypeParam::GetFormatter), 6);
    EXPECT_EQ(VirtualSlotOf(&TypeParam::GetFormatters), 7);
    EXPECT_EQ(VirtualTableSizeOf<TypeParam>(), 8);
}

TEST(PluginTest, Kinds_FactoriesGiveFreshInstances) {
    EXPECT_NE(InternalPlugin::New(), InternalPlugin::New());
    EXPECT_NE(SharedLibraryPlugin::New("a.so"), SharedLibraryPlugin::New("a.so"));
    EXPECT_NE(XmlPlugin::New("a.xml"), XmlPlugin::New("a.xml"));
}

} // namespace
