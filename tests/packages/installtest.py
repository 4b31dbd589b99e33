#!/usr/bin/env python3
# SPDX-FileCopyrightText: The TARN Inserter authors
# SPDX-License-Identifier: Apache-2.0
"""Installs the Debian packages into a scratch root, uses them, upgrades and removes them.

usage: installtest.py [--shipped] SOURCES PACKAGES

PACKAGES is the folder with the two packages, or a build tree, of which they are made first and which
is installed to a prefix too. --shipped is for packages that users get: their binaries are hardened
and name no folder of the build, and the whole plug-in is built against the installed SDK; otherwise
only two files of it are compiled. Touches nothing outside the scratch root; whoever is not root
needs fakeroot. Prints what does not hold and exits with 1.
"""

import argparse
import functools
import hashlib
import json
import os
import pathlib
import re
import shlex
import shutil
import signal
import stat
import subprocess
import sys
import tempfile
import time

WORKBENCH, DEVELOPMENT = "tarn-workbench", "tarn-workbench-dev"
EXAMPLES = {"sensorhub": [], "packetfilter": [], "motordrive": ["ghdl"]}  # The tools each needs.
TYPE = "application/x-tarn+xml"
ICON_SIZES = (16, 22, 24, 32, 48, 64, 128, 256)

PROGRAM = re.compile(r"/bin/|\.sh$")

# Where the files of each package belong. {lib} is the folder of the architecture's libraries.
ALLOWED = {
    WORKBENCH: (
        r"usr/bin/(tarn|tarn-workbench)",
        r"usr/lib/{lib}/tarn/libtarnhost_\w+\.so\.\d+(\.\d+\.\d+)?",
        r"usr/lib/{lib}/tarn/plugins/libTarnInserter\.so",
        r"usr/share/applications/tarn-workbench\.desktop",
        r"usr/share/bash-completion/completions/tarn",
        r"usr/share/doc/tarn-workbench/(README\.md|changelog\.gz|changelog\.Debian\.gz|copyright"
        r"|examples|docs/[\w-]+\.md|docs/images/[\w-]+\.(png|svg))",
        r"usr/share/icons/hicolor/\d+x\d+/(apps/tarn-workbench|mimetypes/application-x-tarn\+xml)"
        r"\.png",
        r"usr/share/icons/hicolor/scalable/(apps/tarn-workbench|mimetypes/application-x-tarn\+xml)"
        r"\.svg",
        r"usr/share/lintian/overrides/tarn-workbench",
        r"usr/share/man/man1/(tarn|tarn-workbench)\.1\.gz",
        r"usr/share/mime/packages/tarn-workbench\.xml",
        r"usr/share/tarn/examples/([\w-]+\.sh|\w+/[\w./-]+)",
        r"usr/share/tarn/schema/[\w-]+\.schema\.json",
        r"usr/share/tarn/translations/tarninserter_\w+\.qm",
    ),
    DEVELOPMENT: (
        r"usr/include/tarn-host/(core|dev|extsys|netweir|qutil|te)/\w+\.h",
        r"usr/include/tarn-inserter/plugin/\w+\.h",
        r"usr/lib/{lib}/cmake/(TarnHost|TarnInserter)/\w+(-\w+)?\.cmake",
        r"usr/lib/{lib}/tarn/libtarnhost_\w+\.so",
        r"usr/share/doc/tarn-workbench-dev/(changelog\.gz|changelog\.Debian\.gz|copyright)",
    ),
}
# What must be there, beside one library for each of the host.
REQUIRED = {
    WORKBENCH: (
        "usr/bin/tarn", "usr/bin/tarn-workbench",
        "usr/lib/{lib}/tarn/plugins/libTarnInserter.so",
        "usr/share/applications/tarn-workbench.desktop",
        "usr/share/bash-completion/completions/tarn",
        "usr/share/doc/tarn-workbench/copyright",
        "usr/share/doc/tarn-workbench/changelog.Debian.gz",
        "usr/share/doc/tarn-workbench/docs/user-guide.md",
        "usr/share/icons/hicolor/scalable/apps/tarn-workbench.svg",
        "usr/share/icons/hicolor/scalable/mimetypes/application-x-tarn+xml.svg",
        *(f"usr/share/icons/hicolor/{size}x{size}/apps/tarn-workbench.png" for size in ICON_SIZES),
        "usr/share/man/man1/tarn.1.gz", "usr/share/man/man1/tarn-workbench.1.gz",
        "usr/share/mime/packages/tarn-workbench.xml",
        *(f"usr/share/tarn/examples/{name}/{name}.json" for name in EXAMPLES),
        "usr/share/tarn/schema/tarn-config.schema.json",
        "usr/share/tarn/translations/tarninserter_en.qm",
    ),
    DEVELOPMENT: (
        "usr/include/tarn-host/core/iview.h", "usr/include/tarn-host/netweir/rtlnetlist.h",
        "usr/include/tarn-inserter/plugin/tarnviewmanager.h",
        "usr/lib/{lib}/cmake/TarnHost/TarnHostConfig.cmake",
        "usr/lib/{lib}/cmake/TarnInserter/TarnInserterConfig.cmake",
        "usr/lib/{lib}/tarn/libtarnhost_netlist.so", "usr/lib/{lib}/tarn/libtarnhost_netweir.so",
        "usr/share/doc/tarn-workbench-dev/copyright",
        "usr/share/doc/tarn-workbench-dev/changelog.Debian.gz",
    ),
}
# Links of the installed documents that lead into the source tree.
SOURCE_LINKS = ("LICENSE", "CONTRIBUTING.md", "CHANGELOG.md")


