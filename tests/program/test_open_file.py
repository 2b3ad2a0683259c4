"""The open-file dialog, which is the system's own, opened from the schedule editor."""

import pytest

from editor import open_editor, type_text
from harness import press_key, until, windows_path

MUSIC, APPLICATION = 1, 2
KEPT = "FilesPath=C:\\音樂\\\r\n"


class Dialog:
    """The editor with the open-file dialog in front of it."""

    def __init__(self, program, media=MUSIC):
        self.program = program
        self.editor = open_editor(program)
        self.editor.choose("media", media)
        self.open()

    def open(self):
        self.editor.click("...")
        until(self.editor.find_box, "the open-file dialog")

    def choose(self, name):
        """Types a name and presses Enter."""
        press_key("ctrl+a")
        type_text(name)
        until(lambda: any(child["text"] == name for child in self.editor.find_box()["children"]),
              "the typed name")
        press_key("Return")
        self.is_gone()

    def is_gone(self):
        until(lambda: not self.editor.find_box(), "the end of the dialog")

    def source(self):
        return self.editor.texts()["source"]


@pytest.fixture
def program(start):
    return start().started()


@pytest.fixture
def music(folder):
    """A folder whose name can be typed."""
    path = folder.path.parent / "music"
    path.mkdir()
    return path


def leave(dialog, folder):
    """Ends the program, and returns the settings that it leaves."""
    dialog.editor.close("cancel")
    assert dialog.program.exit() == 0
    return folder.settings_text()


def test_a_cancelled_dialog_changes_nothing(program, folder):
    dialog = Dialog(program)
    # In front of the editor, which waits like the main window behind it.
    front, editor, main = program.windows()
    assert front["class"] == "#32770" and front["enabled"]
    assert editor["handle"] == dialog.editor.window()["handle"] and not editor["enabled"]
    assert main["text"] == "Tellurvane" and not main["enabled"]
    press_key("Escape")
    dialog.is_gone()
    assert dialog.source() == ""
    until(lambda: [window["enabled"] for window in program.windows()] == [True, False],
          "the editor in use again and the main window not")
    # The keyboard is where it was: the same button opens the dialog again.
    press_key("space")
    until(dialog.editor.find_box, "the open-file dialog again")
    press_key("Escape")
    dialog.is_gone()
    assert KEPT in leave(dialog, folder)


def test_a_chosen_path_is_the_source_and_its_folder_is_kept_for_the_next_time(program, folder,
                                                                              music):
    (music / "a.wav").touch()
    dialog = Dialog(program)
    dialog.choose(windows_path(music / "a.wav"))
    until(lambda: dialog.source() == windows_path(music / "a.wav"), "the source")
    # The next time the dialog begins in that folder: a name alone is enough.
    (music / "b.wav").touch()
    dialog.open()
    dialog.choose("b.wav")
    until(lambda: dialog.source() == windows_path(music / "b.wav"), "the source in the same folder")
    assert KEPT in folder.settings_text(), "it is written at the end only"
    assert f"FilesPath={windows_path(music)}\\\r\n" in leave(dialog, folder)


def test_a_missing_file_in_an_existing_folder_is_accepted(program, folder, music):
    dialog = Dialog(program)
    dialog.choose(windows_path(music / "missing.mp3"))
    until(lambda: dialog.source() == windows_path(music / "missing.mp3"), "the source")
    assert not (music / "missing.mp3").exists(), "choosing makes no file"
    assert f"FilesPath={windows_path(music)}\\\r\n" in leave(dialog, folder)


def test_a_file_in_a_missing_folder_is_refused_by_the_dialog(program, folder, music):
    dialog = Dialog(program, APPLICATION)
    press_key("ctrl+a")
    type_text(windows_path(music / "none" / "a.exe"))
    press_key("Return")

    def boxes():
        return [window for window in program.windows() if window["class"] == "#32770"]

    until(lambda: len(boxes()) == 2, "the refusal")
    press_key("Return")
    until(lambda: len(boxes()) == 1, "the dialog again")
    press_key("Escape")
    dialog.is_gone()
    assert dialog.source() == ""
    assert KEPT in leave(dialog, folder)
