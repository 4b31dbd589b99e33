#!/usr/bin/env python3
# SPDX-FileCopyrightText: The TARN Inserter authors
# SPDX-License-Identifier: Apache-2.0
"""Checks of the source tree itself.

usage: checktree.py CHECK ROOT [COMPILER FLAG...]

CHECK is "includes", "lists", "names", "licence", "format", "links", "version" or "headers"; only the
last one needs the compiler. Prints one line per finding and exits with 1 when there is any. selftest.py shows
each of them fail.
"""

import concurrent.futures
import os
import pathlib
import re
import subprocess
import sys

PLUGIN_FOLDERS = ("plugin", "view", "probes", "select", "audit", "model", "widgets", "sdk")
HOST_LIBRARIES = ("core", "dev", "extsys", "netweir", "qutil", "te")
GROUND_FOLDER = "files"  # Below host and plug-in, which both use it.
TOOL_FOLDER = "tool"  # The command line tool, an application beside the workbench.
FOLDERS = PLUGIN_FOLDERS + (GROUND_FOLDER, TOOL_FOLDER) + (
    "host", "tests", "bench", "fuzz", "examples", "cmake", "packaging", "scripts", "translations",
    "forms", ".ci")

# The part of probes/ below select/, the libraries tarn_signalmerge and tarn_signals: the project's
# layout has the signals and their trees in one folder with the page, which stands above select/. Of
# value2Tree only the header is part of it, which declares the function beside the other tree
# functions.
SIGNALS = ("probes/incomingsignals", "probes/signalmerge", "probes/signalrow", "probes/signaltree",
           "probes/value2tree.h")

# The layers of the plug-in from the ground up, by file (with or without extension) or folder. A
# file may include files of its own layer and of lower ones; layers in one line do not see each
# other.
LAYERS = (
    (("probes/signalitem",), ("sdk/",), ("widgets/",)),
    (("model/",), SIGNALS),
    (("audit/",),),
    (("select/",),),
    (("probes/",),),
    (("view/",),),
    (("plugin/",),),
)

# The rooms of the extractor, the folders in host/netweir/internal, and the rooms that each may use.
# Files outside the rooms belong to "extraction" or to the room in ROOM_OF_PUBLIC.
EXTRACTOR = ("host", "netweir")
ROOMS = {
    "ground": (),
    "store": ("ground",),
    "sources": ("ground",),
    "verilog": ("ground",),
    "vhdl": ("ground",),
    "parts": ("ground", "store"),
    "modules": ("ground", "sources", "verilog", "parts"),
    "tool": ("ground",),
    "xml": ("ground", "parts"),
    "nets": ("ground", "store", "parts", "xml"),
    "verilator": ("ground", "store", "sources", "verilog", "modules", "tool", "parts", "xml",
                  "nets"),
    "signals": ("ground", "store", "parts", "vhdl"),
    "ghdl": ("ground", "store", "sources", "vhdl", "tool", "parts", "signals"),
    "join": ("ground", "store", "sources", "tool", "parts"),
    "extraction": ("ground", "store", "sources", "tool", "verilator", "ghdl", "join"),
    "dialog": ("ground", "store", "tool", "extraction"),
}
ROOM_OF_PUBLIC = {
    **dict.fromkeys(("hierachy", "netlistbuilder", "rtlnet", "rtlnetbus", "rtlnetlist"), "store"),
    "netweir_global": "ground",
    "processwrites": "ground",
    "extractionmonitor": "tool",
    "rtlextraction": "dialog",
}

# What the tool may include of the plug-in: files (with or without extension) and folders without
# widgets.
TOOL_USES = ("audit/", "model/", "probes/signalitem", "probes/signalmerge", "sdk/",
             "select/namematcher", "select/netsearch")
# The one file of the tool that may look into the folders of its commands.
TOOL_TABLE = "tool/command.cpp"

# The one header of the plug-in that the workbench may include.
PLUGIN_ENTRY = "plugin/tarnviewmanager.h"


def files_of(root, suffixes):
    """Paths below the project's folders, relative to root, in a stable order."""
    found = []
    for top in sorted(FOLDERS):
        for folder, names, files in os.walk(root / top):
            names[:] = sorted(name for name in names if name != "__pycache__")
            found += [pathlib.Path(folder, name).relative_to(root) for name in sorted(files)]
    found += [pathlib.Path(path.name) for path in sorted(root.iterdir()) if path.is_file()]
    return [path for path in found if suffixes is None or path.suffix in suffixes]


def text_of(path):
    return path.read_text(encoding="utf-8", errors="replace")


