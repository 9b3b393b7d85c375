"""pipeline.py lxml|etree FILE: the whole road as a script takes it: command, document, JSON."""
import json
import subprocess
import sys

from values import value

if sys.argv[1] == "lxml":
    from lxml import etree
else:
    import xml.etree.ElementTree as etree

text = subprocess.run(f"cat '{sys.argv[2]}'", shell=True, stdout=subprocess.PIPE, check=True).stdout
json.dump(value(etree.fromstring(text)[0]), sys.stdout, indent=3)
