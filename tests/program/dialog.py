"""A dialog of the program as a user has it before him."""

from harness import click_at, named_controls, press_key, until


class Dialog:
    """An open one. Each kind names its caption, what it is called in a failure, and its controls:
    by the class of their windows, in the order in which they are made."""

    CAPTION = WHAT = None
    NAMES = {}

    def __init__(self, program):
        self.program = program
        self.rects = {name: control["rect"] for name, control in
                      until(self.controls, self.WHAT).items()}

    def window(self):
        return next((window for window in self.program.windows()
                     if window["text"] == self.CAPTION), None)

    def controls(self):
        """What stands on it now, by name; none while it is closed."""
        return named_controls(self.window(), self.NAMES)

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
