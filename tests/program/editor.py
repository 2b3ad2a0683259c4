"""The schedule editor, used by clicks and keys."""

from desktop import button_of, click_at, press_key, type_text, until
from dialog import By, Dialog

YES, NO = 0, 1
OK = 0
UNSAVED = "正在編輯的排程專案尚未儲存，您確定要關閉嗎？"


class Editor(Dialog):
    """The open editor."""

    CAPTION = "新增 / 編輯排程專案"
    WHAT = "the editor"
    CONTROLS = {
        "list": By("SysListView32"), "header": By("SysHeader32"),
        "new": By("Button", "新增"), "edit": By("Button", "編輯"), "remove": By("Button", "移除"),
        "name": By("Edit", label="專案名稱"),
        "media": By("ComboBox", label="媒體類型"),
        "source": By("RichEdit20W"), "...": By("Button", "..."),
        "date": By("SysDateTimePick32", label="執行日期"),
        "time": By("SysDateTimePick32", label="執行日期", place=1),
        "unit": By("ComboBox", label="排程類型"), "interval": By("Edit", label="排程類型"),
        "enabled": By("Button", "儲存後立即啟動音樂排程"),
        "save task": By("Button", "儲存專案"), "cancel task": By("Button", "放棄編輯"),
        "close": By("Button", "關閉"), "cancel": By("Button", "取消"),
    }

    def texts(self):
        controls = until(self.controls, "the editor")
        return {name: controls[name]["text"] for name in ("name", "source", "interval")}

    def shows(self, name, text):
        """Waits for a field's text; a line break is a line feed here."""
        until(lambda: self.texts()[name].replace("\r\n", "\n") == text, f"{name}: {text[:40]}")

    def is_editing(self):
        """Whether the fields can be used."""
        controls = self.controls()
        return controls and controls["save task"]["enabled"]

    def fill(self, name, text):
        self.click(name)
        press_key("ctrl+a")
        type_text(text)

    def fill_in(self, name, media, source, unit, interval):
        """All the fields of a task but its moment."""
        self.fill("name", name)
        self.choose("media", media)
        if source is not None:
            self.fill("source", source)
        self.choose("unit", unit)
        self.fill("interval", str(interval))

    def select(self, row):
        """Selects a row of the list, counted from 0: the first by a click, others by keys."""
        left, _, right, bottom = self.rects["header"]
        click_at([left, bottom + 2, right, bottom + 14], x=0.3)
        press_key("Home", *["Down"] * row)

    def box_text(self):
        """Waits for a message box, and returns its text."""
        box = until(self.program.box, "a message box")
        assert box["text"] == "Tellurvane"
        return next(child["text"] for child in box["children"]
                    if child["class"] == "Static" and len(child["text"]) > 3)

    def answer(self, text, button):
        """Sees a message box with this text, and clicks a button, counted from 0."""
        assert self.box_text() == text
        click_at(button_of(self.program.box(), button)["rect"])
        self.box_is_gone()

    def box_is_gone(self):
        until(lambda: not self.program.box(), "the end of the message box")

    def close(self, button="close"):
        self.click(button)
        self.is_gone()


def open_editor(program):
    """Opens it by the toolbar, on a new task."""
    program.click(program.toolbar_button("new"))
    return Editor(program)


def open_editor_on(program, row):
    """Opens it on a task of the main window by the context menu."""
    rect = program.row(row)
    program.click(rect)
    # A task that was run may have scrolled the list. The key goes to the window that is active.
    program.press("Home")
    click_at(rect, button=3)
    program.menu()
    press_key("Down", "Down", "Return")
    editor = Editor(program)
    until(editor.is_editing, "the task's fields")
    return editor
