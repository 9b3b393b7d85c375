#pragma once

#include <string>

/// Text of unknown origin made fit for documents and terminals.
namespace TandrilResult {

/// Every byte that is not part of well-formed UTF-8, and every byte of a character that an XML
/// document cannot carry or that steers a terminal (control characters other than tab, line feed
/// and carriage return), is written as "\x" and two hexadecimal digits. All else stays.
std::string PrintableText(std::string text);

/// The same, in one line: line feeds are written "\n", carriage returns "\r".
std::string PrintableLine(std::string text);

} // namespace TandrilResult
