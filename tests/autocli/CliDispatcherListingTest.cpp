#include "CliDispatcherFixture.h"

#include <CppTools/autocli/Namespace.h>
#include <CppTools/metaobj/MetaList.h>
#include <CppTools/metaobj/MetaStruct.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <string>

using CppTools::AutoCli::CliDispatcher;
using CppTools::AutoCli::Namespace;
using CppTools::MetaObj::MetaList;
using CppTools::MetaObj::MetaStruct;
using CppTools::MetaObj::MetaType;
using testing::ElementsAre;
using TestSupport::ListingHead;
using TestSupport::PrintedBy;

namespace {

constexpr const char* kTandrilDescription =
    "Commands that operate on the tandril system itself allowing users to get additional "
    "information.";

std::string RootListing(const std::string& dispatcherName) {
    return ListingHead(dispatcherName, "") + "Available Namespaces: \n\nsystem   The system.\n" +
           "tandril  " + kTandrilDescription + "\n\nAvailable Commands: \n\n\n";
}

std::string SystemListing() {
    return ListingHead("tandril", " system") +
           "Available Namespaces: \n\n\n"
           "Available Commands: \n\ncount  Counts things.\necho   Repeats.\nfail   Fails.\n\n";
}

class CliDispatcherListingTest : public TestSupport::CliDispatcherFixture {};

TEST_F(CliDispatcherListingTest, NoPath_ListsTheRootAndFails) {
    EXPECT_FALSE(Handle({}));
    EXPECT_EQ(printed.out, RootListing("tandril"));
    EXPECT_EQ(printed.err, "");
}

TEST_F(CliDispatcherListingTest, Namespace_IsListedAndFails) {
    EXPECT_FALSE(Handle({"system"}));
    EXPECT_EQ(printed.out, SystemListing());
    EXPECT_EQ(printed.err, "");
}

TEST_F(CliDispatcherListingTest, InnerNamespace_ShowsItsWholePath) {
    EXPECT_FALSE(Handle({"tandril", "command"}));
    EXPECT_EQ(printed.out, ListingHead("tandril", " tandril command") +
                               "Available Namespaces: \n\n\nAvailable Commands: \n\n"
                               "list  List all of the tandril commands.\n\n");
}

TEST_F(CliDispatcherListingTest, EmptyNamespace_ListsNothing) {
    dispatcher.GetRootNamespace()->SubNamespace("empty");
    EXPECT_FALSE(Handle({"empty"}));
    EXPECT_EQ(printed.out, ListingHead("tandril", " empty") +
                               "Available Namespaces: \n\n\nAvailable Commands: \n\n\n");
}

TEST_F(CliDispatcherListingTest, CommandOptionsBehindANamespace_AreNotLookedAt) {
    EXPECT_FALSE(Handle({"system", "--speed", "a", "b"}));
    EXPECT_EQ(printed.out, SystemListing());
    EXPECT_EQ(printed.err, "");
}

TEST_F(CliDispatcherListingTest, DispatcherErrors_FollowTheListing) {
    EXPECT_FALSE(Handle({"--foo"}));
    EXPECT_EQ(printed.out, RootListing("tandril"));
    EXPECT_EQ(printed.err, "Errors: \nUnknown dispatcher parameter: foo\n");
    EXPECT_FALSE(Handle({"--foo=1", "system"}));
    EXPECT_EQ(printed.out, SystemListing());
    EXPECT_EQ(printed.err, "Errors: \nUnknown dispatcher parameter: foo\n");
}

TEST_F(CliDispatcherListingTest, Formatter_HasNoEffect) {
    EXPECT_FALSE(Handle({"--formatter=probe", "--format-param=a=1", "system"}));
    EXPECT_EQ(printed.out, SystemListing());
    EXPECT_FALSE(Handle({"--formatter=nope", "system"}));
    EXPECT_EQ(printed.out, SystemListing());
    EXPECT_EQ(printed.err, "");
}

TEST_F(CliDispatcherListingTest, ScreenWidth_WrapsTheDescriptions) {
    EXPECT_FALSE(Handle({"--screen-width=40"}));
    EXPECT_EQ(printed.out, ListingHead("tandril", "") + "Available Namespaces: \n\n"
                                                        "system   The system.\n"
                                                        "tandril  Commands that operate on the \n"
                                                        "         tandril system itself allowing \n"
                                                        "         users to get additional \n"
                                                        "         information.\n"
                                                        "\nAvailable Commands: \n\n\n");
}

TEST_F(CliDispatcherListingTest, PrintChildren_OnANewDispatcher_NamesNobody) {
    CliDispatcher fresh;
    printed = PrintedBy([&] { fresh.PrintChildren(fresh.GetRootNamespace(), output); });
    EXPECT_EQ(printed.out, ListingHead("", "") + "Available Namespaces: \n\ntandril  " +
                               kTandrilDescription + "\n\nAvailable Commands: \n\n\n");
}

TEST_F(CliDispatcherListingTest, PrintChildren_LeavesTheRecordInTheOutput) {
    Handle({"system"});
    PrintedBy([&] {
        dispatcher.PrintChildren(dispatcher.GetRootNamespace()->SubNamespace("system"), output);
    });
    const auto record = std::dynamic_pointer_cast<MetaStruct>(output->GetRootObject());
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->GetTypeName(), "TandrilCommandPrint");
    EXPECT_EQ(record->ToString(),
              "{'Dispatcher' => 'tandril', 'NamespaceNodes' => '"
              "{'Description' => 'Counts things.', 'Name' => 'count', 'Type' => 'Command', }, "
              "{'Description' => 'Repeats.', 'Name' => 'echo', 'Type' => 'Command', }, "
              "{'Description' => 'Fails.', 'Name' => 'fail', 'Type' => 'Command', }"
              "', 'Path' => 'system', }");
}

