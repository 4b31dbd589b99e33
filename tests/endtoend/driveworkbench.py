#!/usr/bin/env python3
# SPDX-FileCopyrightText: The TARN Inserter authors
# SPDX-License-Identifier: Apache-2.0
"""Drives the workbench with mouse and keys under an X server of its own.

usage: driveworkbench.py WORKBENCH EXAMPLE_FOLDER SHOTS_FOLDER

Goes with a copy of the example through what a user does: adds and removes a core, saves, changes
files on disk and answers the banners, creates a file from the gallery, quits. Leaves one screenshot
a step in SHOTS_FOLDER. Ends with exit code 1 and the reason at the first thing that differs.
"""

import os
import re
import shutil
import subprocess
import sys
import tempfile
import time
from pathlib import Path

PATIENCE = 120  # seconds that a machine under load may take for one step
HIGHLIGHT = (48, 140, 198)  # of the selected item, in the style's own palette


class Failure(Exception):
    pass


def run(*command):
    return subprocess.run(command, check=True, capture_output=True).stdout


def wait_for(what, condition):
    deadline = time.monotonic() + PATIENCE
    while time.monotonic() < deadline:
        result = condition()
        if result:
            return result
        time.sleep(0.1)
    raise Failure("did not happen: " + what)


class Image:
    """The screen as pixels."""

    def __init__(self):
        # A P6 file: magic number, size and depth, then three bytes a pixel.
        data = run("import", "-window", "root", "-depth", "8", "ppm:-")
        header = re.match(rb"P6\s+(\d+)\s+(\d+)\s+255\s", data)
        self.width = int(header[1])
        self.height = int(header[2])
        self.rows = [
            data[header.end() + 3 * self.width * y : header.end() + 3 * self.width * (y + 1)]
            for y in range(self.height)
        ]

    def rows_with(self, colour, count):
        """The rows that hold at least `count` adjoining pixels of `colour`, with the column."""
        run_of_colour = bytes(colour) * count
        found = []
        for y, row in enumerate(self.rows):
            at = row.find(run_of_colour)
            if at >= 0:
                found.append((y, at // 3))
        return found

    def changed_box(self, other):
        """Left, top, right and bottom of what differs from `other`, None when nothing does."""
        rows = [y for y in range(self.height) if self.rows[y] != other.rows[y]]
        if not rows:
            return None
        left, right = self.width, 0
        for y in rows:
            columns = [
                x
                for x in range(self.width)
                if self.rows[y][3 * x : 3 * x + 3] != other.rows[y][3 * x : 3 * x + 3]
            ]
            left = min(left, columns[0])
            right = max(right, columns[-1])
        return left, rows[0], right, rows[-1]


class Screen:
    """Mouse, keys, windows and pixels of one X server."""

    def __init__(self, shots):
        self.shots = shots
        self.count = 0

    def key(self, *keys):
        for key in keys:
            run("xdotool", "key", "--clearmodifiers", key)
            time.sleep(0.2)

    def type(self, text):
        run("xdotool", "type", "--delay", "20", text)
        time.sleep(0.2)

    def click(self, x, y, button=1):
        run("xdotool", "mousemove", str(x), str(y), "sleep", "0.2", "click", str(button))
        time.sleep(0.3)

    def titles(self):
        found = subprocess.run(
            ["xdotool", "search", "--onlyvisible", "--name", ".", "getwindowname", "%@"],
            capture_output=True,
            text=True,
        )
        return found.stdout.splitlines()

    def wait_for_window(self, title):
        wait_for(f'window "{title}"', lambda: title in self.titles())
        time.sleep(0.3)  # until the window manager has given it the focus

    def wait_for_no_window(self, title):
        wait_for(f'end of window "{title}"', lambda: title not in self.titles())
        time.sleep(0.3)

    def still(self):
        """The screen once nothing moves on it any more."""

        def unchanged():
            first = Image()
            time.sleep(0.4)
            second = Image()
            return second if first.changed_box(second) is None else None

        return wait_for("a screen at rest", unchanged)

    def shoot(self, name):
        self.count += 1
        run("import", "-window", "root", str(self.shots / f"{self.count:02}-{name}.png"))


class Workbench:
    """The application as a process and what it writes."""

    def __init__(self, program, project, configuration, log):
        self.log = log
        environment = dict(os.environ, QT_QPA_PLATFORM="xcb", QT_STYLE_OVERRIDE="Fusion")
        with open(log, "wb") as output:
            self.process = subprocess.Popen(
                [program, project, configuration],
                stdin=subprocess.DEVNULL,
                stdout=output,
                stderr=output,
                env=environment,
            )

    def lines(self):
        return self.log.read_text(errors="replace").splitlines()

    def wait_for_line(self, beginning, count=1):
        def written():
            if self.process.poll() is not None:
                raise Failure(f"the workbench ended, code {self.process.returncode}")
            return sum(line.startswith(beginning) for line in self.lines()) >= count

        wait_for(f'line "{beginning}" {count} times', written)


class Drive:
    def __init__(self, screen, workbench, folder):
        self.screen = screen
        self.workbench = workbench
        self.folder = folder
        self.file = folder / f"{folder.name}.tarn"

    def selected_core(self):
        """Row height, left and vertical middle of the selected item in the list of cores."""
        rows = wait_for("a selected core", lambda: Image().rows_with(HIGHLIGHT, 30))
        return len(rows), rows[0][1], (rows[0][0] + rows[-1][0]) // 2

    def expect_selected(self, row):
        def is_selected():
            return abs(self.selected_core()[2] - self.row_position(row)) <= 3

        wait_for(f"core {row} selected", is_selected)

    def row_position(self, row):
        return self.first_row + row * self.row_height

    def click_row(self, row, button=1):
        self.screen.click(self.left + 40, self.row_position(row), button)

    def choose_from_menu(self, row, entry):
        self.click_row(row, button=3)
        self.screen.key(*["Down"] * entry, "Return")

    def wait_for_banner(self, before):
        """Left, top, right and bottom of what changed on the screen."""

        def grown():
            box = Image().changed_box(before)
            return box and box[2] - box[0] > 300 and box

        wait_for("a banner", grown)
        return self.screen.still().changed_box(before)

    def answer_banner(self, before, button):
        """Button 0 is the upper one, 1 the lower one; both stand at the right end."""
        box = self.wait_for_banner(before)
        self.screen.shoot("banner")
        # The list of cores moved down by the height of the banner.
        height = self.selected_core()[2] - self.selected_before
        top = self.selected_before - self.row_height * 3 // 2
        self.screen.click(box[2] - 40, top + height * (1 + 2 * button) // 4)

    def remember_screen(self):
        before = self.screen.still()
        self.selected_before = self.selected_core()[2]
        return before

    def run(self):
        self.opens()
        self.adds_a_core_that_cannot_be_saved()
        self.removes_it_and_saves()
        self.reloads_a_changed_file()
        self.ignores_a_changed_source()
        self.closes_a_removed_file()
        self.creates_a_file()
        self.quits()

    def opens(self):
        self.workbench.wait_for_line("create tarn view: ")
        self.screen.still()
        self.screen.shoot("opened")
        self.row_height, self.left, self.first_row = self.selected_core()
        self.cores = self.file.read_bytes().count(b"<Core ")
        self.click_row(1)
        self.expect_selected(1)
        self.click_row(0)
        self.expect_selected(0)

    def adds_a_core_that_cannot_be_saved(self):
        before = self.file.read_bytes()
        self.choose_from_menu(0, 1)
        self.expect_selected(self.cores)
        self.screen.shoot("added")
        self.screen.key("ctrl+s")
        self.screen.wait_for_window("Error")
        self.screen.shoot("refused")
        self.screen.key("Return")
        self.screen.wait_for_no_window("Error")
        self.expect(self.file.read_bytes() == before, "a refused save leaves the file alone")

    def removes_it_and_saves(self):
        before = self.file.read_bytes()
        changed = self.file.stat().st_mtime_ns
        self.choose_from_menu(self.cores, 2)
        self.screen.wait_for_window("Remove TARn")
        self.screen.shoot("question")
        self.screen.key("Return")
        self.screen.wait_for_no_window("Remove TARn")
        self.workbench.wait_for_line("after changed")
        self.expect_selected(0)
        self.screen.key("ctrl+s")
        wait_for("a written file", lambda: self.file.stat().st_mtime_ns != changed)
        self.expect(self.file.read_bytes() == before, "unchanged content is rewritten as it was")
        self.workbench.wait_for_line("save lumo", 2)
        self.screen.still()
        self.screen.shoot("saved")

    def reloads_a_changed_file(self):
        config = self.file.read_bytes()
        one_core = re.sub(rb'    <Core index="1".*</Core>\n', b"", config, flags=re.DOTALL)
        before = self.remember_screen()
        self.file.write_bytes(one_core)
        self.answer_banner(before, 0)
        self.expect_selected(0)
        # There is no second core any more that could be selected.
        self.click_row(1)
        self.screen.still()
        self.expect_selected(0)
        self.screen.shoot("reloaded")

    def ignores_a_changed_source(self):
        source = sorted(self.folder.glob("rtl/*"))[0]
        before = self.remember_screen()
        source.write_bytes(source.read_bytes() + b"\n// changed\n")
        self.answer_banner(before, 1)
        self.expect_selected(0)

    def closes_a_removed_file(self):
        before = self.remember_screen()
        self.file.unlink()
        self.answer_banner(before, 1)
        self.workbench.wait_for_line(f"IView: {self.file.name} destoryed")
        self.screen.still()
        self.screen.shoot("closed")

    def creates_a_file(self):
        self.screen.key("ctrl+n")
        self.screen.wait_for_window("New File")
        self.screen.shoot("gallery")
        self.screen.key("Return")
        self.screen.wait_for_window("New TARN Config File")
        self.screen.type("fresh")
        self.screen.shoot("wizard")
        self.screen.key("Return")
        fresh = self.folder / "fresh.tarn"
        wait_for("a new file", fresh.exists)
        self.screen.wait_for_no_window("New TARN Config File")
        self.expect(
            fresh.read_bytes()
            == b'<?xml version="1.0" encoding="UTF-8"?>\n<TARN_CONFIG>\n'
            b"    <Version>1.0</Version>\n</TARN_CONFIG>\n",
            "an empty configuration",
        )

    def quits(self):
        self.screen.shoot("last")
        self.screen.key("ctrl+q")
        wait_for("the end", lambda: self.workbench.process.poll() is not None)
        self.expect(self.workbench.process.returncode == 0, "exit code 0")

    @staticmethod
    def expect(condition, what):
        if not condition:
            raise Failure("not so: " + what)


def start_x_server():
    read_end, write_end = os.pipe()
    server = subprocess.Popen(
        ["Xvfb", "-displayfd", str(write_end), "-screen", "0", "1280x800x24", "-nolisten", "tcp"],
        pass_fds=[write_end],
        stdin=subprocess.DEVNULL,
        stderr=subprocess.DEVNULL,
    )
    os.close(write_end)
    with os.fdopen(read_end) as display:
        os.environ["DISPLAY"] = ":" + display.readline().strip()
    return server


def start_window_manager():
    """Windows that it finds at its start it moves: it has to be there before the first one."""
    manager = subprocess.Popen(["openbox"], stderr=subprocess.DEVNULL)
    asks = ["xdotool", "get_num_desktops"]
    wait_for(
        "a window manager", lambda: subprocess.run(asks, capture_output=True).returncode == 0
    )
    return manager


def main(program, example, shots):
    shots = Path(shots)
    shots.mkdir(parents=True, exist_ok=True)
    for old in shots.glob("*.png"):
        old.unlink()
    for name in ("WAYLAND_DISPLAY", "QT_QPA_PLATFORMTHEME", "XDG_CURRENT_DESKTOP"):
        os.environ.pop(name, None)

    processes = [start_x_server()]
    screen = Screen(shots)
    with tempfile.TemporaryDirectory(prefix="tarn drive ") as scratch:
        folder = Path(scratch) / Path(example).name
        shutil.copytree(example, folder)
        log = Path(scratch) / "log"
        try:
            processes.append(start_window_manager())
            workbench = Workbench(
                program, folder / f"{folder.name}.json", folder / f"{folder.name}.tarn", log
            )
            processes.append(workbench.process)
            Drive(screen, workbench, folder).run()
        except Failure as failure:
            screen.shoot("failure")
            print(f"FAILED: {failure}; screenshots in {shots}")
            if log.exists():
                print(f"The workbench wrote:\n{log.read_text(errors='replace')}")
            return 1
        finally:
            for process in reversed(processes):
                process.terminate()
                process.wait()
    print(f"passed, {screen.count} screenshots in {shots}")
    return 0


if __name__ == "__main__":
    if len(sys.argv) != 4:
        sys.exit(__doc__)
    sys.exit(main(*sys.argv[1:]))
