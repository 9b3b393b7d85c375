"""Measures how cost grows with size, and prints the exponent of each curve. See growth.sh."""
import argparse
import math
import os
import sys
from dataclasses import dataclass

import descriptors
import document
import plot
import setting as settings
import table
import turns

DOCUMENTS = os.path.join(settings.BENCH, "..", "docs", "performance")


@dataclass(frozen=True)
class Curve:
    name: str
    title: str
    first: int
    last: int
    programs: tuple  # (name of the line, words with {} for the size, key, scale by size to ms)


def whole(key_per_item):
    """From microseconds an item to milliseconds."""
    return lambda figures, size: figures[key_per_item] * size / 1e3


def growth(name, title, first, last, lines):
    """A curve of the program growth."""
    return Curve(name, title, first, last, tuple(
        (line, ("growth", name, "{}"), lambda figures, size, line=line: figures[line])
        for line in lines))


CURVES = (
    Curve("rows", "rows", 1000, 5000000, (
        ("build", ("rendering", "json", "{}"), whole("build_us_per_row")),
        ("json", ("rendering", "json", "{}"), whole("render_us_per_row")),
        ("table", ("rendering", "table", "{}"), whole("render_us_per_row")),
        ("release", ("rendering", "json", "{}"), whole("release_us_per_row")),
        ("held MB", ("rendering", "json", "{}"),
         lambda figures, size: figures["held_bytes_per_row"] * size / 1e6))),
    Curve("commands", "commands registered in process", 10, 100000, (
        ("registered", ("registration", "registered", "{}"), whole("us_per_command")),
        ("specified", ("registration", "specified", "{}"), whole("us_per_command")),
        ("held MB", ("registration", "specified", "{}"),
         lambda figures, size: figures["allocated_bytes_per_command"] * size / 1e6))),
    Curve("descriptors", "commands from descriptors", 10, 100000, (
        ("loaded", ("descriptor-loading", "{folder}", "{}"), lambda figures, size: figures["ms"]),
        ("held MB", ("descriptor-loading", "{folder}", "{}"),
         lambda figures, size: figures["allocated_bytes_per_command"] * size / 1e6))),
    growth("columns", "columns of 100 rows", 1, 200,
           ("build", "json", "xml", "table", "python", "simple", "compare")),
    growth("nesting", "structures inside one another", 1, 1000,
           ("build", "python", "compare", "plain text")),
    growth("value", "bytes of one text", 1, 100000000, ("json", "xml", "python", "simple", "read")),
    growth("parameters", "parameters of a command, all given", 1, 2000, ("declare", "call")),
    growth("path", "names in the path of a command", 1, 2000, ("call", "text")),
    growth("template", "bytes of a template", 16, 1000000, ("fill",)),
    growth("option", "values of one option", 1, 100000, ("call",)),
)


def sizes_of(curve, largest):
    """Doubled from the first to the last, which stands in for the doubling that would pass it."""
    last = max(min(curve.last, largest), curve.first)
    sizes = []
    size = curve.first
    while size * 1.5 <= last:
        sizes.append(size)
        size *= 2
    return sizes + [last]


def words_for(words, size, build, data):
    folder = os.path.join(data, f"descriptors{size}")
    if "{folder}" in words and not os.path.isdir(folder):
        descriptors.write_folder(folder, math.ceil(size / descriptors.COMMANDS))
    filled = (word.format(size, folder=folder) for word in words[1:])
    return (os.path.join(build, "bench", words[0]), *filled)


def measure(curve, size, build, data, rounds):
    """Line -> least of the rounds; programs that serve several lines run once in a round."""
    lines = {}
    for _ in range(rounds):
        told = {}
        for line, words, to_figure in curve.programs:
            if words not in told:
                told[words] = turns.run(turns.Job(curve.name, words_for(words, size, build, data)))
            figure = to_figure(told[words], size)
            lines[line] = min(lines.get(line, figure), figure)
    return lines


def exponent(sizes, values):
    """The slope of the upper half of the sizes on logarithmic scales."""
    half = len(sizes) // 2
    points = [(math.log(size), math.log(value))
              for size, value in list(zip(sizes, values))[half:] if value > 0]
    if len(points) < 2:
        return None
    mean_x = sum(x for x, _ in points) / len(points)
    mean_y = sum(y for _, y in points) / len(points)
    spread = sum((x - mean_x) ** 2 for x, _ in points)
    return sum((x - mean_x) * (y - mean_y) for x, y in points) / spread


def write_csv(path, sizes, lines):
    with open(path, "w") as out:
        out.write(",".join(["size", *lines]) + "\n")
        for index, size in enumerate(sizes):
            out.write(",".join([str(size), *(f"{values[index]:.6g}" for values in lines.values())])
                      + "\n")


def run_curve(curve, options, build, data):
    sizes = sizes_of(curve, options.max)
    lines = {line: [] for line, _, _ in curve.programs}
    for size in sizes:
        for line, value in measure(curve, size, build, data, options.rounds).items():
            lines[line].append(value)
    write_csv(os.path.join(data, curve.name + ".csv"), sizes, lines)
    svg = plot.svg(f"{curve.title}: milliseconds", sizes, lines)
    folder = DOCUMENTS if options.write else data
    os.makedirs(folder, exist_ok=True)
    with open(os.path.join(folder, curve.name + ".svg"), "w") as out:
        out.write(svg)
    return [[curve.title, f"{sizes[0]:,} to {sizes[-1]:,}", line,
             f"{values[-1]:.4g}", "" if slope is None else f"{slope:.2f}"]
            for line, values in lines.items() for slope in [exponent(sizes, values)]]


def main():
    parser = argparse.ArgumentParser(prog="bench/growth.sh")
    parser.add_argument("--max", type=int, default=sys.maxsize, help="no size above this")
    parser.add_argument("--only", action="append", choices=[curve.name for curve in CURVES],
                        metavar="NAME", help="only this curve")
    parser.add_argument("--rounds", type=int, default=2, help="runs at each size; the least counts")
    parser.add_argument("--write", action="store_true", help="renew the document and its plots")
    parser.add_argument("--build", required=True, help=argparse.SUPPRESS)
    options = parser.parse_args()
    build = os.path.abspath(options.build)
    data = os.path.join(build, "bench", "growth-data")
    os.makedirs(data, exist_ok=True)
    lines = []
    for curve in CURVES:
        if not options.only or curve.name in options.only:
            print(f"measuring {curve.name}", file=sys.stderr, flush=True)
            lines += run_curve(curve, options, build, data)
    header = ["of", "sizes", "what", "ms at the largest", "exponent"]
    text = table.markdown(header, lines)
    print(text)
    if options.write:
        document.replace_between(os.path.join(DOCUMENTS, "..", "performance.md"), "growth", text)


if __name__ == "__main__":
    try:
        main()
    except turns.Failure as failure:
        sys.exit(f"bench/growth.sh: {failure}")
