"""The windows on a dense screen are larger in proportion. tests/density checks their controls.

TELLURVANE_DPI is the screen's density. Where TELLURVANE_PICTURES names a folder, a picture of each
window is kept there.
"""

import os
from datetime import timedelta
from pathlib import Path

import pytest

from clock import clock_shows
from desktop import (happens, picture, point_at, press_key, run, tray_icon, until,
                     windows_path)
from due import due_task, has_run, start_with
from editor import open_editor
from harness import ROW_HEIGHT, SETTINGS
from player import WINDOWS
from task_list import HOURS, MUSIC, NOTE, RADIO, now

TWIPS_PER_INCH = 1440
DENSITY = int(os.environ["TELLURVANE_DPI"])
PICTURES = os.environ.get("TELLURVANE_PICTURES")
# In twips.
MAIN_SIZE = (5320, 5000)
CLOCK_WIDTH = 4170
EDITOR_INSIDE = (9600, 5640)
NOTE_WIDTH = 5400
TIP_CLASS = "tooltips_class32"
STRETCH = r"站起來伸展一下，喝一杯水。\r\n看看窗外的樹。"


@pytest.fixture
def program(folder, start):
    folder.write_settings(SETTINGS | {"TimeForm": "1"})
    folder.write_list(
        due_task("早晨新聞", "http://host/radio", unit=HOURS, interval=12, media_type=RADIO),
        due_task("起床鈴聲", "C:\\音樂\\鈴.mp3", unit=HOURS, interval=1, media_type=MUSIC))
    program = start().started()
    until(program.main_window, "the main window")
    return program


def size(window):
    left, top, right, bottom = window["rect"]
    return [right - left, bottom - top]


