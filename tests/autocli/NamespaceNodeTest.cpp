#include <CppTools/autocli/NamespaceNode.h>

#include <CppTools/autocli/Namespace.h>
#include <CppTools/autocli/RootNamespace.h>
#include <tests/support/ScriptedCommand.h>
#include <tests/support/Thrown.h>
#include <tests/support/VirtualSlot.h>
#include <tests/support/VirtualTableSize.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <list>
#include <memory>
#include <string>
#include <vector>

using CppTools::AutoCli::Namespace;
using CppTools::AutoCli::NamespaceNode;
using CppTools::AutoCli::RootNamespace;
using testing::ElementsAre;
using testing::IsEmpty;
using TestSupport::ScriptedCommand;
using TestSupport::ThrownBy;

namespace {

using Node = std::shared_ptr<NamespaceNode>;
using Names = std::list<std::string>;

std::string NameMessage(const std::string& name) {
    return "Invalid name for namespace '" + name +
           "', must be a name consisting of letters and numbers and must conform to 'camel' "
           "casing.";
}

/// A tree of the root with the namespace "system", its sub-namespace "network" and the commands
/// "system list" and "system network list".
class NamespaceNodeTest : public testing::Test {
  protected:
    NamespaceNodeTest() {
        root->RegisterNamespaceNode(system, "system");
        system->RegisterNamespaceNode(network, "network");
        system->RegisterNamespaceNode(list, "list");
        network->RegisterNamespaceNode(deepList, "list");
    }

