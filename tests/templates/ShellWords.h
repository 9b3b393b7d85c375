#pragma once

#include <optional>
#include <string>
#include <vector>

namespace Templates {

/// One word or operator of a command line as a shell reads it.
struct ShellToken {
    bool isOperator;
    bool isQuoted; ///< A quoted word stays even when it is empty.
    std::string text;

    bool operator==(const ShellToken&) const = default;
};

/// The tokens of a line of simple commands; empty when there is anything in it that a shell would
/// expand to more than text, run, or take for other syntax. No variable is taken to be set.
std::optional<std::vector<ShellToken>> ReadShellLine(const std::string& line);

} // namespace Templates
