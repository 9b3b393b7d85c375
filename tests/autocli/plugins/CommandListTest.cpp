#include <CppTools/autocli/Namespace.h>
#include <CppTools/autocli/RootNamespace.h>
#include <CppTools/autocli/plugins/CommandList.h>
#include <CppTools/callspec/Input.h>
#include <CppTools/callspec/InputSpec.h>
#include <CppTools/callspec/Output.h>
#include <CppTools/callspec/OutputSpec.h>
#include <CppTools/metaobj/MetaList.h>
#include <CppTools/metaobj/MetaStruct.h>

#include <gtest/gtest.h>
#include <tests/support/NamedRow.h>
#include <tests/support/ScriptedCommand.h>
#include <tests/support/TreeLookup.h>
#include <tests/support/VirtualSlot.h>
#include <tests/support/VirtualTableSize.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace {

using CppTools::AutoCli::CommandList;
using CppTools::AutoCli::Namespace;
using CppTools::AutoCli::NamespaceNode;
using CppTools::AutoCli::RootNamespace;
using CppTools::CallSpec::Input;
using CppTools::CallSpec::Output;
using CppTools::CallSpec::ParameterType;
using CppTools::MetaObj::MetaList;
using CppTools::MetaObj::MetaStruct;
using CppTools::MetaObj::MetaType;
using TestSupport::kRowName;
using TestSupport::NewRoot;
using TestSupport::ScriptedCommand;

using Texts = std::vector<std::string>;

/// A namespace whose kind no walk knows.
class OddNode : public Namespace {
  public:
    int GetType() override { return 7; }
};

class CommandListTest : public testing::Test {
  protected:
    void AddCommand(const std::shared_ptr<NamespaceNode>& parent, const std::string& name,
                    const std::string& description) {
        const auto command = ScriptedCommand::New();
        command->SetDescription(description);
        parent->RegisterNamespaceNode(command, name);
    }

    /// The list's result for the parameters given.
    std::shared_ptr<MetaList> List(const std::map<std::string, std::string>& parameters = {}) {
        const auto input = Input::New();
        for (const auto& [name, value] : parameters) {
            input->AddParameter(name, value);
        }
        input->SetInputSpec(list_->GetInputSpec());
        const auto output = Output::New();
        list_->Execute(input, output);
        EXPECT_EQ(output->GetErrors(), Texts{});
        return std::dynamic_pointer_cast<MetaList>(output->GetRootObject());
    }

    /// "namespace/command/description" of every record.
    Texts Listed(const std::map<std::string, std::string>& parameters = {}) {
        Texts records;
        const auto list = List(parameters);
        for (const auto& item : list->GetObjects()) {
            const auto record = std::dynamic_pointer_cast<MetaStruct>(item);
            records.push_back(record->GetField("Namespace")->ToString() + "/" +
                              record->GetField("Command")->ToString() + "/" +
                              record->GetField("Description")->ToString());
        }
        return records;
    }

    std::shared_ptr<RootNamespace> root_ = NewRoot();
    std::shared_ptr<CommandList> list_ = CommandList::New(root_);
};

/// Commands and namespaces whose names interleave.
class FilledCommandListTest : public CommandListTest {
  protected:
    FilledCommandListTest() {
        AddCommand(root_, "zap", "Top-level last.");
        AddCommand(root_, "about", "Top-level first.");
        const auto network = root_->SubNamespace("network");
        AddCommand(network, "show", "Shows the network.");
        AddCommand(network, "configure", "Sets things up.");
        const auto firewall = network->SubNamespace("firewall");
        AddCommand(firewall, "list", "Lists rules.");
        root_->SubNamespace("empty")->SubNamespace("emptier");
        const auto storage = root_->SubNamespace("storage");
        AddCommand(storage, "list", "Lists disks.");
        storage->RegisterNamespaceNode(list_, "everything");
    }
};

const std::string kSelf = "storage/everything/List all of the tandril commands.";

TEST_F(CommandListTest, Slots_AreThoseOfCommandsAndNoMore) {
    using TestSupport::VirtualSlotOf;
    EXPECT_EQ(VirtualSlotOf(&CommandList::GetInputSpecInternal), 14);
    EXPECT_EQ(VirtualSlotOf(&CommandList::GetOutputSpecInternal), 15);
    EXPECT_EQ(VirtualSlotOf(&CommandList::ExecuteInternal), 17);
    EXPECT_EQ(TestSupport::VirtualTableSizeOf<CommandList>(), 18);
}

TEST_F(CommandListTest, New_SetsItsDescription) {
    EXPECT_EQ(list_->GetDescription(), "List all of the tandril commands.");
}

