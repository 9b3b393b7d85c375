#pragma once

#include <CppTools/autocli/plugins/TemplateCheck.h>

namespace CppTools::AutoCli {

/// The rules by name, in the order of `AutoCli_GetTemplateRules`.
enum class Rule : std::size_t {
    UnknownParameter,
    WrongKind,
    Malformed,
    SpelledTogether,
    Expansion,
    CommandSubstitution,
    Arithmetic,
    Backslash,
    Brace,
    SpecialCharacter,
    ShellPattern,
    Comment,
    HereDocument,
    OpenQuote,
    ComplexShell,
    NoSimpleCommand,
    Conditional,
    Redirection,
    CommandPosition,
    PrefixOption,
    NestedShell,
    UnknownCommand,
    PrintfFormat,
    BareText,
    DoubleQuotedText,
    QuotesDoNotTouch,
    QuotedTwoWays,
    ListOfText,
    ListForm,
    OptionInjection,
    MayBeAbsent,
    UncheckedScript
};

/// One breach of a rule.
struct Finding {
    Rule rule;
    std::size_t position;
    std::string placeholder;
};

using Findings = std::vector<Finding>;

const TemplateRule& TextsOf(Rule rule);

} // namespace CppTools::AutoCli
