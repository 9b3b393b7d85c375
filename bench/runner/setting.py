"""Where the programs and their data are, and how large the data is."""
import os
import shutil
import sys
from dataclasses import dataclass

import descriptors
import documents
import rows

BENCH = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))


@dataclass(frozen=True)
class Sizes:
    rows: int
    few: int  # descriptors
    many: int  # descriptors
    calls: int
    large_calls: int
    megabytes: int
    lines: int
    commands: int  # registered in process


FULL = Sizes(rows=100000, few=100, many=1000, calls=50, large_calls=3, megabytes=500, lines=100000,
             commands=10000)
QUICK = Sizes(rows=2000, few=5, many=20, calls=5, large_calls=1, megabytes=20, lines=1000,
              commands=200)


class Setting:
    def __init__(self, build, data, sizes):
        self.build = build
        self.data = data
        self.sizes = sizes

    def program(self, name):
        return os.path.join(self.build, "bench", name)

    def tandril(self):
        return os.path.join(self.build, "tandril", "tandril")

    def peer(self, script, *words):
        """A program in Python."""
        return (sys.executable, os.path.join(BENCH, "peers", script), *map(str, words))

    def file(self, name):
        return os.path.join(self.data, name)

    def make_data(self):
        """Only what is missing, or older than what makes it."""
        sizes = self.sizes
        os.makedirs(self.data, exist_ok=True)
        self._make("rows.xml", documents.write_xml, sizes.rows)
        self._make("rows.json", documents.write_json, sizes.rows)
        self._make("rows.tsv", documents.write_tsv, sizes.rows)
        self._make("small.xml", documents.write_xml, 5)
        self._make("refusal.txt", documents.write_refusal, self.file("rows.xml"))
        self._make("lines.txt", documents.write_lines, sizes.lines)
        self._make("few", descriptors.write_folder, sizes.few)
        self._make("many", descriptors.write_folder, sizes.many)
        self._make("rows_show.xml", descriptors.write_cat_command, self.file("rows.xml"))

    def _make(self, name, write, *arguments):
        path = self.file(name)
        sources = (__file__, rows.__file__, documents.__file__, descriptors.__file__)
        if os.path.exists(path) and os.path.getmtime(path) > max(map(os.path.getmtime, sources)):
            return
        if os.path.isdir(path):
            shutil.rmtree(path)
        write(path + ".new", *arguments)
        os.rename(path + ".new", path)
