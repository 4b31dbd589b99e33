#!/usr/bin/env python3
# SPDX-FileCopyrightText: The TARN Inserter authors
# SPDX-License-Identifier: Apache-2.0
"""Takes the pictures of the documentation from the running workbench, under a private X server.

usage: takepictures.py WORKBENCH EXAMPLE_FOLDER QT_PLUGIN_FOLDER PICTURE_FOLDER

Opens all windows of the editor with mouse and keys, on a copy of the example sensorhub, and writes
one picture of each to PICTURE_FOLDER. Of the example motordrive it takes one picture that shows a
design in two languages. Ends with exit code 1 and the reason when a window does not appear.
"""

import os
import shutil
import sys
import tempfile
from functools import partial
from pathlib import Path

sys.dont_write_bytecode = True  # Leave no files among the sources.
from desktop import drive_in, run, wait_for
from editor import Editor, change_text


class SlowReading:
    """Delays the reading of netlists, so that its progress dialog can be seen."""

    def __init__(self, folder):
        self.flag = folder / "hold"
        reader = folder / "verilator_bin"
        reader.write_text(
            "#!/bin/sh\n"
            f'while [ -e "{self.flag}" ]; do sleep 0.1; done\n'
            f'exec "{shutil.which("verilator_bin")}" "$@"\n'
        )
        reader.chmod(0o755)
        os.environ["PATH"] = f"{folder}:{os.environ['PATH']}"

    def hold(self):
        self.flag.touch()

    def release(self):
        self.flag.unlink()


class Photographer(Editor):
    def __init__(self, screen, workbench, folder, pictures):
        super().__init__(screen, workbench)
        self.file = folder / f"{folder.name}.tarn"
        self.pictures = pictures

    def picture(self, name, at_rest=True):
        """The active window with its frame. Without a rest for windows with a blinking caret."""
        self.screen.move(0, 0)  # No button looks as if it were about to be pressed.
        if at_rest:
            self.screen.still()
        window = run("xdotool", "getactivewindow").decode().strip()
        self.write(name, "-frame", "-window", window)

    def picture_of_area(self, name, *rects):
        """The smallest part of the screen that contains these rectangles."""
        self.screen.still()
        left = min(x for x, _, _, _ in rects)
        top = min(y for _, y, _, _ in rects)
        width = max(x + w for x, _, w, _ in rects) - left
        height = max(y + h for _, y, _, h in rects) - top
        self.write(name, "-window", "root", "-crop", f"{width}x{height}+{left}+{top}")

    def picture_of_banners(self, name):
        self.screen.move(0, 0)
        self.picture_of_area(name, *[banner.rect for banner in self.banners()])

    def write(self, name, *what):
        picture = str(self.pictures / f"{name}.png")
        run("import", *what, "+repage", picture)
        # Few colours keep the files small.
        run("convert", picture, "+dither", "-colors", "256", "-strip", f"PNG8:{picture}")

    def search_for(self, name):
        self.enter("lineEditName", name)
        self.screen.key("Return")


