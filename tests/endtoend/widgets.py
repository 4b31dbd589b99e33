# SPDX-FileCopyrightText: The TARN Inserter authors
# SPDX-License-Identifier: Apache-2.0
"""Finds the widgets of the driven program by name and text, for a real mouse and real keys.

The plug-in widgetreport.cpp in the program reports what is shown and where. All input goes through
the X server, like that of a user.
"""

import json
import socket
import time
from types import SimpleNamespace

from desktop import Failure, Image, wait_for

# The colours of the signs that mark rows.
SIGNS = {"error": bytes((204, 0, 0)), "warning": bytes((255, 176, 0))}


def centre(rect):
    return rect[0] + rect[2] // 2, rect[1] + rect[3] // 2


def expect_soon(what, actual, expected):
    """Waits until the function `actual` returns what is expected."""
    try:
        wait_for(what, lambda: actual() == expected)
    except Failure:
        raise Failure(f"{what} is\n{shown(actual())}\nand not\n{shown(expected)}") from None


def shown(value):
    return "\n".join(value) if isinstance(value, list) else value


class Widgets:
    """Mouse and keys on the widgets of the active window. Waits for each widget it uses."""

    def __init__(self, screen, workbench):
        self.screen = screen
        self.workbench = workbench

    def report(self):
        """Everything that the program shows now."""
        self.workbench.expect_running()
        with socket.socket(socket.AF_UNIX) as client:
            try:
                client.connect(str(self.workbench.report))
            except OSError:  # It has only just started.
                return SimpleNamespace(dragging=False, widgets=[])
            with client.makefile("rb") as answer:
                return json.loads(answer.read(), object_hook=lambda d: SimpleNamespace(**d))

    def shown(self, name=None, **wanted):
        """The widgets of the active window that have the name and the properties."""
        if name:
            wanted["name"] = name
        return [
            widget
            for widget in self.report().widgets
            if widget.active and all(getattr(widget, key) == wanted[key] for key in wanted)
        ]

    def find(self, name=None, **wanted):
        """The only such widget, once it neither changes nor moves."""

        def found():
            widgets = self.shown(name, **wanted)
            time.sleep(0.03)
            return len(widgets) == 1 and widgets == self.shown(name, **wanted) and widgets[0]

        return wait_for(f"one widget {name or ''} {wanted or ''}", found)

    def wait_for_window(self, title):
        wait_for(f'window "{title}"', lambda: self.shown(window=title))

    def wait_for_no_window(self, title):
        def gone():
            return all(widget.window != title for widget in self.report().widgets)

        wait_for(f'end of window "{title}"', gone)

    def press_entry(self, text):
        """Presses an entry of the menu that is open."""
        self.click(self.row("", text, type="QMenu").rect)

    def press(self, name=None, **wanted):
        self.click(self.find(name, enabled=True, **wanted).rect)

    def click(self, rect, right=12, **how):
        """Clicks near the left end: a wide check box ignores clicks elsewhere."""
        x, y, width, height = rect
        self.screen.click(x + min(width // 2, right), y + height // 2, **how)

    def reach(self, **wanted):
        """Gives the widget the focus with the Tab key."""
        for _ in range(30):
            if self.find(**wanted).focus:
                return
            self.screen.key("Tab")
        raise Failure(f"Tab does not reach {wanted}")

    def enter(self, name, text):
        """Replaces the text of the line."""
        self.click(self.find(name, enabled=True).rect)
        self.screen.key("ctrl+a", "BackSpace")
        self.screen.type(text)
        self.find(name, text=text)

    def rows(self, name):
        """The rows of a list as text, indented by depth."""
        return [". " * row.depth + row.text for row in self.find(name).rows]

    def expect_rows(self, name, *rows):
        expect_soon(name, lambda: self.rows(name), list(rows))

    def row(self, name, text, column=0, **wanted):
        """The only row with this text in the column. Scrolls to it when needed."""

        def text_of(row):
            return row.cells[column] if column else row.text

        def found():
            view = self.find(name, **wanted)
            places = [i for i, row in enumerate(view.rows) if text_of(row) == text]
            if len(places) != 1:
                return None
            row = view.rows[places[0]]
            if row.rect[2] > 0:
                return row
            above = all(row.rect[2] <= 0 for row in view.rows[: places[0]])
            wheel = 4 if above else 5
            self.screen.click(*centre(view.rect), wheel)
            return None

        return wait_for(f"row {text} of {name or wanted}", found)

    def click_row(self, name, text, **how):
        # On the text: a row may begin with a check box.
        self.click(self.row(name, text).rect, right=40, **how)

    def select(self, name, *rows):
        """Selects these rows and no others, one by one."""
        for i, row in enumerate(rows):
            self.click_row(name, row, holding=["ctrl"] if i else [])
        self.expect_selected(name, *rows)

    def expect_selected(self, name, *rows):
        expect_soon(f"selection of {name}", lambda: sorted(self.selected(name)), sorted(rows))

    def selected(self, name):
        return [row.text for row in self.find(name).rows if row.selected]

    def signs(self, *names):
        """The rows of these lists that bear a painted sign, with what the sign says."""
        image = Image()
        return {
            row.text: level
            for name in names
            for row in self.find(name).rows
            for level, colour in SIGNS.items()
            if image.has(colour, *row.rect)
        }

    def drag(self, name, text, target, place):
        """Drags a row with the mouse to the upper or lower half of the target, or below all rows. A
        selected row takes the whole selection with it."""
        self.pick_up(name, text)
        if place == "end":
            x, y, width, height = self.find(name).rect
            y += height - 12
        else:
            x, y, width, height = self.row(name, target).rect
            y += {"above": 3, "below": height - 4}[place]
        self.screen.move(x + 40, y - 1, x + 40, y)
        self.screen.button_up()
        wait_for("a drop", lambda: not self.report().dragging)

    def pick_up(self, name, text):
        """Presses the mouse on a row and moves it until it drags."""
        x, y, width, height = self.row(name, text).rect
        y += height // 2
        self.screen.move(x + 12, y)
        self.screen.button_down()

        def dragging():
            # To and fro: the server merges moves that the program has not read yet.
            self.screen.move(x + 30, y, x + 40, y)
            return self.report().dragging

        wait_for(f"a drag of {text}", dragging)
