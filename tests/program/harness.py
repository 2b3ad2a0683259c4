"""Drives the unmodified program under Wine: real files, windows, clicks and keys."""

import json
import os
import shutil
import signal
import subprocess
import time
from pathlib import Path

from desktop import (BINARIES, BOX_CLASS, DEADLINE, LOCALE, click, click_tray_icon,
                     end_processes_in, geometry, happens, run, tray_icon, until, window_under_pointer, windows_of,
                     windows_path)
from task_list import MARK, list_bytes, read_tasks

ROW_HEIGHT = 86  # pixels, of the task list
MENU_CLASS = "#32768"
NOTE_CLASS = "frmNotes"  # and a number
TOOLBAR = ["new", "play", "stop", "options", "leave"]

SETTINGS = {
    "SavedVolume": "50", "TimeForm": "0", "SongLoop": "0", "StartPlay": "0",
    "FilesPath": "C:\\音樂\\", "HinetUrl": "mms://host/RA",
}


class Folder:
    """A folder with the program and its files, as after an installation."""

    def __init__(self, path):
        # A blank and characters outside ASCII.
        self.path = path / "我的 Tellurvane"
        self.path.mkdir()
        self.executable = self.add("Tellurvane.exe")
        self.settings = self.path / "Setting.ini"
        self.list = self.path / "JobList.dbs"
        self.write_settings(SETTINGS)

    def add(self, binary, name=None):
        """Copies one of the built files here."""
        return Path(shutil.copy(BINARIES / binary, self.path / (name or binary)))

    def write_settings(self, values):
        lines = [f"{key}={value}" for key, value in values.items()]
        self.settings.write_bytes(MARK + "\r\n".join(["[Setting]", *lines, ""]).encode("utf-16-le"))

    def settings_text(self):
        return self.settings.read_bytes().removeprefix(MARK).decode("utf-16-le")

    def read_settings(self):
        return dict(line.split("=", 1) for line in self.settings_text().split("\r\n") if "=" in line)

    def write_list(self, *tasks):
        self.list.write_bytes(list_bytes(*tasks))

    def tasks(self):
        return read_tasks(self.list.read_bytes())

    def task(self, name):
        return next(task for task in self.tasks() if task.name == name)

    def task_names(self):
        return [task.name for task in self.tasks()]

    def backups(self):
        return sorted(self.path.glob("JobList.dbs.*.bak"))

    def names(self):
        return sorted(entry.name for entry in self.path.iterdir())


