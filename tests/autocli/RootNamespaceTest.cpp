#include <CppTools/autocli/RootNamespace.h>

#include <CppTools/autocli/Dispatcher.h>
#include <tests/support/Thrown.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

using CppTools::AutoCli::Dispatcher;
using CppTools::AutoCli::Namespace;
using CppTools::AutoCli::RootNamespace;
using testing::IsEmpty;
using TestSupport::ThrownBy;

namespace {

TEST(RootNamespaceTest, New_IsUnnamedWithoutParentAndPath) {
    const auto root = RootNamespace::New(nullptr);
    EXPECT_EQ(root->GetName(), "");
    EXPECT_EQ(root->GetParent(), nullptr);
    EXPECT_THAT(root->GetPath(), IsEmpty());
    EXPECT_EQ(root->GetPathString('.'), "");
    EXPECT_EQ(root->GetPathString(' '), "");
}

TEST(RootNamespaceTest, GetType_IsZero) {
    EXPECT_EQ(RootNamespace::New(nullptr)->GetType(), 0);
}

TEST(RootNamespaceTest, GetDispatcher_IsTheStoredPointer) {
    Dispatcher dispatcher;
    EXPECT_EQ(RootNamespace::New(&dispatcher)->GetDispatcher(), &dispatcher);
    EXPECT_EQ(RootNamespace::New(nullptr)->GetDispatcher(), nullptr);
}

TEST(RootNamespaceTest, SetParent_IsAlwaysRefused) {
    const auto root = RootNamespace::New(nullptr);
    const std::string refusal = "Error, Root namespace cannot be assigned a parent node";
    EXPECT_EQ(ThrownBy([&] { root->SetParent(Namespace::New()); }), refusal);
    EXPECT_EQ(ThrownBy([&] { root->SetParent(nullptr); }), refusal);
    EXPECT_EQ(root->GetParent(), nullptr);
}

TEST(RootNamespaceTest, Children_KnowTheRootAsTheirParent) {
    const auto root = RootNamespace::New(nullptr);
    EXPECT_EQ(root->SubNamespace("system")->GetParent(), root);
}

} // namespace
