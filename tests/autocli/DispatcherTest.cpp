#include <CppTools/autocli/Dispatcher.h>

#include <CppTools/autocli/RootNamespace.h>
#include <CppTools/autocli/formatters/Formatter.h>
#include <CppTools/host/FeatureStates.h>
#include <CppTools/metaobj/CppToolException.h>
#include <tests/support/ScriptedCommand.h>
#include <tests/support/ScriptedPlugin.h>
#include <tests/support/Thrown.h>
#include <tests/support/VirtualTableSize.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <list>
#include <memory>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <vector>

using CppTools::CppToolException;
using CppTools::AutoCli::Dispatcher;
using CppTools::AutoCli::Namespace;
using testing::ElementsAre;
using TestSupport::ScriptedCommand;
using TestSupport::ScriptedFormatter;
using TestSupport::ScriptedPlugin;
using TestSupport::ThrownBy;

namespace {

std::vector<std::string> FormatterNames(Dispatcher& dispatcher) {
    std::vector<std::string> names;
    for (const auto& formatter : dispatcher.GetFormatters()) {
        names.push_back(formatter->GetName());
    }
    return names;
}

std::shared_ptr<ScriptedFormatter> FormatterNamed(const std::string& name) {
    return std::make_shared<ScriptedFormatter>(name);
}

/// Adds the namespace "extra" with the command "run".
void RegisterExtra(const std::shared_ptr<Namespace>& root) {
    root->SubNamespace("extra")->RegisterNamespaceNode(ScriptedCommand::New(), "run");
}

bool HasExtra(Dispatcher& dispatcher) {
    const auto extra = dispatcher.GetRootNamespace()->GetNamespaceNode("extra");
    return extra && extra->HasNamespaceNode("run");
}

TEST(DispatcherTest, Destructor_IsTheOnlyVirtualOperation) {
    EXPECT_TRUE(std::has_virtual_destructor_v<Dispatcher>);
    EXPECT_EQ(TestSupport::VirtualTableSizeOf<Dispatcher>(), 2);
}

TEST(DispatcherTest, StartUp_RegistersTheBuiltInPlugIn) {
    Dispatcher dispatcher;
    EXPECT_THAT(dispatcher.GetPluginNames(), ElementsAre("Internal"));
    std::list<std::string> path{"tandril", "command", "list"};
    EXPECT_EQ(dispatcher.GetRootNamespace()->ResolveNode(path)->GetType(), 2);
    EXPECT_THAT(dispatcher.GetRootNamespace()->GetNamespaceNodeNames(), ElementsAre("tandril"));
}

TEST(DispatcherTest, StartUp_OffersTheStandardFormattersInNameOrder) {
    Dispatcher dispatcher;
    EXPECT_THAT(FormatterNames(dispatcher),
                ElementsAre("commandhelp", "json", "python", "simple", "table", "xml"));
}

TEST(DispatcherTest, Root_BelongsToTheDispatcher) {
    Dispatcher dispatcher;
    EXPECT_EQ(dispatcher.GetRootNamespace()->GetDispatcher(), &dispatcher);
    EXPECT_EQ(dispatcher.GetRootNamespace(), dispatcher.GetRootNamespace());
}

/// Counts how often it was initialised.
class CountingSource : public CppTools::Host::FeatureStateSource {
  public:
    void Initialize() override { ++initializations; }

    bool IsOn(CppTools::Host::Feature) const override { return false; }

