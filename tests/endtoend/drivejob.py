#!/usr/bin/env python3
# SPDX-FileCopyrightText: The TARN Inserter authors
# SPDX-License-Identifier: Apache-2.0
"""Does a whole job in the editor with mouse and keys, on an example, under a private X server.

usage: drivejob.py WORKBENCH EXAMPLE_FOLDER QT_PLUGIN_FOLDER SHOTS_FOLDER

Creates a configuration, picks and orders the signals of its ports, sets initial values and the user
clock, saves, closes and reopens the file. The saved file must equal the file of the example's name
in the folder "expected", and the reopened page must look as before. Leaves screenshots in
SHOTS_FOLDER. Ends with exit code 1 and the reason at the first difference.
"""

import sys
from pathlib import Path

sys.dont_write_bytecode = True  # Leave no files among the sources.
from desktop import drive, expect, run, wait_for
from editor import Editor
from widgets import expect_soon

EXPECTED = Path(__file__).parent / "expected"


class Job(Editor):
    """The steps that the examples have in common. The name of the new file is job.tarn."""

    def __init__(self, screen, workbench, folder):
        super().__init__(screen, workbench)
        self.file = folder / "job.tarn"
        self.expected = (EXPECTED / f"{folder.name}.tarn").read_bytes()

    def save_and_reopen(self):
        self.save("job.tarn")
        self.expect_saved()
        before = self.page()
        self.screen.shoot("saved")
        self.close()
        self.screen.shoot("closed")
        self.open_from_project("job.tarn", "job.tarn")
        wait_for("the same on the reopened page", lambda: self.page() == before)
        self.screen.shoot("reopened")

    def save_again(self):
        """Saves the file as it was read, after two changes that cancel each other out."""
        self.press("checkUserClock")
        self.wait_for_tab("job.tarn *")
        self.press("checkUserClock")
        self.find("checkUserClock", checked=True)
        self.save("job.tarn")
        self.expect_saved()

    def expect_saved(self):
        expect(self.file.read_bytes() == self.expected, "the expected content is saved")


