#include <CppTools/autocli/plugins/TemplateScanner.h>

#include <algorithm>

namespace CppTools::AutoCli {

const std::string_view kPlainCharacters =
    "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_-./:,+@%";

namespace {

constexpr std::string_view kBlanks = " \t";
constexpr std::string_view kOperators = "\n;&|<>()";

bool IsAmong(std::string_view characters, char character) {
    return characters.find(character) != std::string_view::npos;
}

/// What a dollar sign is that begins no placeholder.
Rule DollarRule(std::string_view fromDollar) {
    static constexpr std::string_view kPartsOfOpenings = "abcdefghijklmnopqrstuvwxyz0123456789-{";
    if (fromDollar.starts_with("$((")) {
        return Rule::Arithmetic;
    }
    if (fromDollar.starts_with("$(")) {
        return Rule::CommandSubstitution;
    }
    const std::size_t stop =
        std::min(fromDollar.find_first_not_of(kPartsOfOpenings, 1), fromDollar.size());
    const bool isOpen = fromDollar.substr(0, stop).find('{') == std::string_view::npos;
    if (IsPlaceholderOpening(fromDollar, stop) ||
        (isOpen && fromDollar.substr(stop).starts_with('}'))) {
        return Rule::SpelledTogether;
    }
    return IsPlaceholderOpening(fromDollar, 0) ? Rule::Malformed : Rule::Expansion;
}

/// What a character is that is not plain, outside quotes.
Rule CharacterRule(std::string_view fromCharacter) {
    switch (fromCharacter.front()) {
    case '\\':
        return Rule::Backslash;
    case '`':
        return Rule::CommandSubstitution;
    case '{':
    case '}':
        return Rule::Brace;
    default:
        return fromCharacter.starts_with("[[") ? Rule::ShellPattern : Rule::SpecialCharacter;
    }
}

/// Reads a template from left to right, one function for each rule of the syntax.
class Scanner {
  public:
    Scanner(std::string_view text, Findings& findings) : text_(text), findings_(findings) {}

    std::vector<SimpleCommand> Scan() {
        while (!AtEnd()) {
            ScanNext();
        }
        EndCommand();
        if (commands_.empty()) {
            Report(Rule::NoSimpleCommand, 0);
        }
        return std::move(commands_);
    }

  private:
    void ScanNext() {
        const auto placeholder = ReadPlaceholder(text_, position_);
        if (IsAmong(kBlanks, Peek())) {
            ++position_;
        } else if (IsContinuation()) {
            position_ += 2;
        } else if (IsAmong("\n;&|", Peek())) {
            ScanSeparator();
        } else if (IsAmong("<>", Peek())) {
            ScanRedirection();
        } else if (IsAmong("()", Peek())) {
            const bool isFirst = commands_.empty() && words_.empty();
            Report(Rest().starts_with("((") ? Rule::Arithmetic
                   : isFirst                ? Rule::NoSimpleCommand
                                            : Rule::ComplexShell);
            ++position_;
        } else if (Peek() == '#') {
            Report(Rule::Comment);
            position_ = std::min(text_.find('\n', position_), text_.size());
        } else if (placeholder && placeholder->kind == PlaceholderKind::If) {
            ScanConditional(*placeholder);
        } else {
            ScanTopWord();
        }
    }

    void ScanSeparator() {
        const bool isDouble = Rest().starts_with("&&") || Rest().starts_with("||");
        const bool isEmptyLine = Peek() == '\n' && !commands_.empty();
        if (words_.empty() && !isEmptyLine) {
            Report(commands_.empty() ? Rule::NoSimpleCommand : Rule::ComplexShell);
        }
        if (Peek() == '&' && !isDouble) {
            Report(Rule::ComplexShell);
        }
        EndCommand();
        position_ += isDouble ? 2 : 1;
    }

    void ScanTopWord() {
        Word word = ScanWord("");
        const bool isRedirected = IsBeforeRedirection();
        if (isRedirected && IsDescriptor(word)) {
            return;
        }
        Expect(!isRedirected, Rule::Redirection, position_);
        AddWord(std::move(word));
    }

    static bool IsDescriptor(const Word& word) {
        const auto text = word.GetConstant();
        return text && !word.IsQuoted() && text->size() == 1 &&
               IsAmong("0123456789", text->front());
    }

    /// The forms <FILE, >FILE, >>FILE and >&DIGIT, whose descriptor was read before.
    void ScanRedirection() {
        const std::size_t begin = position_;
        if (Rest().starts_with("<<")) {
            Report(Rule::HereDocument);
        }
        const bool duplicates = Rest().starts_with(">&");
        position_ += duplicates || Rest().starts_with(">>") || Rest().starts_with("<<") ? 2 : 1;
        position_ = duplicates
                        ? position_
                        : std::min(text_.find_first_not_of(kBlanks, position_), text_.size());
        const Word target = ScanWord("");
        const auto file = target.GetConstant();
        const bool isFile = file && !file->empty() && (!duplicates || IsDescriptor(target));
        Expect(isFile && !IsBeforeRedirection(), Rule::Redirection, begin);
    }

    void ScanConditional(const Placeholder& conditional) {
        const std::size_t begin = position_;
        position_ = conditional.end;
        while (!AtEnd() && Peek() != '}') {
            if (IsAmong(kBlanks, Peek())) {
                ++position_;
            } else if (IsAmong(kOperators, Peek()) || Peek() == '#') {
                Report(Rule::Conditional);
                ++position_;
            } else {
                AddWord(ScanWord(conditional.name));
            }
        }
        Expect(!AtEnd(), Rule::Malformed, begin);
        position_ = std::min(position_ + 1, text_.size());
        Expect(AtEnd() || IsAmong(" \t\n;&|", Peek()), Rule::Conditional, begin);
    }

