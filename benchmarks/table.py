#!/usr/bin/env python3
"""Runs the benchmarks of a build and prints one table: ours, a peer, and whether their ratio meets the goal.

Usage: table.py BUILD_FOLDER [quick] [--save FILE | REGEX]

A figure is the median over repetitions. A ratio is that of two medians of one run, followed by the lowest and the highest
ratio of two repetitions. Times are CPU times per query or per declaration. REGEX selects rows by "WORKLOAD SIZE PEER".
--save also measures loads of growing federations, and writes all figures to FILE as JSON, of which charts.py makes charts.
The table and the charts show the same measurement.
"""

import collections
import json
import os
import re
import statistics
import subprocess
import sys
import tempfile

Size = collections.namedtuple("Size", "label declarations")
Row = collections.namedtuple("Row", "title size kind ours peer peer_name goal")
# The number of repetitions of each kind of measurement, and the minimum seconds of a repetition in one process.
Effort = collections.namedtuple("Effort", "lookup warm scale fresh program seconds")

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
UNITS = {"lookup": "ns", "warm": "ns/decl", "scale": "ns/decl", "fresh": "ns/decl", "memory": "B/decl",
         "program": "ms", "start": "ms", "peak": "MiB"}


def classes(count):
    """A federation with `count` object classes, which are 15 % of its declarations."""
    return Size(f"{count:.0e} classes".replace("e+0", "e"), round(count / 0.15))


def declarations(count):
    return Size(f"{count:.0e}".replace("e+0", "e"), count)


def rows(quick):
    some_classes = [classes(n) for n in ([1000, 10000] if quick else [1000, 10000, 100000])]
    some = [declarations(n) for n in ([10000] if quick else [10000, 100000])]
    few, large, huge = declarations(10000), declarations(100000), declarations(100000 if quick else 1000000)

    def each(sizes, title, kind, ours, peer, peer_name, goal):
        for size in sizes:
            yield Row(title, size, kind, ours.format(size.declarations), peer.format(size.declarations), peer_name,
                      goal)

    def lookup(sizes, title, workload, peer, order, goal):
        yield from each(sizes, f"{title}, {order.replace('-', ' ')}", "lookup", f"{workload}/{{}}/ours/{order}",
                        f"{workload}/{{}}/{peer}/{order}", peer, goal)

    def load(title, kind, ours, peer, peer_name, goal, sizes=some):
        yield from each(sizes, f"{title}, {kind}", kind, f"{ours}/{{}}", f"{peer}/{{}}", peer_name, goal)

    def memory(title, ours, peer, peer_name, goal):
        yield from each([large], title, "memory", ours, peer, peer_name, goal)

    name = "class name to handle"
    for order, workload in ("random", "class"), ("skewed", "class-skewed"):
        yield from lookup(some_classes[:1], f"{name}, {order}", workload, "flat_hash_map", "back-to-back", 0.95)
        yield from lookup(some_classes[1:], f"{name}, {order}", workload, "flat_hash_map", "back-to-back", 0.75)
    yield from lookup(some_classes, f"{name}, random", "class", "flat_hash_map", "chained", 0.90)
    yield from lookup(some_classes, f"{name}, skewed", "class-skewed", "flat_hash_map", "chained", 0.90)
    yield from lookup(some_classes, f"{name}, random", "class", "map", "back-to-back", 0.10)
    yield from lookup(some_classes, f"{name}, random", "class", "unordered_map", "back-to-back", 0.65)
    yield from lookup(some_classes, f"{name}, without root", "short-class", "flat_hash_map", "back-to-back", 0.55)
    yield from lookup(some, "attribute name in a class", "attribute", "flat_hash_map", "back-to-back", 0.75)
    yield from lookup(some_classes, "handle to record", "record", "vector", "chained", 1.05)
    yield from lookup(some_classes, "handle to record", "record", "flat_hash_map", "back-to-back", 1.00)
    # Back to back, a call into a library is compared with some inlined instructions: that row has no goal.
    for order, goal in ("back-to-back", None), ("chained", 2.0):
        yield from lookup([large], "attribute to declaring class", "declaring-class", "vector", order, goal)
        yield from lookup([large], "is it derived from", "derivation", "bits", order, goal)
    for size in 4, 32:
        title = f"are these {size} attributes available"
        for order in "back-to-back", "chained":
            yield from lookup([large], title, f"availability-{size}", "bits", order, 1.5)

    text, hashed, tree = "text to database", "pugixml + flat maps", "pugixml tree"
    yield from load(text, "warm", "text", "maps", hashed, 0.45)
    yield from load(text, "fresh", "text", "maps", hashed, 0.50)
    yield from load(text, "warm", "text", "plain", "plain", 0.15)
    yield from load(text, "fresh", "text", "plain", "plain", 0.25)
    yield from load(text, "warm", "text", "descriptors", "protobuf", 0.07)
    yield from load(text, "warm", "text", "tree", tree, 2.1)
    yield from load(text, "fresh", "text", "tree", tree, 1.5)
    yield from load("image to database", "warm", "image", "tree", tree, 0.65)
    yield from load("image to database", "warm", "image", "text", "our text load", 0.35)

    yield from memory("memory after text load", "text/{}/live", "tree/{}/live", tree, 0.50)
    yield from memory("memory at peak of text load", "text/{}/peak", "maps/{}/peak", hashed, 0.50)
    yield from memory("memory at peak of restore", "image/{}/peak", "image/{}/live", "ours after it", 1.05)

    def program(sizes, command, goal, peer="open", peer_name="library"):
        yield from each(sizes, f"rtifed {command}, process", "program", f"{command}/{{}}", f"{peer}/{{}}", peer_name,
                        goal)

    for command in "check", "checksum":
        yield from program([large] if quick else [large, huge], command, 2.0)
        yield from each([large], f"rtifed {command}, peak memory of the process", "peak", f"{command}/{{}}", "open/{}",
                        "library", 2.0)
    for command in "json", "tree", "list":
        yield from program([large], command, 4.0)
    yield from program([large], "diff", 3.0, "open-two", "library, both")
    if not quick:
        yield from program([huge], "diff", 3.5, "open-two", "library, both")
    # Apart from the commands, of which one would empty the caches before the first of the two processes only.
    yield from each([Size("", 0)], "rtifed --version, process", "start", "--version/{}", "true/{}", "true", 2.0)

    ratio = Size(f"{huge.label} : {few.label}", huge.declarations)
    for title, ours, goal in (text, "text", 1.10), ("image to database", "image", 1.25):
        yield from each([ratio], f"{title}, warm", "scale", f"{ours}/{{}}", f"{ours}/{few.declarations}",
                        f"ours at {few.label}", goal)


