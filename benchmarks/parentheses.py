#!/usr/bin/env python3
"""Measures how often `rtifed check` names the line of a parenthesis that is missing or superfluous.

Usage: parentheses.py [--rtifed PROGRAM] [--split tune|test|all] [--places N] [--layout NAME]... [--show N] [FILE|FOLDER...]

Takes FED files whose parentheses balance (by default examples/ and federations it generates), lays each out in the ways
that people do, makes one mistake at N random places of each kind, and reads what `check` reports.

  named    The line of the mistake is the line of a finding or of one of its notes. Nothing else counts: not the line of
           the clause that was left open, not a line next to it. Only where a whole line is gone ("line lost"), the lines
           before and after the gap count. Mistakes that leave the same tokens on the same lines are the same mistake, so
           in a run of ")" on one line any of them may be meant.
  wrong    A finding that judges by the layout has none of its places on the line of the mistake, whatever other findings
           say. This includes a finding that gives several lines to choose from.
  silent   Neither: check reports an error, but says nothing about where the mistake may be. Where a layout does not show
           the place, this is the right answer. It does not count as named.
  several  Of the named ones, those where the finding gives two or three lines to choose from.
  findings The mean number of syntax findings for one mistake; the best is one.

"all on one line" and "line lost" are reported for information: the first has only one line to name, in the second the
layout often keeps no trace of the mistake. Half of the material is for tuning (--split tune), the other for measuring:
files are split by a hash of the first part of their names, generated federations and places by their random seed.
"""

import argparse
import collections
import hashlib
import json
import os
import random
import re
import subprocess
import sys
import tempfile

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
TOKEN = re.compile(rb'"[^"\r\n]*"|[()]|[^\s()";]+|;[^\r\n]*')
SYNTAX = {"missing-word", "unexpected-clause", "unexpected-word", "unclosed-clause", "surplus-parenthesis",
          "repeated-clause", "missing-clause", "text-behind-end", "not-a-fed-text", "misplaced-clause"}
SECTIONS = {"FED", "SPACES", "OBJECTS", "INTERACTIONS"}
LEAVES = {"FEDERATION", "FEDVERSION", "FEDERATE", "DIMENSION", "ATTRIBUTE", "PARAMETER", "SEC_LEVEL"}

Token = collections.namedtuple("Token", "begin text")


# --- Reading and generating federations ---

def tokens_of(text):
    return [Token(m.start(), m.group()) for m in TOKEN.finditer(text) if not m.group().startswith(b";")]


class Clause:
    def __init__(self, words, clauses=()):
        self.words, self.clauses = words, list(clauses)

    @property
    def keyword(self):
        return self.words[0].upper()


def tree_of(text):
    """The clauses of a text, or None if it is not one balanced clause."""
    outermost = Clause([])
    stack = [outermost]
    for token in tokens_of(text):
        if token.text == b"(":
            stack.append(Clause([]))
            stack[-2].clauses.append(stack[-1])
        elif token.text == b")":
            stack.pop()
            if not stack:
                return None
        else:
            stack[-1].words.append(token.text.decode("latin-1"))
    clauses = outermost.clauses
    return clauses[0] if len(stack) == 1 and len(clauses) == 1 and clauses[0].words and not outermost.words else None


def generate(rng):
    """A federation with random classes: few or many, flat or deep, with or without members before subclasses."""
    sounds = ["ka", "lo", "mi", "ter", "dun", "vas", "pel", "ro", "shi", "ban", "wex", "or"]
    used = set()

    def name():
        while True:
            made = "".join(rng.choice(sounds) for _ in range(rng.randint(2, 4))).title()
            if made not in used:
                used.add(made)
                return made

    spaces = [name() for _ in range(rng.choice([0, 1, 1, 3]))]
    bushy, members = rng.choice([(0.2, 3), (0.4, 5), (0.5, 2), (0.7, 4)])

    def words():
        chosen = [rng.choice(["reliable", "best_effort"]), rng.choice(["timestamp", "receive"])]
        return chosen + ([rng.choice(spaces)] if spaces and rng.random() < 0.5 else [])

    def make(kind, depth):
        made = Clause(["class", name()] + (words() if kind == "parameter" else []))
        for _ in range(rng.choice([0, 1, members, rng.randint(0, 2 * members)])):
            made.clauses.append(Clause([kind, name()] + (words() if kind == "attribute" else [])))
        if depth < 5 and rng.random() < bushy:
            made.clauses += [make(kind, depth + 1) for _ in range(rng.randint(1, 5))]
        return made

    def root(kind, label):
        made = Clause(["class", label] + (["reliable", "timestamp"] if kind == "parameter" else []))
        if kind == "attribute":
            made.clauses.append(Clause([kind, "privilegeToDelete", "reliable", "timestamp"]))
        made.clauses += [make(kind, 1) for _ in range(rng.randint(3, 12))]
        return made

    return Clause(["FED"], [
        Clause(["Federation", name()]), Clause(["FEDversion", "v1.3"]),
        Clause(["spaces"], [Clause(["space", s], [Clause(["dimension", name()]) for _ in range(rng.randint(1, 3))])
                            for s in spaces]),
        Clause(["objects"], [root("attribute", "ObjectRoot")]),
        Clause(["interactions"], [root("parameter", "InteractionRoot")])])


