"""Leaving by the clock's menu while something else of the program waits for the user."""

import pytest

import menus
from clock import clock_menu
from editor import BOX_CLASS, open_editor, type_text
from harness import SETTINGS, click_at, until
from joblist import APPLICATION, NOTE, RADIO, Task, list_bytes, read_tasks

LEAVE = 3
UNSAVED = "正在編輯的排程專案尚未儲存，您確定要關閉嗎？"
YES, NO = 0, 1


@pytest.fixture(scope="module", autouse=True)
def watch_menus():
    menus.watch()


@pytest.fixture
def program(folder, start, tmp_path):
    folder.write_settings(SETTINGS | {"TimeForm": "1"})
    folder.list.write_bytes(list_bytes(Task("kept")))
    return start(trace=tmp_path / "trace").started()


def windows(program):
    return [window["text"] for window in program.windows()]


def open_note_editor(editor):
    editor.choose("media", NOTE)
    editor.click("...")
    until(lambda: editor.program.child("確 定"), "the note's editor")


def open_file_dialog(editor):
    editor.choose("media", APPLICATION)
    editor.click("...")
    until(editor.find_box, "the system's dialog")


def open_directory(editor):
    editor.choose("media", RADIO)
    editor.click("...")
    until(lambda: "Radio List" in windows(editor.program), "the radio directory")


def open_message(editor):
    editor.fill("name", "kept")
    editor.click("save task")
    editor.box()


def names(folder):
    return [task.name for task in read_tasks(folder.list.read_bytes())]


def leave(program, answer=YES):
    """By the clock's menu; a question about what would be lost is answered."""
    before = {window["handle"] for window in program.windows()}
    clock_menu(program).choose(LEAVE)

    def question():
        return program.code() is None and next(
            (window for window in program.windows() if window["class"] == BOX_CLASS
             and window["handle"] not in before), None)

    if until(lambda: program.code() is not None or question(), "the end or a question") is True:
        return
    box = question()["children"]
    assert UNSAVED in [child["text"] for child in box]
    click_at([child for child in box if child["class"] == "Button"][answer]["rect"])


@pytest.mark.parametrize("open_more", [
    lambda editor: None, open_note_editor, open_file_dialog, open_directory, open_message,
], ids=["editor", "note editor", "file dialog", "radio directory", "message"])
def test_the_program_ends_and_loses_nothing(folder, program, open_more):
    open_more(open_editor(program))
    leave(program)
    assert program.wait(20) == 0
    assert names(folder) == ["kept"]
    assert folder.backups() == []


def test_whoever_wants_to_go_on_typing_stays(folder, program):
    editor = open_editor(program)
    type_text("typed")
    until(lambda: editor.texts()["name"] == "typed", "the typed name")
    leave(program, NO)
    until(lambda: not editor.find_box(), "the end of the question")
    assert editor.texts()["name"] == "typed"
    leave(program, YES)
    assert program.wait(20) == 0
    assert names(folder) == ["kept"]
