"""The build in which mutants are tried and coverage is measured, and which test reaches which line, recorded once for each state
of the sources."""

import bisect
import collections
import concurrent.futures
import functools
import json
import math
import operator
import os
import pathlib
import pickle
import re
import shlex
import shutil
import subprocess
import tempfile
import threading
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
WORK = ROOT / "build/measured"
SOURCE, BUILD = WORK / "source", WORK / "build"
CODE = ("fed/", "infrastructure/", "tool/")
NOT_RUN = r"host$"  # builds the libraries itself
ROUNDS = "0.03"  # of random tests: the first rounds notice most mutants, and what one of hundreds reaches is hardly tested
LIMIT = 120  # seconds for a test of the unchanged code
WITHIN_LIMITS = "-Xmx512m -XX:ReservedCodeCacheSize=64m -XX:CompressedClassSpaceSize=128m"  # otherwise Java takes what there is
COMPILE = ["-std=c++17", "-O0", "-fPIC", "-w"]
# The first two record which test reaches which block, at no cost; the others count lines and branches of all tests together.
RECORD = ["-gline-tables-only", "-fsanitize-coverage=inline-8bit-counters,pc-table",
          "-mllvm", "-sanitizer-coverage-prune-blocks=0",
          "-fprofile-instr-generate", "-fcoverage-mapping"]
HARDENED = ["-D_GLIBCXX_ASSERTIONS"]  # mutants, so that reading beyond an end is noticed as in the hardened builds
# Not precompiled: headers that define variables in each source, whose names the code has too, or that few include.
NOT_PRECOMPILED = re.compile(r"<(?:CLI|gtest|iomanip|nettle|re2|sys|toml|.*\.h>|pugi)")
PROFILES = WORK / "profiles"


def run(*command, **options):
    done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, **options)
    if done.returncode != 0:
        raise SystemExit(done.stdout + "\nFAILED: " + " ".join(map(str, command)))
    return done.stdout


class Test:
    """A test of ctest. Tests of one GoogleTest program can run in one process."""

    def __init__(self, number, description):
        properties = {entry["name"]: entry["value"] for entry in description.get("properties", [])}
        self.number, self.name, self.command = number, description["name"], description["command"]
        self.expected = properties.get("PASS_REGULAR_EXPRESSION")
        self.skipped = properties.get("SKIP_RETURN_CODE")
        self.seconds = 0.0
        match = re.fullmatch(r"--gtest_filter=(.*)", self.command[1] if len(self.command) > 1 else "")
        self.filter = match[1] if match else None
        is_ours = os.access(self.command[0] + ".so", os.R_OK)
        self.program = self.command[0] if is_ours else str(BUILD / "tool/rtifed")  # scripts run the program


def modules():
    """The code of the test programs."""
    return [path for path in sorted(BUILD.rglob("*.so")) if os.access(path.with_suffix(""), os.X_OK)]


def union(sets):
    return functools.reduce(operator.or_, sets, 0)