# --- Layouts ---

def is_leaf(clause):
    return not clause.clauses and clause.keyword in LEAVES


def flat(clause):
    return "(" + " ".join(clause.words + [flat(c) for c in clause.clauses]) + ")"


def lay_out(clause, unit="  ", close="own", one_line=None, indent=None, pad=0, note=None, level=0):
    """The lines of a clause. `close` is "own" for a ")" on a line of its own, "run" for one at the end of the last line;
    `indent` makes the indentation of a level, `pad` the columns of words, `note` the comment after a ")"."""
    indent = indent or (lambda n: unit * n)
    if is_leaf(clause) or (one_line and one_line(clause)):
        words = "  ".join(w.ljust(pad) for w in clause.words) if pad and is_leaf(clause) else None
        return [indent(level) + (f"({words.rstrip()})" if words else flat(clause))]
    lines = [indent(level) + "(" + " ".join(clause.words)]
    for child in clause.clauses:
        lines += lay_out(child, unit, close, one_line, indent, pad, note, level + 1)
    if close == "own" and (clause.clauses or clause.keyword == "CLASS"):
        lines.append(indent(level) + ")" + (note(clause) if note else ""))
    else:
        lines[-1] += ")"
    return lines


def without_subclasses(clause):
    return clause.keyword in ("CLASS", "SPACE") and all(is_leaf(c) for c in clause.clauses)


def uneven(rng):
    """Indentation by hand: four blanks a level, but every third line is up to two blanks off."""
    return lambda level: " " * max(0, 4 * level + (rng.randint(-2, 2) if level > 0 and rng.random() < 0.35 else 0))


def half_indented(clause, level=0, depth=0):
    """Members are indented under their class, but a class is not indented under its superclass."""
    if is_leaf(clause):
        return [" " * (level + 4) + flat(clause)]
    lines = [" " * level + "(" + " ".join(clause.words)]
    for child in clause.clauses:
        lines += half_indented(child, min(level + 1, 2) if clause.keyword != "CLASS" or depth < 1 else level, depth + 1)
    return lines + [" " * level + ")"]


LAYOUTS = {
    "as it is": None,
    "two blanks": lambda c, rng: lay_out(c, "  "),
    "four blanks": lambda c, rng: lay_out(c, "    "),
    "eight blanks": lambda c, rng: lay_out(c, "        "),
    "tabs": lambda c, rng: lay_out(c, "\t"),
    "end comments": lambda c, rng: lay_out(c, "  ", note=lambda d: " ;; end " + d.words[-1 if d.keyword in SECTIONS else 1]),
    "run of )": lambda c, rng: lay_out(c, "  ", "run"),
    "run of ), tabs": lambda c, rng: lay_out(c, "\t", "run"),
    "one-line classes": lambda c, rng: lay_out(c, "  ", one_line=without_subclasses),
    "one-line classes, run": lambda c, rng: lay_out(c, "    ", "run", one_line=without_subclasses),
    "columns": lambda c, rng: lay_out(c, "  ", pad=16),
    "uneven": lambda c, rng: lay_out(c, indent=uneven(rng)),
    "uneven, run": lambda c, rng: lay_out(c, close="run", indent=uneven(rng)),
    "half indented": lambda c, rng: half_indented(c),
    "no indentation": lambda c, rng: lay_out(c, ""),
    "no indentation, run": lambda c, rng: lay_out(c, "", "run"),
    "all on one line": lambda c, rng: [flat(c)],
}


