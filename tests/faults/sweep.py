"""Makes every call of the tool to the system fail once, one run for each, and judges the run.

    sweep.py --tool tandril --faults libfailing_calls.so --library good_plugin.so
             [--quick] [--only SCENARIO] [--jobs 2]

For each scenario the calls of a plain run are counted; then the run is repeated with the first call
of a function failing, with the second, and so on. A run is good when it

- ends by itself, with status 0 or 1, or aborts because memory is exhausted;
- prints what the plain run prints, or says on standard error what went wrong; status 0 with another
  result is only for a plug-in that was reported and left out, and for a stream in which a line was
  reported that is not the last;
- leaves no child and gave its children the standard descriptors and no other;
- leaves the terminal with its echo.

--quick takes a share of the calls: some of each function in each scenario.
"""

import argparse
import collections
import concurrent.futures
import ctypes
import dataclasses
import os
import pty
import re
import signal
import subprocess
import sys
import tempfile
import termios
import time

import scenarios

TIME_LIMIT = 20
FUNCTIONS = ("memory pipe posix_spawn read write waitpid open opendir readdir dlopen tcgetattr "
             "tcsetattr ioctl stat fcntl stdin stdout").split()
MANNERS = {"memory": ["once", "lasting"], "read": ["once", "short", "interrupted"],
           "write": ["once", "short", "interrupted"], "waitpid": ["once", "interrupted"],
           "open": ["once", "interrupted"]}
STORMS = ["read", "write", "waitpid"]
# Neither a plug-in that cannot be loaded nor a line of a stream but the last decides the status.
REPORTED_ON_THE_WAY = re.compile(
    r"^(Error loading plugin |Unable to load plugin |Unable to open directory |"
    r"Unable to read all of directory |Errors: $)", re.MULTILINE)
OUT_OF_MEMORY = re.compile(r"^terminate called|^Fatal glibc error: .*memory", re.MULTILINE)
PR_SET_CHILD_SUBREAPER = 36


@dataclasses.dataclass
class Fault:
    function: str
    call: int
    manner: str


@dataclasses.dataclass
class Run:
    status: int  # negative for the signal that ended it; None when it had to be ended
    out: bytes
    err: str
    left_children: bool
    strange_descriptors: list
    echoes: bool = True


class Stage:
    """Runs scenarios. One process has one, since a child that is left behind falls to it."""

    def __init__(self, options):
        ctypes.CDLL(None).prctl(PR_SET_CHILD_SUBREAPER, 1, 0, 0, 0)
        self.faults = options.faults
        self.tool = options.tool
        self.folder = tempfile.TemporaryDirectory(prefix="faults.")
        self.world = scenarios.World(self.folder.name)
        self.scenarios = {each.name: each
                          for each in scenarios.all_scenarios(self.world, options.library)}

    def environment(self, fault, counts=""):
        variables = {"PATH": "/usr/bin:/bin", "LANG": "C.UTF-8", "LD_PRELOAD": self.faults,
                     "TRACES": str(self.world.traces), "FAULTS_COUNTS": counts}
        if fault is not None:
            variables |= {"FAULTS_FUNCTION": fault.function, "FAULTS_CALL": str(fault.call),
                          "FAULTS_MANNER": fault.manner}
        return variables

    def count(self, scenario):
        """A plain run, and how often it called each function."""
        path = self.world.path("counts")
        run = self.play(scenario, None, path)
        with open(path, encoding="ascii") as stream:
            return run, {name: int(count) for name, count in map(str.split, stream)}

    def play(self, scenario, fault, counts=""):
        for trace in self.world.traces.iterdir():
            trace.unlink()
        environment = self.environment(fault, counts)
        play = self.on_terminal if scenario.terminal else self.on_pipes
        run = play(scenario, environment)
        run.left_children = reap_left_children()
        run.strange_descriptors = [
            numbers for trace in self.world.traces.iterdir()
            if (numbers := trace.read_text().split()) != ["0", "1", "2"]]
        return run

    def on_pipes(self, scenario, environment):
        with open_output(scenario.output) as output:
            tool = subprocess.Popen([self.tool] + scenario.words, env=environment,
                                    stdin=subprocess.PIPE, stdout=output,
                                    stderr=subprocess.PIPE, cwd=self.folder.name)
        try:
            out, err = tool.communicate(scenario.input, TIME_LIMIT)
        except subprocess.TimeoutExpired:
            tool.kill()
            out, err = tool.communicate()
            tool.returncode = None
        return Run(tool.returncode, out or b"", err.decode(), False, [])

    def on_terminal(self, scenario, environment):
        screen, line = pty.openpty()
        with tempfile.TemporaryFile() as errors:
            tool = subprocess.Popen([self.tool] + scenario.words, env=environment, stdin=line,
                                    stdout=line, stderr=errors, start_new_session=True,
                                    cwd=self.folder.name)
            type_in_silence(tool, screen, line, scenario.input)
            echoes_again = echoes(line)
            os.close(line)
            out = read_to_the_end(screen)
            os.close(screen)
            errors.seek(0)
            return Run(tool.returncode, out, errors.read().decode(), False, [], echoes_again)