class Failure(Exception):
    """A step failed, and the steps behind it have nothing to work on."""


class Problems:
    def __init__(self):
        self.found = []

    def expect(self, condition, text):
        if not condition:
            self.found.append(text)
            print(f"installtest: {text}", flush=True)


def run(command, timeout=300, **options):
    """The standard output of a command, which must succeed."""
    result = run_any(command, timeout, **options)
    if result.returncode:
        raise Failure(f"{' '.join(map(str, command))}: exit code {result.returncode}\n"
                      f"{result.stdout}{result.stderr}")
    return result.stdout


def run_any(command, timeout=300, **options):
    """Runs a command in a process group of its own, which ends with it."""
    with subprocess.Popen([str(word) for word in command], stdin=subprocess.DEVNULL,
                          stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True, errors="replace",
                          start_new_session=True, **options) as process:
        try:
            output, errors = process.communicate(timeout=timeout)
        except subprocess.TimeoutExpired as error:
            os.killpg(process.pid, signal.SIGKILL)
            raise Failure(f"{command[0]}: not done within {timeout} s") from error
    return subprocess.CompletedProcess(command, process.returncode, output, errors)


# --- packages -----------------------------------------------------------------------------------


class Package:
    """A package file: its fields and its entries."""

    def __init__(self, path):
        self.path = path
        text = run(["dpkg-deb", "-f", path])
        self.fields = dict(re.findall(r"^(\S+): ((?:.*)(?:\n .*)*)", text, re.M))
        self.entries = {}  # Path without leading "./": (mode and kind, owner, link target).
        for line in run(["dpkg-deb", "-c", path]).splitlines():
            mode, owner, _, _, _, name = line.split(None, 5)
            name, _, target = name.partition(" -> ")
            self.entries[name.removeprefix("./").rstrip("/")] = (mode, owner, target)

    @property
    def name(self):
        return self.fields["Package"]

    def files(self):
        return {name for name, (mode, _, _) in self.entries.items() if mode[0] != "d"}

    def dependencies(self, field):
        """Lists of alternative names."""
        groups = self.fields.get(field, "").split(",")
        return [[re.split(r"[\s:(]", name.strip())[0] for name in group.split("|")]
                for group in groups if group.strip()]


def make_packages(build_tree, folder, problems):
    """Makes the packages twice and compares the bytes."""
    environment = {**os.environ, "SOURCE_DATE_EPOCH": "1000000000"}
    for place in (folder, folder / "again"):
        run(["cpack", "--config", build_tree / "CPackConfig.cmake", "-B", place], env=environment)
        shutil.rmtree(place / "_CPack_Packages")
    for path in folder.glob("*.deb"):
        problems.expect(path.read_bytes() == (folder / "again" / path.name).read_bytes(),
                        f"{path.name}: not the same bytes when made again")


