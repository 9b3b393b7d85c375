#include <CppTools/autocli/Namespace.h>

#include <CppTools/autocli/Dispatcher.h>
#include <CppTools/autocli/RootNamespace.h>
#include <tests/support/Thrown.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>

using CppTools::AutoCli::Dispatcher;
using CppTools::AutoCli::Namespace;
using CppTools::AutoCli::NamespaceNode;
using CppTools::AutoCli::RootNamespace;
using TestSupport::ThrownBy;

namespace {

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

} // namespace
