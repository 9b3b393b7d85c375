#include <fuzz/ShellWords.h>

#include <algorithm>

namespace Fuzz {

ShellWords::ShellWords(std::string_view line) : rest_(line) {
    while (!rest_.empty()) {
        ReadNext();
    }
    EndWord();
}

bool ShellWords::Has(Meaning meaning) const {
    return std::find(meanings_.begin(), meanings_.end(), meaning) != meanings_.end();
}

void ShellWords::ReadNext() {
    const char next = rest_.front();
    const bool beginsWord = !word_;
    if (next == '\\') {
        ReadEscaped();
    } else if (next == '\'') {
        ReadSingleQuoted();
    } else if (next == '"') {
        ReadDoubleQuoted();
    } else if (next == '#' && beginsWord) {
        ReadComment();
    } else if (std::string_view(" \t\n;&|<>()").find(next) != std::string_view::npos) {
        EndWord();
        if (Take() != ' ' && next != '\t') {
            meanings_.push_back(Meaning::Operator);
        }
    } else if (next == '$' || next == '`') {
        Add(Meaning::Expansion, Take());
    } else if (next == '*' || next == '?' || next == '[') {
        Add(Meaning::Pattern, Take());
    } else if (next == '~' && beginsWord) {
        Add(Meaning::Tilde, Take());
    } else {
        Add(Take());
    }
}

/// Quotes make a word, though it be empty.
void ShellWords::ReadSingleQuoted() {
    rest_.remove_prefix(1);
    const std::size_t end = std::min(rest_.find('\''), rest_.size());
    Word().append(rest_.substr(0, end));
    rest_.remove_prefix(end);
    if (rest_.empty()) {
        meanings_.push_back(Meaning::OpenEnd);
    } else {
        rest_.remove_prefix(1);
    }
}

/// A backslash stays before what it does not escape.
void ShellWords::ReadDoubleQuoted() {
    rest_.remove_prefix(1);
    Word();
    while (!rest_.empty() && rest_.front() != '"') {
        const char next = Take();
        const bool escapes =
            next == '\\' && !rest_.empty() &&
            std::string_view("$`\"\\\n").find(rest_.front()) != std::string_view::npos;
        if (escapes) {
            if (const char escaped = Take(); escaped != '\n') {
                Add(escaped);
            }
        } else if (next == '$' || next == '`') {
            Add(Meaning::Expansion, next);
        } else {
            Add(next);
        }
    }
    if (rest_.empty()) {
        meanings_.push_back(Meaning::OpenEnd);
    } else {
        rest_.remove_prefix(1);
    }
}

/// A backslash and a line end are nothing, not even the beginning of a word.
void ShellWords::ReadEscaped() {
    rest_.remove_prefix(1);
    if (rest_.empty()) {
        Add(Meaning::OpenEnd, '\\');
    } else if (const char escaped = Take(); escaped != '\n') {
        Add(escaped);
    }
}

void ShellWords::ReadComment() {
    meanings_.push_back(Meaning::Comment);
    rest_.remove_prefix(std::min(rest_.find('\n'), rest_.size()));
}

void ShellWords::Add(Meaning meaning, char character) {
    meanings_.push_back(meaning);
    Add(character);
}

void ShellWords::Add(char character) {
    Word().push_back(character);
}

/// The word that was begun, now at the latest.
std::string& ShellWords::Word() {
    return word_ ? *word_ : word_.emplace();
}

void ShellWords::EndWord() {
    if (word_) {
        words_.push_back(std::move(*word_));
        word_.reset();
    }
}

char ShellWords::Take() {
    const char taken = rest_.front();
    rest_.remove_prefix(1);
    return taken;
}

} // namespace Fuzz
