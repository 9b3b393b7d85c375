#include <CppTools/autocli/Namespace.h>

#include <CppTools/autocli/Dispatcher.h>
#include <CppTools/autocli/RootNamespace.h>
#include <tests/support/Thrown.h>
#include <tests/support/VirtualSlot.h>
#include <tests/support/VirtualTableSize.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

using CppTools::AutoCli::Dispatcher;
using CppTools::AutoCli::Namespace;
using CppTools::AutoCli::NamespaceNode;
using CppTools::AutoCli::RootNamespace;
using testing::ElementsAre;
using TestSupport::ThrownBy;

namespace {

using Node = std::shared_ptr<NamespaceNode>;

template <typename Kind>
class NamespaceSlotTest : public testing::Test {};

using Kinds = testing::Types<Namespace, RootNamespace>;
TYPED_TEST_SUITE(NamespaceSlotTest, Kinds);

TYPED_TEST(NamespaceSlotTest, VirtualOperations_KeepTheSlotsOfTheNode) {
    using TestSupport::VirtualSlotOf;
    using StringForm = void (NamespaceNode::*)(Node, std::string);
    using PointerForm = void (NamespaceNode::*)(Node, const char*);
    EXPECT_EQ(VirtualSlotOf(&TypeParam::GetThis), 2);
    EXPECT_EQ(VirtualSlotOf(&TypeParam::GetType), 3);
    EXPECT_EQ(VirtualSlotOf(&TypeParam::GetPath), 4);
    EXPECT_EQ(VirtualSlotOf(&TypeParam::GetPathString), 5);
    EXPECT_EQ(VirtualSlotOf(&TypeParam::HasNamespaceNode), 6);
    EXPECT_EQ(VirtualSlotOf(&TypeParam::GetNamespaceNodeNames), 7);
    EXPECT_EQ(VirtualSlotOf(&TypeParam::GetNamespaceNodes), 8);
    EXPECT_EQ(VirtualSlotOf(&TypeParam::GetNamespaceNode), 9);
    EXPECT_EQ(VirtualSlotOf(static_cast<StringForm>(&TypeParam::RegisterNamespaceNode)), 10);
    EXPECT_EQ(VirtualSlotOf(static_cast<PointerForm>(&TypeParam::RegisterNamespaceNode)), 11);
    EXPECT_EQ(VirtualSlotOf(&TypeParam::ResolveNode), 12);
    EXPECT_EQ(VirtualSlotOf(&TypeParam::SubNamespace), 13);
    EXPECT_EQ(VirtualSlotOf(&TypeParam::GetDispatcher), 14);
    EXPECT_EQ(VirtualSlotOf(&TypeParam::SetParent), 15);
    EXPECT_EQ(VirtualSlotOf(&TypeParam::GetParent), 16);
    EXPECT_EQ(TestSupport::VirtualTableSizeOf<TypeParam>(), 17);
}

TEST(NamespaceTest, New_IsUnnamedUndescribedAndAlone) {
    const auto node = Namespace::New();
    EXPECT_EQ(node->GetName(), "");
    EXPECT_EQ(node->GetDescription(), "");
    EXPECT_EQ(node->GetParent(), nullptr);
    EXPECT_THAT(node->GetNamespaceNodes(), testing::IsEmpty());
    EXPECT_NE(node, Namespace::New());
}

TEST(NamespaceTest, GetType_IsOne) {
    EXPECT_EQ(Namespace::New()->GetType(), 1);
}

TEST(NamespaceTest, SetParent_DoesNotOwnTheParent) {
    const auto node = Namespace::New();
    auto parent = Namespace::New();
    const std::weak_ptr<NamespaceNode> observer = parent;
    node->SetParent(parent);
    EXPECT_EQ(node->GetParent(), parent);
    parent.reset();
    EXPECT_TRUE(observer.expired());
    EXPECT_EQ(node->GetParent(), nullptr);
}

TEST(NamespaceTest, SetParent_Again_Replaces) {
    const auto node = Namespace::New();
    const auto first = Namespace::New();
    const auto second = Namespace::New();
    node->SetParent(first);
    node->SetParent(second);
    EXPECT_EQ(node->GetParent(), second);
    node->SetParent(nullptr);
    EXPECT_EQ(node->GetParent(), nullptr);
}

TEST(NamespaceTest, GetDispatcher_IsTheRootsDispatcher) {
    Dispatcher dispatcher;
    const auto root = RootNamespace::New(&dispatcher);
    EXPECT_EQ(root->SubNamespace("one")->SubNamespace("two")->GetDispatcher(), &dispatcher);
}

TEST(NamespaceTest, GetDispatcher_WithoutAParent_IsRefusedInOneBreath) {
    const auto unnamed = Namespace::New();
    EXPECT_EQ(ThrownBy([&] { unnamed->GetDispatcher(); }),
              "Invalid state for namespace 'no parent has been set while attempting to get "
              "dispathcer reference.");
    const auto named = Namespace::New();
    named->SetName("system");
    EXPECT_EQ(ThrownBy([&] { named->GetDispatcher(); }),
              "Invalid state for namespace 'systemno parent has been set while attempting to get "
              "dispathcer reference.");
}

TEST(NamespaceTest, GetDispatcher_BelowALooseNamespace_NamesThatNamespace) {
    const auto loose = Namespace::New();
    loose->SetName("loose");
    const auto child = loose->SubNamespace("child");
    EXPECT_EQ(ThrownBy([&] { child->GetDispatcher(); }),
              "Invalid state for namespace 'looseno parent has been set while attempting to get "
              "dispathcer reference.");
}

/// Keeps the names that are registered under it.
class RecordingNamespace : public Namespace {
  public:
    using Namespace::RegisterNamespaceNode;