def check_prefix(build_tree, packages, folder, problems):
    """Compares an installation without packages, to any prefix, with the packages."""
    prefix = folder / "any prefix"
    run(["cmake", "--install", build_tree, "--prefix", prefix])
    installed = {str(path.relative_to(prefix)) for path in prefix.rglob("*")
                 if path.is_symlink() or not path.is_dir()}
    packed = {name.removeprefix("usr/") for package in packages.values()
              for name in package.files()}
    problems.expect(installed == packed, f"cmake --install differs in {installed ^ packed}")
    run([prefix / "bin/tarn", "--version"], env={})
    shutil.rmtree(prefix)


def find_packages(folder):
    found = {}
    for path in sorted(folder.glob("*.deb")):
        package = Package(path)
        if package.name in found:
            raise Failure(f"{folder}: more than one package {package.name}")
        found[package.name] = package
    if set(found) != {WORKBENCH, DEVELOPMENT}:
        raise Failure(f"{folder}: expected two packages, got {sorted(found)}")
    return found


def check_fields(package, version, problems):
    expected = {
        "Source": WORKBENCH, "Version": f"{version}-1", "Priority": "optional",
        "Section": {WORKBENCH: "electronics", DEVELOPMENT: "libdevel"}[package.name],
        "Architecture": run(["dpkg", "--print-architecture"]).strip(),
    }
    for field, value in expected.items():
        actual = package.fields.get(field)
        problems.expect(actual == value, f"{package.name}: {field} is {actual}, not {value}")
    for field, pattern in (("Maintainer", r".+ <\S+@\S+>"), ("Homepage", r"https://\S+"),
                           ("Description", r"[^\n]{20,80}(\n .+)+"), ("Installed-Size", r"\d+")):
        problems.expect(re.fullmatch(pattern, package.fields.get(field, "")),
                        f"{package.name}: the field {field} is missing or wrong")
    control = run(["dpkg-deb", "--ctrl-tarfile", package.path], encoding="latin-1")
    for script in ("preinst", "postinst", "prerm", "postrm", "conffiles"):
        problems.expect(f"./{script}\0" not in control, f"{package.name}: has a {script}")


def check_entries(package, lib, problems):
    allowed = [re.compile(pattern.replace("{lib}", re.escape(lib)))
               for pattern in ALLOWED[package.name]]
    for name, (mode, owner, target) in package.entries.items():
        problems.expect(owner == "root/root", f"{package.name}: {name} belongs to {owner}")
        if mode[0] == "d":
            problems.expect(mode == "drwxr-xr-x", f"{package.name}: folder {name} has {mode}")
            continue
        problems.expect(any(pattern.fullmatch(name) for pattern in allowed),
                        f"{package.name}: {name} does not belong there")
        expected = {"l": "lrwxrwxrwx", "-": "-rwxr-xr-x" if PROGRAM.search(name) else "-rw-r--r--"}
        problems.expect(mode == expected.get(mode[0]), f"{package.name}: {name} has {mode}")
        problems.expect(not target.startswith("/"), f"{package.name}: {name} leads to {target}")
    for name in REQUIRED[package.name]:
        problems.expect(name.replace("{lib}", lib) in package.entries,
                        f"{package.name}: has no {name.replace('{lib}', lib)}")


def older_version(package, old, folder):
    """The same package as an older version with one more file."""
    tree = folder / package.name
    run(["dpkg-deb", "-R", package.path, tree])
    control = tree / "DEBIAN/control"
    control.write_text(control.read_text().replace(package.fields["Version"], old))
    extra = tree / f"usr/share/{package.name}-old/gone"
    extra.parent.mkdir()
    extra.write_text("of the old version\n")
    path = folder / f"{package.name}.deb"
    run(["dpkg-deb", "--root-owner-group", "-Znone", "-b", tree, path])
    shutil.rmtree(tree)
    return path


# --- scratch root -------------------------------------------------------------------------------


