#!/usr/bin/env python3
"""Draws the charts of docs/pictures from the figures of a run of the benchmarks.

Usage: charts.py NUMBERS [FOLDER]    NUMBERS is written by table.py --save; FOLDER is docs/pictures by default

A chart has no legend: each bar and line has its name beside it. Axes begin at zero; only the number of declarations is on a
logarithmic axis. Ours is told from the others by its lightness and a bold name, not by its hue alone. The colours suit light
and dark surroundings, and all texts have a contrast of at least 4.5 to 1.
"""

import html
import json
import math
import os
import sys

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
WIDTH, MARGIN = 720, 20
STYLE = """
.bench .page{fill:#fff}
.bench text{font:13px system-ui,'Segoe UI',Roboto,'Helvetica Neue',Arial,sans-serif;fill:#1f2328}
.bench .faint{fill:#59636e}
.bench .strong{font-weight:600}
.bench .large{font-size:15px;font-weight:600}
.bench .small{font-size:11px}
.bench .end{text-anchor:end}
.bench .middle{text-anchor:middle}
.bench .ours{fill:#0969da}
.bench .peer{fill:#8c959f}
.bench .cut{stroke:#fff}
.bench path{fill:none}
.bench .axis{stroke:#8c959f}
.bench .grid{stroke:#e4e8ec}
.bench .line-ours{stroke:#0969da;stroke-width:2.5}
.bench .line-peer{stroke:#8c959f;stroke-width:1.5}
@media (prefers-color-scheme:dark){
.bench .page{fill:#0d1117}
.bench text{fill:#e6edf3}
.bench .faint{fill:#9198a1}
.bench .ours{fill:#4493f8}
.bench .peer{fill:#6e7681}
.bench .cut{stroke:#0d1117}
.bench .axis{stroke:#6e7681}
.bench .grid{stroke:#21262d}
.bench .line-ours{stroke:#4493f8}
.bench .line-peer{stroke:#8b949e}
}
"""

# How the chart calls a contender of the table.
NAMES = {"flat_hash_map": "absl::flat_hash_map", "map": "std::map", "unordered_map": "std::unordered_map",
         "vector": "std::vector", "bits": "bit test", "pugixml tree": "pugixml, only reading XML", "plain": "plain std::map",
         "our text load": "rtifed, from text", "protobuf": "Protocol Buffers, from .proto"}
SIZES = {"1e3": "1,000", "1e4": "10,000", "1e5": "100,000", "1e6": "1,000,000"}
UNITS = {"ns": "ns", "ns/decl": "ns per declaration", "B/decl": "bytes per declaration"}


class Svg:
    def __init__(self, title, description):
        self._head = [f"<title>{html.escape(title)}</title>", f"<desc>{html.escape(description)}</desc>",
                      f"<style>{STYLE}</style>"]
        self._parts = []

    def text(self, x, y, words, style=""):
        self._parts.append(f'<text x="{x:g}" y="{y:g}"' + (f' class="{style}"' if style else "") + f">{html.escape(words)}</text>")

    def rect(self, x, y, width, height, style):
        self._parts.append(f'<rect x="{x:g}" y="{y:g}" width="{width:.1f}" height="{height:g}" class="{style}"/>')

    def path(self, points, style):
        self._parts.append(f'<path d="M{"L".join(f"{x:.1f} {y:.1f}" for x, y in points)}" class="{style}"/>')

    def save(self, path, height):
        with open(path, "w", encoding="utf-8") as file:
            file.write(f'<svg class="bench" xmlns="http://www.w3.org/2000/svg" width="{WIDTH}" height="{height:g}" '
                       f'viewBox="0 0 {WIDTH} {height:g}" role="img">\n' + "\n".join(self._head)
                       + '\n<rect class="page" width="100%" height="100%" rx="6"/>\n' + "\n".join(self._parts) + "\n</svg>\n")


def figure(value):
    """A figure with three digits, or all those before the point."""
    return f"{value:,.0f}" if value >= 100 else f"{value:.{max(0, 2 - math.floor(math.log10(value)))}f}"


def size_of(label):
    number, _, what = label.partition(" ")
    return f"{SIZES[number]} {what or 'declarations'}"


