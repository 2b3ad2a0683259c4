"""The windows on a screen of 120 dpi: larger by as much as it is denser, with all their controls."""

import pytest

from clock import clock_shows
from editor import open_editor
from harness import SETTINGS, run, until

TWIPS_PER_INCH = 1440
DENSITY = 120
# In twips.
MAIN_SIZE = (5320, 5000)
CLOCK_WIDTH = 4170
EDITOR_INSIDE = (9600, 5640)


@pytest.fixture
def program(folder, start):
    folder.write_settings(SETTINGS | {"TimeForm": "1"})
    program = start().started()
    until(program.main_window, "the main window")
    return program


def size(window):
    left, top, right, bottom = window["rect"]
    return [right - left, bottom - top]


def pixels(*twips):
    return [length * DENSITY // TWIPS_PER_INCH for length in twips]


def strays(window):
    """The visible controls that do not lie inside their parents."""
    rects = {each["handle"]: each["rect"] for each in [window, *window["children"]]}

    def is_inside(child):
        inner, outer = child["rect"], rects[child["parent"]]
        return (outer[0] <= inner[0] <= inner[2] <= outer[2]
                and outer[1] <= inner[1] <= inner[3] <= outer[3])
    return [child for child in window["children"] if child["visible"] and not is_inside(child)]


def expect_all_controls(window, least):
    assert len([child for child in window["children"] if child["visible"]]) >= least
    assert strays(window) == []
    assert not [child for child in window["children"] if child["visible"] and 0 in size(child)]


def test_the_screen_is_what_the_windows_follow():
    """Else the sizes below would say nothing."""
    key = "HKCU\\Control Panel\\Desktop"
    assert f"{DENSITY:#x}" in run("wine", "reg", "query", key, "/v", "LogPixels")


def test_the_main_window(program):
    window = program.main_window()
    assert size(window) == pixels(*MAIN_SIZE)
    expect_all_controls(window, 5)


def test_the_clock(program):
    window = clock_shows(program)
    # Its height follows the labels.
    assert window["inside"][0] == pixels(CLOCK_WIDTH)[0]
    expect_all_controls(window, 2)


def test_the_editor(program):
    editor = open_editor(program)
    window = editor.window()
    assert window["inside"] == pixels(*EDITOR_INSIDE)
    expect_all_controls(window, 20)
    editor.close("cancel")
    assert program.exit() == 0