class Base:
    def __init__(self):
        """Copies the sources, so that the work tree may change meanwhile, and builds them."""
        for file in run("git", "ls-files", cwd=ROOT).splitlines():
            new, old = ROOT / file, SOURCE / file
            if new.is_file() and not (old.is_file() and old.read_bytes() == new.read_bytes()):
                old.parent.mkdir(parents=True, exist_ok=True)
                shutil.copy(new, old)
        BUILD.mkdir(parents=True, exist_ok=True)
        self._precompile()
        if not (BUILD / "build.ninja").exists():
            run("cmake", "-S", SOURCE, "-B", BUILD, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=None", "-DCMAKE_CXX_COMPILER=clang++",
                "-DCMAKE_CXX_FLAGS=" + " ".join(["-O0", *RECORD]), "-DBUILD_SHARED_LIBS=OFF",
                "-DCMAKE_EXPORT_COMPILE_COMMANDS=ON", "-DCMAKE_GTEST_DISCOVER_TESTS_DISCOVERY_MODE=PRE_TEST",
                f"-DCMAKE_PROJECT_RtiFed_INCLUDE={ROOT}/scripts/mutation/rules.cmake")
        run("ninja", "-C", BUILD, "-j2", env={**os.environ, "LLVM_PROFILE_FILE": "/dev/null"})
        self.objects = {}  # by source: object files and their commands
        for entry in json.loads((BUILD / "compile_commands.json").read_text()):
            file = os.path.relpath(entry["file"], SOURCE)
            words = shlex.split(entry["command"])
            self.objects[words[words.index("-o") + 1]] = file, words
        self._record()

    def _precompile(self):
        """Precompiles the system's headers, once for the build and once for mutants, which are not recorded."""
        lines = set()
        for file in SOURCE.rglob("*.[ch][ch]"):
            lines.update(line for line in re.findall(r"^#include <.*>", file.read_text(), re.M) if not NOT_PRECOMPILED.search(line))
        header = BUILD / "precompiled.hh"
        text = "\n".join(["// " + " ".join([*COMPILE, *RECORD, *HARDENED]), *sorted(lines)]) + "\n"  # built anew with other flags
        if header.exists() and header.read_text() == text and (BUILD / "mutant.pch").exists():
            return
        header.write_text(text)
        (BUILD / "empty.cc").write_text("")
        for name, flags in ("system.pch", RECORD), ("mutant.pch", HARDENED):
            run("clang++", *COMPILE, *flags, "-fpch-instantiate-templates", "-x", "c++-header", header, "-o", BUILD / name)
        for name, source in ("reached", ROOT / "scripts/mutation/reached.cc"), ("mutant", BUILD / "empty.cc"):
            run("clang++", "-std=c++17", "-O1", "-fPIC", "-shared", f"-Wl,-soname,lib{name}.so",
                "-o", BUILD / f"lib{name}.so", source)

    def _record(self):
        """Runs each test alone, and records what it reaches; once for each build."""
        stamp = [(str(path), path.stat().st_mtime_ns) for path in sorted(BUILD.rglob("*.so"))]
        kept = WORK / "reached.pickle"
        if kept.exists():
            kept_stamp, self.tests, self.lines, self.symbols, self.loadable = pickle.loads(kept.read_bytes())
            if kept_stamp == stamp:
                return
        descriptions = json.loads(run("ctest", "--show-only=json-v1", cwd=BUILD))["tests"]
        self.tests = [Test(number, description) for number, description in enumerate(descriptions)]
        shutil.rmtree(PROFILES, ignore_errors=True)
        reached = {}  # by module and offset: the tests as bits
        failed = []

        def record(test):
            with tempfile.TemporaryDirectory() as folder:
                begin = time.monotonic()
                is_passed = run_test([test], {"RTIFED_REACHED": folder, "TMPDIR": folder,
                                             "LLVM_PROFILE_FILE": f"{PROFILES}/%4m.profraw"}, LIMIT)
                test.seconds = time.monotonic() - begin
                places = set(places_in(folder))
            if not is_passed:
                failed.append(test)
                return
            with lock:
                for place in places:
                    reached[place] = reached.get(place, 0) | 1 << test.number

        lock = threading.Lock()
        with concurrent.futures.ThreadPoolExecutor(2) as pool:
            list(pool.map(record, (test for test in self.tests if not re.match(NOT_RUN, test.name))))
        print("%d tests recorded; not used, since they fail in this build: %s"
              % (len(self.tests), ", ".join(test.name for test in failed) or "none"), flush=True)
        self._locate(reached)
        kept.write_bytes(pickle.dumps((stamp, self.tests, self.lines, self.symbols, self.loadable)))

    def _locate(self, reached):
        """By file and line: the tests that reach it, and the functions there. By function: the object files that define it."""
        self.lines, self.symbols = collections.defaultdict(dict), collections.defaultdict(list)
        places_of = collections.defaultdict(set)
        for program in modules():
            with tempfile.TemporaryDirectory() as folder:
                subprocess.run([program.with_suffix(""), "--help"], cwd=folder, stdin=subprocess.DEVNULL,
                               stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                               env={**os.environ, "RTIFED_PLACES": folder, "LLVM_PROFILE_FILE": "/dev/null"})
                for module, place in places_in(folder):
                    places_of[module].add(place)
        for module, places in places_of.items():
            places = sorted(places)
            functions = run("llvm-symbolizer", "--obj=" + module, "--functions=linkage", "--no-demangle", "--no-inlines",
                            "--output-style=GNU", input="".join("0x%x\n" % place for place in places)).splitlines()[::2]
            for address, file, line in lines_of(module):
                at = bisect.bisect_right(places, address) - 1
                tests_here = reached.get((module, places[at]), 0) if at >= 0 else 0
                tests, functions_here = self.lines[file].get(line, (0, frozenset()))
                self.lines[file][line] = tests | tests_here, functions_here | ({functions[at]} if tests_here else set())
        self._read_symbols({function for lines in self.lines.values() for _, here in lines.values() for function in here})

    def _read_symbols(self, wanted):
        """By function that is wanted: the object files that define it, and by object file the programs that can load it: those
        that have all that it needs, or take it from the system."""
        needed, defined = {}, set()
        for name in self.objects:
            needed[name] = set()
            for line in run("nm", "-P", BUILD / name).splitlines():
                symbol, kind = line.split()[:2]
                if kind == "U":
                    needed[name].add(symbol)
                else:
                    defined.add(symbol)
                    if kind in "tTwW" and symbol in wanted:
                        self.symbols[symbol].append(name)
        self.loadable = collections.defaultdict(set)
        for module in modules():
            missing = defined - {line.split()[0].partition("@")[0] for line in run("nm", "-D", "-P", module).splitlines()}
            for name in self.objects:
                if not needed[name] & missing:
                    self.loadable[name].add(str(module.with_suffix("")))

    def tests_for(self, mutant):
        """The tests that reach a mutant, and the functions it is in: those of the line's blocks, or else of the block before and
        all others of its functions, since the block before may be one that a condition skips. If no test is known to reach
        these, or outside of functions, all tests that reach the file, or its users: some lines have only blocks for exceptions,
        and of some functions the compiler leaves no block with a line."""
        lines = self.lines.get(mutant.file, {})
        tests, functions = 0, frozenset()
        if mutant.is_in_function or mutant.line in lines:  # the initial value of a member is in the constructors
            numbers = sorted(lines)
            at = bisect.bisect_right(numbers, mutant.line)
            if at > 0:
                tests, functions = lines[numbers[at - 1]]
            if mutant.line not in lines:
                tests |= union(of_line for of_line, its_functions in lines.values() if its_functions & functions)
        if not tests:
            files = {self.objects[name][0] for name in self.users_of(mutant.file)} | {mutant.file}
            tests = union(of_line for file in files for of_line, _ in self.lines.get(file, {}).values())
        return [test for test in self.tests if tests >> test.number & 1], functions

    def shares(self, file):
        """By test: how much of a file it reaches, as a share of what the one that reaches most does."""
        counts = collections.Counter()
        for tests, _ in self.lines.get(file, {}).values():
            for test in self.tests:
                counts[test.number] += tests >> test.number & 1
        most = max(counts.values(), default=0)
        return collections.defaultdict(lambda: 1, {number: (count or 0.1) / most for number, count in counts.items() if most})

    def users_of(self, file):
        """The object files whose sources include a header, or the source's own, those of the tests last."""
        if not hasattr(self, "users"):
            self.users = collections.defaultdict(list)
            name = None
            for line in run("ninja", "-C", BUILD, "-t", "deps").splitlines():
                match = re.match(r"(\S+): #deps", line)
                name = match[1] if match else name
                if not match and name in self.objects and line.strip():
                    self.users[os.path.relpath(BUILD / line.strip(), SOURCE)].append(name)
        return sorted(self.users[file], key=lambda name: (self.objects[name][0].startswith("tests/"), name))

    def objects_for(self, mutant, functions, program):
        """The fewest object files, roughly, that a program can load and that define all the functions of a header's mutant; of a
        source its own."""
        if mutant.file.endswith(".cc"):
            return [name for name in self.users_of(mutant.file) if self.objects[name][0] == mutant.file][:1]
        candidates = {function: [name for name in self.symbols.get(function, ()) if program in self.loadable[name]]
                      for function in functions}
        chosen, missing = [], {function for function in functions if candidates[function]}
        while missing:
            counts = collections.Counter(name for function in missing for name in candidates[function])
            best = max(counts, key=lambda name: (counts[name], -os.path.getsize(BUILD / name), name))
            chosen.append(best)
            missing = {function for function in missing if best not in candidates[function]}
        return chosen or [name for name in self.users_of(mutant.file) if program in self.loadable[name]]


