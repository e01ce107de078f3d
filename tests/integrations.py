"""Runs the pre-commit hook, the GitHub action and the GitLab job as their hosts do, and the samples of the document about them.

integrations.py ROOT PROGRAM    ROOT is this repository, PROGRAM the program that the hook and the samples run

What a host does itself, such as uploading an artifact or showing a report, is beyond this.
"""

import json
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import xml.etree.ElementTree

import yaml

root, program = pathlib.Path(sys.argv[1]).resolve(), pathlib.Path(sys.argv[2]).resolve()
work = pathlib.Path(tempfile.mkdtemp())
document = root / "docs/continuous-integration.md"
failures = []


def check(condition, what, log=""):
    if not condition:
        failures.append(what)
        print(f"FAILED: {what}\n{log}")


def load(name):
    return yaml.safe_load((root / name).read_text())


class Repository:
    """A scratch repository of somebody who writes FED files: two good ones, or also one with a mistake."""

    def __init__(self, name, good):
        self.path, self.good = work / name, good
        models = self.path / "models"
        models.mkdir(parents=True)
        harbour = (root / "examples/harbour.fed").read_text()
        (models / "harbour.fed").write_text(harbour)
        (self.path / "-old harbour.fed").write_text(harbour)  # neither an option nor two names
        if not good:
            wrong = re.sub("(HullNumber +reliable +)timestamp", r"\1time_stamp", harbour)
            (models / "$(touch ran) `touch ran`.FED").write_text(wrong)
        (self.path / "README.md").write_text("no FED file\n")
        self.git("init", "-q")
        self.git("add", ".")
        self.git("commit", "-q", "-m", "Models")
        self.git("tag", "v1.2")

    def git(self, *arguments):
        return self.run(["git", *arguments], check=True)

    def run(self, command, environment=None, check=False):
        run = subprocess.run(command, cwd=self.path, env={**base, **(environment or {})}, text=True, check=check,
                             stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
        return run.returncode, run.stdout

    def expect(self, what, status, log, finding):
        """Checks a status, that the finding is shown for a bad repository, and that no name was run as a command."""
        check((status == 0) == self.good, f"{what}: status {status}", log)
        check(self.good or finding in log, f"{what}: no {finding!r}", log)
        check(not list(work.rglob("ran")), f"{what}: ran a file name as a command", log)


# pre-commit

def hook(repository, configuration):
    """Commits a change with a hook from a repository that has the manifest of this one."""
    home = work / "hooks"
    if not home.exists():
        home.mkdir()
        shutil.copy(root / ".pre-commit-hooks.yaml", home)
        for command in (["init", "-q"], ["add", "."], ["commit", "-q", "-m", "Hooks"], ["tag", "v0.1.0"]):
            subprocess.run(["git", *command], cwd=home, env=base, check=True)
    for source in configuration["repos"]:
        source["repo"] = str(home)
    (repository.path / ".pre-commit-config.yaml").write_text(yaml.safe_dump(configuration))
    repository.git("add", ".")
    repository.run(["pre-commit", "install"], check=True)
    (repository.path / "no-fed-file").touch()
    status, log = repository.run(["pre-commit", "run", "--all-files"])
    repository.expect("pre-commit run", status, log, "`touch ran`.FED:52:47: error: unknown ordering")
    status, log = repository.run(["git", "commit", "-m", "Change"])
    check(status == 0 and "no files to check" in log, "pre-commit: a commit without FED files", log)
    with open(next((repository.path / "models").glob("*.FED" if not repository.good else "har*")), "a") as file:
        file.write(";; changed\n")
    status, log = repository.run(["git", "commit", "-a", "-m", "Change"])
    repository.expect("git commit", status, log, "`touch ran`.FED:52:47: error: unknown ordering")


def make_sources():
    """A repository of the sources of rtifed, as far as action and job use them: the program is built already."""
    repository = Repository("sources", True)
    script = repository.path / "scripts/program"
    script.parent.mkdir()
    script.write_text(f"#!/bin/sh\necho '{program}'\n")
    script.chmod(0o755)
    repository.git("add", ".")
    repository.git("commit", "-q", "-m", "Sources")
    repository.git("branch", "-M", "main")
    return repository.path


# GitHub

def evaluated(text, contexts):
    """Replaces the expressions of an action, which are names of values here."""
    return re.sub(r"\$\{\{ *(.*?) *\}\}", lambda match: contexts[match[1]], str(text))


def action(repository, inputs):
    """Runs the steps of action.yml as the runner does. Returns the status, the log, the outputs and the summary."""
    definition = load("action.yml")
    unknown = set(inputs) - set(definition["inputs"])
    check(not unknown, f"the action has no input {unknown}")
    contexts = {f"inputs.{name}": str(inputs.get(name, its["default"])) for name, its in definition["inputs"].items()}
    folder = pathlib.Path(tempfile.mkdtemp(dir=work))
    files = {name: folder / name for name in ("GITHUB_OUTPUT", "GITHUB_PATH", "GITHUB_STEP_SUMMARY")}
    for file in files.values():
        file.touch()
    status, log = 0, ""
    for step in definition["runs"]["steps"]:
        check(set(step) == {"id", "shell", "env", "run"} and step["shell"] == "bash", f"action: step {step}")
        check("${{" not in step["run"], f"action: an expression in the script of {step['id']}")
        (folder / "script.sh").write_text(step["run"])
        environment = {name: evaluated(value, contexts) for name, value in step["env"].items()}
        environment.update({name: str(file) for name, file in files.items()})
        environment.update(GITHUB_WORKSPACE=str(repository.path), GITHUB_ACTION_PATH=str(sources), GITHUB_ACTIONS="true")
        files["GITHUB_OUTPUT"].write_text("")
        status, printed = repository.run(["bash", "--noprofile", "--norc", "-eo", "pipefail", folder / "script.sh"], environment)
        log += printed
        for line in files["GITHUB_OUTPUT"].read_text().splitlines():
            name, _, value = line.partition("=")
            contexts[f"steps.{step['id']}.outputs.{name}"] = value
        if status:
            break
    outputs = {name: evaluated(its["value"], {**contexts, "steps.check.outputs.status": contexts.get("steps.check.outputs.status", "")})
               for name, its in definition["outputs"].items()} if "steps.program.outputs.program" in contexts else {}
    return status, log, outputs, files["GITHUB_STEP_SUMMARY"].read_text()


def try_action(good, bad):
    for repository in (good, bad):
        status, log, outputs, summary = action(repository, {"report": "rtifed.sarif"})
        repository.expect("action", status, log, "::error file=models/$(touch ran) `touch ran`.FED,line=52,")
        check(outputs.get("status") == str(status) and os.access(outputs.get("program", ""), os.X_OK), f"action: {outputs}", log)
        check(repository.good or "    models/$(touch ran) `touch ran`.FED:52:47: error" in summary, "action: summary", summary)
        check(summary.startswith("### FED files: "), "action: summary", summary)
        sarif = json.loads((repository.path / "rtifed.sarif").read_text())
        check(bool(sarif["runs"][0]["results"]) != repository.good, "action: SARIF", str(sarif))
        (repository.path / "rtifed.sarif").unlink()
    inputs = {"program": str(program), "files": "models/har*.fed\n-*.fed\n**/harbour.fed", "arguments": "--max-findings=1\n--color\nnever"}
    status, log, _, _ = action(bad, {**inputs, "format": "text"})
    check(status == 0, "action: patterns", log)
    for wrong, message in (({"files": "*.nothing"}, "no file matches"), ({"program": "/none"}, "cannot run the program"),
                           ({"fail-on": "$(touch ran)"}, "--fail-on"), ({"arguments": "--colour; touch ran"}, "--colour")):
        status, log, _, _ = action(good, {"program": str(program), **wrong})
        check(status == 2 and message in log and not list(work.rglob("ran")), f"action: {wrong}", log)


# GitLab

def gitlab(repository, variables, path):
    """Runs the job's script as a runner does."""
    job = load("ci/rtifed.gitlab-ci.yml")["rtifed-check"]
    unknown = set(variables) - set(job["variables"])
    check(not unknown, f"the GitLab job has no variable {unknown}")
    script = work / "job.sh"
    script.write_text("\n".join(["set -e", *job["before_script"], *job["script"]]))
    environment = {**job["variables"], **variables, "PATH": path}
    logs = []
    for shell in ("sh", "bash"):
        status, log = repository.run([shell, script], environment)
        repository.expect(f"GitLab job, {shell}", status, log, "`touch ran`.FED:52:47: error: unknown ordering")
        logs.append(log)
    check(logs[0] == logs[1], "GitLab job: sh and bash differ", "".join(logs))
    reports = job["artifacts"]["reports"]
    findings = json.loads((repository.path / reports["codequality"]).read_text())
    check(bool(findings) != repository.good, "GitLab: code quality", str(findings))
    check(repository.good or findings[0]["location"]["path"].endswith(".FED"), "GitLab: code quality", str(findings))
    junit = xml.etree.ElementTree.parse(repository.path / reports["junit"]).getroot()
    check(bool(list(junit.iter("failure"))) != repository.good, "GitLab: JUnit")


def try_gitlab(good, bad):
    variables = {"RTIFED_SOURCE": f"file://{sources}", "RTIFED_FILES": "*.fed\nmodels/*"}
    system = ":".join(folder for folder in base["PATH"].split(":") if not (pathlib.Path(folder) / "rtifed").exists())
    for repository in (good, bad):
        gitlab(repository, variables, system)
    status, log = good.run(["sh", work / "job.sh"], {"PATH": system, "RTIFED_SOURCE": ""})
    check(status == 2 and "RTIFED_SOURCE names no repository" in log, "GitLab: no source", log)


# The document

def try_samples(good, bad):
    """Uses each YAML sample of the document in what it is for."""
    samples = [yaml.safe_load(text) for text in re.findall(r"^```yaml\n(.*?)^```$", document.read_text(), re.M | re.S)]
    used = {"repos": 0, "jobs": 0, "include": 0}
    for sample in samples:
        if "repos" in sample:
            used["repos"] += 1
            for repository in (good, bad):
                hook(repository, sample)
        elif "jobs" in sample:
            for step in (step for job in sample["jobs"].values() for step in job["steps"]):
                if "rtifed" in step.get("uses", ""):
                    used["jobs"] += 1
                    status, log, _, _ = action(good, {"program": str(program), **step.get("with", {})})
                    check(status == 0, "the action in the document", log)
        elif "include" in sample:
            used["include"] += 1
            check(all((root / item["file"].lstrip("/")).exists() for item in sample["include"]), "the included file")
            variables = {**sample["rtifed-check"]["variables"], "RTIFED_SOURCE": ""}
            gitlab(good, variables, base["PATH"])
        else:
            check(False, f"unknown sample {sample}")
    check(all(used.values()), f"samples: {used}")
    for command in re.findall(r"^(?:\$|   ) (rtifed .*)", document.read_text(), re.M):
        status, log = good.run(["sh", "-c", command])
        check(status == 0, f"{command}: status {status}", log)


(work / "bin").mkdir()
(work / "bin/rtifed").symlink_to(program)
base = {name: value for name, value in os.environ.items() if not name.startswith(("GIT_", "GITHUB_", "CI", "INPUT_"))}
base.update(PATH=f"{work}/bin:{os.environ['PATH']}", HOME=str(work), PRE_COMMIT_HOME=str(work / "cache"),
            GIT_CONFIG_NOSYSTEM="1", GIT_CONFIG_GLOBAL=os.devnull, GIT_AUTHOR_NAME="A", GIT_AUTHOR_EMAIL="a@example.org",
            GIT_COMMITTER_NAME="C", GIT_COMMITTER_EMAIL="c@example.org", NO_COLOR="1")
try:
    sources = make_sources()
    repositories = Repository("good", True), Repository("bad", False)
    try_action(*repositories)
    try_gitlab(*repositories)
    try_samples(*repositories)
finally:
    shutil.rmtree(work)
sys.exit("FAILED: integrations" if failures else 0)
