"""Texts that a user pastes into the schedule editor, and what becomes of them in the list."""

import pytest

from editor import open_editor
from harness import paste, press_key, until
from joblist import NOTE, read_tasks


def saved(folder):
    return read_tasks(folder.list.read_bytes())


def open_note(program):
    """The editor on a new note whose other fields can be saved."""
    editor = open_editor(program)
    editor.choose("media", NOTE)
    editor.fill("source", "text")
    return editor


def paste_into(editor, name, text):
    editor.click(name)
    press_key("ctrl+a")
    paste(text)


@pytest.mark.parametrize("pasted, kept", [
    ("早\t安", "早 安"),
    ("a|b", "a|b"),
    ("🎵 音樂", "🎵 音樂"),
    ("長" * 40_000, "長" * 40_000),
], ids=["tab", "bar", "emoji", "40000 characters"])
def test_a_pasted_name_is_stored_and_read_back(folder, start, pasted, kept):
    program = start().started()
    editor = open_note(program)
    paste_into(editor, "name", pasted)
    until(lambda: editor.texts()["name"] == pasted, "the pasted name")
    editor.click("save task")
    until(lambda: saved(folder), "the task")
    assert [task.name for task in saved(folder)] == [kept]
    editor.close()
    assert program.exit() == 0
    # Read, and written again, by the next start.
    program = start().started()
    assert [task.name for task in saved(folder)] == [kept]
    assert folder.backups() == []


@pytest.mark.parametrize("pasted, kept", [
    ("早\t安|🎵", "早 安|🎵"),
    ("一\n二\n\n三", r"一\r\n二\r\n\r\n三"),
    ("長" * 40_000, "長" * 40_000),
], ids=["tab", "line breaks", "40000 characters"])
def test_a_pasted_note_is_stored_and_read_back(folder, start, pasted, kept):
    program = start().started()
    editor = open_note(program)
    paste_into(editor, "source", pasted)
    until(lambda: editor.texts()["source"].replace("\r\n", "\n") == pasted, "the pasted note")
    editor.click("save task")
    until(lambda: saved(folder), "the task")
    assert [task.source for task in saved(folder)] == [kept]
    editor.close()
    assert program.exit() == 0
    program = start().started()
    assert [task.source for task in saved(folder)] == [kept]
    assert folder.backups() == []


def test_a_line_break_in_a_pasted_name_never_breaks_its_line(folder, start):
    program = start().started()
    editor = open_note(program)
    paste_into(editor, "name", "上\n下")
    until(lambda: "上" in editor.texts()["name"], "the pasted name")
    editor.click("save task")
    until(lambda: saved(folder), "the task")
    # The box takes one line only.
    assert [task.name for task in saved(folder)] == ["上"]
    editor.close()
    assert program.exit() == 0