def lines_of(module):
    """The addresses of the module at which the code of a line begins, with the file and the line. The line of an address alone does
    not say enough: a block has the code of several lines, and the line of a condition that of several blocks."""
    folders, files, index = {}, {}, None
    for entry in run("llvm-dwarfdump", "--debug-line", module).splitlines():
        row = re.match(r"0x([0-9a-f]+) +(\d+) +\d+ +(\d+) ", entry)
        if row:
            address, line, file = int(row[1], 16), int(row[2]), files[int(row[3])]
            if address and line and file.startswith(CODE) and "end_sequence" not in entry:  # what the linker left out is at 0
                yield address, file, line
            continue
        if entry.startswith("include_directories["):
            index, folder = re.match(r"include_directories\[ *(\d+)\] = \"(.*)\"", entry).groups()
            folders[int(index)] = folder
        elif entry.startswith("file_names["):
            index = int(re.search(r"\d+", entry)[0])
        elif entry.lstrip().startswith("name: "):
            name = entry.partition('"')[2][:-1]
        elif entry.lstrip().startswith("dir_index: "):
            files[index] = os.path.relpath(os.path.join(folders[int(entry.split()[1])], name), SOURCE)


def places_in(folder):
    """The modules and offsets that processes have written into a folder."""
    for path in pathlib.Path(folder).iterdir():
        if path.name.isdigit() and path.is_file():
            module = None
            for line in path.read_text().splitlines():
                if line.startswith("@"):
                    module = line[1:]
                else:
                    yield module, int(line, 16)