class Root:
    """A folder with a package database of its own.

    The database says that those packages are installed that this machine has and that ours depend
    on. So dpkg checks the dependencies.
    """

    def __init__(self, folder, packages):
        self.path = folder / "scratch root"
        self.home = folder / "home"
        self.admin = self.path / "var/lib/dpkg"
        for name in ("info", "updates", "triggers"):
            (self.admin / name).mkdir(parents=True)
        (self.path / "var/log").mkdir()
        self.home.mkdir()
        (self.admin / "info/format").write_text("1\n")
        (self.admin / "available").touch()
        names = {name for package in packages.values()
                 for group in package.dependencies("Depends") for name in group}
        (self.admin / "status").write_text("".join(map(self.known, sorted(names - set(packages)))))

    def known(self, name):
        result = run_any(["dpkg-query", "-s", name])
        if result.returncode or "\nStatus: install ok installed\n" not in result.stdout:
            return ""
        architecture = re.search(r"^Architecture: (.*)$", result.stdout, re.M).group(1)
        same = "\nMulti-Arch: same\n" in result.stdout
        (self.admin / f"info/{name}{':' + architecture if same else ''}.list").write_text("/.\n")
        return re.sub(r"^Conffiles:\n( .*\n)+", "", result.stdout, flags=re.M) + "\n"

    def dpkg(self, *arguments):
        # The machine's own settings of dpkg may leave out documents, and name a log.
        command = ["dpkg", f"--root={self.path}", f"--log={self.path}/var/log/dpkg.log",
                   "--path-include=*", "--no-debsig", *arguments]
        if os.geteuid() != 0:
            command = ["fakeroot", "--", *command]
        return run(command, env={"PATH": "/usr/sbin:/usr/bin:/sbin:/bin", "LC_ALL": "C.UTF-8"})

    def installed(self):
        """Package: version, of ours."""
        text = (self.admin / "status").read_text()
        return {name: version for name, version in
                re.findall(rf"^Package: ({WORKBENCH}\S*)\n(?:.+\n)*?Version: (\S+)", text, re.M)}

    def snapshot(self):
        """Every path with mode and content; of the database the lists of files alone."""
        found = {}
        for folder, folders, files in os.walk(self.path):
            for name in folders + files:
                path = pathlib.Path(folder, name)
                relative = str(path.relative_to(self.path))
                if relative.startswith("var/") and not relative.startswith("var/lib/dpkg/info"):
                    continue
                status = path.lstat()
                content = os.readlink(path) if path.is_symlink() else (
                    hashlib.sha256(path.read_bytes()).hexdigest() if path.is_file() else "")
                found[relative] = (stat.filemode(status.st_mode), content)
        return found

    def environment(self, **more):
        """For what is installed: nothing of the session that runs the test."""
        return {"PATH": "/usr/bin:/bin", "HOME": str(self.home), "LC_ALL": "C.UTF-8",
                "TMPDIR": str(self.home), "XDG_RUNTIME_DIR": str(self.home),
                "XDG_DATA_DIRS": f"{self.path}/usr/share:/usr/share",
                "QT_QPA_PLATFORM": "offscreen", **more}

    def run(self, program, *arguments, **options):
        """Runs an installed program in the home folder."""
        return run([self.path / "usr/bin" / program, *arguments], cwd=self.home,
                   env=self.environment(), **options)

    def processes(self):
        """The processes that run a program of this root."""
        found = []
        for process in pathlib.Path("/proc").glob("[0-9]*"):
            try:
                program = os.readlink(process / "exe")
            except OSError:
                continue
            if program.startswith(str(self.path)):
                found.append(f"{program} ({process.name})")
        return found


# --- binaries -----------------------------------------------------------------------------------


def is_elf(path):
    with open(path, "rb") as file:
        return file.read(4) == b"\x7fELF"


@functools.lru_cache(maxsize=None)
def owner_of(library):
    """The package that a library of the machine belongs to."""
    # Its folder may be known by the name with or without "/usr".
    names = [library, os.path.realpath(library)]
    for name in names + [name.removeprefix("/usr") for name in names] + ["/usr" + library]:
        result = run_any(["dpkg-query", "-S", name])
        if result.returncode == 0:
            return result.stdout.split(":")[0]
    return None


def check_binaries(root, package, shipped, problems):
    """Looks at every program and library, and compares what they need with Depends."""
    declared = package.dependencies("Depends")
    names = {name for group in declared for name in group}
    needed = set()
    for name in sorted(package.files()):
        path = root.path / name
        if path.is_symlink() or not is_elf(path):
            continue
        header = run(["readelf", "-hlSdW", path])
        for runpath in re.findall(r"\((?:RPATH|RUNPATH)\).*\[(.*)\]", header):
            problems.expect(all(part.startswith("$ORIGIN") for part in runpath.split(":")),
                            f"{name}: looks for libraries in {runpath}")
        problems.expect(".symtab" not in header and ".debug_" not in header, f"{name}: not stripped")
        if shipped:
            check_hardening(name, path, header, problems)
        for line in run(["ldd", path], env=root.environment()).splitlines():
            match = re.match(r"\s+(\S+) => (\S.*) \(0x", line)
            if not match:
                problems.expect("not found" not in line, f"{name}: {line.strip()}")
                continue
            library, place = match.groups()
            if "tarn" in library.lower():
                problems.expect(place.startswith(str(root.path)), f"{name}: takes {place}")
            elif f"[{library}]" in header:
                owner = owner_of(place)
                needed.add(owner)
                problems.expect(owner in names, f"{name}: needs {library} of {owner}, which "
                                f"{package.name} does not depend on")
    for group in declared:
        if group[0].startswith("lib"):
            problems.expect(needed & set(group), f"{package.name}: nothing needs {group[0]}")


