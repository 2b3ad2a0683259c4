"""The open-file dialog of the system, opened from the schedule editor."""

import pytest

from desktop import BOX_CLASS, click_at, press_key, type_text, until, windows_path
from due import Reports
from editor import open_editor
from task_list import APPLICATION, MUSIC

KEPT = "C:\\音樂\\"


class OpenFile:
    """The editor with the open-file dialog in front of it."""

    def __init__(self, program, media=MUSIC):
        self.program = program
        self.editor = open_editor(program)
        self.editor.choose("media", media)
        self.open()

    def open(self):
        self.editor.click("...")
        until(self.program.box, "the open-file dialog")

    def offers(self, kind):
        """Whether the list of file types shows this one."""
        return kind in [child["text"] for child in self.program.box()["children"]]

    def choose(self, name, source):
        """Types a name and presses Enter; waits for the path in the editor."""
        press_key("ctrl+a")
        type_text(name)
        until(lambda: any(child["text"] == name for child in self.program.box()["children"]),
              "the typed name")
        press_key("Return")
        self.editor.box_is_gone()
        self.editor.shows("source", source)

    def cancel(self):
        press_key("Escape")
        self.editor.box_is_gone()

    def leave(self):
        """Ends the program, and returns the folder that it remembers."""
        if self.editor.window():
            self.editor.close("cancel")
        assert self.program.exit() == 0
        return self.program.folder.read_settings()["FilesPath"]


@pytest.fixture
def program(start):
    return start().started()


@pytest.fixture
def music(folder):
    """A folder whose name can be typed."""
    path = folder.path.parent / "music"
    path.mkdir()
    return path


def test_a_cancelled_dialog_changes_nothing(program):
    dialog = OpenFile(program)
    # In front of the editor, which is disabled like the main window.
    front, editor, main = program.windows()
    assert front["class"] == BOX_CLASS and front["enabled"]
    assert dialog.offers("本軟體支援的格式")
    assert editor["handle"] == dialog.editor.window()["handle"] and not editor["enabled"]
    assert main["text"] == "Tellurvane" and not main["enabled"]
    dialog.cancel()
    until(lambda: [window["enabled"] for window in program.windows()] == [True, False],
          "the editor in use again and the main window not")
    # The keyboard is where it was: the same button opens the dialog again.
    press_key("space")
    until(program.box, "the open-file dialog again")
    dialog.cancel()
    assert dialog.editor.texts()["source"] == ""
    assert dialog.leave() == KEPT


def test_a_chosen_path_is_the_source_and_the_next_dialog_begins_in_its_folder(start, folder, music):
    (music / "a.wav").touch()
    reports = Reports(folder)
    folder.write_list(reports.task("where"))
    dialog = OpenFile(start().started())
    dialog.choose(windows_path(music / "a.wav"), windows_path(music / "a.wav"))
    # Now a name alone is enough. The file need not exist.
    dialog.open()
    dialog.choose("missing.mp3", windows_path(music / "missing.mp3"))
    assert not (music / "missing.mp3").exists(), "choosing makes no file"
    assert folder.read_settings()["FilesPath"] == KEPT, "it is written at the end only"
    # The dialog has left the program's current folder as it was.
    dialog.editor.close("cancel")
    click_at(dialog.program.row(0), times=2)
    assert ("folder", windows_path(folder.path)) in reports.read("where")
    assert dialog.leave() == windows_path(music) + "\\"


def test_a_file_in_a_missing_folder_is_rejected_by_the_dialog(program, music):
    dialog = OpenFile(program, APPLICATION)
    assert dialog.offers("應用程式")
    press_key("ctrl+a")
    type_text(windows_path(music / "none" / "a.exe"))
    press_key("Return")

    def box_count():
        return [window["class"] for window in program.windows()].count(BOX_CLASS)

    until(lambda: box_count() == 2, "the message")
    press_key("Return")
    until(lambda: box_count() == 1, "the dialog again")
    dialog.cancel()
    assert dialog.editor.texts()["source"] == ""
    assert dialog.leave() == KEPT
