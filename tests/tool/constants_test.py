"""Compiles and imports what `rtifed constants` writes of models with all kinds of names, and compares it with the model.

Usage: constants_test.py LANGUAGE PROGRAM EXAMPLES [COMPILER...]. If there is no compiler of the language, that is said, and the
status is 77.
"""

import json
import pathlib
import runpy
import shutil
import subprocess
import sys
import tempfile
import types
import warnings

language, program, examples, *compilers = sys.argv[1:]
WORDS = """
    abstract alignas and as asm assert async auto await bool boolean byte char8_t class co_await compl concept const consteval
    constexpr constinit decltype def default del double elif emit enum errno except export extends False final finally from
    function global goto if implements import in instanceof interface int is lambda linux long main min max namespace native new
    None nonlocal not NULL Object operator or override package pass permits private public raise record register requires
    return sealed self short signed static std strictfp String sun super switch synchronized System this throws transient True
    try type typename union unix unsigned using var virtual void volatile wait while with xor yield java handles spaces digits
    digit federation fingerprint holdsFor holds_for className classHandle spaceName _ __init__ __x _Y 3D a.b a-b EOF stdin
    typeof CHAR_BIT RAND_MAX BYTE_ORDER
""".split()
ODD = ["a b", "é", "ü", "\\", "x\\", "\\u0041", "??/", "??=", "%s {} $x", "//", "/*", "*/", "🚀", "'", " ", "", "#", "@"]
COMMENTS = ["\\", "x \\", "??/", "*/", "\\u12", '"""', "\t<b>&amp; @see", "'''", "\\N{x}", "/* x", "é", "{@code"]


def odd_model():
    """Returns a FED text with these names and comments, and with bytes that are not UTF-8."""
    names = [f'"{name}"' for name in WORDS + ODD]
    classes = [name for name in names if "." not in name]
    objects = [f"(class {name} (attribute {names[i]} reliable receive) (class {name}) (class a)) ; {COMMENTS[i % 12]}"
               for i, name in enumerate(classes)]
    attributes = [f"(attribute {name} reliable receive) ; {COMMENTS[i % 12]}" for i, name in enumerate(names)]
    spaces = [f"(space {name} (dimension {name}) (dimension same) (dimension same))" for name in names]
    text = (f'(FED (Federation "class") (FEDversion v)(spaces {" ".join(spaces)})(objects (class ObjectRoot (class Names\n'
            + "\n".join(attributes) + "\n)\n" + "\n".join(objects) + "\n))(interactions (class InteractionRoot reliable receive "
            + " ".join(f"(class {name} reliable receive (parameter {name}))" for name in classes) + ")))")
    return text.encode().replace(b'"%s {} $x"', b'"\xff\xfe\x01 %s"')


def run(*command, **options):
    return subprocess.run(command, check=True, capture_output=True, **options).stdout


def write(model, output, *options):
    run(program, "constants", model, "--language", language, "--handles", "-o", output, *options)


def check_cpp(model, folder, digits):
    write(model, folder / "model.hh", "--scope", "Some.Model")
    (folder / "main.cc").write_text("""
        #include <climits>
        #include <cstdlib>
        #include <ctime>
        #include "model.hh"
        #include "model.hh"
        """ + f"""
        int main() {{ return Some::Model::holdsFor("{digits.upper()}") && !Some::Model::holdsFor("{digits}0")
            && !Some::Model::holdsFor("{digits[:-1]}g") && Some::Model::handles::ObjectRoot::classHandle > 0 ? 0 : 1; }}""")
    for compiler in compilers:
        for standard in ("c++11", "c++14", "c++17", "c++20", "gnu++17"):
            run(compiler, f"-std={standard}", "-Wall", "-Wextra", "-Wpedantic", "-Wconversion", "-Wshadow", "-Werror",
                "-o", folder / "main", folder / "main.cc")
            run(folder / "main")


