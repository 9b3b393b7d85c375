"""The document that a command prints, as Python values."""


def value(node):
    if node.tag == "string":
        return node.text or ""
    if node.tag == "int":
        return int(node.text or 0)
    if node.tag == "bool":
        return node.text not in ("false", "f", "0")
    if node.tag == "list":
        return [value(child) for child in node]
    return {field.get("name"): value(field[0]) for field in node}
