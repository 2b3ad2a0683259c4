"""A dialog of the program, used by clicks and keys."""

from dataclasses import dataclass

from desktop import click_at, press_key, until


@dataclass(frozen=True)
class By:
    """How a control is found: by its class, and by its own text, by the text of its `label` (a
    control left of it in the same row), or by its place in reading order among what is left."""

    window_class: str
    text: str = None
    label: str = None
    place: int = 0

    def find(self, window):
        shown = [child for child in window["children"] if child["visible"]]
        labels = [child["rect"] for child in shown if child["text"] == self.label]
        found = [child for child in shown
                 if child["class"] == self.window_class and self.text in (None, child["text"])
                 and (not self.label or any(is_left_of(label, child["rect"]) for label in labels))]
        found.sort(key=lambda child: (child["rect"][1], child["rect"][0]))
        return found[self.place] if found else None


def is_left_of(label, rect):
    """Whether a rectangle lies left of another one, in the same row."""
    return label[2] <= rect[0] and label[1] < rect[3] and rect[1] < label[3]


class Dialog:
    """An open dialog. Each kind names its caption, a name for failures, and its controls."""

    CAPTION = WHAT = None
    CONTROLS = {}

    def __init__(self, program):
        self.program = program
        self.rects = {name: control["rect"] for name, control in
                      until(self.controls, self.WHAT).items()}

    def window(self):
        return self.program.window(self.CAPTION)

    def controls(self):
        """The controls by name; none while the dialog is closed or incomplete."""
        window = self.window()
        found = window and {name: by.find(window) for name, by in self.CONTROLS.items()}
        return found if found and all(found.values()) else None

    def click(self, name):
        click_at(self.rects[name])

    def choose(self, name, entry):
        """Chooses from a drop-down list, counted from 0."""
        self.click(name)
        until(lambda: any(window["class"] == "ComboLBox" for window in self.program.windows()),
              "the list dropped down")
        press_key("Home", *["Down"] * entry, "Return")

    def is_gone(self):
        until(lambda: not self.window(), f"the end of {self.WHAT}")
