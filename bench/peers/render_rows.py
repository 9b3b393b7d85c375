"""render_rows.py json|repr|etree ROWS: the rows as Python dictionaries, and as text."""
import json
import sys
import time
import xml.etree.ElementTree as etree

from measure import memory, report
from rows import row


def as_xml(rows):
    root = etree.Element("output")
    listing = etree.SubElement(root, "list", type="structure")
    for fields in rows:
        structure = etree.SubElement(listing, "structure", typeName="Row")
        for name, value in fields.items():
            field = etree.SubElement(structure, "field", name=name)
            etree.SubElement(field, type(value).__name__).text = str(value)
    etree.indent(root, "   ")
    return etree.tostring(root, encoding="unicode")


RENDER = {"json": lambda rows: json.dumps(rows, indent=3), "repr": repr, "etree": as_xml}

kind, count = sys.argv[1], int(sys.argv[2])
before = memory("VmRSS")
start = time.perf_counter()
rows = [row(i) for i in range(count)]
built = time.perf_counter()
held = memory("VmRSS") - before
with open("/dev/null", "w") as out:
    out.write(RENDER[kind](rows) + "\n")
done = time.perf_counter()
report("Python " + kind, "build_us_per_row", (built - start) * 1e6 / count)
report("Python " + kind, "held_bytes_per_row", held / count)
report("Python " + kind, "render_us_per_row", (done - built) * 1e6 / count)
