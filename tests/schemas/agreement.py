"""Compares what the grammars say of many texts with what the engine says.

Usage: agreement.py VERDICTS REWRITING SCHEMAS RECORDED DESCRIPTOR...

VERDICTS and REWRITING are the two programs of this folder, SCHEMAS is the folder of the grammars,
RECORDED one of texts, and the DESCRIPTORs are files that must be good to all. Each text is taken
once as a descriptor and once as the result of a command.

Prints how many texts there were and how often each row of the table of disagreements explained one.
Fails when a text is left that no row explains, and when a row explains none.
"""

import collections
import json
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

from disagreements import REFUSALS, REWRITINGS
from edge_cases import TEXTS
from mutations import mutations

HERE = pathlib.Path(__file__).parent
KINDS = ("descriptor", "result")
OPTIONS = {"rng": "--relaxng", "xsd": "--schema"}

# xmllint takes time that grows with the square of this.
MOST_ELEMENTS = 20_000

MOST_BYTES = 20_000_000
PARAMETER_ENTITY = b"<!ENTITY %"

MUTATIONS = 300

# What the engine puts in front of its reasons.
PREFIX = re.compile(
    r"^(Unable to handle XML Plugin \S+  There was an error while parsing: |"
    r"Unable to register the command '[^']*'  Error was |"
    r"Unable to build output spec.  Error was |"
    r"Error parsing command output.*? Error was : )*",
    re.DOTALL,
)


class Engine:
    """What the engine says of the texts in a folder: why it refuses each, or None."""

    def __init__(self, program):
        self.program = program

    def verdicts(self, folder):
        run = subprocess.run(
            [self.program, folder], stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, check=True
        )
        lines = [json.loads(line) for line in run.stdout.splitlines()]
        return {line["file"]: line for line in lines}


class Grammar:
    def __init__(self, schemas, kind, language):
        self.kind = kind
        self.language = language
        self.file = schemas / f"{kind}.{language}"

    def accepted(self, folder):
        """Those of the texts in a folder that the grammar lets pass."""
        names = sorted(entry.name for entry in folder.iterdir())
        command = ["xmllint", "--memory", "--nonet", "--noout", OPTIONS[self.language], self.file]
        passed = set()
        for start in range(0, len(names), 1000):
            run = subprocess.run(
                command + names[start : start + 1000],
                cwd=folder,
                stdout=subprocess.DEVNULL,
                stderr=subprocess.PIPE,
            )
            said = run.stderr.decode(errors="replace")
            if "failed to compile" in said:
                sys.exit(f"{self.file} is no grammar:\n{said[:2000]}")
            passed.update(re.findall(r"^(\S+) validates$", said, re.MULTILINE))
        return passed