# --- Mistakes ---

def lines_of(text, offset):
    return text.count(b"\n", 0, offset) + 1


def missing(sign):
    def make(text, tokens, rng):
        token = rng.choice([t for t in tokens if t.text == sign])
        return text[:token.begin] + text[token.begin + 1:], {lines_of(text, token.begin)}
    return make


def surplus(sign):
    """Doubles a parenthesis, or adds one after any token."""
    def make(text, tokens, rng):
        token = rng.choice([t for t in tokens if t.text == sign] if rng.random() < 0.5 else tokens)
        at = token.begin + len(token.text)
        return text[:at] + sign + text[at:], {lines_of(text, at - 1)}
    return make


def member_closed_twice(text, tokens, rng):
    """The most common mistake: `(attribute X reliable receive))`, after which the class goes on."""
    members = [b"ATTRIBUTE", b"PARAMETER"]
    goes_on = [i for i, t in enumerate(tokens[:-2])
               if t.text == b")" and tokens[i + 1].text == b"(" and tokens[i + 2].text.upper() in members]
    closes = [tokens[i] for i in goes_on if b"(" not in [t.text for t in tokens[max(0, i - 2):i]]]
    if not closes:
        return None
    at = rng.choice(closes).begin + 1
    return text[:at] + b")" + text[at:], {lines_of(text, at - 1)}


def line_lost(text, tokens, rng):
    alone = [m for m in re.finditer(rb"(?m)^[ \t]*\)[ \t]*\r?\n", text)]
    if not alone:
        return None
    match = rng.choice(alone)
    before = max((t.begin for t in tokens if t.begin < match.start()))
    after = min((t.begin for t in tokens if t.begin >= match.end()), default=len(text))
    gap = len(match.group())
    changed = text[:match.start()] + text[match.end():]
    return changed, {lines_of(changed, before), lines_of(changed, max(0, after - gap))}


MISTAKES = {"missing )": missing(b")"), "surplus )": surplus(b")"), "missing (": missing(b"("),
            "surplus (": surplus(b"("), "member ))": member_closed_twice, "line lost": line_lost}
GOALS = {"missing )", "surplus )", "missing (", "surplus (", "member ))"}


# --- Measuring ---

Case = collections.namedtuple("Case", "layout mistake source text lines")
Result = collections.namedtuple("Result", "named wrong several findings reported")


def check(program, cases):
    """The findings of each case."""
    with tempfile.TemporaryDirectory() as folder:
        paths = [os.path.join(folder, f"{i:06}.fed") for i in range(len(cases))]
        for path, case in zip(paths, cases):
            with open(path, "wb") as file:
                file.write(case.text)
        findings = {}
        for i in range(0, len(paths), 200):
            done = subprocess.run([program, "check", "--format", "json", "--max-findings", "0", *paths[i:i + 200]],
                                  capture_output=True, check=False)
            if done.returncode not in (0, 1):
                sys.exit(f"{program} check failed:\n{done.stderr.decode()}")
            for file in json.loads(done.stdout)["files"]:
                findings[file["file"]] = file["findings"]
        return [findings[path] for path in paths]


def places(finding):
    """The lines of a finding and its notes, in this and in the earlier form of the JSON."""
    all_places = [about.get("place") or about.get("range") for about in [finding, *finding.get("notes", [])]]
    return [p.get("line") or p.get("startLine") for p in all_places if p]


def judge(case, findings):
    syntax = [f for f in findings if f["rule"] in SYNTAX]
    named = any(case.lines & set(places(f)) for f in findings)
    claims = [f for f in findings if any("judging by the" in t and "words" not in t
                                         for t in [f["text"]] + [n["text"] for n in f.get("notes", [])])]
    right = [f for f in claims if case.lines & set(places(f))]
    several = named and any("one of these lines" in f["text"] for f in right)
    return Result(named, len(right) < len(claims), several, len(syntax), findings)


