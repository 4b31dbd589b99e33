#!/usr/bin/env python3
# SPDX-FileCopyrightText: The TARN Inserter authors
# SPDX-License-Identifier: Apache-2.0
"""Makes the same changes in the editor and with the command line tool, on an example.

usage: drivetool.py WORKBENCH EXAMPLE_FOLDER QT_PLUGIN_FOLDER SHOTS_FOLDER TOOL

Edits one configuration in the editor, with mouse and keys, and a second one with the steps of
"tarn edit". After each round of changes the editor saves, and both files must be the same byte by
byte. Leaves screenshots in SHOTS_FOLDER. Ends with exit code 1 and the reason at the first
difference.
"""

import difflib
import shlex
import subprocess
import sys
from functools import partial
from pathlib import Path

sys.dont_write_bytecode = True  # Leave no files among the sources.
from desktop import Failure, drive, expect, wait_for
from editor import Editor, change_text


class Pair(Editor):
    """The rounds of changes that the examples have in common."""

    def __init__(self, tool, screen, workbench, folder):
        super().__init__(screen, workbench)
        self.tool = tool
        self.rtl = folder / "rtl"
        self.by_hand = folder / "by hand.tarn"
        self.by_tool = folder / "by tool.tarn"
        self.rounds = 0

    def run(self):
        self.create(self.by_hand.stem)
        # The wizard writes a file without cores.
        self.by_tool.write_bytes(self.by_hand.read_bytes())
        # An empty file gets a core, which counts as a change.
        self.open_by_menu(self.by_hand, f"{self.by_hand.name} *")
        for changes in (
            self.fills_cores_and_ports,
            self.appends_signals,
            self.removes,
            self.changes_values_and_clocks,
            self.replaces,
        ):
            self.compare(changes.__name__, changes())
        expect(self.rounds == 5, "all rounds are compared")
        self.quit()

    def compare(self, name, steps):
        """Saves what the editor has, runs the tool with the steps, one on a line, and compares."""
        before = self.by_hand.read_bytes()
        self.wait_for_tab(f"{self.by_hand.name} *")
        self.save(self.by_hand.name)
        self.screen.shoot(name)
        expect(self.by_hand.read_bytes() != before, f"{name} changes the file")
        words = [word for step in steps.splitlines() for word in step.split()]
        # The project file of the folder says what the design is.
        command = [self.tool, "edit", str(self.by_tool), *words]
        result = subprocess.run(command, capture_output=True, text=True, cwd="/")
        said = result.stdout + result.stderr
        if result.returncode != 0:
            raise Failure(f"{shlex.join(command)} ended with {result.returncode}:\n{said}")
        expect(said == "", f"the tool says nothing, not: {said}")
        expect_same_text(self.by_hand, self.by_tool, f"in {name}")
        self.rounds += 1

    # Changes by mouse and keys

    def show_core(self, number):
        self.select("treeWidget", f"tarn_{number}")

    def add_core(self, number):
        self.choose_for_core(f"tarn_{number - 1}", "Add")
        self.expect_selected("treeWidget", f"tarn_{number}")

    def remove_core(self, number):
        count = len(self.rows("treeWidget"))
        self.choose_for_core(f"tarn_{number}", "Remove")
        self.wait_for_window("Remove TARn")
        self.screen.key("Return")
        self.wait_for_no_window("Remove TARn")
        self.expect_rows("treeWidget", *[f"tarn_{n}" for n in range(count - 1)])

    def remove_ports(self, kind, *numbers):
        tree = f"treeProbe{kind}"
        self.select(tree, *[f"Probe {kind}{number}" for number in numbers])
        left = len(self.ports(tree)) - len(numbers)
        self.press(f"btnProbe{kind}Remove")
        wait_for(f"{left} ports", lambda: len(self.ports(tree)) == left)

    def ports(self, tree):
        return [row for row in self.rows(tree) if not row.startswith(".")]

    def pick(self, kind, number, *searches):
        """Each search as its mode, the pattern and the rows to choose."""
        self.open_port(kind, number)
        self.open_search()
        self.choose_from(searches)
        self.accept()
        self.accept()

    def choose_from(self, searches):
        for mode, pattern, *rows in searches:
            self.press({"wildcard": "radioButtonWildcard"}.get(mode, "radioButtonNormal"))
            self.enter("lineEditName", pattern)
            self.screen.key("Return")
            for row in rows:
                self.row("treeWidget", row)
            self.choose(*rows)

    def pick_bits(self, kind, number, bus, *bits):
        """Chooses single bits below the row of a bus."""
        self.open_port(kind, number)
        self.open_search()
        self.search(bus, bus)
        self.click_row("treeWidget", bus)
        self.screen.key("Right")
        self.choose(*bits)
        self.accept()
        self.accept()

    def remove_signals(self, kind, number, *signals):
        self.open_port(kind, number)
        self.select("treeWidget", *signals)
        self.screen.key("Delete")
        for signal in signals:
            wait_for(f"no {signal}", lambda: signal not in self.rows("treeWidget"))
        self.accept()

    def set_value(self, number, digits):
        self.type_value(number, digits)
        self.screen.key("Tab")

    def pick_clock(self, name):
        self.press("checkUserClock")
        self.press("btnUserClock")
        self.wait_for_window("Search Nets")
        self.choose_from([("normal", name, name)])
        self.accept()
        self.find("lineEditUserClock", text=name)

    def type_clock(self, name):
        self.enter("lineEditUserClock", name)
        self.screen.key("Tab")
        wait_for("the end of typing", lambda: not self.find("lineEditUserClock").focus)

    def replace(self, place, signal):
        """Takes an entry of the menu, or presses the button when there is only one way."""
        count = len(self.findings())
        self.select_finding(place)
        self.press("btnReplace")
        if self.shown(type="QMenu"):
            self.press_entry(signal)
        wait_for("fewer findings", lambda: len(self.findings()) < count)

    def replace_prefix(self, entry, left):
        """Takes an entry of the menu for all findings, unless it is the only one."""
        self.press("btnReplaceAll")
        if entry:
            self.press_entry(entry)
        wait_for(f"{left} findings", lambda: len(self.findings()) == left)


