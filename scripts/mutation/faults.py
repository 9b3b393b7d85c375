"""Finds the places of a C++ source where a small fault can be put."""

import re
from dataclasses import dataclass

LITERALS_AND_COMMENTS = re.compile(
    r"//[^\n]*|/\*.*?\*/|R\"\((?:.*?)\)\"|\"(?:\\.|[^\"\\\n])*\"|'(?:\\.|[^'\\\n])+'", re.DOTALL)
COMPARISONS = {"==": "!=", "!=": "==", "<=": ">", ">=": "<", "&&": "||", "||": "&&"}
ORDERINGS = {"<": ("<=", ">="), ">": (">=", "<=")}
APPENDS = re.compile(r"AddErrorMessage\(|ReportMismatch\(|push_back\(|emplace_back\(|append\(| << | \+= ")
DECLARATION = re.compile(
    r"(return|using|const|auto|namespace|throw|break|continue|case|default|static|typedef|struct|class|enum)\b")


@dataclass(frozen=True)
class Fault:
    """Text `start` to `end` of a file replaced; `kind` says what was done."""

    kind: str
    path: str
    start: int
    end: int
    replacement: str

    def applied_to(self, text):
        return text[: self.start] + self.replacement + text[self.end :]


def blank_out(match):
    return "".join("\n" if character == "\n" else "\0" for character in match.group())


def find_faults(path, text):
    """All faults that this program knows for one source file."""
    code = LITERALS_AND_COMMENTS.sub(blank_out, text)
    code = re.sub(r"^[ \t]*#.*$", blank_out, code, flags=re.MULTILINE)
    faults = []

    def add(kind, start, end, replacement):
        faults.append(Fault(kind, path, start, end, replacement))

    find_operators(code, add)
    find_literals(text, code, add)
    find_statements(text, code, add)
    return faults


def find_operators(code, add):
    for match in re.finditer(r" (==|!=|<=|>=|&&|\|\|) ", code):
        add("operator", match.start(1), match.end(1), COMPARISONS[match.group(1)])
    for match in re.finditer(r" ([<>]) ", code):
        for other in ORDERINGS[match.group(1)]:
            add("operator", match.start(1), match.end(1), other)
    for match in re.finditer(r"(?<=[\w)\]]) ([+-]) (?=[\w(])", code):
        add("operator", match.start(1), match.end(1), "-" if match.group(1) == "+" else "+")
    for match in re.finditer(r"(?<=[( ])!(?=[\w(])", code):
        add("negation", match.start(), match.end(), "")
    for match in re.finditer(r"\b(true|false)\b", code):
        add("literal", match.start(), match.end(), "false" if match.group() == "true" else "true")


def find_literals(text, code, add):
    for match in re.finditer(r"(?<![\w.])\d+(?![\w.])", code):
        add("literal", match.start(), match.end(), str(int(match.group()) + 1))
    for match in LITERALS_AND_COMMENTS.finditer(text):
        start, end = match.span()
        literal = match.group()
        line_start = text.rfind("\n", 0, start) + 1
        if text[line_start:start].lstrip().startswith("#"):
            continue
        if literal.startswith('"'):
            add("literal", end - 1, end, '~"')
        elif literal.startswith("'"):
            add("literal", start, end, "'~'")


def find_statements(text, code, add):
    """Statements of one line that can be left out, and neighbours that append something.

    Those can change places; most other neighbours may stand in either order.
    """
    position = 0
    above = None
    opens = True
    for line in code.splitlines(keepends=True):
        start, end = position, position + len(line)
        position = end
        stripped = line.strip()
        statement = (opens and stripped.endswith(";") and line.startswith("    ")
                     and not stripped.endswith(("= delete;", "= default;"))
                     and not DECLARATION.match(stripped))
        if statement:
            add("drop", start, end, "\n")
            if above and APPENDS.search(line) and APPENDS.search(code[above[0] : above[1]]):
                swapped = text[start:end] + text[above[0] : above[1]]
                add("swap", above[0], end, swapped)
        above = (start, end) if statement else None
        if stripped.strip("\0"):
            opens = stripped.endswith((";", "{", "}", ":"))
