"""The main window with real clicks and keys: hiding and coming back, running tasks, its size."""

import re
from datetime import datetime
from pathlib import Path

import pytest
from PIL import Image

from harness import (SETTINGS, click_at, click_tray_icon, picture, press_key, run, tray_icon, until,
                     windows_path)
from joblist import APPLICATION, MUSIC, NOTE, RADIO, ZERO_DAY, Task, list_bytes, read_tasks
from taskbar import is_in_taskbar, skips_taskbar

ROOT = Path(__file__).resolve().parent.parent.parent
ICONS = {RADIO: 101, MUSIC: 102, APPLICATION: 103, NOTE: 104}
ICON_PLACE = (22, 27, 54, 59)  # in its row
CLOSERS = {"the close box": lambda program: program.put_away(),
           "Alt+F4": lambda program: program.press("alt+F4")}


class Window:
    """The running program with two tasks, of which the first starts a program that reports."""

    def __init__(self, folder, start):
        until(lambda: not tray_icon(), "the tray without what was killed before")
        self.folder = folder
        probe = folder.add("CommandProbe.exe", "探針.exe")
        self.report = folder.path / "report"
        folder.list.write_bytes(list_bytes(
            Task("程式", f'"{windows_path(probe)}" "{windows_path(self.report)}"',
                 media_type=APPLICATION),
            Task("記事", media_type=NOTE)))
        self.program = start().started()
        self.parts = self.program.parts()
        self.rows = [self.program.row(index) for index in range(2)]

    def last_runs(self):
        return [task.last_run for task in read_tasks(self.folder.list.read_bytes())]

    def has_run(self):
        """Waits until the first task has run."""
        until(self.report.exists, "the report of the started program")
        until(lambda: self.last_runs()[0] != ZERO_DAY, "the record of the run")
        assert self.last_runs()[1] == ZERO_DAY
        assert abs((datetime.now() - self.last_runs()[0]).total_seconds()) < 60


@pytest.fixture
def window(folder, start):
    return Window(folder, start)


@pytest.mark.parametrize("way", list(CLOSERS))
def test_a_closed_window_is_in_the_tray_and_comes_back_by_its_icon(window, way):
    program = window.program
    until(lambda: is_in_taskbar(program), "the taskbar button")
    assert not tray_icon()
    before = program.main_window()["rect"]
    for _ in range(3):
        CLOSERS[way](program)
        until(lambda: not program.on_screen(), "the window put away")
        until(tray_icon, "the tray icon")
        assert not is_in_taskbar(program) and not skips_taskbar(program)
        click_tray_icon()
        until(program.on_screen, "the window")
        until(lambda: not tray_icon(), "no tray icon")
        until(lambda: is_in_taskbar(program), "the taskbar button")
        assert program.main_window()["rect"] == before
    # It is the same as ever: its rows are there and can be run.
    program.click({"rect": window.rows[0]})
    press_key("Return")
    window.has_run()


def test_a_minimised_window_stays_in_the_taskbar(window):
    program = window.program
    handle = program.on_screen()[0]
    run("xdotool", "windowminimize", handle)
    until(lambda: "Iconic" in run("xprop", "-id", handle, "WM_STATE"), "the window minimised")
    assert not tray_icon()
    run("xdotool", "windowactivate", handle)
    until(lambda: "Normal" in run("xprop", "-id", handle, "WM_STATE"), "the window again")
    until(lambda: program.main_window()["rect"][0] >= 0, "the window in its place")
    assert is_in_taskbar(program)


def test_the_window_keeps_its_size(window):
    program = window.program
    left, top, right, bottom = program.main_window()["rect"]
    # 5,320 by 5,000 twips.
    assert (right - left, bottom - top) == (354, 333)
    handle = program.on_screen()[0]

    def inside():
        facts = run("xwininfo", "-id", handle)
        return [int(facts.partition(f"{name}:")[2].split()[0]) for name in ("Width", "Height")]

    size = inside()
    hints = run("xprop", "-id", handle, "WM_NORMAL_HINTS")
    smallest = re.search(r"minimum size: (\d+) by (\d+)", hints)
    largest = re.search(r"maximum size: (\d+) by (\d+)", hints)
    assert smallest and largest and smallest.groups() == largest.groups()
    run("xdotool", "windowsize", handle, 640, 480)
    until(lambda: inside() == size, "its size again")
    window_rect = program.main_window()["rect"]
    assert (window_rect[2] - window_rect[0], window_rect[3] - window_rect[1]) == (354, 333)


def test_the_sliders_and_the_strip_stand_where_they_are_agreed(window):
    parts = window.parts
    left, top = parts["list"][0], parts["toolbar"][1]
    volume, position = parts["volume"], parts["position"]
    assert parts["toolbar"][0] == left + 5
    assert (volume[1] - top, volume[2] - volume[0]) == (28, 70)
    assert (position[1] - top, position[0] - volume[2]) == (28, 8)
    assert parts["list"][1] - top == 49
    assert parts["list"][3] == parts["strip"][1], "the strip stands right below the list"


