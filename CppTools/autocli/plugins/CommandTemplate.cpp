#include <CppTools/autocli/plugins/CommandTemplate.h>
#include <CppTools/autocli/plugins/ConditionalRemoval.h>
#include <CppTools/autocli/plugins/HeldValues.h>
#include <CppTools/autocli/plugins/PlaceholderText.h>
#include <CppTools/callspec/Input.h>

#include <boost/algorithm/string/erase.hpp>
#include <boost/algorithm/string/replace.hpp>

#include <optional>
#include <string_view>
#include <utility>
#include <vector>

namespace CppTools::AutoCli {

namespace {

constexpr std::size_t kNone = std::string::npos;

std::string Quoted(const std::string& text) {
    return "\"" + text + "\"";
}

/// The offset of the last flag of the text.
std::size_t LastQuoteFlag(std::string_view text) {
    for (auto comma = text.rfind(','); comma != kNone; comma = text.rfind(',', comma - 1)) {
        if (QuoteFlagAt(text, comma)) {
            return comma;
        }
        if (comma == 0) {
            break;
        }
    }
    return kNone;
}

/// Builds a text from pieces of another and what replaces the pieces between them.
class Replacer {
  public:
    explicit Replacer(const std::string& text) : text_(text) {}

    void Replace(std::size_t begin, std::size_t end, std::string_view replacement) {
        result_.append(text_, done_, begin - done_).append(replacement);
        done_ = end;
    }

    /// Where the search for the next piece begins.
    std::size_t Done() const { return done_; }

    std::string Finish() {
        result_.append(text_, done_);
        return std::move(result_);
    }

  private:
    const std::string& text_;
    std::string result_;
    std::size_t done_ = 0;
};

} // namespace

CommandTemplate::CommandTemplate(std::string text, TemplatePurpose purpose)
    : text_(std::move(text)), purpose_(purpose) {}

void CommandTemplate::Fill(const std::string& name, const CallSpec::Input& input,
                           HeldValues* held) {
    held_ = held;
    FillValue(name, input);
    FillConditional(name);
    FillList(name, input);
    FillMultiList(name, input);
}

void CommandTemplate::RemoveUnfilled() {
    text_ = RemoveConditionals(text_);
}

/// \$val\{NAME\}. How the last one is quoted decides for all.
void CommandTemplate::FillValue(const std::string& name, const CallSpec::Input& input) {
    const std::string placeholder = "$val{" + name + "}";
    const std::size_t last = text_.rfind(placeholder);
    if (last == kNone) {
        return;
    }
    std::string value = input.GetParameter(name);
    if (IsForCommandLine()) {
        const std::size_t after = last + placeholder.size();
        const bool isQuoted =
            last > 0 && text_[last - 1] == '\'' && after < text_.size() && text_[after] == '\'';
        value = isQuoted ? Remove(value, '\'') : Sanitize(value);
    }
    boost::algorithm::replace_all(text_, placeholder, Inserted(std::move(value)));
}

/// \$if\{NAME,(.+?)\}
void CommandTemplate::FillConditional(const std::string& name) {
    const std::string opening = "$if{" + name + ",";
    const std::size_t lastClose = text_.rfind('}');
    Replacer replacer(text_);
    for (auto begin = text_.find(opening); begin != kNone;
         begin = text_.find(opening, replacer.Done())) {
        const std::size_t inner = begin + opening.size();
        if (lastClose == kNone || lastClose <= inner) {
            break;
        }
        const std::size_t close = text_.find('}', inner + 1);
        replacer.Replace(begin, close + 1, std::string_view(text_).substr(inner, close - inner));
    }
    text_ = replacer.Finish();
}

/// \$list\{NAME,'(.?)',(true|false)\}. The last one decides the separator and quotes of all.
void CommandTemplate::FillList(const std::string& name, const CallSpec::Input& input) {
    const std::string opening = "$list{" + name + ",'";
    std::vector<std::pair<std::size_t, std::size_t>> places;
    std::optional<ListTail> last;
    for (auto begin = text_.find(opening); begin != kNone;
         begin = text_.find(opening, begin + opening.size())) {
        if (const auto tail = ListTailAt(text_, begin + opening.size())) {
            places.emplace_back(begin, tail->flag.end);
            last = tail;
        }
    }
    if (!last) {
        return;
    }
    std::string value = input.GetParameterListAsString(name, last->separator, false);
    if (IsForCommandLine()) {
        value = Sanitize(value);
    }
    value = Inserted(std::move(value));
    if (last->flag.quote) {
        value = Quoted(value);
    }
    Replacer replacer(text_);
    for (const auto& [begin, end] : places) {
        replacer.Replace(begin, end, value);
    }
    text_ = replacer.Finish();
}

/// \$multilist\{NAME,(.+?),(true|false)\}. The last one decides the option and quotes of all.
void CommandTemplate::FillMultiList(const std::string& name, const CallSpec::Input& input) {
    const std::string opening = "$multilist{" + name + ",";
    const std::size_t lastFlag = LastQuoteFlag(text_);
    if (lastFlag == kNone || lastFlag < opening.size() + 1) {
        return;
    }
    const std::size_t lastBegin = text_.rfind(opening, lastFlag - opening.size() - 1);
    if (lastBegin == kNone) {
        return;
    }
    const std::size_t option = lastBegin + opening.size();
    const QuoteFlag flag = FirstQuoteFlag(text_, option + 1).value();
    const std::string value =
        JoinOptions(name, input, text_.substr(option, flag.begin - option), flag.quote);

    Replacer replacer(text_);
    for (auto begin = text_.find(opening); begin <= lastBegin;
         begin = text_.find(opening, replacer.Done())) {
        const std::size_t end = FirstQuoteFlag(text_, begin + opening.size() + 1)->end;
        replacer.Replace(begin, end, value);
    }
    text_ = replacer.Finish();
}

std::string CommandTemplate::JoinOptions(const std::string& name, const CallSpec::Input& input,
                                         const std::string& option, bool quote) const {
    std::vector<std::string> values;
    input.GetParameterList(name, values);
    std::string joined;
    for (auto& value : values) {
        if (IsForCommandLine()) {
            value = quote ? Remove(value, '"') : Sanitize(value);
        }
        value = Inserted(std::move(value));
        joined += " " + option + " " + (quote ? Quoted(value) : value);
    }
    return joined;
}

std::string CommandTemplate::Inserted(std::string value) const {
    return held_ == nullptr ? value : held_->Hold(std::move(value));
}

bool CommandTemplate::IsBadCharacter(char character) {
    static constexpr std::string_view kBadCharacters = "\n!\"$&'()*;<>\\^`|";
    return kBadCharacters.find(character) != std::string_view::npos;
}

std::string CommandTemplate::Sanitize(const std::string& text) {
    std::string sanitized;
    sanitized.reserve(2 * text.size());
    for (const char character : text) {
        if (IsBadCharacter(character)) {
            sanitized += '\\';
        }
        sanitized += character;
    }
    return sanitized;
}

std::string CommandTemplate::Remove(const std::string& text, char character) {
    return boost::algorithm::erase_all_copy(text, std::string(1, character));
}

} // namespace CppTools::AutoCli
