#!/usr/bin/env python3
"""Runs a document: does what its code blocks say, in an empty folder, and compares what is shown.

    ```xml jobs.xml      a file of that name is written
    ```console           a session of a shell: what stands behind "$ " is typed (and what follows
                         behind "> "), the lines below are what comes out, errors included

What a file calls /usr/bin/tandril... is taken from the folder that INSTALLED_PROGRAMS names, and told
of as the document does. In what comes out, a line of three dots stands for any number of lines, and blanks at the end of a
line do not count. All sessions of a document are one: the folder, variables and the last exit
status stay. Any other block is a mistake, so that no example goes without being tried.

With --write the document gets what came out where it shows something else.
"""

import argparse
import dataclasses
import difflib
import os
import pathlib
import re
import subprocess
import sys
import tempfile

DOCUMENTED_PROGRAMS = "/usr/bin/tandril"
INSTALLED_PROGRAMS = os.environ.get("INSTALLED_PROGRAMS", "/usr/bin") + "/tandril"

FENCE = re.compile(r"^```(.*)$")


@dataclasses.dataclass
class Block:
    line: int
    words: list[str]
    text: str


@dataclasses.dataclass
class Command:
    line: int
    text: str
    expected: str


class WrongDocument(Exception):
    pass


def blocks_of(document):
    block = None
    for number, line in enumerate(document.splitlines(), start=1):
        fence = FENCE.match(line)
        if block is None and fence:
            block = Block(number, fence[1].split(), "")
        elif fence:
            yield block
            block = None
        elif block is not None:
            block.text += line + "\n"
    if block is not None:
        raise WrongDocument(f"line {block.line}: a block without an end")


def commands_of(block):
    commands = []
    for number, line in enumerate(block.text.splitlines(), start=block.line + 1):
        if line.startswith("$ "):
            commands.append(Command(number, line[2:] + "\n", ""))
        elif not commands:
            raise WrongDocument(f"line {number}: a session begins with a command")
        elif line.startswith("> ") and not commands[-1].expected:
            commands[-1].text += line[2:] + "\n"
        else:
            commands[-1].expected += line + "\n"
    return commands


class Shell:
    """One shell for a whole document. A command's standard input is empty."""

    END = "end of command 5d1f:"

    def __init__(self, folder):
        self.process = subprocess.Popen(["sh"], cwd=folder, stdin=subprocess.PIPE, text=True,
                                        stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
        self.status = 0

    def run(self, command):
        self.process.stdin.write(f"(exit {self.status})\n{{ {command}}} </dev/null\n"
                                 f"printf '%s%d\\n' '{self.END}' $?\n")
        self.process.stdin.flush()
        output = ""
        for line in self.process.stdout:
            text, end, status = line.partition(self.END)
            output += text
            if end:
                self.status = int(status)
                return output
        raise WrongDocument("the shell has ended")

    def close(self):
        self.process.stdin.close()
        self.process.wait()


def without_blanks_at_ends(text):
    return re.sub("[ \t]+$", "", text, flags=re.MULTILINE)


def matches(expected, actual):
    pieces = re.split(r"^\.\.\.\n", expected, flags=re.MULTILINE)
    return re.fullmatch("(?:.*\n)*".join(map(re.escape, pieces)), actual) is not None


class Run:
    """One run of a document, and the document as it should be."""

    def __init__(self, document, folder):
        self.lines = document.splitlines()
        self.folder = folder
        self.shell = Shell(folder)
        self.commands = 0
        self.wrong = []

    def run(self):
        for block in blocks_of("\n".join(self.lines)):
            if block.words == ["console"]:
                for command in commands_of(block):
                    self.run_command(command)
            elif len(block.words) == 2:
                text = block.text.replace(DOCUMENTED_PROGRAMS, INSTALLED_PROGRAMS)
                (self.folder / block.words[1]).write_text(text, encoding="utf-8")
            else:
                raise WrongDocument(f"line {block.line}: neither a session nor a file")
        self.shell.close()
        if self.commands == 0:
            raise WrongDocument("there is nothing to run")

    def run_command(self, command):
        self.commands += 1
        actual = without_blanks_at_ends(self.shell.run(command.text))
        actual = actual.replace(INSTALLED_PROGRAMS, DOCUMENTED_PROGRAMS)
        if not matches(command.expected, actual):
            self.wrong.append((command, actual))

    def report(self):
        for command, actual in self.wrong:
            print(f"line {command.line}: {command.text}", end="")
            sys.stdout.writelines(difflib.unified_diff(
                command.expected.splitlines(True), actual.splitlines(True), "document", "run"))
        print(f"{self.commands} commands, {len(self.wrong)} with another result")

    def mended(self):
        lines = list(self.lines)
        for command, actual in reversed(self.wrong):
            begin = command.line - 1 + command.text.count("\n")
            lines[begin:begin + command.expected.count("\n")] = actual.splitlines()
        return "\n".join(lines) + "\n"


def main():
    arguments = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    arguments.add_argument("document", type=pathlib.Path)
    arguments.add_argument("--write", action="store_true")
    options = arguments.parse_args()
    with tempfile.TemporaryDirectory() as folder:
        run = Run(options.document.read_text(encoding="utf-8"), pathlib.Path(folder))
        try:
            run.run()
        except WrongDocument as mistake:
            print(mistake)
            return 1
    run.report()
    if options.write:
        options.document.write_text(run.mended(), encoding="utf-8")
        return 0
    return 1 if run.wrong else 0


if __name__ == "__main__":
    sys.exit(main())
