#include <CppTools/autocli/formatters/FieldText.h>
#include <CppTools/autocli/formatters/TableFormatter.h>

#include <tests/support/Rendering.h>
#include <tests/support/SeededTest.h>
#include <tests/support/TextGenerator.h>
#include <tests/support/Values.h>
#include <tests/support/Wrapping.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <sstream>
#include <string>
#include <vector>

namespace {

using CppTools::AutoCli::AutoCli_FitString;
using CppTools::AutoCli::TableFormatter;
using TestSupport::AnyBytes;
using TestSupport::BothSeeds;
using TestSupport::RenderWith;
using TestSupport::Rows;
using TestSupport::SeedName;
using TestSupport::Struct;
using TestSupport::TextGenerator;
using TestSupport::Without;
using TestSupport::WrapByLines;
using TestSupport::WrapEachLine;
using Words = std::vector<std::string>;

/// What stands between blanks and line ends.
Words WordsOf(const std::string& text) {
    Words words;
    std::string word;
    for (const char c : text + " ") {
        if (c != ' ' && c != '\n') {
            word += c;
        } else if (!word.empty()) {
            words.push_back(word);
            word.clear();
        }
    }
    return words;
}

class WrappingPropertyTest : public TestSupport::SeededTest {
  protected:
    std::string Prose() {
        std::string text;
        for (std::size_t count = Random().Below(20); count > 0; --count) {
            text += words_.Text() + (Random().Chance(85) ? " " : "\n");
        }
        return text;
    }

    TextGenerator words_{Random(), Without(AnyBytes(), "\n")};
};

TEST_P(WrappingPropertyTest, FitString_KeepsEveryWordInItsOrder) {
    for (int round = 0; round < 500; ++round) {
        const std::string text = Prose();
        const int indent = static_cast<int>(Random().Below(40));
        const int width = static_cast<int>(Random().Below(100));
        std::ostringstream out;
        AutoCli_FitString(indent, width, text, Random().Chance(50), out, Random().Chance(50), '\0',
                          Random().Chance(50));
        ASSERT_EQ(WordsOf(out.str()), WordsOf(text))
            << "indent " << indent << ", width " << width << "\n"
            << text;
    }
}

TEST_P(WrappingPropertyTest, FitString_AgreesWithWrappingLineByLine) {
    for (int round = 0; round < 1000; ++round) {
        const std::string text = Prose();
        const int indent = static_cast<int>(Random().Below(45)) - 4;
        const int width = static_cast<int>(Random().Below(121));
        const bool continued = Random().Chance(50);
        const bool newlineAtEnd = Random().Chance(50);
        const char mark = Random().Chance(50) ? '\0' : '+';
        const bool split = Random().Chance(50);
        const char breakMark = mark == '\0' ? ' ' : mark;
        const std::string margin(static_cast<std::size_t>(std::max(indent, 1)), ' ');
        const std::string wrapped = split ? WrapEachLine(text, indent, width, breakMark)
                                          : WrapByLines(text, indent, width, breakMark);
        const bool nothing = split && text.empty();
        std::ostringstream out;
        AutoCli_FitString(indent, width, text, continued, out, newlineAtEnd, mark, split);
        ASSERT_EQ(out.str(),
                  nothing ? "" : (continued ? "" : margin) + wrapped + (newlineAtEnd ? "\n" : ""))
            << "indent " << indent << ", width " << width << "\n"
            << text;
    }
}

TEST_P(WrappingPropertyTest, Table_KeepsEveryWordOfAWrappedColumnInItsOrder) {
    for (int round = 0; round < 100; ++round) {
        std::vector<TestSupport::Record> rows;
        Words expected;
        for (std::size_t count = Random().Between(1, 4); count > 0; --count) {
            const std::string text = Prose();
            rows.push_back(
                Struct("T", {{"a", TestSupport::Text("row")}, {"b", TestSupport::Text(text)}}));
            expected.push_back("row");
            for (const std::string& word : WordsOf(text)) {
                expected.push_back(word);
            }
        }
        const auto width = static_cast<std::uint16_t>(Random().Below(60));
        const auto [printed, table] = RenderWith<TableFormatter>(
            Rows(rows), {{"show-header", "false"}, {"wrap-last", "true"}}, width);
        ASSERT_TRUE(printed);
        ASSERT_EQ(WordsOf(table), expected) << "width " << width << "\n" << table;
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, WrappingPropertyTest, BothSeeds(), SeedName);

} // namespace