# --- includes -----------------------------------------------------------------------------------


def includes_of(path):
    """(line number, name) of every #include of the file."""
    for number, line in enumerate(text_of(path).splitlines(), 1):
        match = re.match(r'\s*#\s*include\s*([<"])([^>"]+)[>"]', line)
        if match:
            yield number, match.group(2), match.group(1) == '"'


def resolve(root, including, name, quoted):
    """The project's file of that name, relative to root; None for foreign files."""
    bases = [root / including.parent] if quoted else []
    for base in bases + [root, root / "host", root / "tests"]:
        candidate = pathlib.Path(os.path.normpath(base / name))
        if candidate.is_file() and candidate.is_relative_to(root):
            return candidate.relative_to(root)
    return None


def layer_of(path):
    """(height, layer, entry) of a plug-in file by the most specific entry that matches."""
    names = (str(path), str(path.with_suffix("")))
    return max(((height, layer, entry) for height, layers in enumerate(LAYERS)
                for layer in layers for entry in layer
                if entry in names or entry.endswith("/") and names[0].startswith(entry)),
               key=lambda found: len(found[2]))


def public_headers(root):
    """The host's public headers: those that its libraries list under HEADERS."""
    found = set()
    for library in HOST_LIBRARIES:
        lists = root / "host" / library / "CMakeLists.txt"
        if lists.is_file():
            for section in re.findall(r"\bHEADERS\b([^)]*?)(?:\b(?:SOURCES|LINK|PRIVATE_LINK)\b|\))",
                                      text_of(lists)):
                found |= {pathlib.Path("host", library, name) for name in section.split()}
    return found


def room_of(path):
    """The room of a file of the extractor; None for other files."""
    if path.parts[:2] != EXTRACTOR:
        return None
    if path.parts[2] == "internal" and len(path.parts) > 4:
        return path.parts[3]
    return ROOM_OF_PUBLIC.get(path.stem, "extraction")


def wrong_way_between_rooms(includer, included):
    """Why a file of the extractor must not include another one; empty when it may."""
    upper, lower = room_of(includer), room_of(included)
    if upper is None or lower is None or upper == lower:
        return ""
    if upper not in ROOMS:
        return f"the room {upper} is not known"
    return "" if lower in ROOMS[upper] else f"the room {upper} must not see {lower}"


def wrong_way_between_commands(includer, included):
    """Why a file of the tool must not include another one; empty when it may."""
    if len(included.parts) < 3 or includer.parent == included.parent or str(includer) == TOOL_TABLE:
        return ""
    return f"of the tool only {TOOL_TABLE} sees {included.parent}"


def wrong_arrow_of_tool(includer, included, public):
    """Why the tool must not include the other file; empty when it may."""
    if included.parts[0] == TOOL_FOLDER:
        return wrong_way_between_commands(includer, included)
    if included.parts[0] == "tests":
        return "includes test code"
    if included.parts[0] == "host":
        return "" if included in public else "no public header of the host"
    names = (str(included), str(included.with_suffix("")))
    allowed = (GROUND_FOLDER + "/",) + TOOL_USES
    if any(entry in names or entry.endswith("/") and names[0].startswith(entry)
           for entry in allowed):
        return ""
    return "not open to the tool"


def wrong_arrow(includer, included, public):
    """Why the includer must not include the other file; empty when it may."""
    if includer.parts[0] == TOOL_FOLDER:
        return wrong_arrow_of_tool(includer, included, public)
    if included.parts[0] == TOOL_FOLDER and includer.parts[0] not in ("tests", "bench", "fuzz"):
        return "only the tool itself uses its parts"
    from_host = includer.parts[0] == "host"
    from_plugin = includer.parts[0] in PLUGIN_FOLDERS
    to_plugin = included.parts[0] in PLUGIN_FOLDERS
    if (from_host or from_plugin) and included.parts[0] == "tests":
        return "includes test code"
    if includer.parts[0] == GROUND_FOLDER and included.parts[0] != GROUND_FOLDER:
        return "the ground knows nothing above it"
    if includer in public and included.parts[0] == GROUND_FOLDER:
        return "not installed with the public headers"
    if from_host and to_plugin:
        if includer.parts[1] != "workbench":
            return "the host's libraries know no plug-in"
        return "" if str(included) == PLUGIN_ENTRY else f"of the plug-in only {PLUGIN_ENTRY} is open"
    if from_host and included.parts[:2] == ("host", "workbench"):
        return "" if includer.parts[1] == "workbench" else "the libraries know no workbench"
    if from_host and "internal" in included.parts and includer.parts[1] != included.parts[1]:
        return "internal to another library"
    if from_plugin and included.parts[0] == "host" and included not in public:
        return "no public header of the host"
    if from_plugin and included.parts[0] == "host" and includer.parts[0] != "sdk":
        return "the host's headers are included in sdk/ alone"
    if from_plugin and to_plugin:
        upper, lower = layer_of(includer), layer_of(included)
        if upper[1] != lower[1] and upper[0] <= lower[0]:
            return f"{upper[2]} must not see {lower[2]}"
    return ""