TEST_F(CliDispatcherListingTest, PrintChildren_RecordHasTheKindsOfTheContract) {
    const auto node = dispatcher.GetRootNamespace()->SubNamespace("empty");
    PrintedBy([&] { dispatcher.PrintChildren(node, output); });
    const auto record = std::dynamic_pointer_cast<MetaStruct>(output->GetRootObject());
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->GetFieldType("Dispatcher"), MetaType::String);
    const auto path = std::dynamic_pointer_cast<MetaList>(record->GetField("Path"));
    ASSERT_NE(path, nullptr);
    EXPECT_EQ(path->GetListType(), MetaType::String);
    const auto nodes = std::dynamic_pointer_cast<MetaList>(record->GetField("NamespaceNodes"));
    ASSERT_NE(nodes, nullptr);
    EXPECT_EQ(nodes->GetCount(), 0U);
    EXPECT_EQ(nodes->GetListType(), MetaType::Struct);
    EXPECT_EQ(nodes->GetListStructure()->GetTypeName(), "NamespaceNode");
    EXPECT_THAT(nodes->GetListStructure()->GetFieldNames(),
                ElementsAre("Description", "Name", "Type"));
}

/// A node that is neither a namespace nor a command.
class OddNode : public Namespace {
  public:
    explicit OddNode(int type) : type_(type) {}

    int GetType() override { return type_; }

  private:
    int type_;
};

TEST_F(CliDispatcherListingTest, PrintChildren_NodesOfOtherTypes_AreUnknownAndInNoTable) {
    const auto node = dispatcher.GetRootNamespace()->SubNamespace("odd");
    node->RegisterNamespaceNode(std::make_shared<OddNode>(0), "zero");
    node->RegisterNamespaceNode(std::make_shared<OddNode>(3), "three");
    node->SubNamespace("real")->SetDescription("Real.");
    Handle({});
    printed = PrintedBy([&] { dispatcher.PrintChildren(node, output); });
    EXPECT_EQ(output->GetRootObject()->ToString(),
              "{'Dispatcher' => 'tandril', 'NamespaceNodes' => '"
              "{'Description' => 'Real.', 'Name' => 'real', 'Type' => 'Namespace', }, "
              "{'Description' => '', 'Name' => 'three', 'Type' => 'Unknown', }, "
              "{'Description' => '', 'Name' => 'zero', 'Type' => 'Unknown', }"
              "', 'Path' => 'odd', }");
    EXPECT_EQ(printed.out, ListingHead("tandril", " odd") +
                               "Available Namespaces: \n\nreal  Real.\n\n"
                               "Available Commands: \n\n\n");
}

TEST_F(CliDispatcherListingTest, NextLine_IsNamedAfterItsOwnDispatcher) {
    CppTools::AutoCli::OptionParser parser("mytool");
    parser.ParseVector({});
    printed = PrintedBy([&] { dispatcher.HandleOptions(parser, false); });
    EXPECT_EQ(printed.out, RootListing("mytool"));
    Handle({});
    EXPECT_EQ(printed.out, RootListing("tandril"));
}

} // namespace