class Group:
    """Contenders at one workload, ours first."""

    def __init__(self, title, unit, bars):
        self.title, self.unit, self.bars = title, unit, bars


def sizes_of(rows, workload, some):
    """Those of some sizes at which a workload was measured: quick runs leave the largest out."""
    measured = {row["size"] for row in rows if row["workload"] == workload}
    return [size for size in some if size in measured]


def group(rows, title, workload, size, ours="rtifed", peers=None):
    chosen = [row for row in rows if row["workload"] == workload and row["size"] == size
              and (peers is None or row["peer"] in peers)]
    if not chosen:
        sys.exit(f"charts.py: no figures of {workload!r} at {size}")
    bars = {ours: chosen[0]["ours"]}
    for row in sorted(chosen, key=lambda row: row["peerFigure"]):
        bars[NAMES.get(row["peer"], row["peer"])] = row["peerFigure"]
    return Group(f"{title}, {size_of(size)}", chosen[0]["unit"], bars)


def draw_bars(path, title, groups):
    """Draws groups of horizontal bars. Each group has a scale of its own, from zero. A bar of more than five times ours would make
    the others too short to compare: it is cut, which a gap near its end shows."""
    svg = Svg(title, "; ".join(f"{g.title}: " + ", ".join(f"{name} {figure(value)} {UNITS[g.unit]}" for name, value in g.bars.items())
                               for g in groups))
    bar_x, bar_end, row = 230, WIDTH - 110, 20
    y = MARGIN + 16
    svg.text(MARGIN, y, title, "large")
    y += 20
    svg.text(MARGIN, y, "Shorter is better. Each group has its own scale, which begins at zero.", "faint small")
    for g in groups:
        y += 34
        svg.text(MARGIN, y, g.title, "strong")
        svg.text(WIDTH - MARGIN, y, UNITS[g.unit], "faint small end")
        y += 8
        limit = 5 * next(iter(g.bars.values()))
        scale = (bar_end - bar_x) / min(limit, max(g.bars.values()))
        for name, value in g.bars.items():
            ours = name.startswith("rtifed")  # also ours from text, as the peer of ours from an image
            svg.text(bar_x - 10, y + 14, name, "strong end" if ours else "faint end")
            length = min(value, limit) * scale
            svg.rect(bar_x, y + 3, length, row - 6, "ours" if ours else "peer")
            if value > limit:
                x = bar_x + length - 24
                svg.path([(x - 3, y + row - 1), (x + 3, y + 1)], "cut")
                svg.path([(x + 1, y + row - 1), (x + 7, y + 1)], "cut")
            svg.text(bar_x + length + 8, y + 14, figure(value), "strong" if ours else "")
            y += row
        svg.path([(bar_x, y - row * len(g.bars)), (bar_x, y)], "axis")
    svg.save(path, y + MARGIN)


def ticks(highest):
    """Round figures from zero to at least `highest`, four to eight of them."""
    step = 10 ** math.floor(math.log10(highest))
    step = next(step * part for part in (0.1, 0.2, 0.25, 0.5, 1, 2) if highest <= 6 * step * part)
    return [step * i for i in range(math.ceil(highest / step) + 1)]


def spread(positions, gap):
    """Moves the positions of labels apart, so that each is at least `gap` below the one before; keeps their order."""
    order = sorted(range(len(positions)), key=lambda i: positions[i])
    moved = list(positions)
    for above, below in zip(order, order[1:]):
        moved[below] = max(moved[below], moved[above] + gap)
    return moved


