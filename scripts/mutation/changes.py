"""Where a small change can be made in a source, and which."""

import hashlib
import re

# This relies on the format of the sources: binary operators are surrounded by blanks, the
# brackets of templates are not, and each statement begins a line or follows a brace.

TURNED = {"<": "<=", "<=": "<", ">": ">=", ">=": ">", "==": "!=", "!=": "==", "&&": "||", "||": "&&", "+": "-", "-": "+",
          "+=": "-=", "-=": "+=", "true": "false", "false": "true", "RTI_true": "RTI_false", "RTI_false": "RTI_true"}
OPERATORS = re.compile(r"(?<=[^\"] )(?:[<>=!]=|[<>]|&&|\|\||[-+]=?)(?=\s[^\"])|\b(?:RTI_)?(?:true|false)\b")
NUMBERS = re.compile(r"\b(?:0[xX][0-9A-Fa-f]+|[0-9]+)(?=[uUlL]*\b)(?!\.)")
STATEMENTS = re.compile(r"(?:[;{}]|(?:[:)]|\belse|\bdo)(?= *\n))\s+"
                        r"(?=(?:(?:\+\+|--|\*|delete |throw\b|break;|continue;|return;)"
                        r"|[A-Za-z_][\w:]*(?:<[^;(]*>\(|\(|\.|->|\[| [-+*/|&^]?= |\+\+|--)))")
BEFORE_CONDITION = re.compile(r"(?:[(\[{,;]\s*|(?:\breturn| [-+|&^]?=| [?:])\s+)$")


COMMENT_OR_STRING = re.compile(r"//[^\n]*|/\*.*?\*/|\bR\"\(.*?\)\"|\"(?:\\.|[^\"\\])*\"|(?<![0-9A-F])'(?:\\.|[^'\\])+'", re.S)


def digest(text):
    """Of the code: stays the same when comments, layout and includes change."""
    code = COMMENT_OR_STRING.sub(lambda match: match[0] if match[0][0] in "R\"'" else " ", text)
    code = re.sub(r"^ *#include .*", "", code, flags=re.M)
    return hashlib.sha256(" ".join(code.split()).encode()).hexdigest()[:12]


def blanked(text):
    """The text with comments, directives and some declarations blanked; strings become quotes."""
    def blank(match):
        return '"' * len(match[0]) if match[0][0] in "R\"'" else re.sub(r"[^\n]", " ", match[0])
    text = COMMENT_OR_STRING.sub(blank, text)
    return re.sub(r"^ *#else.*?^ *#endif|^ *#[^\n]*|\b(?:static_assert|using|friend)\b[^;]*;|\btemplate <[^>]*>", blank, text,
                  flags=re.M | re.S)


def nesting(code):
    """What encloses each position: a "(" for each parenthesis, a "{" for each block, a "[" for other braces."""
    at, stack, head = [], "", 0
    for place, char in enumerate(code):
        at.append(stack)
        if char in "([":
            stack += "("
        elif char == "{":
            before = re.sub(r"^\s*(?:(?:public|private|protected|case [^:]*|default):\s*)*", "", code[head:place].rstrip())
            is_type = re.match(r"(?:class|struct|enum|union|namespace|extern)\b", before)
            is_block = re.search(r"(?:\)|\bconst|\boverride|\bnoexcept|\belse|\bdo|\btry|\bfinal)$", before)
            stack += "{" if is_block and not is_type or not before and stack.endswith("{") else "["
        elif char in ")]}":
            stack = stack[:-1]
        if char in ";{}":
            head = place + 1
    return at


def conditions(code, within):
    """The conditions of if, while and ?:, except declarations and comparisons, which are mutated by turning the operator."""
    found = [(match.end(), within.index(within[match.end() - 1], match.end()) - 1)
             for match in re.finditer(r"\b(?:if|while) \(", code)]
    for match in re.finditer(r"\s\? ", code):
        begin = match.start()
        while within[begin] != within[match.start()] or not BEFORE_CONDITION.search(code, begin - 60, begin):
            begin -= 1
        found.append((begin, match.start()))
    return [(begin, end) for begin, end in found if " = " not in code[begin:end]
            and (not re.search(r" [=!]= ", code[begin:end]) or re.search(r" (?:&&|\|\|) ", code[begin:end]))]


def statements(code, within):
    """Statements other than declarations, blocks and return with a value, up to their semicolons."""
    begins = (match.end() for match in STATEMENTS.finditer(code))
    return [(begin, next(end for end in range(begin, len(code)) if code[end] == ";" and within[end] == within[begin]))
            for begin in begins if within[begin].endswith("{")]


class Mutant:
    """One change."""

    def __init__(self, file, text, begin, end, new, is_in_function):
        self.file, self.text, self.place, self.new, self.is_in_function = file, text, (begin, end), new, is_in_function
        self.line = text.count("\n", 0, begin) + 1
        self.number = self.index = 0  # of all, and in the file

    def mutated(self):
        begin, end = self.place
        return self.text[:begin] + self.new + self.text[end:]

    def __str__(self):
        begin, end = self.place
        first, last = self.text.rfind("\n", 0, begin) + 1, self.text.find("\n", end)
        before, after = self.text[first:last], self.text[first:begin] + self.new + self.text[end:last]
        return "#%d %s:%d: %s -> %s" % (self.number, self.file, self.line, " ".join(before.split()), " ".join(after.split()))


def mutants_of(file, text):
    code = blanked(text)
    within = nesting(code)
    changes = {place: "" for place in statements(code, within)}
    for match in re.finditer(r"\+\+|--", code):
        if not any(re.fullmatch(r"(\+\+|--)?[\w.>-]*?(\+\+|--)?", code[begin:end])
                   for begin, end in changes if begin <= match.start() < end):
            changes[match.span()] = ""
    for begin, end in conditions(code, within):
        changes[begin, end] = "!(" + text[begin:end] + ")"
    for match in OPERATORS.finditer(code):
        changes[match.span()] = TURNED[match[0]]
    for match in NUMBERS.finditer(code):
        changes[match.span()] = str(int(re.sub(r"^0(?=\d)", "0o", match[0]), 0) + 1)
    return [Mutant(file, text, *place, new, "{" in within[place[0]]) for place, new in sorted(changes.items())]
