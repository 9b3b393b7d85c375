"""Draws curves on logarithmic scales as SVG."""
import math
from xml.sax.saxutils import escape

WIDTH, HEIGHT = 640, 400
LEFT, RIGHT, TOP, BOTTOM = 70, 130, 40, 45
COLOURS = ("#1f77b4", "#d62728", "#2ca02c", "#9467bd", "#ff7f0e", "#17becf", "#8c564b", "#7f7f7f")
FONT = 'font-family="sans-serif" font-size="13"'


class Scale:
    """From values to places along an axis, by their logarithms."""

    def __init__(self, values, begin, end):
        self.low = math.floor(math.log10(min(values)))
        self.high = max(math.ceil(math.log10(max(values))), self.low + 1)
        self._begin, self._end = begin, end

    def place(self, value):
        share = (math.log10(value) - self.low) / (self.high - self.low)
        return self._begin + share * (self._end - self._begin)

    def powers(self):
        step = math.ceil((self.high - self.low) / 9)
        return [10.0 ** power for power in range(self.low, self.high + 1, step)]


def tick(value):
    if value >= 1e6:
        return f"{value / 1e6:,.0f} M"
    return f"{value:,.0f}" if value >= 1 else f"{value:g}"


def line(x1, y1, x2, y2):
    return f'<line x1="{x1:.1f}" y1="{y1:.1f}" x2="{x2:.1f}" y2="{y2:.1f}" '


def grid(across, down):
    parts = []
    for value in across.powers():
        x = across.place(value)
        parts.append(line(x, TOP, x, HEIGHT - BOTTOM) + 'stroke="#ddd"/>')
        parts.append(f'<text x="{x:.1f}" y="{HEIGHT - BOTTOM + 18}" text-anchor="middle" {FONT}>'
                     f'{tick(value)}</text>')
    for value in down.powers():
        y = down.place(value)
        parts.append(line(LEFT, y, WIDTH - RIGHT, y) + 'stroke="#ddd"/>')
        parts.append(f'<text x="{LEFT - 8}" y="{y + 4:.1f}" text-anchor="end" {FONT}>'
                     f'{tick(value)}</text>')
    return parts


def curve(index, name, points):
    colour = COLOURS[index % len(COLOURS)]
    path = " ".join(f"{x:.1f},{y:.1f}" for x, y in points)
    legend = TOP + 12 + 20 * index
    return [f'<polyline points="{path}" fill="none" stroke="{colour}" stroke-width="2"/>',
            line(WIDTH - RIGHT + 10, legend, WIDTH - RIGHT + 30, legend)
            + f'stroke="{colour}" stroke-width="2"/>',
            f'<text x="{WIDTH - RIGHT + 36}" y="{legend + 4}" {FONT}>{escape(name)}</text>']


def svg(title, sizes, lines):
    """`lines` maps the name of each to its values, one for each size."""
    positive = [value for values in lines.values() for value in values if value > 0]
    across = Scale(sizes, LEFT, WIDTH - RIGHT)
    down = Scale(positive, HEIGHT - BOTTOM, TOP)
    parts = [f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {WIDTH} {HEIGHT}">',
             f'<rect width="{WIDTH}" height="{HEIGHT}" fill="white"/>',
             f'<text x="{LEFT}" y="24" {FONT}>{escape(title)}</text>']
    parts += grid(across, down)
    for index, (name, values) in enumerate(lines.items()):
        points = [(across.place(size), down.place(value))
                  for size, value in zip(sizes, values) if value > 0]
        parts += curve(index, name, points)
    return "\n".join(parts + ["</svg>"]) + "\n"
