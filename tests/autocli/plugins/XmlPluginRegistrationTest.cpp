#include <CppTools/autocli/plugins/CommandList.h>
#include <CppTools/autocli/plugins/ExtensionCommand.h>
#include <CppTools/autocli/plugins/InternalPlugin.h>
#include <CppTools/autocli/plugins/XmlPlugin.h>

#include <gtest/gtest.h>
#include <tests/support/CommandDescriptor.h>
#include <tests/support/NamedRow.h>
#include <tests/support/TempDirectory.h>
#include <tests/support/Thrown.h>
#include <tests/support/TreeLookup.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace {

using CppTools::AutoCli::CommandList;
using CppTools::AutoCli::ExtensionCommand;
using CppTools::AutoCli::InternalPlugin;
using CppTools::AutoCli::NamespaceNode;
using CppTools::AutoCli::RootNamespace;
using CppTools::AutoCli::XmlPlugin;
using TestSupport::CommandElementAt;
using TestSupport::CommandsElement;
using TestSupport::Descriptor;
using TestSupport::kRowName;
using TestSupport::NamedRow;
using TestSupport::NamespaceElement;
using TestSupport::NamespacesElement;
using TestSupport::NewRoot;
using TestSupport::NodeAt;
using TestSupport::TempDirectory;
using TestSupport::ThrownBy;

using Texts = std::vector<std::string>;

std::string Namespaces(const std::string& namespaces) {
    return Descriptor(NamespacesElement(namespaces));
}

std::string Commands(const std::string& commands) {
    return Descriptor(CommandsElement(commands));
}

/// Descriptors registered one after the other in a tree.
class XmlPluginRegistrationTest : public testing::Test {
  protected:
    std::shared_ptr<XmlPlugin> Parsed(const std::string& descriptor) const {
        auto plugin = XmlPlugin::New(directory_.Write("demo.xml", descriptor));
        plugin->Initialize();
        return plugin;
    }

    void Register(const std::string& descriptor) const {
        Parsed(descriptor)->RegisterNamespaces(root_);
    }

    std::string RefusalOf(const std::string& descriptor) const {
        return ThrownBy([&] { Register(descriptor); });
    }

    const TempDirectory directory_;
    const std::shared_ptr<RootNamespace> root_ = NewRoot();
};

TEST_F(XmlPluginRegistrationTest, Register_TopLevelNodesHangUnderTheRoot) {
    Register(Descriptor(NamespacesElement(NamespaceElement("system", "S.")) +
                        CommandsElement(CommandElementAt("run"))));
    EXPECT_EQ(root_->GetNamespaceNodeNames(), (Texts{"run", "system"}));
    EXPECT_EQ(NodeAt(root_, {"run"})->GetParent(), root_);
    EXPECT_EQ(NodeAt(root_, {"run"})->GetType(), NamespaceNode::kCommandType);
}

TEST_F(XmlPluginRegistrationTest, Register_PathsAreDottedAtAnyDepth) {
    Register(Descriptor(NamespacesElement(NamespaceElement("network", "N.") +
                                          NamespaceElement("network.firewall", "F.") +
                                          NamespaceElement("network.firewall.ruleset", "R.")) +
                        CommandsElement(CommandElementAt("network.firewall.ruleset.list"))));
    const auto command =
        NodeAt<ExtensionCommand>(root_, {"network", "firewall", "ruleset", "list"});
    ASSERT_NE(command, nullptr);
    EXPECT_EQ(command->GetPathString('.'), "network.firewall.ruleset.list");
}

TEST_F(XmlPluginRegistrationTest, Register_ThePluginSharesItsNodes) {
    const auto plugin = Parsed(Namespaces(NamespaceElement("system", "S.")));
    plugin->RegisterNamespaces(root_);
    EXPECT_EQ(root_->GetNamespaceNode("system").use_count(), 3);
}

TEST_F(XmlPluginRegistrationTest, Register_CommandsMayLandInNamespacesOfOtherPlugins) {
    Register(Namespaces(NamespaceElement("system", "S.") + NamespaceElement("system.disk", "D.")));
    Register(Commands(CommandElementAt("system.disk.show")));
    EXPECT_NE(NodeAt<ExtensionCommand>(root_, {"system", "disk", "show"}), nullptr);
}

