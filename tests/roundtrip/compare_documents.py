"""Reads documents with Python's own readers and compares them with what they were written from.

Usage: compare_documents.py xml|json|python DIRECTORY

Beside each NAME.document of the directory stands a NAME.value, a Python literal. Values are
    ("int", 5)  ("bool", True)  ("text", b"bytes")  ("list", "integer", [value, ...])
    ("struct", b"Type", [(b"field", value), ...])
and for xml the whole is a pair: the formatting parameters as (key, value), and the value or None.
("refused",) stands for a document that the reader must refuse.

Prints a paragraph for every document that differs and, as its last line, how many there were.
"""

import ast
import json
import pathlib
import sys
import warnings
import xml.etree.ElementTree as ElementTree

REFUSED = ("refused",)


def only_child(element):
    (child,) = element
    return child


def blank(text):
    return text is None or text.strip(" \n") == ""


def xml_value(element):
    """The value of an element. Whatever does not belong there raises an exception."""
    readers = {
        "integer": lambda: ("int", int(element.text)),
        "boolean": lambda: ("bool", {"true": True, "false": False}[element.text]),
        "string": lambda: ("text", (element.text or "").encode()),
        "list": lambda: ("list", element.attrib["type"], [xml_value(child) for child in element]),
        "structure": lambda: (
            "struct",
            element.attrib["typeName"].encode(),
            [xml_field(child) for child in element],
        ),
    }
    if element.tag in ("list", "structure"):
        assert blank(element.text) and all(blank(child.tail) for child in element)
    else:
        assert len(element) == 0
    assert set(element.attrib) == {"list": {"type"}, "structure": {"typeName"}}.get(
        element.tag, set()
    )
    return readers[element.tag]()


def xml_field(element):
    assert element.tag == "field" and set(element.attrib) == {"name"} and blank(element.text)
    return (element.attrib["name"].encode(), xml_value(only_child(element)))


def xml_document(content):
    output = ElementTree.fromstring(content)
    meta_data, root = output
    assert (output.tag, meta_data.tag, root.tag) == ("output", "meta-data", "root")
    parameters = []
    for entry in meta_data:
        assert entry.tag == "meta-data-field" and set(entry.attrib) == {"name", "value"}
        parameters.append((entry.attrib["name"].encode(), entry.attrib["value"].encode()))
    return (parameters, xml_value(only_child(root)) if len(root) else None)


def plain_value(value, text_of):
    """A value of Python's as a tuple that tells 1 from True and keeps the order of fields."""
    if isinstance(value, bool):
        return ("bool", value)
    if isinstance(value, int):
        return ("int", value)
    if isinstance(value, str):
        return ("text", text_of(value))
    if isinstance(value, list):
        return ("list", [plain_value(element, text_of) for element in value])
    if isinstance(value, Fields):
        return ("struct", [(name.encode(), plain_value(field, text_of)) for name, field in value])
    if isinstance(value, dict):
        return plain_value(Fields(value.items()), text_of)
    raise ValueError(f"a {type(value)}")


class Fields(tuple):
    """The fields of an object of JSON, doubles included."""


def json_document(content):
    value = json.loads(content.decode(), object_pairs_hook=Fields)
    # Every byte of a text is escaped as a character of its own.
    return plain_value(value, lambda text: text.encode("latin-1"))


def python_document(content):
    return plain_value(ast.literal_eval(content.decode()), str.encode)


def without_type_names(value):
    """What the formats carry that name neither the types of structures nor those of lists."""
    if value[0] == "list":
        return ("list", [without_type_names(element) for element in value[2]])
    if value[0] == "struct":
        return ("struct", [(name, without_type_names(field)) for name, field in value[2]])
    return value


READERS = {
    "xml": (xml_document, lambda value: value),
    "json": (json_document, without_type_names),
    "python": (python_document, without_type_names),
}


def read(reader, content):
    try:
        return reader(content)
    except (ElementTree.ParseError, SyntaxError, ValueError):
        return REFUSED


def main():
    reader, carried = READERS[sys.argv[1]]
    warnings.simplefilter("ignore")  # backslashes that escape nothing
    documents = sorted(pathlib.Path(sys.argv[2]).glob("*.document"))
    for document in documents:
        value = ast.literal_eval(document.with_suffix(".value").read_text())
        expected = value if value == REFUSED else carried(value)
        actual = read(reader, document.read_bytes())
        if actual != expected:
            print(f"{document.name}\nexpected {expected}\nread     {actual}")
    print(f"{len(documents)} documents")


main()
