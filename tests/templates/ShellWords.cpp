#include "ShellWords.h"

#include <cctype>
#include <string_view>

namespace Templates {

namespace {

constexpr std::string_view kOperatorCharacters = "\n;&|<>()";

bool IsIn(std::string_view characters, char character) {
    return characters.find(character) != std::string_view::npos;
}

bool IsNameCharacter(char character) {
    return std::isalnum(static_cast<unsigned char>(character)) || character == '_';
}

/// Goes through a line as the grammar of the shell says.
class LineReader {
  public:
    explicit LineReader(const std::string& line) : line_(line) {}

    std::optional<std::vector<ShellToken>> Read() {
        while (position_ < line_.size()) {
            if (IsIn(" \t", line_[position_])) {
                ++position_;
            } else if (line_.compare(position_, 2, "\\\n") == 0) {
                position_ += 2;
            } else if (IsIn(kOperatorCharacters, line_[position_])) {
                ReadOperator();
            } else if (line_[position_] == '#') {
                isMore_ = true;
                break;
            } else {
                ReadWord();
            }
        }
        return isMore_ ? std::nullopt : std::optional(tokens_);
    }

  private:
    void ReadOperator() {
        static constexpr std::string_view kKnown[] = {"&&", "||", ">>", ">&", "\n",
                                                      ";",  "|",  "<",  ">"};
        for (const auto known : kKnown) {
            if (line_.compare(position_, known.size(), known) == 0) {
                tokens_.push_back({true, false, std::string(known)});
                position_ += known.size();
                return;
            }
        }
        isMore_ = true;
        ++position_;
    }

    void ReadWord() {
        ShellToken word{false, false, ""};
        const std::size_t begin = position_;
        while (position_ < line_.size() && !IsIn(" \t", line_[position_]) &&
               !IsIn(kOperatorCharacters, line_[position_])) {
            const char character = line_[position_];
            if (character == '\'' || character == '"') {
                word.isQuoted = true;
                character == '"' ? ReadDoubleQuoted(word) : ReadSingleQuoted(word);
            } else if (character == '$') {
                SkipVariable();
            } else {
                const bool isTilde = character == '~' && position_ == begin;
                isMore_ = isMore_ || isTilde || IsIn("\\`*?[", character);
                word.text += character;
                ++position_;
            }
        }
        const bool isRedirected = position_ < line_.size() && IsIn("<>", line_[position_]);
        if (isRedirected && word.text.size() == 1 && IsIn("0123456789", word.text.front())) {
            return; // The descriptor of the operator behind it.
        }
        tokens_.push_back(word);
    }

    void ReadSingleQuoted(ShellToken& word) {
        const std::size_t end = line_.find('\'', position_ + 1);
        isMore_ = isMore_ || end == line_.npos;
        word.text += line_.substr(position_ + 1, end - position_ - 1);
        position_ = end == line_.npos ? line_.size() : end + 1;
    }

    void ReadDoubleQuoted(ShellToken& word) {
        ++position_;
        while (position_ < line_.size() && line_[position_] != '"') {
            if (line_[position_] == '$') {
                SkipVariable();
            } else {
                isMore_ = isMore_ || IsIn("\\`", line_[position_]);
                word.text += line_[position_++];
            }
        }
        isMore_ = isMore_ || position_ == line_.size();
        ++position_;
    }

    /// Placeholders of absent parameters are variables to a shell, which are not set.
    void SkipVariable() {
        ++position_;
        const bool isName =
            position_ < line_.size() && std::isalpha(static_cast<unsigned char>(line_[position_]));
        isMore_ = isMore_ || !isName;
        while (position_ < line_.size() && IsNameCharacter(line_[position_])) {
            ++position_;
        }
    }

    const std::string& line_;
    std::vector<ShellToken> tokens_;
    std::size_t position_ = 0;
    bool isMore_ = false;
};

} // namespace

std::optional<std::vector<ShellToken>> ReadShellLine(const std::string& line) {
    return LineReader(line).Read();
}

} // namespace Templates
