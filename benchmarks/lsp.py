#!/usr/bin/env python3
"""Measures how long an editor waits for diagnostics after a keystroke.

lsp.py PROGRAM [KEYSTROKES]

For federations of several sizes, types an attribute into the middle of the text, with mistakes that are corrected, one key at a
time: each key is an edit, and the time is that until the diagnostics of the text with this edit arrive. Beside each key, the same
text is checked by PROGRAM check, so that both ran under the same conditions. Prints the medians, their ratio, and the goals."""

import json
import pathlib
import statistics
import subprocess
import sys
import tempfile
import time

GOALS = {500: 10, 10_000: 50, 100_000: 500}  # milliseconds, by declarations
KEYS = "(attrb\b\bribute Heigth\b\bht reliabel\b\ble timestamp Harbour\b\b\b\b\b\b\bCells)\n"  # \b removes the key before

program, count = sys.argv[1], int(sys.argv[2]) if len(sys.argv) > 2 else 40


def federation(size):
    """A federation that loads, with this number of declarations besides the Management Object Model; and a line in its middle."""
    minimal = (pathlib.Path(__file__).parent.parent / "examples/minimal.fed").read_text()
    minimal = minimal.replace("(spaces\n", "(spaces\n    (space Cells (dimension X))\n", 1)
    lines = []
    for number in range(size // 10):
        lines.append(f"      (class Class{number:05}\n")
        lines += [f"        (attribute Attribute{number:05}{member} best_effort receive Cells)\n" for member in range(9)]
        lines.append("      )\n")
    middle = len(lines) // 22 * 11 + 1
    begin = minimal.index("(class ObjectRoot") + len("(class ObjectRoot")
    head = minimal[:begin] + "\n"
    return head + "".join(lines) + minimal[begin:], head.count("\n") + middle


class Server:
    def __init__(self):
        self.process = subprocess.Popen([program, "lsp"], stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        self.send("initialize", {"capabilities": {}}, id=1)
        self.receive()

    def send(self, method, params, **more):
        body = json.dumps({"jsonrpc": "2.0", "method": method, "params": params, **more}).encode()
        self.process.stdin.write(b"Content-Length: %d\r\n\r\n%s" % (len(body), body))
        self.process.stdin.flush()

    def receive(self):
        size = int(self.process.stdout.readline().split(b":")[1])
        self.process.stdout.readline()
        return json.loads(self.process.stdout.read(size))

    def diagnostics(self, version):
        while True:
            message = self.receive()
            if message.get("method") == "textDocument/publishDiagnostics" and message["params"]["version"] == version:
                return message["params"]["diagnostics"]


def measure(size, folder):
    text, line = federation(size)
    uri, file = f"file://{folder}/a.fed", pathlib.Path(folder, "a.fed")
    server = Server()
    server.send("textDocument/didOpen", {"textDocument": {"uri": uri, "languageId": "fed", "version": 0, "text": text}})
    if server.diagnostics(0):
        raise SystemExit("the generated text is not free of mistakes")
    lines, typed, keys, checks = text.splitlines(keepends=True), "", [], []
    for version in range(1, count + 1):
        key = KEYS[(version - 1) % len(KEYS)]
        end = {"line": line + typed.count("\n"), "character": len(typed) - typed.rfind("\n") - 1}
        begin = {**end, "character": end["character"] - 1} if key == "\b" else end
        typed = typed[:-1] if key == "\b" else typed + key
        change = {"range": {"start": begin, "end": end}, "text": "" if key == "\b" else key}
        start = time.perf_counter()
        server.send("textDocument/didChange", {"textDocument": {"uri": uri, "version": version}, "contentChanges": [change]})
        server.diagnostics(version)
        keys.append(time.perf_counter() - start)
        file.write_text("".join(lines[:line]) + typed + "".join(lines[line:]))
        start = time.perf_counter()
        subprocess.run([program, "check", "--quiet", file], check=False)
        checks.append(time.perf_counter() - start)
    server.process.stdin.close()
    server.process.wait()
    return statistics.median(keys) * 1000, statistics.median(checks) * 1000


print("| declarations | keystroke to diagnostics | check | ratio | goal | |\n|---|---|---|---|---|---|")
with tempfile.TemporaryDirectory() as work:
    for declarations, goal in GOALS.items():
        key, check = measure(declarations, work)
        print(f"| {declarations} | {key:.1f} ms | {check:.1f} ms | {key / check:.2f} | {goal} ms | "
              f"{'met' if key <= goal else 'missed'} |", flush=True)
