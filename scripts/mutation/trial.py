"""Tries the mutants of one file in a folder of its own."""

import collections
import shlex
import shutil
import subprocess
import tempfile
import time

from mutation.base import BUILD, HARDENED, RECORD, ROOT, SOURCE, run, run_test
from mutation.switched import Switched

PATIENCE = 5  # times the time of the unchanged code
LONGEST = 20  # seconds besides: a mutant of a header that is compiled alone can need many sources for each test program
TOGETHER = 0.3  # seconds: faster tests of one program run in one process
SWITCH = ["-include", str(ROOT / "scripts/mutation/switch.hh"), "-Wno-invalid-constexpr", "-ferror-limit=0",
          "-ftemplate-backtrace-limit=0", "-fconstexpr-backtrace-limit=0", "-fno-caret-diagnostics", "-fno-color-diagnostics"]


class Trial:
    def __init__(self, base, folder, mutants, kills):
        self.base, self.folder, self.mutants, self.kills = base, folder, mutants, kills
        self.file = mutants[0].file
        shutil.rmtree(folder, ignore_errors=True)
        (folder / "tmp").mkdir(parents=True)
        self.reached = {mutant.number: base.tests_for(mutant) for mutant in mutants}
        self.switched = Switched(self.file, mutants[0].text,
                                 [mutant for mutant in mutants if self.reached[mutant.number][0]])
        self.functions = frozenset().union(*(functions for _, functions in self.reached.values()))
        self.share = base.shares(self.file)
        self.hopeless = set()  # numbers of mutants that do not compile
        self.libraries = {}  # by objects, and by mutant if it is compiled alone: the folder, None if they do not compile
        self.sound = set()  # folders and numbers of tests that pass together with unchanged functions
        self.unsound = set()  # numbers of tests that fail even so, because they count allocations, for example

    def attempt(self, mutant, patience):
        """The outcome. Runs the fastest tests only, as many as take `patience` seconds."""
        tests, _ = self.reached[mutant.number]
        if not tests:
            return "unreached"
        spent, is_tried, begin = 0, False, time.monotonic()
        waiting = collections.deque(self._batches(tests))
        while waiting:
            batch = waiting.popleft()
            if spent > patience or time.monotonic() - begin > LONGEST + patience:
                return "survived the first tests"
            spent += sum(test.seconds for test in batch)
            library = self._library(mutant, batch)
            if not library:
                return "does not compile"
            is_switched = mutant.number in self.switched.ranges
            passed = self._passes(batch, library, mutant.number if is_switched else 0)
            if not passed and not self._is_sound(mutant, library, batch):
                if len(batch) > 1:
                    waiting.extendleft([test] for test in reversed(batch))
                else:
                    self.unsound.add(batch[0].number)
                    print("not used for %s, since it fails without a mutant: %s" % (self.file, batch[0].name), flush=True)
                continue
            is_tried = True
            if not passed:
                for test in batch:
                    self.kills[self.file, test.number] += 1 / len(batch)
                return "timed out" if passed is None else "killed"
        return "survived" if is_tried else "cannot be tried"

    def _batches(self, tests):
        """The tests, the most promising first, those together that can share a process."""
        tests = sorted((test for test in tests if test.number not in self.unsound), key=self._rank)
        shared, sizes = {}, collections.defaultdict(lambda: 3)  # by program; small ones first, since most mutants fail soon
        for test in tests:
            if test.filter and test.seconds < TOGETHER:
                batch = shared.setdefault(test.program, [])
                batch.append(test)
                if len(batch) == 1:
                    yield batch
                elif len(batch) == sizes[test.program]:
                    del shared[test.program]
                    sizes[test.program] *= 2
            else:
                yield [test]

    def _rank(self, test):
        """Small for a fast test that reaches much of the file, or has killed others in it."""
        return (test.seconds + 0.05) / (self.share[test.number] ** 2 * (1 + 10 * self.kills[self.file, test.number]))

    def _library(self, mutant, batch):
        """The folder of a library with the mutant for the program of the tests; none if it does not compile."""
        program = batch[0].program
        while mutant.number in self.switched.ranges:
            names = self.base.objects_for(mutant, self.functions, program)
            key = *names, len(self.switched.ranges)
            if key not in self.libraries:
                self.libraries[key] = self._switched_library(names)
            if self.libraries[key]:
                return self.libraries[key]
        if mutant.number in self.hopeless:
            return None
        names = self.base.objects_for(mutant, self.reached[mutant.number][1], program)
        key = *names, mutant
        if key not in self.libraries:
            self.libraries[key] = self._compiled(names, mutant.mutated())[0]
        return self.libraries[key]

    def _switched_library(self, names):
        """None if some mutants do not compile together with the others. They are then left out."""
        library, messages = self._compiled(names, self.switched.write(), SWITCH)
        if not library:
            blamed, hopeless = self.switched.blamed(messages)
            self.hopeless |= hopeless
            for number in blamed or list(self.switched.ranges):
                self.switched.drop(number)
        return library

    def _compiled(self, names, text, flags=()):
        """Compiles objects with another text of the file. Returns the folder of the library, and the compiler's messages."""
        folder = self.folder / str(len(self.libraries))
        changed = folder / self.file
        changed.parent.mkdir(parents=True)
        changed.write_text(text)
        built = []
        for name in names:
            file, words = self.base.objects[name]
            words = shlex.split(shlex.join(words).replace(" " + " ".join(RECORD) + " ", " "))
            built.append(str(folder / (str(len(built)) + ".o")))
            words[words.index("-o") + 1] = built[-1]
            pch = words.index("-include-pch") + 1
            words[pch] = str(BUILD / "mutant.pch")
            words[words.index("-c") + 1] = str(folder / file if (folder / file).exists() else SOURCE / file)
            words[pch + 1:pch + 1] = [*HARDENED, *flags]
            words.insert(1, "-I" + str(folder))
            done = subprocess.run(words, cwd=BUILD, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
            if done.returncode != 0:
                return None, done.stdout
        # two of the objects can have the same functions: of one source compiled twice, or `main` of two tests
        run("clang++", "-fuse-ld=lld", "-shared", "-Wl,-soname,libmutant.so,--allow-multiple-definition",
            "-o", folder / "libmutant.so", *built)
        return folder, ""

    def _passes(self, batch, library, number):
        with tempfile.TemporaryDirectory(dir=self.folder / "tmp") as folder:
            return run_test(batch, {"LD_LIBRARY_PATH": str(library), "TMPDIR": folder, "RTIFED_MUTANT": str(number)},
                            0.7 + PATIENCE * sum(test.seconds for test in batch))

    def _is_sound(self, mutant, library, batch):
        """Whether the tests pass with a library of the unchanged functions: the library itself if no mutant is switched on. They
        may once fail on a busy machine."""
        if mutant.number not in self.switched.ranges:
            names = self.base.objects_for(mutant, self.reached[mutant.number][1], batch[0].program)
            key = *names, "unchanged"
            if key not in self.libraries:
                self.libraries[key] = self._compiled(names, mutant.text)[0]
            library = self.libraries[key]
        key = library, *(test.number for test in batch)
        if key not in self.sound and (self._passes(batch, library, 0) or self._passes(batch, library, 0)):
            self.sound.add(key)
        return key in self.sound
