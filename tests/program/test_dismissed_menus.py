"""The menu of the clock while another program is in use."""

import subprocess

import pytest

import menus
from clock import clock, clock_menu, main_window
from harness import SETTINGS, click_at, press_key, run, tray_icon, until
from menus import Menu

OTHER = [100, 100, 500, 400]  # on the screen; away from the clock and the tray


@pytest.fixture(scope="module", autouse=True)
def watch_menus():
    menus.watch()


@pytest.fixture
def program(folder, start, tmp_path):
    until(lambda: not tray_icon(), "the tray without what was killed before")
    folder.write_settings(SETTINGS | {"TimeForm": "1"})
    started = start(trace=tmp_path / "trace").started()
    until(lambda: main_window(started) and clock(started), "the window and the clock")
    window = run("xdotool", "search", "--onlyvisible", "--name", "^Tellurvane$").split()[0]
    run("xdotool", "windowactivate", "--sync", window, "key", "alt+F4")
    until(lambda: not main_window(started), "the window put away")
    return started


@pytest.fixture
def other(program):
    """The window of another program, which has the keyboard."""
    process = subprocess.Popen(["wine", "notepad"], stdin=subprocess.DEVNULL,
                               stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)

    def windows():
        return run("xdotool", "search", "--onlyvisible", "--class", "notepad").split()

    window = until(windows, "the other program")[0]
    left, top, right, bottom = OTHER
    run("xdotool", "windowsize", "--sync", window, right - left, bottom - top,
        "windowmove", window, left, top)

    def has_keyboard():
        click_at(OTHER)
        return is_active(window)

    until(has_keyboard, "the other program in front")
    yield window
    process.kill()
    process.wait()
    run("wine", "taskkill", "/F", "/IM", "notepad.exe")


def is_active(window):
    return run("xdotool", "getwindowfocus").strip() == window


def test_escape_closes_the_menu_of_the_clock(program, other):
    # Whether the keyboard goes back is the window manager's decision here, not the program's.
    clock_menu(program).dismiss()


def test_the_first_entry_brings_a_covered_window_to_the_front(program, other):
    clock_menu(program).choose(1)
    left, top, right, bottom = until(lambda: main_window(program), "the main window")["rect"]

    def own_window():
        return run("xdotool", "search", "--onlyvisible", "--name", "^Tellurvane$").split()[0]

    def is_before_it():
        run("xdotool", "mousemove", (left + right) // 2, (top + bottom) // 2)
        at = run("xdotool", "getmouselocation", "--shell").partition("WINDOW=")[2].strip()
        return f"{int(own_window()):#x} " in run("xwininfo", "-tree", "-id", at)

    # Right over it.
    run("xdotool", "windowmove", "--sync", other, left, top,
        "windowsize", "--sync", other, right - left + 50, bottom - top + 50)
    run("xdotool", "windowactivate", "--sync", other)
    until(lambda: not is_before_it(), "the main window covered")
    clock_menu(program).choose(1)
    until(is_before_it, "the main window before the other program")
    press_key("Menu")
    assert Menu(program).entries == [(1, 0, "建立新的排程任務")]
