"""Reminder notes: how they come up, stand beside each other, and go."""

import subprocess
from datetime import datetime, timedelta

import pytest

from dragging import drag
from due import NEVER_RUN, has_run, saved, start_with
from harness import BINARIES, click_at, picture, press_key, run, tray_icon, until, windows_path
from joblist import APPLICATION, MINUTES, NOTE, Task

SCREEN_WIDTH, SCREEN_HEIGHT = 1280, 900
WIDTH, LEAST_HEIGHT, STEP = 360, 120, 60
TOP = round(0.2 * SCREEN_HEIGHT)  # a step below a fifth of the screen, less half of its height
LEFT = SCREEN_WIDTH - WIDTH  # pulled inside: the screen is narrow
TWO_SECONDS = timedelta(seconds=2)


def note_task(name, moment, text="喝水"):
    return Task(name, text, moment, NEVER_RUN, MINUTES, 5, media_type=NOTE)


def note_count():
    return len(run("xdotool", "search", "--onlyvisible", "--name", "^frmNotes$").split())


def notes(program):
    """The notes on the screen, the first one first."""
    found = [window for window in program.windows() if window["class"].startswith("frmNotes")]
    return sorted(found, key=lambda note: int(note["class"].removeprefix("frmNotes")))


def close_image(note):
    image, = (child for child in note["children"] if child["class"] == "TellurvanePictureBox")
    return image["rect"]


def size(rect):
    return rect[2] - rect[0], rect[3] - rect[1]


def bands(rect):
    """How many lines of black ink there are below the time."""
    image = picture([rect[0] + 2, rect[1] + 22, rect[2] - 2, rect[3] - 2]).convert("RGB")
    dark = [any(max(image.getpixel((x, y))) < 0x30 for x in range(image.width))
            for y in range(image.height)]
    return sum(here and not above for above, here in zip([False, *dark], dark))


def test_a_note_comes_up_within_two_seconds_where_it_belongs(folder, start):
    program, moment = start_with(folder, start, lambda moment: [
        note_task("喝水", moment, r"一\r\n一\r\n一")])
    until(note_count, "the note")
    assert moment <= datetime.now() <= moment + TWO_SECONDS
    note, = notes(program)
    assert size(note["rect"]) == (WIDTH, LEAST_HEIGHT)
    assert note["rect"][:2] == [LEFT, TOP]
    until(lambda: bands(note["rect"]) == 3, "three lines")
    until(lambda: has_run(folder, "喝水"), "the record of the run")
    record = saved(folder)["喝水"]
    assert moment <= record.last_run <= moment + TWO_SECONDS
    assert record.next_run == moment + timedelta(minutes=5)
    # It is no matter of the taskbar.
    managed = run("xprop", "-root", "_NET_CLIENT_LIST").partition("#")[2]
    note_window = int(run("xdotool", "search", "--onlyvisible", "--name", "^frmNotes$"))
    assert note_window not in [int(number, 16) for number in managed.split(",")]


def test_five_at_once_stand_below_each_other_and_each_closes_by_itself(folder, start):
    probe = folder.add("CommandProbe.exe", "probe.exe")
    report = folder.path / "report"
    command = f'"{windows_path(probe)}" "{windows_path(report)}"'
    pause = timedelta(seconds=4)
    names = [f"第{i}張" for i in range(5)]
    program, moment = start_with(folder, start, lambda moment: [
        *(note_task(name, moment) for name in names),
        Task("之後", command, moment + pause, NEVER_RUN, MINUTES, 5, media_type=APPLICATION)])
    until(lambda: note_count() == 5, "five notes")
    standing = notes(program)
    assert [note["rect"][:2] for note in standing] == [
        [LEFT, TOP + i * STEP] for i in range(5)]

    # The list is saved after each, and the tick that follows is not late.
    until(lambda: all(has_run(folder, name) for name in names), "the records")
    for name in names:
        record = saved(folder)[name]
        assert moment <= record.last_run <= moment + pause
        assert record.next_run == moment + timedelta(minutes=5)
    until(report.exists, "the task after the notes")
    created = next(line.partition("=")[2] for line in report.read_text("utf-8").splitlines()
                   if line.startswith("created="))
    late = datetime.fromtimestamp(float(created)) - moment - pause
    assert timedelta() <= late <= TWO_SECONDS

    # Whichever is closed, and by whatever way, the others stay.
    left = [note["class"] for note in standing]
    for index, by_image in ((2, True), (0, False), (4, False), (3, True), (1, True)):
        note = standing[index]
        if by_image:
            click_at(close_image(note))
        else:
            click_at([note["rect"][0], note["rect"][1], note["rect"][2], note["rect"][1] + STEP],
                     times=2)
        left.remove(note["class"])
        until(lambda: note_count() == len(left), f"{len(left)} notes")
        assert [other["class"] for other in notes(program)] == left
    assert program.exit() == 0


