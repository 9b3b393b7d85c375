#pragma once

#include <tests/support/TextGenerator.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

namespace TestSupport {

using CommandLine = std::vector<std::string>;

/// Makes command lines of options, of what only looks like options, and of plain and odd words.
class CommandLineGenerator {
  public:
    explicit CommandLineGenerator(RandomSource& random)
        : random_(&random), texts_(random, AnyBytes()) {}

    CommandLine Words() {
        CommandLine words;
        for (std::size_t count = random_->Below(12); count > 0; --count) {
            words.push_back(Word());
        }
        return words;
    }

    /// Words that one line of text can hold: nothing escapes a double quote there, and neither
    /// blanks nor "#" begin a word.
    CommandLine LineWords() {
        CommandLine words = Words();
        std::erase_if(words, [](const std::string& word) {
            return word.empty() || word.find('"') != std::string::npos ||
                   std::string(" \t#").find(word.front()) != std::string::npos;
        });
        return words;
    }

    /// One line of those words, with quotes wherever blanks need them and sometimes elsewhere.
    std::string LineOf(const CommandLine& words) {
        std::string line = Blanks(0);
        for (const std::string& word : words) {
            line += (&word == &words.front() ? "" : Blanks(1)) + InQuotes(word);
        }
        return line + (random_->Chance(20) ? Blanks(1) + "# --not \"a word" : "");
    }

  private:
    std::string Word() {
        static const std::vector<std::string> nearlyOptions = {"--x",       "-ab",   "-1",
                                                               "-",         "--",    "--1a",
                                                               "--name=",   "---ab", "--a_b",
                                                               "-\xC3\xA9", "",      "-a=b",
                                                               "--a b",     "--=x"};
        switch (random_->Below(7)) {
        case 0:
            return "-" + random_->Pick(std::vector<std::string>{"n", "h", "v", "x", "Z"});
        case 1:
            return "--" + Name();
        case 2:
            return "--" + Name() + "=" + texts_.TextOf(random_->Between(1, 5));
        case 3:
            return random_->Pick(nearlyOptions);
        case 4:
            return texts_.Text();
        default:
            return random_->Pick(std::vector<std::string>{"network", "list", "get2", "a", "#b"});
        }
    }

    std::string Name() {
        static const std::vector<std::string> names = {"name", "count",  "verbose", "zone",
                                                       "help", "x-y-z-", "a1",      "ip"};
        return random_->Pick(names);
    }

    std::string InQuotes(const std::string& word) {
        const std::size_t firstBlank = word.find_first_of(" \t");
        if (firstBlank == std::string::npos && random_->Chance(70)) {
            return word;
        }
        const std::size_t start = random_->Between(0, std::min(firstBlank, word.size()));
        return word.substr(0, start) + '"' + word.substr(start) + '"';
    }

    std::string Blanks(std::size_t least) {
        std::string blanks;
        for (std::size_t count = random_->Between(least, least + 2); count > 0; --count) {
            blanks += random_->Chance(80) ? ' ' : '\t';
        }
        return blanks;
    }

    RandomSource* random_;
    TextGenerator texts_;
};

} // namespace TestSupport