def open_output(name):
    """What becomes standard output: a pipe to here, one that nobody reads, or a file."""
    if name == "closed":
        read_end, write_end = os.pipe()
        os.close(read_end)
        return os.fdopen(write_end, "wb")
    return open(name, "wb") if name else Inherited()


class Inherited:
    def __enter__(self):
        return subprocess.PIPE

    def __exit__(self, *_):
        pass


def echoes(terminal):
    return bool(termios.tcgetattr(terminal)[3] & termios.ECHO)


def type_in_silence(tool, screen, line, keys):
    """Types the keys as soon as the terminal is silent, and waits for the tool's end."""
    deadline = time.monotonic() + TIME_LIMIT
    while tool.poll() is None:
        if time.monotonic() > deadline:
            tool.kill()
            tool.wait()
            tool.returncode = None
            return
        if keys and not echoes(line):
            os.write(screen, keys)
            keys = b""
        time.sleep(0.001)


def read_to_the_end(screen):
    """What was shown on a screen that nobody writes to any more."""
    text = b""
    while True:
        try:
            text += os.read(screen, 65536)
        except OSError:
            return text


def reap_left_children():
    """Whether the tool left a child, running or ended, that fell to this process."""
    left = False
    while True:
        try:
            os.waitpid(-1, 0)
            left = True
        except ChildProcessError:
            return left


def problems_of(run, plain, fault):
    """What is wrong with a run in which a call failed."""
    problems = []
    said_more = run.err != plain.err and run.err != ""
    same = (run.status, run.out) == (plain.status, plain.out)
    if run.status is None:
        problems.append("did not end")
    elif run.status not in (0, 1):
        if not (run.status == -signal.SIGABRT and fault.function == "memory"
                and OUT_OF_MEMORY.search(run.err)):
            problems.append(f"ended with {run.status}")
    elif not same and not said_more:
        problems.append(f"status {run.status} without a word, {len(run.out)} bytes of "
                        f"{len(plain.out)}")
    elif not same and run.status == 0 and not REPORTED_ON_THE_WAY.search(run.err):
        problems.append("status 0 with another result")
    if run.left_children and fault.function != "waitpid":
        problems.append("left a child behind")
    if run.strange_descriptors:
        problems.append(f"children had the descriptors {run.strange_descriptors}")
    if not run.echoes:
        problems.append("left the terminal without echo")
    return problems


def faults_of(scenario, counts, quick):
    """The faults to try with a scenario of so many calls."""
    for function in FUNCTIONS:
        count = counts[function]
        stride = max(1, count // quick) if quick else scenario.stride
        for manner in MANNERS.get(function, ["once"]):
            for call in range(1, count + 1, stride):
                yield Fault(function, call, manner)
        if count > 0 and function in STORMS:
            yield Fault(function, 0, "storm")


@dataclasses.dataclass
class Tally:
    name: str
    runs: collections.Counter = dataclasses.field(default_factory=collections.Counter)
    aborts: int = 0
    complaints: list = dataclasses.field(default_factory=list)


STAGE = None


def set_up(options):
    global STAGE  # one for each process of the pool
    STAGE = Stage(options)


def sweep(name, quick):
    """Tries every fault of one scenario."""
    scenario = STAGE.scenarios[name]
    plain, counts = STAGE.count(scenario)
    tally = Tally(name)
    for problem in problems_of(plain, plain, Fault("", 0, "")):
        tally.complaints.append(f"{name}, without a fault: {problem}")
    for fault in faults_of(scenario, counts, quick):
        run = STAGE.play(scenario, fault)
        tally.runs[fault.function] += 1
        tally.aborts += run.status == -signal.SIGABRT
        for problem in problems_of(run, plain, fault):
            tally.complaints.append(
                f"{name}, {fault.function} {fault.call} {fault.manner}: {problem}"
                f"\n    {run.err.strip()[:300]}")
    return tally


def report(tallies):
    width = max(len(tally.name) for tally in tallies)
    for tally in tallies:
        functions = ", ".join(f"{name} {count}" for name, count in tally.runs.items())
        print(f"{tally.name:{width}}  {tally.runs.total():6}  {functions}")
    complaints = [each for tally in tallies for each in tally.complaints]
    print(*complaints, sep="\n", end="\n" if complaints else "")
    runs = sum(tally.runs.total() for tally in tallies)
    aborts = sum(tally.aborts for tally in tallies)
    print(f"{runs} failed calls in {len(tallies)} scenarios: {aborts} ended by the abort on "
          f"exhausted memory, {len(complaints)} problems")
    return not complaints


def main():
    arguments = argparse.ArgumentParser(description=__doc__.split("\n")[0])
    for name in ("tool", "faults", "library"):
        arguments.add_argument(f"--{name}", required=True, type=os.path.abspath)
    arguments.add_argument("--quick", action="store_true")
    arguments.add_argument("--only")
    arguments.add_argument("--jobs", type=int, default=os.cpu_count())
    options = arguments.parse_args()

    set_up(options)
    names = [name for name in STAGE.scenarios if options.only in (None, name)]
    quick = 4 if options.quick else 0
    with concurrent.futures.ProcessPoolExecutor(options.jobs, initializer=set_up,
                                                initargs=(options,)) as pool:
        tallies = list(pool.map(sweep, names, [quick] * len(names)))
    sys.exit(0 if report(tallies) else 1)


if __name__ == "__main__":
    main()
