#!/usr/bin/env python3
# SPDX-FileCopyrightText: The TARN Inserter authors
# SPDX-License-Identifier: Apache-2.0
"""Compares "tarn export map" with the same list made here from the XML of the file.

usage: checkportmap.py TARN SOURCES

Takes the examples and random configurations; TARN_SEED and TARN_RUNS change which and how many.
"""

import csv
import io
import json
import os
import pathlib
import random
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as ElementTree

TITLES = ["core", "kind", "port", "bit", "net", "bus", "initialValue"]
PIECES = ["top/", "u0", "data[3]", "\\esc,aped ", '"', ",", "\n", "\r", "\t", " ", "'", "<&>", "ä", "😀",
          "\x7f", ";", "=1"]


def attribute(text):
    escapes = {"&": "&amp;", "<": "&lt;", '"': "&quot;", "\t": "&#9;", "\n": "&#10;", "\r": "&#13;"}
    return '"' + "".join(escapes.get(c, c) for c in text) + '"'


def random_name():
    return "".join(random.choices(PIECES, k=random.randint(1, 4)))


def random_signal():
    name = attribute(random_name())
    members = "".join(f"<Member name={attribute(random_name())}/>"
                      for _ in range(random.choice((0, 0, 1, 2, 5))))
    return f"<Signal name={name}>{members}</Signal>"


def random_value():
    digits = "".join(random.choices("0123456789abcdefABCDEF", k=random.randint(1, 6)))
    return random.choice(("", "0x" + digits))


def random_port(kind):
    signals = "".join(random_signal() for _ in range(random.randint(0, 6)))
    value = f" initialValue={attribute(random_value())}" if kind == "ProbeOut" else ""
    return f"<{kind} index=\"{random.randint(-2, 70)}\"{value}>{signals}</{kind}>"


def random_configuration():
    cores = "".join(
        f"<Core index=\"{random.randint(-1, 20)}\">"
        + "".join(random_port(random.choice(("ProbeIn", "ProbeOut")))
                  for _ in range(random.randint(0, 5)))
        + "</Core>" for _ in range(random.randint(0, 3)))
    return f"<TARN_CONFIG><Version>1.0</Version>{cores}</TARN_CONFIG>"


def value_as_number(value, width):
    """The initial value of a port as the editor shows it: with as many digits as the port needs."""
    digits = (width + 3) // 4
    return int("0" + value[2:][:digits].ljust(digits, "0"), 16)


def port_rows(core, kind, port):
    """The bits from the last one, which is bit 0, to the first."""
    bits = []
    for signal in port.findall("Signal"):
        members = signal.findall("Member")
        name = signal.get("name")
        bits += [(member.get("name"), name) for member in members] or [(name, None)]
    value = port.get("initialValue")
    number = value_as_number(value, len(bits)) if value else None
    rows = []
    for bit, (net, bus) in enumerate(reversed(bits)):
        initial = None if number is None else number >> bit & 1
        rows.append([int(core.get("index")), kind, int(port.get("index")), bit, net, bus, initial])
    return rows


def expected_rows(path):
    rows = []
    for core in ElementTree.parse(path).getroot().findall("Core"):
        for element, kind in (("ProbeIn", "in"), ("ProbeOut", "out")):
            for port in core.findall(element):
                rows += reversed(port_rows(core, kind, port))
    return rows


def csv_of(rows):
    text = io.StringIO()
    writer = csv.writer(text, lineterminator="\r\n")
    writer.writerow(TITLES)
    writer.writerows(rows)
    return text.getvalue().encode()


def output_of(*command):
    result = subprocess.run(command, capture_output=True, check=False, timeout=100)
    if result.returncode != 0 or result.stderr:
        raise SystemExit(f"{command}: exit code {result.returncode}, {result.stderr!r}")
    return result.stdout


def check(tarn, path):
    rows = expected_rows(path)
    table = output_of(tarn, "export", "map", path)
    if table != csv_of(rows):
        raise SystemExit(f"{path}: CSV differs\n{table!r}\n{csv_of(rows)!r}")
    if output_of(tarn, "export", "map", "--format", "csv", path) != table:
        raise SystemExit(f"{path}: CSV is not the default")
    objects = json.loads(output_of(tarn, "export", "map", "--format", "json", path))
    if objects != [dict(zip(TITLES, row)) for row in rows]:
        raise SystemExit(f"{path}: JSON differs\n{objects!r}\n{rows!r}")
    return len(rows)


def main():
    tarn, sources = sys.argv[1:]
    seed = int(os.environ.get("TARN_SEED", "1"))
    runs = int(os.environ.get("TARN_RUNS", "50"))
    random.seed(seed)
    files = sorted(pathlib.Path(sources, "examples").glob("**/*.tarn"))
    if not files or not sum(check(tarn, str(path)) for path in files):
        raise SystemExit("no bit in the examples")
    bits = 0
    with tempfile.TemporaryDirectory() as folder:
        path = pathlib.Path(folder, "random.tarn")
        for _ in range(runs):
            path.write_bytes(random_configuration().encode())
            bits += check(tarn, str(path))
    print(f"seed {seed}: {runs} random configurations with {bits} bits")
    if bits < runs:
        raise SystemExit("too few bits")


if __name__ == "__main__":
    main()