def pixels(*twips):
    return [length * DENSITY // TWIPS_PER_INCH for length in twips]


def keep_picture(window, name):
    """Waits until the window shows more than its background. With the frame around it."""
    left, top, right, bottom = window["rect"]
    frame = DENSITY // 3
    area = [max(left - 8, 0), max(top - frame, 0), right + 8, bottom + 8]
    until(lambda: len(picture(window["rect"]).convert("RGB").getcolors(1 << 24)) > 8, name)
    if PICTURES:
        Path(PICTURES).mkdir(parents=True, exist_ok=True)
        picture(area).save(Path(PICTURES) / f"{name}.png")


@pytest.mark.flaky(reruns=0)  # it makes no input
def test_the_screen_has_this_density():
    """Otherwise the sizes below would prove nothing."""
    key = "HKCU\\Control Panel\\Desktop"
    answer = run("wine", "reg", "query", key, "/v", "LogPixels")
    # A prefix of the usual density has no such value.
    assert f"{DENSITY:#x}" in answer or (DENSITY == 96 and "LogPixels" not in answer)


def test_the_windows_and_dialogs(program):
    window = program.main_window()
    assert size(window) == pixels(*MAIN_SIZE)
    keep_picture(window, "main")
    window = clock_shows(program)
    assert window["inside"][0] == pixels(CLOCK_WIDTH)[0], "its height follows the labels"
    keep_picture(window, "clock")
    editor = open_editor(program)
    window = editor.window()
    assert window["inside"] == pixels(*EDITOR_INSIDE)
    keep_picture(window, "editor")
    for media, name in ((RADIO, "radio"), (NOTE, "note-editor")):
        editor.choose("media", media)
        known = [each["handle"] for each in program.windows()]

        def dialog():
            return next((each for each in program.windows()
                         if each["handle"] not in known and each["children"]), None)

        editor.click("...")
        keep_picture(until(dialog, f"the window {name}"), name)
        press_key("Escape")
        until(lambda: not dialog(), f"the end of {name}")
    editor.close("cancel")
    assert program.exit() == 0


class Marks:
    """The running program with these tasks and a fake control that refuses to start anything."""

    def __init__(self, folder, start, player, *tasks):
        self.folder = folder
        player.plays(mode=WINDOWS, refuses=1000, currentPosition=0)
        folder.write_list(*tasks)
        self.program = start(environment=player.environment).started()
        until(self.program.main_window, "the main window")
        left, _, right, bottom = self.program.parts()["header"]
        # Of the third row only the upper part is inside.
        upper = [bottom + (number * ROW_HEIGHT + 20) * DENSITY // 96 for number in range(3)]
        self.rows = [[left, middle - 5, right, middle + 5] for middle in upper]
        self.program.click(self.rows[0])

    def run(self, row):
        press_key("Home", *["Down"] * row, "Return")
        until(lambda: has_run(self.folder, self.folder.task_names()[row]), "the record of the run")

    def says(self, row, words):
        until(lambda: words in self.program.row_texts()[row], words)

    def shows_tip(self, row, words):
        """Points at a row until a tooltip says the words too. An early movement counts for
        nothing."""
        self.says(row, words)

        def is_shown():
            run("xdotool", "mousemove", 1000, 800)
            point_at(self.rows[row])
            return happens(lambda: any(window["text"].startswith(words)
                                       for window in self.program.windows()
                                       if window["class"] == TIP_CLASS), 3)

        until(is_shown, f"the tip {words}")
        self.keep_picture(f"marks-tip-{words[:4]}")

    def keep_picture(self, name):
        left, top, right, bottom = self.program.main_window()["rect"]
        keep_part([left, top - DENSITY // 3, right + DENSITY, bottom + DENSITY // 3], name)


def keep_part(rect, name):
    if PICTURES:
        left, top, right, bottom = rect
        Path(PICTURES).mkdir(parents=True, exist_ok=True)
        picture([max(left, 0), max(top, 0), right, bottom]).save(Path(PICTURES) / f"{name}.png")


def test_the_marks_of_failed_tasks_and_their_reasons(folder, start, player):
    marks = Marks(folder, start, player,
                  due_task("早晨新聞", "http://host/radio", media_type=RADIO),
                  due_task("起床鈴聲", "C:\\音樂\\鈴.mp3", media_type=MUSIC),
                  due_task("備份", "no such program"))
    program = marks.program
    for row in (2, 1, 0):
        marks.run(row)
    player.passes(31)
    for row, words in enumerate(["無法連線，將再次嘗試", "找不到檔案", "無法啟動程式："]):
        marks.shows_tip(row, words)
    program.hide()
    x, y = until(tray_icon, "the tray icon")
    place = [x - 50, y - 50, x + 250, y + 80]
    before = picture(place)
    run("xdotool", "mousemove", x, y)
    until(lambda: picture(place) != before, "the tip of the icon")
    keep_part(place, "tray-tip")
    program.show_again()
    player.plays(refuses=0)
    # A try that is under way has to be lost first.
    for _ in range(2):
        player.passes(60)
        player.after_ticks(2)
    marks.says(0, "正在播放")
    player.after_ticks(1)
    marks.keep_picture("marks-playing")
    assert program.exit() == 0


def test_the_marks_of_disabled_and_due_tasks(folder, start, player):
    broken = folder.path / "broken.wav"
    broken.write_bytes(b"any")
    marks = Marks(folder, start, player,
                  due_task("音樂", windows_path(broken), media_type=MUSIC),
                  due_task("已關閉", "text", media_type=NOTE, enabled=False),
                  due_task("即將執行", "text", now() + timedelta(seconds=55), media_type=NOTE))
    marks.run(0)
    player.passes(31)
    marks.shows_tip(0, "無法播放")
    rows = marks.program.parts()["list"]
    before = picture(rows)
    press_key("End")
    until(lambda: picture(rows) != before, "the last row")
    marks.keep_picture("marks-due")
    assert marks.program.exit() == 0


@pytest.mark.flaky(reruns=0)  # it makes no input
def test_a_note(folder, start):
    program, _ = start_with(folder, start, lambda moment: [
        due_task("休息", STRETCH, moment, media_type=NOTE)])
    until(program.notes, "the note")
    note, = program.notes()
    assert size(note)[0] == pixels(NOTE_WIDTH)[0]
    keep_picture(note, "note")