def circles(graph):
    """Include circles, each as the list of its files."""
    state, found = {}, []
    for start in graph:
        if start in state:
            continue
        state[start] = "open"
        trail = [(start, iter(graph[start]))]
        while trail:
            node, rest = trail[-1]
            following = next(rest, None)
            if following is None:
                state[node] = "done"
                trail.pop()
            elif state.get(following) == "open":
                names = [entry[0] for entry in trail]
                found.append(names[names.index(following):] + [following])
            elif following not in state:
                state[following] = "open"
                trail.append((following, iter(graph.get(following, ()))))
    return found


def check_includes(root):
    public = public_headers(root)
    graph, problems = {}, []
    for path in files_of(root, (".h", ".cpp")):
        graph[path] = []
        includes = list(includes_of(root / path))
        for number, name, quoted in includes:
            target = resolve(root, path, name, quoted)
            if target is None:
                continue
            if target != path:
                graph[path].append(target)
            reason = wrong_arrow(path, target, public) or wrong_way_between_rooms(path, target)
            if reason:
                problems.append(f"{path}:{number}: includes {name}: {reason}")
        own = path.with_suffix(".h")
        if path.suffix == ".cpp" and (root / own).is_file():
            first = resolve(root, path, *includes[0][1:]) if includes else None
            if first != own:
                problems.append(f"{path}: does not include its own header first")
    for circle in circles(graph):
        problems.append("include circle: " + " -> ".join(map(str, circle)))
    return problems


# --- source lists -------------------------------------------------------------------------------


def check_lists(root):
    problems = []
    suffix = r"\.(cpp|h|ui|qrc|ts|v|sv|svh)"
    source = re.compile(r"[\w@./-]+" + suffix)
    for path in files_of(root, (".txt", ".cmake")):
        text = re.sub(r"#[^\n]*", "", text_of(root / path))
        if re.search(r"\bfile\s*\(\s*GLOB[^)]*" + suffix, text, re.I):
            problems.append(f"{path}: lists files by a pattern; name them")
        previous = None
        for word in re.findall(r'"[^"]*"|[^\s()]+|[()]', text):
            if not source.fullmatch(word):
                previous = None
                continue
            if previous is not None and word <= previous:
                problems.append(f"{path}: {word} stands behind {previous}")
            previous = word
    return problems


# --- names --------------------------------------------------------------------------------------


def check_names(root):
    """Compares the names of test programs and test classes: tst_thing.cpp has the class TestThing."""
    problems = []
    for path in files_of(root, (".cpp",)):
        if path.parts[0] != "tests" or not path.name.startswith("tst_"):
            continue
        classes = re.findall(r"^class (\w+)", text_of(root / path), re.M)
        expected = path.stem.replace("tst_", "test", 1)
        if not any(name.startswith("Test") and name.lower() == expected for name in classes):
            problems.append(f"{path}: has no class Test... of the name of the file")
    return problems


# --- licence ------------------------------------------------------------------------------------


def needs_licence(root, path):
    if path.parts[0] == "tests" and "data" in path.parts:
        return False
    if path.suffix in (".cpp", ".h", ".py", ".cmake", ".qrc", ".v", ".sv", ".svh", ".vh", ".sh",
                       ".bash", ".desktop", ".svg", ".1"):
        return True
    if path.name == "CMakeLists.txt":
        return True
    with open(root / path, "rb") as file:
        return file.read(2) == b"#!"


def check_licence(root):
    problems = []
    for path in files_of(root, None):
        if not needs_licence(root, path):
            continue
        head = "\n".join(text_of(root / path).splitlines()[:5])
        for tag in ("SPDX-FileCopyrightText: The TARN Inserter authors",
                    "SPDX-License-Identifier: Apache-2.0"):
            if tag not in head:
                problems.append(f"{path}: no line \"{tag}\" at the top")
    return problems


# --- format -------------------------------------------------------------------------------------


