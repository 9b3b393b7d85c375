#include <CppTools/autocli/formatters/CommandHelpFormatter.h>
#include <CppTools/autocli/formatters/JsonFormatter.h>
#include <CppTools/autocli/formatters/PythonFormatter.h>
#include <CppTools/autocli/formatters/SimpleFormatter.h>
#include <CppTools/autocli/formatters/TableFormatter.h>
#include <CppTools/autocli/formatters/XmlFormatter.h>
#include <CppTools/autocli/plugins/CommandList.h>
#include <CppTools/autocli/plugins/InternalPlugin.h>
#include <CppTools/callspec/Input.h>
#include <CppTools/callspec/Output.h>
#include <CppTools/metaobj/MetaObject.h>

#include <gtest/gtest.h>
#include <tests/support/Thrown.h>
#include <tests/support/TreeLookup.h>

#include <memory>
#include <string>
#include <vector>

namespace {

using CppTools::AutoCli::CommandHelpFormatter;
using CppTools::AutoCli::CommandList;
using CppTools::AutoCli::Formatter;
using CppTools::AutoCli::InternalPlugin;
using CppTools::AutoCli::JsonFormatter;
using CppTools::AutoCli::Namespace;
using CppTools::AutoCli::NamespaceNode;
using CppTools::AutoCli::PythonFormatter;
using CppTools::AutoCli::SimpleFormatter;
using CppTools::AutoCli::TableFormatter;
using CppTools::AutoCli::XmlFormatter;
using TestSupport::NewRoot;
using TestSupport::NodeAt;
using TestSupport::ThrownBy;

using Names = std::vector<std::string>;

Names FormatterNames(InternalPlugin& plugin) {
    Names names;
    for (const auto& formatter : plugin.GetFormatters()) {
        names.push_back(formatter->GetName());
    }
    return names;
}

template <typename Kind>
bool Is(const std::shared_ptr<Formatter>& formatter) {
    return std::dynamic_pointer_cast<Kind>(formatter) != nullptr;
}

TEST(InternalPluginTest, GetName_IsInternalAndOneObjectForAllInstances) {
    const auto first = InternalPlugin::New();
    const auto second = InternalPlugin::New();
    EXPECT_EQ(first->GetName(), "Internal");
    EXPECT_EQ(&first->GetName(), &second->GetName());
}

TEST(InternalPluginTest, New_OffersNoFormatterYet) {
    const auto plugin = InternalPlugin::New();
    EXPECT_TRUE(plugin->GetFormatters().empty());
    EXPECT_FALSE(plugin->HasFormatter("table"));
    EXPECT_EQ(plugin->GetFormatter("table"), nullptr);
}

TEST(InternalPluginTest, Initialize_MakesTheSixFormattersInTheirOrder) {
    const auto plugin = InternalPlugin::New();
    plugin->Initialize();
    EXPECT_EQ(FormatterNames(*plugin),
              (Names{"table", "simple", "xml", "python", "json", "commandhelp"}));
    const auto& formatters = plugin->GetFormatters();
    EXPECT_TRUE(Is<TableFormatter>(formatters.at(0)));
    EXPECT_TRUE(Is<SimpleFormatter>(formatters.at(1)));
    EXPECT_TRUE(Is<XmlFormatter>(formatters.at(2)));
    EXPECT_TRUE(Is<PythonFormatter>(formatters.at(3)));
    EXPECT_TRUE(Is<JsonFormatter>(formatters.at(4)));
    EXPECT_TRUE(Is<CommandHelpFormatter>(formatters.at(5)));
}

TEST(InternalPluginTest, Initialize_TwiceAppendsASecondSet) {
    const auto plugin = InternalPlugin::New();
    plugin->Initialize();
    const auto firstSet = plugin->GetFormatters();
    plugin->Initialize();
    EXPECT_EQ(FormatterNames(*plugin),
              (Names{"table", "simple", "xml", "python", "json", "commandhelp", "table", "simple",
                     "xml", "python", "json", "commandhelp"}));
    EXPECT_EQ(plugin->GetFormatters().at(0), firstSet.at(0));
    EXPECT_NE(plugin->GetFormatters().at(6), firstSet.at(0));
}

TEST(InternalPluginTest, Initialize_EveryInstanceMakesItsOwn) {
    const auto first = InternalPlugin::New();
    const auto second = InternalPlugin::New();
    first->Initialize();
    second->Initialize();
    EXPECT_NE(first->GetFormatter("json"), second->GetFormatter("json"));
}

TEST(InternalPluginTest, GetFormatters_IsTheVectorItself) {
    const auto plugin = InternalPlugin::New();
    auto& formatters = plugin->GetFormatters();
    plugin->Initialize();
    EXPECT_EQ(formatters.size(), 6U);
    EXPECT_EQ(&formatters, &plugin->GetFormatters());
}

class StandardFormatterTest : public testing::TestWithParam<const char*> {};

TEST_P(StandardFormatterTest, GetFormatter_FindsItByItsName) {
    const auto plugin = InternalPlugin::New();
    plugin->Initialize();
    EXPECT_TRUE(plugin->HasFormatter(GetParam()));
    const auto found = plugin->GetFormatter(GetParam());
    ASSERT_NE(found, nullptr);
    EXPECT_EQ(found->GetName(), GetParam());
}

INSTANTIATE_TEST_SUITE_P(Names, StandardFormatterTest,
                         testing::Values("table", "simple", "xml", "python", "json",
                                         "commandhelp"));

class UnknownFormatterTest : public testing::TestWithParam<const char*> {};

TEST_P(UnknownFormatterTest, GetFormatter_AnswersEmpty) {
    const auto plugin = InternalPlugin::New();
    plugin->Initialize();
    EXPECT_FALSE(plugin->HasFormatter(GetParam()));
    EXPECT_EQ(plugin->GetFormatter(GetParam()), nullptr);
}

INSTANTIATE_TEST_SUITE_P(Names, UnknownFormatterTest,
                         testing::Values("", "Table", "TABLE", "tabl", "tables", " table",
                                         "clihelp", "yaml"));

TEST(InternalPluginTest, GetFormatter_AnswersTheFirstOfTheName) {
    const auto plugin = InternalPlugin::New();
    plugin->Initialize();
    plugin->Initialize();
    EXPECT_EQ(plugin->GetFormatter("simple"), plugin->GetFormatters().at(1));
}

TEST(InternalPluginTest, RegisterNamespaces_HangsTandrilCommandListUnderTheRoot) {
    const auto root = NewRoot();
    InternalPlugin::New()->RegisterNamespaces(root);
    EXPECT_EQ(root->GetNamespaceNodeNames(), Names{"tandril"});
    const auto tandril = NodeAt(root, {"tandril"});
    EXPECT_EQ(tandril->GetType(), NamespaceNode::kNamespaceType);
    EXPECT_EQ(tandril->GetDescription(),
              "Commands that operate on the tandril system itself allowing users to get additional "
              "information.");
    EXPECT_EQ(tandril->GetNamespaceNodeNames(), Names{"command"});
    const auto command = NodeAt(root, {"tandril", "command"});
    EXPECT_EQ(command->GetType(), NamespaceNode::kNamespaceType);
    EXPECT_EQ(command->GetDescription(), "Operations to get information about commands.");
    EXPECT_EQ(command->GetNamespaceNodeNames(), Names{"list"});
    EXPECT_NE(NodeAt<CommandList>(root, {"tandril", "command", "list"}), nullptr);
}

TEST(InternalPluginTest, RegisterNamespaces_NeedsNoInitialize) {
    const auto plugin = InternalPlugin::New();
    const auto root = NewRoot();
    plugin->RegisterNamespaces(root);
    EXPECT_TRUE(plugin->GetFormatters().empty());
    EXPECT_TRUE(root->HasNamespaceNode("tandril"));
}

TEST(InternalPluginTest, RegisterNamespaces_TheCommandListsTheTreeItWasHungInto) {
    const auto root = NewRoot();
    InternalPlugin::New()->RegisterNamespaces(root);
    const auto list = NodeAt<CommandList>(root, {"tandril", "command", "list"});
    const auto input = CppTools::CallSpec::Input::New();
    input->SetInputSpec(list->GetInputSpec());
    const auto output = CppTools::CallSpec::Output::New();
    list->Execute(input, output);
    EXPECT_EQ(output->GetErrors(), Names{});
    EXPECT_EQ(output->GetRootObject()->ToString(),
              "{'Command' => 'list', 'Description' => 'List all of the tandril commands.', "
              "'Namespace' => 'tandril.command', }");
}

TEST(InternalPluginTest, RegisterNamespaces_ATakenNameIsRefusedInTheTreesOwnWords) {
    const auto root = NewRoot();
    const auto plugin = InternalPlugin::New();
    plugin->RegisterNamespaces(root);
    const auto first = root->GetNamespaceNode("tandril");
    EXPECT_EQ(ThrownBy([&] { plugin->RegisterNamespaces(root); }),
              "Duplicate registration in namespace  attempt to register two objects with name "
              "tandril");
    EXPECT_EQ(root->GetNamespaceNode("tandril"), first);
}

TEST(InternalPluginTest, RegisterNamespaces_HoldsNoShareOfTheRoot) {
    auto root = NewRoot();
    InternalPlugin::New()->RegisterNamespaces(root);
    const std::weak_ptr<Namespace> watched = root;
    root.reset();
    EXPECT_TRUE(watched.expired());
}

} // namespace
