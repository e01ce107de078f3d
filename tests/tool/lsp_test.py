"""Replays recorded sessions with the language server.

lsp_test.py SESSIONS PROGRAM [record]

In SESSIONS, "----" lines separate the sessions, and a "====" line separates what the client sends from what the server answers.
Of the first part, each line is a step:

  file PATH          creates a file in the folder of the session, with the lines up to the next END
  later PATH         does so once the last call is answered
  open PATH          says that the editor has opened it
  edit PATH A-B TEXT replaces a range, such as 3:4-3:9, by a JSON string
  start JSON         initializes the server; its answer is not recorded
  call METHOD JSON   a request; its id is the number of the line
  tell METHOD JSON   a notification
  raw BYTES          these bytes, a JSON string in which each character is a byte

In JSON, "@PATH" is the URI of a file, "range" and "position" may be written as in edit, and "$" alone is the parameter
textDocument of the file that was opened last. What the server sends is written in the same way. With "record", the answers are
written to SESSIONS."""

import difflib
import json
import os
import pathlib
import re
import subprocess
import sys
import tempfile

sessions, program = (pathlib.Path(argument).resolve() for argument in sys.argv[1:3])


def position(text):
    line, character = text.split(":")
    return {"line": int(line), "character": int(character)}


def expanded(value, root, current):
    """A value as the protocol has it."""
    if isinstance(value, list):
        return [expanded(each, root, current) for each in value]
    if isinstance(value, dict):
        return {key: expanded(each, root, current) for key, each in value.items()}
    if value == "$":
        return {"uri": current}
    if isinstance(value, str) and value.startswith("@"):
        return root + value[1:]
    if isinstance(value, str) and re.fullmatch(r"\d+:\d+", value):
        return position(value)
    if isinstance(value, str) and re.fullmatch(r"\d+:\d+-\d+:\d+", value):
        return dict(zip(("start", "end"), map(position, value.split("-"))))
    return value


def compact(value, root):
    """The same the other way round."""
    if isinstance(value, list):
        return [compact(each, root) for each in value]
    if isinstance(value, dict):
        value = {key.replace(root, "@"): compact(each, root) for key, each in value.items()}
        if value.keys() == {"line", "character"}:
            return f"{value['line']}:{value['character']}"
        if value.keys() == {"start", "end"}:
            return f"{value['start']}-{value['end']}"
        return value
    if isinstance(value, str) and value.endswith("rules.md", 0, value.find("#")):
        return "rules.md" + value[value.find("#"):]
    return value.replace(root, "@") if isinstance(value, str) else value


def shown(message, root):
    """A message as lines: long lists and objects with a line for each entry."""
    message = compact(message, root)
    message.pop("jsonrpc")
    head = json.dumps(message.pop("id")) if "id" in message and "method" not in message else "->"
    if "method" in message:
        message.pop("id", None)
        head += " " + message.pop("method")
    for kind in ("result", "error", "params"):
        if kind in message:
            head += " error" if kind == "error" else ""
            return head + rendered(message[kind], "  ") + "\n"
    return head + "\n"


def rendered(value, indentation):
    line = json.dumps(value, ensure_ascii=False)
    if len(line) + len(indentation) <= 110 or not isinstance(value, (list, dict)):
        return " " + line
    if isinstance(value, list) and all(isinstance(each, int) for each in value):  # tokens, five numbers each
        return "".join(f"\n{indentation}{value[i:i + 5]}" for i in range(0, len(value), 5))
    entries = value if isinstance(value, list) else value.items()
    text = ""
    for entry in entries:
        key, each = ("-", entry) if isinstance(value, list) else (entry[0] + ":", entry[1])
        text += "\n" + indentation + key + rendered(each, indentation + "  ")
    return text


def framed(message):
    body = message if isinstance(message, bytes) else json.dumps(message, ensure_ascii=False).encode()
    return b"Content-Length: %d\r\n\r\n%s" % (len(body), body)