def check_hardening(name, path, header, problems):
    problems.expect("GNU_RELRO" in header, f"{name}: not linked with relro")
    problems.expect(re.search(r"Type:\s+DYN", header), f"{name}: not position independent")
    problems.expect(not re.search(r"GNU_STACK.* RWE ", header), f"{name}: has an executable stack")
    symbols = run(["readelf", "--dyn-syms", "-W", path])
    # Only what has code needs libc.
    problems.expect("__stack_chk_fail" in symbols or "[libc.so" not in header,
                    f"{name}: built without stack protector")


def check_no_build_folder(root, package, sources, problems):
    for name in sorted(package.files()):
        path = root.path / name
        if not path.is_symlink():
            problems.expect(os.fsencode(sources) not in path.read_bytes(),
                            f"{name}: names the folder of the build")


# --- use ----------------------------------------------------------------------------------------


def check_documents(root, problems):
    """Follows the links of the installed documents."""
    folder = root.path / "usr/share/doc/tarn-workbench"
    for path in sorted(folder.rglob("*.md")):
        for link in re.findall(r"\]\(([^)\s#]+)[^)]*\)", path.read_text()):
            target = pathlib.Path(os.path.normpath(path.parent / link))
            if "://" not in link and str(target.relative_to(folder)) not in SOURCE_LINKS:
                problems.expect(target.exists(), f"{path.relative_to(root.path)}: no {link}")
    problems.expect((folder / "examples/sensorhub/sensorhub.json").exists(),
                    "the link to the examples leads nowhere")


def check_desktop(root, problems):
    """The menu entry, and the type that the desktop gives to files, by name and by content."""
    run(["desktop-file-validate", root.path / "usr/share/applications/tarn-workbench.desktop"])
    data = root.home / "data"
    packages = data / "mime/packages"
    packages.mkdir(parents=True)
    shutil.copy("/usr/share/mime/packages/freedesktop.org.xml", packages)
    shutil.copy(root.path / "usr/share/mime/packages/tarn-workbench.xml", packages)
    environment = root.environment(XDG_DATA_HOME=str(data), XDG_DATA_DIRS=str(data))
    log = run_any(["update-mime-database", data / "mime"], env=environment)
    problems.expect(log.returncode == 0 and "tarn" not in log.stderr,
                    f"update-mime-database: {log.stderr}")

    declaration = '<?xml version="1.0" encoding="UTF-8"?>\n'
    example = (root.path / "usr/share/tarn/examples/sensorhub/sensorhub.tarn").read_text()
    cases = {
        "no-xml.tarn": ("text\n", TYPE),
        "example.tarn": (example, TYPE),
        "example.copy": (example, TYPE),
        "no-declaration.copy": ("<TARN_CONFIG>\n<Version>1.0</Version></TARN_CONFIG>\n", TYPE),
        "comment.copy": (f"{declaration}<!-- mine -->\n<TARN_CONFIG/>\n", TYPE),
        "byte-order-mark.copy": (f"\ufeff{declaration}<TARN_CONFIG/>\n", TYPE),
        "other.copy": (f"{declaration}<CONFIG/>\n", "application/xml"),
        "text.copy": ("about TARN_CONFIG\n", "text/plain"),
        "data.xml": (f"{declaration}<data/>\n", "application/xml"),
    }
    for name, (content, expected) in cases.items():
        path = root.home / name
        path.write_text(content)
        output = run(["gio", "info", "-a", "standard::content-type", path], env=environment)
        actual = output.split("standard::content-type:")[-1].strip()
        problems.expect(actual == expected, f"{name} is taken for {actual}, not {expected}")


