"""The menu of the clock while another program is in use."""

import pytest

from clock import clock_menu
from desktop import (click_at, open_in_background, press_key, run, until, window_under_pointer,
                     x_windows)
from menus import Menu

OTHER = [100, 100, 500, 400]  # on the screen; away from the clock and the tray


@pytest.fixture
def program(open_program):
    started = open_program(TimeForm="1")
    started.hide()
    return started


@pytest.fixture
def other(program):
    """The window of another program, which has the keyboard."""
    process = open_in_background("wine", "notepad")
    window = until(lambda: run("xdotool", "search", "--onlyvisible", "--class", "notepad").split(),
                   "the other program")[0]
    left, top, right, bottom = OTHER
    run("xdotool", "windowsize", "--sync", window, right - left, bottom - top,
        "windowmove", window, left, top)

    def has_keyboard():
        click_at(OTHER)
        return run("xdotool", "getwindowfocus").strip() == window

    until(has_keyboard, "the other program in front")
    yield window
    process.kill()
    process.wait()
    run("wine", "taskkill", "/F", "/IM", "notepad.exe")


def test_escape_closes_the_menu(program, other):
    # Where the keyboard goes after Esc is the window manager's decision here.
    clock_menu(program).dismiss()


def test_the_first_entry_brings_a_covered_window_to_the_front(program, other):
    clock_menu(program).choose(1)
    left, top, right, bottom = until(program.main_window, "the main window")["rect"]

    def is_in_front():
        run("xdotool", "mousemove", (left + right) // 2, (top + bottom) // 2)
        return f"{int(x_windows('Tellurvane')[0]):#x} " in window_under_pointer()

    # Exactly over it.
    run("xdotool", "windowmove", "--sync", other, left, top,
        "windowsize", "--sync", other, right - left + 50, bottom - top + 50)
    run("xdotool", "windowactivate", "--sync", other)
    until(lambda: not is_in_front(), "the main window covered")
    clock_menu(program).choose(1)
    until(is_in_front, "the main window in front of the other program")
    press_key("Menu")
    assert Menu(program).entries == [(1, 0, "建立新的排程任務")]
