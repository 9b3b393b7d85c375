#!/usr/bin/env python3
"""Shows a public header to Doxygen: as a part of its subsystem, and with the comment of a group of
declarations at each of them. In the headers one comment stands for the declarations that follow it
without an empty line."""

import pathlib
import re
import sys

DOCUMENTATION = re.compile(r"\s*///(?!<)")
NO_DECLARATION = re.compile(r"\s*(//|#|[{}]|(public|protected|private):|$)")
ENDS_DECLARATION = re.compile(r"(;|\})(\s*///<.*)?$")


def indentation(line):
    return len(line) - len(line.lstrip())


def with_shared_comments(lines):
    comment, level, declaration_ended = [], 0, False
    previous = ""
    for line in lines:
        if DOCUMENTATION.match(line):
            if not DOCUMENTATION.match(previous):
                comment = []
            comment.append(line)
            level, declaration_ended = indentation(line), False
        elif not line.strip():
            comment = []
        elif comment:
            begins = indentation(line) == level and not NO_DECLARATION.match(line)
            if begins and declaration_ended and "///<" not in line:
                yield from comment
            declaration_ended = bool(ENDS_DECLARATION.search(line))
        previous = line
        yield line


def within_group(lines, group):
    """What the header's own namespace holds is of the group; those before it only announce names."""
    begin = max(i for i, line in enumerate(lines) if line.startswith("namespace "))
    end = max(i for i, line in enumerate(lines) if line.startswith("} // namespace"))
    opened, closed = f"/** @addtogroup {group} */", "/** @} */"
    return [*lines[: begin + 1], opened, "/** @{ */", *lines[begin + 1 : end], closed, *lines[end:]]


def main():
    header = pathlib.Path(sys.argv[1])
    lines = list(with_shared_comments(header.read_text(encoding="utf-8").splitlines()))
    if any(line.startswith("namespace ") for line in lines):
        lines = within_group(lines, header.parent.name)
    print("\n".join(lines))


if __name__ == "__main__":
    main()
