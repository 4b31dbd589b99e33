# SPDX-FileCopyrightText: The TARN Inserter authors
# SPDX-License-Identifier: Apache-2.0
"""The windows of the editor, as a user handles them with mouse and keys."""

import re

from desktop import expect, wait_for
from widgets import Widgets, expect_soon

MODES = {
    "normal": "radioButtonNormal",
    "wildcard": "radioButtonWildcard",
    "regular expression": "radioButtonRegularExpression",
}


def change_text(file, *replacements):
    """Replaces regular expressions, each of which must be in the file."""
    text = file.read_text()
    for pattern, new in replacements:
        text, count = re.subn(pattern, new, text)
        expect(count > 0, f"{pattern} in {file.name}")
    file.write_text(text)


class Editor(Widgets):
    # Files

    def create(self, name):
        self.find("files")  # The main window is there.
        self.screen.key("ctrl+n")
        self.wait_for_window("New File")
        self.screen.key("Return")
        self.wait_for_window("New TARN Config File")
        self.screen.type(name)
        self.find("editName", text=name)
        self.screen.shoot("wizard")
        self.screen.key("Return")
        self.wait_for_no_window("New TARN Config File")

    def open_by_menu(self, path, title):
        self.screen.key("alt+f")
        self.press_entry("Open...")
        self.wait_for_window("Open")
        self.enter("fileNameEdit", str(path))
        self.screen.key("Return")
        self.wait_for_no_window("Open")
        self.wait_for_tab(title)

    def open_from_project(self, name, title):
        self.click_row("files", name, times=2)
        self.wait_for_tab(title)

    def close(self):
        self.screen.key("ctrl+w")
        expect_soon("tabs", self.tabs, [])

    def tabs(self):
        """The titles of the open files."""
        bars = self.shown("qt_tabwidget_tabbar")
        return [tab.text for bar in bars for tab in bar.rows if ".tarn" in tab.text]

    def wait_for_tab(self, title):
        expect_soon("tabs", self.tabs, [title])

    def quit(self):
        self.screen.key("ctrl+q")
        wait_for("the end", lambda: self.workbench.process.poll() is not None)
        expect(self.workbench.process.returncode == 0, "exit code 0")

    def save(self, name):
        self.screen.key("ctrl+s")
        self.wait_for_tab(name)

    def expect_refused_save(self, *details):
        self.screen.key("ctrl+s")
        self.expect_box("Error", "Your settings contain some errors." + 13 * " ")
        self.press(text="Show Details...")
        shown = self.find(type="QTextEdit").text
        expect(shown == "\n".join(details), f"{shown} in the details of the error")
        self.screen.shoot("refused")
        self.press(text="OK")
        self.wait_for_no_window("Error")

    def expect_box(self, title, text):
        self.wait_for_window(title)
        shown = self.find("qt_msgbox_label").text
        expect(shown == text, f'"{shown}" in the box')

    # The list of cores

    def choose_for_core(self, core, entry):
        self.click_row("treeWidget", core, button=3)
        self.press_entry(entry)

    # Banners

    def wait_for_banners(self, count):
        wait_for(f"{count} banners", lambda: len(self.banners()) == count)

    def banners(self):
        return [*self.shown("TARN__ReloadBanner"), *self.shown("TARN__UnsavedBanner")]

    def answer_banner(self, answer):
        self.wait_for_banners(1)
        self.screen.shoot("banner")
        self.press(text=answer)
        self.wait_for_banners(0)

    # The findings

    def findings(self):
        """The rows of the list, each as severity, place and text."""
        return [tuple(row.cells) for row in self.rows_of_findings()]

    def rows_of_findings(self):
        lists = self.shown("listFindings")
        return lists[0].rows if lists else []

    def select_finding(self, place):
        self.click(self.row("listFindings", place, column=1).rect)
        expect_soon("the finding", self.current_finding, place)

    def current_finding(self):
        """The place of the finding."""
        return next((row.cells[1] for row in self.rows_of_findings() if row.selected), None)

    # The page of the ports

    def add_ports(self, kind, count):
        for _ in range(count):
            self.press(f"btnProbe{kind}Add")

    def open_port(self, kind, number):
        self.click_row(f"treeProbe{kind}", f"Probe {kind}{number}", times=2)
        self.wait_for_window(f"Probe {kind} Port")

    def lines(self):
        """The initial values, from top to bottom."""
        return sorted(self.shown(type="TARN::InitialValueLine"), key=lambda line: line.rect[1])

    def values(self):
        return [line.text for line in self.lines()]

    def bits(self):
        """The labels beside the signals, from top to bottom."""
        x, y, width, height = self.find("treeValue").rect
        labels = [
            label
            for label in self.shown(type="QLabel")
            if x < label.rect[0] < x + width and y < label.rect[1] < y + height
        ]
        return [label.text for label in sorted(labels, key=lambda label: label.rect[1])]

    def expect_values(self, values, bits):
        expect_soon("the values", self.values, values)
        expect_soon("the bits", self.bits, bits)

    def type_value(self, number, digits):
        """Replaces an initial value, without leaving the line."""
        x, y, width, height = self.lines()[number].rect
        self.screen.click(x + width - 10, y + height // 2)
        wait_for("the focus on the value", lambda: self.lines()[number].focus)
        self.screen.key("Home", "Right", "Right")
        self.screen.type(digits)

    def expand_all(self):
        for tree in ("treeProbeOut", "treeProbeIn"):
            ports = [row.text for row in self.find(tree).rows if row.depth == 0]
            for port in reversed(ports):
                self.select(tree, port)
                self.screen.key("asterisk")
                wait_for(f"{port} expanded", lambda: self.row(tree, port).expanded)

    def page(self):
        """The page with all ports expanded: its texts, and the pixels at its top."""
        self.expand_all()
        self.screen.move(0, 0)
        pixels = self.screen.still().part(*self.find("TARN__ProbePortsOptionWidget").rect)
        texts = [self.rows("treeProbeIn"), self.rows("treeProbeOut"), self.values(), self.bits()]
        return pixels, texts, self.find("lineEditUserClock").text

    # The dialogs of a port

    def accept(self):
        """Presses OK in the active window and waits until it is gone."""
        button = self.find(text="OK")
        self.click(button.rect)
        self.wait_for_no_window(button.window)

    def leave(self, title):
        """Cancels the window."""
        self.press(text="Cancel")
        self.wait_for_no_window(title)

    def open_search(self):
        self.press("btnAdd")
        self.wait_for_window("Search Nets")
        expect(self.find("lineEditName").focus, "the name field has the focus")

    def search(self, pattern, *results, mode="normal"):
        self.press(MODES[mode])
        self.enter("lineEditName", pattern)
        self.screen.key("Return")
        self.expect_rows("treeWidget", *results)

    def search_in(self, module):
        self.press("comboBoxSearchIn")
        row = self.row("", module, type="TARN::RtlNetlistTreeView")
        self.click(row.rect, right=40)
        self.find("comboBoxSearchIn", text=module)

    def choose(self, *rows):
        """Adds these results to the chosen signals."""
        self.select("treeWidget", *rows)
        self.press("btnAdd")

    def expect_chosen(self, *rows):
        self.expect_rows("treeWidgetAddSignal", *rows)

    def take_back(self, *rows):
        self.select("treeWidgetAddSignal", *rows)
        self.press("btnDel")
