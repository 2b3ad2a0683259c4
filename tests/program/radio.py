"""The radio directory's dialog as a user has it before him."""

import json

from editor import open_editor, type_text
from harness import BINARIES, click_at, named_controls, press_key, run, until
from joblist import RADIO, read_tasks

CAPTION = "Radio List"
SHOUTCAST, ICECAST, LIVEDOOR, HINET = range(4)
COLUMNS = 6  # the texts of a row, of which the first three have columns
ROW_HEIGHT = 28  # pixels
SEARCHING = "搜尋中…"
UNREACHABLE = "無法連線到電台目錄，請稍後再試一次。"
NOTHING = "沒有找到電台"
# In the order in which they are made.
NAMES = {
    "Button": ["by genre", "by keyword", "search", "add", "close"],
    "ComboBox": ["source", "genre"],
    "Edit": ["keyword"],
    "SysListView32": ["list"],
    "SysHeader32": ["header"],
}


def found(count):
    return f"找到 {count} 個電台"


class RadioDialog:
    """The open dialog."""

    def __init__(self, program):
        self.program = program
        controls = until(self.controls, "the radio directory")
        self.rects = {name: control["rect"] for name, control in controls.items()}
        self.list = controls["list"]["handle"]

    def window(self):
        return next((window for window in self.program.windows()
                     if window["text"] == CAPTION), None)

    def controls(self):
        """What stands on it now, by the names above; none while it is closed."""
        window = self.window()
        named = named_controls(window, NAMES)
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

    def click(self, name):
        click_at(self.rects[name])

    def choose(self, name, entry):
        """Chooses from a drop-down list, counted from 0."""
        self.click(name)
        until(lambda: any(window["class"] == "ComboLBox" for window in self.program.windows()),
              "the list dropped down")
        press_key("Home", *["Down"] * entry, "Return")

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

    def is_gone(self):
        until(lambda: not self.window(), "the end of the radio directory")


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
