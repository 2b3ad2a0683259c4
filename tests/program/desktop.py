"""The desktop that the tests run on: commands, clicks, keys, windows and the tray."""

import json
import os
import signal
import subprocess
import time
from pathlib import Path

from PIL import ImageGrab

BINARIES = Path(os.environ["TELLURVANE_BINARIES"])
LOCALE = os.environ["LC_ALL"].partition(".")[0]
DEADLINE = 60  # seconds for anything to happen; long, because the machine may be busy
BOX_CLASS = "#32770"  # message boxes and the system's dialogs
TRAY_PLACE = (800, 600)


def until(condition, what, deadline=DEADLINE):
    """Polls until the answer is true, and returns it."""
    end = time.monotonic() + deadline
    while not (answer := condition()):
        assert time.monotonic() < end, f"waited {deadline} s for {what}"
        time.sleep(0.02)
    return answer


def happens(condition, seconds):
    """Polls for some seconds; whether the answer was true."""
    try:
        return bool(until(condition, "it", seconds))
    except AssertionError:
        return False


def run(*command, **options):
    """The standard output of a command."""
    return subprocess.run([str(part) for part in command], check=False, stdin=subprocess.DEVNULL,
                          stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, timeout=DEADLINE,
                          **options).stdout.decode(errors="replace")


def windows_path(path):
    return "Z:" + str(path).replace("/", "\\")


def open_in_background(*command, **options):
    return subprocess.Popen([str(part) for part in command], stdin=subprocess.DEVNULL,
                            stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, **options)


def click(x, y):
    run("xdotool", "mousemove", int(x), int(y), "click", "1")


def click_at(rect, x=0.5, y=0.5, button=1, times=1):
    """Clicks in a rectangle of the screen, at these shares of its width and height."""
    left, top, right, bottom = rect
    run("xdotool", "mousemove", int(left + (right - left) * x), int(top + (bottom - top) * y),
        "click", "--repeat", times, "--delay", 40, button)


def point_at(rect):
    """Moves the pointer into the middle of a rectangle of the screen."""
    left, top, right, bottom = rect
    run("xdotool", "mousemove", (left + right) // 2, (top + bottom) // 2)


def press_key(*names):
    """Keys for the window that has the keyboard."""
    run("xdotool", "key", "--delay", 40, *names)


def type_text(text):
    """Types ASCII into the window that has the keyboard, Enter for each line break."""
    for number, line in enumerate(text.split("\n")):
        if number > 0:
            press_key("Return")
        run("xdotool", "type", "--delay", 15, line)


def paste(text):
    """Pastes a text into the window that has the keyboard."""
    subprocess.run(["xclip", "-selection", "clipboard"], input=text.encode(), check=True,
                   timeout=DEADLINE)
    press_key("ctrl+v")


def screenshot(path):
    run("import", "-window", "root", path)


def picture(rect):
    """What a rectangle of the screen shows."""
    return ImageGrab.grab(bbox=tuple(rect))


def x_windows(name):
    """The X ids of the visible windows of a name."""
    return run("xdotool", "search", "--onlyvisible", "--name", f"^{name}$").split()


def is_managed(x_window):
    """Whether the window manager knows a window, so that a taskbar may show it."""
    managed = run("xprop", "-root", "_NET_CLIENT_LIST").partition("#")[2]
    return int(x_window) in [int(number, 16) for number in managed.split(",")]


def geometry(x_window, *names):
    """Numbers of what xwininfo says of a window."""
    facts = run("xwininfo", "-id", x_window)
    return [int(facts.partition(f"{name}:")[2].split()[0]) for name in names]


def window_under_pointer():
    """What xwininfo says of it: the frame of the window manager, or the window itself."""
    window = run("xdotool", "getmouselocation", "--shell").partition("WINDOW=")[2].strip()
    return run("xwininfo", "-tree", "-id", window)


def windows_of(place):
    """The visible top-level windows of the programs in a Windows folder, with their children, the
    foremost first."""
    lines = run("wine", BINARIES / "ListWindows.exe", place).splitlines()
    windows = [json.loads(line) for line in lines]
    return [window for window in windows if window["visible"] and window["class"] != "IME"]


def button_of(window, place):
    """A visible button of a message box, counted from 0."""
    return [child for child in window["children"]
            if child["class"] == "Button" and child["visible"]][place]


def tray_icon():
    """The place of the one icon in the tray, a window of its own under Wine; none while empty."""
    window = x_windows("Wine System Tray")
    if not window:
        return None
    left, top = geometry(window[0], "Absolute upper-left X", "Absolute upper-left Y")
    return left + 10, top + 10


def until_the_tray_is_empty():
    """The icon of a killed program stays for a while."""
    until(lambda: not tray_icon(), "an empty tray")


def click_tray_icon(button=1):
    x, y = until(tray_icon, "the tray icon")
    if x < TRAY_PLACE[0] or y < TRAY_PLACE[1]:  # a window of the program may cover it
        run("xdotool", "windowmove", "--sync", x_windows("Wine System Tray")[0], *TRAY_PLACE)
        until(lambda: (tray_icon() or (0, 0)) >= TRAY_PLACE, "the moved tray")
    run("xdotool", "mousemove", *until(tray_icon, "the tray icon"), "click", button)


def processes_in(*places):
    """The ids of the processes whose command names one of these folders or files."""
    found = []
    for entry in Path("/proc").iterdir():
        try:
            command = (entry / "cmdline").read_bytes().decode(errors="replace")
        except OSError:
            continue
        if entry.name.isdigit() and any(str(place) in command for place in places):
            found.append(int(entry.name))
    return found


def end_processes_in(*places):
    for process in processes_in(*places):
        try:
            os.kill(process, signal.SIGKILL)
        except ProcessLookupError:
            pass
