"""Writes the rows as files: the document that a command prints, JSON, columns parted by tabs."""
import json
from xml.sax.saxutils import escape

from rows import row


def xml_value(value):
    if isinstance(value, bool):
        return f"<bool>{'true' if value else 'false'}</bool>"
    if isinstance(value, int):
        return f"<int>{value}</int>"
    return f"<string>{escape(value)}</string>"


def write_xml(path, count):
    with open(path, "w") as out:
        out.write('<?xml version="1.0"?>\n<output>\n<list type="structure">\n')
        for i in range(count):
            fields = "".join(f'  <field name="{name}">{xml_value(value)}</field>\n'
                             for name, value in row(i).items())
            out.write(f' <structure typeName="Row">\n{fields} </structure>\n')
        out.write("</list>\n</output>\n")


def write_json(path, count):
    with open(path, "w") as out:
        json.dump([row(i) for i in range(count)], out)


def write_tsv(path, count):
    with open(path, "w") as out:
        out.write("\t".join(row(0)) + "\n")
        for i in range(count):
            out.write("\t".join(str(value) for value in row(i).values()) + "\n")


def write_refusal(path, document):
    """What a command prints that fails late: its first line is an error, the rest is only read."""
    with open(document) as text, open(path, "w") as out:
        out.write("ERROR:not today\n" + text.read())


def write_lines(path, count):
    """Command lines for the tool to read."""
    with open(path, "w") as out:
        out.write("tandril command list\n" * count)
