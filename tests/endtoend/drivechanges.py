#!/usr/bin/env python3
# SPDX-FileCopyrightText: The TARN Inserter authors
# SPDX-License-Identifier: Apache-2.0
"""Changes the design of an open configuration and follows it, with mouse and keys.

usage: drivechanges.py WORKBENCH EXAMPLE_FOLDER QT_PLUGIN_FOLDER SHOTS_FOLDER

Renames nets and instances and widens buses in the sources of a copy of the example, and reads the
design again. Goes through the findings, replaces what is missing, undoes and redoes all of it, and
saves. The saved file must equal the file in the folder "expected". Leaves screenshots in
SHOTS_FOLDER. Ends with exit code 1 and the reason at the first difference.
"""

import sys
from pathlib import Path

sys.dont_write_bytecode = True  # Leave no files among the sources.
from desktop import drive, expect, wait_for
from editor import Editor, change_text
from widgets import expect_soon

EXPECTED = Path(__file__).parent / "expected"
TREES = ("treeProbeIn", "treeProbeOut")


class Changes(Editor):
    """The steps that the examples have in common."""

    def __init__(self, screen, workbench, folder):
        super().__init__(screen, workbench)
        self.rtl = folder / "rtl"
        self.file = folder / f"{folder.name}.tarn"
        self.expected = (EXPECTED / f"{folder.name}-changed.tarn").read_bytes()

    def run(self):
        self.wait_for_tab(self.file.name)
        self.expand_all()
        self.expect_no_findings()
        self.change_design()
        self.answer_banner("Reload")
        self.goes_through_findings()
        before = self.state()
        self.replaces()
        self.expect_no_findings()
        self.undoes_and_redoes(before)
        self.save(self.file.name)
        expect(self.file.read_bytes() == self.expected, "the expected content is saved")
        self.screen.shoot("saved")
        self.undoes_what_is_saved()
        self.quit()

    def expect_no_findings(self):
        expect_soon("the findings", self.findings, [])
        expect_soon("the signs", lambda: self.signs(*TREES), {})

    def expect_findings(self, *findings):
        """Each as severity, place and a part of the text."""
        wait_for(f"{len(findings)} findings", lambda: len(self.findings()) == len(findings))
        for found, (severity, place, text) in zip(self.findings(), findings):
            fits = found[0] == severity and found[1] == place and text in found[2]
            expect(fits, f"{found} is {severity} at {place} with {text}")

    def expect_walk(self, *stops):
        """F8 leads to these rows, each given as tree, text and sign, and then to the first again."""
        for tree, signal, sign in [*stops, stops[0]]:
            self.screen.key("F8")
            self.expect_selected(tree, signal)
            expect_soon("its sign", lambda: self.signs(tree).get(signal), sign)

    def replace(self, place, signal):
        """Replaces what is missing at a place by the first candidate, which must be this one."""
        self.select_finding(place)
        self.press("btnReplace")
        entries = [row.text for row in self.find(type="QMenu").rows]
        expect(entries[0] == signal, f"{entries[0]} is the first candidate")
        self.screen.shoot("candidates")
        self.press_entry(signal)

    def replace_all(self, entry):
        """By an entry of the menu. The button has none when there is only one way."""
        self.press("btnReplaceAll")
        if entry:
            self.press_entry(entry)

    def undoes_and_redoes(self, before):
        after = self.state()
        for _ in range(self.STEPS):
            self.wait_for_tab(f"{self.file.name} *")
            self.screen.key("ctrl+z")
        expect_soon("the page", self.state, before)
        self.screen.shoot("undone")
        for _ in range(self.STEPS):
            self.screen.key("ctrl+shift+z")
        expect_soon("the page", self.state, after)

    def undoes_what_is_saved(self):
        """The saved state is the one without the mark now."""
        self.screen.key("ctrl+z")
        self.wait_for_tab(f"{self.file.name} *")
        self.screen.key("ctrl+shift+z")
        self.wait_for_tab(self.file.name)

    def state(self):
        """The texts of the page and the findings."""
        trees = [self.rows(tree) for tree in TREES]
        return self.tabs(), trees, self.values(), self.bits(), self.findings()


