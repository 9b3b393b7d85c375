"""The runs of the tool whose calls sweep.py makes fail, and the folder that they play in."""

import dataclasses
import pathlib

DISKS = "".join(
    f'<structure typeName="Disk"><field name="Name"><string>sd{letter}</string></field>'
    f'<field name="Note"><string>A note on "sd{letter}" &amp; its \u00e4ge</string></field>'
    f'<field name="Size"><int>{size}</int></field></structure>'
    for letter, size in (("a", 512), ("b", 64), ("c", -1)))
DISK_LIST = f'<list type="structure">{DISKS}</list>'

# Each command leaves the numbers of the descriptors that its shell was given.
TRACE = "(ls /proc/$$/fd >>\"$TRACES/$$\"); "


def escaped(text):
    return text.replace("&", "&amp;").replace("<", "&lt;").replace(">", "&gt;")


def command(name, line, parameters="", output="<string/>", formatter="simple", stdin=""):
    return (f'<command path="box.{name}"><description>Command {name}.</description>'
            f"<input-spec>{parameters}</input-spec><output-spec>{output}</output-spec>"
            f"<format-parameters><formatter>{formatter}</formatter></format-parameters>"
            f"<execute>{escaped(TRACE + line)}</execute>{stdin}</command>")


def parameter(name, attributes=""):
    return (f'<parameter name="{name}" type="string" {attributes}>'
            "<description>A text.</description></parameter>")


def document(value):
    return f"printf '%s' '<output>{value}</output>'"


def descriptor(content):
    return f"<extension><version>1.0.0</version>{content}</extension>"


COMMANDS = (
    command("disk", document(DISKS[:DISKS.index("</structure>") + 12]),
            output='<structure typeName="Disk"/>')
    + command("disks", document(DISK_LIST), output=DISK_LIST, formatter="table")
    + command("good", document("<string>fine</string>"))
    + command("say", "printf '%s' '<output><string>' $val{text} '</string></output>'",
              parameters=parameter("text", 'required="true"'))
    + command("feed", "printf '<output><string>%s</string></output>' \"$(md5sum)\"",
              parameters=parameter("text"), stdin="<stdin>$val{text}" + "x" * 100000 + "</stdin>")
    + command("bad", "echo ERROR:spoilt; echo ERROR:rotten")
    + command("exit", "exit 3")
    + command("broken", "echo '<output><string>x]]></string></output>'")
    + command("tree", "printf '%s' '<!DOCTYPE output [<!ENTITY e \"x\">]>"
                      "<output><list type=\"string\"><string>a<!-- c -->&e;</string>"
                      "<string><![CDATA[<b>]]></string></list></output>'",
              output='<list type="string"><string/></list>')
    + command("big", "printf '<output><list type=\"string\">'; "
                     "yes \"<string>$(printf %1000s x)</string>\" | head -n 200; "
                     "printf '</list></output>'",
              output='<list type="string"><string/></list>')
    + command("login", "printf '%s' '<output><string>' $val{key} '</string></output>'",
              parameters=parameter("key", 'secret="true"')))


class World:
    """Plug-ins and files in a new folder."""

    def __init__(self, folder):
        self.folder = pathlib.Path(folder)
        self.plugins = self.folder / "plugins"
        self.traces = self.folder / "traces"
        self.plugins.mkdir()
        self.traces.mkdir()
        box = "<namespaces><namespace path='box'><description>Boxes.</description></namespace>"
        self.write("plugins/box.xml",
                   descriptor(f"{box}</namespaces><commands>{COMMANDS}</commands>"))
        self.write("entities.xml", '<!DOCTYPE extension [<!ENTITY d "Described.">]>' + descriptor(
            "<namespaces><namespace path='box'><description>&d;</description></namespace>"
            f"</namespaces><commands>{COMMANDS}</commands>"))
        self.write("bad.xml", descriptor("<commands><command path='x'/></commands>"))
        self.write("lines", "box say --text line # comment\n" * 50)

    def write(self, name, text):
        (self.folder / name).write_text(text, encoding="utf-8")

    def path(self, name):
        return str(self.folder / name)


@dataclasses.dataclass
class Scenario:
    name: str
    words: list
    input: bytes = b""
    terminal: bool = False  # on a pseudo-terminal, where the input is typed without echo
    output: str = ""  # a file instead of a pipe; "closed" for a pipe that nobody reads
    stride: int = 1  # of the calls, every which one fails


def all_scenarios(world, library):
    with_box = ["--plugin-dir", str(world.plugins)]

    def boxes(name, *words, **others):
        return Scenario(name, with_box + list(words), **others)

    return [
        Scenario("usage", ["--help"]),
        boxes("listing"),
        boxes("namespace-help", "box"),
        boxes("command-help", "box", "say", "--help"),
        boxes("simple", "box", "disk"),
        boxes("table", "--screen-width", "40", "box", "disks"),
        boxes("xml", "--formatter", "xml", "box", "disks"),
        boxes("json", "--formatter", "json", "box", "disks"),
        boxes("python", "--formatter", "python", "box", "disk"),
        Scenario("bad-descriptor", ["--plugin", world.path("bad.xml"), "tandril", "command", "list"]),
        Scenario("missing-plugin", ["--plugin", world.path("none.so"), "tandril", "command", "list"]),
        Scenario("descriptor-as-tree", ["--plugin", world.path("entities.xml"), "box", "good"]),
        Scenario("library", ["--plugin", library, "fixture", "greet", "--text", "you"]),
        boxes("no-stdin", "box", "say", "--text", "one two"),
        boxes("stdin", "box", "feed", "--text", "abc"),
        boxes("errors", "box", "bad"),
        boxes("exit-status", "box", "exit"),
        boxes("broken-document", "box", "broken"),
        boxes("document-as-tree", "box", "tree"),
        boxes("big", "box", "big"),
        boxes("stream-file", "--input", world.path("lines"), stride=7),
        boxes("stream-stdin", "--input", "STDIN", input=b"box good\nbox bad\nbox disks\n" * 3),
        boxes("secret-pipe", "box", "login", "--key", input=b"sesame\n"),
        boxes("secret-terminal", "box", "login", "--key", input=b"sesame\n", terminal=True),
        boxes("full-disk", "box", "disks", output="/dev/full"),
        boxes("closed-pipe", "box", "disks", output="closed"),
    ]
