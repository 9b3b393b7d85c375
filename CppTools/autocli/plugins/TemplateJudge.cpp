#include <CppTools/autocli/plugins/Alphabet.h>
#include <CppTools/autocli/plugins/CommandTemplate.h>
#include <CppTools/autocli/plugins/ShellPrograms.h>
#include <CppTools/autocli/plugins/TemplateJudge.h>
#include <CppTools/callspec/InputSpec.h>

#include <algorithm>
#include <map>
#include <utility>

namespace CppTools::AutoCli {

namespace {

using CallSpec::InputSpec;
using CallSpec::ParameterSpec;
using CallSpec::ParameterType;

/// What a shell never looks at, quoted: what filling a value in leaves as it is.
ByteSet MakeTame() {
    ByteSet tame;
    for (int byte = 1; byte < 256; ++byte) {
        tame.set(static_cast<std::size_t>(byte),
                 !CommandTemplate::IsBadCharacter(static_cast<char>(byte)));
    }
    return tame;
}

bool IsTame(const Alphabet& alphabet) {
    static const ByteSet kTame = MakeTame();
    return alphabet.IsWithin(kTame);
}

/// What a shell never looks at, quoted or not.
bool IsPlain(const Alphabet& alphabet) {
    static const ByteSet kPlain = BytesOf(kPlainCharacters);
    return alphabet.IsWithin(kPlain);
}

bool FitsParameter(PlaceholderKind kind, const ParameterSpec& parameter) {
    const bool isFlag = parameter.GetType() == ParameterType::Flag;
    switch (kind) {
    case PlaceholderKind::Val:
        return !isFlag && !parameter.AllowMultiple();
    case PlaceholderKind::List:
    case PlaceholderKind::MultiList:
        return !isFlag;
    case PlaceholderKind::If:
        break;
    }
    return true;
}

/// Whether a format of printf converts texts only. Some shells evaluate what becomes a number.
bool HasTextConversionsOnly(const std::string& format) {
    std::size_t percent = format.find('%');
    while (percent != std::string::npos && percent + 1 < format.size() &&
           (format[percent + 1] == 's' || format[percent + 1] == '%')) {
        percent = format.find('%', percent + 2);
    }
    return percent == std::string::npos;
}

/// One template's commands, judged one after the other.
class Judge {
  public:
    Judge(const std::vector<SimpleCommand>& commands, const InputSpec& inputSpec,
          Findings& findings)
        : inputSpec_(inputSpec), findings_(findings) {
        for (const auto& command : commands) {
            for (const auto& word : command.words) {
                RememberForms(word);
            }
        }
    }

    void JudgeCommand(const SimpleCommand& command, bool isFirst) {
        const auto& words = command.words;
        const auto program = FindProgram(command, isFirst);
        if (!program) {
            return;
        }
        const std::string name = *words[*program].GetConstant();
        if (const auto rule = ProgramRule(name)) {
            Report(*rule, words[*program].pieces.front());
        }
        if (name == "printf") {
            JudgeFormat(words, *program + 1);
        }
        JudgeArguments(words, *program + 1);
    }

  private:
    /// The index of the word that names what is run in the end.
    std::optional<std::size_t> FindProgram(const SimpleCommand& command, bool isFirst) {
        const auto& words = command.words;
        std::size_t index = 0;
        while (index < words.size() && SetsVariable(words[index])) {
            ++index;
        }
        while (index < words.size()) {
            const auto name = words[index].GetConstant();
            const auto& head = words[index].pieces.front();
            if (!name) {
                Report(Rule::CommandPosition, head);
                return std::nullopt;
            }
            if (IsReservedWord(*name) && !words[index].IsQuoted()) {
                const Rule rule = *name == "case" ? Rule::ShellPattern : Rule::ComplexShell;
                Report(isFirst ? Rule::NoSimpleCommand : rule, head);
                return std::nullopt;
            }
            if (!IsPrefix(*name)) {
                return index;
            }
            const auto next = SkipPrefix(words, index);
            if (!next) {
                Report(Rule::PrefixOption, head);
                return std::nullopt;
            }
            index = *next;
        }
        findings_.push_back({Rule::NoSimpleCommand, command.position, ""});
        return std::nullopt;
    }

    bool SetsVariable(const Word& word) {
        const Piece& head = word.pieces.front();
        if (head.place != Place::Bare || head.placeholder || !IsAssignment(head.text)) {
            return false;
        }
        if (!word.GetConstant()) {
            Report(Rule::CommandPosition, head);
        }
        return true;
    }

    void JudgeFormat(const std::vector<Word>& words, std::size_t format) {
        const auto text = format < words.size() ? words[format].GetConstant() : std::nullopt;
        if (!text || text->starts_with('-') || !HasTextConversionsOnly(*text)) {
            Report(Rule::PrintfFormat, words[format - 1].pieces.front());
        }
    }

    void JudgeArguments(const std::vector<Word>& words, std::size_t begin) {
        bool mayBeOption = true;
        for (std::size_t i = begin; i < words.size(); ++i) {
            const std::string before = TextBefore(words, i);
            mayBeOption = mayBeOption && (before != "--" || !words[i - 1].condition.empty());
            for (const auto& piece : words[i].pieces) {
                if (piece.placeholder) {
                    JudgePiece(words[i], piece);
                }
            }
            if (mayBeOption && !before.starts_with('-')) {
                JudgeHead(words[i]);
            }
        }
    }

