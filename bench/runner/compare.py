"""Runs the benchmarks, the floors and the peers in turns and prints the table. See run.sh.

Fails when a program fails, prints no figures, or prints other text than its floor does. Never for a
time.
"""
import argparse
import os
import platform
import subprocess
import sys
import time

import document
import setting as settings
import table
import turns
import workloads

OTHER = ", other build"


def arguments():
    parser = argparse.ArgumentParser(prog="bench/run.sh")
    parser.add_argument("--quick", action="store_true", help="small data, one round")
    parser.add_argument("--only", action="append", choices=[*workloads.GROUPS, "parts"],
                        metavar="NAME",
                        help=f"only this group: {', '.join(workloads.GROUPS)}, parts")
    parser.add_argument("--rounds", type=int, help="rounds of turns (5)")
    parser.add_argument("--tandril-build", metavar="DIR",
                        help="another build folder with the target benchmarks built, whose "
                             "programs take turns with ours and get a column")
    parser.add_argument("--write", action="store_true", help="renew the table of the document")
    parser.add_argument("--build", required=True, help=argparse.SUPPRESS)
    options = parser.parse_args()
    if options.write and (options.quick or options.only):
        parser.error("--write wants a full run")
    return options


def machine():
    with open("/proc/cpuinfo") as file:
        model = next((line.split(":")[1].strip() for line in file if line.startswith("model name")),
                     platform.machine())
    compiler = subprocess.run(["g++", "-dumpfullversion"], stdout=subprocess.PIPE, text=True,
                              check=False).stdout.strip()
    return (f"{os.cpu_count()} cores of {model}, {platform.system()} {platform.release()}, "
            f"g++ {compiler}, {time.strftime('%Y-%m-%d')}")


def check_texts(setting):
    """A floor counts only if it writes what the engine writes."""
    for name in workloads.FORMATTERS:
        texts = []
        for program in ("rendering", "hand-written"):
            path = setting.file(f"{program}.{name}")
            subprocess.run([setting.program(program), name, "25", path], check=True,
                           stdout=subprocess.DEVNULL)
            with open(path, "rb") as file:
                texts.append(file.read())
        if texts[0] != texts[1] or not texts[0]:
            raise turns.Failure(f"the hand-written text of {name} is another than the engine's")


def with_other_build(jobs, build, other):
    """The jobs, and each that runs a program of the engine once more with the other build's."""
    ours = ("rendering", "document-reading", "registration", "descriptor-loading",
            "extension-calls", "line-stream", "tandril")
    result = []
    for job in jobs:
        result.append(job)
        program = job.words[0]
        if os.path.basename(program) in ours:
            words = (program.replace(build, other, 1), *job.words[1:])
            result.append(turns.Job(job.name + OTHER, words, job.environment, job.prints))
    return result


def measure(name, setting, options):
    group = workloads.GROUPS[name](setting)
    jobs = group.jobs
    if options.tandril_build:
        jobs = with_other_build(jobs, setting.build, os.path.abspath(options.tandril_build))
    rounds = options.rounds or (1 if options.quick else 5)
    figures = turns.run_in_turns(jobs, rounds, 1 if options.quick else group.repeat)
    others = figures.renamed(OTHER) if options.tandril_build else None
    with open(os.path.join(setting.data, "figures.tsv"), "a") as out:
        out.writelines(f"{name}\t{line}\n" for line in figures.lines())
    return [table.cells(row, figures, others) for row in group.rows]


def run_parts(setting, quick):
    """The pieces of the engine, each by itself, by Google Benchmark."""
    print("measuring parts", file=sys.stderr, flush=True)
    path = setting.file("parts.txt")
    seconds = "0.001" if quick else "0.1"
    with open(path, "w") as out:
        subprocess.run([setting.program("parts"), f"--benchmark_min_time={seconds}"], check=True,
                       stdout=out, stderr=subprocess.STDOUT)
    print(f"pieces of the engine: {path}", file=sys.stderr)


def try_growth(setting):
    subprocess.run([sys.executable, os.path.join(settings.BENCH, "runner", "growth.py"), "--build",
                    setting.build, "--max", "64", "--rounds", "1"], check=True,
                   stdout=subprocess.DEVNULL)


def print_table(setting, options):
    with open(setting.file("figures.tsv"), "w") as out:
        out.write("group\tprogram\tfigure\tmedian\tleast\truns\n")
    lines = []
    for name in options.only or workloads.GROUPS:
        if name in workloads.GROUPS:
            print(f"measuring {name}", file=sys.stderr, flush=True)
            lines += measure(name, setting, options)
    header = list(table.HEADER)
    if options.tandril_build:
        header.insert(2, "other build")
    text = machine() + "\n\n" + table.markdown(header, lines)
    print(text)
    print(f"all figures: {setting.file('figures.tsv')}", file=sys.stderr)
    if options.write:
        document.replace_between(os.path.join(settings.BENCH, "..", "docs", "performance.md"),
                                 "table", text)


def main():
    options = arguments()
    build = os.path.abspath(options.build)
    data = os.path.join(build, "bench", "quick" if options.quick else "full")
    setting = settings.Setting(build, data, settings.QUICK if options.quick else settings.FULL)
    setting.make_data()
    if options.only != ["parts"]:
        check_texts(setting)
        print_table(setting, options)
    if not options.only or "parts" in options.only:
        run_parts(setting, options.quick)
    if options.quick and not options.only:
        try_growth(setting)


if __name__ == "__main__":
    try:
        main()
    except (turns.Failure, subprocess.CalledProcessError) as failure:
        sys.exit(f"bench/run.sh: {failure}")
