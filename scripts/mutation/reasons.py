"""Reasons that are written at a line of code: why no test need notice a change there, or why no test reaches it.

    code; // equivalent: why                for this line
    // equivalent: why                      for the line after the comment, which may continue on further lines
    // equivalent in this function: why     for the function or block that begins after the comment

`unreached` is written like `equivalent`; it also holds for the lines after it that are indented more: the rest of the statement, or
what a condition decides. The reason ends with the comment; other text may stand before it, after a full stop
or a semicolon."""

import re

from mutation.changes import blanked, nesting

REASON = re.compile(r"//(?:.*[.;:])? *(equivalent|unreached)( in this function)?: *(\S.*)")


class Reasons:
    """The lines of a text that have a reason of the given kind."""

    def __init__(self, text, kind):
        self.used = set()
        self.of_line = {}  # the lines where the reasons of a line are written
        lines = text.splitlines()
        for number, line in enumerate(lines, 1):
            match = REASON.search(line)
            if match and match[1] == kind:
                for covered in self._covered(text, lines, number, match[2]):
                    self.of_line.setdefault(covered, set()).add(number)
                    if kind == "unreached" and not match[2]:
                        for line_below in self._indented(lines, covered):
                            self.of_line.setdefault(line_below, set()).add(number)

    @staticmethod
    def _covered(text, lines, number, is_for_function):
        """The lines for which the reason at a line is written."""
        if not is_for_function and not lines[number - 1].lstrip().startswith("//"):
            return [number]
        first = next((n for n in range(number + 1, len(lines) + 1) if not lines[n - 1].lstrip().startswith("//")), number)
        if not is_for_function:
            return [first]
        code = blanked(text)
        within = nesting(code)
        place = sum(len(line) + 1 for line in lines[:first - 1])
        outside = within[place]
        begin = next((p for p in range(place, len(code)) if within[p] != outside and within[p].endswith("{")), place)
        end = next((p for p in range(begin, len(code)) if within[p] == outside), len(code))
        return range(first, text.count("\n", 0, end) + 2)

    @staticmethod
    def _indented(lines, number):
        """The lines after a line that are indented more. Blank lines do not count: they are in nested blocks only."""
        def depth(line):
            return len(line) - len(line.lstrip())

        for below in range(number + 1, len(lines) + 1):
            if lines[below - 1].strip() and depth(lines[below - 1]) <= depth(lines[number - 1]):
                return
            yield below

    def at(self, line):
        """Whether the line has a reason, which then counts as used."""
        self.used |= self.of_line.get(line, set())
        return line in self.of_line

    def unused(self):
        return sorted(set().union(*self.of_line.values()) - self.used)
