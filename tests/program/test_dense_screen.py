"""The windows on a dense screen are larger in proportion. tests/density checks their controls.

TELLURVANE_DPI is the screen's density. Where TELLURVANE_PICTURES names a folder, a picture of each
window is kept there.
"""

import os
from pathlib import Path

import pytest

from clock import clock_shows
from desktop import picture, press_key, run, until
from due import due_task, start_with
from editor import open_editor
from harness import SETTINGS
from task_list import HOURS, MUSIC, NOTE, RADIO

TWIPS_PER_INCH = 1440
DENSITY = int(os.environ["TELLURVANE_DPI"])
PICTURES = os.environ.get("TELLURVANE_PICTURES")
# In twips.
MAIN_SIZE = (5320, 5000)
CLOCK_WIDTH = 4170
EDITOR_INSIDE = (9600, 5640)
NOTE_WIDTH = 5400
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
    assert f"{DENSITY:#x}" in run("wine", "reg", "query", key, "/v", "LogPixels")


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


@pytest.mark.flaky(reruns=0)  # it makes no input
def test_a_note(folder, start):
    program, _ = start_with(folder, start, lambda moment: [
        due_task("休息", STRETCH, moment, media_type=NOTE)])
    until(program.notes, "the note")
    note, = program.notes()
    assert size(note)[0] == pixels(NOTE_WIDTH)[0]
    keep_picture(note, "note")
