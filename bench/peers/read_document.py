"""read_document.py etree|lxml FILE: the rows read from the text that a command printed."""
import sys
import time

from measure import forget_peak, memory, report
from values import value

kind, path = sys.argv[1], sys.argv[2]
if kind == "lxml":
    from lxml import etree
else:
    import xml.etree.ElementTree as etree

with open(path, "rb") as file:
    text = file.read()
forget_peak()
before = memory("VmRSS")
start = time.perf_counter()
rows = value(etree.fromstring(text)[0])
took = time.perf_counter() - start
assert rows and len(rows[0]) == 6
report("Python " + kind, "ms", took * 1e3)
report("Python " + kind, "peak_bytes_per_byte", (memory("VmHWM") - before) / len(text))