struct DotsRow : NamedRow {
    std::string path;
    std::string message;
};

class XmlPluginDotsTest : public XmlPluginRegistrationTest,
                          public testing::WithParamInterface<DotsRow> {};

TEST_P(XmlPluginDotsTest, Register_EachDotEndsAName) {
    Register(Namespaces(NamespaceElement("top", "T.")));
    EXPECT_EQ(RefusalOf(Namespaces(NamespaceElement(GetParam().path, "N."))), GetParam().message);
    EXPECT_EQ(root_->GetNamespaceNodeNames(), Texts{"top"});
}

const std::string kEmptyName = "Invalid name for namespace '', must be a name consisting of "
                               "letters and numbers and must conform to 'camel' casing.";
const std::string kEmptyParent =
    "Unable to find a command or namespace with the name '' in namespace ";

INSTANTIATE_TEST_SUITE_P(Paths, XmlPluginDotsTest,
                         testing::Values(DotsRow{{"Alone"}, ".", kEmptyName},
                                         DotsRow{{"Two"}, "..", kEmptyParent},
                                         DotsRow{{"Three"}, "...", kEmptyParent},
                                         DotsRow{{"InFront"}, ".new", kEmptyParent},
                                         DotsRow{{"TwoBehind"}, "top..", kEmptyName},
                                         DotsRow{{"TwoBetween"}, "top..new", kEmptyParent + "top"}),
                         kRowName);

TEST_F(XmlPluginRegistrationTest, Register_ADotBehindThePathDoesNotCount) {
    Register(Namespaces(NamespaceElement("top.", "T.") + NamespaceElement("top.new.", "N.")));
    EXPECT_EQ(NodeAt(root_, {"top", "new"})->GetDescription(), "N.");
}

TEST_F(XmlPluginRegistrationTest, Register_TheSameTopLevelNamespaceIsShared) {
    Register(Descriptor(NamespacesElement(NamespaceElement("storage", "Disks.")) +
                        CommandsElement(CommandElementAt("storage.first"))));
    const auto first = root_->GetNamespaceNode("storage");
    Register(Descriptor(NamespacesElement(NamespaceElement("storage", "Disks.")) +
                        CommandsElement(CommandElementAt("storage.second"))));
    EXPECT_EQ(root_->GetNamespaceNode("storage"), first);
    EXPECT_EQ(first->GetNamespaceNodeNames(), (Texts{"first", "second"}));
}

TEST_F(XmlPluginRegistrationTest, Register_ANamespaceOfTheHostCanBeSharedToo) {
    InternalPlugin::New()->RegisterNamespaces(root_);
    const auto tandril = root_->GetNamespaceNode("tandril");
    Register(Descriptor(NamespacesElement(NamespaceElement("tandril", tandril->GetDescription())) +
                        CommandsElement(CommandElementAt("tandril.more"))));
    EXPECT_EQ(root_->GetNamespaceNode("tandril"), tandril);
    EXPECT_EQ(tandril->GetNamespaceNodeNames(), (Texts{"command", "more"}));
}

TEST_F(XmlPluginRegistrationTest, Register_OnlyTopLevelNamespacesAreSharedWithTopLevelOnes) {
    Register(Namespaces(NamespaceElement("disk", "Disks.")));
    Register(
        Namespaces(NamespaceElement("storage", "S.") + NamespaceElement("storage.disk", "Disks.")));
    EXPECT_EQ(NodeAt(root_, {"storage"})->GetNamespaceNodeNames(), Texts{"disk"});
    EXPECT_NE(NodeAt(root_, {"storage", "disk"}), NodeAt(root_, {"disk"}));
}

TEST_F(XmlPluginRegistrationTest, Register_OneDescriptorMayNameATopLevelNamespaceTwice) {
    Register(
        Namespaces(NamespaceElement("storage", "Disks.") + NamespaceElement("storage", "Disks.")));
    EXPECT_EQ(root_->GetNamespaceNodeNames(), Texts{"storage"});
}

