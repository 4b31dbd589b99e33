#!/usr/bin/env python3
# SPDX-FileCopyrightText: The TARN Inserter authors
# SPDX-License-Identifier: Apache-2.0
"""Shows the figures of two versions of a benchmark side by side.

usage: figures.py ROUNDS BEFORE AFTER

BEFORE.1 to BEFORE.ROUNDS are outputs of the one version, AFTER.1 and so on of the other. Prints the
median of each figure on both sides, and their ratio.
"""

import re
import statistics
import sys

ROW = re.compile(r"  (\S.*?)\s+(-?[\d.]+) (\S*)\s*(?:goal (.*): (?:met|MISSED))?$")


def figures_of(path):
    """{(table, job, which of that name): (figure, unit, goal)} of one output, in its order."""
    found = {}
    title = ""
    for line in open(path, encoding="utf-8"):
        line = line.rstrip("\n")
        row = ROW.match(line)
        if row:
            key = (title, row.group(1))
            count = sum(1 for other in found if other[:2] == key)
            found[key + (count,)] = (float(row.group(2)), row.group(3), row.group(4) or "")
        elif line and not line.startswith(" "):
            title = line
    return found


def medians_of(prefix, rounds):
    """The same for several outputs, with medians."""
    outputs = [figures_of(f"{prefix}.{number}") for number in range(1, rounds + 1)]
    return {key: (statistics.median(output[key][0] for output in outputs if key in output),) + rest[1:]
            for key, rest in outputs[0].items()}


def main():
    rounds = int(sys.argv[1])
    before = medians_of(sys.argv[2], rounds)
    after = medians_of(sys.argv[3], rounds)
    # A title can contain a figure, so that it differs between the versions.
    old = {(job, count): value for (_, job, count), value in before.items()}
    title = None
    for (table, job, count), (figure, unit, goal) in after.items():
        if table != title:
            title = table
            print(f"\n{title}\n  {'':64} {'before':>12} {'after':>12} {'ratio':>7}")
        former = before.get((table, job, count)) or old.get((job, count))
        left = f"{former[0]:12.3f}" if former else f"{'-':>12}"
        ratio = f"{figure / former[0]:7.2f}" if former and former[0] else f"{'':7}"
        print(f"  {job:64} {left} {figure:12.3f} {ratio} {unit:6} {goal}")


if __name__ == "__main__":
    main()
