#!/usr/bin/env python3
# SPDX-FileCopyrightText: The TARN Inserter authors
# SPDX-License-Identifier: Apache-2.0
"""Validates SARIF logs against the schema of SARIF 2.1.0, and what the standard asks beyond it.

usage: checksarif.py FOLDER|FILE...

Takes all "*.sarif" files of a folder. Prints how many logs are valid, or the first problem of each
other one, and then ends with exit code 1.
"""

import json
import re
import sys
from pathlib import Path

import jsonschema

SCHEMA = Path(__file__).parent / "data" / "sarif-2.1.0-rtm.5.json"
URI = re.compile(r"(?:[A-Za-z0-9._~/-]|%[0-9A-F]{2})+")


def artifact_locations(value):
    """All values under the key artifactLocation, at any depth."""
    found, rest = [], [value]
    while rest:
        item = rest.pop()
        if isinstance(item, dict):
            found += [item["artifactLocation"]] if "artifactLocation" in item else []
            rest += item.values()
        elif isinstance(item, list):
            rest += item
    return found


def location_problem(location, run):
    """What is wrong with an artifactLocation."""
    uri = location["uri"]
    path = uri[len("file://"):] if uri.startswith("file:///") else uri
    if not URI.fullmatch(path) or ".." in path.split("/"):
        return f"the URI {uri} is not well-formed"
    if (path == uri) != (location.get("uriBaseId") in run["originalUriBaseIds"]):
        return f"the URI {uri} has no base, or needs none"
    artifact = run["artifacts"][location["index"]] if "index" in location else None
    if artifact and artifact["location"]["uri"] != uri:
        return f"the artifact of {uri} is another one"
    return ""


def message_problem(message):
    """Braces stand in pairs: a single one would begin or end an argument."""
    rest = message["text"].replace("{{", "").replace("}}", "")
    return "a single brace in " + message["text"] if re.search("[{}]", rest) else ""


def result_problem(result, run):
    rule = run["tool"]["driver"]["rules"][result["ruleIndex"]]
    if rule["id"] != result["ruleId"]:
        return f"ruleIndex of {result['ruleId']} is that of {rule['id']}"
    return message_problem(result["message"])


def problem_of(log, validator):
    """What is wrong with the log; empty when nothing is."""
    error = jsonschema.exceptions.best_match(validator.iter_errors(log))
    if error:
        return f"{'/'.join(map(str, error.absolute_path))}: {error.message}"
    for run in log["runs"]:
        problems = [location_problem(location, run) for location in artifact_locations(run)]
        problems += [result_problem(result, run) for result in run["results"]]
        for invocation in run["invocations"]:
            problems += [message_problem(notification["message"])
                         for notification in invocation.get("toolExecutionNotifications", [])]
        for base in run["originalUriBaseIds"].values():
            if not base["uri"].endswith("/"):
                problems.append(f"the base {base['uri']} is no folder")
        if any(problems):
            return next(filter(None, problems))
    return ""


def main(arguments):
    schema = json.loads(SCHEMA.read_text(encoding="utf-8"))
    validator = jsonschema.Draft4Validator(schema)
    logs = []
    for path in map(Path, arguments):
        logs += sorted(path.glob("*.sarif")) if path.is_dir() else [path]
    problems = 0
    for path in logs:
        problem = problem_of(json.loads(path.read_text(encoding="utf-8")), validator)
        if problem:
            print(f"{path}: {problem}")
            problems += 1
    if problems or not logs:
        sys.exit(1)
    print(f"{len(logs)} logs are valid")


main(sys.argv[1:])
