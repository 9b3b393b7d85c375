"""What is measured: groups of programs that take turns, and the rows of the table drawn from them.

The limits `must` and `goal` hold for the ratio of ours to the floor, or for our figure itself where
`absolute` is set. Figures are medians of all runs.
"""
from dataclasses import dataclass
from typing import Callable, Optional

from turns import Job

FORMATTERS = ("json", "xml", "table", "python", "simple")

# Where the limits were set: the floors of a start with 1,000 commands and of a row built.
START_OF_LIBRARIES_MS = 2.2
PLAIN_ROW_US = 0.17


@dataclass
class Row:
    name: str
    unit: str
    ours: Callable
    floor: Optional[Callable] = None
    floor_name: str = ""
    must: Optional[float] = None
    goal: Optional[float] = None
    absolute: bool = False
    higher_is_better: bool = False
    peers: tuple = ()  # (name, function of the figures)


@dataclass
class Group:
    jobs: list
    rows: list
    repeat: int = 1


def figure(job, key, scale=1.0):
    return lambda figures: figures(job, key) * scale


def start(setting):
    """The tool with what is built in; short, so that many runs fit into a round."""
    library, tandril = setting.program("library-start"), setting.tandril()
    command = ("ns0000", "cmd003", "--name", "a")
    jobs = [
        Job("libraries, result", (library, "done"), prints=False),
        Job("libraries, help", (library, "--help"), prints=False),
        Job("result", (tandril, "tandril", "command", "list"), prints=False),
        Job("help", (tandril, "tandril", "command", "list", "--help"), prints=False),
        Job("CLI11", (setting.program("cli11-start"), *command), prints=False),
        Job("argparse", setting.peer("argparse_start.py", *command), prints=False),
    ]
    peers = (("CLI11, 10 commands", figure("CLI11", "ms")),
             ("argparse, 10 commands", figure("argparse", "ms")))
    return Group(jobs, [
        Row("start, built-in commands, a result", "ms", figure("result", "ms"),
            figure("libraries, result", "ms"), "libraries", 1.5, 1.15, peers=peers),
        Row("start, built-in commands, help", "ms", figure("help", "ms"),
            figure("libraries, help", "ms"), "libraries", 1.5, 1.15, peers=peers),
    ], repeat=20)


def descriptors(setting):
    """The tool with folders of descriptors; the peers have their commands compiled in."""
    few, many = setting.sizes.few, setting.sizes.many
    jobs = [Job("libraries", (setting.program("library-start"), "--help"), prints=False),
            Job("walk", (setting.program("descriptor-walk"), setting.file("many")))]
    command = ("ns0000", "cmd003", "--name", "a")
    for name, count in (("few", few), ("many", many)):
        environment = {"BENCH_COMMANDS": str(10 * count)}
        jobs += [
            Job(name, (setting.tandril(), "--plugin-dir", setting.file(name), "ns0000", "cmd003",
                       "--help"), prints=False),
            Job(f"CLI11, {name}", (setting.program("cli11-start"), *command), environment, False),
        ]
    jobs.append(Job("argparse, few", setting.peer("argparse_start.py", *command),
                    {"BENCH_COMMANDS": str(10 * few)}, False))
    return Group(jobs, [
        Row(f"start, {10 * few:,} commands in {few:,} descriptors", "ms", figure("few", "ms"),
            figure("libraries", "ms"), "libraries", 20 / START_OF_LIBRARIES_MS,
            10 / START_OF_LIBRARIES_MS, peers=(("CLI11", figure("CLI11, few", "ms")),
                                               ("argparse", figure("argparse, few", "ms")))),
        Row(f"start, {10 * many:,} commands in {many:,} descriptors, beyond the libraries", "ms",
            lambda r: r("many", "ms") - r("libraries", "ms"), figure("walk", "ms"),
            "xmlReadFile and walk", 1.6, 0.6,
            peers=(("CLI11, whole", figure("CLI11, many", "ms")),)),
    ], repeat=3)


