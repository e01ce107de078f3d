"""Runs the program on a terminal. Usage: terminal_test.py PROGRAM EXAMPLES look|progress

What is tested of progress takes seconds, since it is shown after a second."""
import fcntl
import os
import pty
import re
import select
import signal
import struct
import subprocess
import sys
import tempfile
import termios
import time
import tty

PROGRAM, EXAMPLES, PART = sys.argv[1:]
MINIMAL = EXAMPLES + "/minimal.fed"
ERASED = "\r\033[K"
failures = 0


def run(arguments, feed=None, interrupt=None, errors_to="", columns=60, patience=20.0, environment=None):
    """Returns what the terminal gets, with progress that is drawn repeatedly once, and the exit status or the negative
    signal. `feed` is given to the pipe, or the signal sent, when progress is shown, and after `patience` seconds anyway."""
    pid, terminal = pty.fork()
    if pid == 0:
        fcntl.ioctl(1, termios.TIOCSWINSZ, struct.pack("HHHH", 24, columns, 0, 0))
        for name in ("NO_COLOR", "CLICOLOR_FORCE", "COLUMNS", "LC_ALL", "LC_CTYPE", "LANG"):
            os.environ.pop(name, None)
        os.environ.update({"TERM": "xterm", **(environment or {})})
        signal.signal(signal.SIGINT, signal.SIG_DFL)  # a shell lets programs in the background ignore it
        if errors_to:
            os.dup2(os.open(errors_to, os.O_WRONLY | os.O_CREAT), 2)
        os.execv(PROGRAM, [PROGRAM, *arguments])
    text, end, waiting = b"", time.monotonic() + patience, feed or interrupt
    while True:
        if waiting and (b"Working" in text or time.monotonic() > end):
            waiting = None
            time.sleep(0.3)  # so that it would be drawn again
            if interrupt:
                os.kill(pid, interrupt)
            if feed:
                with open("pipe", "w", encoding="utf-8") as pipe:
                    pipe.write(feed)
        try:
            if select.select([terminal], [], [], 0.05)[0]:
                text += os.read(terminal, 4096)
        except OSError:  # how Linux reports that the program has closed the terminal
            break
    os.close(terminal)
    shown = re.sub(r"(\rWorking for )\d+", r"\1N", text.decode().replace("\r\n", "\n"))
    return re.sub(r"(\rWorking[^\r]*)+", r"\1", shown), os.waitstatus_to_exitcode(os.waitpid(pid, 0)[1])


def expect(name, got, wanted):
    global failures
    if got != wanted:
        print(f"FAILED: {name}: {got}, expected {wanted}")
        failures += 1


def run_on_broken_terminal(arguments):
    """Returns what the program says if reading standard input fails after the beginning of a file, and its exit status."""
    ours, theirs = pty.openpty()
    tty.setraw(theirs)
    with open(MINIMAL, "rb") as file:
        os.write(theirs, file.read(700))
    os.close(theirs)  # reading gives these bytes, then an error
    ended = subprocess.run([PROGRAM, *arguments], stdin=ours, capture_output=True, check=False)
    os.close(ours)
    return ended.stderr.decode(), ended.returncode


