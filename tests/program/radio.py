"""The radio directory's dialog as a user has it before him."""

import json

from dialog import Dialog
from editor import open_editor, type_text
from harness import BINARIES, named_controls, press_key, run, until
from joblist import RADIO, read_tasks

SHOUTCAST, ICECAST, LIVEDOOR, HINET = range(4)
COLUMNS = 6  # the texts of a row, of which the first three have columns
ROW_HEIGHT = 28  # pixels
SEARCHING = "搜尋中…"
UNREACHABLE = "無法連線到電台目錄，請稍後再試一次。"
NOTHING = "沒有找到電台"


def found(count):
    return f"找到 {count} 個電台"


class RadioDialog(Dialog):
    """The open dialog."""

    CAPTION = "Radio List"
    WHAT = "the radio directory"
    NAMES = {
        "Button": ["by genre", "by keyword", "search", "add", "close"],
        "ComboBox": ["source", "genre"],
        "Edit": ["keyword"],
        "SysListView32": ["list"],
        "SysHeader32": ["header"],
    }

    def __init__(self, program):
        super().__init__(program)
        self.list = self.controls()["list"]["handle"]

    def controls(self):
        window = self.window()
        named = named_controls(window, self.NAMES)
        if named is None:
            return None
        # The list stands in a window of the same class, which is made before the label.
        named["status"] = [child for child in window["children"] if child["class"] == "Static"][-1]
        return named

    def usable(self):
        return {name for name, control in self.controls().items()
                if control["enabled"] and name not in ("status", "header")}

    def status(self):
        controls = self.controls()
        return controls and controls["status"]["text"]

    def type_keyword(self, text):
        """Over what stands there."""
        self.click("keyword")
        press_key("ctrl+a")
        type_text(text)
        until(lambda: self.controls()["keyword"]["text"] == text, "the typed keyword")

    def is_idle(self):
        """Whether no search is under way."""
        controls = self.controls()
        return (controls and controls["search"]["enabled"]
                and controls["status"]["text"] != SEARCHING)

    def rows(self):
        """The texts of all rows."""
        lines = run("wine", BINARIES / "ListRows.exe", self.list, COLUMNS).splitlines()
        return [tuple(json.loads(line)) for line in lines]

    def row(self, index):
        """The rectangle of a row, counted from 0, while the list is not scrolled."""
        left, _, right, bottom = self.rects["header"]
        return [left, bottom + index * ROW_HEIGHT, right, bottom + (index + 1) * ROW_HEIGHT]


class RadioDesk:
    """The running program with a radio task begun in its editor, and the directory before it."""

    def __init__(self, program, directories):
        self.program, self.directories = program, directories
        self.editor = open_editor(program)
        self.editor.fill("name", "station")
        self.editor.choose("media", RADIO)
        self.open()

    def open(self):
        self.editor.click("...")
        self.dialog = RadioDialog(self.program)

    def search(self, press=None):
        """Searches, by the button unless told otherwise. Returns the requests that came of it."""
        before = len(self.directories.requests)
        (press or (lambda: self.dialog.click("search")))()
        until(lambda: len(self.directories.requests) > before, "the request")
        until(self.dialog.is_idle, "the end of the search")
        return self.directories.requests[before:]

    def source(self):
        return self.editor.texts()["source"]

    def save(self):
        """Saves the task; returns it as it stands in the file."""
        path = self.program.folder.list
        self.editor.click("save task")
        until(lambda: read_tasks(path.read_bytes()), "the task in the file")
        task, = read_tasks(path.read_bytes())
        return task