def check_icons(root, problems):
    for path in sorted((root.path / "usr/share/icons/hicolor").rglob("*.png")):
        width, height = (int.from_bytes(path.read_bytes()[at:at + 4], "big") for at in (16, 20))
        folder = path.parts[-3]
        problems.expect(folder == f"{width}x{height}", f"{path.name}: {width}x{height} in {folder}")


def usable_examples():
    return [name for name, tools in EXAMPLES.items() if all(map(shutil.which, tools))]


def check_workbench(root, version, problems):
    problems.expect(root.run("tarn-workbench", "--version") == f"tarn-workbench {version}\n",
                    f"tarn-workbench --version does not say {version}")
    for name in usable_examples():
        folder = root.path / f"usr/share/tarn/examples/{name}"
        shots = root.home / f"shots-{name}"
        report = root.run("tarn-workbench", "--session", shots, folder / f"{name}.json",
                          folder / f"{name}.tarn")
        problems.expect("check: passed, a copy was saved" in report, f"session of {name}: {report}")
        problems.expect(len(list(shots.glob("*.png"))) == 3, f"session of {name}: no screenshots")


def check_tool(root, version, problems):
    problems.expect(root.run("tarn", "--version") == f"tarn {version}\n",
                    f"tarn --version does not say {version}")
    for name in usable_examples():
        file = root.path / f"usr/share/tarn/examples/{name}/{name}.tarn"
        problems.expect("in0" in root.run("tarn", "show", file), f"tarn show {name} shows no port")
        # With the project file beside it.
        problems.expect(root.run("tarn", "check", file) == "", f"tarn check {name} has findings")
    completion = root.path / "usr/share/bash-completion/completions/tarn"
    words = run(["bash", "-c", f"""COMP_WORDS=(tarn ch); COMP_CWORD=1; . '{completion}'
        $(complete -p tarn | sed 's/.*-F \\([^ ]*\\).*/\\1/') tarn ch tarn
        echo "${{COMPREPLY[@]}}" """])
    problems.expect(words.strip() == "check", f"tarn ch is completed to: {words}")


# --- development --------------------------------------------------------------------------------


def configure(source, folder, *arguments):
    run(["cmake", "-S", source, "-B", folder, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=Release",
         "-DCMAKE_CXX_FLAGS_RELEASE=-O0", *arguments])


def check_sdk(root, lib, version, sources, problems):
    """Builds a program of somebody else against the installed packages, and runs it."""
    folder = root.home / "consumer"
    configure(sources / "tests/packages/consumer", folder,
              f"-DCMAKE_PREFIX_PATH={root.path}/usr", f"-DTARN_VERSION={version}")
    run(["cmake", "--build", folder])
    output = run([folder / "consumer"], env=root.environment())
    problems.expect(output == "net 1, manager 1\n", f"the program of somebody else says: {output}")
    libraries = run(["ldd", folder / "consumer"])
    problems.expect(f"{root.path}/usr/lib/{lib}/tarn/libtarnhost_netlist.so" in libraries,
                    "the program of somebody else does not use the installed libraries")


def check_plugin_build(root, lib, sources, shipped, problems):
    """Builds the plug-in against the installed SDK, and opens an example with it.

    When not shipped, compiles two files that see most of the headers: tree.sdkbuild builds the whole
    with the same files, which the component sdk installs.
    """
    folder = root.home / "plugin build"
    configure(sources, folder, f"-DTARN_SDK_DIR={root.path}/usr",
              "-DCMAKE_EXPORT_COMPILE_COMMANDS=ON")
    if not shipped:
        compile_files(folder, sources, ("model/designreading.cpp", "plugin/tarnviewmanager.cpp"))
        return
    run(["cmake", "--build", folder], timeout=1200)
    example = root.path / "usr/share/tarn/examples/sensorhub/sensorhub"
    report = root.run("tarn-workbench", "--plugins", folder / f"lib/{lib}/tarn/plugins",
                      "--session", root.home / "shots-plugin", f"{example}.json", f"{example}.tarn")
    problems.expect("check: passed" in report, f"session with the built plug-in: {report}")


def compile_files(folder, sources, names):
    """Compiles these files alone: a target would need all that it links."""
    commands = json.loads((folder / "compile_commands.json").read_text())
    for name in names:
        entry = next(entry for entry in commands if entry["file"] == str(sources / name))
        object_file = shlex.split(entry["command"])[-3]
        pathlib.Path(entry["directory"], object_file).parent.mkdir(parents=True, exist_ok=True)
        run(["sh", "-c", entry["command"]], cwd=entry["directory"])


