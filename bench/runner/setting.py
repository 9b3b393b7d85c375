"""Where the programs and their data are, and how large the data is."""
import os
import sys
from dataclasses import dataclass

import descriptors
import documents

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


FULL = Sizes(rows=100000, few=100, many=1000, calls=200, large_calls=3, megabytes=500, lines=100000,
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
        """Only what is missing; a folder of data has one size for ever."""
        os.makedirs(self.data, exist_ok=True)
        self._make("rows.xml", lambda path: documents.write_xml(path, self.sizes.rows))
        self._make("small.xml", lambda path: documents.write_xml(path, 5))
        self._make("rows.json", lambda path: documents.write_json(path, self.sizes.rows))
        self._make("rows.tsv", lambda path: documents.write_tsv(path, self.sizes.rows))
        self._make("refusal.txt",
                   lambda path: documents.write_refusal(path, self.file("rows.xml")))
        self._make("lines.txt",
                   lambda path: documents.write_lines(path, self.sizes.lines))
        self._make("few", lambda path: descriptors.write_folder(path, self.sizes.few))
        self._make("many", lambda path: descriptors.write_folder(path, self.sizes.many))
        descriptors.write_cat_command(self.file("rows_show.xml"), self.file("rows.xml"))

    def _make(self, name, write):
        path = self.file(name)
        if not os.path.exists(path):
            write(path + ".new")
            os.rename(path + ".new", path)