    int initializations = 0;
};

TEST(DispatcherTest, StartUp_InitialisesTheFeatureStatesOnce) {
    const auto source = std::make_shared<CountingSource>();
    CppTools::Host::SetFeatureStateSource(source);
    {
        Dispatcher first;
        EXPECT_EQ(source->initializations, 1);
        Dispatcher second;
        EXPECT_EQ(source->initializations, 2);
    }
    CppTools::Host::SetFeatureStateSource(nullptr);
    EXPECT_EQ(source->initializations, 2);
}

TEST(DispatcherTest, RegisterPlugin_HandsOverTheRootAndAppendsThePlugIn) {
    Dispatcher dispatcher;
    std::shared_ptr<Namespace> seen;
    dispatcher.RegisterPlugin(ScriptedPlugin::New("one", [&](auto root) { seen = root; }));
    dispatcher.RegisterPlugin(ScriptedPlugin::New("two"));
    EXPECT_EQ(seen, dispatcher.GetRootNamespace());
    EXPECT_THAT(dispatcher.GetPluginNames(), ElementsAre("Internal", "one", "two"));
}

TEST(DispatcherTest, RegisterPlugin_TakesAnInitialisedPlugIn) {
    Dispatcher dispatcher;
    const auto plugin = ScriptedPlugin::New("one");
    dispatcher.RegisterPlugin(plugin);
    EXPECT_EQ(plugin->initializations, 0);
}

TEST(DispatcherTest, RegisterPlugin_EntersEveryFormatter) {
    Dispatcher dispatcher;
    const auto csv = FormatterNamed("csv");
    const auto yaml = FormatterNamed("yaml");
    dispatcher.RegisterPlugin(ScriptedPlugin::New("one", {}, {yaml, csv}));
    EXPECT_EQ(dispatcher.GetFormatter("csv"), csv);
    EXPECT_EQ(dispatcher.GetFormatter("yaml"), yaml);
    EXPECT_THAT(FormatterNames(dispatcher), ElementsAre("commandhelp", "csv", "json", "python",
                                                        "simple", "table", "xml", "yaml"));
}

TEST(DispatcherTest, RegisterPlugin_RegistrationThrows_IsWrapped) {
    Dispatcher dispatcher;
    const auto plugin = ScriptedPlugin::New(
        "broken", [](auto) { throw CppToolException("No such luck."); }, {FormatterNamed("csv")});
    EXPECT_EQ(ThrownBy([&] { dispatcher.RegisterPlugin(plugin); }),
              "Error while trying to register the plugin broken No such luck. The functionality in "
              "broken will not be available until this issue is resolved.");
    EXPECT_THAT(dispatcher.GetPluginNames(), ElementsAre("Internal"));
    EXPECT_FALSE(dispatcher.HasFormatter("csv"));
}

TEST(DispatcherTest, RegisterPlugin_RegistrationThrowsLate_WhatItRegisteredStays) {
    Dispatcher dispatcher;
    const auto plugin = ScriptedPlugin::New("broken", [](auto root) {
        RegisterExtra(root);
        throw CppToolException("Too late.");
    });
    EXPECT_THROW(dispatcher.RegisterPlugin(plugin), CppToolException);
    EXPECT_TRUE(HasExtra(dispatcher));
}

TEST(DispatcherTest, RegisterPlugin_OtherException_PassesUnchanged) {
    Dispatcher dispatcher;
    const auto plugin =
        ScriptedPlugin::New("broken", [](auto) { throw std::runtime_error("out of order"); });
    try {
        dispatcher.RegisterPlugin(plugin);
        FAIL() << "nothing was thrown";
    } catch (const std::runtime_error& thrown) {
        EXPECT_STREQ(thrown.what(), "out of order");
    }
    EXPECT_THAT(dispatcher.GetPluginNames(), ElementsAre("Internal"));
}

TEST(DispatcherTest, RegisterPlugin_BuiltInFormatterName_IsRefusedButCommandsStay) {
    Dispatcher dispatcher;
    const auto builtIn = dispatcher.GetFormatter("table");
    const auto plugin = ScriptedPlugin::New("rival", RegisterExtra, {FormatterNamed("table")});
    EXPECT_EQ(ThrownBy([&] { dispatcher.RegisterPlugin(plugin); }),
              "Error while trying to register the plugin rival  this plugin has a formatter table "
              "that was already registered from the plugin Internal  The functionality in rival "
              "will not be available until this issue is resolved.");
    EXPECT_THAT(dispatcher.GetPluginNames(), ElementsAre("Internal"));
    EXPECT_EQ(dispatcher.GetFormatter("table"), builtIn);
    EXPECT_TRUE(HasExtra(dispatcher));
}

TEST(DispatcherTest, RegisterPlugin_LastFormatterConflicts_NoneIsEntered) {
    Dispatcher dispatcher;
    const auto plugin =
        ScriptedPlugin::New("rival", {}, {FormatterNamed("csv"), FormatterNamed("xml")});
    EXPECT_THROW(dispatcher.RegisterPlugin(plugin), CppToolException);
    EXPECT_FALSE(dispatcher.HasFormatter("csv"));
    EXPECT_THAT(FormatterNames(dispatcher),
                ElementsAre("commandhelp", "json", "python", "simple", "table", "xml"));
}

TEST(DispatcherTest, RegisterPlugin_SeveralConflicts_TheFirstOfferedIsNamed) {
    Dispatcher dispatcher;
    dispatcher.RegisterPlugin(ScriptedPlugin::New("first", {}, {FormatterNamed("csv")}));
    const auto plugin =
        ScriptedPlugin::New("second", {}, {FormatterNamed("csv"), FormatterNamed("json")});
    EXPECT_EQ(ThrownBy([&] { dispatcher.RegisterPlugin(plugin); }),
              "Error while trying to register the plugin second  this plugin has a formatter csv "
              "that was already registered from the plugin first  The functionality in second will "
              "not be available until this issue is resolved.");
}

TEST(DispatcherTest, RegisterPlugin_SameNameTwiceInOnePlugIn_IsNoConflict) {
    Dispatcher dispatcher;
    const auto first = FormatterNamed("csv");
    dispatcher.RegisterPlugin(ScriptedPlugin::New("one", {}, {first, FormatterNamed("csv")}));
    EXPECT_THAT(dispatcher.GetPluginNames(), ElementsAre("Internal", "one"));
    EXPECT_THAT(FormatterNames(dispatcher),
                ElementsAre("commandhelp", "csv", "json", "python", "simple", "table", "xml"));
    EXPECT_EQ(dispatcher.GetFormatter("csv"), first);
}

TEST(DispatcherTest, HasFormatter_UnknownName_IsFalse) {
    Dispatcher dispatcher;
    EXPECT_FALSE(dispatcher.HasFormatter("nope"));
    EXPECT_FALSE(dispatcher.HasFormatter(""));
    EXPECT_FALSE(dispatcher.HasFormatter("XML"));
    EXPECT_EQ(dispatcher.GetFormatter("nope"), nullptr);
}

TEST(DispatcherTest, HasFormatter_KnownName_IsTheAnswerOfThePlugIn) {
    Dispatcher dispatcher;
    const auto plugin = ScriptedPlugin::New("one", {}, {FormatterNamed("csv")});
    dispatcher.RegisterPlugin(plugin);
    EXPECT_TRUE(dispatcher.HasFormatter("csv"));
    plugin->deniesFormatters = true;
    EXPECT_FALSE(dispatcher.HasFormatter("csv"));
    EXPECT_EQ(dispatcher.GetFormatter("csv"), nullptr);
}

TEST(DispatcherTest, GetFormatter_PlugInOffersWhatItDoesNotHave_IsEmpty) {
    /// Affirms every name.
    class BoastfulPlugin : public ScriptedPlugin {
      public:
        using ScriptedPlugin::ScriptedPlugin;

        bool HasFormatter(const std::string&) override { return true; }
    };

    Dispatcher dispatcher;
    const auto plugin =
        std::make_shared<BoastfulPlugin>("one", ScriptedPlugin::Registration(),
                                         ScriptedPlugin::FormatterList{FormatterNamed("csv")});
    dispatcher.RegisterPlugin(plugin);
    plugin->formatters.clear();
    EXPECT_TRUE(dispatcher.HasFormatter("csv"));
    EXPECT_EQ(dispatcher.GetFormatter("csv"), nullptr);
    EXPECT_FALSE(dispatcher.HasFormatter("yaml"));
}

TEST(DispatcherTest, GetFormatters_AsksForTheFormatterAlone) {
    Dispatcher dispatcher;
    const auto csv = FormatterNamed("csv");
    const auto plugin = ScriptedPlugin::New("one", {}, {csv});
    dispatcher.RegisterPlugin(plugin);
    plugin->deniesFormatters = true;
    const auto formatters = dispatcher.GetFormatters();
    EXPECT_EQ(formatters.at(1), csv);
    EXPECT_EQ(formatters.capacity(), 7U);
    plugin->formatters.clear();
    EXPECT_EQ(dispatcher.GetFormatters().at(1), nullptr);
}

TEST(DispatcherTest, GetFormatter_IsFetchedFromThePlugInEachTime) {
    Dispatcher dispatcher;
    const auto plugin = ScriptedPlugin::New("one", {}, {FormatterNamed("csv")});
    dispatcher.RegisterPlugin(plugin);
    const auto replacement = FormatterNamed("csv");
    plugin->formatters = {replacement};
    EXPECT_EQ(dispatcher.GetFormatter("csv"), replacement);
}

TEST(DispatcherTest, ResetRegistrations_EmptiesThePlugInListOnly) {
    Dispatcher dispatcher;
    dispatcher.RegisterPlugin(ScriptedPlugin::New("one", RegisterExtra, {FormatterNamed("csv")}));
    dispatcher.ResetRegistrations();
    EXPECT_THAT(dispatcher.GetPluginNames(), testing::IsEmpty());
    EXPECT_TRUE(dispatcher.HasFormatter("xml"));
    EXPECT_TRUE(dispatcher.HasFormatter("csv"));
    EXPECT_TRUE(HasExtra(dispatcher));
}

TEST(DispatcherTest, ResetRegistrations_FormattersKeepTheirNames) {
    Dispatcher dispatcher;
    dispatcher.RegisterPlugin(ScriptedPlugin::New("one", {}, {FormatterNamed("csv")}));
    dispatcher.ResetRegistrations();
    const auto plugin = ScriptedPlugin::New("two", {}, {FormatterNamed("csv")});
    EXPECT_EQ(ThrownBy([&] { dispatcher.RegisterPlugin(plugin); }),
              "Error while trying to register the plugin two  this plugin has a formatter csv that "
              "was already registered from the plugin one  The functionality in two will not be "
              "available until this issue is resolved.");
}

/// Writes a word into a log at the end of its life.
class Farewell {
  public:
    Farewell(std::vector<std::string>& log, std::string word) : log_(log), word_(std::move(word)) {}

