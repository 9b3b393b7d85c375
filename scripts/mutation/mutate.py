"""Puts faults into a copy of the library and runs the tests against each. See ../mutate.sh."""

import argparse
import filecmp
import os
import pathlib
import random
import resource
import shutil
import signal
import subprocess
import sys
import time
from concurrent.futures import ThreadPoolExecutor
from queue import SimpleQueue

from faults import find_faults

MEMORY_LIMIT = 4 << 30
LIBRARY = "CppTools"


def read_options():
    parser = argparse.ArgumentParser()
    parser.add_argument("--tests", type=pathlib.Path, required=True, help="folder of the test programs")
    parser.add_argument("--work", type=pathlib.Path, required=True, help="folder for the copies")
    parser.add_argument("--count", type=int, default=300, help="how many faults that compile")
    parser.add_argument("--seed", type=int, default=random.randrange(1 << 31))
    parser.add_argument("--jobs", type=int, default=2)
    parser.add_argument("--only", default=LIBRARY, help="sources below this folder, or one source")
    return parser.parse_args()


def copy_if_changed(original, target):
    """Leaves the time of an equal file alone: a source that was mended must be compiled again."""
    if not os.path.exists(target) or not filecmp.cmp(original, target, shallow=False):
        shutil.copyfile(original, target)


class Copy:
    """A copy of the sources with a build tree of the library of its own."""

    def __init__(self, folder):
        self.sources = folder.resolve() / "source"
        self.build = folder.resolve() / "build"
        for name in (LIBRARY, "cmake", "tandril", "plugins", "CMakeLists.txt"):
            original, target = pathlib.Path(name), self.sources / name
            target.parent.mkdir(parents=True, exist_ok=True)
            if original.is_dir():
                shutil.copytree(original, target, dirs_exist_ok=True, copy_function=copy_if_changed)
            else:
                copy_if_changed(original, target)
        subprocess.run(
            ["cmake", "-S", self.sources, "-B", self.build, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=Debug",
             "-DCPPTOOLS_BUILD_TESTS=OFF", "-DCPPTOOLS_BUILD_BENCHMARKS=OFF"],
            check=True, stdout=subprocess.DEVNULL)
        self.compile(check=True)

    def compile(self, check=False):
        run = subprocess.run(["cmake", "--build", self.build, "--target", LIBRARY],
                             stdout=subprocess.DEVNULL, check=check)
        return run.returncode == 0

    def environment(self):
        # Before the folder that is written into the test programs.
        return dict(os.environ, LD_LIBRARY_PATH=str(self.build / LIBRARY))

    def with_fault(self, fault, judge):
        """What `judge` says of this copy while the fault is in it; None when it does not compile."""
        source = self.sources / fault.path
        text = source.read_text()
        source.write_text(fault.applied_to(text))
        try:
            return judge(self) if self.compile() else None
        finally:
            source.write_text(text)


def prepare():
    """Limits what a faulty program can take, and gives it the signals of one in the foreground."""
    for number in (signal.SIGHUP, signal.SIGINT, signal.SIGQUIT):
        signal.signal(number, signal.SIG_DFL)
    resource.setrlimit(resource.RLIMIT_AS, (MEMORY_LIMIT, MEMORY_LIMIT))
    resource.setrlimit(resource.RLIMIT_CORE, (0, 0))


def passes(program, environment, seconds):
    """Whether a test program passes; all that it started is ended with it."""
    run = subprocess.Popen([program, "--gtest_brief=1", "--gtest_fail_fast"], env=environment,
                           stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                           stderr=subprocess.DEVNULL, preexec_fn=prepare, start_new_session=True)
    try:
        return run.wait(seconds) == 0
    except subprocess.TimeoutExpired:
        return False
    finally:
        try:
            os.killpg(run.pid, signal.SIGKILL)
        except ProcessLookupError:
            pass
        run.wait()


def programs_in_order(tests, path, durations):
    """The tests of the source's own folder first, then the others, quick ones before slow ones."""
    own = tests / pathlib.Path(path).parent.relative_to(LIBRARY)
    return sorted(durations, key=lambda program: (program.parent != own, durations[program]))


def time_programs(tests, environment):
    durations = {}
    for program in sorted(tests.glob("**/*_tests")):
        begin = time.monotonic()
        if not passes(program, environment, 600):
            sys.exit(f"{program} fails without any fault")
        durations[program] = time.monotonic() - begin
    return durations


def describe(fault, text):
    line = text.count("\n", 0, fault.start) + 1
    faulty = fault.applied_to(text).splitlines()[line - 1].strip()
    return f"{fault.path}:{line}: {fault.kind}: {text.splitlines()[line - 1].strip()}  =>  {faulty}"


def main():
    options = read_options()
    tests = options.tests.resolve()
    texts = {str(path): path.read_text() for path in sorted(pathlib.Path(LIBRARY).glob("**/*.cpp"))
             if str(path).startswith(options.only)}
    faults = [fault for path, text in texts.items() for fault in find_faults(path, text)]
    random.Random(options.seed).shuffle(faults)
    print(f"{len(faults)} possible faults; seed {options.seed}", flush=True)

    copies = SimpleQueue()
    for number in range(options.jobs):
        copies.put(Copy(options.work / str(number)))
    first = copies.get()
    durations = time_programs(tests, first.environment())
    copies.put(first)

    def survives(copy, fault):
        return all(passes(program, copy.environment(), 20 + 5 * durations[program])
                   for program in programs_in_order(tests, fault.path, durations))

    def judge(fault):
        copy = copies.get()
        try:
            return copy.with_fault(fault, lambda faulty: survives(faulty, fault))
        finally:
            copies.put(copy)

    killed, survivors = 0, []
    with ThreadPoolExecutor(options.jobs) as pool:
        waiting = iter(faults)
        while killed + len(survivors) < options.count:
            missing = options.count - killed - len(survivors)
            # By file: one that was mended is compiled again with the next one that is broken.
            batch = sorted((fault for _, fault in zip(range(missing), waiting)),
                           key=lambda fault: fault.path)
            if not batch:
                break
            for fault, verdict in zip(batch, pool.map(judge, batch)):
                if verdict is None:
                    continue
                if verdict:
                    survivors.append(fault)
                    print("survived:", describe(fault, texts[fault.path]), flush=True)
                else:
                    killed += 1

    tried = killed + len(survivors)
    print(f"{tried} faults, {killed} noticed ({100 * killed / max(tried, 1):.1f} %), "
          f"{len(survivors)} survived")


if __name__ == "__main__":
    main()