def sources(paths, split):
    """Name and text of each file of one half, and the generated federations."""
    def chosen(name):
        half = "tune" if int(hashlib.md5(name.split("-")[0].encode()).hexdigest(), 16) % 2 else "test"
        return split in ("all", half)
    files = []
    for path in paths or [os.path.join(ROOT, "examples")]:
        inside = sorted(os.listdir(path)) if os.path.isdir(path) else None
        files += [os.path.join(path, f) for f in inside if f.lower().endswith(".fed")] if inside is not None else [path]
    for path in files:
        with open(path, "rb") as file:
            text = file.read()
        if not chosen(os.path.basename(path)):
            continue
        if tree_of(text):
            yield os.path.basename(path), text
        else:
            print(f"not balanced, left out: {path}", file=sys.stderr)
    if not paths:
        for seed in range(24):
            if split == "all" or (seed % 2 == 0) == (split == "tune"):
                made = generate(random.Random(f"federation {seed}"))
                yield f"made-{seed}", "\n".join(lay_out(made)).encode() + b"\n"


def cases_of(options):
    for name, text in sources(options.paths, options.split):
        for layout, lay in LAYOUTS.items():
            if options.layout and layout not in options.layout:
                continue
            rng = random.Random(f"{options.split} {name} {layout}")
            laid = text if lay is None else ("\n".join(lay(tree_of(text), rng)) + "\n").encode("latin-1")
            tokens = tokens_of(laid)
            for mistake, make in MISTAKES.items():
                if options.mistake and mistake not in options.mistake:
                    continue
                for _ in range(options.places):
                    made = make(laid, tokens, rng)
                    if made:
                        yield Case(layout, mistake, name, *made)


def show(case, result):
    line = min(case.lines)
    print(f"--- {case.layout}, {case.mistake}, {case.source}:{line}: " +
          ("named" if result.named else "not named") + (", wrong" if result.wrong else ""))
    lines = case.text.decode("latin-1").split("\n")
    for i in range(max(0, line - 6), min(len(lines), line + 6)):
        print(f"{'>' if i + 1 in case.lines else ' '}{i + 1:5} {lines[i].rstrip()[:110]!r}")
    for finding in result.reported[:4]:
        if finding["rule"] in SYNTAX:
            print("   ", places(finding), finding["text"][:400], *[n["text"] for n in finding.get("notes", [])], sep="\n      ")


def row(results):
    count = len(results)
    share = lambda n: f"{100 * n / count:.1f}"
    return [count, share(sum(r.named for r in results)), share(sum(r.wrong for r in results)),
            share(sum(not r.named and not r.wrong for r in results)), share(sum(r.several for r in results)),
            f"{sum(r.findings for r in results) / count:.2f}"]


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--rtifed", default=os.path.join(ROOT, "build", "dev", "tool", "rtifed"))
    parser.add_argument("--split", choices=["tune", "test", "all"], default="tune")
    parser.add_argument("--places", type=int, default=6, help="places of each kind in each layout of each file")
    parser.add_argument("--layout", action="append", choices=LAYOUTS)
    parser.add_argument("--mistake", action="append", choices=MISTAKES)
    parser.add_argument("--keep", help="write the cases that --show prints to this folder")
    parser.add_argument("--show", type=int, default=0, help="print so many cases that are not named, or wrong")
    parser.add_argument("paths", nargs="*", metavar="FILE|FOLDER")
    options = parser.parse_args()

    cases = list(cases_of(options))
    if not cases:
        sys.exit("no case is selected")
    table = collections.defaultdict(list)
    bad = []
    for case, findings in zip(cases, check(options.rtifed, cases)):
        result = judge(case, findings)
        table[case.layout, case.mistake].append(result)
        if not result.named or result.wrong:
            bad.append((case, result))
    for i, (case, result) in enumerate(random.Random(1).sample(bad, min(options.show, len(bad)))):
        if options.keep:
            with open(os.path.join(options.keep, f"{i}.fed"), "wb") as file:
                file.write(case.text)
        show(case, result)

    lines = [["layout", "mistake", "cases", "named %", "wrong %", "silent %", "several %", "findings", ""]]
    totals = collections.defaultdict(list)
    for (layout, mistake), results in table.items():
        one = row(results)
        goal = mistake in GOALS and layout != "all on one line"
        met = float(one[1]) >= 95 and float(one[2]) <= 3
        lines.append([layout, mistake, *one, ("met" if met else "not met") if goal else ""])
        if layout != "all on one line":
            totals[mistake] += results
    lines += [["all but one line", mistake, *row(results), ""] for mistake, results in totals.items()]
    widths = [max(len(str(cell)) for cell in column) for column in zip(*lines)]
    lines.insert(1, ["-" * width for width in widths])
    for line in lines:
        print("| " + " | ".join(str(cell).ljust(width) for cell, width in zip(line, widths)) + " |")


main()
