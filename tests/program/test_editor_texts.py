"""Texts pasted into the schedule editor, as the list keeps them."""

import pytest

from desktop import paste, press_key, until
from editor import open_editor
from task_list import NOTE

LONG = "長" * 40_000

# The pasted text, and the text in the list. The name's box takes one line only.
TEXTS = {
    "tab and bar": ("早\t安|🎵", "早 安|🎵", "早 安|🎵"),
    "line breaks": ("一\n二\n\n三", "一", r"一\r\n二\r\n\r\n三"),
    "40000 characters": (LONG, LONG, LONG),
}


@pytest.mark.parametrize("pasted, name, source", TEXTS.values(), ids=TEXTS)
def test_a_pasted_text_is_stored_and_read_back(folder, start, pasted, name, source):
    program = start().started()
    editor = open_editor(program)
    editor.choose("media", NOTE)
    for field, shown in (("name", pasted.partition("\n")[0]), ("source", pasted)):
        editor.click(field)
        press_key("ctrl+a")
        paste(pasted)
        editor.shows(field, shown)
    editor.click("save task")
    until(folder.tasks, "the task")
    editor.close()
    assert program.exit() == 0
    for _ in range(2):
        assert [(task.name, task.source) for task in folder.tasks()] == [(name, source)]
        assert folder.backups() == []
        # Read, and written again, by the next start.
        start().started().kill()
