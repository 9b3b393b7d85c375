#pragma once

#include <CppTools/Export.h>

#include <string>

namespace CppTools::AutoCli {

/// Told of every finished command: its line, and the child's status as waitpid(2) reports it.
using CommandExecListener = void (*)(const std::string& commandLine, int waitStatus);

/// Makes an extra option for the shell, or the empty string for none. What the number and the
/// option mean is the host program's business; the library always asks with -1.
using ChildRpZornOptionMaker = std::string (*)(int id);

/// Runs `/bin/sh -c command`, feeds it `input`, appends everything that it prints on standard
/// output to `output`, and returns its status as waitpid(2) reports it. Standard error is the
/// caller's. All input is written before any output is read, so a child that prints more than a
/// pipe holds before it has read its input blocks for ever.
///
/// No child is left behind when this throws:
/// - "Can't create input pipe: ", "Can't create output pipe: ", "Unable to write to
///   sub-process: " or "Unable to read from sub-process: " and the system's reason;
/// - "Failed to call process 'C': " or "Error waiting for process 'C': " and the reason.
CPPTOOLS_EXPORT int AutoCli_ShellCmd(const std::string& command, std::string& output,
                                     const std::string& input);

/// The same with NEL_USERNAME set to `userName` in the environment of the command, unless the
/// name is empty.
CPPTOOLS_EXPORT int AutoCli_ShellCmdWithNelUsername(const std::string& command,
                                                    const std::string& userName,
                                                    std::string& output, const std::string& input);

/// The two hooks of the process, empty until the host program installs something, before the
/// first command runs. Null empties them again.
CPPTOOLS_EXPORT void SetCommandExecListener(CommandExecListener listener);
CPPTOOLS_EXPORT void SetChildRpZornOptionMaker(ChildRpZornOptionMaker maker);

/// What the installed maker answers; empty without one.
CPPTOOLS_EXPORT std::string MakeChildRpZornOption(int id);

/// Writes "panic: " and the printf(3)-formatted message, cut to 255 bytes, to standard error and
/// aborts the process.
[[noreturn]] CPPTOOLS_EXPORT void Panic(const char* format, ...)
    __attribute__((format(printf, 1, 2)));

} // namespace CppTools::AutoCli