class SensorHub(Changes):
    STEPS = 3

    def change_design(self):
        change_text(
            self.rtl / "hub_top.v",
            (r"\brx_error\b", "rx_err"),
            (r"\bu_frame_rx\b", "u_receiver"),
            (r"\[7:0\] dbg_duty;", "[9:0] dbg_duty;"),
            (r"\? dbg_duty :", "? dbg_duty[9:2] :"),
        )

    def goes_through_findings(self):
        self.expect_findings(
            ("Error", "tarn_0, Probe In0, hub_top/rx_error", "no net"),
            ("Error", "tarn_0, Probe In1, hub_top/u_frame_rx/state[2:0]", "no bus"),
            ("Error", "tarn_0, Probe In1, hub_top/u_frame_rx/crc_ok", "no net"),
            ("Warning", "tarn_0, Probe Out1, hub_top/dbg_duty[7:0]", "hub_top/dbg_duty[9:0]"),
        )
        self.screen.shoot("findings")
        self.expect_walk(
            ("treeProbeIn", "hub_top/rx_error", "error"),
            ("treeProbeIn", "hub_top/u_frame_rx/state[2:0]", "error"),
            ("treeProbeIn", "hub_top/u_frame_rx/crc_ok", "error"),
            ("treeProbeOut", "hub_top/dbg_duty[7:0]", "warning"),
        )
        self.wait_for_tab(self.file.name)  # Looking is no edit.

    def replaces(self):
        self.replace("tarn_0, Probe In0, hub_top/rx_error", "hub_top/rx_err")
        wait_for("three findings", lambda: len(self.findings()) == 3)
        self.replace_all(None)  # The prefix.
        wait_for("one finding", lambda: len(self.findings()) == 1)
        self.expect_values(["0x0", "0x80", "0x0"], ["0", "10000000", "0"])
        self.replace("tarn_0, Probe Out1, hub_top/dbg_duty[7:0]", "hub_top/dbg_duty[9:0]")
        self.expect_values(["0x0", "0x080", "0x0"], ["0", "0010000000", "0"])


