#include <CppTools/autocli/CommandOutput.h>

#include <tests/support/VirtualTableSize.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <type_traits>

using CppTools::AutoCli::CommandOutput;
using CppTools::CallSpec::Output;

namespace {

TEST(CommandOutputTest, New_IsEmpty) {
    const auto output = CommandOutput::New();
    EXPECT_EQ(output->GetFormattedString(), "");
    EXPECT_FALSE(output->HasError());
    EXPECT_EQ(output->GetRootObject(), nullptr);
    EXPECT_EQ(output->GetOutputType(), Output::OutputType::Result);
    EXPECT_NE(output, CommandOutput::New());
}

TEST(CommandOutputTest, Destructor_IsTheOnlyVirtualOperation) {
    EXPECT_TRUE(std::has_virtual_destructor_v<CommandOutput>);
    EXPECT_EQ(TestSupport::VirtualTableSizeOf<CommandOutput>(), 2);
}

TEST(CommandOutputTest, Output_IsItsBase) {
    const std::shared_ptr<Output> base = CommandOutput::New();
    base->AddErrorMessage("broken");
    EXPECT_THAT(base->GetErrors(), testing::ElementsAre("broken"));
}

TEST(CommandOutputTest, SetFormattedString_StoresAndReplaces) {
    const auto output = CommandOutput::New();
    output->SetFormattedString("first\n");
    EXPECT_EQ(output->GetFormattedString(), "first\n");
    output->SetFormattedString("second");
    EXPECT_EQ(output->GetFormattedString(), "second");
}

} // namespace