def commands(setting):
    count = str(setting.sizes.commands)
    many = setting.sizes.many
    jobs = [
        Job("registered", (setting.program("registration"), "registered", count)),
        Job("specified", (setting.program("registration"), "specified", count)),
        Job("loaded", (setting.program("descriptor-loading"), setting.file("many"),
                       str(10 * many))),
        Job("CLI11", (setting.program("cli11-registration"), count)),
        Job("walk", (setting.program("descriptor-walk"), setting.file("many"))),
    ]
    time, memory = "us_per_command", "held_bytes_per_command"
    rows = [
        Row("a command with four parameters, registered and specified", "us",
            figure("specified", time), must=10, goal=4, absolute=True,
            peers=(("CLI11", figure("CLI11", time)),)),
        Row("the same, memory", "kB", figure("specified", memory, 1e-3), must=5, goal=2.5,
            absolute=True, peers=(("CLI11", figure("CLI11", memory, 1e-3)),)),
        Row("a command registered, its parameters not yet asked for", "us",
            figure("registered", time)),
        Row("the same, memory", "kB", figure("registered", memory, 1e-3)),
        Row(f"{many:,} descriptors loaded in process", "ms", figure("loaded", "ms"),
            figure("walk", "ms"), "xmlReadFile and walk"),
        Row("a descriptor's command, memory", "kB", figure("loaded", memory, 1e-3), must=8, goal=4,
            absolute=True),
    ]
    return Group(jobs, rows)


