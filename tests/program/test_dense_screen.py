"""The windows on a dense screen: larger by as much as it is denser, with all their controls.

TELLURVANE_DPI is the screen's density. Where TELLURVANE_PICTURES names a folder, a picture of each
window is kept there.
"""

import os
from datetime import timedelta
from pathlib import Path

import pytest

from clock import clock_shows
from due import NEVER_RUN
from editor import open_editor
from harness import SETTINGS, picture, press_key, run, until
from joblist import HOURS, MINUTES, MUSIC, NOTE, RADIO, Task, list_bytes, now

TWIPS_PER_INCH = 1440
DENSITY = int(os.environ["TELLURVANE_DPI"])
PICTURES = os.environ.get("TELLURVANE_PICTURES")
# In twips.
MAIN_SIZE = (5320, 5000)
CLOCK_WIDTH = 4170
EDITOR_INSIDE = (9600, 5640)
NOTE_WIDTH = 5400
NOTE_EDITOR = "確 定"
STRETCH = r"站起來伸展一下，喝一杯水。\r\n看看窗外的樹。"


@pytest.fixture
def program(folder, start):
    folder.write_settings(SETTINGS | {"TimeForm": "1"})
    later = now() + timedelta(hours=1)
    folder.list.write_bytes(list_bytes(
        Task("早晨新聞", "http://host/radio", later, NEVER_RUN, HOURS, 12, media_type=RADIO),
        Task("起床鈴聲", "C:\\音樂\\鈴.mp3", later, NEVER_RUN, HOURS, 1, media_type=MUSIC)))
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


def keep_picture(window, name):
    """Once the window shows more than its ground, with its frame's surroundings."""
    left, top, right, bottom = window["rect"]
    frame = DENSITY // 3
    area = [max(left - 8, 0), max(top - frame, 0), right + 8, bottom + 8]
    until(lambda: len(picture(window["rect"]).convert("RGB").getcolors(1 << 24)) > 8, name)
    if PICTURES:
        Path(PICTURES).mkdir(parents=True, exist_ok=True)
        picture(area).save(Path(PICTURES) / f"{name}.png")


def test_the_screen_is_what_the_windows_follow():
    """Else the sizes below would say nothing."""
    key = "HKCU\\Control Panel\\Desktop"
    assert f"{DENSITY:#x}" in run("wine", "reg", "query", key, "/v", "LogPixels")


def test_the_main_window(program):
    window = program.main_window()
    assert size(window) == pixels(*MAIN_SIZE)
    expect_all_controls(window, 5)
    keep_picture(window, "main")


def test_the_clock(program):
    window = clock_shows(program)
    # Its height follows the labels.
    assert window["inside"][0] == pixels(CLOCK_WIDTH)[0]
    expect_all_controls(window, 2)
    keep_picture(window, "clock")


def opened_dialog(program, others):
    """The window that comes up beside the others."""
    known = {window["handle"] for window in others}
    return until(lambda: next((window for window in program.windows() if window["visible"]
                               and window["handle"] not in known and window["children"]), None),
                 "another window")


def test_the_editor_and_its_dialogs(program):
    editor = open_editor(program)
    window = editor.window()
    assert window["inside"] == pixels(*EDITOR_INSIDE)
    expect_all_controls(window, 20)
    keep_picture(window, "editor")
    for media, name in ((RADIO, "radio"), (NOTE, "note-editor")):
        editor.choose("media", media)
        until(lambda: len(editor.program.windows()) <= 4, "the list folded up")
        others = program.windows()
        editor.click("...")
        dialog = opened_dialog(program, others)
        expect_all_controls(dialog, 5)
        keep_picture(dialog, name)
        press_key("Escape")
        handle = dialog["handle"]
        until(lambda: all(each["handle"] != handle for each in program.windows()), f"{name} closed")
    editor.close("cancel")
    assert program.exit() == 0


def test_a_note(folder, start):
    folder.write_settings(SETTINGS)
    folder.list.write_bytes(list_bytes(
        Task("休息", STRETCH, now() + timedelta(seconds=8), NEVER_RUN, MINUTES, 5,
             media_type=NOTE)))
    program = start().started()
    note = until(lambda: next((window for window in program.windows()
                               if window["class"].startswith("frmNotes")), None), "the note")
    assert size(note)[0] == pixels(NOTE_WIDTH)[0]
    expect_all_controls(note, 1)
    keep_picture(note, "note")
