#pragma once

#include <optional>
#include <string>

namespace CppTools::Host {

/// The size of a terminal in character cells.
struct TerminalSize {
    unsigned short columns;
    unsigned short rows;
};

/// The size of the terminal on standard output; nothing when that is no terminal.
std::optional<TerminalSize> GetTerminalSize();

/// Reads a line of standard input without its line end; at the end of the input it is empty. If
/// standard input is a terminal, its echo is off meanwhile; it is restored before this returns or
/// throws, and also when a signal ends or stops the process while it waits. Returns 0 or an errno
/// number; nothing is read from a terminal whose echo cannot be switched off.
int ReadLineWithoutEcho(std::string& line);

} // namespace CppTools::Host
