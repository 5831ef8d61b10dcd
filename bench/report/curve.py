"""Draws one curve with the spread of its points as SVG."""

import math

WIDTH, HEIGHT = 640, 320
LEFT, RIGHT, TOP, BOTTOM = 70, 40, 36, 52


class Axis:
    """From numbers to places, by their logarithms."""

    def __init__(self, values, begin, end):
        self.low = math.floor(math.log10(min(values)))
        self.high = max(math.ceil(math.log10(max(values))), self.low + 1)
        self.begin, self.end = begin, end

    def place(self, value):
        share = (math.log10(value) - self.low) / (self.high - self.low)
        return self.begin + share * (self.end - self.begin)

    def ticks(self):
        return [10.0**exponent for exponent in range(self.low, self.high + 1)]


def _text(x, y, words, anchor="middle", extra=""):
    return f'<text x="{x:.1f}" y="{y:.1f}" text-anchor="{anchor}"{extra}>{words}</text>'


def _line(x1, y1, x2, y2, colour):
    return f'<line x1="{x1:.1f}" y1="{y1:.1f}" x2="{x2:.1f}" y2="{y2:.1f}" stroke="{colour}"/>'


def draw(title, x_label, y_label, points):
    """points: (x, Spread of y), both above 0; both axes are logarithmic."""
    across = Axis([x for x, _ in points], LEFT, WIDTH - RIGHT)
    up = Axis([y for _, spread in points for y in spread], HEIGHT - BOTTOM, TOP)
    parts = [
        f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {WIDTH} {HEIGHT}" font-family="sans-serif" '
        'font-size="12">',
        f'<rect width="{WIDTH}" height="{HEIGHT}" fill="white"/>',
        _text(WIDTH / 2, 20, title, extra=' font-size="15"'),
        _text((LEFT + WIDTH - RIGHT) / 2, HEIGHT - 12, x_label),
        _text(16, (TOP + HEIGHT - BOTTOM) / 2, y_label,
              extra=f' transform="rotate(-90 16 {(TOP + HEIGHT - BOTTOM) / 2:.1f})"'),
    ]
    for tick in across.ticks():
        x = across.place(tick)
        parts += [_line(x, TOP, x, HEIGHT - BOTTOM, "#ddd"), _text(x, HEIGHT - BOTTOM + 18, f"{tick:,.15g}")]
    for tick in up.ticks():
        y = up.place(tick)
        parts += [_line(LEFT, y, WIDTH - RIGHT, y, "#ddd"), _text(LEFT - 8, y + 4, f"{tick:,.15g}", "end")]
    way = " ".join(f"{across.place(x):.1f},{up.place(spread.median):.1f}" for x, spread in points)
    parts.append(f'<polyline points="{way}" fill="none" stroke="#1f5fa8" stroke-width="2"/>')
    for x, spread in points:
        place = across.place(x)
        parts += [
            _line(place, up.place(spread.least), place, up.place(spread.greatest), "#1f5fa8"),
            f'<circle cx="{place:.1f}" cy="{up.place(spread.median):.1f}" r="3" fill="#1f5fa8"/>',
        ]
    return "\n".join([*parts, "</svg>", ""])