    const std::shared_ptr<RootNamespace> root = RootNamespace::New(nullptr);
    const std::shared_ptr<Namespace> system = Namespace::New();
    const std::shared_ptr<Namespace> network = Namespace::New();
    const std::shared_ptr<ScriptedCommand> list = ScriptedCommand::New();
    const std::shared_ptr<ScriptedCommand> deepList = ScriptedCommand::New();
};

TEST_F(NamespaceNodeTest, Types_AreTheNumbersOfTheInterface) {
    EXPECT_EQ(NamespaceNode::kRootType, 0);
    EXPECT_EQ(NamespaceNode::kNamespaceType, 1);
    EXPECT_EQ(NamespaceNode::kCommandType, 2);
}

TEST_F(NamespaceNodeTest, VirtualOperations_KeepTheirSlots) {
    using TestSupport::VirtualSlotOf;
    using StringForm = void (NamespaceNode::*)(Node, std::string);
    using PointerForm = void (NamespaceNode::*)(Node, const char*);
    EXPECT_EQ(VirtualSlotOf(&NamespaceNode::GetThis), 2);
    EXPECT_EQ(VirtualSlotOf(&NamespaceNode::GetType), 3);
    EXPECT_EQ(VirtualSlotOf(&NamespaceNode::GetPath), 4);
    EXPECT_EQ(VirtualSlotOf(&NamespaceNode::GetPathString), 5);
    EXPECT_EQ(VirtualSlotOf(&NamespaceNode::HasNamespaceNode), 6);
    EXPECT_EQ(VirtualSlotOf(&NamespaceNode::GetNamespaceNodeNames), 7);
    EXPECT_EQ(VirtualSlotOf(&NamespaceNode::GetNamespaceNodes), 8);
    EXPECT_EQ(VirtualSlotOf(&NamespaceNode::GetNamespaceNode), 9);
    EXPECT_EQ(VirtualSlotOf(static_cast<StringForm>(&NamespaceNode::RegisterNamespaceNode)), 10);
    EXPECT_EQ(VirtualSlotOf(static_cast<PointerForm>(&NamespaceNode::RegisterNamespaceNode)), 11);
    EXPECT_EQ(VirtualSlotOf(&NamespaceNode::ResolveNode), 12);
    EXPECT_EQ(VirtualSlotOf(&NamespaceNode::SubNamespace), 13);
    EXPECT_EQ(VirtualSlotOf(&NamespaceNode::GetDispatcher), 14);
    EXPECT_EQ(VirtualSlotOf(&NamespaceNode::SetParent), 15);
    EXPECT_EQ(VirtualSlotOf(&NamespaceNode::GetParent), 16);
    EXPECT_EQ(TestSupport::VirtualTableSizeOf<NamespaceNode>(), 17);
}

TEST_F(NamespaceNodeTest, SetName_ValidName_IsStored) {
    const auto node = Namespace::New();
    node->SetName("fooBar2");
    EXPECT_EQ(node->GetName(), "fooBar2");
}

TEST_F(NamespaceNodeTest, SetName_InvalidName_IsRefusedAndTheOldNameStays) {
    const auto node = Namespace::New();
    node->SetName("first");
    EXPECT_EQ(ThrownBy([&] { node->SetName("foo-bar"); }), NameMessage("foo-bar"));
    EXPECT_EQ(ThrownBy([&] { node->SetName(""); }), NameMessage(""));
    EXPECT_EQ(node->GetName(), "first");
}

TEST_F(NamespaceNodeTest, SetName_OfACommand_RefusesWithTheSameText) {
    EXPECT_EQ(ThrownBy([&] { ScriptedCommand::New()->SetName("FooBar"); }), NameMessage("FooBar"));
}

TEST_F(NamespaceNodeTest, SetDescription_BothForms_AreStoredAsTheyAre) {
    const auto node = Namespace::New();
    node->SetDescription("Free text, with blanks.");
    EXPECT_EQ(node->GetDescription(), "Free text, with blanks.");
    node->SetDescription(std::string("Another\ntext"));
    EXPECT_EQ(node->GetDescription(), "Another\ntext");
}

TEST_F(NamespaceNodeTest, Register_Node_GetsNameAndParentAndIsFound) {
    EXPECT_EQ(system->GetName(), "system");
    EXPECT_EQ(system->GetParent(), root);
    EXPECT_TRUE(root->HasNamespaceNode("system"));
    EXPECT_EQ(root->GetNamespaceNode("system"), system);
}

TEST_F(NamespaceNodeTest, Register_StringAndPointerForm_DoTheSame) {
    root->RegisterNamespaceNode(Namespace::New(), std::string("byString"));
    root->RegisterNamespaceNode(Namespace::New(), "byPointer");
    EXPECT_THAT(root->GetNamespaceNodeNames(), ElementsAre("byPointer", "byString", "system"));
}

/// Counts the registrations that reach the string form.
class CountingNamespace : public Namespace {
  public:
    using Namespace::RegisterNamespaceNode;

    void RegisterNamespaceNode(Node node, std::string name) override {
        ++registrations;
        Namespace::RegisterNamespaceNode(std::move(node), std::move(name));
    }

