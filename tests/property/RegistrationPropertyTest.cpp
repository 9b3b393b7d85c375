#include "RandomTree.h"

#include <tests/support/ScriptedPlugin.h>
#include <tests/support/SeededTest.h>
#include <tests/support/Thrown.h>
#include <tests/support/TreeLookup.h>

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using CppTools::CppToolException;
using TestSupport::BothSeeds;
using TestSupport::NewRoot;
using TestSupport::Node;
using TestSupport::RandomTree;
using TestSupport::ScriptedFormatter;
using TestSupport::ScriptedPlugin;
using TestSupport::SeedName;
using TestSupport::ThrownBy;

constexpr int kRegistrations = 100;
const std::string kNothingThrown = ThrownBy([] {});

class RegistrationPropertyTest : public TestSupport::SeededTest {
  protected:
    template <typename Call>
    void ExpectRefusedWithoutTrace(Call&& call) {
        const std::string before = tree_.Text();
        const std::string message = ThrownBy(call);
        ASSERT_NE(message, kNothingThrown);
        ASSERT_EQ(tree_.Text(), before) << message;
    }

    /// The same for a plug-in, of which the dispatcher must not remember anything either.
    void ExpectPluginRefusedWithoutTrace(const std::shared_ptr<ScriptedPlugin>& plugin) {
        const auto names = tree_.Dispatcher().GetPluginNames();
        const auto formatters = tree_.Dispatcher().GetFormatters();
        ExpectRefusedWithoutTrace([&] { tree_.Dispatcher().RegisterPlugin(plugin); });
        ASSERT_EQ(tree_.Dispatcher().GetPluginNames(), names);
        ASSERT_EQ(tree_.Dispatcher().GetFormatters(), formatters);
    }

    RandomTree tree_{Random()};
};

TEST_P(RegistrationPropertyTest, TakenName_LeavesTheTreeAndTheNodeAsTheyWere) {
    for (int round = 0; round < kRegistrations && !HasFatalFailure(); ++round) {
        const Node taken = tree_.AnyNode();
        const Node node = tree_.NewNode();
        ExpectRefusedWithoutTrace(
            [&] { taken->GetParent()->RegisterNamespaceNode(node, taken->GetName()); });
        ASSERT_EQ(node->GetName(), "");
        ASSERT_EQ(node->GetParent(), nullptr);
    }
}

TEST_P(RegistrationPropertyTest, IllegalName_LeavesTheTreeAndTheNodeAsTheyWere) {
    for (int round = 0; round < kRegistrations && !HasFatalFailure(); ++round) {
        const Node node = tree_.NewNode();
        ExpectRefusedWithoutTrace(
            [&] { tree_.AnyNamespace()->RegisterNamespaceNode(node, tree_.IllegalName()); });
        ASSERT_EQ(node->GetName(), "");
        ASSERT_EQ(node->GetParent(), nullptr);
    }
}

TEST_P(RegistrationPropertyTest, NoNode_LeavesTheTreeAsItWas) {
    for (int round = 0; round < kRegistrations && !HasFatalFailure(); ++round) {
        ExpectRefusedWithoutTrace([&] {
            tree_.AnyNamespace()->RegisterNamespaceNode(
                nullptr, Random().Chance(50) ? tree_.AnyName() : tree_.IllegalName());
        });
    }
}

TEST_P(RegistrationPropertyTest, UnderACommand_LeavesTheTreeAsItWas) {
    for (int round = 0; round < kRegistrations && !HasFatalFailure(); ++round) {
        ExpectRefusedWithoutTrace(
            [&] { tree_.AnyCommand()->RegisterNamespaceNode(tree_.NewNode(), tree_.AnyName()); });
        ExpectRefusedWithoutTrace([&] { tree_.AnyCommand()->SubNamespace(tree_.AnyName()); });
    }
}

TEST_P(RegistrationPropertyTest, AnotherRoot_LeavesTheTreeAsItWas) {
    for (int round = 0; round < kRegistrations && !HasFatalFailure(); ++round) {
        ExpectRefusedWithoutTrace(
            [&] { tree_.AnyNamespace()->RegisterNamespaceNode(NewRoot(), "unheard0f"); });
    }
}

TEST_P(RegistrationPropertyTest, SubNamespaceOfIllegalName_LeavesTheTreeAsItWas) {
    for (int round = 0; round < kRegistrations && !HasFatalFailure(); ++round) {
        ExpectRefusedWithoutTrace([&] { tree_.AnyNamespace()->SubNamespace(tree_.IllegalName()); });
    }
}

TEST_P(RegistrationPropertyTest, PluginThatThrowsAtOnce_LeavesNoTrace) {
    for (int round = 0; round < kRegistrations && !HasFatalFailure(); ++round) {
        ExpectPluginRefusedWithoutTrace(
            ScriptedPlugin::New("thrower", [](const auto&) { throw CppToolException("no"); },
                                {std::make_shared<ScriptedFormatter>("fresh")}));
    }
}

TEST_P(RegistrationPropertyTest, PluginWithATakenName_LeavesNoTrace) {
    for (int round = 0; round < kRegistrations && !HasFatalFailure(); ++round) {
        const Node taken = tree_.AnyNode();
        ExpectPluginRefusedWithoutTrace(ScriptedPlugin::New("latecomer", [&](const auto&) {
            taken->GetParent()->RegisterNamespaceNode(tree_.NewNode(), taken->GetName());
        }));
    }
}

TEST_P(RegistrationPropertyTest, PluginWithATakenFormatter_LeavesNoTrace) {
    for (int round = 0; round < kRegistrations && !HasFatalFailure(); ++round) {
        ScriptedPlugin::FormatterList offered = {std::make_shared<ScriptedFormatter>("fresh"),
                                                 std::make_shared<ScriptedFormatter>("table"),
                                                 std::make_shared<ScriptedFormatter>("other")};
        Random().Shuffle(offered);
        ExpectPluginRefusedWithoutTrace(ScriptedPlugin::New("rival", {}, offered));
    }
}

TEST_P(RegistrationPropertyTest, PluginThatThrowsLate_LeavesWhatItHadRegisteredAndNothingElse) {
    std::string expected = tree_.Text();
    for (int round = 0; round < kRegistrations; ++round) {
        // The names sort behind all others, so that the lines come last.
        const std::string name = "zz" + std::to_string(1000 + round);
        const auto plugin = ScriptedPlugin::New("halfway", [&](const auto& root) {
            root->RegisterNamespaceNode(RandomTree::NewNamespace(), name);
            throw CppToolException("no");
        });
        ASSERT_NE(ThrownBy([&] { tree_.Dispatcher().RegisterPlugin(plugin); }), kNothingThrown);
        expected += name + " | 1 | \n";
        ASSERT_EQ(tree_.Text(), expected);
    }
}

TEST_P(RegistrationPropertyTest, PluginThatThrowsAForeignException_LeavesNoTrace) {
    const std::string before = tree_.Text();
    const auto plugin =
        ScriptedPlugin::New("stranger", [](const auto&) { throw std::runtime_error("no"); });
    EXPECT_THROW(tree_.Dispatcher().RegisterPlugin(plugin), std::runtime_error);
    EXPECT_EQ(tree_.Text(), before);
    EXPECT_EQ(tree_.Dispatcher().GetPluginNames(), std::vector<std::string>{"Internal"});
}

INSTANTIATE_TEST_SUITE_P(Seeds, RegistrationPropertyTest, BothSeeds(), SeedName);

} // namespace
