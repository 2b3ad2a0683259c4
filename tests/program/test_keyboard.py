"""The whole program by the keyboard alone: no click, and no call into it."""

from desktop import happens, press_key, run, type_text, until, windows_path
from editor import Editor
from harness import SETTINGS
from radio import HINET, RadioDialog
from radio_pages import hinet_page, hinet_rows
from sound import LOW, make_wav
from task_list import APPLICATION, HOURS, MUSIC, NOTE, RADIO, ZERO_DAY, Task

NAMES = ["radio", "music", "program", "note"]
KINDS = [RADIO, MUSIC, APPLICATION, NOTE]
CAPTION = "Tellurvane"
CLOCK = "FrmTime"


def is_in_front():
    """A key that comes before the window manager gave the window the keyboard is lost."""
    until(lambda: run("xdotool", "getwindowfocus", "getwindowname").strip() == CAPTION,
          "the main window in front")


class Keyboard:
    """The running program, and a user without a mouse."""

    def __init__(self, folder, start, directories):
        self.folder = folder
        # Beside the program's folder, whose name cannot be typed.
        # Without a console, whose window would take the keyboard.
        logger = folder.add("RunLog.exe").rename(folder.path.parent / "logger.exe")
        self.log = folder.path.parent / "runs.log"
        self.command = f'"{windows_path(logger)}" "{windows_path(self.log)}" report'
        self.music = windows_path(make_wav(folder.path.parent / "a.wav", 30, LOW))
        self.url = hinet_rows(SETTINGS["HinetUrl"])[1][3]
        directories.serves("http://hichannel.hinet.net/xml/radioList.jsp", hinet_page())
        self.directories = directories
        self.program = start().started()
        is_in_front()
        self.main_is_in_use()

    def main_is_in_use(self):
        until(lambda: self.program.main_window() and self.program.main_window()["enabled"],
              "the main window in use")

    def opened_editor(self):
        editor = Editor(self.program)
        until(editor.is_editing, "the fields in use")
        return editor

    def go_to(self, row):
        """To a row of the list that has the keyboard."""
        press_key("Home", *["Down"] * row)

    def find_station(self):
        """In the radio directory, from its button."""
        press_key("Return")
        dialog = RadioDialog(self.program)
        press_key("Home", *["Down"] * HINET)
        until(lambda: dialog.controls()["source"]["text"] == "國內電台", "the directory")
        press_key("Return")
        until(lambda: self.directories.requests, "the request")
        until(dialog.is_idle, "the stations")
        # The search button, the list.
        press_key("Tab", "Tab", "Home", "Down", "Return")
        dialog.is_gone()

    def write_note(self):
        """In its editor, from its button."""
        press_key("Return")
        until(lambda: len(self.program.windows()) == 3, "the note's editor")
        type_text("drink\nwater")
        press_key("Tab", "Return")

    def make(self, kind):
        """In the editor, where the name has the keyboard."""
        editor = self.opened_editor()
        type_text(NAMES[kind])
        press_key("Tab", "Home", *["Down"] * kind, "Tab")
        if kind == RADIO:
            press_key("Tab")
            self.find_station()
            source = self.url
        elif kind == NOTE:
            press_key("Tab")
            self.write_note()
            source = "drink\nwater"
        else:
            source = self.music if kind == MUSIC else self.command
            type_text(source)
            press_key("Tab")
        editor.shows("source", source)
        # Date, time, unit, interval, box, button.
        press_key("Tab", "Tab", "Tab", "Home", "Down", "Tab", "ctrl+a")
        type_text("12")
        press_key("Tab", "Tab", "Return")
        until(lambda: self.folder.task_names() == NAMES[:kind + 1], f"the task {NAMES[kind]}")
        assert not editor.is_editing()
        return editor

    def last_run(self, row):
        return self.folder.tasks()[row].last_run

    def run(self, row):
        before = self.last_run(row)
        self.go_to(row)
        press_key("Return")
        until(lambda: self.last_run(row) > before, f"the run of row {row}")

    def rename(self, row):
        self.go_to(row)
        press_key("F2")
        editor = self.opened_editor()
        press_key("End")
        type_text("2")
        press_key("Return")
        until(lambda: self.folder.task_names()[row] == f"{NAMES[row]}2", "the new name")
        press_key("Escape")
        editor.is_gone()
        self.main_is_in_use()

    def switch(self, row):
        self.go_to(row)
        for is_enabled in (False, True):
            press_key("space")
            until(lambda: self.folder.tasks()[row].enabled == is_enabled, "the switched task")

    def remove_first(self, editor):
        """Enter answers 否; the left arrow goes to 是."""
        name, *others = self.folder.task_names()
        question = f"您確定要移除【{name}】嗎？"
        for keys in (["Return"], ["Left", "Return"]):
            self.go_to(0)
            press_key("Delete")
            assert editor.box_text() == question
            press_key(*keys)
            editor.box_is_gone()
            expected = [name, *others] if keys == ["Return"] else others
            until(lambda: self.folder.task_names() == expected, f"the tasks {expected}")

    def clock_is(self, is_shown):
        until(lambda: bool(self.program.window(CLOCK)) == is_shown, "the clock")
        until(lambda: self.folder.read_settings()["TimeForm"] == str(int(is_shown)), "its setting")


