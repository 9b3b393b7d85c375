"""The rows that all benchmarks build, print and read; the same as support/Rows.h."""

STATES = ["online", "offline", "degraded", "rebuilding"]


def row(i):
    text = f"Row number {i} of the table, as printed by a tool"
    if i % 10 == 0:
        text += ' with "quotes", a/b & <tags>'
    return {"Description": text, "Enabled": i % 3 == 0, "Id": i, "Name": f"disk-{i:06d}",
            "Size": (i * 2654435761) % 1000000007, "State": STATES[i % 4]}
