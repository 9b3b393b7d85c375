#pragma once

#include <CppTools/autocli/plugins/TemplateScanner.h>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// What is known of the commands that templates call.
namespace CppTools::AutoCli {

/// Whether a shell takes the word, unquoted and in the place of a command, for syntax.
bool IsReservedWord(std::string_view word);

/// Whether the word sets a variable when it stands before a command: NAME=...
bool IsAssignment(std::string_view word);

/// What is wrong with calling a program or builtin with values as arguments or on its standard
/// input, if anything.
std::optional<Rule> ProgramRule(const std::string& command);

/// Whether a script that holds the word might run what comes on its standard input.
bool MayRunItsInput(std::string_view word);

/// Programs whose arguments are the command to run, such as nice.
bool IsPrefix(const std::string& command);

/// The index of the word that such a program, which is the word at `prefix`, runs; that may be
/// behind the last. Empty when its options cannot be told from that.
std::optional<std::size_t> SkipPrefix(const std::vector<Word>& words, std::size_t prefix);

} // namespace CppTools::AutoCli
