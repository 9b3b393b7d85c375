#include <CppTools/autocli/Dispatcher.h>

#include <CppTools/autocli/CommandOutput.h>
#include <CppTools/autocli/RootNamespace.h>
#include <CppTools/metaobj/CppToolException.h>
#include <tests/support/ScriptedPlugin.h>
#include <tests/support/Thrown.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <sstream>
#include <string>

using CppTools::CppToolException;
using CppTools::AutoCli::Dispatcher;
using testing::ElementsAre;
using TestSupport::ScriptedFormatter;
using TestSupport::ScriptedPlugin;
using TestSupport::ThrownBy;

namespace {

enum class Operation {
    None,
    GetName,
    RegisterNamespaces,
    HasFormatter,
    GetFormatter,
    GetFormatters
};

/// The plug-in "frail" with the namespace "extra" and the formatter "csv". One of its operations
/// fails.
class FrailPlugin : public ScriptedPlugin {
  public:
    FrailPlugin()
        : ScriptedPlugin("frail", [](auto root) { root->SubNamespace("extra"); },
                         {std::make_shared<ScriptedFormatter>("csv")}) {}

    const std::string& GetName() const override {
        FailAt(Operation::GetName);
        return ScriptedPlugin::GetName();
    }

    void RegisterNamespaces(std::shared_ptr<CppTools::AutoCli::Namespace> root) override {
        ScriptedPlugin::RegisterNamespaces(std::move(root));
        FailAt(Operation::RegisterNamespaces);
    }

    bool HasFormatter(const std::string& name) override {
        FailAt(Operation::HasFormatter);
        return ScriptedPlugin::HasFormatter(name);
    }

    std::shared_ptr<CppTools::AutoCli::Formatter> GetFormatter(const std::string& name) override {
        FailAt(Operation::GetFormatter);
        return ScriptedPlugin::GetFormatter(name);
    }

    FormatterList& GetFormatters() override {
        FailAt(Operation::GetFormatters);
        return ScriptedPlugin::GetFormatters();
    }

    Operation failing = Operation::None;

  private:
    void FailAt(Operation operation) const {
        if (failing == operation) {
            throw CppToolException("failed");
        }
    }
};

class DispatcherPluginFailureTest : public testing::Test {
  protected:
    /// The message with which a plug-in is refused that fails there.
    std::string RegisterFailingAt(Operation operation) {
        plugin->failing = operation;
        return ThrownBy([&] { dispatcher.RegisterPlugin(plugin); });
    }

    void RegisterThenFailAt(Operation operation) {
        dispatcher.RegisterPlugin(plugin);
        plugin->failing = operation;
    }

    void ExpectOnlyItsNamespace() {
        EXPECT_THAT(dispatcher.GetPluginNames(), ElementsAre("Internal"));
        EXPECT_FALSE(dispatcher.HasFormatter("csv"));
        EXPECT_TRUE(dispatcher.GetRootNamespace()->HasNamespaceNode("extra"));
    }

    Dispatcher dispatcher;
    const std::shared_ptr<FrailPlugin> plugin = std::make_shared<FrailPlugin>();
};

TEST_F(DispatcherPluginFailureTest, RegisterNamespaces_IsWrapped) {
    EXPECT_EQ(RegisterFailingAt(Operation::RegisterNamespaces),
              "Error while trying to register the plugin frail failed The functionality in frail "
              "will not be available until this issue is resolved.");
    ExpectOnlyItsNamespace();
}

TEST_F(DispatcherPluginFailureTest, GetFormatters_IsNotWrapped) {
    EXPECT_EQ(RegisterFailingAt(Operation::GetFormatters), "failed");
    ExpectOnlyItsNamespace();
}

TEST_F(DispatcherPluginFailureTest, QuestionsAboutOneFormatter_AreNotAskedAtRegistration) {
    for (const Operation operation : {Operation::HasFormatter, Operation::GetFormatter}) {
        Dispatcher fresh;
        plugin->failing = operation;
        EXPECT_NO_THROW(fresh.RegisterPlugin(plugin));
        EXPECT_THAT(fresh.GetPluginNames(), ElementsAre("Internal", "frail"));
    }
}

TEST_F(DispatcherPluginFailureTest, GetName_IsOnlyAskedForWhenItIsNeeded) {
    EXPECT_EQ(RegisterFailingAt(Operation::GetName), "<nothing was thrown>");
    EXPECT_TRUE(dispatcher.HasFormatter("csv"));
    EXPECT_EQ(ThrownBy([&] { dispatcher.GetPluginNames(); }), "failed");
    EXPECT_EQ(ThrownBy([&] { dispatcher.RegisterPlugin(plugin); }), "failed");
}

TEST_F(DispatcherPluginFailureTest, HasFormatter_PassesToWhoeverAsks) {
    RegisterThenFailAt(Operation::HasFormatter);
    EXPECT_EQ(ThrownBy([&] { dispatcher.HasFormatter("csv"); }), "failed");
    EXPECT_EQ(ThrownBy([&] { dispatcher.GetFormatter("csv"); }), "failed");
    EXPECT_EQ(dispatcher.GetFormatters().size(), 7U);
    EXPECT_TRUE(dispatcher.HasFormatter("xml"));
}

TEST_F(DispatcherPluginFailureTest, GetFormatter_PassesToWhoeverAsks) {
    RegisterThenFailAt(Operation::GetFormatter);
    // Its own answer to the first question rests on the second.
    EXPECT_EQ(ThrownBy([&] { dispatcher.GetFormatter("csv"); }), "failed");
    EXPECT_EQ(ThrownBy([&] { dispatcher.GetFormatters(); }), "failed");
    EXPECT_NE(dispatcher.GetFormatter("xml"), nullptr);
}

TEST_F(DispatcherPluginFailureTest, FormatOutput_PassesItOnAndReportsNothing) {
    RegisterThenFailAt(Operation::GetFormatter);
    const auto output = CppTools::AutoCli::CommandOutput::New();
    CppTools::AutoCli::FormatParameters parameters;
    parameters.SetFormatter("csv");
    CppTools::AutoCli::DisplayContext display;
    std::ostringstream text;
    EXPECT_EQ(ThrownBy([&] { dispatcher.FormatOutput(output, parameters, display, text); }),
              "failed");
    EXPECT_EQ(text.str(), "");
    EXPECT_FALSE(output->HasError());
}

} // namespace
