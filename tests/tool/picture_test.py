"""Reads pictures with an XML parser and with Graphviz: each name of a model must arrive as it is, whatever characters it has. The
pictures in documents must show what the program prints now.

Usage: picture_test.py PROGRAM EXAMPLES PICTURES    PICTURES is the folder of the pictures in documents
"""

import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import xml.etree.ElementTree

program, examples, pictures = (pathlib.Path(argument).resolve() for argument in sys.argv[1:])
SVG = "{http://www.w3.org/2000/svg}"
NAMES = ["</script><img onerror=alert(1)>", "a&amp;b", "back\\slash\\n", "\\N", "\\l", "\\", "{rec|ord}<p>", "q'uote", "#35;#quot;",
         "%%{init: {}}%%", "two  blanks", "漢字", "שלום", "🚢", "-->", "]]>", "<br>", "&#60;", "&", "end", "$$x$$", "HTML<>", "[x](y)"]


def run(*arguments, status=1):
    done = subprocess.run([program, "tree", *arguments], capture_output=True)
    assert done.returncode == status, (arguments, done.stderr)
    return done.stdout.decode(), done.stderr.decode()


def without_blanks(text):
    return re.sub(r"\s", "", text)


def texts(svg):
    """Returns the texts of a picture."""
    document = xml.etree.ElementTree.fromstring(svg.encode())
    return ["".join(text.itertext()).replace("\xa0", " ") for text in document.iter(SVG + "text")]


with tempfile.TemporaryDirectory() as folder:
    file = pathlib.Path(folder) / "hostile.fed"
    file.write_text("(FED (Federation F) (FEDversion v) (objects (class ObjectRoot "
                    + "".join(f'(class "{name}" (attribute "{name}1" reliable receive)) ' for name in NAMES) + ")))")
    members = [name + "1" for name in NAMES]
    frame = ["F, version v", "Object classes", "ObjectRoot"]
    for options, expected in ((), frame + NAMES), (("--members",), frame + NAMES + members):
        assert sorted(texts(run("--format", "svg", *options, file)[0])) == sorted(expected)
        dot = run("--format", "dot", *options, file)[0]
        drawn = subprocess.run(["dot", "-Tsvg"], input=dot.encode(), capture_output=True, check=True)
        assert not drawn.stderr, drawn.stderr
        assert sorted(texts(drawn.stdout.decode())) == sorted(expected)

    # No byte of a file makes a picture that cannot be read.
    file.write_bytes(b"(FED (Federation \"" + bytes(c for c in range(1, 256) if c not in b"\"\r\n") + b"\") (FEDversion v))")
    assert "\\x01\\x02" in texts(run("--format", "svg", file)[0])[0]
    file.write_bytes(b"")
    assert texts(run("--format", "svg", file)[0]) == ["A federation without a name: no classes"]

    # Most pages show no larger diagrams of Mermaid.
    for count, members, options, warns in ((501, 0, [], True), (500, 0, [], False), (501, 0, ["--depth", "1"], False),
                                           (500, 9, [], True)):
        attributes = "".join(f"(attribute AttributeNumber{i} reliable receive)" for i in range(members))
        file.write_text("(FED (objects (class ObjectRoot" + "".join(f"(class C{i} {attributes})" for i in range(count)) + ")))")
        complaint = run("--format", "mermaid", *["--members"] * (members > 0), *options, file)[1]
        assert (f"has {count} edges and" in complaint) == warns, complaint
    assert "edges" not in run("--format", "dot", file)[1]

harbour = examples / "harbour.fed"
assert "--members" in run("--members", harbour, status=2)[1]
for text_only in "--inherited", "--classes":
    assert text_only in run("--format", "svg", text_only, harbour, status=2)[1]
assert run("--format", "mermaid", harbour, "Krane", status=1)[1].endswith('did you mean "Crane"?\n')

for name, options in ("harbour", []), ("craft", ["--members", "Craft"]):
    assert run("--format", "svg", harbour, *options, status=0)[0] == (pictures / f"{name}.svg").read_text(), \
        f"{name}.svg is out of date: scripts/pictures makes it"

with tempfile.TemporaryDirectory() as folder:
    shutil.copy(harbour, folder)
    readme = (pictures.parent.parent / "README.md").read_text()
    shell = {"cwd": folder, "shell": True, "env": {**os.environ, "PATH": f"{program.parent}:{os.environ['PATH']}"}}
    samples = re.findall(r"^\$ (.*)\n```\n\n!\[(rtifed .*?) reports[^\]]*\]\(docs/pictures/(\w+)\.svg\)", readme, re.M)
    assert [name for _, _, name in samples] == ["check", "diff"], f"README.md no longer has these pictures after samples: {samples}"
    for prepare, command, name in samples:
        subprocess.run(prepare, check=True, **shell)
        printed = f"$ {command}" + subprocess.run(command, capture_output=True, text=True, **shell).stdout
        # Lines are broken between words there, and each colour is a text of its own.
        drawn = "".join(texts((pictures / f"{name}.svg").read_text()))
        assert without_blanks(drawn) == without_blanks(printed), f"{name}.svg is out of date: scripts/pictures makes it"

benchmarks = pictures.parent.parent / "benchmarks"
with tempfile.TemporaryDirectory() as folder:
    subprocess.run([sys.executable, benchmarks / "charts.py", benchmarks / "numbers.json", folder], check=True)
    charts = {path.name: path.read_bytes() for path in pathlib.Path(folder).iterdir()}
published = {path.name: path.read_bytes() for path in pictures.glob("bench-*.svg")}
assert charts.keys() == published.keys()
for name, chart in charts.items():
    assert chart == published[name], f"{name} is out of date: benchmarks/charts.py benchmarks/numbers.json makes it"