RUNNERS = {
    "a double click": lambda window: click_at(window.rows[0], times=2),
    "Enter": lambda window: (click_at(window.rows[0]), press_key("Return")),
    "the play button": lambda window: (
        click_at(window.rows[0]), click_at(window.program.toolbar_button(2)["rect"])),
    "keys alone": lambda window: (
        click_at(window.rows[1]), press_key("Up", "Return")),
}


@pytest.mark.parametrize("way", list(RUNNERS))
def test_the_selected_task_is_run_by(window, way):
    window.program.click({"rect": window.parts["strip"]})
    RUNNERS[way](window)
    window.has_run()


def test_nothing_runs_where_nothing_is_selected(window):
    program = window.program
    written = window.folder.list.stat().st_mtime_ns
    program.click({"rect": [3, 280, 351, 300]})  # below the rows
    program.click(program.toolbar_button(2))
    click_at([3, 280, 351, 300], times=2)
    press_key("Return")
    press_key("Delete")
    # What was pressed before has been heard once this has.
    click_at(window.parts["volume"], 0.9)
    until(lambda: "SavedVolume=50" not in window.folder.settings_text(), "the volume")
    assert window.folder.list.stat().st_mtime_ns == written
    assert not window.report.exists()


def test_a_single_click_and_delete_only_select(window):
    program = window.program
    written = window.folder.list.stat().st_mtime_ns
    before = picture(window.rows[0])
    program.click({"rect": window.rows[0]})
    until(lambda: picture(window.rows[0]) != before, "the row selected")
    press_key("Delete")
    click_at(window.parts["volume"], 0.9)
    until(lambda: "SavedVolume=50" not in window.folder.settings_text(), "the volume")
    assert window.folder.list.stat().st_mtime_ns == written
    assert len(window.last_runs()) == 2 and not window.report.exists()


def test_the_volume_is_set_by_click_and_by_key_before_anything_has_played(window):
    width = window.parts["volume"][2] - window.parts["volume"][0]

    def is_saved(volume):
        until(lambda: f"SavedVolume={volume}\r\n" in window.folder.settings_text(), f"{volume}", 10)

    before = picture(window.parts["volume"])
    window.program.click({"rect": window.parts["volume"]})
    click_at(window.parts["volume"], 0.2)
    is_saved(round(int(width * 0.2) * 100 / width))
    assert picture(window.parts["volume"]) != before
    press_key("Right", "Right")
    is_saved(24)
    press_key("Home")
    is_saved(0)
    assert window.folder.settings_text().count("SavedVolume") == 1
    assert dict(line.split("=", 1) for line in window.folder.settings_text().split("\r\n")
                if "=" in line) == SETTINGS | {"SavedVolume": "0"}


def test_the_position_is_out_of_use_while_nothing_plays(window):
    program = window.program
    assert not program.position_is_enabled()
    before = picture(window.parts["position"])
    program.click({"rect": window.parts["position"]})
    press_key("End")
    click_at(window.parts["volume"], 0.9)
    until(lambda: "SavedVolume=50" not in window.folder.settings_text(), "the volume")
    assert picture(window.parts["position"]) == before


def test_the_strip_counts_the_seconds(window):
    looks = set()
    until(lambda: looks.add(picture(window.parts["strip"]).tobytes()) or len(looks) == 3,
          "three seconds", 10)


def test_a_task_that_is_run_shows_it(window):
    left, top, right, bottom = window.rows[0]
    name, rest = [left, top, right, top + 18], [left, top + 18, right, bottom]
    window.program.click({"rect": window.rows[1]})
    before = picture(name), picture(rest)
    click_at(window.rows[0], times=2)
    window.has_run()
    # Back to the other row: only the date of the last run can make a difference then.
    click_at(window.rows[1])
    until(lambda: picture(name) == before[0] and picture(rest) != before[1],
          "another last run in its row")


def icon_of(program, place):
    """What stands in the place of the icon of the first or second row that is seen."""
    return picture(program.row(place)).crop(ICON_PLACE).convert("RGB")


def is_icon(seen, number):
    """Whether a picture is an icon of the program's, wherever that is not half transparent."""
    with Image.open(ROOT / "resources" / f"icon{number}.ico") as file:
        file.size = seen.size
        icon = file.convert("RGBA")
    ground = seen.getpixel((0, 0))
    wanted = {0: lambda colour: ground, 255: lambda colour: colour[:3]}
    return all(there == wanted[colour[3]](colour)
               for there, colour in zip(seen.getdata(), icon.getdata()) if colour[3] in wanted)


def test_each_row_bears_the_icon_of_its_kind(folder, start):
    folder.list.write_bytes(list_bytes(*(Task(f"{kind}", media_type=kind) for kind in ICONS)))
    program = start().started()
    seen = {}
    for first in (RADIO, APPLICATION):
        for place, kind in enumerate((first, first + 1)):
            until(lambda: is_icon(icon_of(program, place), ICONS[kind]), f"the icon of {kind}", 10)
            seen[kind] = icon_of(program, place)
        click_at(program.row(0), button=5, times=3)  # the wheel, down to the end of the list
    for kind, look in seen.items():
        assert [number for number in ICONS.values() if is_icon(look, number)] == [ICONS[kind]]
