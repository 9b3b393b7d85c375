#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Fuzz {

/// A line as sh(1) divides it into words, as far as that can be told without running anything:
/// quotes and backslashes are taken away, blanks separate. Whatever else means something to a shell
/// is taken for itself, and remembered.
class ShellWords {
  public:
    /// What makes a line more than its words.
    enum class Meaning {
        Operator,  ///< ; & | < > ( ) or a line end.
        Expansion, ///< $ or a back quote.
        Pattern,   ///< * ? or [, which stand for names of files.
        Tilde,     ///< Where a word begins.
        Comment,   ///< What follows on the line is no word.
        OpenEnd,   ///< A quote that is not closed, or a backslash at the end.
    };

    explicit ShellWords(std::string_view line);

    const std::vector<std::string>& Words() const { return words_; }

    bool Has(Meaning meaning) const;

    /// Whether the words are all that there is.
    bool IsPlain() const { return meanings_.empty(); }

  private:
    void ReadNext();
    void ReadSingleQuoted();
    void ReadDoubleQuoted();
    void ReadEscaped();
    void ReadComment();
    void Add(Meaning meaning, char character);
    void Add(char character);
    std::string& Word();
    void EndWord();
    char Take();

    std::string_view rest_;
    std::optional<std::string> word_; ///< The one that was begun.
    std::vector<std::string> words_;
    std::vector<Meaning> meanings_;
};

} // namespace Fuzz