    Farewell(const Farewell&) = delete;
    Farewell& operator=(const Farewell&) = delete;

    ~Farewell() { log_.push_back(word_); }

  private:
    std::vector<std::string>& log_;
    std::string word_;
};

std::shared_ptr<ScriptedPlugin> DepartingPlugin(std::vector<std::string>& log,
                                                const std::string& name, bool fails) {
    const auto farewell = std::make_shared<Farewell>(log, name);
    return ScriptedPlugin::New(name, [farewell, name, fails, &log](auto root) {
        const auto leaving = std::make_shared<Farewell>(log, name + " command");
        root->RegisterNamespaceNode(ScriptedCommand::New([leaving](auto&, auto&) {}), name);
        if (fails) {
            throw CppToolException("refused");
        }
    });
}

TEST(DispatcherTest, Destruction_ReleasesTheTreeBeforeThePlugInsFrontToBack) {
    std::vector<std::string> log;
    {
        Dispatcher dispatcher;
        dispatcher.RegisterPlugin(DepartingPlugin(log, "one", false));
        dispatcher.RegisterPlugin(DepartingPlugin(log, "two", false));
        dispatcher.ResetRegistrations();
        EXPECT_THAT(log, testing::IsEmpty());
    }
    ASSERT_EQ(log.size(), 4U);
    EXPECT_THAT(std::vector(log.begin(), log.begin() + 2),
                testing::UnorderedElementsAre("one command", "two command"));
    EXPECT_THAT(std::vector(log.begin() + 2, log.end()), ElementsAre("one", "two"));
}

TEST(DispatcherTest, Destruction_AFailedPlugInOutlivesWhatItRegisteredToo) {
    std::vector<std::string> log;
    {
        Dispatcher dispatcher;
        EXPECT_THROW(dispatcher.RegisterPlugin(DepartingPlugin(log, "one", true)),
                     CppToolException);
        EXPECT_THAT(log, testing::IsEmpty());
    }
    EXPECT_THAT(log, ElementsAre("one command", "one"));
}

} // namespace
