# SPDX-FileCopyrightText: The TARN Inserter authors
# SPDX-License-Identifier: Apache-2.0
"""A private desktop for a driven program: X server, window manager, mouse, keys and pixels."""

import os
import re
import shutil
import subprocess
import tempfile
import time
from pathlib import Path

PATIENCE = 120  # seconds that a machine under load may take for one step


class Failure(Exception):
    pass


def expect(condition, what):
    if not condition:
        raise Failure("not so: " + what)


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

    def part(self, x, y, width, height):
        """The pixels of a rectangle, for comparisons."""
        return [row[3 * x : 3 * (x + width)] for row in self.rows[y : y + height]]

    def has(self, colour, x, y, width, height):
        """Whether several pixels of the rectangle have this colour."""
        part = self.part(x, y, width, height)
        pixels = (row[3 * i : 3 * i + 3] for row in part for i in range(width))
        return sum(pixel == colour for pixel in pixels) >= 10


class Screen:
    """Mouse, keys and pixels of one X server."""

    def __init__(self, shots):
        self.shots = shots
        self.count = 0

    def key(self, *keys):
        for key in keys:
            run("xdotool", "key", "--clearmodifiers", key)

    def type(self, text):
        run("xdotool", "type", "--delay", "5", text)

    def click(self, x, y, button=1, times=1, holding=()):
        """Clicks while the keys `holding` are down."""
        self.move(x, y)
        down = [word for key in holding for word in ("keydown", key)]
        up = [word for key in holding for word in ("keyup", key)]
        click = ["click", "--repeat", str(times), "--delay", "30", str(button)]
        run("xdotool", *down, *click, *up)

    def move(self, *path):
        """Moves the mouse to the points x, y, x, y... one after the other."""
        steps = zip(path[::2], path[1::2])
        run("xdotool", *[word for x, y in steps for word in ("mousemove", str(x), str(y))])

    def button_down(self):
        run("xdotool", "mousedown", "1")

    def button_up(self):
        run("xdotool", "mouseup", "1")

    def still(self):
        """The screen once nothing moves on it any more."""

        def unchanged():
            first = Image()
            time.sleep(0.4)
            second = Image()
            return second if first.rows == second.rows else None

        return wait_for("a screen at rest", unchanged)

    def shoot(self, name):
        self.count += 1
        run("import", "-window", "root", str(self.shots / f"{self.count:02}-{name}.png"))


class Workbench:
    """The application as a process, what it writes, and where it reports its widgets."""

    def __init__(self, program, files, scratch, plugins):
        self.log = scratch / "log"
        self.report = scratch / "report"
        self.command = [program, *files]
        self.environment = dict(os.environ, QT_QPA_PLATFORM="xcb", QT_STYLE_OVERRIDE="Fusion")
        self.environment["QT_PLUGIN_PATH"] = str(plugins)
        self.environment["QT_QPA_GENERIC_PLUGINS"] = f"widgetreport:{self.report}"
        self.environment["XDG_STATE_HOME"] = str(scratch / "state")
        self.start()

    def start(self):
        with open(self.log, "wb") as output:
            self.process = subprocess.Popen(
                self.command,
                stdin=subprocess.DEVNULL,
                stdout=output,
                stderr=output,
                env=self.environment,
            )

    def kill(self):
        """Ends the process as a crash does: it cannot do anything about it."""
        self.process.kill()
        self.process.wait()
        self.report.unlink()

    def end(self):
        self.process.terminate()
        self.process.wait()

    def lines(self):
        return self.log.read_text(errors="replace").splitlines()

    def expect_running(self):
        if self.process.poll() is not None:
            raise Failure(f"the workbench ended, code {self.process.returncode}")

    def wait_for_line(self, beginning, count=1):
        def written():
            self.expect_running()
            return sum(line.startswith(beginning) for line in self.lines()) >= count

        wait_for(f'line "{beginning}" {count} times', written)


def start_x_server():
    """Takes the first free number. Without -noreset the server would restart, and refuse
    connections meanwhile, whenever its last client disconnects."""
    read_end, write_end = os.pipe()
    screen = ["-screen", "0", "1280x800x24"]
    server = subprocess.Popen(
        ["Xvfb", "-displayfd", str(write_end), *screen, "-nolisten", "tcp", "-noreset"],
        pass_fds=[write_end],
        stdin=subprocess.DEVNULL,
        stderr=subprocess.DEVNULL,
    )
    os.close(write_end)
    with os.fdopen(read_end) as display:
        os.environ["DISPLAY"] = ":" + display.readline().strip()
    return server


def start_window_manager():
    """Has to run before the first window appears: at its start it moves the windows it finds."""
    manager = subprocess.Popen(["openbox"], stderr=subprocess.DEVNULL)
    asks = ["xdotool", "get_num_desktops"]
    wait_for(
        "a window manager", lambda: subprocess.run(asks, capture_output=True).returncode == 0
    )
    return manager


def drive(program, example, plugins, shots, story, suffixes=("json", "tarn")):
    """Like drive_in(), in a temporary folder."""
    with tempfile.TemporaryDirectory(prefix="tarn drive ") as scratch:
        return drive_in(Path(scratch), program, example, plugins, shots, story, suffixes)


def drive_in(scratch, program, example, plugins, shots, story, suffixes=("json", "tarn")):
    """Runs story(screen, workbench, folder).run() with the workbench on a copy of the example in
    the folder `scratch`, and prints the outcome. Returns the exit code.

    The workbench opens the files of the example with these suffixes. It finds the plug-in that
    reports its widgets in the folder `plugins`."""
    shots = Path(shots)
    shots.mkdir(parents=True, exist_ok=True)
    for old in shots.glob("*.png"):
        old.unlink()
    for name in ("WAYLAND_DISPLAY", "QT_QPA_PLATFORMTHEME", "XDG_CURRENT_DESKTOP"):
        os.environ.pop(name, None)

    processes = [start_x_server()]
    screen = Screen(shots)
    folder = scratch / Path(example).name
    shutil.copytree(example, folder)
    files = [folder / f"{folder.name}.{suffix}" for suffix in suffixes]
    workbench = None
    try:
        processes.append(start_window_manager())
        workbench = Workbench(program, files, scratch, plugins)
        story(screen, workbench, folder).run()
    except Failure as failure:
        screen.shoot("failure")
        print(f"FAILED: {failure}; screenshots in {shots}")
        if workbench:
            print("The workbench wrote:", *workbench.lines(), sep="\n")
        return 1
    finally:
        if workbench:
            workbench.end()
        for process in reversed(processes):
            process.terminate()
            process.wait()
    print(f"passed, {screen.count} screenshots in {shots}")
    return 0