def rows(setting):
    count = str(setting.sizes.rows)
    jobs = []
    for name in FORMATTERS:
        jobs.append(Job(name, (setting.program("rendering"), name, count)))
        jobs.append(Job(f"hand-written {name}", (setting.program("hand-written"), name, count)))
    jobs += [
        Job("nlohmann-json", (setting.program("nlohmann-rows"), count)),
        Job("RapidJSON", (setting.program("rapidjson-rows"), count)),
        Job("xmlTextWriter", (setting.program("xml-writer"), count)),
        Job("Python json", setting.peer("render_rows.py", "json", count)),
        Job("Python repr", setting.peer("render_rows.py", "repr", count)),
        Job("ElementTree", setting.peer("render_rows.py", "etree", int(count) // 10)),
        Job("column", ("column", "-t", "-s", "\t", setting.file("rows.tsv")), {"LC_ALL": "C.UTF-8"},
            False),
        Job("jq", ("jq", ".", setting.file("rows.json")), prints=False),
    ]
    return Group(jobs, value_rows() + format_rows(1e3 / setting.sizes.rows))


def value_rows():
    trees = ("nlohmann-json", "RapidJSON", "Python json")
    build, held, peak = "build_us_per_row", "held_bytes_per_row", "render_peak_of_held"
    return [
        Row("a row built", "us", figure("json", build), figure("hand-written json", build),
            "plain structures", 0.9 / PLAIN_ROW_US, 0.4 / PLAIN_ROW_US,
            peers=tuple((name, figure(name, build)) for name in trees)),
        Row("a row held", "bytes", figure("json", held), figure("hand-written json", held),
            "plain structures", 660, 400, True,
            peers=tuple((name, figure(name, held)) for name in trees)),
        Row("a row released", "us", figure("json", "release_us_per_row")),
        Row("highest peak while rendering, of what is held", "x",
            lambda r: max(r(name, peak) for name in FORMATTERS), must=1.1, goal=1.02,
            absolute=True),
    ]


def format_rows(whole):
    """`whole` turns the milliseconds of a whole program into microseconds a row."""
    limits = {"json": (9, 2.5), "xml": (10, 3), "table": (25, 8), "python": (9, 3),
              "simple": (12, 5)}
    render = "render_us_per_row"
    peers = {"json": (*((name, figure(name, render))
                        for name in ("nlohmann-json", "RapidJSON", "Python json")),
                      ("jq, whole program", figure("jq", "ms", whole))),
             "xml": (("xmlTextWriter", figure("xmlTextWriter", render)),
                     ("ElementTree", figure("ElementTree", render))),
             "table": (("column, whole program", figure("column", "ms", whole)),),
             "python": (("Python repr", figure("Python repr", render)),)}
    return [Row(f"a row rendered, {name}", "us", figure(name, render),
                figure(f"hand-written {name}", render), "hand-written", *limits[name],
                peers=peers.get(name, ())) for name in FORMATTERS]


def reading(setting):
    document, text = setting.file("rows.xml"), setting.file("rows.json")
    parsing, reader = setting.program("document-parsing"), setting.program("json-reading")
    jobs = [Job("read", (setting.program("document-reading"), document))]
    jobs += [Job(mode, (parsing, mode, document)) for mode in ("tree", "push", "pull")]
    jobs += [Job(name, setting.peer("read_document.py", name, document))
             for name in ("lxml", "etree")]
    jobs += [Job(f"{name}, JSON", (reader, name, text)) for name in ("nlohmann", "rapidjson")]

    def least(job):  # the page faults of a large tree make its median jump
        return lambda figures: figures.least(job, "ms")

    memory = "peak_bytes_per_byte"
    table = [
        Row(f"a document of {setting.sizes.rows:,} rows read (least)", "ms", least("read"),
            least("tree"), "xmlReadMemory and xmlFreeDoc", 1.15, 0.3,
            peers=(("lxml", least("lxml")), ("ElementTree", least("etree")))),
        Row("the same over what only parses", "ms", least("read"), least("push"), "push handlers",
            peers=(("xmlTextReader, nothing built", least("pull")),
                   ("RapidJSON, from JSON", least("rapidjson, JSON")),
                   ("nlohmann-json, from JSON", least("nlohmann, JSON")))),
        Row("the same, peak memory", "bytes a byte", figure("read", memory),
            figure("tree", memory), "xmlReadMemory and xmlFreeDoc", None, 3.5, True,
            peers=(("lxml", figure("lxml", memory)), ("ElementTree", figure("etree", memory)))),
    ]
    return Group(jobs, table)


def extension(setting):
    sizes = setting.sizes
    small, large = setting.file("small.xml"), setting.file("refusal.txt")
    ours, floor = setting.program("extension-calls"), setting.program("shell-spawn")
    calls, few, ballast = str(sizes.calls), str(sizes.large_calls), str(sizes.megabytes)
    jobs = [
        Job("call", (ours, small, calls)),
        Job("spawn", (floor, small, calls, "65536")),
        Job("call, big", (ours, small, calls, ballast)),
        Job("spawn, big", (floor, small, calls, "65536", ballast)),
        Job("large", (ours, large, few)),
        Job("large, 1,024", (floor, large, few, "1024")),
        Job("large, 64 kB", (floor, large, few, "65536")),
        Job("subprocess", setting.peer("run_command.py", small, calls)),
        Job("subprocess, large", setting.peer("run_command.py", large, few)),
    ]
    python = (("Python subprocess", figure("subprocess", "us_per_call")),)
    python_large = (("Python subprocess", figure("subprocess, large", "mb_per_s")),)
    speed = figure("large", "mb_per_s")
    rows_ = [
        Row("an extension command, small output", "us", figure("call", "us_per_call"),
            figure("spawn", "us_per_call"), "posix_spawn", 1.1, 1.03, peers=python),
        Row(f"the same from a process of {sizes.megabytes} MB", "us",
            figure("call, big", "us_per_call"), figure("spawn, big", "us_per_call"), "posix_spawn",
            1.1, 1.03),
        Row("an extension command, large output", "MB/s", speed, figure("large, 1,024", "mb_per_s"),
            "1,024-byte reads", 0.9, None, higher_is_better=True, peers=python_large),
        Row("the same", "MB/s", speed, figure("large, 64 kB", "mb_per_s"), "64 kB reads", None, 0.9,
            higher_is_better=True, peers=python_large),
    ]
    return Group(jobs, rows_, repeat=4)


def stream(setting):
    lines = setting.sizes.lines
    jobs = [
        Job("stream", (setting.program("line-stream"), str(lines))),
        Job("start", (setting.tandril(), "tandril", "command", "list"), prints=False),
        Job("input", (setting.tandril(), "--input", setting.file("lines.txt")), prints=False),
    ]
    return Group(jobs, [
        Row(f"a line of a stream of {lines:,}", "us", figure("stream", "us_per_line"), must=20,
            goal=5, absolute=True),
        Row("a line of tandril --input, each a table of one row", "us",
            lambda r: (r("input", "ms") - r("start", "ms")) * 1e3 / lines),
    ])


def road(setting):
    document = setting.file("rows.xml")
    jobs = [
        Job("road", (setting.tandril(), "--plugin", setting.file("rows_show.xml"), "--formatter",
                     "json", "rows", "show"), prints=False),
        Job("lxml", setting.peer("pipeline.py", "lxml", document), prints=False),
        Job("etree", setting.peer("pipeline.py", "etree", document), prints=False),
    ]
    return Group(jobs, [
        Row(f"command, document and JSON, {setting.sizes.rows:,} rows", "ms", figure("road", "ms"),
            figure("lxml", "ms"), "Python with lxml", 0.6, 0.15,
            peers=(("Python with ElementTree", figure("etree", "ms")),)),
        Row("the same, peak memory", "MB", figure("road", "peak_bytes", 1e-6),
            figure("lxml", "peak_bytes", 1e-6), "Python with lxml", 0.9, 0.25,
            peers=(("Python with ElementTree", figure("etree", "peak_bytes", 1e-6)),)),
    ])


GROUPS = {"start": start, "descriptors": descriptors, "commands": commands, "rows": rows,
          "reading": reading, "extension": extension, "stream": stream, "road": road}
