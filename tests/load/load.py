"""Puts the tool under load and watches its memory and its descriptors.

    load.py --tool tandril [--quick]

A stream of lines and a stream of extension commands are fed in ten parts; behind each part, when the
tool waits for more, its resident size and its open descriptors are read from /proc. After the first
two parts neither may grow. A large tree and a large result are judged by what each command and each
value takes at the peak. Nothing is judged by time, which is only printed.
"""

import argparse
import dataclasses
import os
import pathlib
import re
import subprocess
import sys
import tempfile
import threading
import time

PARTS = 10
WARM_UP = 2
ALLOWED_GROWTH = 512  # KiB: what the allocator may still round up
ALLOWED_PER_COMMAND = 8 * 1024
ALLOWED_PER_VALUE = 125
ENVIRONMENT = {"PATH": "/usr/bin:/bin", "LANG": "C.UTF-8"}


@dataclasses.dataclass
class Row:
    what: str
    count: int
    figures: str
    seconds: float
    passed: bool


def descriptor(commands):
    return ("<extension><version>1.0.0</version><namespaces><namespace path='load'><description>Under"
            f" load.</description></namespace></namespaces><commands>{commands}</commands></extension>")


def command(name, line, output="<string/>"):
    return (f"<command path='load.{name}'><description>Command {name} of many.</description>"
            "<input-spec><parameter name='text' type='string'><description>A text.</description>"
            f"</parameter></input-spec><output-spec>{output}</output-spec><format-parameters>"
            "<formatter>simple</formatter></format-parameters>"
            f"<execute>{line.replace('<', '&lt;')}</execute></command>")


class Sampler:
    """A tool that is fed lines."""

    def __init__(self, tool, words):
        self.process = subprocess.Popen([tool, *words, "--input", "STDIN"], env=ENVIRONMENT,
                                        stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        self.folder = pathlib.Path("/proc") / str(self.process.pid)

    def feed(self, line, count, result):
        """Feeds a line so many times and reads the result of each."""
        text = (line + "\n").encode() * count
        feeder = threading.Thread(target=lambda: (self.process.stdin.write(text),
                                                  self.process.stdin.flush()))
        feeder.start()
        missing = len(result) * count
        while missing > 0:
            piece = self.process.stdout.read1(min(missing, 1 << 20))
            if not piece:
                sys.exit(f"the tool ended while it was fed {line!r}")
            missing -= len(piece)
        feeder.join()

    def size(self, field):
        """A size from /proc/PID/status, in KiB."""
        status = (self.folder / "status").read_text()
        return int(re.search(rf"^{field}:\s*(\d+) kB$", status, re.MULTILINE)[1])

    def descriptors(self):
        return len(list((self.folder / "fd").iterdir()))

    def end(self):
        self.process.stdin.close()
        return self.process.stdout.read() == b"" and self.process.wait() == 0


def result_of(tool, words):
    return subprocess.run([tool, *words], env=ENVIRONMENT, check=True,
                          stdout=subprocess.PIPE).stdout


def watch_stream(what, tool, words, line, count):
    """Feeds the line `count` times and compares what the tool takes."""
    result = result_of(tool, words + line.split())
    begin = time.monotonic()
    sampler = Sampler(tool, words)
    sizes, descriptors = [], []
    for _ in range(PARTS):
        sampler.feed(line, count // PARTS, result)
        sizes.append(sampler.size("VmRSS"))
        descriptors.append(sampler.descriptors())
    ended_well = sampler.end()
    growth = max(sizes[WARM_UP:]) - sizes[WARM_UP - 1]
    figures = (f"{sizes[0]} KiB, after the warm-up {sizes[WARM_UP - 1]}, at the end {sizes[-1]}; "
               f"descriptors {descriptors[0]}, at the end {descriptors[-1]}")
    passed = ended_well and growth <= ALLOWED_GROWTH and len(set(descriptors)) == 1
    return Row(what, count, figures, time.monotonic() - begin, passed)


def peak_of(tool, words, line):
    """The largest size, in KiB, of a tool that runs one line."""
    sampler = Sampler(tool, words)
    sampler.feed(line, 1, result_of(tool, words + line.split()))
    peak = sampler.size("VmHWM")
    return peak if sampler.end() else sys.exit(f"the tool failed behind {line!r}")


def watch_peak(what, tool, plain, loaded, count, allowed):
    """Compares the peak of a loaded run with that of a plain one, both (words, line)."""
    begin = time.monotonic()
    base, peak = peak_of(tool, *plain), peak_of(tool, *loaded)
    each = (peak - base) * 1024 / count
    figures = f"peak {peak} KiB, plain {base}; {each:.0f} bytes each"
    return Row(what, count, figures, time.monotonic() - begin, each <= allowed)


def run_all(tool, folder, quick):
    share = 50 if quick else 1
    lines, children, commands, values = (100_000 // share, 10_000 // share, 10_000 // share,
                                         5_000_000 // share)
    small, tree = folder / "small.xml", folder / "tree.xml"
    small.write_text(descriptor(
        command("say", "echo '<output><string>fine</string></output>'")
        + command("count", "echo '<output><list type=\"int\">'; yes '<int>1234567</int>' | "
                           f"head -n {values}; echo '</list></output>'",
                  "<list type='int'><int/></list>")))
    tree.write_text(descriptor("".join(command(f"c{number}", "true")
                                       for number in range(commands))))
    with_small = ["--plugin", str(small)]
    listing, say = "tandril command list", "load say"
    yield watch_stream("lines of a stream", tool, [], listing, lines)
    yield watch_stream("extension commands", tool, with_small, say, children)
    yield watch_peak("commands in the tree", tool, ([], listing),
                     (["--plugin", str(tree)], listing), commands, ALLOWED_PER_COMMAND)
    yield watch_peak("values of a result", tool, (with_small, say),
                     (with_small, "--formatter json load count"), values, ALLOWED_PER_VALUE)


def main():
    arguments = argparse.ArgumentParser(description=__doc__.split("\n", maxsplit=1)[0])
    arguments.add_argument("--tool", required=True, type=os.path.abspath)
    arguments.add_argument("--quick", action="store_true", help="a fiftieth of everything")
    options = arguments.parse_args()

    passed = True
    with tempfile.TemporaryDirectory(prefix="load.") as folder:
        for row in run_all(options.tool, pathlib.Path(folder), options.quick):
            print(f"{'ok' if row.passed else 'FAILED':6}  {row.count:9,} {row.what:20}  "
                  f"{row.seconds:6.1f} s  {row.figures}", flush=True)
            passed = passed and row.passed
    sys.exit(0 if passed else 1)


if __name__ == "__main__":
    main()
