#!/usr/bin/env python3
"""Holds the documents against the program: runs the commands of their console blocks and compares what is printed, and
compares what they list with the manual page, a new machine folder and the automation server's description.
usage: documents_test.py BXVBWIZ MAKEPE

In a console block a line that begins with "$ " is a command; the others are what it prints on both its outputs, "..."
for any lines. A command whose exit code is not 0 is a failure. README.md runs beside the sample machine of the demo,
docs/build-server.md in documents/checkout.
"""
import difflib
import os
import pathlib
import re
import shlex
import shutil
import subprocess
import sys
import tempfile

program, makepe = (pathlib.Path(argument).resolve() for argument in sys.argv[1:3])
tests = pathlib.Path(__file__).resolve().parent
repository = tests.parent
failures = []


def shell(command, folder):
    done = subprocess.run(["bash", "-c", command], cwd=folder, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                          stderr=subprocess.STDOUT, encoding="utf-8", check=False, timeout=60)
    return done.stdout + ("" if done.returncode == 0 else f"exit code {done.returncode}\n")


def run_commands(document, folder):
    blocks = re.findall(r"^```console\n(.*?)^```$", (repository / document).read_text(encoding="utf-8"), re.M | re.S)
    steps = [step for block in blocks for step in re.split(r"^\$ ", block, flags=re.M)[1:]]
    if not steps:
        failures.append(f"{document} shows no command")
    for step in steps:
        command, expected = step.split("\n", 1)
        shown = shell(command, folder)
        pattern = "".join(r"(?:.*\n)*?" if line == "..." else re.escape(line) + r"\n" for line in expected.splitlines())
        if not re.fullmatch(pattern, shown):
            difference = difflib.unified_diff(expected.splitlines(), shown.splitlines(), document, "printed", lineterm="")
            failures.append("$ " + command + "\n" + "\n".join(difference))


def compare_commands(document):
    """Options stand in the line of their command, or in the table below the heading "Options of A and B"."""
    man = shell("bxvbwiz --generate man", tests).replace("\\&", "").replace("\\-", "-")
    expected = set()
    for section in re.split(r"^\.SS bxvbwiz ", man, flags=re.M)[1:]:
        command = re.match(r"[a-z ]*", section).group().strip()
        expected |= {(command, option) for option in ["", *re.findall(r"^\.B (--[a-z-]+)", section, re.M)]}
    actual = set()
    text = (repository / document).read_text(encoding="utf-8")
    for command, rest in re.findall(r"^(?:<pre>)?bxvbwiz ((?:[a-z]+ )+)(.*)", text, re.M):
        actual |= {(command.strip(), option) for option in ["", *re.findall(r"\[?(--[a-z-]+)", rest)]}
    for heading, section in re.findall(r"^(?:## |<h2>)Options of ([a-z, ]+)(.*?)(?=^(?:## |<h2>))", text, re.M | re.S):
        cells = re.findall(r"^(?:\| |<tr><td>)(.*?)(?: \||</td>)", section, re.M | re.S)
        actual |= {(command, option) for command in re.split(", | and ", heading)
                   for option in re.findall("--[a-z-]+", " ".join(cells))}
    for command, option in sorted(expected ^ actual):
        if option != "--help" and command not in ("", "machine"):
            problem = "lacks" if (command, option) in expected else "has, but the program has not,"
            failures.append(f"{document} {problem} {command} {option}")


def compare_names(names, *documents):
    for document in documents:
        text = (repository / document).read_text(encoding="utf-8")
        failures.extend(f"{document} lacks {name}" for name in names if not re.search(rf"(?:`|<code>){name}\b", text))


work = pathlib.Path(tempfile.mkdtemp())
try:
    (work / "bin").mkdir()
    (work / "bin/bxvbwiz").symlink_to(program)
    (work / "bin/makepe").symlink_to(makepe)
    os.environ.update(PATH=f"{work}/bin:{os.environ['PATH']}", LC_ALL="C.UTF-8", HOME=str(work), GIT_AUTHOR_NAME="Test",
                      GIT_AUTHOR_EMAIL="test@localhost", GIT_COMMITTER_NAME="Test", GIT_COMMITTER_EMAIL="test@localhost")
    for name in ("BXVBWIZ_MACHINE", "SOURCE_DATE_EPOCH"):
        os.environ.pop(name, None)
    shell(f"{shlex.quote(str(repository))}/demo/lay_out.sh demo/out/machine bin", work)
    run_commands("README.md", work)
    shutil.copytree(tests / "documents", work, dirs_exist_ok=True)
    for line in (tests / "documents/executables").read_text().splitlines():
        shell("makepe " + line, work)
    shell("git init --quiet && git add . && git commit --quiet --message Start", work / "checkout")
    run_commands("docs/build-server.md", work / "checkout")
    compare_commands("docs/command-line.md")
    compare_commands("help/commandline.htm")
    machine = work / "demo/out/machine"
    keys = re.findall(r'^"?(\w+)"?=', (machine / "machine.ini").read_text() + (machine / "registry.reg").read_text(), re.M)
    compare_names(keys, "docs/machine-folder.md", "help/machine.htm")
    interfaces = (repository / "src/com/BX6VBWiz.idl").read_text().split("interface ISystemInfo")
    compare_names(re.findall(r"HRESULT (\w+)\(", interfaces[0]), "docs/automation.md", "help/automation.htm")
finally:
    shutil.rmtree(work)
print("\n".join(failures))
sys.exit(bool(failures))
