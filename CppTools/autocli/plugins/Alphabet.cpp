#include <CppTools/autocli/plugins/Alphabet.h>
#include <CppTools/callspec/ParameterSpec.h>

#include <algorithm>

namespace CppTools::AutoCli {

namespace {

using CallSpec::ParameterConstraint;
using CallSpec::ParameterConstraintType;
using CallSpec::ParameterType;

std::size_t IndexOf(char byte) {
    return static_cast<unsigned char>(byte);
}

/// No text at all: neither an empty one nor any other.
Alphabet NoText() {
    return {{}, {}, false};
}

/// Whether a constraint lets through numbers above 0 only.
bool IsPositive(const ParameterConstraint& constraint) {
    if (constraint.GetType() == ParameterConstraintType::IntEnum) {
        const auto& numbers = constraint.GetIntEnum();
        return std::all_of(numbers.begin(), numbers.end(), [](long number) { return number > 0; });
    }
    long least = 0;
    long most = 0;
    constraint.GetIntRange(least, most);
    return least > 0;
}

Alphabet AlphabetOfIntegers(const ParameterConstraint* constraint) {
    Alphabet alphabet = Alphabet::OneOf(BytesOf("0123456789+-"));
    if (constraint != nullptr && IsPositive(*constraint)) {
        alphabet.first.reset(IndexOf('-'));
    }
    return alphabet;
}

Alphabet AlphabetOfTexts(const ParameterConstraint* constraint) {
    if (constraint == nullptr) {
        return Alphabet::Anything();
    }
    if (constraint->GetType() == ParameterConstraintType::StringRegex) {
        return AlphabetOfPattern(constraint->GetStringRegex());
    }
    Alphabet alphabet = NoText();
    for (const auto& value : constraint->GetStringEnum()) {
        alphabet = alphabet.Or(Alphabet::OfText(value));
    }
    return alphabet;
}

} // namespace

ByteSet BytesOf(std::string_view bytes) {
    ByteSet set;
    for (const char byte : bytes) {
        set.set(IndexOf(byte));
    }
    return set;
}

Alphabet Alphabet::Anything() {
    return {ByteSet().set(), ByteSet().set(), true};
}

Alphabet Alphabet::OfText(std::string_view text) {
    return {BytesOf(text), BytesOf(text.substr(0, 1)), text.empty()};
}

Alphabet Alphabet::OneOf(const ByteSet& bytes) {
    return {bytes, bytes, false};
}

Alphabet Alphabet::Or(const Alphabet& other) const {
    return {all | other.all, first | other.first, mayBeEmpty || other.mayBeEmpty};
}

Alphabet Alphabet::Then(const Alphabet& other) const {
    return {all | other.all, mayBeEmpty ? first | other.first : first,
            mayBeEmpty && other.mayBeEmpty};
}

Alphabet AlphabetOfValues(const CallSpec::ParameterSpec& parameter) {
    static const ByteSet kBooleanWords = BytesOf("10yestrueTruenofalseFalse");
    const auto constraint = parameter.GetConstraint();
    switch (parameter.GetType()) {
    case ParameterType::Int:
    case ParameterType::IntList:
        return AlphabetOfIntegers(constraint.get());
    case ParameterType::Bool:
    case ParameterType::BoolList:
        return Alphabet::OneOf(kBooleanWords);
    case ParameterType::Flag:
        return Alphabet::OfText("");
    case ParameterType::String:
    case ParameterType::StringList:
        break;
    }
    return AlphabetOfTexts(constraint.get());
}

} // namespace CppTools::AutoCli