def check_format(root):
    sources = [str(root / path) for path in files_of(root, (".h", ".cpp"))]
    result = subprocess.run(["clang-format", "--dry-run", "-Werror", "--style=file", *sources],
                            capture_output=True, text=True, check=False)
    if result.returncode == 0:
        return []
    found = [line for line in result.stderr.splitlines() if ": error:" in line]
    return found or [result.stderr.strip() or "clang-format failed"]


# --- links --------------------------------------------------------------------------------------


def anchors_of(text):
    """The names under which the headings of a Markdown text can be linked to."""
    headings = re.findall(r"^#+ (.*)$", text, re.MULTILINE)
    return {re.sub(r"[^\w -]", "", heading).lower().replace(" ", "-") for heading in headings}


def check_links(root):
    """Follows the links between the documents and finds pictures that no document shows."""
    problems = []
    reached = set()
    for path in [*sorted(root.glob("*.md")), *sorted((root / "docs").rglob("*.md"))]:
        for link in re.findall(r"\]\(([^)\s]+)\)", text_of(path)):
            name, _, anchor = link.partition("#")
            target = (path.parent / name).resolve() if name else path
            reached.add(target)
            if "://" in link:
                continue
            if not target.exists():
                problems.append(f"{path.relative_to(root)}: no file {name}")
            elif anchor and anchor not in anchors_of(text_of(target)):
                problems.append(f"{path.relative_to(root)}: no heading for {link}")
    for picture in sorted((root / "docs").rglob("*.png")):
        if picture not in reached:
            problems.append(f"{picture.relative_to(root)}: no document shows it")
    return problems


# --- version ------------------------------------------------------------------------------------


def check_version(root):
    """The version stands in project() alone, and the changelog begins with it."""
    project = re.search(r"^project\([^)]*?VERSION (\d+\.\d+\.\d+)", text_of(root / "CMakeLists.txt"), re.M)
    if not project:
        return ["CMakeLists.txt: project() has no version of three numbers"]
    version, log = project.group(1), pathlib.Path("CHANGELOG.md")
    problems = []
    newest = re.search(r"^## (\S+)", text_of(root / log), re.M) if (root / log).is_file() else None
    if not newest or newest.group(1) != version:
        problems.append(f"{log}: does not begin with version {version}")
    copy = re.compile(rf"(?<![\d.]){re.escape(version)}(?![\d.]*\d)".encode())
    documents = [path.relative_to(root) for path in sorted((root / "docs").rglob("*.md"))]
    for path in files_of(root, None) + documents:
        if path == log:
            continue
        found = len(copy.findall((root / path).read_bytes()))
        if found > (path == pathlib.Path("CMakeLists.txt")):
            problems.append(f"{path}: has a copy of the version {version}")
    return problems


# --- headers ------------------------------------------------------------------------------------


def is_first_in_its_source(root, path):
    """Whether the header's own source file includes it before anything else."""
    source = (root / path).with_suffix(".cpp")
    first = re.search(r"^\s*#\s*include\s*(.*)", text_of(source), re.M) if source.is_file() else None
    return bool(first) and first.group(1) == f'"{path.name}"'


def check_headers(root, command):
    """Compiles each public header of the host and each header of plug-in, ground and tool by itself.

    But not what builds without precompiled headers show (sdkbuild.cmake for plug-in and ground, the
    tool's own build): a header that is the first in its source file is compiled alone there.
    """
    headers = sorted(public_headers(root)) + [
        path for path in files_of(root, (".h",))
        if path.parts[0] in PLUGIN_FOLDERS + (GROUND_FOLDER, TOOL_FOLDER)
        and not is_first_in_its_source(root, path)]

    def compile_one(path):
        # From the standard input, so that "#pragma once in main file" is no issue.
        name = str(path.relative_to("host")) if path.parts[0] == "host" else str(path)
        result = subprocess.run(
            [*command, "-fsyntax-only", "-x", "c++", "-"], input=f"#include <{name}>\n",
            capture_output=True, text=True, check=False)
        return f"{path} does not compile alone:\n{result.stderr}" if result.returncode else ""

    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        return [problem for problem in pool.map(compile_one, headers) if problem]


CHECKS = {
    "includes": check_includes,
    "lists": check_lists,
    "names": check_names,
    "licence": check_licence,
    "format": check_format,
    "links": check_links,
    "version": check_version,
    "headers": check_headers,
}


def main(arguments):
    if len(arguments) < 2 or arguments[0] not in CHECKS:
        print(__doc__)
        return 2
    root = pathlib.Path(arguments[1]).resolve()
    if arguments[0] == "headers":
        problems = check_headers(root, arguments[2:])
    else:
        problems = CHECKS[arguments[0]](root)
    print("\n".join(problems) if problems else f"{arguments[0]}: nothing found")
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
