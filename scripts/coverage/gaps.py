"""Compares the lines that no test reached with those that a page explains. See ../coverage.sh."""

import json
import re
import sys

REQUIRED_BRANCHES = 0.95
EXPLAINED = re.compile(r"^\| `(CppTools/[^`]+)` \| `(.+?)` \|", re.MULTILINE)


def read_counts(path):
    """The (file, text) of each line that was not reached, and the share of branches taken."""
    with open(path, encoding="utf-8") as stream:
        files = json.load(stream)["files"]
    missed, branches, taken = [], 0, 0
    for file in files:
        with open(file["file"], encoding="utf-8") as source:
            texts = source.read().splitlines()
        for line in file["lines"]:
            if line["count"] == 0 and not line["gcovr/noncode"]:
                missed.append((file["file"], texts[line["line_number"] - 1].strip()))
            branches += len(line["branches"])
            taken += sum(branch["count"] > 0 for branch in line["branches"])
    return missed, taken / max(branches, 1)


def main():
    counts, page = sys.argv[1:]
    missed, share = read_counts(counts)
    with open(page, encoding="utf-8") as stream:
        explained = EXPLAINED.findall(stream.read())
    problems = [f"reached by no test and not explained: {file}: {text}"
                for file, text in missed if (file, text) not in explained]
    problems += [f"explained as not reached, but reached or gone: {file}: {text}"
                 for file, text in explained if (file, text) not in missed]
    if share < REQUIRED_BRANCHES:
        problems.append(f"only {share:.1%} of the branches are taken")
    print(*problems, sep="\n", end="\n" if problems else "")
    sys.exit(1 if problems else 0)


if __name__ == "__main__":
    main()
