#include <CppTools/autocli/plugins/InternalPlugin.h>
#include <CppTools/autocli/plugins/Plugin.h>
#include <CppTools/autocli/plugins/SharedLibraryPlugin.h>
#include <CppTools/autocli/plugins/XmlPlugin.h>

#include <gtest/gtest.h>
#include <tests/support/VirtualSlot.h>

#include <type_traits>

namespace {

using CppTools::AutoCli::InternalPlugin;
using CppTools::AutoCli::Plugin;
using CppTools::AutoCli::SharedLibraryPlugin;
using CppTools::AutoCli::XmlPlugin;
using TestSupport::VirtualSlotOf;

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
}

TEST(PluginTest, Kinds_DeriveDirectlyAndFillEverySlot) {
    EXPECT_TRUE((std::is_base_of_v<Plugin, InternalPlugin>));
    EXPECT_TRUE((std::is_base_of_v<Plugin, SharedLibraryPlugin>));
    EXPECT_TRUE((std::is_base_of_v<Plugin, XmlPlugin>));
    EXPECT_FALSE(std::is_abstract_v<InternalPlugin>);
    EXPECT_FALSE(std::is_abstract_v<SharedLibraryPlugin>);
    EXPECT_FALSE(std::is_abstract_v<XmlPlugin>);
}

TEST(PluginTest, Kinds_FactoriesGiveFreshInstances) {
    EXPECT_NE(InternalPlugin::New(), InternalPlugin::New());
    EXPECT_NE(SharedLibraryPlugin::New("a.so"), SharedLibraryPlugin::New("a.so"));
    EXPECT_NE(XmlPlugin::New("a.xml"), XmlPlugin::New("a.xml"));
}

} // namespace
