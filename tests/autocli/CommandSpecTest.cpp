#include <CppTools/autocli/CommandSpec.h>

#include <CppTools/autocli/Command.h>
#include <CppTools/autocli/Dispatcher.h>
#include <CppTools/autocli/Namespace.h>
#include <CppTools/autocli/RootNamespace.h>
#include <tests/support/ScriptedCommand.h>
#include <tests/support/SpecOnlyCommand.h>
#include <tests/support/Thrown.h>
#include <tests/support/VirtualSlot.h>
#include <tests/support/VirtualTableSize.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <list>
#include <memory>
#include <stdexcept>
#include <string>
#include <type_traits>

using CppTools::AutoCli::CommandSpec;
using CppTools::AutoCli::Namespace;
using CppTools::AutoCli::NamespaceNode;
using CppTools::AutoCli::RootNamespace;
using CppTools::CallSpec::InputSpec;
using CppTools::CallSpec::ParameterSpec;
using CppTools::CallSpec::ParameterType;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using TestSupport::OptionalParameter;
using TestSupport::ScriptedCommand;
using TestSupport::ThrownBy;

namespace {

using Node = std::shared_ptr<NamespaceNode>;
using StringForm = void (CommandSpec::*)(Node, std::string);
using PointerForm = void (CommandSpec::*)(Node, const char*);

/// The command "system list" in a tree.
class CommandSpecTest : public testing::Test {
  protected:
    CommandSpecTest() { root->SubNamespace("system")->RegisterNamespaceNode(command, "list"); }

    std::vector<std::string> ParameterNames() const {
        std::vector<std::string> names;
        for (const auto& parameter : command->GetInputSpec()->GetParameters()) {
            names.push_back(parameter->GetName());
        }
        return names;
    }

