"""Drives the unmodified program under Wine as a user would: real files, windows, clicks, keys."""

import json
import os
import shutil
import signal
import subprocess
import time
from pathlib import Path

from PIL import ImageGrab

BINARIES = Path(os.environ["TELLURVANE_BINARIES"])
LOCALE = os.environ["LC_ALL"].partition(".")[0]
DEADLINE = 60  # seconds for anything to happen; long, because the machine may be busy
MARK = b"\xff\xfe"
ROW_HEIGHT = 86  # pixels, of the task list
MENU_CLASS = "#32768"
TRAY_PLACE = (800, 600)

SETTINGS = {
    "SavedVolume": "50", "TimeForm": "0", "SongLoop": "0", "StartPlay": "0",
    "FilesPath": "C:\\音樂\\", "HinetUrl": "mms://host/RA",
}


def until(condition, what, deadline=DEADLINE):
    """Asks until the answer is true, and returns it."""
    end = time.monotonic() + deadline
    while not (answer := condition()):
        assert time.monotonic() < end, f"waited {deadline} s in vain: {what}"
        time.sleep(0.02)
    return answer


def run(*command, **options):
    """The standard output of a command."""
    return subprocess.run([str(part) for part in command], check=False, stdin=subprocess.DEVNULL,
                          stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, timeout=DEADLINE,
                          **options).stdout.decode(errors="replace")


def windows_path(path):
    return "Z:" + str(path).replace("/", "\\")


def click(x, y):
    run("xdotool", "mousemove", int(x), int(y), "click", "1")


def click_at(rect, x=0.5, y=0.5, button=1, times=1):
    """Clicks in a rectangle of the screen, at so much of its width and height."""
    left, top, right, bottom = rect
    run("xdotool", "mousemove", int(left + (right - left) * x), int(top + (bottom - top) * y),
        "click", "--repeat", times, "--delay", 40, button)


def press_key(*names):
    """Keys for whatever window has the keyboard."""
    run("xdotool", "key", "--delay", 40, *names)


def paste(text):
    """A text, by the clipboard, into whatever window has the keyboard."""
    subprocess.run(["xclip", "-selection", "clipboard"], input=text.encode(), check=True,
                   timeout=DEADLINE)
    press_key("ctrl+v")


def screenshot(path):
    run("import", "-window", "root", path)


def picture(rect):
    """What a rectangle of the screen shows."""
    return ImageGrab.grab(bbox=tuple(rect))


def named_controls(window, names):
    """The controls on a window by the names that each class has for its own, in the order in which
    they were made; none while the window is closed or not yet complete."""
    if not window:
        return None
    named = {}
    for window_class, own in names.items():
        same = [child for child in window["children"] if child["class"] == window_class]
        if len(same) != len(own):
            return None
        named |= zip(own, same)
    return named


