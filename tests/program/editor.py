"""The schedule editor as a user has it before him."""

from dialog import Dialog
from harness import click_at, press_key, run, until

BOX_CLASS = "#32770"  # message boxes and the system's dialogs


def type_text(text):
    """Types ASCII for whatever window has the keyboard, Enter for each line break."""
    for number, line in enumerate(text.split("\n")):
        if number > 0:
            press_key("Return")
        run("xdotool", "type", "--delay", 15, line)


class Editor(Dialog):
    """The open editor."""

    CAPTION = "新增 / 編輯排程專案"
    WHAT = "the editor"
    NAMES = {
        "Button": ["new", "edit", "remove", "...", "enabled", "save task", "cancel task", "close",
                   "cancel"],
        "Edit": ["name", "interval"],
        "ComboBox": ["media", "unit"],
        "RichEdit20W": ["source"],
        "SysDateTimePick32": ["date", "time"],
        "SysListView32": ["list"],
        "SysHeader32": ["header"],
    }

    def texts(self):
        controls = until(self.controls, "the editor")
        return {name: controls[name]["text"] for name in ("name", "source", "interval")}

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

    def box(self):
        """Waits for a message box, and returns its text and its buttons."""
        box = until(self.find_box, "a message box")
        assert box["text"] == "Tellurvane"
        text = next(child["text"] for child in box["children"]
                    if child["class"] == "Static" and len(child["text"]) > 3)
        return text, [child for child in box["children"]
                      if child["class"] == "Button" and child["visible"]]

    def find_box(self):
        return next((window for window in self.program.windows()
                     if window["class"] == BOX_CLASS), None)

    def answer(self, button):
        """Clicks a button of the message box, counted from 0."""
        click_at(self.box()[1][button]["rect"])
        until(lambda: not self.find_box(), "the end of the message box")

    def close(self, button="close"):
        self.click(button)
        self.is_gone()


def open_editor(program):
    """Opens it by the toolbar, on a new task."""
    program.click(program.toolbar_button(1))
    return Editor(program)


def open_editor_on(program, row):
    """Opens it on a task of the main window by the context menu."""
    rect = program.row(row)
    program.click({"rect": rect})
    # A task that was run may have scrolled the list. The key goes to the window that is active.
    program.press("Home")
    click_at(rect, button=3)
    program.menu()
    press_key("Down", "Down", "Return")
    return Editor(program)