class Program:
    """One run of the program."""

    def __init__(self, folder, cwd=None, locale=LOCALE, trace=None, environment=None):
        environment = os.environ | {"LC_ALL": f"{locale}.UTF-8"} | (environment or {})
        self.folder = folder
        self.trace = trace
        self.concluded = False  # the test has seen its end
        self.started_at = time.monotonic()
        if trace:
            environment["WINEDEBUG"] = "+relay"
        with open(trace or os.devnull, "wb") as log:
            self.process = subprocess.Popen(
                ["wine", str(folder.executable)], cwd=cwd or folder.path, env=environment,
                stdin=subprocess.DEVNULL, stdout=log, stderr=log)

    def started(self):
        """Waits for the main window; by then the list has been loaded and rewritten."""
        until(lambda: self.code() is not None or self.main_on_screen(), "the main window")
        assert self.code() is None, f"the program ended with code {self.code()}"
        return self

    def age(self):
        """Seconds since it was started."""
        return time.monotonic() - self.started_at

    def code(self):
        """The exit code; none while it runs."""
        return self.process.poll()

    def wait(self, deadline=DEADLINE):
        """Waits for the end and returns the exit code."""
        until(lambda: self.code() is not None, "the end of the program", deadline)
        self.concluded = True
        return self.code()

    def kill(self):
        """Ends it as a power failure would."""
        self.process.send_signal(signal.SIGKILL)
        self.process.wait()
        self.concluded = True

    def on_screen(self, name=""):
        """The X ids of its visible windows, of all or those of a name."""
        return run("xdotool", "search", "--all", "--onlyvisible", "--pid", self.process.pid,
                   "--name", name).split()

    def main_on_screen(self):
        """The X id of the main window as a list; empty while it is hidden."""
        return self.on_screen("^Tellurvane$")

    def windows(self):
        """Its visible top-level windows with their children, the foremost first."""
        return windows_of(windows_path(self.folder.path))

    def window(self, caption):
        return next((window for window in self.windows() if window["text"] == caption), None)

    def box(self):
        """The foremost message box or dialog of the system."""
        return next((window for window in self.windows() if window["class"] == BOX_CLASS), None)

    def notes(self):
        """The reminder notes on the screen, the oldest first."""
        notes = [window for window in self.windows() if window["class"].startswith(NOTE_CLASS)]
        return sorted(notes, key=lambda note: int(note["class"].removeprefix(NOTE_CLASS)))

    def child(self, text):
        """Waits for a visible, enabled control by its text."""
        def find():
            return next((child for window in self.windows() for child in window["children"]
                         if child["text"] == text and child["visible"] and child["enabled"]), None)
        return until(find, f"a control {text}")

    def toolbar_button(self, name):
        """A button of the main window's toolbar."""
        left, top, right, bottom = self.parts()["toolbar"]
        width = (right - left) / len(TOOLBAR)
        number = TOOLBAR.index(name)
        return [int(left + width * number), top, int(left + width * (number + 1)), bottom]

    def main_window(self):
        """The main window; none while it is hidden."""
        return next((window for window in self.windows()
                     if any(child["class"] == "ToolbarWindow32" for child in window["children"])),
                    None)

    def parts(self):
        """The rectangles of the main window's controls, by their names."""
        return until(self._parts, "the parts of the main window")

    def _parts(self):
        window = self.main_window()
        if not window:
            return None

        def rects(window_class):
            return [child["rect"] for child in window["children"]
                    if child["class"] == window_class and child["visible"]]

        boxes = rects("TellurvanePictureBox")
        header, = rects("SysHeader32")
        # The two sliders lie side by side between the toolbar and the list, the strip lowest.
        toolbar, = rects("ToolbarWindow32")
        sliders = sorted(box for box in boxes if toolbar[3] <= box[1] and box[3] <= header[1])
        if len(sliders) != 2:
            return None  # not yet in its place
        return {"list": rects("SysListView32")[0], "header": header, "toolbar": toolbar,
                "volume": sliders[0], "position": sliders[1],
                "strip": max(boxes, key=lambda box: box[1])}

    def row(self, index):
        """The rectangle of a row of the task list, counted from 0, while it is not scrolled."""
        left, _, right, bottom = self.parts()["header"]
        return [left, bottom + index * ROW_HEIGHT, right, bottom + (index + 1) * ROW_HEIGHT]

    def row_texts(self):
        """The texts of the task list's rows, as a screen reader gets them: name, kind, what it does
        or why it failed, on or off, and its times."""
        handle = next(child["handle"] for child in self.main_window()["children"]
                      if child["class"] == "SysListView32")
        lines = run("wine", BINARIES / "ListRows.exe", handle, 1).splitlines()
        return [json.loads(line)[0] for line in lines]

    def position_is_enabled(self):
        rect = self.parts()["position"]
        return next(child["enabled"] for child in self.main_window()["children"]
                    if child["rect"] == rect)

    def menu(self):
        """Waits for a menu, and returns its rectangle."""
        window = until(lambda: next((window for window in self.windows()
                                     if window["class"] == MENU_CLASS), None), "a menu")
        return window["rect"]

    def has_menu(self):
        return any(window["class"] == MENU_CLASS for window in self.windows())

    def exit(self):
        """Leaves by the exit button, and returns the exit code."""
        self.show_again()

        def has_left():
            # A console window that closes just then may take the click: click again.
            self.click(self.toolbar_button("leave"))
            return happens(lambda: self.code() is not None, 5)

        until(has_left, "the end of the program")
        return self.wait()

    def click(self, rect):
        """Clicks a rectangle of a window, once no window of others covers it."""
        left, top, right, bottom = rect
        x, y = (left + right) // 2, (top + bottom) // 2

        def is_in_front():
            run("xdotool", "mousemove", x, y)
            tree = window_under_pointer()
            return any(f"{int(window):#x} " in tree for window in self.on_screen())

        until(is_in_front, "a window of the program under the pointer")
        click(x, y)

    def click_close_box(self):
        """The rightmost button of the frame that the window manager draws."""
        left, top, width = geometry(self.main_on_screen()[0], "Absolute upper-left X",
                                    "Absolute upper-left Y", "Width")
        click(left + width - 11, top - 11)

    def hide(self, close=None):
        """Closes the main window, by its close box or in another way, which only hides it."""
        def is_hidden():
            if self.main_on_screen():
                (close or self.click_close_box)()
            return happens(lambda: not self.main_on_screen(), 5)

        until(is_hidden, "the hidden window")

    def press(self, key):
        """A key for the main window, which is activated first."""
        run("xdotool", "windowactivate", "--sync", self.main_on_screen()[0], "key", key)

    def show_again(self):
        """Shows the main window where it is hidden."""
        def is_shown():
            # A search while other windows come and go may miss the window.
            if not self.main_on_screen() and tray_icon():
                click_tray_icon()
            return happens(self.main_on_screen, 5)

        until(is_shown, "the main window")


def end_all_in(folder):
    """Ends every process that was started from a folder."""
    end_processes_in(windows_path(folder.path), folder.executable)
