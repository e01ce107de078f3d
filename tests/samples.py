"""Uses the code samples of a Markdown document in tests.

samples.py program DOCUMENT                    prints the C++ samples, in order; together they are one program
samples.py copies DOCUMENT FOLDER              fails unless each C++ and CMake sample is an excerpt of a file in FOLDER
samples.py headers DOCUMENT FOLDER FED          fails unless the document's table of headers lists the headers in FOLDER, and
                                               each name in it is declared there and used in the folder FED
samples.py session DOCUMENT PROGRAM EXAMPLES   runs the commands of the console samples and compares what they print
"""

import difflib
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile


def samples(document, languages):
    text = pathlib.Path(document).read_text()
    found = [code for language, code in re.findall(r"^```(\w+)\n(.*?)^```$", text, re.M | re.S) if language in languages]
    return found or sys.exit(f"{document} has no {languages[0]} samples")


def program(document):
    print("\n".join(samples(document, ["cpp"])), end="")


def copies(document, folder):
    sources = [path.read_text() for path in pathlib.Path(folder).rglob("*") if path.suffix in (".cc", ".hh", ".txt")]
    missing = [code for code in samples(document, ["cpp", "cmake"]) if not any(code in source for source in sources)]
    if missing:
        sys.exit("not in " + folder + ":\n" + "\n".join(missing))


def headers(document, folder, fed):
    table = re.search(r"^\| header \|.*?\n\n", pathlib.Path(document).read_text(), re.M | re.S).group()
    uses = "".join(path.read_text() for path in pathlib.Path(fed).rglob("*.??"))
    listed, wrong = set(), []
    for header, names in re.findall(r"^\| (?:`(\w+\.hh)`)? *\| (.*?) \|", table, re.M):
        if header:
            listed.add(header)
            declared = (pathlib.Path(folder) / header).read_text()
        for name in re.findall(r"\w+", " ".join(re.findall(r"`(.*?)`", names))):
            if not re.search(rf"\b{name}\b", declared):
                wrong.append(f"{name} is not declared in {header}")
            if not re.search(rf"\b{name}\b", uses):
                wrong.append(f"{name} is not used in {fed}")
    wrong += [f"{path.name} is not listed" for path in pathlib.Path(folder).glob("*.hh") if path.name not in listed]
    if wrong:
        sys.exit("\n".join(wrong))


def session(document, rtifed, examples):
    shown = "".join(samples(document, ["console"]))
    printed = ""
    with tempfile.TemporaryDirectory() as work:
        os.mkdir(work + "/bin")
        os.symlink(rtifed, work + "/bin/rtifed")
        shutil.copytree(examples, work + "/examples")
        environment = {**os.environ, "PATH": work + "/bin:" + os.environ["PATH"]}
        for command in re.findall(r"^\$ (.*)", shown, re.M):
            run = subprocess.run(command, shell=True, cwd=work + "/examples", env=environment, text=True,
                                 stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
            printed += "$ " + command + "\n" + run.stdout
    if shown != printed:
        sys.exit("\n".join(difflib.unified_diff(shown.splitlines(), printed.splitlines(), document, "printed", lineterm="")))


{"program": program, "copies": copies, "headers": headers, "session": session}[sys.argv[1]](*sys.argv[2:])
