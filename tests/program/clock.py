"""The desktop clock, used by clicks."""

from desktop import click_at, until
from menus import Menu

CAPTION = "FrmTime"


def clock_shows(program):
    """Waits for the clock."""
    return until(lambda: program.window(CAPTION), "the clock")


def clock_menu(program):
    """The menu that a right click on the middle of the analog face opens."""
    left, top, _, _ = clock_shows(program)["rect"]
    click_at([left + 30, top + 30, left + 42, top + 42], button=3)
    return Menu(program)
