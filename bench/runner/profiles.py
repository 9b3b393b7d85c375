"""Where the time and the memory of building and rendering rows go. See profile.sh."""
import argparse
import collections
import os
import re
import subprocess
import sys

import document
import setting as settings
import table

PHASES = {"building": "Bench::NewRows*", "rendering": "*::Render(*"}

# The first pattern that a function matches says what it does; the rest is the engine's own code.
WORK = (
    ("allocating and freeing", r"malloc|free|operator new|operator delete|_int_|unlink_chunk"),
    ("matching patterns", r"boost::.*re_detail|regex"),
    ("making the data of the rows", r"printf|_IO_|_itoa|strchrnul"),
    ("comparing and copying bytes", r"\bmem|__mem|__str"),
    ("searching and building maps", r"_Rb_tree|std::.*map<"),
    ("writing to streams", r"ostream|streambuf|filebuf|codecvt|ios_base"),
    ("asking for types", r"dynamic_cast|dyncast|class_type_info"),
)

# What an allocation is, by its innermost frames.
KINDS = (("node of a map", r"_Rb_tree<"), ("object with its count", r"__allocate_guarded"),
         ("text", r"basic_string<>::_M_"), ("array", r"vector<>::"))


def run(*words):
    return subprocess.run(words, check=True, text=True, stdout=subprocess.PIPE,
                          stderr=subprocess.DEVNULL).stdout


def kind_of(text, kinds, rest):
    return next((name for name, pattern in kinds if re.search(pattern, text)), rest)


def instructions(program, words, phase, folder):
    """Kind of work -> instructions executed in a phase."""
    path = os.path.join(folder, phase + ".callgrind")
    run("valgrind", "--tool=callgrind", f"--toggle-collect={PHASES[phase]}",
        f"--callgrind-out-file={path}", program, *words)
    totals = collections.Counter()
    for line in run("callgrind_annotate", "--auto=no", "--threshold=100", path).splitlines():
        match = re.match(r"\s*([\d,]+) \([ \d.]+%\)\s+([^:]*):(.*?)(?: \[[^\]]*\])?$", line)
        if match and "PROGRAM TOTALS" not in line:
            function = match[3]
            # An inlined piece counts by the header it comes from.
            place = "_Rb_tree" if "stl_tree" in match[2] or "stl_map" in match[2] else function
            totals[kind_of(place, WORK, "the engine's own code")] += int(match[1].replace(",", ""))
    return totals


def time_table(program, words, rows, folder):
    lines = []
    for phase in PHASES:
        totals = instructions(program, words, phase, folder)
        whole = sum(totals.values())
        for kind, count in totals.most_common():
            if count >= whole / 100:
                lines.append([phase, kind, f"{100 * count / whole:.0f} %",
                              table.number(count / rows)])
    return table.markdown(["phase", "work", "share", "instructions a row"], lines)


def short(function):
    """A function without its arguments and its namespaces."""
    name = re.sub(r"\(anonymous namespace\)::", "", function)
    name = re.sub(r"[\[(].*", "", name).split()[-1]
    return "::".join(re.sub(r"<.*", "", name).split("::")[-2:])


def caller(frames):
    """The innermost frame that is no library's."""
    return next((short(frame) for frame in reversed(frames) if frame.endswith(".cpp)")), "start")


def phase_of(stack):
    return "rendering" if "Render (" in stack else "building" if "NewRows" in stack else None


def allocations(trace, cost, folder):
    """(phase, caller, kind) -> allocations, or bytes held at the peak."""
    path = os.path.join(folder, cost + ".stacks")
    run("heaptrack_print", "-f", trace, "-F", path, "--flamegraph-cost-type", cost)
    totals = collections.Counter()
    with open(path) as file:
        for line in file:
            stack, count = line.rsplit(" ", 1)
            if phase_of(stack):
                frames = stack.rstrip("; ").split(";")
                kind = kind_of(";".join(frames[-9:]), KINDS, "object")
                totals[phase_of(stack), caller(frames), kind] += int(count)
    return totals


def memory_table(program, words, rows, folder):
    trace = os.path.join(folder, "rendering.heaptrack")
    run("heaptrack", "-o", trace, program, *words)
    trace += ".zst"
    counts, held = (allocations(trace, cost, folder) for cost in ("allocations", "peak"))
    lines = [[*place, table.number(counts[place] / rows), table.number(held[place] / rows)]
             for place in sorted(counts, key=lambda place: (place[0], -counts[place]))
             if counts[place] >= rows / 10 or held[place] >= rows]
    return table.markdown(["phase", "in", "what", "allocations a row", "bytes a row"], lines)


def main():
    parser = argparse.ArgumentParser(prog="bench/profile.sh")
    parser.add_argument("--formatter", default="json")
    parser.add_argument("--rows", type=int, default=20000)
    parser.add_argument("--write", action="store_true", help="renew the tables of the document")
    parser.add_argument("--build", required=True, help=argparse.SUPPRESS)
    options = parser.parse_args()
    folder = os.path.join(os.path.abspath(options.build), "bench", "profile")
    os.makedirs(folder, exist_ok=True)
    program = os.path.join(os.path.abspath(options.build), "bench", "rendering")
    words = (options.formatter, str(options.rows))
    text = (time_table(program, words, options.rows, folder) + "\n"
            + memory_table(program, words, options.rows, folder))
    print(text)
    if options.write:
        document.replace_between(os.path.join(settings.BENCH, "..", "docs", "performance.md"),
                                 "profile", text)


if __name__ == "__main__":
    try:
        main()
    except subprocess.CalledProcessError as failure:
        sys.exit(f"bench/profile.sh: {failure}")
