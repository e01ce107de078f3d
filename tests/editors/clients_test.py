"""Works on a broken example with the language clients of Neovim and Emacs, and compares what they have with session.txt.

clients_test.py ROOT CLIENT...          CLIENT is nvim or emacs; rtifed is found in PATH
clients_test.py ROOT --write CLIENT     records the session of one client as the expected one

Both clients do the same: they receive diagnostics, apply a fix, jump to a definition, rename, format, and ask for a hover.
session.txt has what they log, and what each step changes in the text.
"""

import difflib
import glob
import pathlib
import re
import subprocess
import sys
import tempfile

root = pathlib.Path(sys.argv[1]).resolve()
write = sys.argv[2] == "--write"
clients = sys.argv[2 + write :]
tests = root / "tests/editors"
recorded = tests / "session.txt"

COMMANDS = {
    "nvim": lambda folder: ["nvim", "--headless", "-u", "NONE", "--cmd", f"set rtp^={root}/editors/vim,{root}/editors/nvim",
                            "--cmd", f"let g:session = '{folder}'", "-S", tests / "nvim_client.lua"],
    # -Q leaves out the folders of Debian's packages, one of which has Eglot.
    "emacs": lambda folder: ["emacs", "-Q", "-batch", "-L", root / "editors/emacs",
                             *(part for path in glob.glob("/usr/share/emacs/site-lisp/elpa/*/") for part in ("-L", path)),
                             "-l", tests / "emacs_client.el", "--eval", f'(client-session "{folder}")'],
}


def session(client):
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        text = (root / "examples/harbour.fed").read_text()
        text = re.sub("(HullNumber .*)timestamp", r"\1time_stamp", text)
        text = text.replace("          (class Tanker\n", "     (class   Tanker\n")
        (folder / "0.fed").write_text(text)
        done = subprocess.run(list(map(str, COMMANDS[client](folder))), stdin=subprocess.DEVNULL, capture_output=True, text=True)
        log = folder / "log"
        result = log.read_text().rstrip("\n") + "\n" if log.exists() else done.stdout + done.stderr
        for step in range(1, 4):
            old, new = (folder / f"{step - 1}.fed", folder / f"{step}.fed")
            if new.exists():
                result += f"\nstep {step}:\n"
                lines = difflib.unified_diff(old.read_text().splitlines(), new.read_text().splitlines(), n=0, lineterm="")
                result += "".join(f"{line}\n" for line in lines if line[:3] not in ("---", "+++"))
        return result


failed = 0
for client in clients:
    result = session(client)
    if write:
        recorded.write_text(result)
    elif result != recorded.read_text():
        failed += 1
        print(f"FAILED: the session of {client} differs from session.txt:")
        print("\n".join(difflib.unified_diff(recorded.read_text().splitlines(), result.splitlines(), lineterm="")))
print(f"clients: {len(clients)} sessions, {failed} failed")
sys.exit(failed > 0)