TEST_F(CommandListTest, New_IsShownAsATableOfItsThreeFields) {
    const auto format = list_->GetDefaultOutputFormatParameters();
    EXPECT_EQ(format.GetFormatter(), "table");
    EXPECT_EQ(
        format.GetParameters(),
        (std::map<std::string, std::string>{
            {"fields:TandrilCommand", "Namespace,Command,Description"}, {"wrap-last", "true"}}));
}

TEST_F(CommandListTest, New_HoldsNoShareOfTheRoot) {
    EXPECT_EQ(root_.use_count(), 1);
}

TEST_F(CommandListTest, New_TheConstructorTakesTheSameRoot) {
    AddCommand(root_, "about", "First.");
    list_ = std::make_shared<CommandList>(root_);
    EXPECT_EQ(Listed(), Texts{"/about/First."});
    EXPECT_EQ(root_.use_count(), 1);
}

struct FilterRow : TestSupport::NamedRow {
    std::string shortName;
    std::string description;
};

class FilterDeclarationTest : public testing::TestWithParam<FilterRow> {};

TEST_P(FilterDeclarationTest, GetInputSpecInternal_DeclaresAnOptionalString) {
    const auto root = NewRoot();
    const auto filter =
        CommandList::New(root)->GetInputSpecInternal()->FindParameter(GetParam().name + "-filter");
    ASSERT_NE(filter, nullptr);
    EXPECT_EQ(filter->GetType(), ParameterType::String);
    EXPECT_EQ(filter->GetShortName(), GetParam().shortName);
    EXPECT_EQ(filter->GetDescription(false), GetParam().description);
    EXPECT_FALSE(filter->IsRequired());
    EXPECT_FALSE(filter->IsSecret());
    EXPECT_EQ(filter->GetConstraint(), nullptr);
}

INSTANTIATE_TEST_SUITE_P(
    Filters, FilterDeclarationTest,
    testing::Values(
        FilterRow{{"namespace"},
                  "n",
                  "Show only commands containing the specified string in their namespace path."},
        FilterRow{
            {"command"}, "c", "Show only commands containing the specified string in their name."},
        FilterRow{{"description"},
                  "d",
                  "Show only commands containing the specified string in their description."}),
    kRowName);

TEST_F(CommandListTest, GetInputSpecInternal_DeclaresThreeParametersAfreshEachTime) {
    EXPECT_EQ(list_->GetInputSpecInternal()->GetParameters().size(), 3U);
    EXPECT_NE(list_->GetInputSpecInternal(), list_->GetInputSpecInternal());
}

TEST_F(CommandListTest, GetOutputSpecInternal_IsAListOfCommandRecords) {
    const auto prototype =
        std::dynamic_pointer_cast<MetaList>(list_->GetOutputSpecInternal()->GetRootObject());
    ASSERT_NE(prototype, nullptr);
    EXPECT_EQ(prototype->GetListType(), MetaType::Struct);
    EXPECT_EQ(prototype->GetCount(), 0U);
    const auto record = prototype->GetListStructure();
    EXPECT_EQ(record->GetTypeName(), "TandrilCommand");
    EXPECT_EQ(record->ToString(), "{'Command' => '', 'Description' => '', 'Namespace' => '', }");
    for (const auto& name : record->GetFieldNames()) {
        EXPECT_EQ(record->GetFieldType(name), MetaType::String) << name;
    }
}

TEST_F(CommandListTest, GetOutputSpecInternal_MakesAFreshPrototypeEachTime) {
    EXPECT_NE(list_->GetOutputSpecInternal()->GetRootObject(),
              list_->GetOutputSpecInternal()->GetRootObject());
}

TEST_F(CommandListTest, Execute_EmptyTreeGivesAnEmptyListOfCommandRecords) {
    const auto result = List();
    ASSERT_NE(result, nullptr);
    EXPECT_EQ(result->GetCount(), 0U);
    EXPECT_EQ(result->GetListType(), MetaType::Struct);
    EXPECT_EQ(result->GetListStructure()->GetTypeName(), "TandrilCommand");
}

TEST_F(CommandListTest, Execute_NodesOfUnknownKindArePassedOverWithAllBelowThem) {
    const auto odd = std::make_shared<OddNode>();
    root_->RegisterNamespaceNode(odd, "odd");
    AddCommand(odd, "hidden", "Never seen.");
    AddCommand(root_, "seen", "Beside it.");
    EXPECT_EQ(Listed(), Texts{"/seen/Beside it."});
}

TEST_F(FilledCommandListTest, Execute_ListsEveryCommandOnceInTreeOrder) {
    EXPECT_EQ(Listed(),
              (Texts{"/about/Top-level first.", "network/configure/Sets things up.",
                     "network.firewall/list/Lists rules.", "network/show/Shows the network.", kSelf,
                     "storage/list/Lists disks.", "/zap/Top-level last."}));
}

