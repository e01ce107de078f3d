"""Checks that Vim, Emacs and the tokenizer of VS Code colour FED files alike.

highlight_test.py ROOT EDITOR...    EDITOR is vim, nvim, emacs or vscode; ROOT is this repository
highlight_test.py ROOT --write EDITOR    records the colours of one editor as the expected ones

highlight.txt has each kind of word at each kind of place, with the expected colour under it: a line that begins with "|" is
text, a line that begins with ":" the letters of its words in LETTERS. Every colour of the example files must also be the same
in all editors, and as these files load, each word after a parenthesis must be a keyword. So a keyword of the parser that an
editor lacks is noticed when an example uses it.
"""

import pathlib
import re
import subprocess
import sys
import tempfile

root = pathlib.Path(sys.argv[1]).resolve()
write = sys.argv[2] == "--write"
editors = sys.argv[2 + write :]
tests = root / "tests/editors"
recorded = tests / "highlight.txt"
work = pathlib.Path(tempfile.mkdtemp())

LETTERS = {
    "k": "fedKeyword font-lock-keyword-face keyword.other.fed",
    "c": "fedClass font-lock-type-face entity.name.type.class.fed",
    "m": "fedMember font-lock-variable-name-face variable.other.property.fed variable.parameter.fed",
    "s": "fedSpace font-lock-function-name-face entity.name.namespace.space.fed entity.name.namespace.dimension.fed",
    "l": "fedLabel font-lock-string-face string.other.label.fed",
    "t": "fedTransportation font-lock-constant-face constant.language.transportation.fed",
    "o": "fedOrdering font-lock-builtin-face support.constant.ordering.fed",
    ";": "fedComment fedTodo font-lock-comment-face font-lock-comment-delimiter-face comment.line.semicolon.fed",
}
letter_of = {name: letter for letter, names in LETTERS.items() for name in names.split()}


def vim_command(program, file, output):
    return [program, *(["--headless"] if program == "nvim" else ["-N"]), "-es", "-u", "NONE",
            "--cmd", f"set rtp^={root}/editors/vim", "-c", "filetype plugin indent on | syntax on",
            "-S", tests / "vim_highlight.vim", "-c", f"edit {file}", "-c", f"call Dump('{output}')", "-c", "qa!"]


def command(editor, file, output):
    if editor in ("vim", "nvim"):
        return vim_command(editor, file, output)
    if editor == "emacs":
        return ["emacs", "-Q", "-batch", "-L", root / "editors/emacs", "-l", tests / "emacs_highlight.el",
                "--eval", f'(dump-highlight "{file}" "{output}")']
    return ["node", root / "editors/vscode/test/highlight.mjs", file, output]


def marks(editor, file):
    """The colours of a file as one line of letters for each line of the text."""
    output = work / f"{file.name}.{editor}"
    subprocess.run(list(map(str, command(editor, file, output))), check=True, stdin=subprocess.DEVNULL)
    lines = file.read_text().split("\n")
    result = [[" "] * len(line) for line in lines]
    for part in output.read_text().splitlines():
        number, first, end, name = part.split(":", 3)
        line, first, end = lines[int(number) - 1], int(first), int(end)
        if editor in ("vim", "nvim"):  # counts bytes
            first, end = (len(line.encode()[:n].decode(errors="ignore")) for n in (first, end))
        for column in range(first, end):
            result[int(number) - 1][column] = letter_of.get(name, " ")
    return ["".join(line).rstrip() for line in result]


def picture(lines, letters):
    return "".join(f"|{line}\n" + (f":{mark}\n" if mark else "") for line, mark in zip(lines, letters))


words = work / "words.fed"
text = [line[1:] for line in recorded.read_text().splitlines() if line.startswith("|")]
words.write_text("\n".join(text))
if write:
    recorded.write_text(picture(text, marks(editors[0], words)))
    sys.exit()

failures = 0


def compare(what, lines, expected, actual):
    global failures
    for number, (line, want, got) in enumerate(zip(lines, expected, actual), 1):
        if want != got:
            failures += 1
            print(f"FAILED: {what}, line {number}\n text     {line}\n expected {want}\n actual   {got}")


expected = [lines[1][1:] if lines[1].startswith(":") else ""
            for lines in zip(*[recorded.read_text().splitlines()[i:] + [""] for i in (0, 1)]) if lines[0].startswith("|")]
for editor in editors:
    compare(f"{editor}, highlight.txt", text, expected, marks(editor, words))

for example in sorted((root / "examples").glob("*.fed")):
    # Editors do not agree about a carriage return alone.
    lines = re.split("\r\n|\r|\n", example.read_bytes().decode("utf-8-sig"))
    file = work / example.name
    file.write_text("\n".join(lines))
    first = marks(editors[0], file)
    for editor in editors[1:]:
        compare(f"{editor} and {editors[0]}, {file.name}", lines, first, marks(editor, file))
    code = re.sub(r'"[^"\n]*"|;.*', "", "\n".join(lines))
    clauses, keywords = code.count("("), sum(len(re.findall("k+", line)) for line in first)
    if clauses != keywords:
        failures += 1
        print(f"FAILED: {file.name} has {clauses} clauses but {keywords} words that are coloured as keywords")

print(f"highlight: {len(editors)} editors, {failures} failed")
sys.exit(failures > 0)