def check_beside_c_library(folder):
    """The scope that a federation gives has no name that these headers declare beside it."""
    names = "main fopen strlen tolower strtol getpid hypot timezone environ std posix time j0 FILE DIR class 3d".split()
    includes = "".join(f"#include <{header}>\n" for header in "dirent.h math.h search.h stdio.h stdlib.h string.h time.h unistd.h"
                       " cmath cstdlib ctime string".split())
    for name in names:
        run(program, "new", name, "-o", folder / f"{name}.fed")
        run(program, "constants", folder / f"{name}.fed", "--language", "c++", "-o", folder / f"{name}.hh")
        includes += f'#include "{name}.hh"\n'
    (folder / "beside.cc").write_text(includes)
    for compiler in compilers:
        run(compiler, "-std=gnu++17", "-Wall", "-Wextra", "-Wshadow", "-Werror", "-fsyntax-only", folder / "beside.cc")


def check_java(model, folder, digits):
    write(model, folder / "Model.java", "--scope", "some.Model")
    (folder / "Main.java").write_text(f"""public final class Main {{ public static void main(String[] unused) {{
        if (!some.Model.holdsFor("{digits.upper()}") || some.Model.holdsFor("{digits}0") || some.Model.holdsFor(null)
            || some.Model.handles.ObjectRoot.classHandle < 1) throw new AssertionError(); }} }}""")
    run(compilers[0], "-encoding", "US-ASCII", "-Xlint:all", "-Werror", "-d", folder, folder / "Model.java",
        folder / "Main.java")
    run("java", "-cp", folder, "Main")


def check_python(model, folder, digits):
    """All names and handles of the model are in the module, in its order."""
    output = folder / "model.py"
    write(model, output)
    warnings.simplefilter("error")
    module = types.SimpleNamespace(**runpy.run_path(output))
    assert module.holds_for(digits.upper()) and not module.holds_for(digits[:-1])
    found = []

    def walk(scope, handles):
        own = {name: value for name, value in vars(scope).items() if name[:2] != "__" and not isinstance(value, type)}
        numbers = [value for name, value in vars(handles).items() if name[:2] != "__" and not isinstance(value, type)]
        found.append(sorted(zip(numbers, own.values())))
        for name, value in vars(scope).items():
            if isinstance(value, type):
                walk(value, getattr(handles, name))

    for name, scope in vars(module).items():
        if isinstance(scope, type) and name != "handles":
            walk(scope, getattr(module.handles, name))
    data = json.loads(run(program, "json", model))
    expected = [[]] + [sorted([(space["handle"], space["name"])] + [(d["handle"], d["name"]) for d in space["dimensions"]])
                       for space in data["spaces"]]
    for classes, members in (("objectClasses", "attributes"), ("interactionClasses", "parameters")):
        available = {None: []}
        for each in data[classes]:  # each after its superclass
            available[each["name"]] = available[each["parent"]] + [(m["handle"], m["name"]) for m in each[members]]
            expected.append(sorted([(each["handle"], each["name"])] + available[each["name"]]))
    # JSON has a replacement character for each byte that is not UTF-8.
    found = [[(number, name.encode("utf-8", "surrogateescape").decode("utf-8", "replace")) for number, name in scope]
             for scope in found]
    assert sorted(found) == sorted(expected), [pair for pair in zip(sorted(found), sorted(expected)) if pair[0] != pair[1]][:1]


compilers = [compiler for compiler in compilers if shutil.which(compiler)]
if language != "python" and not compilers:
    print(f"SKIPPED: there is no compiler of {language}")
    sys.exit(77)
with tempfile.TemporaryDirectory() as name:
    folder = pathlib.Path(name)
    if language == "c++":
        check_beside_c_library(folder)
    odd = folder / "odd.fed"
    odd.write_bytes(odd_model())
    run(program, "fix", "--mom", "--write", odd)
    for model in (odd, *sorted(pathlib.Path(examples).glob("*.fed"))):
        try:
            digits = run(program, "checksum", "--sha256", model, text=True)[:64]
            {"c++": check_cpp, "java": check_java, "python": check_python}[language](model, folder, digits)
        except subprocess.CalledProcessError as failed:
            sys.exit(f"FAILED: {model}: {failed}\n{failed.stdout}\n{failed.stderr}")
