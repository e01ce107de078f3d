"""Checks that Vim, Emacs, the tokenizer of VS Code and the semantic tokens of `rtifed lsp` colour FED files alike.

highlight_test.py ROOT EDITOR...    EDITOR is vim, nvim, emacs or vscode; ROOT is this repository
highlight_test.py ROOT --write EDITOR    records the colours of one editor as the expected ones

highlight.txt has each kind of word at each kind of place, with the expected colour under it: a line that begins with "|" is
text, a line that begins with ":" the letters of its words in LETTERS. The example files, which use every word of the language,
must have the colours that the language server gives them: it knows the words from the parser. So an editor that lacks a
word is noticed.
"""

import json
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


# The server has one type for transportations and orderings.
SERVER = {"keyword": "k", "class": "c", "property": "m", "parameter": "m", "namespace": "s", "variable": "s", "type": "l",
          "string": "l", "enumMember": "d", "comment": ";"}


def server_marks(file):
    """The colours of a file by the semantic tokens of `rtifed lsp`."""
    uri = file.resolve().as_uri()
    messages = [
        {"id": 1, "method": "initialize", "params": {"processId": None, "rootUri": None, "capabilities": {
            "general": {"positionEncodings": ["utf-32"]},
            "textDocument": {"semanticTokens": {"requests": {"full": True}, "tokenTypes": list(SERVER), "tokenModifiers": [],
                                                "formats": ["relative"]}}}}},
        {"method": "initialized", "params": {}},
        {"method": "textDocument/didOpen", "params": {
            "textDocument": {"uri": uri, "languageId": "fed", "version": 1, "text": file.read_text()}}},
        {"id": 2, "method": "textDocument/semanticTokens/full", "params": {"textDocument": {"uri": uri}}},
        {"id": 3, "method": "shutdown"},
        {"method": "exit"},
    ]
    bodies = [json.dumps({"jsonrpc": "2.0", **message}).encode() for message in messages]
    output = subprocess.run(["rtifed", "lsp"], input=b"".join(b"Content-Length: %d\r\n\r\n%s" % (len(body), body)
                                                             for body in bodies), stdout=subprocess.PIPE, check=True).stdout
    answers = {}
    while output:
        header, _, output = output.partition(b"\r\n\r\n")
        length = int(re.search(rb"Content-Length: (\d+)", header)[1])
        answer, output = json.loads(output[:length]), output[length:]
        answers[answer.get("id")] = answer
    types = answers[1]["result"]["capabilities"]["semanticTokensProvider"]["legend"]["tokenTypes"]
    result = [[" "] * len(line) for line in file.read_text().split("\n")]
    data, row, column = answers[2]["result"]["data"], 0, 0
    for down, right, length, kind, _ in zip(*[iter(data)] * 5):
        row, column = row + down, (0 if down else column) + right
        result[row][column : column + length] = SERVER[types[kind]] * length
    return ["".join(line).rstrip() for line in result]


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
    expected = server_marks(file)
    for editor in editors:
        compare(f"{editor}, {file.name}", lines, expected, [re.sub("[to]", "d", line) for line in marks(editor, file)])

print(f"highlight: {len(editors)} editors, {failures} failed")
sys.exit(failures > 0)