TEST_F(XmlPluginRegistrationTest, Register_OnePluginMayServeSeveralTrees) {
    const auto other = NewRoot();
    const auto plugin = Parsed(Namespaces(NamespaceElement("storage", "Disks.")));
    plugin->RegisterNamespaces(root_);
    plugin->RegisterNamespaces(other);
    EXPECT_EQ(root_->GetNamespaceNodeNames(), Texts{"storage"});
    EXPECT_EQ(other->GetNamespaceNodeNames(), Texts{"storage"});
}

/// A descriptor that clashes with what is there: "storage" ("Disks.") with "storage.disk" ("D.")
/// and the command "storage.show", and the command "run".
struct ClashRow : NamedRow {
    std::string descriptor;
    std::string message;
};

class XmlPluginClashTest : public XmlPluginRegistrationTest,
                           public testing::WithParamInterface<ClashRow> {
  protected:
    XmlPluginClashTest() {
        Register(Descriptor(
            NamespacesElement(NamespaceElement("storage", "Disks.") +
                              NamespaceElement("storage.disk", "D.")) +
            CommandsElement(CommandElementAt("storage.show") + CommandElementAt("run"))));
    }
};

TEST_P(XmlPluginClashTest, Register_RefusesBeforeAnythingIsRegistered) {
    const auto storage = root_->GetNamespaceNode("storage");
    const auto run = root_->GetNamespaceNode("run");
    EXPECT_EQ(RefusalOf(GetParam().descriptor), GetParam().message);
    EXPECT_EQ(root_->GetNamespaceNodeNames(), (Texts{"run", "storage"}));
    EXPECT_EQ(root_->GetNamespaceNode("storage"), storage);
    EXPECT_EQ(root_->GetNamespaceNode("run"), run);
    EXPECT_EQ(storage->GetNamespaceNodeNames(), (Texts{"disk", "show"}));
    EXPECT_EQ(NodeAt(root_, {"storage", "disk"})->GetNamespaceNodeNames(), Texts{});
}

INSTANTIATE_TEST_SUITE_P(
    Clashes, XmlPluginClashTest,
    testing::Values(
        ClashRow{{"TopLevelNamespaceDescribedOtherwise"},
                 Namespaces(NamespaceElement("fresh", "F.") +
                            NamespaceElement("storage", "Something else.")),
                 "Duplicate top-level namespaces must have the same description: storage"},
        ClashRow{{"TopLevelNamespaceDescribedAlmostAlike"},
                 Namespaces(NamespaceElement("storage", "Disks")),
                 "Duplicate top-level namespaces must have the same description: storage"},
        ClashRow{
            {"LowerNamespaceEvenIfDescribedAlike"},
            Namespaces(NamespaceElement("fresh", "F.") + NamespaceElement("storage.disk", "D.")),
            "Tandril path is already registered: storage.disk"},
        ClashRow{{"CommandAtACommandsPath"},
                 Descriptor(NamespacesElement(NamespaceElement("fresh", "F.") +
                                              NamespaceElement("storage", "Disks.")) +
                            CommandsElement(CommandElementAt("storage.other") +
                                            CommandElementAt("storage.show"))),
                 "Tandril path is already registered: storage.show"},
        ClashRow{{"CommandAtANamespacesPath"},
                 Commands(CommandElementAt("fresh") + CommandElementAt("storage.disk")),
                 "Tandril path is already registered: storage.disk"},
        ClashRow{
            {"NamespaceAtACommandsPath"},
            Namespaces(NamespaceElement("fresh", "F.") + NamespaceElement("storage.show", "S.")),
            "Tandril path is already registered: storage.show"},
        ClashRow{{"TopLevelCommandAtANamespacesPath"},
                 Commands(CommandElementAt("fresh") + CommandElementAt("storage")),
                 "Tandril path is already registered: storage"},
        ClashRow{{"TopLevelNamespaceAtACommandsPath"},
                 Namespaces(NamespaceElement("fresh", "F.") + NamespaceElement("run", "Runs.")),
                 "Tandril path is already registered: run"},
        ClashRow{{"TopLevelCommandAtACommandsPath"},
                 Commands(CommandElementAt("fresh") + CommandElementAt("run")),
                 "Tandril path is already registered: run"},
        ClashRow{{"PathWithATrailingDotIsThePathItself"},
                 Commands(CommandElementAt("fresh") + CommandElementAt("storage.show.")),
                 "Tandril path is already registered: storage.show."},
        ClashRow{{"ParentIsACommand"},
                 Commands(CommandElementAt("fresh") + CommandElementAt("storage.show.more")),
                 "Unable to find a namespace or command with the name 'more' on the command "
                 "'storage show'. Commands cannot have sub-commands or sub-namespaces."}),
    kRowName);

