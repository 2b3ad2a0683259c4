"""Popup menus, read from the calls that make them."""

import re

from desktop import click_at, press_key, run, until

CHECKED, SEPARATOR = 8, 2048
MARGIN = 3  # pixels, of the frame around a menu's entries
WATCHED = ("CreatePopupMenu", "AppendMenuW", "SetMenuDefaultItem", "TrackPopupMenu", "DestroyMenu")
_CALL = re.compile(r"Call user32\.(\w+)\(([0-9a-f,]*)")


def watch(*more):
    """From now on the trace of a program holds the calls that make menus, and more of user32."""
    names = ";".join(f"user32.{name}" for name in (*WATCHED, *more))
    run("wine", "reg", "add", r"HKCU\Software\Wine\Debug", "/v", "RelayInclude", "/t", "REG_SZ",
        "/d", names, "/f")


def calls(program):
    """The watched calls with their numbers, in order."""
    text = program.trace.read_text("ascii", "replace")
    for match in _CALL.finditer(text):
        if match[1] in WATCHED:
            yield match[1], [int(number, 16) for number in match[2].split(",") if number]


def _text(program, address):
    """A text in the memory of the program."""
    with open(f"/proc/{program.process.pid}/mem", "rb", buffering=0) as memory:
        memory.seek(address)
        units = memory.read(512)
    end = next(i for i in range(0, len(units), 2) if units[i:i + 2] == b"\0\0")
    return units[:end].decode("utf-16-le")


class Menu:
    """The menu on the screen: its entries as number, flags and text."""

    def __init__(self, program):
        self.program = program
        self.rect = program.menu()
        self.entries, self.default, self.place = [], None, None
        for name, numbers in calls(program):
            if name == "CreatePopupMenu":
                self.entries, self.default = [], None
            elif name == "AppendMenuW":
                self.entries.append((numbers[2], numbers[1], _text(program, numbers[3])))
            elif name == "SetMenuDefaultItem":
                self.default = numbers[1:]
            elif name == "TrackPopupMenu":
                self.place = tuple(number & 0xFFFFFFFF for number in numbers[2:4])

    def entry(self, number):
        return next(entry[1:] for entry in self.entries if entry[0] == number)

    def choose(self, number):
        """Clicks the entry of this number; separators are narrower than entries."""
        _, top, _, bottom = self.rect
        separators = sum(flags == SEPARATOR for _, flags, _ in self.entries)
        plain = len(self.entries) - separators
        height = (bottom - top - 2 * MARGIN - separators * 9) / plain
        y = top + MARGIN
        for entry, flags, _ in self.entries:
            if entry == number and flags != SEPARATOR:
                break
            y += 9 if flags == SEPARATOR else height
        click_at([self.rect[0], y, self.rect[2], y + height])
        self.is_gone()

    def dismiss(self):
        press_key("Escape")
        self.is_gone()

    def is_gone(self):
        until(lambda: self.program.code() is not None or not self.program.has_menu(),
              "the end of the menu")
        if self.program.code() is None:
            made = [name for name, _ in calls(self.program)]
            assert made.count("CreatePopupMenu") == made.count("DestroyMenu")