class Comparison:
    """Of one grammar with the engine."""

    def __init__(self, grammar, engine, rewriting, folder, verdicts):
        self.grammar = grammar
        self.engine = engine
        self.rewriting = rewriting
        self.folder = folder
        self.verdicts = verdicts
        self.explained = collections.Counter()
        self.troubles = []

    def run(self, good):
        passed = self.grammar.accepted(self.folder)
        for name in sorted(set(good) - passed):
            self.trouble(name, "is refused though it is good")
        left = self.disagreeing(passed, self.verdicts, self.verdicts)
        rows = REWRITINGS[self.grammar.language]
        for count in range(1, len(rows) + 1):
            left = self.after_rewriting(left, [row.step for row in rows[:count]])
        for name in sorted(left):
            self.explain_refusal(name)

    def accepts(self, verdicts, name):
        return verdicts[name][self.grammar.kind] is None

    def disagreeing(self, passed, verdicts, names):
        return {name for name in names if (name in passed) != self.accepts(verdicts, name)}

    def after_rewriting(self, names, steps):
        """Those that the grammar still sees otherwise than the engine when these steps are done."""
        with tempfile.TemporaryDirectory() as scratch:
            folder = pathlib.Path(scratch)
            files = "".join(f"{self.folder / name}\n" for name in sorted(names))
            subprocess.run(
                [self.rewriting, folder, self.grammar.kind, *steps],
                input=files.encode(),
                stderr=subprocess.DEVNULL,
                check=True,
            )
            verdicts = self.engine.verdicts(folder)
            for name in sorted(names):
                if self.accepts(verdicts, name) != self.accepts(self.verdicts, name):
                    self.trouble(name, f"means something else after {', '.join(steps)}")
            left = self.disagreeing(self.grammar.accepted(folder), verdicts, names)
        self.explained[steps[-1]] += len(names) - len(left)
        return left

    def explain_refusal(self, name):
        message = self.verdicts[name][self.grammar.kind]
        if message is None:
            self.trouble(name, "is refused by the grammar alone")
            return
        reason = PREFIX.sub("", message)
        for row in REFUSALS:
            if self.grammar.language in row.grammars and row.fits(reason):
                self.explained[row.message] += 1
                return
        self.trouble(name, f"is refused by the engine alone: {reason}")

    def trouble(self, name, what):
        text = (self.folder / name).read_bytes()[:2000]
        self.troubles.append(f"{self.grammar.file.name}: {name} {what}\n    {text!r}")


def element_count(text):
    return text.count(b"</") + text.count(b"/>")


def reason_to_leave_out(text):
    if element_count(text) > MOST_ELEMENTS:
        return "too many elements"
    if len(text) > MOST_BYTES:
        return "too long"
    if PARAMETER_ENTITY in text:
        return "entities that libxml2 may never come back from"
    return None


def collect(folder, recorded, good):
    """Fills the folder with all texts; the names of the good ones."""
    for file in recorded.glob("*.xml"):
        reason = reason_to_leave_out(file.read_bytes())
        if reason is None:
            shutil.copy(file, folder)
        else:
            print(f"left out, {reason}: {file.name}")
    for number, file in enumerate(good):
        shutil.copy(file, folder / f"good{number}.xml")
    spoilt = [mutations(HERE / f"complete-{kind}.xml", MUTATIONS) for kind in KINDS]
    for number, text in enumerate(sum(spoilt, TEXTS)):
        (folder / f"own{number}.xml").write_text(text, encoding="utf-8")
    return [f"good{number}.xml" for number in range(len(good))]


def compare(folder, good, engine, rewriting, schemas):
    """Prints what there is to say; the troubles."""
    verdicts = engine.verdicts(folder)
    troubles = []
    explained = collections.Counter()
    for kind in KINDS:
        taken = sum(verdict[kind] is None for verdict in verdicts.values())
        print(f"{len(verdicts)} texts, {taken} of them good as a {kind}")
        for language in OPTIONS:
            grammar = Grammar(schemas, kind, language)
            comparison = Comparison(grammar, engine, rewriting, folder, verdicts)
            comparison.run(good if kind == "descriptor" else [])
            troubles += comparison.troubles
            for row, number in comparison.explained.items():
                explained[language, row] += number
    rows = [(language, row.step, row) for language in OPTIONS for row in REWRITINGS[language]]
    rows += [(language, row.message, row) for row in REFUSALS for language in row.grammars]
    for language, key, row in rows:
        print(f"{explained[language, key]:6} {language} {key}: {row.reason}")
        if explained[language, key] == 0:
            troubles.append(f"no text needs the row {key} for {language}")
    return troubles


def main():
    verdicts, rewriting, schemas, recorded, *good = sys.argv[1:]
    with tempfile.TemporaryDirectory() as scratch:
        folder = pathlib.Path(scratch)
        names = collect(folder, pathlib.Path(recorded), good)
        schemas = pathlib.Path(schemas).resolve()
        troubles = compare(folder, names, Engine(verdicts), rewriting, schemas)
    for trouble in troubles:
        print(trouble, file=sys.stderr)
    sys.exit(1 if troubles else 0)


main()