/// Faults that only show when a node is to be hung into the tree.
struct LateRow : NamedRow {
    std::string descriptor;
    std::string message;
};

class XmlPluginLateRefusalTest : public XmlPluginRegistrationTest,
                                 public testing::WithParamInterface<LateRow> {};

TEST_P(XmlPluginLateRefusalTest, Register_TheTreesOwnErrorReachesTheCaller) {
    EXPECT_EQ(RefusalOf(GetParam().descriptor), GetParam().message);
}

std::string BadName(const std::string& name) {
    return "Invalid name for namespace '" + name +
           "', must be a name consisting of letters and numbers and must conform to 'camel' "
           "casing.";
}

INSTANTIATE_TEST_SUITE_P(
    Faults, XmlPluginLateRefusalTest,
    testing::Values(
        LateRow{
            {"NamespaceName"}, Namespaces(NamespaceElement("Storage", "S.")), BadName("Storage")},
        LateRow{{"CommandName"}, Commands(CommandElementAt("run-it")), BadName("run-it")},
        LateRow{{"OnlyADot"}, Commands(CommandElementAt(".")), BadName("")},
        LateRow{{"ParentNobodyDeclares"},
                Commands(CommandElementAt("ghost.run")),
                "Unable to find a command or namespace with the name 'ghost' in namespace "},
        LateRow{{"LowerParentNobodyDeclares"},
                Descriptor(NamespacesElement(NamespaceElement("storage", "S.")) +
                           CommandsElement(CommandElementAt("storage.ghost.run"))),
                "Unable to find a command or namespace with the name 'ghost' in namespace "
                "storage"},
        LateRow{
            {"ParentDeclaredTooLate"},
            Namespaces(NamespaceElement("storage.disk", "D.") + NamespaceElement("storage", "S.")),
            "Unable to find a command or namespace with the name 'storage' in namespace "},
        LateRow{
            {"EmptyPartInside"},
            Namespaces(NamespaceElement("storage", "S.") + NamespaceElement("storage..disk", "D.")),
            "Unable to find a command or namespace with the name '' in namespace storage"},
        LateRow{{"LeadingDot"},
                Commands(CommandElementAt(".run")),
                "Unable to find a command or namespace with the name '' in namespace "},
        LateRow{{"SamePathTwiceInOneDescriptor"},
                Commands(CommandElementAt("run") + CommandElementAt("run")),
                "Duplicate registration in namespace  attempt to register two objects with name "
                "run"},
        LateRow{{"SameTopLevelNamespaceDescribedTwoWays"},
                Namespaces(NamespaceElement("storage", "S.") + NamespaceElement("storage", "T.")),
                "Duplicate registration in namespace  attempt to register two objects with name "
                "storage"},
        LateRow{{"SameLowerNamespaceTwice"},
                Namespaces(NamespaceElement("storage", "S.") + NamespaceElement("storage.a", "A.") +
                           NamespaceElement("storage.a", "A.")),
                "Duplicate registration in namespace storage attempt to register two objects with "
                "name a"},
        LateRow{{"BelowACommandOfTheSameDescriptor"},
                Commands(CommandElementAt("run") + CommandElementAt("run.more")),
                "Attempt to register a command or namespace 'more' on command 'run'. Commands "
                "cannot have sub-commands or sub-namespaces."},
        LateRow{{"FarBelowACommandOfTheSameDescriptor"},
                Commands(CommandElementAt("run") + CommandElementAt("run.one.two")),
                "Unable to find a namespace or command with the name 'one' on the command 'run'. "
                "Commands cannot have sub-commands or sub-namespaces."}),
    kRowName);