    int registrations = 0;
};

TEST_F(NamespaceNodeTest, Register_PointerForm_GoesThroughTheVirtualStringForm) {
    const auto counting = std::make_shared<CountingNamespace>();
    counting->RegisterNamespaceNode(Namespace::New(), "child");
    EXPECT_EQ(counting->registrations, 1);
    EXPECT_TRUE(counting->HasNamespaceNode("child"));
}

TEST_F(NamespaceNodeTest, Register_TakenNameInANamespace_IsRefusedAndTheFirstStays) {
    const auto second = Namespace::New();
    EXPECT_EQ(ThrownBy([&] { network->RegisterNamespaceNode(second, "list"); }),
              "Duplicate registration in namespace system network attempt to register two objects "
              "with name list");
    EXPECT_EQ(network->GetNamespaceNode("list"), deepList);
    EXPECT_EQ(second->GetName(), "");
    EXPECT_EQ(second->GetParent(), nullptr);
}

TEST_F(NamespaceNodeTest, Register_TakenNameInTheRoot_NamesAnEmptyPath) {
    EXPECT_EQ(ThrownBy([&] { root->RegisterNamespaceNode(Namespace::New(), "system"); }),
              "Duplicate registration in namespace  attempt to register two objects with name "
              "system");
}

TEST_F(NamespaceNodeTest, Register_EmptyNode_IsRefused) {
    EXPECT_EQ(ThrownBy([&] { network->RegisterNamespaceNode(nullptr, "extra"); }),
              "Null namespace node named 'extra' passed to namespace system network");
    EXPECT_EQ(ThrownBy([&] { root->RegisterNamespaceNode(nullptr, "extra"); }),
              "Null namespace node named 'extra' passed to namespace ");
    EXPECT_FALSE(network->HasNamespaceNode("extra"));
}

TEST_F(NamespaceNodeTest, Register_EmptyNodeUnderATakenName_IsADuplicateFirst) {
    EXPECT_EQ(ThrownBy([&] { system->RegisterNamespaceNode(nullptr, "list"); }),
              "Duplicate registration in namespace system attempt to register two objects with "
              "name list");
}

TEST_F(NamespaceNodeTest, Register_EmptyNodeUnderAnInvalidName_IsANullNodeFirst) {
    EXPECT_EQ(ThrownBy([&] { system->RegisterNamespaceNode(nullptr, "Extra"); }),
              "Null namespace node named 'Extra' passed to namespace system");
}

/// Claims to have a child of every name.
class FullNamespace : public Namespace {
  public:
    bool HasNamespaceNode(const std::string&) override { return true; }
};

TEST_F(NamespaceNodeTest, Register_TakenAndInvalidName_IsADuplicateFirst) {
    const auto full = std::make_shared<FullNamespace>();
    root->RegisterNamespaceNode(full, "full");
    EXPECT_EQ(ThrownBy([&] { full->RegisterNamespaceNode(Namespace::New(), std::string("No")); }),
              "Duplicate registration in namespace full attempt to register two objects with name "
              "No");
}

TEST_F(NamespaceNodeTest, Register_InvalidName_LeavesNodeUnnamedParentlessAndUnregistered) {
    const auto node = Namespace::New();
    EXPECT_EQ(ThrownBy([&] { system->RegisterNamespaceNode(node, "List"); }), NameMessage("List"));
    EXPECT_EQ(node->GetName(), "");
    EXPECT_EQ(node->GetParent(), nullptr);
    EXPECT_THAT(system->GetNamespaceNodeNames(), ElementsAre("list", "network"));
}

TEST_F(NamespaceNodeTest, Register_NodeThatRefusesAParent_IsNoChild) {
    EXPECT_EQ(
        ThrownBy([&] { system->RegisterNamespaceNode(RootNamespace::New(nullptr), "inner"); }),
        "Error, Root namespace cannot be assigned a parent node");
    EXPECT_FALSE(system->HasNamespaceNode("inner"));
}

TEST_F(NamespaceNodeTest, Children_BelongToTheirParent) {
    auto child = Namespace::New();
    const std::weak_ptr<NamespaceNode> observer = child;
    auto parent = Namespace::New();
    parent->RegisterNamespaceNode(child, "child");
    child.reset();
    EXPECT_FALSE(observer.expired());
    parent.reset();
    EXPECT_TRUE(observer.expired());
}

TEST_F(NamespaceNodeTest, ChildLists_AreInAscendingByteOrder) {
    const auto parent = Namespace::New();
    for (const char* name : {"b", "ab", "aB", "a", "a0", "10", "9"}) {
        parent->RegisterNamespaceNode(Namespace::New(), name);
    }
    EXPECT_THAT(parent->GetNamespaceNodeNames(),
                ElementsAre("10", "9", "a", "a0", "aB", "ab", "b"));
    std::vector<std::string> names;
    for (const Node& node : parent->GetNamespaceNodes()) {
        names.push_back(node->GetName());
    }
    EXPECT_EQ(names, parent->GetNamespaceNodeNames());
}

TEST_F(NamespaceNodeTest, ChildLists_WithoutChildren_AreEmpty) {
    EXPECT_THAT(Namespace::New()->GetNamespaceNodeNames(), IsEmpty());
    EXPECT_THAT(Namespace::New()->GetNamespaceNodes(), IsEmpty());
}

TEST_F(NamespaceNodeTest, ChildQuestions_LookAtDirectChildrenOnly) {
    EXPECT_FALSE(root->HasNamespaceNode("network"));
    EXPECT_EQ(root->GetNamespaceNode("network"), nullptr);
    EXPECT_FALSE(root->HasNamespaceNode("syste"));
    EXPECT_FALSE(root->HasNamespaceNode(""));
}

TEST_F(NamespaceNodeTest, ResolveNode_EmptyList_IsAnEmptyPointer) {
    Names names;
    EXPECT_EQ(root->ResolveNode(names), nullptr);
    EXPECT_EQ(network->ResolveNode(names), nullptr);
}

TEST_F(NamespaceNodeTest, ResolveNode_KnownPath_FindsTheNodeAndLeavesTheList) {
    Names one{"system"};
    EXPECT_EQ(root->ResolveNode(one), system);
    EXPECT_THAT(one, ElementsAre("system"));
    Names three{"system", "network", "list"};
    EXPECT_EQ(root->ResolveNode(three), deepList);
    EXPECT_THAT(three, ElementsAre("system", "network", "list"));
}

TEST_F(NamespaceNodeTest, ResolveNode_FromAnInnerNode_StartsThere) {
    Names names{"network", "list"};
    EXPECT_EQ(system->ResolveNode(names), deepList);
}

TEST_F(NamespaceNodeTest, ResolveNode_UnknownFirstName_NamesTheEmptyPathOfTheRoot) {
    Names names{"nothing"};
    EXPECT_EQ(ThrownBy([&] { root->ResolveNode(names); }),
              "Unable to find a command or namespace with the name 'nothing' in namespace ");
    EXPECT_THAT(names, IsEmpty());
}

TEST_F(NamespaceNodeTest, ResolveNode_UnknownInnerName_NamesTheNamespaceAndDropsTheConsumedNames) {
    Names names{"system", "network", "nothing", "further", "on"};
    EXPECT_EQ(ThrownBy([&] { root->ResolveNode(names); }),
              "Unable to find a command or namespace with the name 'nothing' in namespace system "
              "network");
    EXPECT_THAT(names, ElementsAre("further", "on"));
}

TEST_F(NamespaceNodeTest, ResolveNode_NamesBelowACommand_AreRefusedByTheCommand) {
    Names names{"system", "list", "one", "two"};
    EXPECT_EQ(ThrownBy([&] { root->ResolveNode(names); }),
              "Unable to find a namespace or command with the name 'one two' on the command "
              "'system list'. Commands cannot have sub-commands or sub-namespaces.");
    EXPECT_THAT(names, ElementsAre("one", "two"));
}

/// Answers for a child that was never registered.
class VirtualNamespace : public Namespace {
  public:
    Node GetNamespaceNode(const std::string& name) override {
        return name == "made" ? made : Namespace::GetNamespaceNode(name);
    }

