#include <CppTools/autocli/CommandInput.h>

#include <tests/support/VirtualTableSize.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <list>
#include <memory>
#include <string>
#include <type_traits>

using CppTools::AutoCli::CommandInput;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

using Names = std::list<std::string>;

TEST(CommandInputTest, New_IsEmpty) {
    const auto input = CommandInput::New();
    EXPECT_EQ(input->GetDispatcher(), "");
    EXPECT_THAT(input->GetCommandPath(), IsEmpty());
    EXPECT_EQ(input->GetCommandPathString(), "");
    EXPECT_THAT(input->GetParameters(), IsEmpty());
    EXPECT_NE(input, CommandInput::New());
}

TEST(CommandInputTest, Destructor_IsTheOnlyVirtualOperation) {
    EXPECT_TRUE(std::has_virtual_destructor_v<CommandInput>);
    EXPECT_EQ(TestSupport::VirtualTableSizeOf<CommandInput>(), 2);
}

TEST(CommandInputTest, Input_IsItsBase) {
    const std::shared_ptr<CppTools::CallSpec::Input> base = CommandInput::New();
    base->AddParameter("name", "value");
    EXPECT_TRUE(base->HasParameter("name"));
}

TEST(CommandInputTest, SetDispatcher_IsStored) {
    const auto input = CommandInput::New();
    input->SetDispatcher("/usr/bin/tandril");
    EXPECT_EQ(input->GetDispatcher(), "/usr/bin/tandril");
}

TEST(CommandInputTest, SetCommandPath_IsCopied) {
    const auto input = CommandInput::New();
    Names path{"system", "list"};
    input->SetCommandPath(path);
    path.clear();
    EXPECT_THAT(input->GetCommandPath(), ElementsAre("system", "list"));
}

TEST(CommandInputTest, SetCommandPath_Again_Replaces) {
    const auto input = CommandInput::New();
    Names path{"system", "list"};
    input->SetCommandPath(path);
    Names other{"network"};
    input->SetCommandPath(other);
    EXPECT_THAT(input->GetCommandPath(), ElementsAre("network"));
}

TEST(CommandInputTest, GetCommandPath_IsTheStoredList) {
    const auto input = CommandInput::New();
    input->GetCommandPath().push_back("system");
    EXPECT_EQ(input->GetCommandPathString(), "system");
}

TEST(CommandInputTest, GetCommandPathString_JoinsTheNamesWithOneBlank) {
    const auto input = CommandInput::New();
    Names path{"system", "network", "list"};
    input->SetCommandPath(path);
    EXPECT_EQ(input->GetCommandPathString(), "system network list");
}

} // namespace