def test_look():
    for command in ("check", "list", "json", "fmt", "save"):
        arguments = [command, "-"] + (["image"] if command == "save" else [])
        expect(command + " of a broken file", run_on_broken_terminal(arguments),
               ("rtifed: -: the file cannot be read: Input/output error\n", 2))
    expect("files written of a broken file", os.listdir(), [])
    expect("no image to a terminal", run(["save", MINIMAL, "-"]), (
        "rtifed: standard output is a terminal, which cannot show an image; name a file or redirect it\n", 2))
    width = max(map(len, run(["help"], columns=50)[0].split("\n")))
    expect("the width of help", width in range(45, 51), True)
    with open("a.fed", "w", encoding="utf-8") as file:
        file.write("(FED (Federation F)\t; tab\n(FEDversion v))")
    expect("colours", run(["fmt", "--diff", "a.fed"]), (
        "\033[1m--- a.fed\033[0m\n\033[1m+++ a.fed\033[0m\n\033[36m@@ -1,2 +1,4 @@\033[0m\n"
        "\033[31m-(FED (Federation F)\t; tab\033[0m\n\033[31m-(FEDversion v))\033[0m\n\\ No newline at end of file\n"
        "\033[32m+(FED\033[0m\n\033[32m+  (Federation F)  ; tab\033[0m\n\033[32m+  (FEDversion v)\033[0m\n\033[32m+)\033[0m\n", 0))
    with open("b.fed", "w", encoding="utf-8") as file:  # U+007F in each word that may be any
        file.write('(FED (Federation "F~") (FEDversion "v~") (spaces (space "S~" (dimension "D~"))) (objects (class "C~" '
                   '(attribute "a~" "t~" "o~" "S~"))) (interactions (class "I~" "t~" "o~" "S~" (parameter "p~"))))'
                   .replace("~", "\x7f"))
    plain = subprocess.run([PROGRAM, "calls", "b.fed"], capture_output=True, check=True, text=True).stdout
    expect("calls of hostile names", (run(["calls", "b.fed"])[0], plain.count("\x7f")), (plain.replace("\x7f", "\\x7f"), 14))
    for command in ["find", "b.fed", "*\x7f", "--glob"], ["fmt", "b.fed"], ["list", "c\x7f.fed"]:
        shown = run(command)[0]
        expect(f"{command} of hostile names", ("\x7f" in shown, "\\x7f" in shown), (False, True))
    for environment, colours, branches, wide in (({}, True, "|--", True), ({"LANG": "C.utf8"}, True, "\u251c", True),
                                                 ({"LC_CTYPE": "de_DE.utf-8", "NO_COLOR": "1"}, False, "\u251c", True),
                                                 ({"LC_ALL": "C", "LANG": "C.UTF-8"}, True, "|--", True),
                                                 ({"TERM": "dumb", "LANG": "C.UTF-8"}, False, "|--", True),
                                                 ({"TERM": "", "CLICOLOR_FORCE": "1"}, True, "|--", True),
                                                 ({"COLUMNS": "30x"}, True, "|--", True), ({"COLUMNS": "0"}, True, "|--", True),
                                                 ({"COLUMNS": "30"}, True, "|--", False)):
        tree = run(["tree", EXAMPLES + "/harbour.fed"], environment=environment)[0]
        expect(f"the look of a tree with {environment}", ("\033[" in tree, branches in tree, "version" in tree),
               (colours, True, wide))


def test_progress():
    os.mkfifo("pipe")
    good = open(MINIMAL, encoding="utf-8").read()
    shown = "\rWorking for N s: pipe\033[K" + ERASED
    expect("progress on a dumb terminal", run(["checksum", "pipe"], good, patience=1.5, environment={"TERM": "dumb"}),
           ("96881752  pipe\n", 0))
    # Each waits for a pipe: shown, cut to the width, erased before the output, and left out where it would disturb.
    expect("progress", run(["checksum", "pipe"], good), (shown + "96881752  pipe\n", 0))
    expect("progress before calls", run(["calls", "pipe"], good)[0].startswith(shown), True)
    expect("progress in a narrow terminal", run(["checksum", "pipe"], good, columns=15)[0].split(ERASED)[0] + ERASED,
           "\rWorking for N \033[K" + ERASED)
    expect("progress through files", run(["checksum", MINIMAL, "pipe"], good)[0].split("\n", 1)[1],
           "\rWorking for N s, file 2 of 2: pipe\033[K" + ERASED + "96881752  pipe\n")
    expect("no progress without a terminal", run(["checksum", "pipe"], good, errors_to="err", patience=1.5),
           ("96881752  pipe\n", 0))
    expect("no progress with --quiet", run(["check", "--quiet", "pipe"], good, patience=1.5), ("", 0))
    expect("no progress while a person types", run(["check", "-"], interrupt=signal.SIGTERM, patience=1.5),
           ("", -signal.SIGTERM))
    expect("an interruption", run(["check", "pipe"], interrupt=signal.SIGINT), (shown, -signal.SIGINT))
    signal.signal(signal.SIGHUP, signal.SIG_IGN)
    expect("nohup", run(["checksum", "pipe"], good, signal.SIGHUP)[1], 0)


with tempfile.TemporaryDirectory() as folder:
    os.chdir(folder)
    {"look": test_look, "progress": test_progress}[PART]()
sys.exit(failures > 0)