    const std::shared_ptr<RootNamespace> root = RootNamespace::New(nullptr);
    const std::shared_ptr<ScriptedCommand> command = ScriptedCommand::New();
};

TEST_F(CommandSpecTest, VirtualOperations_KeepTheirSlots) {
    using TestSupport::VirtualSlotOf;
    EXPECT_EQ(VirtualSlotOf(&CommandSpec::GetInputSpec), 2);
    EXPECT_EQ(VirtualSlotOf(&CommandSpec::GetOutputSpec), 3);
    EXPECT_EQ(VirtualSlotOf(&CommandSpec::GetThis), 4);
    EXPECT_EQ(VirtualSlotOf(&CommandSpec::HasNamespaceNode), 5);
    EXPECT_EQ(VirtualSlotOf(&CommandSpec::GetNamespaceNode), 6);
    EXPECT_EQ(VirtualSlotOf(static_cast<StringForm>(&CommandSpec::RegisterNamespaceNode)), 7);
    EXPECT_EQ(VirtualSlotOf(static_cast<PointerForm>(&CommandSpec::RegisterNamespaceNode)), 8);
    EXPECT_EQ(VirtualSlotOf(&CommandSpec::ResolveNode), 9);
    EXPECT_EQ(VirtualSlotOf(&CommandSpec::GetDispatcher), 10);
    EXPECT_EQ(VirtualSlotOf(&CommandSpec::SetParent), 11);
    EXPECT_EQ(VirtualSlotOf(&CommandSpec::GetParent), 12);
    EXPECT_EQ(VirtualSlotOf(&CommandSpec::GetType), 13);
    EXPECT_EQ(VirtualSlotOf(&CommandSpec::GetInputSpecInternal), 14);
    EXPECT_EQ(VirtualSlotOf(&CommandSpec::GetOutputSpecInternal), 15);
    EXPECT_EQ(TestSupport::VirtualTableSizeOf<CommandSpec>(), 16);
}

TEST_F(CommandSpecTest, Bases_AreTheCallTargetSpecificationAndTheNode) {
    EXPECT_TRUE((std::is_base_of_v<CppTools::CallSpec::CallTargetSpec, CommandSpec>));
    EXPECT_TRUE((std::is_base_of_v<NamespaceNode, CommandSpec>));
}

TEST_F(CommandSpecTest, NewCommand_HasNoDeclarationsOfItsOwn) {
    const auto fresh = ScriptedCommand::New();
    EXPECT_EQ(fresh->GetName(), "");
    EXPECT_EQ(fresh->GetDescription(), "");
    EXPECT_EQ(fresh->GetParent(), nullptr);
    EXPECT_THAT(fresh->GetExamples(), IsEmpty());
    EXPECT_EQ(fresh->GetDefaultOutputFormatParameters().GetFormatter(), "");
    EXPECT_THAT(fresh->GetDefaultOutputFormatParameters().GetParameters(), IsEmpty());
}

TEST_F(CommandSpecTest, GetInputSpec_AddsTheHelpParameter) {
    command->parameters = {OptionalParameter("alpha", ParameterType::Int),
                           OptionalParameter("zone", ParameterType::String)};
    EXPECT_THAT(ParameterNames(), ElementsAre("alpha", "help", "zone"));
    const auto help = command->GetInputSpec()->FindParameter("help");
    ASSERT_NE(help, nullptr);
    EXPECT_EQ(help->GetType(), static_cast<ParameterType>(2));
    EXPECT_EQ(help->GetShortName(), "h");
    EXPECT_EQ(help->GetDescription(false), "Show the help message.");
    EXPECT_FALSE(help->IsRequired());
    EXPECT_FALSE(help->IsSecret());
    EXPECT_EQ(help->GetConstraint(), nullptr);
}

TEST_F(CommandSpecTest, GetInputSpec_Again_IsTheSameWithOneHelpParameter) {
    const auto first = command->GetInputSpec();
    EXPECT_EQ(command->GetInputSpec(), first);
    EXPECT_THAT(ParameterNames(), ElementsAre("help"));
    EXPECT_EQ(command->inputSpecRequests, 1);
}

TEST_F(CommandSpecTest, InputSpec_IsOnlyBuiltWhenAskedFor) {
    EXPECT_EQ(command->inputSpecRequests, 0);
    EXPECT_EQ(command->outputSpecRequests, 0);
}

TEST_F(CommandSpecTest, GetInputSpec_CommandDeclaresHelpItself_IsRefusedEveryTime) {
    command->parameters = {OptionalParameter("help", ParameterType::Flag)};
    const std::string refusal =
        "Found a duplicate paramater specification for parameter named 'help'";
    EXPECT_EQ(ThrownBy([&] { command->GetInputSpec(); }), refusal);
    EXPECT_EQ(ThrownBy([&] { command->GetInputSpec(); }), refusal);
    EXPECT_EQ(command->inputSpecRequests, 2);
}

TEST_F(CommandSpecTest, GetInputSpec_CommandTakesTheShortNameOfHelp_IsRefused) {
    command->parameters = {OptionalParameter("host", ParameterType::String, "h")};
    EXPECT_EQ(ThrownBy([&] { command->GetInputSpec(); }),
              "Invalid short name specified for --help. The short name -h is already used for "
              "--host");
}

/// Fails to declare its parameters at the first request.
class HesitatingCommand : public ScriptedCommand {
  public:
    std::shared_ptr<InputSpec> GetInputSpecInternal() override {
        if (++requests == 1) {
            throw std::runtime_error("not yet");
        }
        return InputSpec::New();
    }

    int requests = 0;
};

TEST_F(CommandSpecTest, GetInputSpec_DeclarationThrew_IsAskedForAgain) {
    HesitatingCommand hesitating;
    EXPECT_THROW(hesitating.GetInputSpec(), std::runtime_error);
    EXPECT_EQ(hesitating.GetInputSpec()->GetParameters().size(), 1U);
    EXPECT_EQ(hesitating.requests, 2);
}

/// Declares nothing at all.
class SilentCommand : public TestSupport::SpecOnlyCommand {
  public:
    std::shared_ptr<InputSpec> GetInputSpecInternal() override { return nullptr; }