class PacketFilter(Changes):
    """A parameter widens several buses at once; the file is modified already."""

    STEPS = 5
    LANES = [f"pf_top/lane[{n}]" for n in range(3)]

    def change_design(self):
        self.type_value(0, "9")
        self.type_value(1, "5")
        self.screen.key("Tab")
        self.expect_values(["0x9", "0x5"], ["1001", "1", "01"])
        change_text(
            self.rtl / "pf_top.sv", (r"\bu_lane\b", "u_filter"), (r"(int  LANES +=) 4", r"\1 8")
        )
        change_text(self.rtl / "pf_arbiter.sv", (r"\bbusy\b", "is_busy"))
        change_text(
            self.rtl / "pf_lane.sv",
            (r"wire \[1:0\] dbg_verdict;", "wire [2:0] dbg_verdict;"),
            (r"'\(dbg_verdict\)", "'(dbg_verdict[1:0])"),
        )

    def goes_through_findings(self):
        def missing(port, *names):
            return [("Error", f"tarn_0, {port}, {name}", f" {name}.") for name in names]

        def grown(port, base, left, new_left):
            new = f" {base}[{new_left}:0] "
            return ("Warning", f"tarn_0, {port}, {base}[{left}:0]", new)

        first, third = f"{self.LANES[0]}.u_lane", f"{self.LANES[2]}.u_lane"
        self.expect_findings(
            *missing("Probe In0", f"{first}/header.kind[15:0]", f"{first}/header.port[15:0]"),
            *missing("Probe In0", f"{first}/header_valid"),
            *missing("Probe In1", f"{first}/verdict[1:0]", f"{first}/verdict_valid"),
            *missing("Probe In1", f"{first}/runt"),
            *missing("Probe In2", f"{first}/events[0][15:0]", f"{first}/events[1][15:0]"),
            grown("Probe In3", "pf_top/merged/data", 33, 34),
            grown("Probe In4", "pf_top/u_arbiter/lane_valid", 3, 7),
            grown("Probe In4", "pf_top/u_arbiter/current", 1, 2),
            *missing("Probe In4", "pf_top/u_arbiter/busy"),
            *missing("Probe In5", f"{third}/u_buffer/level[6:0]"),
            grown("Probe Out0", "pf_top/dbg_block", 3, 7),
            *missing("Probe Out1", f"{third}/dbg_force_verdict", f"{third}/dbg_verdict[1:0]"),
        )
        self.screen.shoot("findings")

    def replaces(self):
        for n, count in ((0, 8), (2, 2)):
            lane = self.LANES[n]
            self.replace_all(f"All of {lane}.u_lane by {lane}.u_filter ({count} findings)")
            self.row("treeProbeIn", f"{lane}.u_filter/{'runt' if n == 0 else 'u_buffer/level[6:0]'}")
        self.replace_all(None)  # The changed buses.
        self.replace("tarn_0, Probe In4, pf_top/u_arbiter/busy", "pf_top/u_arbiter/is_busy")
        verdict = f"{self.LANES[2]}.u_filter/dbg_verdict[2:0]"
        self.replace(f"tarn_0, Probe Out1, {self.LANES[2]}.u_lane/dbg_verdict[1:0]", verdict)
        self.expect_values(["0x09", "0x9"], ["00001001", "1", "001"])


class MotorDrive(Changes):
    """The names of VHDL change, and below them those of Verilog."""

    STEPS = 4
    CLOCK = "tarn_0, motor_top/Clk"
    CARRIER = "tarn_0, Probe In5, motor_top/u_Pwm/carrier[9:0]"

    def change_design(self):
        change_text(
            self.rtl / "motor_top.vhd",
            (r"\bClk\b(?! +=>)", "SysClk"),
            (r"\bu_Pwm\b", "u_Bridge"),
            (r"(DUTY_BITS +: positive +:=) 10", r"\1 11"),
        )

    def goes_through_findings(self):
        wait_for("16 findings", lambda: len(self.findings()) == 16)
        self.screen.shoot("findings")
        self.select_finding(self.CARRIER)
        self.screen.key("Return")
        self.expect_selected("treeProbeIn", "motor_top/u_Pwm/carrier[9:0]")
        self.click(self.row("listFindings", self.CLOCK, column=1).rect, times=2)
        wait_for("the clock", lambda: self.find("lineEditUserClock").focus)

    def replaces(self):
        self.replace(self.CLOCK, "motor_top/SysClk")
        self.find("lineEditUserClock", text="motor_top/SysClk")
        self.replace_all("All of motor_top/u_Pwm by motor_top/u_Bridge (7 findings)")
        wait_for("8 findings", lambda: len(self.findings()) == 8)
        self.replace(self.CARRIER, "motor_top/u_Bridge/carrier[10:0]")
        self.replace_all(None)  # The changed buses.
        duty = "01000000000"
        values = ["0x0", "0x080100200", "0x0", "0x0"]
        self.expect_values(values, ["0", duty, duty, duty, "0", "0"])


STORIES = {"sensorhub": SensorHub, "packetfilter": PacketFilter, "motordrive": MotorDrive}


def main(program, example, plugins, shots):
    return drive(program, example, plugins, shots, STORIES[Path(example).name])


if __name__ == "__main__":
    if len(sys.argv) != 5:
        sys.exit(__doc__)
    sys.exit(main(*sys.argv[1:]))
