"""The table of disagreements between the grammars and the engine, each class with its reason.

A class is either another way to write the text, which means the same to the engine and on which the
grammar then agrees with it, or a reason for which the engine refuses what the grammar lets pass.
"""

import re
from typing import NamedTuple

BOTH = ("rng", "xsd")


class Rewriting(NamedTuple):
    step: str
    reason: str


class Refusal(NamedTuple):
    message: str
    grammars: tuple
    reason: str

    def fits(self, message):
        return re.search(self.message, message, re.DOTALL) is not None


COMMON = [
    Rewriting("prefixes", "the engine minds no prefixes; a name in a grammar has one or none"),
    Rewriting("pieces", "the engine reads the last piece of a text, a grammar all of them as one"),
    Rewriting(
        "document-type",
        "attributes and texts of a document type are the reader's business, not a grammar's",
    ),
]

# Each is done with all that stand before it.
REWRITINGS = {
    "rng": COMMON,
    "xsd": [
        Rewriting("root-name", "XSD has no word for a root of any name"),
        Rewriting("unnoticed", "XSD lets no other element stand beside those with a meaning"),
        *COMMON,
        Rewriting("empty-ones", "XSD wants once what the engine also takes after empty ones"),
        Rewriting("empty-attributes", "XSD wants an attribute that means nothing to be absent"),
        Rewriting("entries-without-text", "XSD ties no element's attributes to its text"),
    ],
}

REFUSALS = [
    Refusal(
        "^(Unable to find a (command or namespace|namespace or command) with the name"
        "|Attempt to register a command or namespace '.*' on command)",
        BOTH,
        "which namespaces are there when the descriptor is loaded depends on others too",
    ),
    Refusal(
        "^(Duplicate registration in namespace|Tandril path is already registered)",
        BOTH,
        "paths are compared with each other; XSD compares those of commands alone",
    ),
    Refusal(
        "Found a duplicate paramater specification|Invalid short name specified for --",
        ("rng",),
        "RELAX NG compares no two attributes",
    ),
    Refusal(
        "Duplicate Value found in ParameterConstraint::AddStringEnum",
        BOTH,
        "RELAX NG compares no two attributes; no grammar sees pieces, which are two entries",
    ),
    Refusal(
        "Duplicate Value found in ParameterConstraint::AddIntEnum",
        BOTH,
        "the numbers are compared, not how they are written",
    ),
    Refusal(
        "constraints must have a min value <= max value",
        BOTH,
        "no grammar compares two numbers",
    ),
    Refusal(
        "Unable to read an int value from: '\\s*[+-]?[0-9]{19,}"
        "|Expected integer, but got [+-]?[0-9]{19,}"
        "|Range requires both 'min' and 'max' attributes and that both are integers",
        BOTH,
        "that a number has 64 bits can only be said digit by digit, which nobody would read",
    ),
    Refusal(
        "Invalid structure detected by MetaList::Add",
        BOTH,
        "no grammar compares two structures",
    ),
    Refusal(
        "Invalid type specificed in MetaList",
        ("xsd",),
        "XSD ties the children of an element to none of its attributes",
    ),
    Refusal(
        "Invalid constraint specified for parameter|Invalid type .* for secret, must be 'string'"
        "|There was no data included inside the <constraint> tag|Expected integer, but got",
        ("xsd",),
        "XSD ties neither attributes nor children to the value of an attribute",
    ),
]