def draw_growth(path, growth):
    lines = [("text", "rtifed, from text", True), ("maps", "pugixml + flat maps", False),
             ("image", "rtifed, from an image", True), ("tree", "pugixml, only reading XML", False)]
    title = "Time to load a declaration, in growing federations"
    svg = Svg(title, "; ".join(f"{name}: " + ", ".join(f"{figure(value)} ns at {size:,}" for size, value in growth[key])
                               for key, name, _ in lines))
    left, right, top, bottom = 60, WIDTH - 240, 74, 330
    values = ticks(max(value for points in growth.values() for _, value in points))
    sizes = [size for size, _ in growth["text"]]
    low, high = math.log10(sizes[0]), math.log10(sizes[-1])

    def at(size, value):
        return (left + (math.log10(size) - low) / (high - low) * (right - left), bottom - value / values[-1] * (bottom - top))

    svg.text(MARGIN, MARGIN + 16, title, "large")
    svg.text(MARGIN, top - 14, "ns", "faint small")
    for value in values:
        y = at(sizes[0], value)[1]
        svg.path([(left, y), (right, y)], "axis" if value == 0 else "grid")
        svg.text(left - 10, y + 4, f"{value:,g}", "faint small end")
    for size in sizes:
        svg.text(at(size, 0)[0], bottom + 20, f"{size:,}", "faint small middle")
    svg.text((left + right) / 2, bottom + 40, "declarations (logarithmic)", "faint small middle")
    labels = spread([at(sizes[-1], growth[key][-1][1])[1] for key, _, _ in lines], 18)
    for (key, name, ours), label in zip(lines, labels):
        points = [at(size, value) for size, value in growth[key]]
        svg.path(points, "line-ours" if ours else "line-peer")
        for x, y in points:
            svg.rect(x - 2.5, y - 2.5, 5, 5, "ours" if ours else "peer")
        svg.text(right + 12, label + 4, f"{name} {figure(growth[key][-1][1])}", "strong" if ours else "faint")
    svg.save(path, bottom + 40 + MARGIN)


def main():
    if len(sys.argv) not in (2, 3):
        sys.exit(__doc__)
    with open(sys.argv[1], encoding="utf-8") as file:
        numbers = json.load(file)
    folder = sys.argv[2] if len(sys.argv) == 3 else os.path.join(ROOT, "docs", "pictures")
    rows = numbers["rows"]
    declarations = sizes_of(rows, "text to database, warm", ["1e4", "1e5"])[-1]
    name, attribute = "class name to handle", "attribute name in a class, back to back"

    def chart(file, title, groups):
        draw_bars(os.path.join(folder, f"bench-{file}.svg"), title, groups)

    chart("overview", "rtifed beside general-purpose libraries", [
        group(rows, "Class name to handle, back to back", f"{name}, random, back to back", "1e4 classes", peers=["flat_hash_map"]),
        group(rows, "Handle to record, back to back", "handle to record, back to back", "1e4 classes"),
        group(rows, "Attribute name in a class, back to back", attribute, declarations),
        group(rows, "FED text to database", "text to database, warm", declarations, peers=["pugixml + flat maps"]),
        group(rows, "Image to database", "image to database, warm", declarations, peers=["pugixml tree"]),
        group(rows, "Memory of the model", "memory after text load", "1e5")])
    chart("lookups", "Lookups, time of each", [
        group(rows, title, workload, size)
        for title, workload in (("Class name to handle, random, back to back", f"{name}, random, back to back"),
                                ("Class name to handle, random, chained", f"{name}, random, chained"),
                                ("Class name to handle, without root, back to back", f"{name}, without root, back to back"),
                                ("Handle to record, back to back", "handle to record, back to back"),
                                ("Handle to record, chained", "handle to record, chained"))
        for size in sizes_of(rows, workload, ["1e4 classes", "1e5 classes"])] + [
        group(rows, "Attribute name in a class, back to back", attribute, size) for size in sizes_of(rows, attribute, ["1e4", "1e5"])] + [
        group(rows, f"{title}, {order}", f"{workload}, {order}", size)
        for title, workload in (("Attribute to declaring class", "attribute to declaring class"),
                                ("Is it derived from", "is it derived from"),
                                ("Are these 4 attributes available", "are these 4 attributes available"),
                                ("Are these 32 attributes available", "are these 32 attributes available"))
        for order in ("back to back", "chained") for size in sizes_of(rows, f"{workload}, {order}", ["1e5"])])
    chart("loads", "Loads and memory", [
        group(rows, "FED text to database in a warm process", "text to database, warm", declarations),
        group(rows, "FED text to database in a fresh process", "text to database, fresh", declarations),
        group(rows, "Image to database", "image to database, warm", declarations),
        group(rows, "Memory after a text load", "memory after text load", "1e5"),
        group(rows, "Memory at the peak of a text load", "memory at peak of text load", "1e5")])
    draw_growth(os.path.join(folder, "bench-growth.svg"), numbers["growth"])


main()