def expect_same_text(first, second, place):
    if first.read_bytes() == second.read_bytes():
        return
    texts = [path.read_text().splitlines() for path in (first, second)]
    difference = difflib.unified_diff(*texts, first.name, second.name, lineterm="", n=8)
    raise Failure("\n".join([f"the files differ {place}", *difference]))


class SensorHub(Pair):
    TX, RX = "hub_top/u_frame_tx", "hub_top/u_frame_rx"

    def fills_cores_and_ports(self):
        self.add_ports("In", 3)
        self.add_ports("Out", 2)
        self.pick("In", 0, ("normal", "rx_", "hub_top/rx_valid", "hub_top/rx_data[7:0]"))
        states = [f"hub_top/{unit}/state[{n}:0]" for unit, n in
                  (("u_uart_rx", 1), ("u_frame_rx", 2), ("u_frame_tx", 2))]
        self.pick("In", 1, ("wildcard", "*/u_*/state*", *states))
        self.pick("In", 2, ("normal", "crc_ok", f"{self.RX}/crc_ok"))
        # All that is not grey.
        self.pick(
            "Out", 0, ("wildcard", "*duty*", "hub_top/dbg_duty[7:0]", "hub_top/dbg_duty_force")
        )
        self.pick("Out", 1, ("normal", "dbg_sample", "hub_top/dbg_sample_force"))
        self.set_value(0, "1a5")
        self.pick_clock("hub_top/clk_sys")
        self.add_core(1)
        self.add_ports("Out", 1)
        self.pick("Out", 0, ("normal", "lamp", "hub_top/dbg_lamp_test"))
        self.set_value(0, "1")
        self.show_core(0)
        return f"""
            add-in 0 add-in 0 add-in 0
            add-out 0 add-out 0
            signals 0.in0 hub_top/rx_valid hub_top/rx_data[7:0]
            signals 0.in1 --wildcard */u_*/state*
            signals 0.in2 {self.RX}/crc_ok
            signals 0.out0 --wildcard *duty*
            signals 0.out1 hub_top/dbg_sample_force
            value 0.out0 0x1a5
            clock 0 hub_top/clk_sys
            add-core
            add-out 1
            signals 1.out0 hub_top/dbg_lamp_test
            value 1.out0 0x1
        """

    def appends_signals(self):
        """A bus takes the place of its bits; what is there already stays; a new core has no clock."""
        sample = "hub_top/sample[11:0]"
        self.pick_bits("In", 2, sample, "hub_top/sample[3]", "hub_top/sample[11]")
        self.pick("In", 2, ("normal", "rx_error", "hub_top/rx_error"))
        self.pick("In", 2, ("normal", "hub_top/sample[", sample))
        self.pick(
            "In", 0, ("normal", "hub_top/rx_", "hub_top/rx_error", "hub_top/rx_data[7:0]")
        )
        self.pick_bits("In", 1, "hub_top/rx_data[7:0]", "hub_top/rx_data[0]")
        self.show_core(1)
        self.add_ports("Out", 1)
        self.add_ports("In", 1)
        self.show_core(0)
        return f"""
            signals 0.in2 hub_top/sample[3] hub_top/sample[11]
            signals 0.in2 hub_top/rx_error
            signals 0.in2 {sample}
            signals 0.in0 hub_top/rx_error hub_top/rx_data[7:0]
            signals 0.in1 hub_top/rx_data[0]
            add-out 1
            add-in 1
        """

    def removes(self):
        """Signals, a port in the middle, and the first core: what follows gets new numbers."""
        self.remove_signals("In", 1, "hub_top/u_uart_rx/state[1:0]", "hub_top/rx_data[0]")
        self.remove_signals("Out", 0, "hub_top/dbg_duty[7:0]")
        self.remove_ports("In", 0)
        self.add_core_at_the_end()
        self.remove_core(1)
        return """
            remove 0.in1 hub_top/u_uart_rx/state[1:0] hub_top/rx_data[0]
            remove 0.out0 hub_top/dbg_duty[7:0]
            remove 0.in0
            add-core
            add-in 2
            signals 2.in0 hub_top/u_display/digit[1:0]
            remove 1
        """

    def add_core_at_the_end(self):
        self.add_core(2)
        self.add_ports("In", 1)
        self.pick("In", 0, ("normal", "digit", "hub_top/u_display/digit[1:0]"))

    def changes_values_and_clocks(self):
        """The bits of an appended signal come last; a clock may go and its name stays."""
        self.show_core(0)
        self.pick("Out", 0, ("normal", "hub_top/dbg_duty[", "hub_top/dbg_duty[7:0]"))
        self.set_value(1, "1")
        self.type_clock("hub_top/clk_disp")
        self.show_core(1)
        self.pick_clock("hub_top/clk_50m")
        return """
            signals 0.out0 hub_top/dbg_duty[7:0]
            value 0.out1 0x1
            clock 0 hub_top/clk_disp
            clock 1 hub_top/clk_50m
        """

    def replaces(self):
        """After a net, an instance and the width of a bus have changed."""
        change_text(
            self.rtl / "hub_top.v",
            (r"\brx_error\b", "rx_err"),
            (r"\bu_frame_rx\b", "u_receiver"),
            (r"\[7:0\] dbg_duty;", "[9:0] dbg_duty;"),
            (r"\? dbg_duty :", "? dbg_duty[9:2] :"),
        )
        self.answer_banner("Reload")
        self.show_core(0)
        wait_for("four findings", lambda: len(self.findings()) == 4)
        self.screen.shoot("findings")
        self.replace("tarn_0, Probe In1, hub_top/rx_error", "hub_top/rx_err")
        self.replace_prefix(None, 1)
        self.replace("tarn_0, Probe Out0, hub_top/dbg_duty[7:0]", "hub_top/dbg_duty[9:0]")
        wait_for("no findings", lambda: not self.findings())
        self.show_core(1)
        self.type_clock("")
        self.press("checkUserClock")
        self.find("checkUserClock", checked=False)
        return f"""
            clock 1 none
            replace hub_top/rx_error hub_top/rx_err
            replace-prefix {self.RX} hub_top/u_receiver
            replace hub_top/dbg_duty[7:0] hub_top/dbg_duty[9:0]
        """


