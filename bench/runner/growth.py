"""Measures how cost grows with size, and prints the exponent of each curve. See growth.sh."""
import argparse
import math
import os
import sys
import tempfile
from dataclasses import dataclass

import descriptors
import document
import plot
import setting as settings
import table
import turns

DOCUMENTS = os.path.join(settings.BENCH, "..", "docs", "performance")


@dataclass(frozen=True)
class Line:
    name: str
    words: tuple  # of the program, {} for the size
    key: str
    per_item: float = 0  # from the figure of one item to that of all; 0 for figures of all
    unit: str = "ms"

    def value(self, figures, size):
        return figures[self.key] * (size * self.per_item or 1)


@dataclass(frozen=True)
class Curve:
    name: str
    title: str
    first: int
    last: int
    lines: tuple


def growth(name, title, first, last, keys):
    """A curve of the program growth."""
    return Curve(name, title, first, last,
                 tuple(Line(key, ("growth", name, "{}"), key) for key in keys))


JSON, TABLE = ("rendering", "json", "{}"), ("rendering", "table", "{}")
REGISTERED, SPECIFIED = (("registration", mode, "{}") for mode in ("registered", "specified"))
LOADED = ("descriptor-loading", "{folder}", "{}")
CURVES = (
    Curve("rows", "rows", 1000, 5000000, (
        Line("build", JSON, "build_us_per_row", 1e-3),
        Line("json", JSON, "render_us_per_row", 1e-3),
        Line("table", TABLE, "render_us_per_row", 1e-3),
        Line("release", JSON, "release_us_per_row", 1e-3),
        Line("held", JSON, "held_bytes_per_row", 1e-6, "MB"))),
    Curve("commands", "commands registered in process", 10, 100000, (
        Line("registered", REGISTERED, "us_per_command", 1e-3),
        Line("specified", SPECIFIED, "us_per_command", 1e-3),
        Line("held", SPECIFIED, "allocated_bytes_per_command", 1e-6, "MB"))),
    Curve("descriptors", "commands from descriptors", 10, 100000, (
        Line("loaded", LOADED, "ms"),
        Line("held", LOADED, "allocated_bytes_per_command", 1e-6, "MB"))),
    growth("columns", "columns of 1,000 rows", 1, 200,
           ("build", "json", "xml", "table", "python", "simple", "compare")),
    growth("nesting", "structures inside one another", 1, 1000,
           ("build", "python", "compare", "plain text")),
    growth("value", "bytes of one text", 1, 100000000,
           ("json", "xml", "table", "python", "simple", "read", "parse", "sanitise")),
    growth("parameters", "parameters of a command, all given", 1, 20000, ("declare", "call")),
    growth("path", "names in the path of a command", 1, 10000, ("call", "text")),
    growth("template", "bytes of a template", 16, 1000000, ("fill",)),
    growth("option", "values of one option", 1, 100000, ("call",)),
)


def sizes_of(curve, largest):
    """Doubled from the first to the last, which stands in for the doubling that would pass it."""
    last = max(min(curve.last, largest or curve.last), curve.first)
    sizes = []
    size = curve.first
    while size * 1.5 <= last:
        sizes.append(size)
        size *= 2
    return sizes + [last]


def words_for(words, size, build, folder):
    return (os.path.join(build, "bench", words[0]),
            *(word.format(size, folder=folder) for word in words[1:]))


def measure(curve, size, build, rounds):
    """Line -> least of the rounds; a program that serves several lines runs once in a round."""
    least = {}
    with tempfile.TemporaryDirectory() as folder:
        if curve.name == "descriptors":
            descriptors.write_folder(folder, math.ceil(size / descriptors.COMMANDS))
        for _ in range(rounds):
            told = {}
            for line in curve.lines:
                if line.words not in told:
                    job = turns.Job(curve.name, words_for(line.words, size, build, folder))
                    told[line.words] = turns.run(job)
                value = line.value(told[line.words], size)
                least[line] = min(least.get(line, value), value)
    return least


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


def write_csv(path, sizes, values):
    with open(path, "w") as out:
        out.write(",".join(["size", *(line.name for line in values)]) + "\n")
        for index, size in enumerate(sizes):
            row = (f"{column[index]:.6g}" for column in values.values())
            out.write(",".join([str(size), *row]) + "\n")


def read_csv(path, curve):
    """Sizes, and line -> values; no sizes where the curve was not measured yet."""
    if not os.path.exists(path):
        return [], {}
    with open(path) as file:
        columns = list(zip(*(line.strip().split(",") for line in file)))
    named = {column[0]: [float(value) for value in column[1:]] for column in columns}
    return [int(size) for size in named["size"]], {line: named[line.name] for line in curve.lines}


def run_curve(curve, options, build, path):
    sizes = sizes_of(curve, options.max)
    values = {line: [] for line in curve.lines}
    for size in sizes:
        for line, value in measure(curve, size, build, options.rounds).items():
            values[line].append(value)
    write_csv(path, sizes, values)


def table_lines(curve, sizes, values):
    for line, column in values.items():
        slope = exponent(sizes, column)
        yield [curve.title, f"{sizes[0]:,} to {sizes[-1]:,}", line.name,
               f"{table.number(column[-1])} {line.unit}", "" if slope is None else f"{slope:.2f}"]


def plot_curve(curve, sizes, values, folder):
    os.makedirs(folder, exist_ok=True)
    times = {line.name: column for line, column in values.items() if line.unit == "ms"}
    with open(os.path.join(folder, curve.name + ".svg"), "w") as out:
        out.write(plot.svg(f"{curve.title}: milliseconds", sizes, times))


def arguments():
    parser = argparse.ArgumentParser(prog="bench/growth.sh")
    parser.add_argument("--max", type=int, help="no size above this; the figures are kept apart")
    parser.add_argument("--only", action="append", choices=[curve.name for curve in CURVES],
                        metavar="NAME", help="measure only this curve")
    parser.add_argument("--rounds", type=int, default=2, help="runs at each size; the least counts")
    parser.add_argument("--write", action="store_true", help="renew the document and its plots")
    parser.add_argument("--build", required=True, help=argparse.SUPPRESS)
    options = parser.parse_args()
    if options.write and options.max:
        parser.error("--write wants all sizes")
    return options


def main():
    """The table and the plots show all that was ever measured, each curve as it was last."""
    options = arguments()
    build = os.path.abspath(options.build)
    data = os.path.join(build, "bench", "growth-tried" if options.max else "growth-data")
    os.makedirs(data, exist_ok=True)
    lines = []
    for curve in CURVES:
        path = os.path.join(data, curve.name + ".csv")
        if not options.only or curve.name in options.only:
            print(f"measuring {curve.name}", file=sys.stderr, flush=True)
            run_curve(curve, options, build, path)
        sizes, values = read_csv(path, curve)
        if sizes:
            lines += table_lines(curve, sizes, values)
            plot_curve(curve, sizes, values, DOCUMENTS if options.write else data)
    text = table.markdown(["of", "sizes", "what", "at the largest", "exponent"], lines)
    print(text)
    if options.write:
        document.replace_between(os.path.join(DOCUMENTS, "..", "performance.md"), "growth", text)


if __name__ == "__main__":
    try:
        main()
    except turns.Failure as failure:
        sys.exit(f"bench/growth.sh: {failure}")
