"""Runs programs in turns, so that a busy machine slows all alike, and keeps their figures."""
import os
import statistics
import subprocess
import time
from dataclasses import dataclass, field


@dataclass(frozen=True)
class Job:
    """A program. One that prints tells figures as lines "what TAB key TAB value"; of any other only
    the time from start to end and the peak of memory are taken."""
    name: str
    words: tuple
    environment: dict = field(default_factory=dict)
    prints: bool = True


class Failure(Exception):
    """A program that did not do its work."""


class Figures:
    """What the programs of a group told, run by run."""

    def __init__(self):
        self._samples = {}

    def add(self, job, figures):
        for key, value in figures.items():
            self._samples.setdefault((job, key), []).append(value)

    def __call__(self, job, key):
        return statistics.median(self._samples[job, key])

    def least(self, job, key):
        return min(self._samples[job, key])

    def renamed(self, suffix):
        """The figures of jobs whose names end so, under the names without it; else those of all."""
        other = Figures()
        other._samples = dict(self._samples)
        for (job, key), values in self._samples.items():
            if job.endswith(suffix):
                other._samples[job.removesuffix(suffix), key] = values
        return other

    def lines(self):
        """Each figure as "job TAB key TAB median TAB least TAB samples"."""
        return [f"{job}\t{key}\t{statistics.median(values):.6g}\t{min(values):.6g}\t{len(values)}"
                for (job, key), values in self._samples.items()]


def run_printing(job):
    done = subprocess.run(job.words, env={**os.environ, **job.environment}, text=True, check=False,
                          stdin=subprocess.DEVNULL, stdout=subprocess.PIPE)
    parts = [line.split("\t") for line in done.stdout.splitlines()]
    figures = {part[1]: float(part[2]) for part in parts if len(part) == 3}
    if done.returncode != 0 or not figures:
        raise Failure(f"{job.name} ended with {done.returncode} and {len(figures)} figures")
    return figures


def run_whole(job):
    """The peak is never below that of this process, from which the child is cloned."""
    discard = [(os.POSIX_SPAWN_OPEN, 0, "/dev/null", os.O_RDONLY, 0),
               (os.POSIX_SPAWN_OPEN, 1, "/dev/null", os.O_WRONLY, 0)]
    environment = {**os.environ, **job.environment}
    start = time.perf_counter()
    child = os.posix_spawnp(job.words[0], job.words, environment, file_actions=discard)
    _, status, usage = os.wait4(child, 0)
    took = time.perf_counter() - start
    if status != 0:
        raise Failure(f"{job.name} ended with status {os.waitstatus_to_exitcode(status)}")
    return {"ms": took * 1e3, "peak_bytes": usage.ru_maxrss * 1024}


def run(job):
    return (run_printing if job.prints else run_whole)(job)


def run_in_turns(jobs, rounds, repeat=1):
    """`repeat` runs of each in every round; what is repeated is short, and warmed up first."""
    figures = Figures()
    if repeat > 1:
        for job in jobs:
            run(job)
    for _ in range(rounds * repeat):
        for job in jobs:
            figures.add(job.name, run(job))
    return figures
