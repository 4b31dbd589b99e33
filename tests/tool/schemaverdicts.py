#!/usr/bin/env python3
# SPDX-FileCopyrightText: The TARN Inserter authors
# SPDX-License-Identifier: Apache-2.0
"""Validates JSON documents.

usage: schemaverdicts.py SCHEMA < DOCUMENTS

Takes one document a line and prints "valid" or "invalid" for each, in a line too. Fails when SCHEMA
itself is wrong.
"""

import json
import sys

import jsonschema


def main():
    with open(sys.argv[1], encoding="utf-8") as file:
        schema = json.load(file)
    jsonschema.Draft7Validator.check_schema(schema)
    validator = jsonschema.Draft7Validator(schema)
    for line in sys.stdin.buffer.read().splitlines():
        print("valid" if validator.is_valid(json.loads(line)) else "invalid")


if __name__ == "__main__":
    main()
