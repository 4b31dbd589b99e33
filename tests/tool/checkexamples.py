#!/usr/bin/env python3
# SPDX-FileCopyrightText: The TARN Inserter authors
# SPDX-License-Identifier: Apache-2.0
"""Runs the commands that a document shows and compares what they print with what it says.

usage: checkexamples.py [--update] TOOL ROOT DOCUMENT

The blocks marked as "console" contain commands, each after "$ ", continued after "> ", and what
they print. A line "..." stands for any lines. All commands of a document run in one bash, with the
folder of TOOL first in PATH, in an empty folder with a copy of the examples in "examples".

A block after the comment <!-- file: PATH --> must have the content of that file of the tree.

With --update the blocks get what the commands print and what the files contain.
"""

import difflib
import os
import re
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

BLOCK = re.compile(
    r"(?P<head>(?:<!-- file: (?P<file>\S+) -->\n)?```(?P<language>\w*)\n)(?P<text>.*?)(?P<foot>^```$)",
    re.DOTALL | re.MULTILINE,
)
MARK = "-- end of the output --"


class Shell:
    """A bash that stays: folders and variables set by a command hold for the next ones."""

    def __init__(self, tool, folder):
        environment = dict(os.environ, LC_ALL="C.UTF-8", HOME=str(folder))
        environment["PATH"] = f"{Path(tool).resolve().parent}:{environment['PATH']}"
        for name in ("DISPLAY", "WAYLAND_DISPLAY", "XDG_RUNTIME_DIR"):
            environment.pop(name, None)
        self.process = subprocess.Popen(
            ["bash", "--norc", "--noprofile"],
            stdin=subprocess.PIPE,
            stdout=subprocess.PIPE,
            stderr=subprocess.STDOUT,
            cwd=folder,
            env=environment,
            text=True,
        )

    def output(self, command):
        """What the command prints. Its exit code is that of the next command's "$?"."""
        print(command, file=self.process.stdin)
        print(f"(code=$?; echo '{MARK}'; exit $code)", file=self.process.stdin, flush=True)
        lines = []
        for line in self.process.stdout:
            if line.endswith(MARK + "\n"):
                return lines + ([line[: -len(MARK) - 1]] if line != MARK + "\n" else [])
            lines.append(line.rstrip("\n"))
        sys.exit(f"the shell ended at: {command}")

    def end(self):
        self.process.stdin.close()
        self.process.wait()


def steps_of(text):
    """The commands of a block, each with its lines as written and the lines that it prints."""
    steps = []
    for line in text.splitlines():
        if line.startswith("$ "):
            steps.append(([line], []))
        elif not steps:
            sys.exit(f"not after a command: {line}")
        elif line.startswith("> ") and not steps[-1][1]:
            steps[-1][0].append(line)
        else:
            steps[-1][1].append(line)
    return steps


def fits(expected, actual):
    """True when the lines are the same; "..." is any number of lines."""
    if "..." not in expected:
        return expected == actual
    first = expected.index("...")
    rest = expected[first + 1 :]
    return expected[:first] == actual[:first] and any(
        fits(rest, actual[at:]) for at in range(first, len(actual) + 1)
    )


class Examples:
    """The blocks of a document as they should be, and what is wrong with them."""

    def __init__(self, shell, root):
        self.shell = shell
        self.root = root
        self.commands = 0
        self.files = 0
        self.faults = []

    def updated(self, match):
        text = match["text"]
        if match["file"]:
            text = self.file_block(match["file"], text)
        elif match["language"] == "console":
            text = self.console_block(text)
        return match["head"] + text + match["foot"]

    def file_block(self, path, text):
        self.files += 1
        content = (self.root / path).read_text()
        self.compare(path, text.splitlines(), content.splitlines())
        return content

    def console_block(self, text):
        lines = []
        for written, expected in steps_of(text):
            self.commands += 1
            actual = self.shell.output("\n".join(line[2:] for line in written))
            if not fits(expected, actual):
                self.compare(written[0], expected, actual)
                expected = actual
            lines += written + expected
        return "".join(f"{line}\n" for line in lines)

    def compare(self, what, expected, actual):
        if expected != actual:
            difference = difflib.unified_diff(expected, actual, "document", "real", lineterm="")
            self.faults.append("\n".join([what, *difference]))


def main(tool, root, document, update):
    with tempfile.TemporaryDirectory(prefix="tarn examples ") as folder:
        shutil.copytree(root / "examples", Path(folder) / "examples")
        shell = Shell(tool, folder)
        examples = Examples(shell, root)
        text = document.read_text()
        new_text = BLOCK.sub(examples.updated, text)
        shell.end()
    if update:
        document.write_text(new_text)
        return 0
    for fault in examples.faults:
        print(fault)
    print(f"{examples.commands} commands, {examples.files} files, {len(examples.faults)} differ")
    return 1 if examples.faults or examples.commands + examples.files == 0 else 0


if __name__ == "__main__":
    arguments = [argument for argument in sys.argv[1:] if argument != "--update"]
    if len(arguments) != 3:
        sys.exit(__doc__)
    sys.exit(
        main(arguments[0], Path(arguments[1]), Path(arguments[2]), "--update" in sys.argv[1:])
    )