    Word ScanWord(const std::string& condition) {
        Word word;
        word.condition = condition;
        const std::size_t begin = position_;
        while (!AtEnd() && !EndsWord(condition)) {
            if (Peek() == '\'' || Peek() == '"') {
                ScanQuoted(word);
            } else if (Peek() == '$') {
                ScanDollar(word, Place::Bare);
            } else {
                const bool isPlain = IsAmong(kPlainCharacters, Peek());
                const bool isInnerEqualsSign = Peek() == '=' && position_ > begin;
                Expect(isPlain || isInnerEqualsSign, CharacterRule(Rest()), position_);
                ScanCharacter(word, Place::Bare);
            }
        }
        return word;
    }

    bool EndsWord(const std::string& condition) const {
        return IsAmong(kBlanks, Peek()) || IsAmong(kOperators, Peek()) ||
               (!condition.empty() && Peek() == '}');
    }

    void ScanQuoted(Word& word) {
        const std::size_t begin = position_;
        const char quote = Peek();
        const Place place = quote == '\'' ? Place::Single : Place::Double;
        const std::string_view special = quote == '\'' ? "{}" : "{}\\`";
        // A piece of its own, so that what stood before is not taken for part of these quotes.
        word.pieces.push_back({place, begin, "", std::nullopt});
        const std::size_t first = word.pieces.size();
        ++position_;
        while (!AtEnd() && Peek() != quote) {
            if (Peek() == '$') {
                ScanDollar(word, place);
            } else {
                Expect(!IsAmong(special, Peek()), CharacterRule(Rest()), position_);
                ScanCharacter(word, place);
            }
        }
        Expect(!AtEnd(), Rule::OpenQuote, begin);
        position_ = std::min(position_ + 1, text_.size());
        const bool isAlone = word.pieces.size() == first + 1 && word.pieces[first - 1].text.empty();
        if (place == Place::Single && isAlone) {
            word.pieces[first].place = Place::SingleAlone;
        }
    }

    void ScanDollar(Word& word, Place place) {
        const auto placeholder = ReadPlaceholder(text_, position_);
        if (!placeholder || placeholder->kind == PlaceholderKind::If) {
            Report(placeholder ? Rule::Conditional : DollarRule(Rest()));
            ScanCharacter(word, place);
            return;
        }
        const std::string whole(text_.substr(position_, placeholder->end - position_));
        const bool isLast = text_.substr(placeholder->end).starts_with('}');
        const bool isFilledFirst = placeholder->kind == PlaceholderKind::Val || isLast;
        Expect(word.condition.empty() || (placeholder->name == word.condition && isFilledFirst),
               Rule::Conditional, position_);
        word.pieces.push_back({place, position_, whole, placeholder});
        position_ = placeholder->end;
    }

    void ScanCharacter(Word& word, Place place) {
        const bool continues = !word.pieces.empty() && !word.pieces.back().placeholder &&
                               word.pieces.back().place == place;
        if (!continues) {
            word.pieces.push_back({place, position_, "", std::nullopt});
        }
        word.pieces.back().text += Peek();
        ++position_;
    }

    void AddWord(Word word) {
        if (words_.empty()) {
            commandBegin_ = word.pieces.front().position;
        }
        words_.push_back(std::move(word));
    }

    void EndCommand() {
        if (!words_.empty()) {
            commands_.push_back({commandBegin_, std::move(words_)});
            words_.clear();
        }
    }

    void Report(Rule rule) { Report(rule, position_); }

    void Report(Rule rule, std::size_t position) {
        const auto placeholder = ReadPlaceholder(text_, position);
        findings_.push_back(
            {rule, position,
             placeholder ? std::string(text_.substr(position, placeholder->end - position)) : ""});
    }

    void Expect(bool condition, Rule rule, std::size_t position) {
        if (!condition) {
            Report(rule, position);
        }
    }

    /// A line end that a backslash takes away, between words.
    bool IsContinuation() const {
        return Rest().starts_with("\\\n") && position_ > 0 &&
               IsAmong(kBlanks, text_[position_ - 1]);
    }

    bool IsBeforeRedirection() const { return !AtEnd() && IsAmong("<>", Peek()); }

    bool AtEnd() const { return position_ == text_.size(); }

    char Peek() const { return text_[position_]; }

    std::string_view Rest() const { return text_.substr(position_); }

    std::string_view text_;
    Findings& findings_;
    std::size_t position_ = 0;
    std::size_t commandBegin_ = 0;
    std::vector<Word> words_; ///< Of the command that is read.
    std::vector<SimpleCommand> commands_;
};

} // namespace

std::optional<std::string> Word::GetConstant() const {
    std::string text;
    for (const auto& piece : pieces) {
        text += piece.text;
    }
    return HasPlaceholder() || !condition.empty() ? std::nullopt : std::optional(text);
}

bool Word::HasPlaceholder() const {
    return std::any_of(pieces.begin(), pieces.end(),
                       [](const Piece& piece) { return piece.placeholder.has_value(); });
}

bool Word::IsQuoted() const {
    return std::any_of(pieces.begin(), pieces.end(),
                       [](const Piece& piece) { return piece.place != Place::Bare; });
}

std::vector<SimpleCommand> ScanTemplate(std::string_view text, Findings& findings) {
    return Scanner(text, findings).Scan();
}

} // namespace CppTools::AutoCli