    /// The constant word before another, when it is there in every call that has the other.
    static std::string TextBefore(const std::vector<Word>& words, std::size_t index) {
        Word before = words[index - 1];
        if (before.condition == words[index].condition) {
            before.condition.clear();
        }
        return before.GetConstant().value_or("");
    }

    /// Whether the head of a word may be a minus sign that a user gave.
    void JudgeHead(const Word& word) {
        const auto head =
            std::find_if(word.pieces.begin(), word.pieces.end(), [](const auto& piece) {
                return piece.placeholder || !piece.text.empty();
            });
        if (head == word.pieces.end() || !head->placeholder ||
            head->placeholder->kind == PlaceholderKind::MultiList) {
            return;
        }
        const auto parameter = inputSpec_.FindParameter(head->placeholder->name);
        if (parameter && AlphabetOfValues(*parameter).first.test('-')) {
            Report(Rule::OptionInjection, *head);
        }
    }

    void JudgePiece(const Word& word, const Piece& piece) {
        const auto parameter = inputSpec_.FindParameter(piece.placeholder->name);
        if (!parameter) {
            return;
        }
        const Alphabet alphabet = AlphabetOfValues(*parameter);
        if (const auto rule = piece.placeholder->kind == PlaceholderKind::Val
                                  ? ValRule(piece, alphabet)
                                  : ListRule(word, piece, alphabet)) {
            Report(*rule, piece);
        }
        const bool mayStay = !parameter->IsRequired() && word.condition.empty();
        if (piece.place == Place::Bare && (mayStay || alphabet.mayBeEmpty)) {
            Report(Rule::MayBeAbsent, piece);
        }
    }

    std::optional<Rule> ValRule(const Piece& piece, const Alphabet& alphabet) const {
        const bool isPlace = piece.place == Place::Bare ? IsPlain(alphabet) : IsTame(alphabet);
        const bool isAlone = piece.place == Place::SingleAlone;
        if (isPlace || (isAlone && !HasOtherForms(piece))) {
            return std::nullopt;
        }
        if (HasOtherForms(piece) && !IsTame(alphabet)) {
            return Rule::QuotedTwoWays;
        }
        switch (piece.place) {
        case Place::Bare:
            return Rule::BareText;
        case Place::Double:
            return Rule::DoubleQuotedText;
        case Place::Single:
        case Place::SingleAlone:
            break;
        }
        return Rule::QuotesDoNotTouch;
    }

    std::optional<Rule> ListRule(const Word& word, const Piece& piece,
                                 const Alphabet& alphabet) const {
        const Placeholder& list = *piece.placeholder;
        const bool isMulti = list.kind == PlaceholderKind::MultiList;
        const bool isBare = piece.place == Place::Bare;
        if (!(isBare && !list.wraps ? IsPlain(alphabet) : IsTame(alphabet))) {
            return Rule::ListOfText;
        }
        const bool isWhole = isBare && word.pieces.size() == 1;
        const bool fits = isMulti ? isWhole : isBare || !list.wraps;
        if (!fits || !IsPlain(Alphabet::OfText(list.option))) {
            return Rule::ListForm;
        }
        return HasOtherForms(piece) ? std::optional(Rule::QuotedTwoWays) : std::nullopt;
    }

    /// What decides how a placeholder is filled. All uses of a name have to agree on it.
    static std::string FormOf(const Piece& piece) {
        return piece.placeholder->kind != PlaceholderKind::Val ? piece.text
               : piece.place == Place::SingleAlone             ? "quoted"
                                                               : "not quoted";
    }

    void RememberForms(const Word& word) {
        for (const auto& piece : word.pieces) {
            if (piece.placeholder) {
                forms_[{piece.placeholder->kind, piece.placeholder->name}].push_back(FormOf(piece));
            }
        }
    }

    bool HasOtherForms(const Piece& piece) const {
        const auto& forms = forms_.at({piece.placeholder->kind, piece.placeholder->name});
        return std::any_of(forms.begin(), forms.end(),
                           [&](const std::string& form) { return form != forms.front(); });
    }

    void Report(Rule rule, const Piece& piece) {
        findings_.push_back({rule, piece.position, piece.placeholder ? piece.text : ""});
    }

    const InputSpec& inputSpec_;
    Findings& findings_;
    std::map<std::pair<PlaceholderKind, std::string>, std::vector<std::string>> forms_;
};

} // namespace

void JudgeCommands(const std::vector<SimpleCommand>& commands, const InputSpec& inputSpec,
                   Findings& findings) {
    Judge judge(commands, inputSpec, findings);
    for (const auto& command : commands) {
        judge.JudgeCommand(command, &command == &commands.front());
    }
}

void JudgeNames(std::string_view text, const InputSpec& inputSpec, Findings& findings) {
    for (auto dollar = text.find('$'); dollar != text.npos; dollar = text.find('$', dollar + 1)) {
        if (const auto placeholder = ReadPlaceholder(text, dollar)) {
            const auto parameter = inputSpec.FindParameter(placeholder->name);
            const std::string whole(text.substr(dollar, placeholder->end - dollar));
            if (!parameter) {
                findings.push_back({Rule::UnknownParameter, dollar, whole});
            } else if (!FitsParameter(placeholder->kind, *parameter)) {
                findings.push_back({Rule::WrongKind, dollar, whole});
            }
        }
    }
}

} // namespace CppTools::AutoCli