def write_changed(old, new):
    """Writes a federation after some work on it: every thousandth attribute has another ordering, and one is gone, so that
    the handles after it moved."""
    def is_attribute(line):
        return line.lstrip().startswith("(attribute ")

    with open(old, encoding="utf-8") as text:
        middle = sum(map(is_attribute, text)) // 2
    swapped = {"receive": "timestamp", "timestamp": "receive"}
    count = 0
    with open(old, encoding="utf-8") as text, open(new, "w", encoding="utf-8") as out:
        for line in text:
            count += is_attribute(line)
            if is_attribute(line) and count % 1000 == 0:
                line = re.sub("receive|timestamp", lambda match: swapped[match[0]], line)
            if not (is_attribute(line) and count == middle):
                out.write(line)


class Programs:
    def __init__(self, folder, effort):
        self._folder, self._effort = folder, effort
        self._federations = os.path.join(folder, "federations")
        self._declarations = {}

    def _run(self, program, *arguments):
        done = subprocess.run([os.path.join(self._folder, f"rtifed-bench-{program}"), *arguments],
                              capture_output=True, text=True)
        if done.returncode != 0:
            sys.exit(f"rtifed-bench-{program} failed:\n{done.stderr}")
        return done.stdout

    def generate(self, sizes):
        if not sizes:
            return
        os.makedirs(self._federations, exist_ok=True)
        printed = self._run("generate", os.path.join(ROOT, "examples", "minimal.fed"), self._federations,
                            *map(str, sorted(sizes)))
        self._declarations = dict(line.split() for line in printed.splitlines())

    def measure(self, kind, names):
        """The figures of each name, one per repetition."""
        print(f"measuring: {kind}", file=sys.stderr)
        return getattr(self, f"_{kind}")(names)

    def _per_declaration(self, name, figures):
        count = int(self._declarations[name.split("/")[1]])
        return [figure / count for figure in figures]

    def _repeat(self, program, subjects, names, repetitions):
        """The results of each benchmark in the order in which its repetitions ran."""
        with tempfile.NamedTemporaryFile(suffix=".json") as out:
            self._run(program, self._federations, *subjects, f"--benchmark_filter=^({'|'.join(names)})$",
                      "--benchmark_enable_random_interleaving=true", f"--benchmark_repetitions={repetitions}",
                      f"--benchmark_min_time={self._effort.seconds}", f"--benchmark_out={out.name}",
                      "--benchmark_out_format=json")
            results = json.load(out)["benchmarks"]
        return {name: [r for r in results if r["run_name"] == name and r["run_type"] == "iteration"]
                for name in names}

    def _lookup(self, names):
        workloads = sorted({name.rsplit("/", 2)[0] for name in names})
        results = self._repeat("lookup", workloads, names, self._effort.lookup)
        return {name: [1e9 / r["items_per_second"] for r in results[name]] for name in names}

    def _loads(self, names, repetitions):
        results = self._repeat("load", names, names, repetitions)
        return {name: self._per_declaration(name, [r["cpu_time"] for r in results[name]]) for name in names}

    def _warm(self, names):
        return self._loads(names, self._effort.warm)

    def _scale(self, names):
        return self._loads(names, self._effort.scale)

    def _fresh(self, names):
        figures = {name: [] for name in names}
        for _ in range(self._effort.fresh):
            for name in names:
                contender, size = name.split("/")
                figures[name].append(int(self._run("load-once", contender, os.path.join(self._federations, size))))
        return {name: self._per_declaration(name, figures[name]) for name in names}

    def _processes(self, names):
        """The CPU time in seconds and the peak of resident memory in KiB of each process, one after the other in turn. The
        system counts the memory of this process, from which they begin, as theirs, so this one has to stay small."""
        figures = {name: [] for name in names}
        with tempfile.TemporaryFile() as out:
            for _ in range(self._effort.program):
                for name in names:
                    out.seek(0)
                    out.truncate()
                    process = subprocess.Popen(self._process(name), stdout=out, stderr=subprocess.DEVNULL)
                    _, status, usage = os.wait4(process.pid, 0)
                    process.returncode = os.waitstatus_to_exitcode(status)
                    if process.returncode not in (0, 1):
                        sys.exit(f"{name} failed")
                    figures[name].append((usage.ru_utime + usage.ru_stime, usage.ru_maxrss))
        return figures

    def _process(self, name):
        command, size = name.split("/")
        file = os.path.join(self._federations, f"{size}.fed")
        other = os.path.join(self._federations, f"{size}.changed.fed")
        if command in ("diff", "open-two") and not os.path.exists(other):
            write_changed(file, other)
        rtifed = os.path.join(os.path.dirname(self._folder), "tool", "rtifed")
        opener = os.path.join(self._folder, "rtifed-bench-open")
        return {"open": [opener, file], "open-two": [opener, file, other], "true": ["true"],
                "--version": [rtifed, command], "diff": [rtifed, command, file, other]
                }.get(command, [rtifed, command, file])

    def _program(self, names):
        return {name: [seconds * 1000 for seconds, _ in figures]
                for name, figures in self._processes(names).items()}

    def _start(self, names):
        return self._program(names)

    def _peak(self, names):
        return {name: [kibibytes / 1024 for _, kibibytes in figures]
                for name, figures in self._processes(names).items()}

    def _memory(self, names):
        figures = {}
        for name in names:
            contender, size, which = name.split("/")
            live, peak = self._run("memory", contender, os.path.join(self._federations, size)).split()
            figures[name] = self._per_declaration(name, [int(live if which == "live" else peak)])
        return figures


