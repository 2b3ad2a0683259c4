"""The desktop clock: where it stands, and the menus that show and hide it."""

import re

import pytest

import menus
from clock import clock, clock_menu, clock_shows, main_window
from dragging import drag
from harness import SETTINGS, click_at, click_tray_icon, picture, run, until
from menus import CHECKED, Menu

SCREEN_WIDTH = 1280


@pytest.fixture(scope="module", autouse=True)
def watch_menus():
    menus.watch()


@pytest.fixture
def open_program(folder, start, tmp_path):
    def open_one(**settings):
        folder.write_settings(SETTINGS | settings)
        program = start(trace=tmp_path / "trace").started()
        until(lambda: main_window(program), "the main window")
        return program
    return open_one


def setting(folder):
    return re.search(r"TimeForm=(.*?)\r\n", folder.settings_text())[1]


def clock_is_gone(program):
    until(lambda: not clock(program), "no clock")


def options(program):
    click_at(program.toolbar_button(4)["rect"])
    return Menu(program)


def test_it_is_shown_at_the_start_at_the_right_upper_corner(open_program, folder):
    program = open_program(TimeForm="1")
    left, top, right, bottom = clock_shows(program)["rect"]
    assert SCREEN_WIDTH - 20 <= right <= SCREEN_WIDTH and 0 <= top <= 20
    assert (right - left, bottom - top) == (4170 // 15, 1095 // 15)
    # Neither a taskbar button nor a place among the windows that Alt+Tab goes through.
    managed = run("xprop", "-root", "_NET_CLIENT_LIST").partition("#")[2]
    windows = run("xdotool", "search", "--onlyvisible", "--name", "^FrmTime$").split()
    assert len(windows) == 1
    assert int(windows[0]) not in [int(number, 16) for number in managed.split(",")]
    # It goes.
    before = picture([left, top, right, bottom]).tobytes()
    until(lambda: picture([left, top, right, bottom]).tobytes() != before, "the next second")
    assert setting(folder) == "1"
    assert program.exit() == 0


@pytest.mark.parametrize("value", ["0", "2"])
def test_it_is_not_shown_unless_the_setting_is_one(open_program, value):
    program = open_program(TimeForm=value)
    assert not clock(program)


def test_the_options_menu_hides_and_shows_it_and_writes_it_at_once(open_program, folder):
    program = open_program(TimeForm="1")
    place = clock_shows(program)["rect"]
    menu = options(program)
    assert menu.entries[2] == (3, CHECKED, "隱藏小時鐘")
    menu.choose(3)
    clock_is_gone(program)
    until(lambda: setting(folder) == "0", "the setting")
    menu = options(program)
    assert menu.entries[2] == (3, 0, "顯示小時鐘")
    menu.choose(3)
    assert clock_shows(program)["rect"] == place
    until(lambda: setting(folder) == "1", "the setting")
    assert program.exit() == 0


def test_a_right_click_on_it_opens_the_tray_menu_which_hides_it(open_program, folder):
    program = open_program(TimeForm="1")
    menu = clock_menu(program)
    assert menu.entries == [(1, 0, "顯示主畫面"), (2, CHECKED, "隱藏小時鐘"), (3, 0, "離開本軟體")]
    menu.choose(2)
    clock_is_gone(program)
    until(lambda: setting(folder) == "0", "the setting")
    # And from the tray icon again.
    window = run("xdotool", "search", "--onlyvisible", "--name", "^Tellurvane$").split()[0]
    run("xdotool", "windowactivate", "--sync", window, "key", "alt+F4")
    until(lambda: not main_window(program), "the window put away")
    click_tray_icon(3)
    menu = Menu(program)
    assert menu.entries[1] == (2, 0, "顯示小時鐘")
    menu.choose(2)
    clock_shows(program)
    until(lambda: setting(folder) == "1", "the setting")
    # The clock's own menu brings the main window back.
    clock_menu(program).choose(1)
    until(lambda: main_window(program), "the main window")
    assert program.exit() == 0


def test_a_right_click_on_the_digits_opens_the_same_menu(open_program):
    program = open_program(TimeForm="1")
    window = clock_shows(program)
    digits = [child["rect"] for child in window["children"]
              if child["class"] == "TellurvanePictureBox"
              and child["rect"][3] - child["rect"][1] == 25]
    assert len(digits) == 6
    for rect in (min(digits), max(digits)):
        click_at(rect, button=3)
        menu = Menu(program)
        assert len(menu.entries) == 3
        menu.dismiss()


def test_leaving_by_the_clocks_menu_ends_the_program(open_program, folder):
    program = open_program(TimeForm="1")
    clock_menu(program).choose(3)
    assert program.wait() == 0
    assert setting(folder) == "1"
    assert not run("xdotool", "search", "--onlyvisible", "--name", "^FrmTime$").split()


def test_it_can_be_dragged_by_its_digits_and_its_face(open_program):
    program = open_program(TimeForm="1")
    clock_shows(program)

    def place():
        return clock(program)["rect"][:2]

    drag(place, (80, 20), [600, 300])
    drag(place, (36, 36), [700, 350])