def size_in(header):
    return int(header.split(b":")[1])


def run(steps):
    with tempfile.TemporaryDirectory() as folder:
        return Session(folder + "/").run(steps)


class Session:
    def __init__(self, folder):
        self.folder, self.root, self.uri, self.version, self.output = folder, "file://" + folder, None, 1, ""
        self.bytes, self.hidden, self.last = b"", [], None
        self.server = subprocess.Popen([program, "lsp"], stdin=subprocess.PIPE, stdout=subprocess.PIPE, cwd=folder)

    def run(self, steps):
        lines = iter(enumerate(steps.splitlines(), 1))
        for number, line in lines:
            word, _, rest = line.partition(" ")
            if word in ("file", "later"):
                if word == "later":
                    self.await_answer()
                self.create(rest, "\n".join(iter(lambda: next(lines)[1], "END")) + "\n")
            elif word and word != "#":
                self.bytes += getattr(self, word)(rest, number)
        # In one piece, as far as the pipe holds it: the server publishes diagnostics whenever nothing waits in it.
        written = os.write(self.server.stdin.fileno(), self.bytes[:65536])
        rest, _ = self.server.communicate(self.bytes[written:])
        while rest:
            header, _, rest = rest.partition(b"\r\n\r\n")
            size = size_in(header)
            self.show(rest[:size])
            rest = rest[size:]
        return self.output + f"exit status {self.server.returncode}\n"

    def await_answer(self):
        self.server.stdin.write(self.bytes)
        self.server.stdin.flush()
        self.bytes, answered = b"", None
        while answered != self.last:
            size = size_in(self.server.stdout.readline())
            self.server.stdout.readline()
            answered = self.show(self.server.stdout.read(size))

    def show(self, body):
        """Notes a message of the server. Returns the number of the call that it answers."""
        message = json.loads(body)
        if message.get("id") not in self.hidden:
            self.output += shown(message, self.root)
        return None if "method" in message else message.get("id")

    def create(self, path, text):
        os.makedirs(os.path.dirname(self.folder + path), exist_ok=True)
        pathlib.Path(self.folder + path).write_text(text, newline="")

    def open(self, path, _):
        self.uri = self.root + path
        text = pathlib.Path(self.folder + path).read_bytes().decode(errors="replace")
        document = {"uri": self.uri, "languageId": "fed", "version": 1, "text": text}
        return self.message("textDocument/didOpen", {"textDocument": document})

    def start(self, rest, number):
        self.hidden.append(number)
        return self.call("initialize " + rest, number)

    def edit(self, rest, _):
        path, place, text = rest.split(" ", 2)
        self.version += 1
        change = {"range": expanded(place, "", ""), "text": json.loads(text)}
        return self.message("textDocument/didChange",
                            {"textDocument": {"uri": self.root + path, "version": self.version}, "contentChanges": [change]})

    def call(self, rest, number):
        self.last = number
        return self.message(*self.split(rest), id=number)

    def tell(self, rest, _):
        return self.message(*self.split(rest))

    def raw(self, rest, _):
        return json.loads(rest).encode("latin-1")

    def split(self, rest):
        method, _, params = rest.partition(" ")
        return method, expanded(json.loads(params or "null"), self.root, self.uri)

    def message(self, method, params, **more):
        message = {"jsonrpc": "2.0", **more, "method": method}
        return framed(message if params is None else {**message, "params": params})


expected = sessions.read_text()
actual = "----\n".join(steps + "====\n" + run(steps)
                        for steps in (session.partition("====\n")[0] for session in expected.split("----\n")))
if sys.argv[3:] == ["record"]:
    sessions.write_text(actual)
elif actual != expected:
    sys.exit("\n".join(difflib.unified_diff(expected.splitlines(), actual.splitlines(), "expected", "actual", n=8, lineterm="")))