class Folder:
    """A folder with the program and its files, as after an installation."""

    def __init__(self, path):
        # Blanks and characters outside ASCII, as in many a user's folder.
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
        self.begun = time.monotonic()
        if trace:
            environment["WINEDEBUG"] = "+relay"
        with open(trace or os.devnull, "wb") as log:
            self.process = subprocess.Popen(
                ["wine", str(folder.executable)], cwd=cwd or folder.path, env=environment,
                stdin=subprocess.DEVNULL, stdout=log, stderr=log)

    def started(self):
        """Waits until the main window stands; by then the list has been loaded and rewritten."""
        until(lambda: self.code() is not None or self.on_screen(), "the main window")
        assert self.code() is None, f"the program ended with code {self.code()}"
        return self

    def age(self):
        """Seconds since it was started."""
        return time.monotonic() - self.begun

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

    def on_screen(self):
        """The window system's ids of its visible windows."""
        return run("xdotool", "search", "--all", "--onlyvisible", "--pid", self.process.pid,
                   "--name", "").split()

    def windows(self):
        """Its visible top-level windows with their children, the foremost first."""
        lines = run("wine", BINARIES / "ListWindows.exe", windows_path(self.folder.path))
        windows = [json.loads(line) for line in lines.splitlines()]
        return [window for window in windows if window["visible"] and window["class"] != "IME"]

    def child(self, text, window_class=None):
        """Waits for a visible, enabled control by its text."""
        def find():
            return next((child for window in self.windows() for child in window["children"]
                         if child["text"] == text and child["visible"] and child["enabled"]
                         and window_class in (None, child["class"])), None)
        return until(find, f"a control {text}")

    def toolbar_button(self, number):
        """A button of the main window's toolbar, counted from 1: new, play, stop, options, leave."""
        def find():
            return next((child for window in self.windows() for child in window["children"]
                         if child["class"] == "ToolbarWindow32" and child["visible"]), None)
        left, top, right, bottom = until(find, "the toolbar")["rect"]
        width = (right - left) / 5
        return {"rect": [int(left + width * (number - 1)), top, int(left + width * number), bottom]}

    def main_window(self):
        """The main window, where it is visible."""
        return next((window for window in self.windows()
                     if any(child["class"] == "ToolbarWindow32" for child in window["children"])),
                    None)

    def parts(self):
        """The rectangles of what the main window consists of, by their names."""
        children = until(self.main_window, "the main window")["children"]

        def rects(window_class):
            return [child["rect"] for child in children
                    if child["class"] == window_class and child["visible"]]

        boxes = rects("TellurvanePictureBox")
        header, = rects("SysHeader32")
        # The two sliders lie side by side between the toolbar and the list, the strip lowest.
        toolbar, = rects("ToolbarWindow32")
        volume, position = sorted(box for box in boxes
                                  if toolbar[3] <= box[1] and box[3] <= header[1])
        return {"list": rects("SysListView32")[0], "header": header, "toolbar": toolbar,
                "volume": volume, "position": position, "strip": max(boxes, key=lambda box: box[1])}

    def row(self, index):
        """The rectangle of a row of the task list, counted from 0, while it is not scrolled."""
        left, _, right, bottom = self.parts()["header"]
        return [left, bottom + index * ROW_HEIGHT, right, bottom + (index + 1) * ROW_HEIGHT]

    def position_is_enabled(self):
        """Whether the position slider may be used."""
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
        """Leaves by the exit command, as a user does, and returns the exit code."""
        self.show_again()

        def has_left():
            # A console window of some task that closes just then takes the click, or the focus
            # in the middle of it; the user would click again.
            self.click(self.toolbar_button(5))
            try:
                self.process.wait(5)
            except subprocess.TimeoutExpired:
                return False
            return True

        until(has_left, "the end of the program")
        return self.wait()

    def click(self, control):
        """Clicks a control of windows(), once no other window stands before it."""
        left, top, right, bottom = control["rect"]
        x, y = (left + right) // 2, (top + bottom) // 2

        def is_before_us():
            run("xdotool", "mousemove", x, y)
            at = run("xdotool", "getmouselocation", "--shell").partition("WINDOW=")[2].strip()
            # The frame that the window manager drew, or the window itself.
            tree = run("xwininfo", "-tree", "-id", at)
            return any(f"{int(window):#x} " in tree for window in self.on_screen())

        until(is_before_us, "a window of the program under the pointer")
        click(x, y)

    def click_close_box(self):
        """The rightmost button of the frame that the window manager draws round the window."""
        facts = run("xwininfo", "-id", self.on_screen()[0])
        left, top, width = (int(facts.partition(f"{name}:")[2].split()[0]) for name in (
            "Absolute upper-left X", "Absolute upper-left Y", "Width"))
        click(left + width - 11, top - 11)

    def put_away(self, close=None):
        """Closes the main window, by its close box unless told otherwise, which only hides it."""
        def is_away():
            if self.on_screen():
                (close or self.click_close_box)()
            try:
                until(lambda: not self.on_screen(), "the window put away", 5)
            except AssertionError:
                return False
            return True

        until(is_away, "the window put away")

    def press(self, key):
        run("xdotool", "windowactivate", "--sync", self.on_screen()[0], "key", key)

    def show_again(self):
        """Brings the main window back when it has been put away."""
        # A search that is made while other windows come and go may miss one that stands.
        until(lambda: self.on_screen() or tray_icon(), "the main window or its tray icon")
        if not self.on_screen():
            click_tray_icon()
            until(self.on_screen, "the main window again")


def tray_icon():
    """The place of the one icon in the tray, which Wine shows in a window; none while empty."""
    window = run("xdotool", "search", "--onlyvisible", "--name", "^Wine System Tray$").split()
    if not window:
        return None
    facts = run("xwininfo", "-id", window[0])
    left, top = (int(facts.partition(f"Absolute upper-left {axis}:")[2].split()[0])
                 for axis in "XY")
    return left + 10, top + 10


def click_tray_icon(button=1):
    move_tray_aside()
    x, y = until(tray_icon, "the tray icon")
    run("xdotool", "mousemove", x, y, "click", button)


def move_tray_aside():
    """Puts the window of the tray where no window of the program covers it."""
    x, y = until(tray_icon, "the tray icon")
    if x < TRAY_PLACE[0] or y < TRAY_PLACE[1]:
        window = run("xdotool", "search", "--onlyvisible", "--name", "^Wine System Tray$").split()
        run("xdotool", "windowmove", "--sync", window[0], *TRAY_PLACE)
        until(lambda: (tray_icon() or (0, 0)) >= TRAY_PLACE, "the tray aside")


def end_all_in(folder):
    """Ends whatever was started from a folder and still runs."""
    for entry in Path("/proc").iterdir():
        if not entry.name.isdigit():
            continue
        try:
            command = (entry / "cmdline").read_bytes().decode(errors="replace")
        except OSError:
            continue
        if windows_path(folder.path) in command or str(folder.executable) in command:
            try:
                os.kill(int(entry.name), signal.SIGKILL)
            except ProcessLookupError:
                pass
