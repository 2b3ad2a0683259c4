"""Reminder notes: their place, and the ways in which they close."""

from datetime import datetime, timedelta

import pytest

from desktop import (BINARIES, click_at, is_managed, open_in_background, picture, press_key, run,
                     tray_icon, until, x_windows)
from dragging import drag
from due import Reports, check_record, due_task, start_with
from task_list import NOTE

SCREEN_WIDTH, SCREEN_HEIGHT = 1280, 900
WIDTH, LEAST_HEIGHT, STEP = 360, 120, 60
TOP = round(0.2 * SCREEN_HEIGHT)  # a step below a fifth of the screen, less half of its height
LEFT = SCREEN_WIDTH - WIDTH  # pulled inside: the screen is narrow
FOUR_SECONDS = timedelta(seconds=4)


def note_task(name, moment, text="喝水"):
    return due_task(name, text, moment, media_type=NOTE)


def note_count():
    return len(x_windows("frmNotes"))


def close_image(note):
    image, = (child for child in note["children"] if child["class"] == "TellurvanePictureBox")
    return image["rect"]


def dark_bands(note):
    """The number of lines of black ink below the time."""
    left, top, right, bottom = note["rect"]
    image = picture([left + 2, top + 22, right - 2, bottom - 2]).convert("RGB")
    dark = [any(max(image.getpixel((x, y))) < 0x30 for x in range(image.width))
            for y in range(image.height)]
    return sum(here and not above for above, here in zip([False, *dark], dark))


def test_a_note_appears_in_time_can_be_dragged_and_closes_by_escape(folder, start):
    program, moment = start_with(folder, start, lambda moment: [
        note_task("喝水", moment, r"一\r\n一\r\n一")])
    until(note_count, "the note")
    assert moment <= datetime.now() <= moment + timedelta(seconds=2)
    note, = program.notes()
    assert note["rect"] == [LEFT, TOP, LEFT + WIDTH, TOP + LEAST_HEIGHT]
    until(lambda: dark_bands(note) == 3, "three lines")
    check_record(folder, "喝水", moment)
    assert not is_managed(x_windows("frmNotes")[0]), "no button in the taskbar"

    def place():
        return program.notes()[0]["rect"][:2]

    drag(place, (100, 60), [300, 400])
    # Over the left edge; the next move of the mouse over it pulls it back.
    drag(place, (100, 60), [-50, 400], ends_at=[0, 400])
    click_at(program.notes()[0]["rect"])
    until(lambda: press_key("Escape") or not note_count(), "the note closed")


def test_five_at_once_stand_below_each_other_and_each_closes_by_itself(folder, start):
    reports = Reports(folder)
    names = [f"第{i}張" for i in range(5)]
    program, moment = start_with(folder, start, lambda moment: [
        *(note_task(name, moment) for name in names),
        reports.task("after", moment + FOUR_SECONDS)])
    until(lambda: note_count() == 5, "five notes")
    notes = program.notes()
    assert [note["rect"][:2] for note in notes] == [[LEFT, TOP + i * STEP] for i in range(5)]
    # The list is saved after each, and the next tick is not late.
    for name in names:
        check_record(folder, name, moment, FOUR_SECONDS)
    late = reports.started_at("after") - moment - FOUR_SECONDS
    assert timedelta() <= late <= timedelta(seconds=2)

    left = [note["class"] for note in notes]
    for index, by_image in ((2, True), (0, False), (4, False)):
        note = notes[index]
        if by_image:
            click_at(close_image(note))
        else:
            x, y, right, _ = note["rect"]
            click_at([x, y, right, y + STEP], times=2)
        left.remove(note["class"])
        until(lambda: note_count() == len(left), f"{len(left)} notes")
        assert [other["class"] for other in program.notes()] == left
    # Leaving closes the others.
    assert program.exit() == 0
    until(lambda: not note_count(), "no notes")
    assert not tray_icon()


class Notepad:
    """Another program in which somebody types."""

    FOLDER = r"C:\windows\system32"

    def __init__(self):
        self.process = open_in_background("wine", self.FOLDER + r"\notepad.exe")
        self.window = until(lambda: run("xdotool", "search", "--onlyvisible", "--class",
                                        "notepad.exe").split(), "the other program")[-1]
        run("xdotool", "windowactivate", "--sync", self.window)

    def has_keyboard(self):
        return run("xdotool", "getactivewindow").strip() == self.window

    def holds(self, text):
        # ListWindows prints each text as JSON, which plain letters do not change.
        return f'"{text}"' in run("wine", BINARIES / "ListWindows.exe", self.FOLDER)


@pytest.fixture
def open_notepad(warm_up):
    made = []
    yield lambda: made.append(Notepad()) or made[-1]
    for notepad in made:
        notepad.process.kill()
        notepad.process.wait()


def test_the_keyboard_stays_where_somebody_types(folder, start, open_notepad):
    _, moment = start_with(folder, start, lambda moment: [
        note_task(f"第{i}張", moment) for i in range(3)], ahead=12)
    notepad = open_notepad()
    until(notepad.has_keyboard, "the other program active")
    assert not note_count(), "the notes came too early for this test"
    typed = ""
    while note_count() < 3:
        assert datetime.now() < moment + timedelta(seconds=60), "no notes"
        letters = "abcdefghij"
        run("xdotool", "type", "--delay", 25, letters)
        typed += letters
        assert notepad.has_keyboard()
    run("xdotool", "type", "--delay", 25, "end")
    until(lambda: notepad.holds(typed + "end"), "every letter that was typed")
    assert notepad.has_keyboard()
