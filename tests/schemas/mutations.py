"""Good texts with small faults in them, the same ones each time."""

import copy
import random
import xml.etree.ElementTree as ElementTree

SEED = 20261122

ATTRIBUTE_NAMES = ["name", "path", "type", "typeName", "value", "required", "secret", "min", "x"]
ATTRIBUTE_VALUES = ["", "true", "int", "string", "structure", "stringenum", "range", "7", "a.b"]
TEXTS = ["", " ", "7", "word", "1.0.0"]


def vocabulary(root):
    return sorted({element.tag for element in root.iter()} | {"text", "comment", "other"})


def with_parent(root, choose):
    return choose.choice([(parent, child) for parent in root.iter() for child in parent])


def drop(root, choose):
    parent, child = with_parent(root, choose)
    parent.remove(child)


def duplicate(root, choose):
    parent, child = with_parent(root, choose)
    parent.insert(choose.randint(0, len(parent)), copy.deepcopy(child))


def rename(root, choose):
    _, child = with_parent(root, choose)
    child.tag = choose.choice(vocabulary(root))


def reorder(root, choose):
    parent, child = with_parent(root, choose)
    parent.remove(child)
    parent.insert(choose.randint(0, len(parent)), child)


def move(root, choose):
    parent, child = with_parent(root, choose)
    parent.remove(child)
    choose.choice(list(root.iter())).append(child)


def drop_attribute(root, choose):
    element = choose.choice(list(root.iter()))
    element.attrib.pop(choose.choice(sorted(element.attrib) or ["none"]), None)


def set_attribute(root, choose):
    element = choose.choice(list(root.iter()))
    name = choose.choice(sorted(element.attrib) + ATTRIBUTE_NAMES)
    element.attrib[name] = choose.choice(ATTRIBUTE_VALUES)


def set_text(root, choose):
    choose.choice(list(root.iter())).text = choose.choice(TEXTS)


FAULTS = [drop, duplicate, rename, reorder, move, drop_attribute, set_attribute, set_text]


def mutations(file, count):
    """Texts, each with one to three faults, as long as there is something left to spoil."""
    choose = random.Random(SEED)
    good = ElementTree.parse(file).getroot()
    texts = []
    for _ in range(count):
        root = copy.deepcopy(good)
        for _ in range(choose.randint(1, 3)):
            if len(root) > 0:
                choose.choice(FAULTS)(root, choose)
        texts.append(ElementTree.tostring(root, encoding="unicode"))
    return texts