TEST_F(FilledCommandListTest, Execute_RecordsAreTandrilCommands) {
    const auto first = std::dynamic_pointer_cast<MetaStruct>(List()->GetItem(0));
    EXPECT_EQ(first->GetTypeName(), "TandrilCommand");
    EXPECT_EQ(first->ToString(),
              "{'Command' => 'about', 'Description' => 'Top-level first.', 'Namespace' => '', }");
}

TEST_F(FilledCommandListTest, Execute_SeesWhatWasRegisteredSinceItWasMade) {
    const auto before = Listed().size();
    AddCommand(root_->SubNamespace("late"), "comer", "New.");
    EXPECT_EQ(Listed().size(), before + 1);
}

struct NarrowingRow : TestSupport::NamedRow {
    std::map<std::string, std::string> filters;
    Texts records;
};

class CommandListFilterTest : public FilledCommandListTest,
                              public testing::WithParamInterface<NarrowingRow> {};

TEST_P(CommandListFilterTest, Execute_KeepsWhatPassesAllFilters) {
    EXPECT_EQ(Listed(GetParam().filters), GetParam().records);
}

INSTANTIATE_TEST_SUITE_P(
    Filters, CommandListFilterTest,
    testing::Values(
        NarrowingRow{{"CommandIsASubstring"},
                     {{"command-filter", "ist"}},
                     {"network.firewall/list/Lists rules.", "storage/list/Lists disks."}},
        NarrowingRow{{"CommandIsCaseSensitive"}, {{"command-filter", "LIST"}}, {}},
        NarrowingRow{{"CommandIsNoPattern"}, {{"command-filter", "l.st"}}, {}},
        NarrowingRow{{"CommandLooksAtTheNameAlone"}, {{"command-filter", "network"}}, {}},
        NarrowingRow{{"NamespaceAtAnyDepth"},
                     {{"namespace-filter", "network"}},
                     {"network/configure/Sets things up.", "network.firewall/list/Lists rules.",
                      "network/show/Shows the network."}},
        NarrowingRow{{"NamespaceIsTheDottedPath"},
                     {{"namespace-filter", "work.fire"}},
                     {"network.firewall/list/Lists rules."}},
        NarrowingRow{{"NamespaceDotIsNoPattern"}, {{"namespace-filter", "network.."}}, {}},
        NarrowingRow{{"NamespaceIsCaseSensitive"}, {{"namespace-filter", "Network"}}, {}},
        NarrowingRow{
            {"NamespaceLeavesOutTheCommandsName"}, {{"namespace-filter", "network.show"}}, {}},
        NarrowingRow{{"DescriptionIsASubstring"},
                     {{"description-filter", "Lists"}},
                     {"network.firewall/list/Lists rules.", "storage/list/Lists disks."}},
        NarrowingRow{{"DescriptionIsCaseSensitive"}, {{"description-filter", "lists"}}, {}},
        NarrowingRow{{"DescriptionDotIsNoPattern"}, {{"description-filter", "rule."}}, {}},
        NarrowingRow{{"AllMustPass"},
                     {{"namespace-filter", "network"}, {"command-filter", "list"}},
                     {"network.firewall/list/Lists rules."}},
        NarrowingRow{{"AllThree"},
                     {{"namespace-filter", "storage"},
                      {"command-filter", "list"},
                      {"description-filter", "disks"}},
                     {"storage/list/Lists disks."}},
        NarrowingRow{{"OneThatFailsIsEnough"},
                     {{"namespace-filter", "network"},
                      {"command-filter", "list"},
                      {"description-filter", "disks"}},
                     {}},
        NarrowingRow{{"NothingMatches"}, {{"description-filter", "no such text"}}, {}},
        NarrowingRow{
            {"EmptyFiltersFilterNothing"},
            {{"namespace-filter", ""}, {"command-filter", "list"}, {"description-filter", ""}},
            {"network.firewall/list/Lists rules.", "storage/list/Lists disks."}}),
    kRowName);

TEST_F(FilledCommandListTest, Execute_AFilterThatMatchesNothingGivesAnEmptyList) {
    const auto result = List({{"command-filter", "nothing"}});
    ASSERT_NE(result, nullptr);
    EXPECT_EQ(result->GetCount(), 0U);
}

TEST_F(FilledCommandListTest, Execute_FiltersAreKnownByTheirShortNamesToo) {
    EXPECT_EQ(Listed({{"n", "storage"}, {"c", "every"}, {"d", "tandril"}}), Texts{kSelf});
}

} // namespace
