#!/usr/bin/env python3
# SPDX-FileCopyrightText: The TARN Inserter authors
# SPDX-License-Identifier: Apache-2.0
"""Loses the editor with unsaved changes and gets them back, with mouse and keys.

usage: driverecovery.py WORKBENCH EXAMPLE_FOLDER QT_PLUGIN_FOLDER SHOTS_FOLDER

Edits the configuration in a copy of the example, kills the workbench, starts it again, restores the
changes and saves them. Then the editor closes itself with unsaved changes, which are restored when
the file is opened again. The saved file must equal the file in the folder "expected". Leaves
screenshots in SHOTS_FOLDER. Ends with exit code 1 and the reason at the first difference.
"""

import sys
from pathlib import Path

sys.dont_write_bytecode = True  # Leave no files among the sources.
from desktop import drive, expect, wait_for
from editor import Editor

EXPECTED = Path(__file__).parent / "expected"


class Recovery(Editor):
    """The steps that the examples have in common."""

    def __init__(self, screen, workbench, folder):
        super().__init__(screen, workbench)
        self.folder = folder
        self.file = folder / f"{folder.name}.tarn"
        self.copy = folder / f"{folder.name}.tarn.unsaved"
        self.original = self.file.read_bytes()
        self.expected = (EXPECTED / f"{folder.name}-restored.tarn").read_bytes()

    def run(self):
        self.wait_for_tab(self.file.name)
        expect(not self.copy.exists(), "no copy without an edit")
        self.edit()
        self.restores_after_a_crash()
        self.restores_after_closing_by_itself()
        self.discards_after_a_crash()
        self.quit()

    def expect_copy(self, content):
        # Leaving the view writes what had to wait, as the last writing was only a moment ago.
        self.click_row("files", self.file.name)
        wait_for("the copy", lambda: self.copy.exists() and self.copy.read_bytes() == content)

    def restart_after_a_crash(self):
        self.workbench.kill()
        self.workbench.start()
        self.wait_for_tab(self.file.name)

    def answer_unsaved(self, answer):
        """Another banner may tell of the source that was mended a moment ago."""
        wait_for("the banner", lambda: self.shown("TARN__UnsavedBanner"))
        self.screen.shoot("banner")
        self.press(text=answer)
        wait_for("no banner", lambda: not self.shown("TARN__UnsavedBanner"))

    def restore(self):
        self.answer_unsaved("Restore")
        self.wait_for_tab(f"{self.file.name} *")

    def save_all(self, content):
        self.save(self.file.name)
        expect(self.file.read_bytes() == content, "the expected content is saved")
        expect(not self.copy.exists(), "no copy of what is saved")

    def restores_after_a_crash(self):
        self.expect_copy(self.expected)
        expect(self.file.read_bytes() == self.original, "the file is untouched")
        self.restart_after_a_crash()
        self.expect_before()
        self.restore()
        self.expect_after()
        self.screen.shoot("restored")
        self.screen.key("ctrl+z")
        self.wait_for_tab(self.file.name)
        self.expect_before()
        self.screen.key("ctrl+shift+z")
        self.wait_for_tab(f"{self.file.name} *")
        self.expect_after()
        self.save_all(self.expected)

    def restores_after_closing_by_itself(self):
        """The saved state is undone, and the way back to the original is lost and restored."""
        self.screen.key("ctrl+z")
        self.wait_for_tab(f"{self.file.name} *")
        self.expect_copy(self.original)
        self.close_by_itself()
        expect(self.tabs() == [], "the file is closed")
        expect(self.copy.read_bytes() == self.original, "the copy stays")
        self.open_from_project(self.file.name, self.file.name)
        self.expect_after()
        self.restore()
        self.expect_before()
        self.save_all(self.original)

    def discards_after_a_crash(self):
        self.edit()
        self.expect_copy(self.expected)
        self.restart_after_a_crash()
        self.answer_unsaved("Discard")
        wait_for("no copy", lambda: not self.copy.exists())
        self.expect_before()
        self.wait_for_tab(self.file.name)
        expect(self.file.read_bytes() == self.original, "the file is untouched")


class SensorHub(Recovery):
    """An error in a source closes the file."""

    def edit(self):
        self.type_value(0, "1")
        self.screen.key("Tab")
        self.choose_for_core("tarn_1", "Remove")
        self.wait_for_window("Remove TARn")
        self.screen.key("Return")
        self.wait_for_no_window("Remove TARn")
        self.expect_after()

    def expect_before(self):
        self.expect_rows("treeWidget", "tarn_0", "tarn_1")

    def expect_after(self):
        self.expect_rows("treeWidget", "tarn_0")
        wait_for("the value", lambda: self.values() == ["0x1", "0x80", "0x0"])

    def close_by_itself(self):
        source = self.folder / "rtl" / "crc8.v"
        text = source.read_bytes()
        source.write_bytes(text.replace(b"endmodule", b"endmodul"))
        self.answer_banner("Reload")
        title = "Design files contain some errors."
        self.wait_for_window(title)
        self.screen.shoot("faulty design")
        self.press(text="OK")
        self.wait_for_no_window(title)
        source.write_bytes(text)


class PacketFilter(Recovery):
    """A file that another program has damaged closes the editor."""

    RUNT = "pf_top/lane[0].u_lane/runt"

    def edit(self):
        self.open_port("In", 1)
        self.select("treeWidget", self.RUNT)
        self.screen.key("Delete")
        self.accept()
        self.type_value(0, "c")
        self.screen.key("Tab")
        self.expect_after()

    def expect_before(self):
        self.expect_port(True)
        wait_for("the values", lambda: self.values() == ["0x0", "0x1"])

    def expect_after(self):
        self.expect_port(False)
        wait_for("the values", lambda: self.values() == ["0xC", "0x1"])

    def expect_port(self, complete):
        """Whether the port has its last signal."""
        if not self.row("treeProbeIn", "Probe In1").expanded:
            self.select("treeProbeIn", "Probe In1")
            self.screen.key("Right")
        wait_for("the port", lambda: (f". {self.RUNT}" in self.rows("treeProbeIn")) == complete)

    def close_by_itself(self):
        self.file.write_bytes(b"<TARN_CONFIG>")
        self.answer_banner("Reload")
        self.expect_box("Reload Tarn", "Invalid TARN file.")
        self.screen.shoot("damaged file")
        self.accept()
        self.file.write_bytes(self.expected)


STORIES = {"sensorhub": SensorHub, "packetfilter": PacketFilter}


def main(program, example, plugins, shots):
    return drive(program, example, plugins, shots, STORIES[Path(example).name])


if __name__ == "__main__":
    if len(sys.argv) != 5:
        sys.exit(__doc__)
    sys.exit(main(*sys.argv[1:]))
