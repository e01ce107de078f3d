"""A source that contains all its mutants, of which one can be switched on (see switch.hh)."""

import re

from mutation.changes import blanked, nesting

NAMES = {"<": "Less", "<=": "LessEqual", ">": "Greater", ">=": "GreaterEqual", "==": "Equal", "!=": "Unequal", "+": "Plus",
         "-": "Minus", "+=": "Add", "-=": "Subtract"}
OPERAND = r"[A-Za-z_][\w.]*(?:->[\w.]+)*(?:\[[^\][]*\])?"
# In a compiler's message: a mutant's number, or a place in the source.
MUTANT = re.compile(r"rtifedMutant::(?:\w+<|on\()(\d+)|\bon\((\d+)\)")
PLACE = re.compile(r"^(.*?):(\d+):(\d+): (error|note|fatal error): (.*)")


class Switched:
    """What is inserted for each mutant surrounds a range, and may replace the mutant's own text. Ranges are nested, so that the
    mutants of one statement do not disturb each other."""

    def __init__(self, file, text, mutants):
        self.file, self.text = file, text
        self.code = blanked(text)
        self.within = nesting(self.code)
        self.ranges = {}  # by the mutant's number: begin, end, before, after, own place, own text
        for mutant in mutants:
            surrounding = self._surrounding(mutant)
            if surrounding:
                self.ranges[mutant.number] = surrounding
        self.places = {}  # of the ranges in what was written last

    def _surrounding(self, mutant):
        begin, end = mutant.place
        old, on = self.text[begin:end], "rtifedMutant::on(%d)" % mutant.number
        if mutant.new.startswith("!("):
            return begin, end, "(%s != bool(" % on, "))", None, ""
        if old in ("++", "--"):
            return self._step(begin, end, old, on)
        if not mutant.new:
            return begin, end + 1, "{ if (%s) {} else { " % on, " }}", None, ""
        if old in ("&&", "||"):
            left, right = self._operands(begin, end, old)
            name = "both" if old == "&&" else "either"
            return (left, right, "rtifedMutant::%s<%d>(bool(" % (name, mutant.number), "); })",
                    (begin, end), "), [&]() -> bool { return bool(")
        if old in NAMES:
            return begin, end, "", " rtifedMutant::%s<%d>() %s" % (NAMES[old], mutant.number, old), None, ""
        suffix = re.match(r"[uUlL]*", self.text[end:])[0]
        return begin, end + len(suffix), "(%s ? %s%s : " % (on, mutant.new, suffix), ")", None, ""

    def _step(self, begin, end, old, on):
        """++ or -- that is not a statement."""
        operand = re.compile(r"\*?" + OPERAND).match(self.code, end)
        if operand:
            return begin, operand.end(), "(%s ? %s : " % (on, self.text[end:operand.end()]), ")", None, ""
        operand = re.search("(?:" + OPERAND + ")$", self.code[:begin].rpartition("\n")[2])
        if not operand:
            return None
        return begin - len(operand[0]), end, "(%s ? %s : " % (on, operand[0]), ")", None, ""

    def _operands(self, begin, end, operator):
        """Where the left operand of && or || begins, and where the right one ends."""
        level, code = self.within[begin], self.code
        ends = ("||",) if operator == "||" else ("||", "&&")

        def is_limit(place, operators):
            return self.within[place] == level and (
                code[place] in ",;?" or code[place:place + 2] in operators
                or re.match(r"\s(?:[-+|&^]?=|:)\s", code[place - 1:place + 3]) is not None)

        left = begin
        while len(self.within[left - 1]) >= len(level) and not is_limit(left - 1, ("||",) if operator == "&&" else ()):
            left -= 1
        left += next((m.end() for m in reversed(list(re.finditer(r"\breturn\b|\|\||^=|^\|", code[left:begin])))
                      if self.within[left + m.start()] == level and (m[0] != "||" or operator == "&&")), 0)
        left += len(code[left:begin]) - len(code[left:begin].lstrip())
        right = end
        while not is_limit(right, ends) and not (code[right] in ")]}" and self.within[right] == level):
            right += 1
        return left, end + len(code[end:right].rstrip())

    def drop(self, number):
        self.ranges.pop(number, None)

    def write(self):
        """The text. Keeps where the ranges are in it."""
        opened, closed, replaced = {}, {}, {}
        for number, (begin, end, before, after, own, new) in self.ranges.items():
            opened.setdefault(begin, []).append((-end, number, before))
            closed.setdefault(end, []).append((-begin, -number, after))
            if own:
                replaced[own[0]] = own[1], new
        text, size, place, begins = [], 0, 0, {}
        self.places = {}

        def add(piece):
            nonlocal size
            text.append(piece)
            size += len(piece)

        for stop in sorted({*opened, *closed, *replaced, len(self.text)}):
            if stop > place:
                add(self.text[place:stop])
                place = stop
            for _, minus, after in sorted(closed.get(stop, ())):
                add(after)
                self.places[-minus] = begins[-minus], size
            for _, number, before in sorted(opened.get(stop, ())):
                begins[number] = size
                add(before)
            if stop in replaced:
                place, new = replaced[stop]
                add(new)
        self.written = "".join(text)
        return self.written

    def blamed(self, messages):
        """The mutants that a compiler's messages about the written text are about; and those of them that would not compile by
        themselves either."""
        starts = [0]
        for line in self.written.splitlines(keepends=True):
            starts.append(starts[-1] + len(line))
        blamed, hopeless, found = set(), set(), set()
        group = []

        def judge():
            numbers = {int(m[1] or m[2]) for line in group for m in MUTANT.finditer(line)} & set(self.ranges)
            if numbers and "the mutant does not compile" in group[0]:
                hopeless.update(numbers)
            for line in [] if numbers else group:
                match = PLACE.match(line)
                if match and match[1].endswith("/" + self.file):
                    at = starts[int(match[2]) - 1] + int(match[3]) - 1
                    around = [(end - begin, number) for number, (begin, end) in self.places.items() if begin <= at < end]
                    numbers |= {min(around)[1]} if around else set()
                if numbers:
                    break
            blamed.update(numbers)

        for line in messages.splitlines():
            if re.search(r": (?:fatal )?error: ", line) and group:
                judge()
                group = []
            group.append(line)
        judge()
        return blamed, hopeless