def machine(folder):
    with open("/proc/cpuinfo") as info:
        model = next((line.split(":")[1].strip() for line in info if line.startswith("model name")), "unknown")
    with open(os.path.join(os.path.dirname(folder), "CMakeCache.txt")) as cache:
        compiler = re.search(r"^CMAKE_CXX_COMPILER:\w+=(.*)$", cache.read(), re.MULTILINE).group(1)
    version = subprocess.run([compiler, "--version"], capture_output=True, text=True, check=True).stdout.split("\n")[0]
    return f"{model}, {os.cpu_count()} cores; {version}"


def growing(quick):
    """The names of loads of growing federations, which only charts show."""
    sizes = [1000, 10000, 100000] + ([] if quick else [1000000])
    return [f"{contender}/{size}" for contender in ("text", "maps", "image", "tree") for size in sizes]


class Result:
    """A row with its figures."""

    def __init__(self, row, ours, peer):
        self.row, self.ours, self.peer = row, statistics.median(ours), statistics.median(peer)
        self.ratio = self.ours / self.peer
        paired = [a / b for a, b in zip(ours, peer)]
        self.lowest, self.highest = min(paired), max(paired)
        self.met = row.goal is not None and self.ratio <= row.goal


def print_table(results):
    lines = [("workload", "size", "ours", "peer", "ratio (spread)", "goal", "")]
    for result in results:
        row = result.row
        lines.append((row.title, row.size.label, f"{result.ours:.2f} {UNITS[row.kind]}", f"{row.peer_name} {result.peer:.2f}",
                      f"{result.ratio:.2f} ({result.lowest:.2f} - {result.highest:.2f})",
                      *(("", "") if row.goal is None else (f"{row.goal:.2f}", "met" if result.met else "not met"))))
    widths = [max(map(len, column)) for column in zip(*lines)]
    lines.insert(1, ["-" * width for width in widths])
    for line in lines:
        print("| " + " | ".join(cell.ljust(width) for cell, width in zip(line, widths)) + " |")
    goals = sum(result.row.goal is not None for result in results)
    print(f"{sum(result.met for result in results)} of {goals} goals met")


