"""Runs recorded cases: shell commands, each case in a new folder, and what they print.

cases_test.py CASES PROGRAM EXAMPLES [record]

In CASES, "----" lines separate the cases, and a "====" line separates the commands from what they print on both outputs.
rtifed is PROGRAM, $EXAMPLES the folder of the examples. Stops at the first case that prints something else. With "record", what
is printed is written to CASES."""

import difflib
import os
import pathlib
import subprocess
import sys
import tempfile

# Of the caller's environment, only what measures or changes the program.
KEPT = ("LD_LIBRARY_PATH", "LLVM_PROFILE_FILE", "RTIFED_MUTANT", "RTIFED_REACHED")

cases, program, examples = (pathlib.Path(argument).resolve() for argument in sys.argv[1:4])


def run(commands):
    with tempfile.TemporaryDirectory() as work:
        os.mkdir(work + "/bin")
        os.symlink(program, work + "/bin/rtifed")
        os.mkdir(work + "/at")
        kept = {name: os.environ[name] for name in KEPT if name in os.environ}
        environment = {**kept, "PATH": work + "/bin:" + os.environ["PATH"], "EXAMPLES": str(examples), "LC_ALL": "C.UTF-8"}
        done = subprocess.run(["sh", "-c", commands], cwd=work + "/at", env=environment, stdin=subprocess.DEVNULL,
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
    return done.stdout.decode("utf-8", "backslashreplace")


def compared(case):
    """The case as recorded and as it is now."""
    commands = case.partition("====\n")[0]
    return case, commands + "====\n" + run(commands)


results = map(compared, cases.read_text().split("----\n"))
if sys.argv[4:] == ["record"]:
    cases.write_text("----\n".join(actual for _, actual in results))
else:
    for expected, actual in results:
        if actual != expected:
            sys.exit("\n".join(difflib.unified_diff(expected.splitlines(), actual.splitlines(), "expected", "actual", n=8, lineterm="")))