def check_runs(desk):
    """Each kind in turn, the music and the station stopped by key."""
    # No station answers, so it is tried until it is stopped.
    signs = {RADIO: ("，正在開啟，", "，無法連線，將再次嘗試，"), MUSIC: ("，正在播放，",)}

    def has_sign(row):
        text = desk.program.row_texts()[row]
        return any(sign in text for sign in signs[row])

    for row in range(len(KINDS)):
        desk.run(row)
        if row in signs:
            until(lambda: has_sign(row), "the sign")
            press_key("ctrl+s")
            until(lambda: not has_sign(row), "the end of it")
    until(lambda: desk.log.exists() and desk.log.read_text().startswith("report\t"), "the program")


def check_notes_and_clock(desk):
    until(desk.program.notes, "the note")
    # The keyboard stayed in the list: another run, another note. It may come within the same second,
    # so the time of the last run does not show it.
    desk.go_to(NOTE)
    press_key("Return")
    until(lambda: len(desk.program.notes()) == 2, "another note")
    for left, key in ((1, "Escape"), (0, "Return")):
        press_key("F6", key)
        until(lambda: len(desk.program.notes()) == left, f"{left} notes")
    # And it came back.
    press_key("F10")
    desk.program.menu()
    press_key("Down", "Down", "Down", "Return")
    desk.clock_is(True)
    press_key("F6", "Menu")
    desk.program.menu()
    press_key("Down", "Down", "Return")
    desk.clock_is(False)
    # From the toolbar, which is before the list.
    press_key("shift+Tab", "End", "Left", "Return")
    desk.program.menu()
    press_key("Down", "Down", "Down", "Return")
    desk.clock_is(True)
    press_key("F6", "Escape", "Tab", "Tab", "Prior")
    until(lambda: desk.folder.read_settings()["SavedVolume"] == "60", "the volume")
    press_key("shift+Tab")


def test_every_kind_of_task_is_made_used_and_removed_without_a_mouse(folder, start, directories):
    desk = Keyboard(folder, start, directories)
    press_key("Insert")
    for kind in KINDS:
        if kind > 0:
            press_key("Insert")
        editor = desk.make(kind)
    press_key("Escape")
    editor.is_gone()
    desk.main_is_in_use()
    assert [(task.media_type, task.source, task.unit, task.interval, task.last_run)
            for task in folder.tasks()] == [
        (RADIO, desk.url, HOURS, 12, ZERO_DAY),
        (MUSIC, desk.music, HOURS, 12, ZERO_DAY),
        (APPLICATION, desk.command, HOURS, 12, ZERO_DAY),
        (NOTE, r"drink\r\nwater", HOURS, 12, ZERO_DAY)]

    check_runs(desk)
    check_notes_and_clock(desk)
    for row in range(len(KINDS)):
        desk.switch(row)
        desk.rename(row)

    press_key("F2")
    editor = desk.opened_editor()
    press_key("Escape")
    until(lambda: not editor.is_editing(), "the list")
    for _ in KINDS:
        desk.remove_first(editor)
    press_key("Escape")
    editor.is_gone()
    desk.main_is_in_use()
    assert folder.tasks() == []
    press_key("ctrl+q")
    assert desk.program.wait() == 0


def test_a_space_that_is_held_down_opens_the_editor_and_types_nothing(folder, start):
    program = start().started()
    is_in_front()
    press_key("shift+Tab", "Home")
    try:
        run("xdotool", "keydown", "space")
        editor = Editor(program)

        def name():
            return editor.controls()["name"]["text"]

        until(editor.is_editing, "the fields in use")
        # A held key begins to repeat after about half a second.
        assert not happens(lambda: name() != "新的排程專案", 2)
        run("xdotool", "keyup", "space", "keydown", "space")
        until(lambda: len(name()) > 1 and not name().strip(), "its own blanks")
    finally:
        run("xdotool", "keyup", "space")
    press_key("Escape")
    program.kill()


def test_the_toolbar_leaves_and_the_menu_key_opens_the_rows_menu(folder, start):
    folder.write_list(Task("note"), Task("other"))
    program = start().started()
    is_in_front()
    # At the start no row is selected, and Enter takes the one with the keyboard.
    press_key("Return")
    until(program.notes, "the note")
    press_key("Menu")
    program.menu()
    press_key("Down", "Down", "Down", "Return")
    until(lambda: not folder.tasks()[0].enabled, "the task switched off")
    press_key("shift+F10")
    program.menu()
    press_key("Escape")
    until(lambda: not program.has_menu(), "the end of the menu")
    press_key("shift+Tab", "End", "Return")
    assert program.wait() == 0
