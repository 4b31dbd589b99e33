#!/usr/bin/env python3
# SPDX-FileCopyrightText: The TARN Inserter authors
# SPDX-License-Identifier: Apache-2.0
"""Drives the workbench with mouse and keys under a private X server.

usage: driveworkbench.py WORKBENCH EXAMPLE_FOLDER QT_PLUGIN_FOLDER SHOTS_FOLDER

Uses a copy of the example as a user does: adds and removes a core, saves, changes files on disk and
answers the banners, creates a file from the gallery, quits. Leaves one screenshot per step in
SHOTS_FOLDER. Ends with exit code 1 and the reason at the first difference.
"""

import re
import sys

sys.dont_write_bytecode = True  # Leave no files among the sources.
from desktop import drive, expect, wait_for
from editor import Editor
from widgets import expect_soon

EMPTY_CONFIGURATION = (
    b'<?xml version="1.0" encoding="UTF-8"?>\n<TARN_CONFIG>\n'
    b"    <Version>1.0</Version>\n</TARN_CONFIG>\n"
)


class Drive(Editor):
    def __init__(self, screen, workbench, folder):
        super().__init__(screen, workbench)
        self.folder = folder
        self.file = folder / f"{folder.name}.tarn"
        self.cores = [f"tarn_{n}" for n in range(self.file.read_bytes().count(b"<Core "))]
        self.new_core = f"tarn_{len(self.cores)}"

    def run(self):
        self.opens()
        self.adds_a_core_that_cannot_be_saved()
        self.removes_it_and_saves()
        self.reloads_a_changed_file()
        self.ignores_a_changed_source()
        self.closes_a_removed_file()
        self.creates_a_file()
        self.quit()

    def expect_cores(self, *cores):
        self.expect_rows("treeWidget", *cores)

    def opens(self):
        self.workbench.wait_for_line("create tarn view: ")
        self.wait_for_tab(self.file.name)
        self.expect_cores(*self.cores)
        self.expect_selected("treeWidget", "tarn_0")
        self.screen.shoot("opened")
        for core in ("tarn_1", "tarn_0"):
            self.select("treeWidget", core)

    def adds_a_core_that_cannot_be_saved(self):
        before = self.file.read_bytes()
        self.choose_for_core("tarn_0", "Add")
        self.expect_cores(*self.cores, self.new_core)
        self.expect_selected("treeWidget", self.new_core)
        self.screen.shoot("added")
        self.expect_refused_save(
            f"Tarn {len(self.cores)}: "
            "At least one Probe In port or Probe Out port should be enabled"
        )
        expect(self.file.read_bytes() == before, "a refused save leaves the file alone")

    def removes_it_and_saves(self):
        before = self.file.read_bytes()
        changed = self.file.stat().st_mtime_ns
        self.choose_for_core(self.new_core, "Remove")
        self.expect_box("Remove TARn", f"Do you want to remove TARN {len(self.cores)} ?")
        self.screen.shoot("question")
        self.screen.key("Return")
        self.wait_for_no_window("Remove TARn")
        self.workbench.wait_for_line("after changed")
        self.expect_cores(*self.cores)
        self.expect_selected("treeWidget", "tarn_0")
        self.save(self.file.name)
        self.workbench.wait_for_line("save lumo", 2)
        expect(self.file.stat().st_mtime_ns != changed, "the file is written")
        expect(self.file.read_bytes() == before, "unchanged content is rewritten as it was")
        self.screen.shoot("saved")

    def reloads_a_changed_file(self):
        config = self.file.read_bytes()
        one_core = re.sub(rb'    <Core index="1".*</Core>\n', b"", config, flags=re.DOTALL)
        self.file.write_bytes(one_core)
        self.answer_banner("Reload")
        self.expect_cores("tarn_0")
        self.expect_selected("treeWidget", "tarn_0")
        self.screen.shoot("reloaded")

    def ignores_a_changed_source(self):
        source = sorted(self.folder.glob("rtl/*"))[0]
        source.write_bytes(source.read_bytes() + b"\n// changed\n")
        self.answer_banner("Cancel")
        self.expect_selected("treeWidget", "tarn_0")

    def closes_a_removed_file(self):
        self.file.unlink()
        self.answer_banner("Close")
        self.workbench.wait_for_line(f"IView: {self.file.name} destoryed")
        expect_soon("tabs", self.tabs, [])
        self.screen.shoot("closed")

    def creates_a_file(self):
        fresh = self.folder / "fresh.tarn"
        self.create(fresh.stem)
        wait_for("a new file", fresh.exists)
        expect(fresh.read_bytes() == EMPTY_CONFIGURATION, "an empty configuration")
        self.screen.shoot("last")


if __name__ == "__main__":
    if len(sys.argv) != 5:
        sys.exit(__doc__)
    sys.exit(drive(*sys.argv[1:], Drive))
