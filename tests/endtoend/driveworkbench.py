#!/usr/bin/env python3
# SPDX-FileCopyrightText: The TARN Inserter authors
# SPDX-License-Identifier: Apache-2.0
"""Drives the workbench with mouse and keys under an X server of its own.

usage: driveworkbench.py WORKBENCH EXAMPLE_FOLDER SHOTS_FOLDER

Goes with a copy of the example through what a user does: adds and removes a core, saves, changes
files on disk and answers the banners, creates a file from the gallery, quits. Leaves one screenshot
a step in SHOTS_FOLDER. Ends with exit code 1 and the reason at the first thing that differs.
"""

import re
import sys

sys.dont_write_bytecode = True  # The folder of the sources stays as it is.
from desktop import Image, drive, expect, wait_for

HIGHLIGHT = (48, 140, 198)  # of the selected item, in the style's own palette


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
        expect(self.file.read_bytes() == before, "a refused save leaves the file alone")

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
        expect(self.file.read_bytes() == before, "unchanged content is rewritten as it was")
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
        expect(
            fresh.read_bytes()
            == b'<?xml version="1.0" encoding="UTF-8"?>\n<TARN_CONFIG>\n'
            b"    <Version>1.0</Version>\n</TARN_CONFIG>\n",
            "an empty configuration",
        )

    def quits(self):
        self.screen.shoot("last")
        self.screen.key("ctrl+q")
        wait_for("the end", lambda: self.workbench.process.poll() is not None)
        expect(self.workbench.process.returncode == 0, "exit code 0")


if __name__ == "__main__":
    if len(sys.argv) != 4:
        sys.exit(__doc__)
    sys.exit(drive(*sys.argv[1:], lambda *desktop: Drive(*desktop).run()))