def save(path, machine_name, results, growth):
    """Writes the figures of the table, and `growth`, the figures of each name of a load."""
    numbers = {
        "machine": machine_name,
        "rows": [{"workload": result.row.title, "size": result.row.size.label, "unit": UNITS[result.row.kind],
                  "ours": round(result.ours, 3), "peer": result.row.peer_name, "peerFigure": round(result.peer, 3)}
                 for result in results],
        "growth": {},
    }
    for name, figures in growth.items():
        contender, size = name.split("/")
        numbers["growth"].setdefault(contender, []).append([int(size), round(statistics.median(figures), 3)])
    with open(path, "w", encoding="utf-8") as file:
        json.dump(numbers, file, indent=1)
        file.write("\n")


def main():
    arguments = sys.argv[2:]
    quick = arguments[:1] == ["quick"]
    rest = arguments[1:] if quick else arguments
    saves = rest[:1] == ["--save"]
    if len(rest) != (2 if saves else min(len(rest), 1)):
        sys.exit(__doc__)
    effort = Effort(5, 5, 3, 5, 5, 0.01) if quick else Effort(15, 11, 5, 15, 11, 0.05)
    pattern = re.compile("" if saves or not rest else rest[0])
    chosen = [row for row in rows(quick) if pattern.search(f"{row.title} {row.size.label} {row.peer_name}")]
    if not chosen:
        sys.exit("no row is selected")

    names = {}
    for row in chosen:
        names.setdefault(row.kind, {}).update({row.ours: None, row.peer: None})
    growth = growing(quick) if saves else []
    if saves:
        names["scale"].update(dict.fromkeys(growth))
    programs = Programs(os.path.abspath(sys.argv[1]), effort)
    programs.generate({int(name.split("/")[1]) for some in names.values() for name in some} - {0})
    # Processes first, while this one has read no results.
    kinds = sorted(names, key=lambda kind: kind not in ("program", "start", "peak"))
    figures = {kind: programs.measure(kind, list(names[kind])) for kind in kinds}
    results = [Result(row, figures[row.kind][row.ours], figures[row.kind][row.peer]) for row in chosen]
    machine_name = machine(os.path.abspath(sys.argv[1]))
    print(machine_name)
    print_table(results)
    if saves:
        save(rest[1], machine_name, results, {name: figures["scale"][name] for name in growth})


main()
