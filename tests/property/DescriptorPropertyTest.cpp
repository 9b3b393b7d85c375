#include "RandomTree.h"

#include <tests/support/CommandDescriptor.h>
#include <tests/support/SeededTest.h>
#include <tests/support/TempDirectory.h>
#include <tests/support/Thrown.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

namespace {

using CppTools::AutoCli::NamespaceNode;
using TestSupport::BothSeeds;
using TestSupport::CommandElementAt;
using TestSupport::NamespaceElement;
using TestSupport::Node;
using TestSupport::RandomTree;
using TestSupport::SeedName;
using TestSupport::ThrownBy;

constexpr int kDescriptors = 60;

class DescriptorPropertyTest : public TestSupport::SeededTest {
  protected:
    /// Entries that nothing is wrong with: new ones at the top, below each other, and below what
    /// is there already.
    void AddInnocentEntries() {
        namespaces_ = {NamespaceElement("fresh", "New."), NamespaceElement("fresh.sub", "New.")};
        commands_ = {CommandElementAt("fresh.run"), CommandElementAt("fresh.sub.run"),
                     CommandElementAt("space.unheard0f")};
    }

    void RefuseBecauseOf(std::vector<std::string>& entries, const std::string& entry) {
        AddInnocentEntries();
        entries.push_back(entry);
        Random().Shuffle(commands_);
        if (Random().Chance(50)) {
            Random().Shuffle(namespaces_);
        }
        ExpectRefusedWithoutTrace(Text());
    }

    /// The descriptor of all entries.
    std::string Text() const {
        return TestSupport::Descriptor(TestSupport::NamespacesElement(Joined(namespaces_)) +
                                       TestSupport::CommandsElement(Joined(commands_)));
    }

    /// Loads the entries, and expects them to add these lines to the text of the tree and to
    /// leave all others.
    void ExpectAdded(std::vector<std::string> lines) {
        const auto before = SortedLines();
        tree_.Dispatcher().AddPlugin(directory_.Write("plugin.xml", Text()));
        lines.insert(lines.end(), before.begin(), before.end());
        std::ranges::sort(lines);
        ASSERT_EQ(SortedLines(), lines);
    }

    void ExpectRefusedWithoutTrace(const std::string& descriptor) {
        const std::string before = tree_.Text();
        const std::string file = directory_.Write("plugin.xml", descriptor);
        const std::string message = ThrownBy([&] { tree_.Dispatcher().AddPlugin(file); });
        ASSERT_NE(message, ThrownBy([] {})) << descriptor;
        ASSERT_EQ(tree_.Text(), before) << message;
        ASSERT_EQ(tree_.Dispatcher().GetPluginNames(), std::vector<std::string>{"Internal"});
    }

    static std::string Joined(const std::vector<std::string>& elements) {
        std::string text;
        for (const std::string& element : elements) {
            text += element;
        }
        return text;
    }

    std::vector<std::string> SortedLines() const {
        std::istringstream text(tree_.Text());
        std::vector<std::string> lines;
        for (std::string line; std::getline(text, line);) {
            lines.push_back(line);
        }
        std::ranges::sort(lines);
        return lines;
    }

    RandomTree tree_{Random()};
    std::vector<std::string> namespaces_;
    std::vector<std::string> commands_;

  private:
    TestSupport::TempDirectory directory_;
};

TEST_P(DescriptorPropertyTest, NothingWrong_AddsWhatIsDeclaredAndNothingElse) {
    AddInnocentEntries();
    Random().Shuffle(commands_);
    ExpectAdded({"fresh | 1 | New.", "fresh run | 2 | Runs.", "fresh sub | 1 | New.",
                 "fresh sub run | 2 | Runs.", "space unheard0f | 2 | Runs."});
}

TEST_P(DescriptorPropertyTest, TopNamespaceOfTheSameDescription_IsShared) {
    for (const Node& node : tree_.Nodes()) {
        const bool isTop = node->GetPath().size() == 1;
        if (isTop && node->GetType() == NamespaceNode::kNamespaceType && !HasFatalFailure()) {
            namespaces_ = {NamespaceElement(node->GetName(), node->GetDescription()),
                           NamespaceElement(node->GetName() + ".fresh", "New.")};
            commands_ = {CommandElementAt(node->GetName() + ".fresh.run"),
                         CommandElementAt(node->GetName() + ".unheard0f")};
            Random().Shuffle(commands_);
            ExpectAdded({node->GetName() + " fresh | 1 | New.",
                         node->GetName() + " fresh run | 2 | Runs.",
                         node->GetName() + " unheard0f | 2 | Runs."});
        }
    }
}

TEST_P(DescriptorPropertyTest, CommandAtATakenPath_LeavesNoTrace) {
    for (int round = 0; round < kDescriptors && !HasFatalFailure(); ++round) {
        RefuseBecauseOf(commands_, CommandElementAt(tree_.AnyNode()->GetPathString('.')));
    }
}

TEST_P(DescriptorPropertyTest, NamespaceAtATakenPath_LeavesNoTrace) {
    for (int round = 0; round < kDescriptors && !HasFatalFailure(); ++round) {
        // A namespace at the top may be shared, but not under another description.
        const std::string path = tree_.AnyNode()->GetPathString('.');
        RefuseBecauseOf(namespaces_, NamespaceElement(path, "Of another kind."));
    }
}

TEST_P(DescriptorPropertyTest, InnerNamespaceOfTheSameDescription_LeavesNoTrace) {
    for (const Node& node : tree_.Nodes()) {
        const bool isInner = node->GetPath().size() > 1;
        if (isInner && node->GetType() == NamespaceNode::kNamespaceType && !HasFatalFailure()) {
            RefuseBecauseOf(namespaces_,
                            NamespaceElement(node->GetPathString('.'), node->GetDescription()));
        }
    }
}

TEST_P(DescriptorPropertyTest, EntryBelowACommand_LeavesNoTrace) {
    for (int round = 0; round < kDescriptors && !HasFatalFailure(); ++round) {
        const std::string path = tree_.AnyCommand()->GetPathString('.') + ".below";
        if (Random().Chance(50)) {
            RefuseBecauseOf(namespaces_, NamespaceElement(path, "Homeless."));
        } else {
            RefuseBecauseOf(commands_, CommandElementAt(path));
        }
    }
}

TEST_P(DescriptorPropertyTest, EntryThatCannotBeRead_LeavesNoTrace) {
    for (int round = 0; round < kDescriptors && !HasFatalFailure(); ++round) {
        TestSupport::CommandPieces pieces;
        pieces.attributes = "path=\"fresh.bad\"";
        (Random().Chance(50) ? pieces.execute : pieces.inputSpec) = "";
        RefuseBecauseOf(commands_, pieces.ToElement());
        RefuseBecauseOf(namespaces_, NamespaceElement("fresh.bad", ""));
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, DescriptorPropertyTest, BothSeeds(), SeedName);

} // namespace
