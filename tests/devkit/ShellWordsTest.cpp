#include <devkit/ShellWords.h>
#include <tests/support/ChildRun.h>
#include <tests/support/ProgramRun.h>

#include <gtest/gtest.h>

namespace {

using Devkit::ShellWords;

/// The words that a real shell hands to a command.
std::vector<std::string> WordsOfShell(const std::string& line) {
    const auto run = TestSupport::RunProgram(
        {"/bin/sh", "-c", "show() { printf '%s\\001' \"$@\"; }; show " + line}, "/");
    std::vector<std::string> words;
    for (std::size_t begin = 0; begin < run.out.size();) {
        const std::size_t end = run.out.find('\x01', begin);
        words.push_back(run.out.substr(begin, end - begin));
        begin = end + 1;
    }
    return words;
}

TEST(ShellWords, PlainLines_AreDividedAsTheShellDividesThem) {
    for (const char* line :
         {"a b\tc", "'a b'\"c d\"e", "a\\ b \\\"", "'' \"\"", "\"a\\\"b\\$c\\d\"", "a\\\nb",
          "a#b a~", "x=~ {a,b} !", "\"it's\" 'a\"b'"}) {
        const ShellWords words(line);
        EXPECT_EQ(words.Words(), WordsOfShell(line)) << line;
    }
}

TEST(ShellWords, WhatElseMeansSomething_IsRemembered) {
    using Meaning = ShellWords::Meaning;
    const std::vector<std::pair<const char*, Meaning>> meanings = {
        {"a;b", Meaning::Operator},     {"a > b", Meaning::Operator}, {"a\nb", Meaning::Operator},
        {"\"$a\"", Meaning::Expansion}, {"`a`", Meaning::Expansion},  {"a*", Meaning::Pattern},
        {"[a", Meaning::Pattern},       {"~a", Meaning::Tilde},       {"a #b", Meaning::Comment},
        {"'a", Meaning::OpenEnd},       {"\"a", Meaning::OpenEnd},    {"a\\", Meaning::OpenEnd}};
    for (const auto& [line, meaning] : meanings) {
        const ShellWords words(line);
        EXPECT_TRUE(words.Has(meaning)) << line;
        EXPECT_FALSE(words.IsPlain()) << line;
    }
    EXPECT_TRUE(ShellWords("'$a;*' \\$b").IsPlain());
}

} // namespace
