"""The desktop clock: its place, and the menus that show and hide it."""

from datetime import datetime

import pytest

from clock import CAPTION, clock_menu, clock_shows
from desktop import click_at, click_tray_icon, is_managed, picture, until, x_windows
from dragging import drag
from menus import CHECKED, Menu

SCREEN_WIDTH = 1280
HIDE, SHOW = (CHECKED, "隱藏小時鐘"), (0, "顯示小時鐘")


def is_set(folder, value):
    until(lambda: folder.read_settings().get("TimeForm") == value, "the setting")


def hides(menu, number, program, folder):
    """The entry of this number hides the clock, and this is written at once."""
    assert menu.entry(number) == HIDE
    menu.choose(number)
    until(lambda: not program.window(CAPTION), "no clock")
    is_set(folder, "0")


def shows(menu, number, program, folder):
    assert menu.entry(number) == SHOW
    menu.choose(number)
    is_set(folder, "1")
    return clock_shows(program)["rect"]


def test_it_opens_at_the_right_upper_corner_and_can_be_dragged(open_program):
    program = open_program(TimeForm="1")
    halves = {"上午" if datetime.now().hour < 12 else "下午"}
    clock = clock_shows(program)
    halves.add("上午" if datetime.now().hour < 12 else "下午")
    texts = {child["text"] for child in clock["children"]}
    assert texts >= set("年月日時分秒") and texts & halves
    left, top, right, bottom = rect = clock["rect"]
    assert SCREEN_WIDTH - 20 <= right <= SCREEN_WIDTH and 0 <= top <= 20
    assert (right - left, bottom - top) == (4170 // 15, 1095 // 15)
    x_window, = x_windows(CAPTION)
    assert not is_managed(x_window), "neither a taskbar button nor a place in Alt+Tab"
    before = picture(rect).tobytes()
    until(lambda: picture(rect).tobytes() != before, "the next second")

    def place():
        return program.window(CAPTION)["rect"][:2]

    drag(place, (80, 20), [600, 300])  # by its digits
    drag(place, (36, 36), [700, 350])  # by its face


@pytest.mark.parametrize("value", ["0", "2"])
def test_it_is_not_shown_unless_the_setting_is_one(open_program, value):
    assert not open_program(TimeForm=value).window(CAPTION)


def test_each_menu_hides_and_shows_it_and_writes_the_setting_at_once(open_program, folder):
    program = open_program(TimeForm="1")
    place = clock_shows(program)["rect"]

    def options():
        click_at(program.toolbar_button("options"))
        return Menu(program)

    hides(options(), 3, program, folder)
    assert shows(options(), 3, program, folder) == place
    hides(clock_menu(program), 2, program, folder)
    program.hide()
    click_tray_icon(3)
    shows(Menu(program), 2, program, folder)
    # The clock's own menu brings the main window back.
    clock_menu(program).choose(1)
    until(program.main_window, "the main window")
    assert program.exit() == 0
    assert folder.read_settings()["TimeForm"] == "1"


def test_a_right_click_opens_its_menu_on_the_digits_too_and_leaving_ends_the_program(open_program):
    program = open_program(TimeForm="1")
    digits = [child["rect"] for child in clock_shows(program)["children"]
              if child["class"] == "TellurvanePictureBox"
              and child["rect"][3] - child["rect"][1] == 25]
    assert len(digits) == 6
    for rect in (min(digits), max(digits)):
        click_at(rect, button=3)
        menu = Menu(program)
        assert len(menu.entries) == 3
        menu.dismiss()
    menu = clock_menu(program)
    assert [text for _, _, text in menu.entries] == ["顯示主畫面", "隱藏小時鐘", "離開本軟體"]
    menu.choose(3)
    assert program.wait() == 0
    assert not x_windows(CAPTION)
