"""Checks that descriptors name the grammar, where it is, and are good to it.

Usage: named-grammars.py DESCRIPTOR...
"""

import pathlib
import re
import subprocess
import sys

MODEL = re.compile(
    r'<\?xml-model href="([^"]+)" type="application/xml" '
    r'schematypens="http://relaxng.org/ns/structure/1.0"\?>'
)


def trouble(descriptor):
    """What is wrong with a descriptor; None when nothing is."""
    model = MODEL.search(descriptor.read_text(encoding="utf-8"))
    if model is None:
        return "names no grammar"
    grammar = descriptor.parent / model.group(1)
    run = subprocess.run(
        ["xmllint", "--nonet", "--noout", "--relaxng", grammar, descriptor],
        stderr=subprocess.PIPE,
        text=True,
    )
    return run.stderr if run.returncode != 0 else None


def main():
    troubles = {name: trouble(pathlib.Path(name)) for name in sys.argv[1:]}
    for name, what in troubles.items():
        if what is not None:
            print(f"{name}: {what}")
    sys.exit(len(troubles) == 0 or any(what is not None for what in troubles.values()))


main()
