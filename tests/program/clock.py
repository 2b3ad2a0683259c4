"""The desktop clock as a user has it before him."""

from harness import click_at, until
from menus import Menu


def named(program, text):
    return next((window for window in program.windows() if window["text"] == text), None)


def main_window(program):
    return named(program, "Tellurvane")


def clock(program):
    return named(program, "FrmTime")


def clock_shows(program):
    return until(lambda: clock(program), "the clock")


def face(rect):
    """The middle of the analog face."""
    return [rect[0] + 30, rect[1] + 30, rect[0] + 42, rect[1] + 42]


def clock_menu(program):
    click_at(face(clock_shows(program)["rect"]), button=3)
    return Menu(program)