    void RegisterNamespaceNode(Node node, std::string name) override {
        names.push_back(name);
        Namespace::RegisterNamespaceNode(std::move(node), std::move(name));
    }

    std::vector<std::string> names;
};

TEST(NamespaceTest, SubNamespace_NewNode_IsRegisteredThroughTheVirtualOperation) {
    const auto parent = std::make_shared<RecordingNamespace>();
    const Node made = parent->SubNamespace("made");
    EXPECT_EQ(parent->SubNamespace("made"), made);
    EXPECT_THAT(parent->names, ElementsAre("made"));
}

TEST(NamespaceTest, RegisterNamespaceNode_OneNodeInTwoPlaces_BelongsToTheLast) {
    const auto first = Namespace::New();
    const auto second = Namespace::New();
    const auto node = Namespace::New();
    first->RegisterNamespaceNode(node, "early");
    second->RegisterNamespaceNode(node, "late");
    EXPECT_EQ(node->GetName(), "late");
    EXPECT_EQ(node->GetParent(), second);
    EXPECT_EQ(first->GetNamespaceNode("early"), node);
    EXPECT_EQ(second->GetNamespaceNode("late"), node);
}

/// Wants to be alone.
class LonelyNamespace : public Namespace {
  public:
    void SetParent(Node) override { throw CppTools::CppToolException("no parents"); }
};

TEST(NamespaceTest, RegisterNamespaceNode_NodeThatRefusesAParent_WasNamedBefore) {
    const auto parent = Namespace::New();
    const auto lonely = std::make_shared<LonelyNamespace>();
    EXPECT_EQ(ThrownBy([&] { parent->RegisterNamespaceNode(lonely, "inner"); }), "no parents");
    EXPECT_EQ(lonely->GetName(), "inner");
    EXPECT_FALSE(parent->HasNamespaceNode("inner"));
}

TEST(NamespaceTest, ChildLists_AreNoLargerThanTheirChildren) {
    const auto parent = Namespace::New();
    for (const char* name : {"a", "b", "c"}) {
        parent->RegisterNamespaceNode(Namespace::New(), name);
    }
    EXPECT_EQ(parent->GetNamespaceNodeNames().capacity(), 3U);
    EXPECT_EQ(parent->GetNamespaceNodes().capacity(), 3U);
}

} // namespace
