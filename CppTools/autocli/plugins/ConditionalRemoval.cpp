#include <CppTools/autocli/plugins/ConditionalRemoval.h>

#include <algorithm>
#include <vector>

namespace CppTools::AutoCli {

namespace {

constexpr std::size_t kNone = std::string::npos;

bool IsNameCharacter(char character) {
    return (character >= 'a' && character <= 'z') || (character >= '0' && character <= '9') ||
           character == '-';
}

/// Recognises \$if\{[a-z0-9-]+,.+?\} anywhere in the characters that it is given one by one.
///
/// Once the comma was seen, the first brace behind at least one more character completes the
/// match, and no later start could complete earlier.
class ConditionalMatcher {
  public:
    void Read(char character) { state_ = Next(character); }

    bool HasMatched() const { return state_ == State::Matched; }

  private:
    enum class State { Start, Dollar, I, F, Brace, Name, Comma, Text, Matched };

    State Next(char character) const {
        switch (state_) {
        case State::Start:
            break;
        case State::Dollar:
            return Follow(character == 'i', State::I, character);
        case State::I:
            return Follow(character == 'f', State::F, character);
        case State::F:
            return Follow(character == '{', State::Brace, character);
        case State::Brace:
            return Follow(IsNameCharacter(character), State::Name, character);
        case State::Name:
            return character == ',' ? State::Comma
                                    : Follow(IsNameCharacter(character), State::Name, character);
        case State::Comma:
            return State::Text;
        case State::Text:
            return character == '}' ? State::Matched : State::Text;
        case State::Matched:
            return State::Matched;
        }
        return Restart(character);
    }

    static State Follow(bool continues, State next, char character) {
        return continues ? next : Restart(character);
    }

    static State Restart(char character) { return character == '$' ? State::Dollar : State::Start; }

    State state_ = State::Start;
};

/// For each opening brace the offset of its partner, if it has one.
std::vector<std::size_t> PairBraces(const std::string& text) {
    std::vector<std::size_t> partners(text.size(), kNone);
    std::vector<std::size_t> open;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '{') {
            open.push_back(i);
        } else if (text[i] == '}' && !open.empty()) {
            partners[open.back()] = i;
            open.pop_back();
        }
    }
    return partners;
}

/// The text that stays. It remembers every "$" in it with a matcher that has read from there up
/// to the next one, so that the piece that begins at the last needs no second reading.
class KeptText {
  public:
    void Keep(const std::string& text, std::size_t begin, std::size_t end) {
        for (std::size_t i = begin; i < end; ++i) {
            if (text[i] == '$') {
                dollars_.push_back({kept_.size(), {}});
            }
            if (!dollars_.empty()) {
                dollars_.back().matcher.Read(text[i]);
            }
            kept_ += text[i];
        }
    }

    /// Whether what was kept from the last "$" on, with the given characters behind it, holds a
    /// conditional.
    bool IsConditionalWith(const std::string& text, std::size_t begin, std::size_t end) const {
        if (dollars_.empty()) {
            return false;
        }
        ConditionalMatcher matcher = dollars_.back().matcher;
        std::for_each(text.begin() + static_cast<std::ptrdiff_t>(begin),
                      text.begin() + static_cast<std::ptrdiff_t>(end),
                      [&](char character) { matcher.Read(character); });
        return matcher.HasMatched();
    }

    /// Drops everything from the last "$" on and returns how much that was.
    std::size_t DropFromLastDollar() {
        const std::size_t dropped = kept_.size() - dollars_.back().offset;
        kept_.resize(dollars_.back().offset);
        dollars_.pop_back();
        return dropped;
    }

    std::string Take() { return std::move(kept_); }

  private:
    struct Dollar {
        std::size_t offset;
        ConditionalMatcher matcher;
    };

    std::string kept_;
    std::vector<Dollar> dollars_;
};

} // namespace

std::string RemoveConditionals(const std::string& text) {
    const auto partners = PairBraces(text);
    KeptText kept;
    std::size_t next = 0;
    while (next < text.size()) {
        const std::size_t brace = std::min(text.find('{', next), text.size());
        kept.Keep(text, next, brace);
        next = brace;
        if (brace == text.size()) {
            break;
        }
        const bool isPaired = partners[brace] != kNone;
        const std::size_t end = isPaired ? partners[brace] + 1 : brace + 1;
        if (isPaired && kept.IsConditionalWith(text, brace, end)) {
            // The search goes on at the old offset, so as many characters go by unsearched.
            const std::size_t dropped = kept.DropFromLastDollar();
            next = std::min(end + dropped, text.size());
            kept.Keep(text, end, next);
        } else {
            kept.Keep(text, brace, end);
            next = end;
        }
    }
    return kept.Take();
}

} // namespace CppTools::AutoCli
