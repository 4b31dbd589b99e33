#!/usr/bin/env python3
# SPDX-FileCopyrightText: The TARN Inserter authors
# SPDX-License-Identifier: Apache-2.0
"""Runs every command of the tool with every option, and sees every message and exit code.

usage: everymessage.py TOOL ROOT

The rows are in the files "messages/*.rows": an exit code and a line for the shell. The rows of one
file run one after the other in a folder with copies of the examples. What all of them print together must contain every text of two
or more words in the sources of the tool; the texts that no row can provoke are in NOT_PROVOKED.
Every option of every command, and each of its values, must be in a row that does not fail.
"""

import os
import re
import shlex
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

# Texts of the sources, and why no row provokes them.
NOT_PROVOKED = {
    "it has more than %1 bytes": "takes an input of more than a gigabyte",
    "there is not enough memory": "tst_program.cpp shows it; how much is enough depends on the build",
}

LITERAL = re.compile(r'QStringLiteral\(\s*((?:"(?:[^"\\]|\\.)*"\s*)+)\)')
PART = re.compile(r'"((?:[^"\\]|\\.)*)"')
EXIT_CODES = {"check": {0, 1, 2}, "nets": {0, 1, 2}}  # Those of other commands are 0 and 2.
PATIENCE = 120  # seconds for one row on a machine under load


def rows_of(path):
    """Pairs of an exit code and a line for the shell."""
    for line in path.read_text().replace("\\\n", " ").splitlines():
        if line and not line.startswith("#"):
            code, command = line.split(None, 1)
            yield int(code), command


def texts_of(folder):
    """The texts of two or more words in the sources, as they are at run time."""
    for path in sorted(folder.rglob("*.cpp")):
        for match in LITERAL.finditer(path.read_text()):
            text = "".join(PART.findall(match[1]))
            text = re.sub(r"\\(.)", lambda escape: "\n" if escape[1] == "n" else escape[1], text)
            is_pattern = "(?:" in text
            if len(re.findall(r"\w\w+", text)) > 1 and " " in text.strip() and not is_pattern:
                yield path.name, text


def squeezed(text):
    """Without line breaks and indentation, which help texts get when they are printed."""
    return " ".join(text.split())


def is_in(text, printed):
    """True when the text was printed, with something in place of its arguments %1, %2..."""
    parts = [re.escape(part) for part in re.split(r"%L?\d", squeezed(text))]
    return re.search(".*?".join(parts), printed) is not None


class Runs:
    """What the rows did."""

    def __init__(self, tool, folder):
        self.folder = folder  # Where the next row runs.
        self.environment = dict(os.environ, LC_ALL="C.UTF-8", HOME=str(folder))
        self.environment["PATH"] = f"{Path(tool).resolve().parent}:{self.environment['PATH']}"
        for name in ("DISPLAY", "WAYLAND_DISPLAY"):
            self.environment.pop(name, None)
        self.faults = []
        self.printed = []  # For each run.
        self.codes = {}  # Exit codes by command.
        self.used = {}  # Options and values, by command, of runs that did not fail.

    def output(self, command):
        return self.run(command).stdout.decode(errors="replace")

    def run(self, command):
        return subprocess.run(
            ["bash", "-c", command],
            cwd=self.folder,
            env=self.environment,
            stdin=subprocess.DEVNULL,
            capture_output=True,
            timeout=PATIENCE,
        )

    def do(self, code, command, names):
        run = self.run(command)
        streams = [part.decode(errors="replace") for part in (run.stdout, run.stderr)]
        self.printed.append(squeezed(" ".join(streams)))
        if run.returncode != code:
            self.faults.append(f"{run.returncode} and not {code}: {command}\n{''.join(streams)}")
        # Errors of the tool say so; what is not a message of the tool is one of the shell.
        elif code == 2 and "tarn: " not in streams[1] + streams[0]:
            self.faults.append(f"no message: {command}\n{streams[1]}")
        elif code != 2:
            self.note_options(command, names)
        for name in used_commands(command, names):
            self.codes.setdefault(name, set()).add(run.returncode)

    def note_options(self, command, names):
        for name in used_commands(command, names):
            words = shlex.split(command, comments=False)
            used = self.used.setdefault(name, set())
            used.update(words)
            used.update(f"{first} {second}" for first, second in zip(words, words[1:]))


def used_commands(command, names):
    """The longest name of a command behind each "tarn"."""
    for start in re.findall(r"\btarn ((?:\w+ ?)+)", command):
        fits = [name for name in names if (start + " ").startswith(name + " ")]
        if fits:
            yield max(fits, key=len)


def options_of(help_text):
    """The options in a help text as lists: its names, then its values when they are fixed."""
    for line in re.findall(r"^  (-[^ ].*?)(?:  .*)?$", help_text, re.MULTILINE):
        names = re.findall(r"(?<![\w-])--?[\w-]+", line)
        values = re.search(r" ([\w-]+(?:\|[\w-]+)+)$", line)
        yield names, values[1].split("|") if values else []


def check_options(runs, name):
    used = runs.used.get(name, set())
    for names, values in options_of(runs.output(f"tarn {name} --help")):
        if not used & set(names):
            runs.faults.append(f"no row has {names[-1]} of {name}")
        for value in values:
            if not any(f"{option} {value}" in used for option in names):
                runs.faults.append(f"no row has {names[-1]} {value} of {name}")


def check_codes(runs, name):
    expected = EXIT_CODES.get(name, {0, 2})
    seen = runs.codes.get(name, set())
    if seen != expected:
        runs.faults.append(f"exit codes of {name}: {sorted(seen)} and not {sorted(expected)}")


def check_texts(runs, root):
    missing = {}
    for file, text in texts_of(root / "tool"):
        if not any(is_in(text, printed) for printed in runs.printed):
            missing[text] = file
    for text, file in missing.items():
        if text not in NOT_PROVOKED:
            runs.faults.append(f"no row prints the text of {file}: {text}")
    for text in NOT_PROVOKED:
        if text not in missing:
            runs.faults.append(f"a row does print, or no source has: {text}")


def main(tool, root):
    with tempfile.TemporaryDirectory(prefix="tarn messages ") as scratch:
        runs = Runs(tool, scratch)
        commands = re.search(r"Commands:\n(.*?)\n\n", runs.output("tarn --help"), re.DOTALL)[1]
        names = re.findall(r"^  (\S+(?: \S+)*)", commands, re.MULTILINE)
        for path in sorted((Path(__file__).parent / "messages").glob("*.rows")):
            runs.folder = Path(scratch) / path.stem
            shutil.copytree(root / "examples", runs.folder)
            for code, command in rows_of(path):
                runs.do(code, command, names)
        for name in names:
            check_options(runs, name)
            check_codes(runs, name)
        check_texts(runs, root)
    print(*runs.faults, sep="\n")
    print(f"{len(runs.printed)} rows, {len(names)} commands, {len(runs.faults)} faults")
    return 1 if runs.faults or not names else 0


if __name__ == "__main__":
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    sys.exit(main(sys.argv[1], Path(sys.argv[2])))