    std::shared_ptr<CppTools::CallSpec::OutputSpec> GetOutputSpecInternal() override {
        return nullptr;
    }
};

TEST_F(CommandSpecTest, Specifications_EmptyDeclarations_AreRefused) {
    SilentCommand silent;
    silent.SetName("silent");
    EXPECT_EQ(ThrownBy([&] { silent.GetInputSpec(); }),
              "The command 'silent' declares no input specification.");
    EXPECT_EQ(ThrownBy([&] { silent.GetOutputSpec(); }),
              "The command 'silent' declares no output specification.");
}

TEST_F(CommandSpecTest, GetOutputSpec_IsAskedForOnceAndKept) {
    const auto first = command->GetOutputSpec();
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(command->GetOutputSpec(), first);
    EXPECT_EQ(command->outputSpecRequests, 1);
}

TEST_F(CommandSpecTest, GetType_IsTwo) {
    EXPECT_EQ(command->GetType(), 2);
}

TEST_F(CommandSpecTest, Registration_GivesNamePathAndParent) {
    EXPECT_EQ(command->GetName(), "list");
    EXPECT_EQ(command->GetParent(), root->GetNamespaceNode("system"));
    EXPECT_EQ(command->GetPathString('.'), "system.list");
    EXPECT_THAT(command->GetPath(), ElementsAre("system", "list"));
}

TEST_F(CommandSpecTest, SetParent_DoesNotOwnTheParent) {
    Node parent = Namespace::New();
    const std::weak_ptr<NamespaceNode> observer = parent;
    command->SetParent(parent);
    EXPECT_EQ(command->GetParent(), parent);
    parent.reset();
    EXPECT_TRUE(observer.expired());
    EXPECT_EQ(command->GetParent(), nullptr);
}

TEST_F(CommandSpecTest, GetDispatcher_IsThatOfTheParent) {
    CppTools::AutoCli::Dispatcher dispatcher;
    const auto registered = ScriptedCommand::New();
    dispatcher.GetRootNamespace()->RegisterNamespaceNode(registered, "registered");
    EXPECT_EQ(registered->GetDispatcher(), &dispatcher);
}

TEST_F(CommandSpecTest, GetDispatcher_WithoutAParent_IsRefused) {
    const auto loose = ScriptedCommand::New();
    EXPECT_EQ(ThrownBy([&] { loose->GetDispatcher(); }),
              "Invalid state for command with name ''. No parent node has been set.");
    loose->SetName("list");
    EXPECT_EQ(ThrownBy([&] { loose->GetDispatcher(); }),
              "Invalid state for command with name 'list'. No parent node has been set.");
}

TEST_F(CommandSpecTest, Children_DoNotExist) {
    EXPECT_FALSE(command->HasNamespaceNode("list"));
    EXPECT_FALSE(command->HasNamespaceNode(""));
    EXPECT_THAT(command->GetNamespaceNodeNames(), IsEmpty());
    EXPECT_THAT(command->GetNamespaceNodes(), IsEmpty());
}

TEST_F(CommandSpecTest, GetNamespaceNodeAndSubNamespace_AreRefused) {
    const std::string refusal =
        "Unable to find a namespace or command with the name 'child' on the command 'system "
        "list'. Commands cannot have sub-commands or sub-namespaces.";
    EXPECT_EQ(ThrownBy([&] { command->GetNamespaceNode("child"); }), refusal);
    EXPECT_EQ(ThrownBy([&] { command->SubNamespace("child"); }), refusal);
}

TEST_F(CommandSpecTest, RegisterNamespaceNode_BothForms_AreRefused) {
    const std::string refusal =
        "Attempt to register a command or namespace 'child' on command 'system list'. Commands "
        "cannot have sub-commands or sub-namespaces.";
    const auto node = Namespace::New();
    EXPECT_EQ(ThrownBy([&] { command->RegisterNamespaceNode(node, "child"); }), refusal);
    EXPECT_EQ(ThrownBy([&] { command->RegisterNamespaceNode(node, std::string("child")); }),
              refusal);
    EXPECT_EQ(ThrownBy([&] { command->RegisterNamespaceNode(nullptr, "child"); }), refusal);
    EXPECT_EQ(node->GetName(), "");
    EXPECT_EQ(node->GetParent(), nullptr);
}

/// Takes registrations after all.
class WelcomingCommand : public TestSupport::SpecOnlyCommand {
  public:
    using CommandSpec::RegisterNamespaceNode;

