"""Puts measured text between the marks of a document."""


def replace_between(path, mark, text):
    begin, end = f"<!-- {mark} -->\n", f"<!-- end of {mark} -->\n"
    with open(path) as file:
        before, rest = file.read().split(begin)
    with open(path, "w") as file:
        file.write(before + begin + text + end + rest.split(end)[1])