def test_a_note_can_be_dragged_and_is_pulled_back_inside(folder, start):
    program, _ = start_with(folder, start, lambda moment: [note_task("喝水", moment)])
    until(note_count, "the note")

    def place():
        note, = notes(program)
        return note["rect"][:2]

    until(lambda: bands(notes(program)[0]["rect"]), "the text")
    drag(place, (100, 60), [300, 400])
    # Over the left edge; the next move of the mouse over it brings it back.
    drag(place, (100, 60), [-50, 400], ends_at=[0, 400])


class Notepad:
    """Another program in which somebody is typing."""

    FOLDER = r"C:\windows\system32"

    def __init__(self):
        self.process = subprocess.Popen(
            ["wine", self.FOLDER + r"\notepad.exe"], stdin=subprocess.DEVNULL,
            stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.window = until(lambda: run("xdotool", "search", "--onlyvisible", "--class",
                                        "notepad.exe").split(), "the editor")[-1]
        run("xdotool", "windowactivate", "--sync", self.window)

    def has_keyboard(self):
        return run("xdotool", "getactivewindow").strip() == self.window

    def holds(self, text):
        # The window lister shows each text as JSON, which plain letters do not change.
        return f'"{text}"' in run("wine", BINARIES / "ListWindows.exe", self.FOLDER)

    def end(self):
        self.process.kill()
        self.process.wait()


@pytest.fixture
def notepad(warm_up):
    made = []

    def open_one():
        made.append(Notepad())
        return made[-1]
    yield open_one
    for editor in made:
        editor.end()


def test_the_keyboard_stays_where_somebody_types(folder, start, notepad):
    _, moment = start_with(folder, start, lambda moment: [
        note_task(f"第{i}張", moment) for i in range(3)], ahead=12)
    editor = notepad()
    until(editor.has_keyboard, "the editor active")
    assert not note_count(), "the notes came too early for this test"
    typed = ""
    while note_count() < 3:
        assert datetime.now() < moment + timedelta(seconds=60), "no notes"
        letters = "abcdefghij"
        run("xdotool", "type", "--delay", 25, letters)
        typed += letters
        assert editor.has_keyboard()
    run("xdotool", "type", "--delay", 25, "end")
    until(lambda: editor.holds(typed + "end"), "every letter that was typed")
    assert editor.has_keyboard()


def test_leaving_takes_the_notes_along(folder, start):
    program, _ = start_with(folder, start, lambda moment: [
        note_task(f"第{i}張", moment) for i in range(2)])
    until(lambda: note_count() == 2, "two notes")
    assert program.exit() == 0
    until(lambda: note_count() == 0, "no notes")
    assert all(record.last_run != NEVER_RUN for record in saved(folder).values())
    assert not tray_icon()


def test_esc_closes_the_note_that_was_clicked(folder, start):
    program, _ = start_with(folder, start, lambda moment: [note_task("喝水", moment)])
    until(note_count, "the note")
    note, = notes(program)
    until(lambda: bands(note["rect"]), "the text")
    click_at(note["rect"])
    until(lambda: press_key("Escape") or not note_count(), "the note closed")