# --- the test -----------------------------------------------------------------------------------


def step(check, *arguments):
    """Runs a check and says how long it took."""
    start = time.monotonic()
    check(*arguments)
    print(f"installtest: {check.__name__} {time.monotonic() - start:.1f} s", flush=True)


def version_of(sources):
    text = (sources / "CMakeLists.txt").read_text()
    return re.search(r"^project\([^)]*?VERSION (\S+)", text, re.M).group(1)


def check_upgrade(root, packages, version, folder, problems):
    """Installs an older version, then the packages over it."""
    # "~" sorts before the end.
    old = f"{version}~0-1"
    root.dpkg("-i", *(older_version(package, old, folder) for package in packages.values()))
    problems.expect(root.installed() == dict.fromkeys(packages, old), "the old version is missing")
    root.dpkg("-i", *(package.path for package in packages.values()))
    problems.expect(root.installed() == dict.fromkeys(packages, f"{version}-1"),
                    f"after the upgrade there is {root.installed()}")
    entries = set().union(*(package.entries for package in packages.values())) - {"", "."}
    present = {name for name in root.snapshot() if not name.startswith("var")}
    for name in sorted(present ^ entries):
        problems.expect(False, f"{name}: {'left' if name in present else 'missing'} "
                        "after the upgrade")
    root.dpkg("--verify", *packages)


def check_removal(root, before, problems):
    root.dpkg("--purge", DEVELOPMENT, WORKBENCH)
    problems.expect(not root.installed(), f"still installed: {root.installed()}")
    after = root.snapshot()
    for name in sorted(set(before) ^ set(after)):
        problems.expect(False, f"{name}: {'left behind' if name in after else 'taken along'}")


def check_installed(root, packages, arguments, problems):
    sources, lib, version = arguments.sources, arguments.lib, arguments.version
    step(check_binaries, root, packages[WORKBENCH], arguments.shipped, problems)
    step(check_documents, root, problems)
    step(check_icons, root, problems)
    step(check_desktop, root, problems)
    installed = root.snapshot()
    step(check_tool, root, version, problems)
    step(check_workbench, root, version, problems)
    step(check_sdk, root, lib, version, sources, problems)
    step(check_plugin_build, root, lib, sources, arguments.shipped, problems)
    problems.expect(root.snapshot() == installed, "using the packages changed installed files")
    if arguments.shipped:
        for package in packages.values():
            check_no_build_folder(root, package, sources, problems)


def test(arguments, folder, problems):
    if (arguments.packages / "CPackConfig.cmake").is_file():
        step(make_packages, arguments.packages, folder / "packages", problems)
        packages = find_packages(folder / "packages")
        step(check_prefix, arguments.packages, packages, folder, problems)
    else:
        packages = find_packages(arguments.packages)
    arguments.version = version_of(arguments.sources)
    arguments.lib = run(["dpkg-architecture", "-qDEB_HOST_MULTIARCH"]).strip()
    for package in packages.values():
        check_fields(package, arguments.version, problems)
        check_entries(package, arguments.lib, problems)
    shared = packages[WORKBENCH].files() & packages[DEVELOPMENT].files()
    problems.expect(not shared, f"in both packages: {sorted(shared)}")

    root = Root(folder, packages)
    before = root.snapshot()
    step(check_upgrade, root, packages, arguments.version, folder, problems)
    check_installed(root, packages, arguments, problems)
    step(check_removal, root, before, problems)
    problems.expect(not root.processes(), f"still running: {root.processes()}")


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--shipped", action="store_true")
    parser.add_argument("sources", type=pathlib.Path)
    parser.add_argument("packages", type=pathlib.Path)
    arguments = parser.parse_args()
    arguments.sources = arguments.sources.resolve()
    arguments.packages = arguments.packages.resolve()
    problems = Problems()
    start = time.monotonic()
    with tempfile.TemporaryDirectory(prefix="tarn-install-") as folder:
        try:
            test(arguments, pathlib.Path(folder).resolve(), problems)
        except Failure as failure:
            problems.expect(False, str(failure))
    count = len(problems.found)
    print(f"installtest: {count or 'no'} problem{'' if count == 1 else 's'}, "
          f"{time.monotonic() - start:.0f} s")
    return 1 if count else 0


if __name__ == "__main__":
    sys.exit(main())