TEST_F(XmlPluginRegistrationTest, Register_WhatStandsBeforeALateFaultStaysRegistered) {
    EXPECT_EQ(RefusalOf(Descriptor(NamespacesElement(NamespaceElement("storage", "S.")) +
                                   CommandsElement(CommandElementAt("storage.show") +
                                                   CommandElementAt("storage.Bad") +
                                                   CommandElementAt("run")))),
              BadName("Bad"));
    EXPECT_EQ(root_->GetNamespaceNodeNames(), Texts{"storage"});
    EXPECT_EQ(NodeAt(root_, {"storage"})->GetNamespaceNodeNames(), Texts{"show"});
}

TEST_F(XmlPluginRegistrationTest, Register_ASharedNamespaceHoldsTheSameInEitherOrder) {
    const auto part = [](const std::string& name) {
        return Descriptor(NamespacesElement(NamespaceElement("storage", "Disks.") +
                                            NamespaceElement("storage." + name, "Part.")) +
                          CommandsElement(CommandElementAt("storage." + name + ".run")));
    };
    for (const auto& [one, other] : {std::pair("a", "b"), std::pair("b", "a")}) {
        SCOPED_TRACE(one);
        const auto root = NewRoot();
        Parsed(part(one))->RegisterNamespaces(root);
        Parsed(part(other))->RegisterNamespaces(root);
        EXPECT_EQ(root->GetNamespaceNodeNames(), Texts{"storage"});
        EXPECT_EQ(NodeAt(root, {"storage"})->GetNamespaceNodeNames(), (Texts{"a", "b"}));
        EXPECT_NE(NodeAt<ExtensionCommand>(root, {"storage", "a", "run"}), nullptr);
        EXPECT_NE(NodeAt<ExtensionCommand>(root, {"storage", "b", "run"}), nullptr);
    }
}

TEST_F(XmlPluginRegistrationTest, Register_TheDescriptorOfAParentHasToComeFirst) {
    const std::string child = Commands(CommandElementAt("storage.run"));
    EXPECT_EQ(RefusalOf(child),
              "Unable to find a command or namespace with the name 'storage' in namespace ");
    Register(Namespaces(NamespaceElement("storage", "S.")));
    Register(child);
    EXPECT_NE(NodeAt<ExtensionCommand>(root_, {"storage", "run"}), nullptr);
}

TEST_F(XmlPluginRegistrationTest, Register_ATrailingDotNamesNoFurtherPart) {
    Register(Namespaces(NamespaceElement("storage.", "S.") + NamespaceElement("storage.a.", "A.")));
    EXPECT_EQ(root_->GetNamespaceNodeNames(), Texts{"storage"});
    EXPECT_EQ(NodeAt(root_, {"storage"})->GetNamespaceNodeNames(), Texts{"a"});
}

TEST_F(XmlPluginRegistrationTest, Register_ASecondTimeInOneTreeIsAClash) {
    const auto plugin = Parsed(Descriptor(NamespacesElement(NamespaceElement("storage", "S.")) +
                                          CommandsElement(CommandElementAt("storage.run"))));
    plugin->RegisterNamespaces(root_);
    EXPECT_EQ(ThrownBy([&] { plugin->RegisterNamespaces(root_); }),
              "Tandril path is already registered: storage.run");
}

TEST_F(XmlPluginRegistrationTest, Register_APathBelowACommandOfTheHostIsRefused) {
    InternalPlugin::New()->RegisterNamespaces(root_);
    EXPECT_EQ(RefusalOf(Commands(CommandElementAt("tandril.command.list.one.two"))),
              "Unable to find a namespace or command with the name 'one' on the command 'tandril "
              "command list'. Commands cannot have sub-commands or sub-namespaces.");
    EXPECT_NE(NodeAt<CommandList>(root_, {"tandril", "command", "list"}), nullptr);
}

} // namespace