    const Node made = Namespace::New();
};

TEST_F(NamespaceNodeTest, ResolveNodeAndSubNamespace_AskGetNamespaceNode) {
    const auto node = std::make_shared<VirtualNamespace>();
    Names names{"made"};
    EXPECT_EQ(node->ResolveNode(names), node->made);
    EXPECT_EQ(node->SubNamespace("made"), node->made);
}

TEST_F(NamespaceNodeTest, SubNamespace_NewName_IsARegisteredNamespace) {
    const Node made = system->SubNamespace("storage");
    EXPECT_EQ(made->GetType(), 1);
    EXPECT_EQ(made->GetPathString(' '), "system storage");
    EXPECT_EQ(system->GetNamespaceNode("storage"), made);
}

TEST_F(NamespaceNodeTest, SubNamespace_SameNameTwice_IsTheSameNode) {
    const Node made = system->SubNamespace("storage");
    EXPECT_EQ(system->SubNamespace("storage"), made);
}

TEST_F(NamespaceNodeTest, SubNamespace_NameOfACommand_IsThatCommand) {
    EXPECT_EQ(system->SubNamespace("list"), list);
}

TEST_F(NamespaceNodeTest, SubNamespace_InvalidName_IsRefusedAndNothingRegistered) {
    EXPECT_EQ(ThrownBy([&] { system->SubNamespace("Storage"); }), NameMessage("Storage"));
    EXPECT_THAT(system->GetNamespaceNodeNames(), ElementsAre("list", "network"));
}

TEST_F(NamespaceNodeTest, GetPath_RunsFromBelowTheRootDownToTheNode) {
    EXPECT_THAT(system->GetPath(), ElementsAre("system"));
    EXPECT_THAT(list->GetPath(), ElementsAre("system", "list"));
    EXPECT_THAT(deepList->GetPath(), ElementsAre("system", "network", "list"));
}

TEST_F(NamespaceNodeTest, GetPathString_JoinsTheNamesWithTheSeparator) {
    EXPECT_EQ(system->GetPathString('.'), "system");
    EXPECT_EQ(deepList->GetPathString('.'), "system.network.list");
    EXPECT_EQ(deepList->GetPathString(' '), "system network list");
}

TEST_F(NamespaceNodeTest, Paths_OfAnUnregisteredNode_AreRefused) {
    const auto node = Namespace::New();
    EXPECT_EQ(ThrownBy([&] { node->GetPath(); }),
              "GetPath: Invalid state for Namespace Node with the name '' No parent node has been "
              "set");
    EXPECT_EQ(ThrownBy([&] { node->GetPathString('.'); }),
              "GetPathString: Invalid state for Namespace Node with the name '' No parent node has "
              "been set");
}

TEST_F(NamespaceNodeTest, Paths_OfANodeWhoseParentIsGone_NameTheNode) {
    auto parent = Namespace::New();
    const auto orphan = Namespace::New();
    parent->RegisterNamespaceNode(orphan, "orphan");
    parent.reset();
    EXPECT_EQ(orphan->GetParent(), nullptr);
    EXPECT_EQ(ThrownBy([&] { orphan->GetPath(); }),
              "GetPath: Invalid state for Namespace Node with the name 'orphan' No parent node has "
              "been set");
    EXPECT_EQ(ThrownBy([&] { orphan->GetPathString('.'); }),
              "GetPathString: Invalid state for Namespace Node with the name 'orphan' No parent "
              "node has been set");
}

TEST_F(NamespaceNodeTest, Paths_BelowAnUnregisteredNode_NameThatNode) {
    const auto top = Namespace::New();
    const auto child = Namespace::New();
    top->RegisterNamespaceNode(child, "child");
    EXPECT_EQ(ThrownBy([&] { child->GetPath(); }),
              "GetPath: Invalid state for Namespace Node with the name '' No parent node has been "
              "set");
}

TEST_F(NamespaceNodeTest, GetThis_IsTheNodeItself) {
    EXPECT_EQ(system->GetThis(), system);
    EXPECT_EQ(root->GetThis(), root);
    EXPECT_EQ(list->GetThis(), list);
}

TEST_F(NamespaceNodeTest, GetThis_OfANodeThatNoSharedPointerHolds_Fails) {
    Namespace node;
    EXPECT_THROW(node.GetThis(), std::bad_weak_ptr);
    RootNamespace lonelyRoot(nullptr);
    EXPECT_THROW(lonelyRoot.GetThis(), std::bad_weak_ptr);
    ScriptedCommand command;
    EXPECT_THROW(command.GetThis(), std::bad_weak_ptr);
}

} // namespace
