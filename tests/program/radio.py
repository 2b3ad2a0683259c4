"""The radio directory's dialog, used by clicks and keys."""

import json

from desktop import BINARIES, press_key, run, type_text, until
from dialog import By, Dialog
from editor import open_editor
from task_list import RADIO

SHOUTCAST, ICECAST, LIVEDOOR, HINET, RADIO_BROWSER, TAIWAN = range(6)
COLUMNS = 6  # the texts of a row, of which the first three have columns
ROW_HEIGHT = 28  # pixels
SEARCHING = "搜尋中…"
UNREACHABLE = "無法連線到電台目錄，請稍後再試一次。"
NOTHING = "沒有找到電台"
ALWAYS_USABLE = {"source", "search", "list", "add", "close"}
USABLE_WITH_GENRE = ALWAYS_USABLE | {"by genre", "by keyword", "genre"}
USABLE_WITH_KEYWORD = ALWAYS_USABLE | {"by genre", "by keyword", "keyword"}


def found(count):
    return f"找到 {count} 個電台"


class RadioDialog(Dialog):
    """The open dialog."""

    CAPTION = "Radio List"
    WHAT = "the radio directory"
    CONTROLS = {
        "source": By("ComboBox"),
        "by genre": By("Button", "依類型搜尋"), "genre": By("ComboBox", label="依類型搜尋"),
        "by keyword": By("Button", "依關鍵字搜尋"), "keyword": By("Edit", label="依關鍵字搜尋"),
        "search": By("Button", "搜 尋"), "list": By("SysListView32"), "header": By("SysHeader32"),
        "status": By("Static", place=-1),
        "add": By("Button", "新 增"), "close": By("Button", "關 閉"),
    }

    def __init__(self, program):
        super().__init__(program)
        self.list = self.controls()["list"]["handle"]

    def usable(self):
        return {name for name, control in self.controls().items()
                if control["enabled"] and name not in ("status", "header")}

    def status(self):
        controls = self.controls()
        return controls and controls["status"]["text"]

    def type_keyword(self, text):
        """Replaces the keyword."""
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
    """The running program, a new radio task in its editor, and the open directory dialog with this
    source. The servers keep their requests."""

    def __init__(self, program, servers, source=RADIO_BROWSER):
        self.program, self.servers, self.first_source = program, servers, source
        self.editor = open_editor(program)
        self.editor.fill("name", "station")
        self.editor.choose("media", RADIO)
        self.open()

    def open(self):
        self.editor.click("...")
        self.dialog = RadioDialog(self.program)
        if self.first_source != RADIO_BROWSER:  # which is selected when the dialog opens
            self.dialog.choose("source", self.first_source)

    def search(self, press=None):
        """Searches, by the button or in another way. Returns the requests that were made."""
        before = len(self.servers.requests)
        (press or (lambda: self.dialog.click("search")))()
        until(lambda: len(self.servers.requests) > before, "the request")
        until(self.dialog.is_idle, "the end of the search")
        return self.servers.requests[before:]

    def shows(self, status, rows):
        assert (self.dialog.status(), self.dialog.rows()) == (status, rows)

    def source(self):
        return self.editor.texts()["source"]

    def save(self):
        """Saves the task; returns it as the file holds it."""
        self.editor.click("save task")
        until(self.program.folder.tasks, "the task in the file")
        task, = self.program.folder.tasks()
        return task