def run_test(tests, environment, seconds):
    """Runs one test, or several of one GoogleTest program. Returns whether they passed; None if they took too long."""
    command = list(tests[0].command)
    if tests[0].filter:
        command[1:] = ["--gtest_filter=" + ":".join(test.filter for test in tests), "--gtest_fail_fast", "--gtest_brief=1"]
    # the signals that nohup has ignored end a test as on a terminal
    limits = f'ulimit -v {4 << 20}; ulimit -t {math.ceil(seconds)}; ulimit -c 0; exec env --default-signal "$@"'
    environment = {**os.environ, "LLVM_PROFILE_FILE": "/dev/null", "JAVA_TOOL_OPTIONS": WITHIN_LIMITS,
                   "RTIFED_ROUNDS": ROUNDS, **environment, "TEST_TMPDIR": environment["TMPDIR"] + "/"}
    with tempfile.TemporaryFile() as output:
        process = subprocess.Popen(["sh", "-c", limits, "sh", *command], stdin=subprocess.DEVNULL, stdout=output,
                                   stderr=subprocess.STDOUT, cwd=environment["TMPDIR"], env=environment, start_new_session=True)
        try:
            status = process.wait(1 + 1.5 * seconds)  # wall clock: it may wait for ever; the machine may be busy
        except subprocess.TimeoutExpired:
            status = None
        try:
            os.killpg(process.pid, 9)
        except ProcessLookupError:
            pass
        process.wait()
        if status in (None, -24, -9):  # SIGXCPU
            return None
        if tests[0].expected:
            output.seek(0)
            return bool(re.search(tests[0].expected[0] if isinstance(tests[0].expected, list) else tests[0].expected,
                                  output.read().decode(errors="replace"), re.M | re.S))
        return status == 0 or tests[0].skipped is not None and status == int(tests[0].skipped)