class PacketFilter(Pair):
    """Generated instances, members of structs, interfaces and nested arrays."""

    LANE = "pf_top/lane[2].u_lane"
    HEADERS = [
        f"pf_top/lane[{n}].u_lane/header.{member}"
        for n in (1, 2)
        for member in ("kind[15:0]", "port[15:0]", "source[31:0]")
    ]
    WAITING = "pf_top/u_arbiter/lane_valid[3:0]"

    def fills_cores_and_ports(self):
        self.add_ports("In", 1)
        self.pick("In", 0, ("normal", "lane_in[3]/", "pf_top/lane_in[3]/ready"))
        self.add_core(1)
        self.add_ports("In", 3)
        self.add_ports("Out", 2)
        self.pick("In", 0, ("wildcard", r"*lane\[[12]\].u_lane/header.*", *self.HEADERS))
        self.pick("In", 1, ("normal", "merged/", "pf_top/merged/valid", "pf_top/merged/data[33:0]"))
        self.pick("In", 2, ("normal", "busy", "pf_top/u_arbiter/busy"))
        self.pick("Out", 0, ("normal", "dbg_block", "pf_top/dbg_block[3:0]"))
        verdict = f"{self.LANE}/dbg_verdict[1:0]", f"{self.LANE}/dbg_force_verdict"
        self.pick("Out", 1, ("wildcard", r"*lane\[2\]*dbg*", *verdict))
        self.set_value(0, "9")
        self.set_value(1, "5")
        self.pick_clock("pf_top/clk")
        return rf"""
            add-in 0
            signals 0.in0 pf_top/lane_in[3]/ready
            add-core
            add-in 1 add-in 1 add-in 1
            add-out 1 add-out 1
            signals 1.in0 --wildcard *lane\[[12]\].u_lane/header.*
            signals 1.in1 pf_top/merged/valid pf_top/merged/data[33:0]
            signals 1.in2 pf_top/u_arbiter/busy
            signals 1.out0 pf_top/dbg_block[3:0]
            signals 1.out1 --wildcard *lane\[2\]*dbg*
            value 1.out0 0x9
            value 1.out1 0x5
            clock 1 pf_top/clk
        """

    def appends_signals(self):
        """Bits of buses stay where they are until their bus comes."""
        bits = [f"pf_top/u_arbiter/lane_valid[{n}]" for n in (1, 3)]
        events = [f"{self.LANE}/events[{n}][15:0]" for n in (0, 1)]
        self.show_core(1)
        for bit in bits:
            self.pick_bits("In", 2, self.WAITING, bit)
        self.pick("In", 2, ("normal", f"{self.LANE}/events", *events))
        self.show_core(0)
        for bit in bits:
            self.pick_bits("In", 0, self.WAITING, bit)
        self.pick(
            "In",
            0,
            ("normal", "lane_in[3]/", "pf_top/lane_in[3]/valid"),
            ("normal", "lane_valid", self.WAITING),
        )
        self.add_ports("Out", 1)
        self.pick_bits(
            "Out",
            0,
            "pf_top/lane[0].u_lane/dbg_verdict[1:0]",
            "pf_top/lane[0].u_lane/dbg_verdict[0]",
        )
        self.set_value(0, "1")
        self.show_core(1)
        return f"""
            signals 1.in2 {bits[0]} {bits[1]}
            signals 1.in2 {events[0]} {events[1]}
            signals 0.in0 {bits[0]}
            signals 0.in0 {bits[1]}
            signals 0.in0 pf_top/lane_in[3]/valid {self.WAITING}
            add-out 0
            signals 0.out0 pf_top/lane[0].u_lane/dbg_verdict[0]
            value 0.out0 0x1
        """

    def removes(self):
        """Signals at both ends, two ports, and the first core."""
        ends = self.HEADERS[0], self.HEADERS[5]
        self.remove_signals("In", 0, *ends)
        self.remove_signals("Out", 1, f"{self.LANE}/dbg_verdict[1:0]")
        self.add_ports("In", 2)
        self.remove_ports("In", 1, 3)
        self.remove_core(0)
        return f"""
            remove 1.in0 {ends[0]} {ends[1]}
            remove 1.out1 {self.LANE}/dbg_verdict[1:0]
            add-in 1 add-in 1
            remove 1.in3
            remove 1.in1
            remove 0
        """

    def changes_values_and_clocks(self):
        """A value is longer than before; another port loses its signals and their value."""
        self.set_value(0, "f")
        self.pick("Out", 1, ("normal", f"{self.LANE}/dbg_v", f"{self.LANE}/dbg_verdict[1:0]"))
        self.set_value(1, "6")
        self.add_ports("Out", 1)
        self.pick("Out", 2, ("normal", "lane[0].u_lane/dbg_f", "pf_top/lane[0].u_lane/dbg_force_verdict"))
        self.set_value(2, "1")
        self.remove_signals("Out", 2, "pf_top/lane[0].u_lane/dbg_force_verdict")
        self.type_clock("pf_top/u_arbiter/clk")
        return f"""
            value 0.out0 0xF
            signals 0.out1 {self.LANE}/dbg_verdict[1:0]
            value 0.out1 0x6
            add-out 0
            signals 0.out2 pf_top/lane[0].u_lane/dbg_force_verdict
            value 0.out2 0x1
            remove 0.out2 pf_top/lane[0].u_lane/dbg_force_verdict
            clock 0 pf_top/u_arbiter/clk
        """

    def replaces(self):
        """After instances got other names and a parameter other buses."""
        change_text(
            self.rtl / "pf_top.sv", (r"\bu_lane\b", "u_filter"), (r"(int  LANES +=) 4", r"\1 8")
        )
        change_text(self.rtl / "pf_arbiter.sv", (r"\bbusy\b", "is_busy"))
        change_text(
            self.rtl / "pf_lane.sv",
            (r"wire \[1:0\] dbg_verdict;", "wire [2:0] dbg_verdict;"),
            (r"'\(dbg_verdict\)", "'(dbg_verdict[1:0])"),
        )
        self.answer_banner("Reload")
        wait_for("ten findings", lambda: len(self.findings()) == 10)
        self.screen.shoot("findings")
        lanes = [f"pf_top/lane[{n}].u_filter" for n in range(3)]
        self.replace_prefix(None, 5)
        for old in self.HEADERS[1:3]:
            self.replace(f"tarn_0, Probe In0, {old}", old.replace("u_lane", "u_filter"))
        self.replace("tarn_0, Probe In1, pf_top/u_arbiter/busy", "pf_top/u_arbiter/is_busy")
        self.replace(
            f"tarn_0, Probe Out1, {self.LANE}/dbg_verdict[1:0]", f"{lanes[2]}/dbg_verdict[2:0]"
        )
        self.replace("tarn_0, Probe Out0, pf_top/dbg_block[3:0]", "pf_top/dbg_block[7:0]")
        wait_for("no findings", lambda: not self.findings())
        return f"""
            replace-prefix {self.LANE} {lanes[2]}
            replace {self.HEADERS[1]} {lanes[1]}/header.port[15:0]
            replace {self.HEADERS[2]} {lanes[1]}/header.source[31:0]
            replace pf_top/u_arbiter/busy pf_top/u_arbiter/is_busy
            replace {self.LANE}/dbg_verdict[1:0] {lanes[2]}/dbg_verdict[2:0]
            replace pf_top/dbg_block[3:0] pf_top/dbg_block[7:0]
        """


STORIES = {"sensorhub": SensorHub, "packetfilter": PacketFilter}


def main(program, example, plugins, shots, tool):
    story = partial(STORIES[Path(example).name], tool)
    return drive(program, example, plugins, shots, story, suffixes=["json"])


if __name__ == "__main__":
    if len(sys.argv) != 6:
        sys.exit(__doc__)
    sys.exit(main(*sys.argv[1:]))
