#!/usr/bin/env python3
# SPDX-FileCopyrightText: The TARN Inserter authors
# SPDX-License-Identifier: Apache-2.0
"""Usage: runtidy.py RUN_CLANG_TIDY BUILD_FOLDER FILES_REGEX

Checks files with clang-tidy as the build compiles them, but without precompiled headers: those of
another compiler are an error to it.
"""
import json
import pathlib
import shlex
import subprocess
import sys


def without_precompiled(command):
    """The command without the two words "-include .../cmake_pch.hxx"."""
    words = shlex.split(command)
    for index in reversed(range(1, len(words))):
        if words[index - 1] == "-include" and words[index].endswith("/cmake_pch.hxx"):
            del words[index - 1:index + 1]
    return shlex.join(words)


def main(run_clang_tidy, build, files):
    commands = json.loads(pathlib.Path(build, "compile_commands.json").read_text())
    for entry in commands:
        entry["command"] = without_precompiled(entry["command"])
    folder = pathlib.Path(build, "tidy")
    folder.mkdir(exist_ok=True)
    pathlib.Path(folder, "compile_commands.json").write_text(json.dumps(commands))
    return subprocess.run([run_clang_tidy, "-p", folder, "-quiet", files], check=False).returncode


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
