#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace Devkit {

enum class Severity {
    Error,   ///< The tool refuses it, or a call cannot do what it is meant to.
    Warning, ///< It works, but hardly as its author means it.
    Note,    ///< It could be better.
};

/// "error", "warning" or "note".
const std::string& NameOf(Severity severity);

/// What descriptors and result documents are checked against, beside the rules for templates that
/// the library has. In the order of `GetRules`.
enum class Rule : std::size_t {
    Unreadable,
    Syntax,
    Grammar,
    Refused,
    BadName,
    TakenPath,
    MissingNamespace,
    UndescribedCommand,
    HelpRedefined,
    ShortNameClash,
    UndescribedValue,
    BadRegex,
    RunawayRegex,
    UnusedParameter,
    ListOfOne,
    NoOutput,
    NoFormatter,
    UnknownFormatter,
    TableOfOther,
    UnknownFormatParameter,
    UnknownType,
    UnknownField,
    PrintfMismatch,
    EmptyDocument,
    ErrorLines,
    OtherShape,
};

struct RuleTexts {
    std::string id;
    Severity severity;
    std::string meaning; ///< What has been found, in general.
    std::string advice;  ///< What to do about it.
};

/// All rules, in a fixed order.
const std::vector<RuleTexts>& GetRules();

const RuleTexts& TextsOf(Rule rule);

} // namespace Devkit