class Tour(Photographer):
    def __init__(self, screen, workbench, folder, reading, pictures):
        super().__init__(screen, workbench, folder, pictures)
        self.source = folder / "rtl" / "crc8.v"
        self.reading = reading

    # Windows

    def dismiss(self, title):
        """Presses OK in the box."""
        self.press(text="OK")
        self.wait_for_no_window(title)

    def add_core(self, name):
        self.choose_for_core("tarn_1", "Add")
        self.row("treeWidget", name)

    def change_source(self, text):
        self.source.write_bytes(self.source.read_bytes() + text)

    # The tour

    def run(self):
        self.opens()
        self.shows_the_page()
        self.picks_signals_to_read()
        self.picks_signals_to_drive()
        self.types_a_value_that_is_too_wide()
        self.meets_a_limit()
        self.follows_a_changed_design()
        self.handles_cores()
        self.fails_the_check()
        self.asks_before_closing()
        self.comes_back_after_a_crash()
        self.answers_banners()
        self.creates_a_file()
        self.reads_a_faulty_design()

    def opens(self):
        self.wait_for_window("Reading RTL Netlist")
        self.picture("progress", at_rest=False)
        self.reading.release()
        self.wait_for_tab("sensorhub.tarn")

    def shows_the_page(self):
        for tree, port in (("treeProbeIn", "Probe In0"), ("treeProbeOut", "Probe Out0"),
                           ("treeProbeOut", "Probe Out1")):
            self.click_row(tree, port)
            self.screen.key("Right")
        self.picture("workbench")
        self.picture_of_area("view", self.find("TARN__TarnView").rect)

    def picks_signals_to_read(self):
        self.open_port("In", 0)
        self.click_row("treeWidget", "hub_top/rx_data[7:0]", times=2)
        self.picture("port-in")
        self.open_search()
        self.press("checkBoxAdvancedFilter")
        self.press("comboBoxSearchIn")
        popup = self.find(type="TARN::RtlNetlistTreeView")
        self.picture_of_area("search-in", popup.rect)
        self.screen.key("Escape")
        self.search_in("u_frame_rx[frame_rx]")
        self.press("checkBoxHierarchyView")
        self.search_for("crc")
        self.click_row("treeWidget", "crc8:u_crc")
        self.screen.key("Right")
        self.choose("data[7:0]", "crc_ok")
        self.picture("search-advanced")
        self.leave("Search Nets")
        self.leave("Probe In Port")

    def picks_signals_to_drive(self):
        self.open_port("Out", 1)
        self.picture("port-out")
        self.open_search()
        self.search_for("sample")
        self.choose("hub_top/dbg_sample_force")
        self.picture("search")
        self.leave("Search Nets")
        self.leave("Probe Out Port")

    def types_a_value_that_is_too_wide(self):
        self.type_value(0, "8")
        self.screen.key("Tab")
        self.wait_for_window("Error")
        self.picture("value-error", at_rest=False)
        self.dismiss("Error")

    def meets_a_limit(self):
        self.click_row("treeWidget", "tarn_1")
        self.press("btnProbeOutRemove")
        self.wait_for_window("Warning")
        self.picture("limit")
        self.dismiss("Warning")

    def follows_a_changed_design(self):
        top = self.source.with_name("hub_top.v")
        original = top.read_text()
        change_text(
            top,
            (r"\brx_error\b", "rx_err"),
            (r"\bu_frame_rx\b", "u_receiver"),
            (r"\[7:0\] dbg_duty;", "[9:0] dbg_duty;"),
            (r"\? dbg_duty :", "? dbg_duty[9:2] :"),
        )
        self.answer_banner("Reload")
        for _ in range(2):
            self.screen.key("F8")
        self.screen.key("shift+F8")
        self.picture_of_area("findings", self.find("TARN__TarnView").rect)
        self.screen.key("F8")
        self.press("btnReplace")
        self.picture_of_area(
            "replace", self.find("TARN__FindingsPane").rect, self.find(type="QMenu").rect
        )
        self.screen.key("Escape")
        top.write_text(original)
        self.answer_banner("Reload")
        wait_for("no findings", lambda: not self.findings())

    def handles_cores(self):
        self.click_row("treeWidget", "tarn_1", button=3)
        menu = self.find(type="QMenu")
        x, y, width, _ = self.find("dockWidget").rect
        self.picture_of_area("cores", [x, y, width, 0], menu.rect)
        self.press_entry("Remove")
        self.wait_for_window("Remove TARn")
        self.picture("remove-core")
        self.leave("Remove TARn")

    def fails_the_check(self):
        self.add_core("tarn_2")
        self.press("checkUserClock")
        self.add_ports("Out", 1)
        self.open_port("Out", 0)
        self.open_search()
        self.search_for("lamp_test")
        self.choose("hub_top/dbg_lamp_test")
        self.accept()
        self.accept()
        self.add_core("tarn_3")
        self.screen.key("ctrl+s")
        self.wait_for_window("Error")
        self.press(text="Show Details...")
        self.picture("check")
        self.dismiss("Error")

    def asks_before_closing(self):
        self.screen.key("ctrl+w")
        self.wait_for_window("Save")
        self.picture("close")
        self.leave("Save")

    def comes_back_after_a_crash(self):
        wait_for("the copy", self.file.with_suffix(".tarn.unsaved").exists)
        self.workbench.kill()
        self.workbench.start()
        self.wait_for_banners(1)
        self.picture_of_banners("banner-unsaved")
        self.press(text="Discard")
        self.wait_for_banners(0)

    def answers_banners(self):
        self.file.write_bytes(self.file.read_bytes())
        self.change_source(b"// changed\n")
        self.wait_for_banners(2)
        self.picture_of_banners("banners")
        self.click(self.shown(text="Cancel")[0].rect)
        self.wait_for_banners(1)
        self.press(text="Cancel")
        self.wait_for_banners(0)
        self.file.unlink()
        self.wait_for_banners(1)
        self.picture_of_banners("banner-removed")
        self.press(text="Keep It")
        self.wait_for_banners(0)

    def creates_a_file(self):
        self.screen.key("ctrl+n")
        self.wait_for_window("New File")
        self.picture("new-file")
        self.screen.key("Return")
        self.wait_for_window("New TARN Config File")
        self.screen.type("debug")
        self.find("editName", text="debug")
        self.picture("wizard", at_rest=False)
        self.press("editCreateIn")
        self.screen.key("ctrl+a", "BackSpace")
        self.press(text="OK")
        self.find("labelInfo", text="Please enter a path.")
        self.picture("wizard-error", at_rest=False)
        self.leave("New TARN Config File")

    def reads_a_faulty_design(self):
        self.change_source(b"assign nothing = ;\n")
        self.wait_for_banners(1)
        self.press(text="Reload")
        self.wait_for_window("Design files contain some errors.")
        self.picture("design-errors")
        self.dismiss("Design files contain some errors.")


class TwoLanguages(Photographer):
    """Shows VHDL entities below a module of SystemVerilog in a VHDL design."""

    def run(self):
        self.wait_for_tab("motordrive.tarn")
        self.open_port("In", 6)
        self.open_search()
        self.press("checkBoxAdvancedFilter")
        self.press("comboBoxSearchIn")
        popup = self.find(type="TARN::RtlNetlistTreeView")
        self.picture_of_area("search-in-languages", popup.rect)


def main(program, example, plugins, pictures):
    pictures = Path(pictures)
    pictures.mkdir(parents=True, exist_ok=True)
    # Always the same folder, since windows show it.
    scratch = Path(tempfile.gettempdir()) / "tarn"
    scratch.mkdir()
    try:
        if Path(example).name == "motordrive":
            tour = partial(TwoLanguages, pictures=pictures)
        else:
            reading = SlowReading(scratch)
            reading.hold()
            tour = partial(Tour, reading=reading, pictures=pictures)
        return drive_in(scratch, program, example, plugins, "screenshots", tour)
    finally:
        shutil.rmtree(scratch)


if __name__ == "__main__":
    if len(sys.argv) != 5:
        sys.exit(__doc__)
    sys.exit(main(*sys.argv[1:]))