class SensorHub(Job):
    def run(self):
        self.create("job")
        # An empty file gets a core, which counts as a change.
        self.open_by_menu(self.file, "job.tarn *")
        self.add_ports("In", 3)
        self.add_ports("Out", 2)
        self.expect_rows("treeProbeIn", "Probe In0", "Probe In1", "Probe In2")
        self.expect_rows("treeProbeOut", "Probe Out0", "Probe Out1")
        self.picks_from_flat_lists()
        self.orders_by_dragging()
        self.finds_its_size_again()
        self.picks_within_an_instance()
        self.removes_a_port()
        self.picks_nets_to_drive()
        self.sets_initial_values()
        self.picks_the_clock()
        self.save_and_reopen()
        self.save_again()
        self.pastes_a_value()
        self.quit()

    def picks_from_flat_lists(self):
        self.open_port("In", 0)
        self.open_search()
        self.search("CRC_", "hub_top/u_frame_rx/crc_ok")
        self.press("btnAddAll")
        self.expect_chosen("hub_top/u_frame_rx/crc_ok")
        self.press("btnDelAll")
        self.expect_chosen()
        self.search(
            "rx_",
            "hub_top/rx_data[7:0]",
            "hub_top/u_uart_rx/rx_sync[1:0]",
            "hub_top/u_adc/u_spi/rx_data[15:0]",
            "hub_top/rx_valid",
            "hub_top/rx_error",
        )
        self.click_row("treeWidget", "hub_top/rx_data[7:0]")
        self.click_row("treeWidget", "hub_top/rx_valid", holding=["shift"])
        self.click_row("treeWidget", "hub_top/u_adc/u_spi/rx_data[15:0]", holding=["ctrl"])
        self.screen.shoot("plain")
        self.press("btnAdd")
        self.expect_chosen(
            "hub_top/rx_data[7:0]", "hub_top/u_uart_rx/rx_sync[1:0]", "hub_top/rx_valid"
        )
        self.take_back("hub_top/u_uart_rx/rx_sync[1:0]")
        self.expect_chosen("hub_top/rx_data[7:0]", "hub_top/rx_valid")
        self.search(
            "*/u_*/state*",
            "hub_top/u_uart_rx/state[1:0]",
            "hub_top/u_frame_rx/state[2:0]",
            "hub_top/u_frame_tx/state[2:0]",
            mode="wildcard",
        )
        self.choose(
            "hub_top/u_uart_rx/state[1:0]",
            "hub_top/u_frame_rx/state[2:0]",
            "hub_top/u_frame_tx/state[2:0]",
        )
        self.screen.shoot("wildcard")
        self.search(
            "hub_top/(rx|tx)_[a-z]+",
            "hub_top/rx_valid",
            "hub_top/rx_error",
            "hub_top/tx_empty",
            "hub_top/tx_ready",
            mode="regular expression",
        )
        self.press("btnAddAll")
        self.take_back("hub_top/tx_empty", "hub_top/tx_ready")
        self.expect_chosen(
            "hub_top/rx_data[7:0]",
            "hub_top/rx_valid",
            "hub_top/u_uart_rx/state[1:0]",
            "hub_top/u_frame_rx/state[2:0]",
            "hub_top/u_frame_tx/state[2:0]",
            "hub_top/rx_error",
        )
        self.screen.shoot("chosen")
        self.accept()

    def orders_by_dragging(self):
        data, valid, error = "hub_top/rx_data[7:0]", "hub_top/rx_valid", "hub_top/rx_error"
        states = [
            "hub_top/u_uart_rx/state[1:0]",
            "hub_top/u_frame_rx/state[2:0]",
            "hub_top/u_frame_tx/state[2:0]",
        ]
        self.expect_rows("treeWidget", data, *states, valid, error)
        self.drag("treeWidget", error, data, "above")
        self.expect_rows("treeWidget", error, data, *states, valid)
        self.expect_selected("treeWidget", error)
        self.drag("treeWidget", data, states[1], "below")
        self.expect_rows("treeWidget", error, states[0], states[1], data, states[2], valid)
        self.select("treeWidget", states[0], data)
        self.drag("treeWidget", data, None, "end")
        self.expect_rows("treeWidget", error, states[1], states[2], valid, states[0], data)
        self.expect_selected("treeWidget", states[0], data)
        self.screen.key("alt+Up")
        self.expect_rows("treeWidget", error, states[1], states[2], states[0], data, valid)
        self.screen.key("alt+Down")
        self.expect_rows("treeWidget", error, states[1], states[2], valid, states[0], data)
        self.expect_selected("treeWidget", states[0], data)
        self.screen.shoot("ordered")

        self.click_row("treeWidget", states[2], times=2)
        members = [f". hub_top/u_frame_tx/state[{n}]" for n in (2, 1, 0)]
        self.drag("treeWidget", states[2], None, "end")
        self.expect_rows(
            "treeWidget", error, states[1], valid, states[0], data, states[2], *members
        )
        self.drag("treeWidget", states[2], valid, "above")
        member = "hub_top/u_frame_tx/state[1]"
        self.drag("treeWidget", error, member, "below")
        self.expect_rows(
            "treeWidget", error, states[1], states[2], *members, valid, states[0], data
        )
        self.select("treeWidget", member)
        self.find("btnRemove", enabled=False)
        self.screen.key("Delete")
        self.select("treeWidget", states[2], valid)
        self.screen.key("Delete")
        self.expect_rows("treeWidget", error, states[1], states[0], data)
        self.find("labelCount", text="14 of 256")
        self.accept()
        self.expect_rows(
            "treeProbeIn",
            "Probe In0",
            *[f". {signal}" for signal in (error, states[1], states[0], data)],
            "Probe In1",
            "Probe In2",
        )

    def finds_its_size_again(self):
        for width, height in ((450, 480), (410, 461)):
            self.open_port("In", 1)
            run("xdotool", "getactivewindow", "windowsize", str(width), str(height))
            expect_soon("the size", self.size_of_port, [width, height])
            self.leave("Probe In Port")
            self.open_port("Out", 1)
            expect_soon("the size", self.size_of_port, [width, height])
            self.leave("Probe Out Port")

    def size_of_port(self):
        return self.find("TARN__ProbeDialog").rect[2:]

    def picks_within_an_instance(self):
        self.open_port("In", 1)
        self.open_search()
        self.press("checkBoxAdvancedFilter")
        self.search_in("u_frame_rx[frame_rx]")
        self.search(
            "crc",
            "hub_top/u_frame_rx/crc[7:0]",
            "hub_top/u_frame_rx/u_crc/data[7:0]",
            "hub_top/u_frame_rx/u_crc/crc[7:0]",
            "hub_top/u_frame_rx/crc_ok",
            "hub_top/u_frame_rx/u_crc/clk",
            "hub_top/u_frame_rx/u_crc/clear",
            "hub_top/u_frame_rx/u_crc/enable",
        )
        self.press("checkBoxIncludeSubentries")
        self.search("crc", "hub_top/u_frame_rx/crc[7:0]", "hub_top/u_frame_rx/crc_ok")
        self.screen.shoot("instance")
        self.choose("hub_top/u_frame_rx/crc_ok")
        self.press("checkBoxIncludeSubentries")
        self.press("checkBoxHierarchyView")
        self.search_in("u_adc[adc_sampler]")
        self.search("data", "adc_sampler:u_adc", ". spi_master:u_spi")
        self.click_row("treeWidget", "spi_master:u_spi", times=2)
        self.expect_rows(
            "treeWidget",
            "adc_sampler:u_adc",
            ". spi_master:u_spi",
            ". . tx_data[15:0]",
            ". . rx_data[15:0]",
        )
        self.choose("rx_data[15:0]")
        self.screen.shoot("hierarchy")
        self.expect_chosen("hub_top/u_frame_rx/crc_ok", "hub_top/u_adc/u_spi/rx_data[15:0]")
        self.accept()
        self.accept()

    def removes_a_port(self):
        self.select("treeProbeIn", "Probe In2")
        self.press("btnProbeInRemove")
        wait_for("two ports", lambda: "Probe In2" not in self.rows("treeProbeIn"))

    def picks_nets_to_drive(self):
        self.open_port("Out", 0)
        self.open_search()
        driven = [
            f"hub_top/led_channel[{n}].u_pwm/{name}[7:0]"
            for n in range(3)
            for name in ("duty", "active_duty")
        ]
        self.search(
            "duty",
            "hub_top/dbg_duty[7:0]",
            "hub_top/duty[23:0]",
            "hub_top/u_regs/duty[23:0]",
            *driven,
            "hub_top/dbg_duty_force",
        )
        for row in ("hub_top/dbg_duty[7:0]", "hub_top/dbg_duty_force"):
            self.click_row("treeWidget", row, times=2)
        # Grey: the design drives it already.
        self.click_row("treeWidget", "hub_top/duty[23:0]")
        self.screen.shoot("drivable")
        self.press("btnAdd")
        self.click_row("treeWidget", "hub_top/duty[23:0]", times=2)
        self.expect_chosen("hub_top/dbg_duty[7:0]", "hub_top/dbg_duty_force")
        self.accept()
        self.drag("treeWidget", "hub_top/dbg_duty_force", "hub_top/dbg_duty[7:0]", "above")
        self.expect_rows("treeWidget", "hub_top/dbg_duty_force", "hub_top/dbg_duty[7:0]")
        self.accept()

        self.open_port("Out", 1)
        self.open_search()
        self.press("checkBoxAdvancedFilter")
        self.press("checkBoxHierarchyView")
        self.search(
            "hub_top/dbg_[^d]*",
            "hub_top",
            ". dbg_sample_force",
            ". dbg_lamp_test",
            mode="regular expression",
        )
        self.choose("dbg_lamp_test")
        self.expect_chosen("hub_top/dbg_lamp_test")
        self.screen.shoot("hierarchy")
        self.accept()
        self.accept()
        self.expect_rows(
            "treeProbeOut",
            "Probe Out0",
            ". hub_top/dbg_duty_force",
            ". hub_top/dbg_duty[7:0]",
            "Probe Out1",
            ". hub_top/dbg_lamp_test",
        )

    def sets_initial_values(self):
        self.expect_values(["0x000", "0x0"], ["0", "00000000", "0"])
        self.type_value(0, "1a5")
        self.screen.key("Tab")
        self.expect_values(["0x1A5", "0x0"], ["1", "10100101", "0"])
        self.type_value(1, "2")
        self.screen.key("Tab")
        self.expect_box(
            "Error", "Value '2' for Probe Out1 Initial Value exceeds the effective width."
        )
        self.screen.shoot("too wide")
        self.accept()
        self.expect_values(["0x1A5", "0x0"], ["1", "10100101", "0"])
        self.type_value(1, "1")
        self.screen.key("Tab")
        self.expect_values(["0x1A5", "0x1"], ["1", "10100101", "1"])
        self.screen.shoot("values")

    def pastes_a_value(self):
        # The middle button pastes the selection; the line accepts hexadecimal digits only.
        self.click(self.find("lineEditUserClock").rect, times=2)
        x, y, _, height = self.lines()[0].rect
        # Not before and into the "0x".
        self.screen.click(x + 3, y + height // 2, button=2)
        self.screen.click(x + 25, y + height // 2, button=2)
        self.wait_for_tab("job.tarn *")
        value = self.values()[0]
        expect(value[:2] == "0x" and value != "0x1A5", f"{value} is pasted")
        self.screen.shoot("pasted")
        self.type_value(0, "1a5")
        self.screen.key("Tab")
        self.save("job.tarn")
        self.expect_saved()

    def picks_the_clock(self):
        self.press("checkUserClock")
        self.expect_refused_save("Tarn 0: No synchronization clock specified")
        self.press("btnUserClock")
        self.wait_for_window("Search Nets")
        self.search(
            "hub_top/clk_*",
            "hub_top/clk_50m",
            "hub_top/clk_sys",
            "hub_top/clk_disp",
            mode="wildcard",
        )
        self.choose("hub_top/clk_sys")
        self.screen.shoot("clock")
        self.accept()
        self.find("lineEditUserClock", text="hub_top/clk_sys")


class PacketFilter(Job):
    BLOCK = "pf_top/dbg_block[3:0]"
    VERDICT = "pf_top/lane[2].u_lane/dbg_verdict[1:0]"
    FORCE = "pf_top/lane[2].u_lane/dbg_force_verdict"
    VALID = "pf_top/u_arbiter/lane_valid[3:0]"
    PORT1, PORT2 = (f"pf_top/lane[{n}].u_lane/header.port[15:0]" for n in (1, 2))
    RUNT, PASSED, DROPPED = (
        f"pf_top/lane[0].u_lane/{name}" for name in ("runt", "passed", "dropped")
    )

    def run(self):
        self.create("job")
        self.open_from_project("job.tarn", "job.tarn *")
        self.add_ports("In", 2)
        self.add_ports("Out", 3)
        self.expect_rows("treeProbeIn", "Probe In0", "Probe In1")
        self.expect_rows("treeProbeOut", "Probe Out0", "Probe Out1", "Probe Out2")
        self.picks_from_flat_lists()
        self.orders_by_dragging()
        self.picks_within_an_instance()
        self.picks_nets_to_drive()
        self.sets_initial_values()
        self.picks_the_clock()
        self.gives_up_a_port_with_the_same_net()
        self.save_and_reopen()
        self.save_again()
        self.quit()

    def picks_from_flat_lists(self):
        self.open_port("In", 0)
        self.open_search()
        self.search("LANE_VALID", self.VALID)
        self.press("checkBoxCaseSensitive")
        self.search("LANE_VALID")
        self.search("lane_valid", self.VALID)
        # Takes all rows, including the bits of a bus.
        self.press("btnAddAll")
        bits = [f"pf_top/u_arbiter/lane_valid[{n}]" for n in (3, 2, 1, 0)]
        self.expect_chosen(self.VALID, *bits)
        self.take_back(*bits)
        self.expect_chosen(self.VALID)

        self.search(
            r"*lane\[[12]\].u_lane/header*",
            "pf_top/lane[1].u_lane/header.kind[15:0]",
            self.PORT1,
            "pf_top/lane[1].u_lane/header.source[31:0]",
            "pf_top/lane[2].u_lane/header.kind[15:0]",
            self.PORT2,
            "pf_top/lane[2].u_lane/header.source[31:0]",
            "pf_top/lane[1].u_lane/header_valid",
            "pf_top/lane[2].u_lane/header_valid",
            mode="wildcard",
        )
        between = [
            "pf_top/lane[1].u_lane/header.source[31:0]",
            "pf_top/lane[2].u_lane/header.kind[15:0]",
        ]
        self.click_row("treeWidget", self.PORT1)
        self.click_row("treeWidget", self.PORT2, holding=["shift"])
        for row in between:
            self.click_row("treeWidget", row, holding=["ctrl"])
        self.screen.shoot("wildcard")
        self.press("btnAdd")
        self.expect_chosen(self.VALID, self.PORT1, self.PORT2)

        lane0 = [self.RUNT, self.PASSED, self.DROPPED]
        lane3 = [name.replace("lane[0]", "lane[3]") for name in lane0]
        self.search(
            r".*\[[03]\]\.u_lane/(runt|passed|dropped)",
            *lane0,
            *lane3,
            mode="regular expression",
        )
        self.press("btnAddAll")
        self.expect_chosen(self.VALID, self.PORT1, self.PORT2, *lane0, *lane3)
        self.take_back(*lane3)
        self.expect_chosen(self.VALID, self.PORT1, self.PORT2, *lane0)
        self.screen.shoot("regular expression")
        self.accept()

    def orders_by_dragging(self):
        valid, port1, port2 = self.VALID, self.PORT1, self.PORT2
        runt, passed, dropped = self.RUNT, self.PASSED, self.DROPPED
        self.expect_rows("treeWidget", valid, port1, port2, runt, passed, dropped)
        self.select("treeWidget", port2, passed, dropped)
        self.drag("treeWidget", passed, valid, "above")
        self.expect_rows("treeWidget", port2, passed, dropped, valid, port1, runt)
        self.expect_selected("treeWidget", port2, passed, dropped)
        self.select("treeWidget", port2)
        self.drag("treeWidget", port2, None, "end")
        self.expect_rows("treeWidget", passed, dropped, valid, port1, runt, port2)
        self.drag("treeWidget", dropped, runt, "below")
        self.expect_rows("treeWidget", passed, valid, port1, runt, dropped, port2)
        self.select("treeWidget", passed, port1)
        # Onto one of the dragged rows.
        self.drag("treeWidget", passed, port1, "above")
        self.expect_rows("treeWidget", passed, valid, port1, runt, dropped, port2)
        self.screen.shoot("ordered")
        self.accept()

    def picks_within_an_instance(self):
        self.open_port("In", 1)
        self.open_search()
        self.press("checkBoxAdvancedFilter")
        self.search_in("u_arbiter[pf_arbiter]")
        self.screen.shoot("instance")
        self.search("current", "pf_top/u_arbiter/current[1:0]")
        self.choose("pf_top/u_arbiter/current[1:0]")
        self.press("checkBoxHierarchyView")
        self.search_in("lane[2].u_lane[pf_lane]")
        self.press("checkBoxIncludeSubentries")
        self.search(
            ".*/(dropped|runt|level.*)",
            "pf_lane:lane[2].u_lane",
            ". runt",
            ". dropped",
            mode="regular expression",
        )
        self.choose("runt")
        self.press("checkBoxIncludeSubentries")
        modules = [
            "pf_lane:lane[2].u_lane",
            ". runt",
            ". pf_parser:u_parser",
            ". pf_matcher:u_matcher",
            ". pf_frame_buffer:u_buffer",
        ]
        self.search(".*/(runt|level.*)", *modules, mode="regular expression")
        self.click_row("treeWidget", "pf_frame_buffer:u_buffer", times=2)
        self.expect_rows("treeWidget", *modules, ". . level[6:0]")
        self.choose("level[6:0]")
        self.expect_chosen(
            "pf_top/u_arbiter/current[1:0]",
            "pf_top/lane[2].u_lane/runt",
            "pf_top/lane[2].u_lane/u_buffer/level[6:0]",
        )
        self.screen.shoot("hierarchy")
        self.accept()
        self.accept()

    def picks_nets_to_drive(self):
        self.open_port("Out", 0)
        self.open_search()
        self.search("dbg_block", self.BLOCK)
        self.choose(self.BLOCK)
        self.accept()
        self.accept()

        self.open_port("Out", 1)
        self.open_search()
        self.search(r"*lane\[2\]*dbg*", self.VERDICT, self.FORCE, mode="wildcard")
        self.choose(self.VERDICT)
        self.accept()
        self.accept()

        self.open_port("Out", 2)
        self.open_search()
        self.search("dbg_block", self.BLOCK)
        self.click_row("treeWidget", self.BLOCK)
        self.screen.key("Right")
        bits = [f"pf_top/dbg_block[{n}]" for n in (3, 2, 1, 0)]
        self.expect_rows("treeWidget", self.BLOCK, *[f". {bit}" for bit in bits])
        self.choose(bits[1], bits[3])
        self.expect_chosen(bits[1], bits[3])
        self.screen.shoot("bits of a bus")
        self.accept()
        self.accept()
        self.expect_rows(
            "treeProbeOut",
            "Probe Out0",
            f". {self.BLOCK}",
            "Probe Out1",
            f". {self.VERDICT}",
            "Probe Out2",
            f". {bits[1]}",
            f". {bits[3]}",
        )

    def sets_initial_values(self):
        self.expect_values(["0x0", "0x0", "0x0"], ["0000", "00", "0", "0"])
        self.type_value(0, "9")
        self.type_value(1, "4")
        self.expect_values(["0x9", "0x4", "0x0"], ["1001", "00", "0", "0"])
        self.screen.key("Tab")
        self.expect_box(
            "Error", "Value '4' for Probe Out1 Initial Value exceeds the effective width."
        )
        self.screen.shoot("too wide")
        self.accept()
        self.expect_values(["0x9", "0x0", "0x0"], ["1001", "00", "0", "0"])
        self.type_value(1, "3")
        self.screen.key("Tab")
        self.expect_values(["0x9", "0x3", "0x0"], ["1001", "11", "0", "0"])

        # An added signal comes last, on the right, and starts with zeros.
        self.open_port("Out", 1)
        self.open_search()
        self.search(self.FORCE, self.FORCE)
        self.choose(self.FORCE)
        self.accept()
        self.accept()
        self.expect_values(["0x9", "0x6", "0x0"], ["1001", "11", "0", "0", "0"])
        self.screen.shoot("values")

    def picks_the_clock(self):
        self.press("checkUserClock")
        self.press("btnUserClock")
        self.wait_for_window("Search Nets")
        self.search("pf_top/clk", "pf_top/clk", mode="regular expression")
        self.choose("pf_top/clk")
        self.reach(text="OK")
        self.screen.key("KP_Enter", "Escape")
        self.expect_chosen("pf_top/clk")
        self.screen.key("Return")
        self.wait_for_no_window("Search Nets")
        self.find("lineEditUserClock", text="pf_top/clk")

    def gives_up_a_port_with_the_same_net(self):
        self.expect_refused_save(
            *[
                f'ERROR:Signal "pf_top/dbg_block[{n}]" has multiple drivers'
                "(tarn_0->Probe Out0, tarn_0->Probe Out2,)"
                for n in (0, 2)
            ]
        )
        self.select("treeProbeOut", "Probe Out2")
        self.press("btnProbeOutRemove")
        self.expect_values(["0x9", "0x6"], ["1001", "11", "0"])


class MotorDrive(Job):
    """A design in two languages: the search finds the nets of both, whatever their case."""

    DEMAND = [f"motor_top/u_Pwm/channel[{n}].u_dead_time/Demand" for n in range(3)]
    REMAINING = [f"motor_top/u_Pwm/channel[{n}].u_dead_time/Remaining[4:0]" for n in range(3)]
    DUTY = [f"motor_top/DbgDuty[{n}][9:0]" for n in range(3)]
    FORCE = "motor_top/DbgForceDuty"
    FAULT = "motor_top/DbgFault"
    GATES_OFF = "motor_top/u_Pwm/dbg_gates_off"

    def run(self):
        self.create("job")
        self.open_from_project("job.tarn", "job.tarn *")
        self.add_ports("In", 2)
        self.add_ports("Out", 1)
        self.picks_from_flat_lists()
        self.picks_within_an_instance()
        self.picks_nets_to_drive()
        self.sets_the_initial_value()
        self.picks_the_clock()
        self.save_and_reopen()
        self.quit()

    def picks_from_flat_lists(self):
        self.open_port("In", 0)
        self.open_search()
        self.search("remaining", *self.REMAINING)
        self.choose(self.REMAINING[1])
        self.search(
            "*/status.state*",
            "motor_top/Status.State[2:0]",
            "motor_top/u_Registers/Status.State[2:0]",
            mode="wildcard",
        )
        self.choose("motor_top/Status.State[2:0]")
        self.search(
            ".*/(demand|carrier.*)",
            "motor_top/u_Pwm/carrier[9:0]",
            *self.DEMAND,
            mode="regular expression",
        )
        self.choose(self.DEMAND[1])
        self.screen.shoot("both languages")
        self.expect_chosen(self.REMAINING[1], "motor_top/Status.State[2:0]", self.DEMAND[1])
        self.accept()
        self.accept()

    def picks_within_an_instance(self):
        self.open_port("In", 1)
        self.open_search()
        self.press("checkBoxAdvancedFilter")
        self.press("checkBoxHierarchyView")
        self.search_in("u_Pwm[pwm_core]")
        self.search(
            "ready",
            "pwm_core:u_Pwm",
            *[f". dead_time:channel[{n}].u_dead_time" for n in range(3)],
        )
        self.click_row("treeWidget", "dead_time:channel[2].u_dead_time", times=2)
        self.choose("Ready")
        self.screen.shoot("hierarchy")
        self.expect_chosen("motor_top/u_Pwm/channel[2].u_dead_time/Ready")
        self.accept()
        self.accept()

    def picks_nets_to_drive(self):
        self.open_port("Out", 0)
        self.open_search()
        self.search("dbg", *self.DUTY, self.FORCE, self.FAULT, self.GATES_OFF)
        self.choose(self.DUTY[1], self.FORCE, self.GATES_OFF)
        self.expect_chosen(self.DUTY[1], self.FORCE, self.GATES_OFF)
        self.screen.shoot("nets to drive")
        self.accept()
        self.accept()

    def sets_the_initial_value(self):
        self.expect_values(["0x000"], ["0000000000", "0", "0"])
        self.type_value(0, "801")
        self.screen.key("Tab")
        self.expect_values(["0x801"], ["1000000000", "0", "1"])

    def picks_the_clock(self):
        self.press("checkUserClock")
        self.press("btnUserClock")
        self.wait_for_window("Search Nets")
        self.search("motor_top/clk", "motor_top/Clk", mode="wildcard")
        self.choose("motor_top/Clk")
        self.accept()
        self.find("lineEditUserClock", text="motor_top/Clk")


STORIES = {"sensorhub": SensorHub, "packetfilter": PacketFilter, "motordrive": MotorDrive}


def main(program, example, plugins, shots):
    story = STORIES[Path(example).name]
    return drive(program, example, plugins, shots, story, suffixes=["json"])


if __name__ == "__main__":
    if len(sys.argv) != 5:
        sys.exit(__doc__)
    sys.exit(main(*sys.argv[1:]))
