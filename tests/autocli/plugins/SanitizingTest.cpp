#include <CppTools/autocli/plugins/ExtensionCommand.h>

#include <gtest/gtest.h>

#include <string>

namespace {

using CppTools::AutoCli::ExtensionCommand;
using CppTools::AutoCli::isBadChar;

const std::string kBadCharacters = "\n!\"$&'()*;<>\\^`|";

TEST(SanitizingTest, IsBadChar_NamesExactlySixteenBytes) {
    ASSERT_EQ(kBadCharacters.size(), 16U);
    for (int byte = 0; byte < 256; ++byte) {
        const auto character = static_cast<char>(byte);
        EXPECT_EQ(isBadChar(character), kBadCharacters.find(character) != std::string::npos)
            << "byte " << byte;
    }
}

TEST(SanitizingTest, SanitizeInput_PutsABackslashBeforeEveryBadCharacter) {
    EXPECT_EQ(ExtensionCommand::New()->SanitizeInput(kBadCharacters),
              "\\\n\\!\\\"\\$\\&\\'\\(\\)\\*\\;\\<\\>\\\\\\^\\`\\|");
}

TEST(SanitizingTest, SanitizeInput_LeavesAllOthers) {
    std::string others;
    for (int byte = 0; byte < 256; ++byte) {
        if (kBadCharacters.find(static_cast<char>(byte)) == std::string::npos) {
            others += static_cast<char>(byte);
        }
    }
    EXPECT_EQ(ExtensionCommand::New()->SanitizeInput(others), others);
}

TEST(SanitizingTest, SanitizeInput_MixedText) {
    const auto command = ExtensionCommand::New();
    EXPECT_EQ(command->SanitizeInput(""), "");
    EXPECT_EQ(command->SanitizeInput("a;;b"), "a\\;\\;b");
    EXPECT_EQ(command->SanitizeInput("\\;"), "\\\\\\;");
    EXPECT_EQ(command->SanitizeInput("rm -rf /tmp/*"), "rm -rf /tmp/\\*");
}

TEST(SanitizingTest, SanitizeChar_RemovesEveryOccurrence) {
    const auto command = ExtensionCommand::New();
    EXPECT_EQ(command->SanitizeChar("'it's'", '\''), "its");
    EXPECT_EQ(command->SanitizeChar("''''", '\''), "");
    EXPECT_EQ(command->SanitizeChar("", '\''), "");
    EXPECT_EQ(command->SanitizeChar("it's; $x", '"'), "it's; $x");
    EXPECT_EQ(command->SanitizeChar("a\\'b", '\''), "a\\b");
}

} // namespace