    void RegisterNamespaceNode(Node, std::string name) override { taken = name; }

    std::string taken;
};

TEST_F(CommandSpecTest, RegisterNamespaceNode_PointerForm_GoesThroughTheVirtualStringForm) {
    WelcomingCommand welcoming;
    welcoming.RegisterNamespaceNode(nullptr, "child");
    EXPECT_EQ(welcoming.taken, "child");
}

TEST_F(CommandSpecTest, ChildOperations_WithoutAParent_FailForThePath) {
    const auto loose = ScriptedCommand::New();
    loose->SetName("loose");
    const std::string refusal = "GetPathString: Invalid state for Namespace Node with the name "
                                "'loose' No parent node has been set";
    EXPECT_EQ(ThrownBy([&] { loose->GetNamespaceNode("child"); }), refusal);
    EXPECT_EQ(ThrownBy([&] { loose->RegisterNamespaceNode(nullptr, "child"); }), refusal);
    std::list<std::string> names{"child"};
    EXPECT_EQ(ThrownBy([&] { loose->ResolveNode(names); }), refusal);
}

TEST_F(CommandSpecTest, ResolveNode_IsRefusedAndLeavesTheNames) {
    std::list<std::string> names{"one", "two"};
    EXPECT_EQ(ThrownBy([&] { command->ResolveNode(names); }),
              "Unable to find a namespace or command with the name 'one two' on the command "
              "'system list'. Commands cannot have sub-commands or sub-namespaces.");
    EXPECT_THAT(names, ElementsAre("one", "two"));
}

TEST_F(CommandSpecTest, ResolveNode_OfNoNames_IsRefusedToo) {
    std::list<std::string> names;
    EXPECT_EQ(ThrownBy([&] { command->ResolveNode(names); }),
              "Unable to find a namespace or command with the name '' on the command 'system "
              "list'. Commands cannot have sub-commands or sub-namespaces.");
}

TEST_F(CommandSpecTest, AddExample_BothForms_KeepTheOrder) {
    command->AddExample("--zone=west", "List the west");
    command->AddExample(std::string("--all"), std::string("List all"));
    EXPECT_THAT(command->GetExamples(),
                ElementsAre(Pair("--zone=west", "List the west"), Pair("--all", "List all")));
}

TEST_F(CommandSpecTest, DefaultOutput_BothForms_SetFormatterAndParameters) {
    command->SetDefaultOutputFormatter("table");
    command->SetDefaultOutputParameter("wrap-last", "true");
    command->SetDefaultOutputParameter(std::string("fields"), std::string("Name"));
    auto format = command->GetDefaultOutputFormatParameters();
    EXPECT_EQ(format.GetFormatter(), "table");
    EXPECT_THAT(format.GetParameters(),
                ElementsAre(Pair("fields", "Name"), Pair("wrap-last", "true")));
    command->SetDefaultOutputFormatter(std::string("xml"));
    command->SetDefaultOutputParameter("fields", "Name,Size");
    format = command->GetDefaultOutputFormatParameters();
    EXPECT_EQ(format.GetFormatter(), "xml");
    EXPECT_EQ(format.GetParameter("fields"), "Name,Size");
}

TEST_F(CommandSpecTest, GetDefaultOutputFormatParameters_IsACopy) {
    command->SetDefaultOutputFormatter("table");
    auto copy = command->GetDefaultOutputFormatParameters();
    copy.SetFormatter("xml");
    copy.SetParameter("fields", "Name");
    EXPECT_EQ(command->GetDefaultOutputFormatParameters().GetFormatter(), "table");
    EXPECT_THAT(command->GetDefaultOutputFormatParameters().GetParameters(), IsEmpty());
}

} // namespace
