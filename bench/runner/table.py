"""The rows of the table as Markdown."""

HEADER = ["workload", "ours", "floor", "ratio", "must", "goal", "verdict", "best peer"]


def number(value):
    if value >= 1000:
        return f"{value:,.0f}"
    if 0 < value < 0.095:
        return f"{value:.2g}"
    return f"{value:.0f}" if value >= 100 else f"{value:.1f}" if value >= 10 else f"{value:.2f}"


def keeps(row, value, limit):
    return value >= limit if row.higher_is_better else value <= limit


def verdict(row, value):
    if row.goal is not None and keeps(row, value, row.goal):
        return "met goal"
    if row.must is not None:
        return "met must" if keeps(row, value, row.must) else "**missed**"
    return "" if row.goal is None else "missed goal"


def limit_text(row, limit):
    if limit is None:
        return ""
    return number(limit) + (f" {row.unit}" if row.absolute else " x")


def best_peer(row, figures):
    peers = [(function(figures), name) for name, function in row.peers]
    if not peers:
        return ""
    value, name = (max if row.higher_is_better else min)(peers)
    return f"{number(value)} {row.unit} ({name})"


def cells(row, figures, others=None):
    ours = row.ours(figures)
    floor = row.floor(figures) if row.floor else None
    ratio = ours / floor if floor else None
    judged = ours if row.absolute else ratio
    result = [row.name, f"{number(ours)} {row.unit}",
              f"{number(floor)} {row.unit} ({row.floor_name})" if floor else "",
              number(ratio) if ratio is not None else "",
              limit_text(row, row.must), limit_text(row, row.goal),
              verdict(row, judged) if judged is not None else "", best_peer(row, figures)]
    if others is not None:
        result.insert(2, f"{number(row.ours(others))} {row.unit}")
    return result


def markdown(header, lines):
    return "\n".join(["| " + " | ".join(line) + " |" for line in (header, ["---"] * len(header))]
                     + ["| " + " | ".join(line) + " |" for line in lines]) + "\n"
